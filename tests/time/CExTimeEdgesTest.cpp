// What lies right beside the limits of CExTime: readings just above 0, the first use without a reading, times beyond 64 bits, a
// date that was there before, a local time that the system does not know, and the count of changes that tells readers to wait.
#include <gtest/gtest.h>

#include "tests/time/ClockAccess.h"
#include "zelbase/time/CExTime.h"

namespace {

using namespace clock_access;

using CExTimeEdges = ClockTest;

TEST_F(CExTimeEdges, ReadingOfLessThanAMillisecondMovesTheReference) {
  SetBase(1000000.0, 1000000.0);
  EXPECT_EQ(time.GetExTime(0.5), 1000000.5);
  EXPECT_EQ(Reference(), 1000000.5);
}

TEST_F(CExTimeEdges, TheUnusedMemberStaysInTheShapeAndFalse) {
  static_cast<void>(time.GetExTime(0.5));
  EXPECT_FALSE(CExTime::m_firstTimeInit);
}

TEST_F(CExTimeEdges, FirstUseByReadingZeroLeavesTheReferenceAtTheWallClock) {
  clock.counter = 25000000;  // 2500 ms
  clock.wall = {5000, 0, false};
  EXPECT_EQ(time.GetExTime(0.0), 5000000.0 - 2500.0);
  EXPECT_EQ(Reference(), 5000000.0);
}

TEST_F(CExTimeEdges, WinTimeTakesTheCycleOffBeforeTheCutTo32Bits) {
  SetBase(0.0, 0.0);
  // 2^63 + 2048 has no 64-bit count; less 2^32 it has one, whose low half is 2048.
  EXPECT_EQ(time.GetWinTime(9223372036854777856.0), 2048u);
  // Twice that is beyond it either way: the smallest count, whose low half is 0.
  EXPECT_EQ(time.GetWinTime(2.0 * 9223372036854777856.0), 0u);
}

TEST_F(CExTimeEdges, OleDateOutsideTheCalendarReplacesTheFormerOne) {
  COleDateTime date;
  date.m_dt = 36526.5;
  date.m_status = COleDateTime::valid;
  time.ConvertToOleTime(-1000.0, &date);
  EXPECT_EQ(date.m_dt, 0.0);
  EXPECT_EQ(date.m_status, COleDateTime::invalid);
}

TEST_F(CExTimeEdges, OleDateThatTheSystemHasNoLocalTimeForGivesZero) {
  struct : HandClock {
    bool FromLocalTime(const CalendarTime&, long long&) override { return false; }
  } refusing;
  const PlatformOverride<PlatformClock> guard(refusing);
  EXPECT_EQ(time.ConvertOleTime(COleDateTime(36526.5)), 0.0);
}

TEST_F(CExTimeEdges, ChangesCountOnceAtTheirBeginningAndOnceAtTheirEnd) {
  SetBase(1e12, 1e12);
  const unsigned int before = *Find(Version{});
  time.SetUtcCoeffs(1.0, 1.0, 1.0);
  EXPECT_EQ(*Find(Version{}), before + 2);
  time.SetBaseTime(2e12);
  EXPECT_EQ(*Find(Version{}), before + 4);
}

// The way under the lock moves the reference within a change of its own, which shows in the count.
TEST_F(CExTimeEdges, ReadingsTakeTheLockOnlyWhileAChangeIsUnderWay) {
  SetBase(1e12, 1e12);
  for (unsigned int version = 0; version < 8; ++version) {
    *Find(Version{}) = version;
    EXPECT_EQ(time.GetExTime(1.0 + version), 1e12 + 1.0 + version);
    EXPECT_EQ(*Find(Version{}), version % 2 == 0 ? version : version + 2);
  }
  *Find(Version{}) = 0;
}

}  // namespace
