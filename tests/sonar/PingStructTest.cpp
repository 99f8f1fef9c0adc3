#include "zelbase/sonar/PingStruct.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include "tests/sonar/PingData.h"
#include "zelbase/sonar/PingStructRW.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// ---- Fields ---------------------------------------------------------------------------------------------------------

template <class Ping, class Field>
std::size_t Offset(const Ping& ping, const Field& field) {
  return static_cast<std::size_t>(reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&ping));
}

// Where fields of these widths stand when they follow each other from `begin` on, each aligned to its width.
std::vector<std::size_t> PlacesOf(std::size_t begin, const std::vector<int>& widths) {
  std::vector<std::size_t> places;
  std::size_t at = begin;
  for (const int number : widths) {
    const auto width = static_cast<std::size_t>(number);
    at = (at + width - 1) / width * width;
    places.push_back(at);
    at += width;
  }
  return places;
}

// Widths of the scalars in bytes, in order.
const std::vector<int> kScalarWidths = {4, 4, 4, 4, 8, 8, 8, 8, 4, 8, 8, 8, 8, 8, 8, 8, 8, 4, 2, 2, 4,
                                        4, 4, 4, 4, 4, 4, 4, 1, 1, 8, 8, 8, 4, 4, 4, 4, 8, 4, 4, 4};
constexpr std::size_t kArrays = 25;

template <class Ping>
void ExpectPlaces(std::size_t begin) {
  const Ping ping;
  std::vector<int> widths = kScalarWidths;
  widths.insert(widths.end(), kArrays, static_cast<int>(sizeof(void*)));
  std::vector<int> foundWidths;
  std::vector<std::size_t> found;
  const auto take = [&](const auto& field) {
    foundWidths.push_back(static_cast<int>(sizeof field));
    found.push_back(Offset(ping, field));
  };
  ForEachScalar(ping, take);
  ForEachArray(ping, [&](const auto& array, bool) { take(array); });
  EXPECT_EQ(foundWidths, widths);
  EXPECT_EQ(found, PlacesOf(begin, widths));
}

TEST(PingStruct, FieldsStandInTheirOrderBehindTheFirstSlot) { ExpectPlaces<PingStruct>(sizeof(void*)); }

TEST(PingStruct, TheOwnerHasTheSameFieldsInTheSameOrder) { ExpectPlaces<PingStructRW>(0); }

TEST(PingStruct, ArraysHaveTheirWidths) {
  const std::vector<std::size_t> widths = {4, 4, 4, 4, 4, 2, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 2, 1};
  const PingStruct ping;
  std::vector<std::size_t> found;
  ForEachArray(ping, [&](const auto& array, bool) { found.push_back(sizeof *array); });
  EXPECT_EQ(found, widths);
}

TEST(PingStruct, TypesAreSignedWhereANumberMayBeNegative) {
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::numBeams), int>));
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::numSamples), int>));
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::nadirBeam), int>));
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::beamFlags), int*>));
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::pingFlags), unsigned int>));
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::hasShortArray), unsigned int>));
  EXPECT_TRUE((std::is_same_v<decltype(PingStruct::beamRange), float*>));
}

TEST(PingStruct, IsPolymorphicByItsAssignmentAlone) {
  EXPECT_TRUE(std::is_polymorphic_v<PingStruct>);
  EXPECT_FALSE(std::has_virtual_destructor_v<PingStruct>);
  EXPECT_FALSE(std::is_polymorphic_v<PingStructRW>);
}

class CountingPing : public PingStruct {
 public:
  CountingPing& operator=(const PingStruct& other) override {
    PingStruct::operator=(other);
    ++assignments;
    return *this;
  }
  int assignments = 0;
};

TEST(PingStruct, AssignmentIsVirtual) {
  CountingPing ping;
  PingStruct& base = ping;
  PingStruct source;
  source.headerWord0 = 5;
  base = source;
  EXPECT_EQ(ping.assignments, 1);
  EXPECT_EQ(ping.headerWord0, 5u);
}

template <class Ping>
void ExpectDefaults(const Ping& ping) {
  int index = 0;
  ForEachScalar(ping, [&](const auto& field) {
    const double expected = index == 8 ? -1 : index == 30 ? 1 : 0;
    EXPECT_EQ(static_cast<double>(field), expected) << "field " << index;
    ++index;
  });
  EXPECT_EQ(index, 41);
  ForEachArray(ping, [](const auto* array, bool) { EXPECT_EQ(array, nullptr); });
  EXPECT_EQ(ping.nadirBeam, -1);
  EXPECT_EQ(ping.headerDouble12, 1.0);
}

