// The calibration of the velocity sensor.

#include "zelbase/numerics/KalmanFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/numerics/KalmanTestHelp.h"

namespace {

// A vessel that makes (vx, vy) good, with a sensor that says (sensorVx, sensorVy); a fix and a velocity each second.
class Trial {
 public:
  explicit Trial(double firstTime = 100) : m_time(firstTime) { Initialize(filter, m_time, {}); }

  // A whole run: the start, 61 steps to beyond the window, and the closing one.
  void Complete(double vx, double vy, double sensorVx, double sensorVy) {
    for (int i = 0; i < 63; ++i) Step(vx, vy, sensorVx, sensorVy);
  }

  void Step(double vx, double vy, double sensorVx, double sensorVy) {
    Fixed(filter, m_time, m_x, m_y);
    Moved(filter, m_time, sensorVx, sensorVy);
    m_time += 1;
    m_x += vx;
    m_y += vy;
  }

  KalmanFilter filter;

 private:
  double m_time;
  double m_x = 0;
  double m_y = 0;
};

}  // namespace

TEST(KalmanFilterCalibration, ATenthOfTheHeadingErrorIsTakenOverEachRun) {
  Trial run;
  run.Complete(0, 2, 2 * East(-4), 2 * North(-4));  // the sensor points 4 degrees to port: the fixes are 4 to starboard
  EXPECT_NEAR(HeadingOf(run.filter), 0.4, 1e-9);
  run.Complete(0, 2, 2 * East(-4), 2 * North(-4));
  EXPECT_NEAR(HeadingOf(run.filter), 0.8, 1e-9);
  EXPECT_NEAR(ScaleOf(run.filter), 0, 1e-9);
}

TEST(KalmanFilterCalibration, HeadingErrorsOfTwentyDegreesMoveTheOffsetByOneARunUpToTen) {
  for (const double side : {1.0, -1.0}) {
    for (const double course : {0.0, 90.0, 180.0, 300.0, 350.0, 10.0}) {
      Trial run;
      for (int i = 1; i <= 13; ++i) {
        const double sensor = course - side * 20;
        run.Complete(3 * East(course), 3 * North(course), 3 * East(sensor), 3 * North(sensor));
        EXPECT_NEAR(HeadingOf(run.filter), side * std::min(i, 10), 1e-9) << "course " << course;
      }
      EXPECT_EQ(std::fabs(HeadingOf(run.filter)), 10.0);
    }
  }
}

TEST(KalmanFilterCalibration, HeadingErrorsAcrossNorthGoTheShortWay) {
  Trial fromWest;
  fromWest.Complete(3 * East(2), 3 * North(2), 3 * East(359), 3 * North(359));  // 2 - 359 is below -180
  EXPECT_NEAR(HeadingOf(fromWest.filter), 0.3, 1e-9);
  Trial fromEast;
  fromEast.Complete(3 * East(359), 3 * North(359), 3 * East(2), 3 * North(2));  // 359 - 2 is above 180
  EXPECT_NEAR(HeadingOf(fromEast.filter), -0.3, 1e-9);
}

TEST(KalmanFilterCalibration, AHeadingErrorOfExactlyHalfATurnIsNotWrapped) {
  Trial south;
  south.Complete(0, -2, 0, 2);  // 180 - 0: limited to 10
  EXPECT_DOUBLE_EQ(HeadingOf(south.filter), 1);
  Trial north;
  north.Complete(0, 2, 0, -2);  // 0 - 180: limited to -10
  EXPECT_DOUBLE_EQ(HeadingOf(north.filter), -1);
}

TEST(KalmanFilterCalibration, ATenthOfTheScaleErrorIsTakenOverInPartsPerThousand) {
  Trial run;
  run.Complete(0, 2.1, 0, 2);  // 50 parts per thousand more made good than measured
  EXPECT_NEAR(ScaleOf(run.filter), 5, 1e-9);
  Trial slow;
  slow.Complete(0, 1.9, 0, 2);
  EXPECT_NEAR(ScaleOf(slow.filter), -5, 1e-9);
  EXPECT_NEAR(HeadingOf(slow.filter), 0, 1e-9);
}

TEST(KalmanFilterCalibration, TheScaleErrorOfARunIsLimitedTo200AndItsSumLikewise) {
  Trial run;
  for (int i = 1; i <= 12; ++i) {
    run.Complete(0, 4, 0, 2);
    EXPECT_NEAR(ScaleOf(run.filter), std::min(20 * i, 200), 1e-9);
  }
  Trial other;
  for (int i = 1; i <= 12; ++i) {
    other.Complete(0, 1, 0, 2);
    EXPECT_NEAR(ScaleOf(other.filter), std::max(-20 * i, -200), 1e-9);
  }
}

