#include "zelbase/geometry/detail/ProfileFolds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <list>
#include <random>
#include <utility>
#include <vector>

#include "tests/geometry/ProfileTestHelp.h"
#include "tests/geometry/SecondProfileOffset.h"

using zelbase::detail::CutFolds;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A point of the profile plane; the plan follows: x goes along with the chainage, y with the height.
ProfilePoint At(double distance, double z, bool sectionStart = false) {
  return ProfilePoint(100 + distance, 200 + z, z, distance, sectionStart);
}

// By the index, and pair by pair where the folds are narrow: one result.
ProfilePoints Cut(ProfilePoints line) {
  ProfilePoints byIndex = line;
  CutFolds(byIndex, 0);
  CutFolds(line);
  EXPECT_TRUE(SamePoints(line, byIndex));
  return line;
}

void ExpectStays(const ProfilePoints& line) { EXPECT_TRUE(SamePoints(Cut(line), line)); }

// --- By hand ----------------------------------------------------------------------------------------------------------

TEST(ProfileFolds, ALineWithoutFoldsStays) {
  ExpectStays({});
  ExpectStays({At(0, 0)});
  ExpectStays({At(0, 0), At(1, 5), At(2, -5), At(2, 7), At(9, 0)});
}

TEST(ProfileFolds, ALoopIsReplacedByItsCrossing) {
  // Up to (6, 6), back to (4, 6), down again to (10, 0): the two slopes cross at (5, 5).
  const ProfilePoints cut = Cut({At(0, 0), At(6, 6), At(4, 6), At(10, 0)});
  ASSERT_EQ(cut.size(), 3u);
  EXPECT_TRUE(SamePoint(cut[0], At(0, 0)));
  EXPECT_TRUE(NearPoint(cut[1], At(5, 5)));
  EXPECT_TRUE(SamePoint(cut[2], At(10, 0)));
}

TEST(ProfileFolds, ThreePointsStayWhateverTheyDo) { ExpectStays({At(0, 0), At(6, 6), At(4, 6)}); }

TEST(ProfileFolds, AFoldStillOpenAtTheEndStays) { ExpectStays({At(0, 0), At(6, 6), At(4, 6), At(3, -9)}); }

TEST(ProfileFolds, AFoldWithoutACrossingStays) { ExpectStays({At(0, 0), At(6, 1), At(4, 2), At(10, 3)}); }

TEST(ProfileFolds, TheOutermostCrossingIsTaken) {
  // Two loops, one in the other; the outer slopes cross at (5, 5).
  const ProfilePoints cut = Cut({At(0, 0), At(6, 6), At(5.5, 7), At(5, 6), At(4.5, 7), At(4, 6), At(10, 0)});
  ASSERT_EQ(cut.size(), 3u);
  EXPECT_TRUE(NearPoint(cut[1], At(5, 5)));
}

TEST(ProfileFolds, LoopsInARowAreCutOneByOne) {
  const ProfilePoints cut = Cut({At(0, 0), At(6, 6), At(4, 6), At(10, 0), At(16, 6), At(14, 6), At(20, 0)});
  ASSERT_EQ(cut.size(), 5u);
  EXPECT_TRUE(NearPoint(cut[1], At(5, 5)));
  EXPECT_TRUE(SamePoint(cut[2], At(10, 0)));
  EXPECT_TRUE(NearPoint(cut[3], At(15, 5)));
}

TEST(ProfileFolds, AFallWithinTheLastChainagesEpsilonIsNoFold) {
  // Epsilon of 100 times 1e15 is 22.2: the way back from 16 to 0 counts as none, and the one back to -8 is seen.
  ExpectStays({At(0, 0), At(16, 16), At(0, 16), At(20, -4), At(1e15, 0)});
  const ProfilePoints cut = Cut({At(-8, -8), At(16, 16), At(-8, 16), At(20, -12), At(1e15, 0)});
  ASSERT_EQ(cut.size(), 4u);
  EXPECT_TRUE(NearPoint(cut[1], At(4, 4)));
}

TEST(ProfileFolds, FlagsPlayNoPartAndAreLostInALoop) {
  // Two sections that overlap are joined where they cross.
  const ProfilePoints cut = Cut({At(0, 0, true), At(6, 6), At(4, 6, true), At(10, 0)});
  ASSERT_EQ(cut.size(), 3u);
  EXPECT_TRUE(NearPoint(cut[1], At(5, 5)));
  EXPECT_TRUE(cut[0].sectionStart);
  EXPECT_FALSE(cut[1].sectionStart);
  EXPECT_FALSE(cut[2].sectionStart);
}