template <class Ping>
void FillScalars(Ping& ping) {
  int number = 10;
  ForEachScalar(ping, [&number](auto& field) { field = static_cast<std::decay_t<decltype(field)>>(++number); });
}

TEST(PingStruct, BeginsAtZeroButForTwoFields) { ExpectDefaults(PingStruct()); }

TEST(PingStruct, InitMakesItAsNew) {
  PingData data(3, 2);
  FillScalars(data.view);
  data.view.Init();
  ExpectDefaults(data.view);
}

TEST(PingStruct, CopiesAndAssignmentsShareTheArrays) {
  PingData data(3, 2);
  FillScalars(data.view);
  PingStruct assigned;
  assigned = data.view;
  const PingStruct copied(data.view);
  for (const PingStruct* ping : {&std::as_const(assigned), &copied}) {
    int number = 10;
    ForEachScalar(*ping, [&number](const auto& field) { EXPECT_EQ(static_cast<int>(field), ++number); });
    std::vector<const void*> arrays;
    ForEachArray(*ping, [&](const auto* array, bool) { arrays.push_back(array); });
    std::vector<const void*> expected;
    ForEachArray(data.view, [&](const auto* array, bool) { expected.push_back(array); });
    EXPECT_EQ(arrays, expected);
  }
  assigned.beamX[1] = 7.5f;
  EXPECT_EQ(data.x[1], 7.5f);
}

TEST(PingStruct, AssigningToItselfChangesNothing) {
  PingData data(3);
  PingStruct& self = data.view;
  data.view = self;
  EXPECT_EQ(data.view.numBeams, 3);
  EXPECT_EQ(data.view.beamX, data.x.data());
}

// ---- Valid beams ----------------------------------------------------------------------------------------------------

TEST(PingStruct, FlagsBelow256AreValid) {
  for (const int flags : {0, 1, 255}) EXPECT_TRUE(PingStruct::IsValidBeam(0, flags)) << flags;
  for (int bit = 8; bit <= 30; ++bit) {
    EXPECT_FALSE(PingStruct::IsValidBeam(0, 1 << bit)) << bit;
    EXPECT_FALSE(PingStruct::IsValidBeam(0, 1 << bit | 0xFF)) << bit;
  }
}

TEST(PingStruct, ASetTopBitMakesABeamValidWhateverElseIsSet) {
  EXPECT_TRUE(PingStruct::IsValidBeam(0, static_cast<int>(0x80000100)));
  EXPECT_TRUE(PingStruct::IsValidBeam(0, static_cast<int>(0x80010000)));
  EXPECT_TRUE(PingStruct::IsValidBeam(0, -1));
  EXPECT_TRUE(PingStruct::IsValidBeam(0, INT_MIN));
}

TEST(PingStruct, Bit16OfThePingRejectsEveryBeam) {
  EXPECT_FALSE(PingStruct::IsValidBeam(0x10000, 0));
  EXPECT_FALSE(PingStruct::IsValidBeam(-1, -1));
  for (int bit = 0; bit < 32; ++bit) {
    EXPECT_EQ(PingStruct::IsValidBeam(static_cast<int>(1u << bit), 4), bit != 16) << bit;
  }
}

TEST(PingStruct, ABeamMustExist) {
  PingData data(3);
  const PingStruct& ping = data.view;
  for (const int beam : {0, 1, 2}) EXPECT_TRUE(ping.IsValidBeam(beam)) << beam;
  for (const int beam : {-1, 3, INT_MIN, INT_MAX}) EXPECT_FALSE(ping.IsValidBeam(beam)) << beam;
}

TEST(PingStruct, ARangeOfExactlyZeroIsNoMeasurement) {
  PingData data(5);
  data.range = {0.0f, -0.0f, 1e-45f, kNaN, -1.0f};
  const bool expected[] = {false, false, true, true, true};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(data.view.IsValidBeam(i), expected[i]) << i;
}

