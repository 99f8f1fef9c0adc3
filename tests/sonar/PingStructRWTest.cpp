#include "zelbase/sonar/PingStructRW.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <vector>

#include "tests/faults/AllocationFaults.h"
#include "tests/sonar/PingData.h"
#include "zelbase/sonar/PingStruct.h"

namespace {

// Every element of every array as a number, and "missing" for a null one.
std::vector<std::vector<double>> Contents(const PingStructRW& ping) {
  std::vector<std::vector<double>> contents;
  ForEachArray(ping, [&](const auto* array, bool ofSamples) {
    const int count = ofSamples ? ping.sampleCapacity : ping.beamCapacity;
    std::vector<double> values;
    for (int i = 0; array != nullptr && i < count; ++i) values.push_back(static_cast<double>(array[i]));
    contents.push_back(values);
  });
  return contents;
}

std::vector<std::vector<double>> Contents(const PingStruct& ping) {
  std::vector<std::vector<double>> contents;
  ForEachArray(ping, [&](const auto* array, bool ofSamples) {
    const int count = ofSamples ? ping.numSamples : ping.numBeams;
    std::vector<double> values;
    for (int i = 0; array != nullptr && i < count; ++i) values.push_back(static_cast<double>(array[i]));
    contents.push_back(values);
  });
  return contents;
}

constexpr std::size_t kShortArray = 23;

void ExpectDeleted(const PingStructRW& ping) {
  EXPECT_EQ(ping.beamCapacity, 0);
  EXPECT_EQ(ping.sampleCapacity, 0);
  ForEachArray(ping, [](const auto* array, bool) { EXPECT_EQ(array, nullptr); });
}

// ---- Beginning and end ----------------------------------------------------------------------------------------------

TEST(PingStructRW, BeginsEmpty) {
  const PingStructRW ping;
  ExpectDeleted(ping);
  int index = 0;
  ForEachScalar(ping, [&index](const auto& field) {
    EXPECT_EQ(static_cast<double>(field), index == 8 ? -1 : index == 30 ? 1 : 0) << index;
    ++index;
  });
}

TEST(PingStructRW, TheCapacitiesStandBehindTheArrays) {
  const PingStructRW ping;
  const char* const begin = reinterpret_cast<const char*>(&ping);
  const std::ptrdiff_t lastArray = reinterpret_cast<const char*>(&ping.beamByte0) - begin;
  EXPECT_EQ(reinterpret_cast<const char*>(&ping.beamCapacity) - begin, lastArray + 8);
  EXPECT_EQ(reinterpret_cast<const char*>(&ping.sampleCapacity) - begin, lastArray + 12);
}

TEST(PingStructRW, DeleteFreesTheArraysAndKeepsTheScalars) {
  PingData data(3, 2);
  data.view.headerWord0 = 5;
  PingStructRW ping;
  ping = data.view;
  ping.Delete();
  ExpectDeleted(ping);
  EXPECT_EQ(ping.numBeams, 3);
  EXPECT_EQ(ping.numSamples, 2);
  EXPECT_EQ(ping.headerWord0, 5u);
  EXPECT_FALSE(ping.IsValidBeam(0));
  ping.Delete();
  ExpectDeleted(ping);
}

TEST(PingStructRW, AssignmentAfterDeleteAllocatesAgain) {
  PingData data(3, 2);
  data.FillAll(1);
  PingStructRW ping;
  ping = data.view;
  ping.Delete();
  ping = data.view;
  EXPECT_EQ(ping.beamCapacity, 3);
  EXPECT_EQ(ping.beamX[2], data.x[2]);
}

TEST(PingStructRW, InitMakesItAsNew) {
  PingData data(3, 2);
  PingStructRW ping;
  ping = data.view;
  ping.headerDouble12 = 7;
  ping.nadirBeam = 2;
  ping.Init();
  ExpectDeleted(ping);
  int index = 0;
  ForEachScalar(ping, [&index](const auto& field) {
    EXPECT_EQ(static_cast<double>(field), index == 8 ? -1 : index == 30 ? 1 : 0) << index;
    ++index;
  });
}

// ---- Assignment -----------------------------------------------------------------------------------------------------

TEST(PingStructRW, AssignmentCopiesEveryScalarAndEveryElement) {
  PingData data(5, 3);
  data.FillAll(2);
  double number = 0;
  ForEachScalar(data.view, [&number](auto& field) { field = static_cast<std::decay_t<decltype(field)>>(++number); });
  data.view.numBeams = 5;
  data.view.numSamples = 3;
  PingStructRW fromView;
  fromView = data.view;
  PingStructRW fromOwner;
  fromOwner = fromView;
  const PingStructRW copied(fromView);
  for (const PingStructRW* ping : {&std::as_const(fromView), &std::as_const(fromOwner), &copied}) {
    std::vector<double> scalars;
    std::vector<double> expected;
    ForEachScalar(*ping, [&](const auto& field) { scalars.push_back(static_cast<double>(field)); });
    ForEachScalar(data.view, [&](const auto& field) { expected.push_back(static_cast<double>(field)); });
    EXPECT_EQ(scalars, expected);
    EXPECT_EQ(Contents(*ping), Contents(data.view));
    EXPECT_EQ(ping->beamCapacity, 5);
    EXPECT_EQ(ping->sampleCapacity, 3);
  }
  EXPECT_NE(copied.beamX, fromView.beamX);
  EXPECT_NE(fromOwner.beamX, fromView.beamX);
}

TEST(PingStructRW, AssigningFewerBeamsKeepsTheCapacityAndTheElementsBehind) {
  PingData large(4, 2);
  large.FillAll(3);
  PingData small(2, 1);
  small.FillAll(4);
  PingStructRW ping;
  ping = large.view;
  const float* const place = ping.beamX;
  ping = small.view;
  EXPECT_EQ(ping.beamCapacity, 4);
  EXPECT_EQ(ping.sampleCapacity, 2);
  EXPECT_EQ(ping.numBeams, 2);
  EXPECT_EQ(ping.beamX, place);
  EXPECT_EQ(ping.beamX[1], small.x[1]);
  EXPECT_EQ(ping.beamX[2], large.x[2]);
  EXPECT_EQ(ping.sampleWord3[1], large.sampleWords[3][1]);
}

TEST(PingStructRW, GrowingTakesBothCountsOfTheSource) {
  PingData first(3, 2);
  PingData second(2, 9);
  PingStructRW ping;
  ping = first.view;
  ping = second.view;
  EXPECT_EQ(ping.beamCapacity, 2);
  EXPECT_EQ(ping.sampleCapacity, 9);
}

TEST(PingStructRW, ANullSourceArrayKeepsTheOldElements) {
  PingData full(3, 2);
  full.FillAll(5);
  PingData empty(3, 2);
  ForEachArray(empty.view, [](auto& array, bool) { array = nullptr; });
  PingStructRW ping;
  ping = full.view;
  const auto before = Contents(ping);
  ping = empty.view;
  EXPECT_EQ(Contents(ping), before);
}

TEST(PingStructRW, ANullSourceArrayIsZerosAfterGrowing) {
  PingData full(3, 2);
  full.FillAll(5);
  PingData empty(4, 2);
  ForEachArray(empty.view, [](auto& array, bool) { array = nullptr; });
  PingStructRW ping;
  ping = full.view;
  ping = empty.view;
  int arrays = 0;
  for (const std::vector<double>& values : Contents(ping)) {
    EXPECT_TRUE(std::all_of(values.begin(), values.end(), [](double value) { return value == 0; }));
    EXPECT_FALSE(values.empty());
    ++arrays;
  }
  EXPECT_EQ(arrays, 25);
}

TEST(PingStructRW, AViewWithoutRangesMakesAnOwnerWithoutValidBeams) {
  PingData data(3);
  data.FillFan(10);
  data.view.beamRange = nullptr;
  EXPECT_TRUE(data.view.IsValidBeam(1));
  PingStructRW ping;
  ping = data.view;
  EXPECT_EQ(ping.beamRange[1], 0.0f);
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(ping.IsValidBeam(i)) << i;
  EXPECT_EQ(ping.CompNadirBeam(), -1);
}

TEST(PingStructRW, TheShortArrayIsCopiedOnlyWhenThePingSaysSo) {
  PingData data(3);
  data.FillAll(6);
  data.shorts[1] = {11, 12, 13};
  PingStructRW ping;
  ping = data.view;
  EXPECT_EQ(Contents(ping)[kShortArray], std::vector<double>({0, 0, 0}));
  data.view.hasShortArray = 0x80000000u;
  ping = data.view;
  EXPECT_EQ(Contents(ping)[kShortArray], std::vector<double>({11, 12, 13}));
  data.shorts[1] = {21, 22, 23};
  data.view.hasShortArray = 0;
  ping = data.view;
  EXPECT_EQ(Contents(ping)[kShortArray], std::vector<double>({11, 12, 13}));
  PingStructRW other;
  other = ping;
  EXPECT_EQ(Contents(other)[kShortArray], std::vector<double>({0, 0, 0}));
}

TEST(PingStructRW, AssigningToItselfDoesNothing) {
  PingData data(3, 2);
  data.FillAll(7);
  PingStructRW ping;
  ping = data.view;
  const auto before = Contents(ping);
  const float* const place = ping.beamX;
  const PingStructRW& self = ping;
  ping = self;
  EXPECT_EQ(Contents(ping), before);
  EXPECT_EQ(ping.beamX, place);
  EXPECT_EQ(ping.numBeams, 3);
}

// A view of what the owner has, with more samples than it has room for: all arrays are made anew meanwhile.
TEST(PingStructRW, AViewOfItsOwnArraysIsCopiedAsItWas) {
  PingData data(3, 2);
  data.FillAll(8);
  PingStructRW ping;
  ping = data.view;
  PingStruct view(data.view);
  view.beamX = ping.beamX;
  view.beamByte0 = ping.beamByte0;
  std::vector<unsigned int> samples(9, 5);
  view.sampleWord0 = samples.data();
  view.sampleWord1 = view.sampleWord2 = view.sampleWord3 = nullptr;
  view.numSamples = 9;
  ping = view;
  EXPECT_EQ(ping.sampleCapacity, 9);
  EXPECT_EQ(ping.sampleWord0[8], 5u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(ping.beamX[i], data.x[i]);
    EXPECT_EQ(ping.beamByte0[i], data.bytes[i]);
  }
  view.beamX = ping.beamX;
  view.beamByte0 = ping.beamByte0;
  ping = view;
  EXPECT_EQ(ping.beamX[2], data.x[2]);
  EXPECT_EQ(ping.beamByte0[2], data.bytes[2]);
}

TEST(PingStructRW, ArraysCanBeWrittenToTheirCapacity) {
  PingData data(7, 5);
  PingStructRW ping;
  ping = data.view;
  ForEachArray(ping, [&](auto* array, bool ofSamples) {
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array) % alignof(std::decay_t<decltype(*array)>), 0u);
    for (int i = 0; i < (ofSamples ? 5 : 7); ++i) array[i] = static_cast<std::decay_t<decltype(*array)>>(i + 1);
  });
  for (const std::vector<double>& values : Contents(ping)) {
    for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], static_cast<double>(i + 1));
  }
}