TEST(ProfileFolds, PlanPositionIsTheLaterSegmentsWhereItClimbsEnough) {
  // At the crossing (5, 5) the earlier segment is 5 above its start, the later one spans 6.
  ProfilePoints line = {At(0, 0), At(6, 6), At(4, 6), At(10, 0)};
  line[2].x = 1000;
  line[3].x = 1060;
  line[2].y = 40;
  line[3].y = 100;
  const ProfilePoints cut = Cut(line);
  ASSERT_EQ(cut.size(), 3u);
  EXPECT_NEAR(cut[1].x, 1010, 1e-9);
  EXPECT_NEAR(cut[1].y, 50, 1e-9);
}

TEST(ProfileFolds, PlanPositionIsTheEarlierSegmentsWhereTheLaterIsFlatter) {
  // The later segment goes level through (5, 5).
  ProfilePoints line = {At(0, 0), At(6, 6), At(4, 5), At(10, 5)};
  line[2].x = 1000;
  line[3].x = 1060;
  const ProfilePoints cut = Cut(line);
  ASSERT_EQ(cut.size(), 3u);
  EXPECT_TRUE(NearPoint(cut[1], At(5, 5)));
}

TEST(ProfileFolds, AFlatSegmentHitAtTheOthersStartHeightGivesNoPlanPosition) {
  // The earlier segment starts on the level one: 0 <= 0, so that x and y go by 0 / 0.
  const ProfilePoints cut = Cut({At(5, 5), At(8, 8), At(4, 5), At(10, 5)});
  ASSERT_EQ(cut.size(), 3u);
  EXPECT_EQ(cut[1].distance, 5);
  EXPECT_EQ(cut[1].z, 5);
  EXPECT_TRUE(std::isnan(cut[1].x));
  EXPECT_TRUE(std::isnan(cut[1].y));
}

TEST(ProfileFolds, TheWalkGoesOnFromACrossingBehindTheFold) {
  // The fold from 10 to 2 crosses nothing, but reaches up to 12; the loop that begins behind it is found with it.
  const ProfilePoints cut = Cut({At(0, 0), At(10, 0), At(2, 1), At(4, 1), At(7, 4), At(5, 4), At(8, 1), At(12, 1)});
  ASSERT_EQ(cut.size(), 7u);
  EXPECT_TRUE(SamePoint(cut[3], At(4, 1)));
  EXPECT_TRUE(NearPoint(cut[4], At(6, 3)));
  EXPECT_TRUE(SamePoint(cut[5], At(8, 1)));
}

TEST(ProfileFolds, WhatFollowsTheCrossingIsWalkedOnFromThere) {
  // The crossing (5, 5) lies before the point that ended the fold; that point stays, and a second fold behind it is seen.
  const ProfilePoints cut = Cut({At(0, 0), At(6, 6), At(4, 6), At(5.5, 4.5), At(8, 2), At(11, 5), At(9, 5), At(14, 0)});
  ASSERT_EQ(cut.size(), 6u);
  EXPECT_TRUE(NearPoint(cut[1], At(5, 5)));
  EXPECT_TRUE(SamePoint(cut[2], At(5.5, 4.5)));
  EXPECT_TRUE(SamePoint(cut[3], At(8, 2)));
  EXPECT_TRUE(NearPoint(cut[4], At(10, 4)));
  EXPECT_TRUE(SamePoint(cut[5], At(14, 0)));
}

// --- Against the plain way ----------------------------------------------------------------------------------------------

class Generator {
 public:
  explicit Generator(unsigned int seed) : m_random(seed) {}

  unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
  double Real(double low, double high) { return low + (high - low) * static_cast<double>(m_random()) / 4294967296.0; }

  // Small whole numbers: segments coincide, are upright, touch at their ends.
  ProfilePoints Grid() {
    ProfilePoints line(4 + Below(14));
    double distance = 0;
    for (ProfilePoint& point : line) {
      distance += static_cast<int>(Below(5)) - 1;
      point = At(distance, Below(5), Below(4) == 0);
    }
    return line;
  }

  // Any numbers, mostly forward.
  ProfilePoints Plain(unsigned int count) {
    ProfilePoints line(count);
    double distance = Real(-5, 5);
    double z = 0;
    for (ProfilePoint& point : line) {
      distance += Real(-1, 2);
      z += Real(-1, 1);
      point = ProfilePoint(Real(-9, 9), Real(-9, 9), z, distance, Below(4) == 0);
    }
    return line;
  }

  // Far forward, back and forward again: folds of hundreds of segments.
  ProfilePoints Wide() {
    ProfilePoints line;
    double distance = 0;
    const double rise = Real(-0.1, 0.4);
    for (int phase = 0; phase < 7; ++phase) {
      const double drift = phase % 2 == 0 ? 1.0 : -0.8;
      const double climb = Real(-1, 1) * rise;
      for (unsigned int i = 20 + Below(150); i > 0; --i) {
        distance += drift + Real(-0.5, 0.5);
        const double z = (line.empty() ? 0 : line.back().z) + climb + Real(-0.1, 0.1);
        line.emplace_back(Real(-9, 9), Real(-9, 9), z, distance, false);
      }
    }
    return line;
  }