TEST(PingStruct, WithoutRangesTheRangeIsNotAsked) {
  PingData data(2);
  data.range = {0.0f, 0.0f};
  EXPECT_FALSE(data.view.IsValidBeam(0));
  data.view.beamRange = nullptr;
  EXPECT_TRUE(data.view.IsValidBeam(0));
}

TEST(PingStruct, WithoutFlagsNoBeamIsValid) {
  PingData data(2);
  data.view.beamFlags = nullptr;
  EXPECT_FALSE(data.view.IsValidBeam(0));
}

TEST(PingStruct, ARejectedPingHasNoValidBeam) {
  PingData data(2);
  data.view.pingFlags = 0x10000;
  EXPECT_FALSE(data.view.IsValidBeam(0));
  data.view.pingFlags = 0xFFFEFFFF;
  EXPECT_TRUE(data.view.IsValidBeam(0));
}

// ---- Nadir beam -----------------------------------------------------------------------------------------------------

// Eleven beams, 10 degrees or so apart, the middle one straight below, each at a depth of its own.
struct Fan : PingData {
  Fan() : PingData(11) {
    for (std::size_t i = 0; i < 11; ++i) {
      x[i] = 2.0f * (static_cast<float>(i) - 5.0f);
      z[i] = -10.0f - 0.1f * static_cast<float>(i * i % 7);
    }
  }
};

TEST(CompNadirBeam, TakesTheMedianAroundTheSmallestAngle) {
  PingData data(11);
  data.x = {-5, -4, -3, -2, -1, 0, 1, 2, 3, 4, 5};
  data.z = {-20, -21, -22, -23, -24, -30, -25, -26, -27, -28, -29};
  // Beam 5 has the smallest angle; beams 0 to 9 are in its window. Upwards: -30 (5), -28 (9), -27 (8), -26 (7), -25 (6),
  // -24 (4), -23, ...; the middle two are -25 (beam 6) and -24 (beam 4), equally far from 5.
  EXPECT_EQ(data.view.CompNadirBeam(), 4);
  EXPECT_EQ(data.view.nadirBeam, 4);
  EXPECT_EQ(data.view.nadirDepth, 24.5);
}

TEST(CompNadirBeam, AnOddCountHasOneMiddle) {
  PingData data(11);
  data.x = {-5, -4, -3, -2, -1, 0, 1, 2, 3, 4, 5};
  data.z = {-20, -21, -22, -23, -24, -30, -25, -26, -27, -28, -29};
  data.flags[0] = 0x100;
  EXPECT_EQ(data.view.CompNadirBeam(), 6);
  EXPECT_EQ(data.view.nadirDepth, 25.0);
}

TEST(CompNadirBeam, TheAnswerIsTheMediansBeamNotTheOneOfTheSmallestAngle) {
  PingData data(4);
  data.x = {0, 1, 2, 9};
  data.z = {-50, -10, -20, -30};
  EXPECT_EQ(data.view.CompNadirBeam(), 2);
  EXPECT_EQ(data.view.nadirDepth, 20.0);
}

TEST(CompNadirBeam, TheCloserOfTwoMiddlesIsTaken) {
  PingData data(5);
  data.x = {0, 1, 2, 3, 4};
  data.z = {-12, -10, -13, -11, -99};
  // Upwards: -13 (2), -12 (0), -11 (3), -10 (1): the middles are beams 0 and 3, and 0 is where it began.
  EXPECT_EQ(data.view.CompNadirBeam(), 0);
  EXPECT_EQ(data.view.nadirDepth, 11.5);
}

TEST(CompNadirBeam, TheWindowHasFiveBelowAndFourAbove) {
  // Beam 15 is straight below, 1000 m deep, and valid; each other one in turn is valid, too, and 10 m deep.
  for (int i = 0; i < 30; ++i) {
    PingData alone(30);
    for (std::size_t beam = 0; beam < 30; ++beam) {
      alone.x[beam] = static_cast<float>(beam) - 15.0f;
      alone.z[beam] = -10.0f;
      alone.flags[beam] = 0x100;
    }
    alone.flags[15] = 4;
    alone.z[15] = -1000.0f;
    alone.flags[static_cast<std::size_t>(i)] = 4;
    alone.view.CompNadirBeam();
    const bool reached = i >= 10 && i <= 19 && i != 15;
    EXPECT_EQ(alone.view.nadirDepth, reached ? 505.0 : 1000.0) << i;
  }
}