TEST(PingStructRW, PointersTurnedElsewhereAreNotFreed) {
  PingData data(3);
  data.FillFan(10);
  {
    PingStructRW ping;
    ping = data.view;
    ping.beamRange = nullptr;
    ping.beamX = data.x.data();
    EXPECT_TRUE(ping.IsValidBeam(0));
  }
  EXPECT_EQ(data.z[0], -10.0f);
}

// ---- Hostile counts and memory --------------------------------------------------------------------------------------

TEST(PingStructRW, NegativeCountsAreCopiedAsNumbersAlone) {
  PingData full(3, 2);
  full.FillAll(9);
  PingStruct hostile(full.view);
  hostile.numBeams = INT_MIN;
  hostile.numSamples = -1;
  PingStructRW fresh;
  fresh = hostile;
  ExpectDeleted(fresh);
  EXPECT_EQ(fresh.numBeams, INT_MIN);
  EXPECT_EQ(fresh.numSamples, -1);
  EXPECT_FALSE(fresh.IsValidBeam(0));
  EXPECT_EQ(fresh.CompNadirBeam(), -1);

  PingStructRW filled;
  filled = full.view;
  const auto before = Contents(filled);
  filled = hostile;
  EXPECT_EQ(Contents(filled), before);
  EXPECT_EQ(filled.numBeams, INT_MIN);
}