TEST(KalmanFilterCalibration, AnIntegralOfZeroIsTheLargestScaleError) {
  Trial run;
  run.Complete(0, 2, 0, 0);
  EXPECT_DOUBLE_EQ(ScaleOf(run.filter), 20);
}

TEST(KalmanFilterCalibration, ValuesBeyondTheLimitsComeBackToThemWithTheNextRun) {
  Trial run;
  run.filter.SetCalibrationValues(500, -9000);
  run.Complete(0, 2, 0, 2);
  EXPECT_EQ(HeadingOf(run.filter), 10);
  EXPECT_EQ(ScaleOf(run.filter), -200);
}

TEST(KalmanFilterCalibration, ARunThatMadeGoodLessThanSixMetresChangesNothing) {
  // Divided by the 60 s of the window, not by the 61 s that passed: 6 metres are enough.
  for (const double length : {5.999, 6.0}) {
    KalmanFilter filter;
    Initialize(filter, 0, {});
    for (int t = 0; t <= 61; ++t) {
      Fixed(filter, t, t == 61 ? length : 0.0, 0);
      Moved(filter, t, 1, 1);
    }
    Moved(filter, 62, 1, 1);
    if (length < 6) {
      EXPECT_EQ(HeadingOf(filter), 0);
      EXPECT_EQ(ScaleOf(filter), 0);
    } else {
      EXPECT_DOUBLE_EQ(HeadingOf(filter), 1);  // 90 against 45 degrees
      EXPECT_DOUBLE_EQ(ScaleOf(filter), -20);
    }
  }
}

TEST(KalmanFilterCalibration, AVelocityFiveSecondsAfterTheFixStartsARunAndALaterOneDoesNot) {
  for (const double first : {5.0, 5.01}) {
    KalmanFilter filter;
    Initialize(filter, 0, {});
    Fixed(filter, 0, 0, 0);
    Moved(filter, first, 0, 10);
    Moved(filter, first, 0, 10);  // 5 s from the start
    for (const double t : {10.0, 15.0, 20.0, 25.0, 30.0, 35.0, 40.0, 45.0, 50.0, 55.0, 60.0, 61.0}) {
      Fixed(filter, t, 0, 11 * t);
      Moved(filter, t, 0, 10);
    }
    Moved(filter, 62, 0, 10);  // beyond the window of the fix at 0, not of the one at 10
    EXPECT_NEAR(ScaleOf(filter), first == 5.0 ? 10 : 0, 1e-9);
  }
}

TEST(KalmanFilterCalibration, TheWindowIsOverWhenMoreThanSixtySecondsHavePassed) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  const auto step = [&filter](double t) {
    Fixed(filter, t, 0, 12 * t);
    Moved(filter, t, 0, 10);
  };
  for (int t = 0; t <= 60; ++t) step(t);
  Moved(filter, 60, 0, 10);  // at exactly 60 s it goes on: this one does not close
  EXPECT_EQ(ScaleOf(filter), 0);
  step(61);
  EXPECT_EQ(ScaleOf(filter), 0);
  step(62);
  EXPECT_DOUBLE_EQ(ScaleOf(filter), 20);  // 12 to 10 is the limit of 200
}

TEST(KalmanFilterCalibration, IntegrationStartsAtTheTimeOfTheFixWithATrapezoid) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  Fixed(filter, 0, 0, 0);
  Moved(filter, 2, 0, 10);  // starts
  Moved(filter, 4, 0, 20);  // 4 s from the fix on, at a mean of 15: 60 m
  for (int t = 6; t <= 62; t += 2) {
    Fixed(filter, t, 500, 500);  // only the last fix counts
    Moved(filter, t, 0, 20);     // 29 times 40 m
  }
  EXPECT_EQ(ScaleOf(filter), 0);
  Fixed(filter, 63, 0, 1364);
  Moved(filter, 64, 0, 20);  // closes at the fix: one second, 20 m, 1240 m in all
  EXPECT_NEAR(ScaleOf(filter), 10, 1e-9);
  EXPECT_NEAR(HeadingOf(filter), 0, 1e-9);
}