TEST(CompNadirBeam, TheLastBeamIsNeverInTheWindow) {
  PingData data(3);
  data.x = {2, 1, 0};
  data.z = {-10, -20, -30};
  EXPECT_EQ(data.view.CompNadirBeam(), 1);
  EXPECT_EQ(data.view.nadirDepth, 15.0);
}

TEST(CompNadirBeam, OneBeamAloneEndsAtMinus1WithTheOldDepth) {
  PingData data(1);
  data.z = {-10};
  data.view.nadirDepth = 77.0;
  EXPECT_EQ(data.view.CompNadirBeam(), -1);
  EXPECT_EQ(data.view.nadirBeam, -1);
  EXPECT_EQ(data.view.nadirDepth, 77.0);
}

TEST(CompNadirBeam, NoBeamAtAllZeroesTheDepth) {
  PingData data(3);
  data.FillFan(10);
  data.view.pingFlags = 0x10000;
  data.view.nadirDepth = 77.0;
  EXPECT_EQ(data.view.CompNadirBeam(), -1);
  EXPECT_EQ(data.view.nadirDepth, 0.0);
  data.view.nadirDepth = 77.0;
  data.view.nadirBeam = 1;
  EXPECT_EQ(data.view.CompNadirBeam(), -1);
  EXPECT_EQ(data.view.nadirBeam, -1);
  EXPECT_EQ(data.view.nadirDepth, 0.0);
}

TEST(CompNadirBeam, AValidPresetBeamReturnsAtOnceWithoutADepth) {
  Fan data;
  data.view.nadirBeam = 9;
  data.view.nadirDepth = 77.0;
  EXPECT_EQ(data.view.CompNadirBeam(), 9);
  EXPECT_EQ(data.view.nadirDepth, 77.0);
}

TEST(CompNadirBeam, ASecondCallReturnsAtOnce) {
  Fan data;
  const int first = data.view.CompNadirBeam();
  const double depth = data.view.nadirDepth;
  for (float& z : data.z) z -= 5.0f;
  EXPECT_EQ(data.view.CompNadirBeam(), first);
  EXPECT_EQ(data.view.nadirDepth, depth);
}

TEST(CompNadirBeam, FlagsOfExactlyZeroAreExcludedFromTheFirstSearch) {
  PingData data(8);
  data.x = {0, 1, 2, 3, 4, 5, 6, 7};
  data.z = {-10, -10, -10, -10, -10, -10, -10, -10};
  for (int& flags : data.flags) flags = 0;
  EXPECT_EQ(data.view.CompNadirBeam(), -1);
  EXPECT_EQ(data.view.nadirDepth, 0.0);
}

TEST(CompNadirBeam, FlagsOfExactlyZeroCountInTheWindow) {
  PingData data(4);
  data.x = {0, 1, 2, 3};
  data.z = {-30, -20, -10, -5};
  data.flags = {0, 0, 4, 4};
  // It begins at beam 2, since 0 and 1 were never classified, and still takes all three depths.
  EXPECT_EQ(data.view.CompNadirBeam(), 1);
  EXPECT_EQ(data.view.nadirDepth, 20.0);
}

TEST(CompNadirBeam, FlagsOfExactlyZeroCountInTheSearchFromAStaleBeam) {
  PingData data(4);
  data.x = {0, 1, 2, 3};
  data.z = {-30, -20, -10, -5};
  data.flags = {0, 0x100, 0x100, 0x100};
  data.view.nadirBeam = 2;
  EXPECT_EQ(data.view.CompNadirBeam(), 0);
  EXPECT_EQ(data.view.nadirDepth, 30.0);
}

TEST(CompNadirBeam, AStaleBeamGoesToTheSmallerAngleAndToTheLowerOneWhenEqual) {
  for (const float upperX : {1.0f, 4.0f, 6.0f}) {
    PingData data(20);
    for (int& flags : data.flags) flags = 0x100;
    data.flags[2] = data.flags[17] = 4;
    data.x[2] = -4.0f;
    data.x[17] = upperX;
    data.z[2] = data.z[17] = -10.0f;
    data.view.nadirBeam = 9;
    EXPECT_EQ(data.view.CompNadirBeam(), upperX < 4.0f ? 17 : 2) << upperX;
  }
}