TEST(PingStructRW, ANegativeCountBesideALargeOneMakesNoArrays) {
  PingData data(3, 2);
  data.FillAll(10);
  data.view.numBeams = -7;
  PingStructRW ping;
  ping = data.view;
  EXPECT_EQ(ping.beamCapacity, 0);
  EXPECT_EQ(ping.sampleCapacity, 2);
  EXPECT_EQ(ping.beamX, nullptr);
  EXPECT_EQ(ping.sampleWord2[1], data.sampleWords[2][1]);
  EXPECT_EQ(ping.numBeams, -7);
}

TEST(PingStructRW, CountsBeyondTheCapacityReadNothingBeyond) {
  PingData data(3, 2);
  data.FillFan(10);
  PingStructRW ping;
  ping = data.view;
  ping.numBeams = 1000;
  ping.numSamples = 1000;
  EXPECT_TRUE(ping.IsValidBeam(2));
  for (const int beam : {3, 999, 1000, INT_MAX}) EXPECT_FALSE(ping.IsValidBeam(beam)) << beam;
  PingStructRW copy;
  copy = ping;
  EXPECT_EQ(copy.beamCapacity, 1000);
  EXPECT_EQ(copy.beamZ[2], -10.0f);
  EXPECT_EQ(copy.beamZ[3], 0.0f);
  ping.numBeams = INT_MAX;
  for (const int before : {-1, 5, INT_MAX, INT_MIN}) {
    ping.nadirBeam = before;
    EXPECT_NE(ping.CompNadirBeam(), -1) << before;
    EXPECT_EQ(ping.nadirDepth, 10.0);
  }
}