  // Points that are nearly on each other's segments, at distances about the tolerance of the crossing.
  ProfilePoints NearlyTouching() {
    ProfilePoints line = Grid();
    const double sizes[] = {1e-9, 1e-7, 3e-7, 1e-5, 3.1e-4, 3.3e-4, 9.9e-4, 1.1e-3};
    for (ProfilePoint& point : line) {
      point.distance += (static_cast<int>(Below(3)) - 1) * sizes[Below(8)];
      point.z += (static_cast<int>(Below(3)) - 1) * sizes[Below(8)];
    }
    return line;
  }

  // With numbers that are none, or hardly.
  ProfilePoints Hostile() {
    ProfilePoints line = Below(2) == 0 ? Grid() : NearlyTouching();
    const double values[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 1e15, -1e15, 5e-324, -0.0, 1e-300};
    for (unsigned int i = 1 + Below(4); i > 0; --i) {
      ProfilePoint& point = line[Below(static_cast<unsigned int>(line.size()))];
      (Below(2) == 0 ? point.distance : point.z) = values[Below(10)];
    }
    return line;
  }

 private:
  std::mt19937 m_random;
};

// Counts, cuts both ways and compares.
void ExpectSameCuts(const ProfilePoints& line, OffsetTally& tally, unsigned int seed) {
  std::list<ProfilePoint> second(line.begin(), line.end());
  SecondCutFolds(second, tally);
  ASSERT_TRUE(SamePoints(Cut(line), {second.begin(), second.end()})) << "seed " << seed;
}

void Print(const char* name, unsigned int seeds, const OffsetTally& tally) {
  std::printf(
      "%s, seeds 1 to %u: folds %ld, cut %ld (x, y by the earlier segment %ld; on from before %ld, from behind %ld), "
      "without crossing %ld, open %ld; flags lost %ld\n",
      name, seeds, tally.folds, tally.cuts, tally.cutsByFirst, tally.cutsBack, tally.cutsAhead, tally.foldsKept, tally.openFolds,
      tally.flagsLost);
}

void ExpectAllReached(const OffsetTally& tally) {
  EXPECT_GT(tally.cuts, 100);
  EXPECT_GT(tally.cutsByFirst, 100);
  EXPECT_GT(tally.cutsBack, 100);
  EXPECT_GT(tally.cutsAhead, 20);
  EXPECT_GT(tally.foldsKept, 100);
  EXPECT_GT(tally.openFolds, 100);
  EXPECT_GT(tally.flagsLost, 100);
}

TEST(ProfileFoldsAgainstAllPairs, OnSomeLinesOfEveryKind) {
  OffsetTally tally;
  for (unsigned int seed = 200001; seed <= 201000; ++seed) {
    ExpectSameCuts(Generator(seed).Grid(), tally, seed);
    ExpectSameCuts(Generator(seed).NearlyTouching(), tally, seed);
    ExpectSameCuts(Generator(seed).Hostile(), tally, seed);
    if (seed % 100 == 0) ExpectSameCuts(Generator(seed).Plain(200), tally, seed);
    if (seed % 200 == 0) ExpectSameCuts(Generator(seed).Wide(), tally, seed);
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(tally.cuts, 100);
  EXPECT_GT(tally.foldsKept, 100);
}

TEST(ProfileFoldsAgainstAllPairsLong, OnAGrid) {
  constexpr unsigned int kSeeds = 100000;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ExpectSameCuts(Generator(seed).Grid(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("grid", kSeeds, tally);
  ExpectAllReached(tally);
}

TEST(ProfileFoldsAgainstAllPairsLong, NearlyTouching) {
  constexpr unsigned int kSeeds = 100000;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ExpectSameCuts(Generator(seed).NearlyTouching(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("nearly touching", kSeeds, tally);
  ExpectAllReached(tally);
}

TEST(ProfileFoldsAgainstAllPairsLong, WithNumbersThatAreNone) {
  constexpr unsigned int kSeeds = 100000;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ExpectSameCuts(Generator(seed).Hostile(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("hostile", kSeeds, tally);
  ExpectAllReached(tally);
}

TEST(ProfileFoldsAgainstAllPairsLong, OnLongLines) {
  constexpr unsigned int kSeeds = 400;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    Generator generator(seed);
    ExpectSameCuts(generator.Plain(50 + generator.Below(400)), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("long", kSeeds, tally);
  ExpectAllReached(tally);
}

TEST(ProfileFoldsAgainstAllPairsLong, OnWideFolds) {
  constexpr unsigned int kSeeds = 200;
  OffsetTally tally;
  for (unsigned int seed = 1; seed <= kSeeds; ++seed) {
    ExpectSameCuts(Generator(seed).Wide(), tally, seed);
    if (HasFatalFailure()) return;
  }
  Print("wide", kSeeds, tally);
  EXPECT_GT(tally.cuts, 100);
  EXPECT_GT(tally.foldsKept, 100);
}

}  // namespace