TEST(CompNadirBeam, AStaleBeamFarOutIsNoLongWalk) {
  for (const int stale : {INT_MIN, INT_MIN + 1, -2, 11, 1000000, INT_MAX - 1, INT_MAX}) {
    Fan data;
    data.view.nadirBeam = stale;
    Fan same;
    same.view.nadirBeam = stale;
    const PlainNadirSearch expected(same.view);
    EXPECT_EQ(data.view.CompNadirBeam(), expected.beam) << stale;
    EXPECT_EQ(data.view.nadirDepth, expected.depth) << stale;
    EXPECT_NE(data.view.nadirBeam, -1);
  }
}

TEST(CompNadirBeam, AnAngleThatIsNoNumberNeverWins) {
  PingData data(4);
  data.x = {kNaN, 5, kNaN, 9};
  data.z = {-10, -11, -12, -13};
  data.flags = {4, 4, 4, 4};
  EXPECT_EQ(data.view.CompNadirBeam(), 1);
  PingData none(3);
  none.y = {kNaN, kNaN, kNaN};
  none.view.nadirDepth = 77.0;
  EXPECT_EQ(none.view.CompNadirBeam(), -1);
  EXPECT_EQ(none.view.nadirDepth, 0.0);
}

TEST(CompNadirBeam, ADepthThatIsNoNumberSortsBehindAllNumbers) {
  PingData data(4);
  data.x = {0, 1, 2, 3};
  data.z = {-10, kNaN, 5, -1};
  // -10 (0), 5 (2), NaN (1).
  EXPECT_EQ(data.view.CompNadirBeam(), 2);
  EXPECT_EQ(data.view.nadirDepth, -5.0);
}

TEST(CompNadirBeam, EqualDepthsGoByBeam) {
  PingData data(6);
  data.x = {5, 4, 3, 2, 1, 0};
  data.z = {-10, -10, -10, -10, -10, -10};
  // It begins at beam 5; beams 0 to 4, so beam 2 is the middle.
  EXPECT_EQ(data.view.CompNadirBeam(), 2);
  EXPECT_EQ(data.view.nadirDepth, 10.0);
}

TEST(CompNadirBeam, TheMeanOfTwoMiddlesIsTakenInDoublePrecision) {
  PingData data(3);
  data.z = {-16777216.0f, -16777218.0f, -1};
  EXPECT_NE(data.view.CompNadirBeam(), -1);
  EXPECT_EQ(data.view.nadirDepth, 16777217.0);
}

TEST(CompNadirBeam, BeamsAboveTheSonarCountWithAnglesBeyondARightOne) {
  PingData data(4);
  data.x = {1, 2, 3, 4};
  data.z = {10, 10, 10, 10};
  // The angle falls with the distance: beam 3 is the flattest.
  EXPECT_EQ(data.view.CompNadirBeam(), 1);
  EXPECT_EQ(data.view.nadirDepth, -10.0);
}

TEST(CompNadirBeam, WithoutCoordinatesNoBeamCounts) {
  for (int missing = 0; missing < 3; ++missing) {
    for (const int before : {-1, 50}) {
      Fan data;
      (missing == 0 ? data.view.beamX : missing == 1 ? data.view.beamY : data.view.beamZ) = nullptr;
      data.view.nadirBeam = before;
      data.view.nadirDepth = 77.0;
      EXPECT_EQ(data.view.CompNadirBeam(), -1) << missing;
      EXPECT_EQ(data.view.nadirDepth, 0.0) << missing;
    }
  }
}

TEST(CompNadirBeam, CountsWithoutArraysAreHarmless) {
  for (const int count : {INT_MIN, -1, 0, INT_MAX}) {
    for (const int before : {INT_MIN, -1, 0, INT_MAX}) {
      PingStruct ping;
      ping.numBeams = count;
      ping.nadirBeam = before;
      EXPECT_EQ(ping.CompNadirBeam(), -1);
      EXPECT_EQ(ping.nadirDepth, 0.0);
    }
  }
}

TEST(CompNadirBeam, TheDepthFormGivesTheDepth) {
  Fan data;
  Fan same;
  const PlainNadirSearch expected(same.view);
  EXPECT_EQ(data.view.CompNadirDepth(), expected.depth);
  EXPECT_EQ(data.view.nadirBeam, expected.beam);
  PingStruct empty;
  empty.nadirDepth = 77.0;
  EXPECT_EQ(empty.CompNadirDepth(), 0.0);
}

}  // namespace