TEST(PingStructRW, CopyingAllocatesOnceAndThenNeverWhileTheCapacityStands) {
  PingData large(512, 2048);
  PingData small(100, 10);
  PingStructRW ping;
  const AllocationFaults memory;
  ping = large.view;
  EXPECT_EQ(memory.Count(), 1u);
  for (int i = 0; i < 10; ++i) {
    ping = small.view;
    ping = large.view;
  }
  EXPECT_EQ(memory.Count(), 1u);
}

TEST(PingStructRW, AFailedAllocationLeavesItDeletedWithCountsOfZero) {
  PingData first(3, 2);
  PingData second(4, 5);
  PingStructRW source;
  source = second.view;
  for (const bool fromOwner : {false, true}) {
    PingStructRW ping;
    ping = first.view;
    AllocationFaults memory;
    memory.FailAt(1);
    if (fromOwner) {
      EXPECT_THROW(ping = source, std::bad_alloc);
    } else {
      EXPECT_THROW(ping = second.view, std::bad_alloc);
    }
    memory.FailAt(0);
    ExpectDeleted(ping);
    EXPECT_EQ(ping.numBeams, 0);
    EXPECT_EQ(ping.numSamples, 0);
    ping = second.view;
    EXPECT_EQ(ping.beamCapacity, 4);
    EXPECT_EQ(ping.numBeams, 4);
  }
}

TEST(PingStructRW, AFailedCopyConstructionPassesTheExceptionOn) {
  PingData data(4, 5);
  PingStructRW source;
  source = data.view;
  AllocationFaults memory;
  memory.FailAt(1);
  EXPECT_THROW(PingStructRW{source}, std::bad_alloc);
}

// ---- Beams ----------------------------------------------------------------------------------------------------------

TEST(PingStructRW, ItsBeamsAreValidAsThoseOfAView) {
  PingData data(6);
  data.range = {1, 0, 1, 1, 1, 1};
  data.flags = {0, 4, 255, 256, static_cast<int>(0x80000100), 0x10000};
  PingStructRW ping;
  ping = data.view;
  const bool expected[] = {true, false, true, false, true, false};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(std::as_const(ping).IsValidBeam(i), expected[i]) << i;
  for (const int beam : {-1, 6, INT_MIN, INT_MAX}) EXPECT_FALSE(ping.IsValidBeam(beam)) << beam;
  ping.pingFlags = 0x10000;
  EXPECT_FALSE(ping.IsValidBeam(0));
  EXPECT_TRUE(PingStructRW::IsValidBeam(0, static_cast<int>(0x80000100)));
  EXPECT_FALSE(PingStructRW::IsValidBeam(0x10000, 0));
}

TEST(PingStructRW, FindsTheNadirBeamAsAViewDoes) {
  PingData data(101);
  data.FillFan(20);
  data.z[49] = -21.0f;
  const PlainNadirSearch expected(data.view);
  PingStructRW ping;
  ping = data.view;
  EXPECT_EQ(ping.CompNadirDepth(), expected.depth);
  EXPECT_EQ(ping.nadirBeam, expected.beam);
  EXPECT_EQ(ping.CompNadirBeam(), expected.beam);
}

}  // namespace