TEST(KalmanFilterCalibration, TheClosingVelocityGoesToTheLastFixAndLooksForNoGap) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  for (int t = 0; t <= 61; ++t) {
    Fixed(filter, t, 0, 10 * t);
    Moved(filter, t, 0, 10);
  }
  Fixed(filter, 63, 0, 700);
  Moved(filter, 5000, 0, 30);  // 610 m and two seconds at a mean of 20
  EXPECT_NEAR(ScaleOf(filter), (700.0 / 650 - 1) * 100, 1e-9);
}

TEST(KalmanFilterCalibration, ALastFixBeforeTheLastVelocityAddsNothingAtTheClosing) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  for (int t = 0; t <= 60; ++t) {
    Fixed(filter, t, 0, 10 * t);
    Moved(filter, t, 0, 10);
  }
  Moved(filter, 61, 0, 10);   // 610 m against the 600 of the fix at 60
  Moved(filter, 62, 0, 999);  // minus one second is taken as none
  EXPECT_NEAR(ScaleOf(filter), (600.0 / 610 - 1) * 100, 1e-9);
}

TEST(KalmanFilterCalibration, AGapOfMoreThanFiveSecondsGivesTheRunUp) {
  for (const bool gapOfVelocities : {true, false}) {
    KalmanFilter filter;
    Initialize(filter, 0, {});
    for (int t = 0; t <= 63; ++t) {
      const bool gap = t > 30 && t < 37;
      if (!gap || gapOfVelocities) Fixed(filter, t, 0, 12 * t);
      if (!gap || !gapOfVelocities) Moved(filter, t, 0, 10);
    }
    EXPECT_EQ(ScaleOf(filter), 0);
    // The next run starts after the gap.
    for (int t = 64; t <= 100; ++t) {
      Fixed(filter, t, 0, 12 * t);
      Moved(filter, t, 0, 10);
    }
    EXPECT_DOUBLE_EQ(ScaleOf(filter), 20);
  }
}

TEST(KalmanFilterCalibration, AGapOfExactlyFiveSecondsIsNone) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  for (int t = 0; t <= 65; t += 5) {
    if (t < 65) Fixed(filter, t, 0, 12 * t);
    Moved(filter, t, 0, 10);
  }
  Moved(filter, 66, 0, 10);
  EXPECT_NEAR(ScaleOf(filter), 10 * (720.0 / 650 - 1) * 10, 1e-9);
}

TEST(KalmanFilterCalibration, InitializeGivesARunUpAndKeepsTheLastFix) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  for (int t = 0; t <= 61; ++t) {
    Fixed(filter, t, 0, 12 * t);
    Moved(filter, t, 0, 10);
  }
  Initialize(filter, 61, {});
  Moved(filter, 62, 0, 10);  // would have closed; starts at the fix of 61
  EXPECT_EQ(ScaleOf(filter), 0);
  for (int t = 63; t <= 123; ++t) {
    Fixed(filter, t, 0, 12 * t);
    Moved(filter, t, 0, 10);
  }
  EXPECT_DOUBLE_EQ(ScaleOf(filter), 20);
}

TEST(KalmanFilterCalibration, AClockThatStartsNearZeroCalibratesFromTheOriginWithoutAFix) {
  KalmanFilter filter;
  Initialize(filter, 0, {5000, 5000});
  Moved(filter, 1, 0, 10);  // a second after a fix that never was
  for (int t = 2; t <= 61; ++t) {
    Fixed(filter, t, 0, 12 * t);
    Moved(filter, t, 0, 10);
  }
  EXPECT_EQ(ScaleOf(filter), 0);
  Moved(filter, 62, 0, 10);
  EXPECT_DOUBLE_EQ(ScaleOf(filter), 20);  // (0, 732) from the origin
}

TEST(KalmanFilterCalibration, ARefusedFixIsNotRemembered) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  for (int t = 0; t <= 61; ++t) {
    Fixed(filter, t, 0, 10 * t);
    Moved(filter, t, 0, 10);
  }
  EXPECT_EQ(Fixed(filter, 60.5, 9999, 9999).status, 4);
  Moved(filter, 62, 0, 10);
  EXPECT_NEAR(ScaleOf(filter), 0, 1e-9);
  EXPECT_NEAR(HeadingOf(filter), 0, 1e-9);
}

TEST(KalmanFilterCalibration, CalibrationValuesAreNotAppliedToTheVelocities) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  filter.SetCalibrationValues(10, 200);
  const Values v = Moved(filter, 1, 0, 10);
  EXPECT_EQ(v.x, 0);
  EXPECT_EQ(v.y, 10);
}
