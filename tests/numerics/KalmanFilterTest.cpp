#include "zelbase/numerics/KalmanFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "tests/numerics/CountedAllocations.h"
#include "tests/numerics/KalmanTestHelp.h"

namespace {

// The x axis alone, by scalars: position, velocity and the three elements of their covariance.
struct ScalarFilter {
  void Update(double dt, double deviation, double z, double r) {
    const double predictedX = x + dt * v;
    const double a = dt * dt / 2;
    const double q = deviation * deviation;
    const double xx = pxx + 2 * dt * pxv + dt * dt * pvv + a * a * q;
    const double xv = pxv + dt * pvv + a * dt * q;
    const double vv = pvv + dt * dt * q;
    const double kx = xx / (xx + r);
    const double kv = xv / (xx + r);
    x = predictedX + kx * (z - predictedX);
    v += kv * (z - predictedX);
    pxx = (1 - kx) * xx;
    pxv = (1 - kx) * xv;
    pvv = vv - kv * xv;
  }
  double x = 0, v = 0, pxx = 0, pxv = 0, pvv = 0;
};

}  // namespace

// --- Setting up ------------------------------------------------------------------------------------------------------

TEST(KalmanFilter, IsZeroWhenMade) {
  const KalmanFilter filter;
  double time = 5;
  ExpectValues(StateOf(filter, &time), Values());
  EXPECT_EQ(time, 0);
  EXPECT_EQ(HeadingOf(filter), 0);
  EXPECT_EQ(ScaleOf(filter), 0);
}

TEST(KalmanFilter, InitializeAloneShowsNothingButItsTimeInTheStateVector) {
  KalmanFilter filter;
  Initialize(filter, 50, {1, 2, 3, 4, 5, 6, 7});
  double time = 0;
  ExpectValues(StateOf(filter, &time), Values());
  EXPECT_EQ(time, 50);
}

TEST(KalmanFilter, InitializeDoesNotWriteTheStatus) {
  KalmanFilter filter;
  int status = 99;
  filter.Initialize(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 3, status);
  EXPECT_EQ(status, 99);
}

TEST(KalmanFilter, InitializeSetsTimeStateAndCalibrationValues) {
  KalmanFilter filter;
  Initialize(filter, 10, {100, 200, 3, -4}, 1.5, -25);
  EXPECT_EQ(HeadingOf(filter), 1.5);
  EXPECT_EQ(ScaleOf(filter), -25);
  ExpectValues(Predicted(filter, 12), {106, 192, 3, -4, 0, 0, 0, 0});
}

TEST(KalmanFilter, InitializeKeepsTheCovarianceOfTheVelocityAndTheUpdatedOne) {
  KalmanFilter filter;
  SecondKalmanFilter second;
  Initialize(filter, 0, {0, 0, 1, 1, 9, 9});
  second.Initialize(0, {0, 0, 1, 1, 9, 9}, 0, 0, 3);
  Values v = {3, 4, 0, 0, 4, 4, 1};
  second.Update(2, v);
  const Values updated = Fixed(filter, 2, 3, 4, 4, 1);
  Initialize(filter, 0, {0, 0, 0, 0, 1, 1});
  second.Initialize(0, {0, 0, 0, 0, 1, 1}, 0, 0, 3);
  const Values state = StateOf(filter);
  EXPECT_EQ(state.varX, updated.varX);
  EXPECT_EQ(state.varY, updated.varY);
  EXPECT_EQ(state.covXY, updated.covXY);
  // What is left of the velocity's covariance lets the second fix change the velocity at dt = 0.
  v = {3, 4, 0, 0, 4, 4, 1};
  second.Update(0, v);
  const Values again = Fixed(filter, 0, 3, 4, 4, 1);
  ExpectValues(again, v);
  EXPECT_NE(again.vx, 0);
}

TEST(KalmanFilter, InitializeDoesNotHealWhatIsNotANumber) {
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 0, 0, 9, 9});
  Fixed(filter, 1, 5, 6, kNan);
  Initialize(filter, 2, {0, 0, 0, 0, 9, 9});
  EXPECT_TRUE(std::isnan(Fixed(filter, 3, 5, 6).x));  // by the covariance of the velocity
}

TEST(KalmanFilter, DynamicsBeyondTheScaleAreItsEnds) {
  const int pairs[][2] = {{0, 1}, {-1, 1}, {std::numeric_limits<int>::min(), 1}, {6, 5}, {9, 5}, {std::numeric_limits<int>::max(), 5}};
  for (const auto& [given, taken] : pairs) {
    KalmanFilter a, b, c;
    Initialize(a, 0, {});
    Initialize(b, 0, {});
    Initialize(c, 0, {}, 0, 0, given);
    a.SetFilterDynamics(given);
    b.SetFilterDynamics(taken);
    const Values expected = Fixed(b, 1, 10, 20);
    ExpectValues(Fixed(a, 1, 10, 20), expected);
    ExpectValues(Fixed(c, 1, 10, 20), expected);
  }
}

TEST(KalmanFilter, ANewFilterHasTheLiveliestDynamics) {
  KalmanFilter fresh, lively;
  lively.SetFilterDynamics(1);
  ExpectValues(Fixed(fresh, 1, 10, 20), Fixed(lively, 1, 10, 20));
}

TEST(KalmanFilter, CalibrationValuesAreKeptAsGiven) {
  KalmanFilter filter;
  filter.SetCalibrationValues(123.5, -4567);
  EXPECT_EQ(HeadingOf(filter), 123.5);
  EXPECT_EQ(ScaleOf(filter), -4567);
}

TEST(KalmanFilter, CopiesAreDeep) {
  KalmanFilter filter;
  Initialize(filter, 0, {1, 2, 0, 0, 9, 9}, 1, 2);
  Fixed(filter, 1, 3, 4);
  KalmanFilter copy(filter);
  KalmanFilter assigned;
  assigned = filter;
  const Values state = StateOf(filter);
  Fixed(filter, 2, 50, 60);
  filter.SetCalibrationValues(8, 9);
  ExpectValues(StateOf(copy), state);
  ExpectValues(StateOf(assigned), state);
  EXPECT_EQ(HeadingOf(copy), 1);
  EXPECT_EQ(ScaleOf(assigned), 2);
  ExpectValues(Fixed(copy, 2, 50, 60), Fixed(assigned, 2, 50, 60));
  ExpectValues(StateOf(copy), StateOf(filter));
}

TEST(KalmanFilter, MayBeAssignedToItselfAndMovedFrom) {
  KalmanFilter filter;
  Initialize(filter, 7, {1, 2, 0, 0, 9, 9});
  const KalmanFilter& same = filter;
  filter = same;
  KalmanFilter moved(std::move(filter));
  EXPECT_EQ(TimeOf(moved), 7);
  EXPECT_EQ(TimeOf(filter), 7);  // a copy, so that no filter is ever without its state
}

// --- Position --------------------------------------------------------------------------------------------------------

TEST(KalmanFilter, AFixAtTheFiltersTimeIsMergedWithTheStateAsItStands) {
  KalmanFilter filter;
  Initialize(filter, 10, {100, 200, 3, 4, 4, 12});
  // Gains 4 / (4 + 4) and 12 / (12 + 4).
  ExpectValues(Fixed(filter, 10, 110, 240), {105, 230, 3, 4, 2, 3, 0, 0});
  EXPECT_EQ(TimeOf(filter), 10);
}

TEST(KalmanFilter, AFixAfterTwoSecondsByHand) {
  KalmanFilter filter;
  Initialize(filter, 0, {10, 10, 1, 1, 3.75, 3.75});
  // Deviation 0.25: q = 1/16, half dt squared 2, so predicted 3.75 + 4 q = 4 with the velocity 4 q = 0.25. Gains 1/2 and
  // 1/32 of the difference 16 - 12.
  ExpectValues(Fixed(filter, 2, 16, 16), {14, 14, 1.125, 1.125, 2, 2, 0, 0});
}

TEST(KalmanFilter, FollowsAScalarFilterOnEachAxis) {
  KalmanFilter filter;
  Initialize(filter, 0, {5, -5, 2, 1, 100, 50});
  ScalarFilter east = {5, 2, 100, 0, 0};
  ScalarFilter north = {-5, 1, 50, 0, 0};
  EdgeValues values(8220);
  for (int i = 1; i <= 200; ++i) {
    const double x = 2.5 * i + values.Between(-3, 3);
    const double y = -1.5 * i + values.Between(-3, 3);
    Values v = {x, y, 0, 0, 9, 4, 0, -1};
    Update(filter, i, v);
    east.Update(1, 0.35, x, 9);
    north.Update(1, 0.35, y, 4);
    ASSERT_NEAR(v.x, east.x, 1e-9);
    ASSERT_NEAR(v.y, north.x, 1e-9);
    ASSERT_NEAR(v.vx, east.v, 1e-9);
    ASSERT_NEAR(v.vy, north.v, 1e-9);
    ASSERT_NEAR(v.varX, east.pxx, 1e-9);
    ASSERT_NEAR(v.varY, north.pxx, 1e-9);
    ASSERT_EQ(v.covXY, 0);
  }
}

TEST(KalmanFilter, CorrelatedFixesByTheMatrixFormula) {
  // P = 4 I and R = [4 2, 2 4]: S = [8 2, 2 8] with determinant 60, K = P / S = [32 -8, -8 32] / 60.
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 0, 0, 4, 4});
  const Values v = Fixed(filter, 0, 6, 12, 4, 2);
  EXPECT_NEAR(v.x, (32 * 6 - 8 * 12) / 60.0, 1e-14);
  EXPECT_NEAR(v.y, (-8 * 6 + 32 * 12) / 60.0, 1e-14);
  EXPECT_NEAR(v.varX, (1 - 32 / 60.0) * 4, 1e-14);
  EXPECT_NEAR(v.varY, (1 - 32 / 60.0) * 4, 1e-14);
  EXPECT_NEAR(v.covXY, 8 / 60.0 * 4, 1e-14);
}

TEST(KalmanFilter, NoiseRowsAreSecondsAndColumnsAreDynamics) {
  const double table[5][5] = {{2.5, 1.25, 0.75, 0.35, 0.1},
                              {1.5, 0.75, 0.35, 0.15, 0.06},
                              {1.0, 0.5, 0.25, 0.1, 0.04},
                              {0.75, 0.4, 0.2, 0.07, 0.03},
                              {0.5, 0.25, 0.12, 0.05, 0.02}};
  const std::pair<double, int> steps[] = {{0.25, 0}, {0.9, 0},  {1.0, 1}, {1.999, 1}, {2.0, 2}, {2.5, 2},
                                          {3.0, 3},  {3.75, 3}, {4.0, 4}, {4.9, 4},   {5.0, 4}, {100.0, 4}};
  for (const auto& [dt, row] : steps) {
    for (int dynamics = 1; dynamics <= 5; ++dynamics) {
      KalmanFilter filter;
      Initialize(filter, 1000, {}, 0, 0, dynamics);
      const double elapsed = (1000 + dt) - 1000;
      const double deviation = table[row][dynamics - 1];
      const double predicted = std::pow(elapsed * elapsed / 2 * deviation, 2);
      const Values v = Fixed(filter, 1000 + dt, 0, 0, 4);
      EXPECT_NEAR(v.varX, predicted * 4 / (predicted + 4), 1e-12 * predicted) << dt << " s, dynamics " << dynamics;
    }
  }
}

TEST(KalmanFilter, EveryFixIsTakenHoweverFarOff) {
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 0, 0, 4, 4});
  EXPECT_EQ(Fixed(filter, 0, 1e9, -1e9).x, 5e8);
}

TEST(KalmanFilter, TimeBackwardsIsStatusFourAndNothingElse) {
  KalmanFilter filter;
  Initialize(filter, 10, {1, 2, 3, 4, 5, 6, 7}, 1, 2);
  Fixed(filter, 11, 5, 6);
  const Values state = StateOf(filter);
  Values refused = kUntouched;
  refused.status = 4;
  const double before = std::nextafter(11.0, 0.0);
  Values v = kUntouched;
  Update(filter, before, v);
  ExpectValues(v, refused);
  v = kUntouched;
  UpdateVelocity(filter, before, v);
  ExpectValues(v, refused);
  ExpectValues(Predicted(filter, -kInfinity), refused);
  ExpectValues(StateOf(filter), state);
  EXPECT_EQ(TimeOf(filter), 11);
}

TEST(KalmanFilter, TimeThatIsNotANumberIsNotBackwards) {
  KalmanFilter filter;
  Initialize(filter, 0, {1, 2, 3, 4, 5, 6, 7});
  const Values v = Fixed(filter, kNan, 5, 6);
  EXPECT_EQ(v.status, 0);
  EXPECT_TRUE(std::isnan(v.x));
  EXPECT_TRUE(std::isnan(TimeOf(filter)));
  EXPECT_EQ(Fixed(filter, 1, 5, 6).status, 0);
}

TEST(KalmanFilter, HugeStepsDoNoHarm) {
  for (const double time : {1e9, 1e18, 1e300, kLargest, kInfinity}) {
    KalmanFilter filter;
    Initialize(filter, 0, {1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(Fixed(filter, time, 5, 6).status, 0);
    EXPECT_EQ(Predicted(filter, time).status, 0);
  }
}

TEST(KalmanFilter, ASingularUpdateSaysSoAndGoesOn) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  testing::internal::CaptureStdout();
  const Values v = Fixed(filter, 0, 5, 6, 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kMessage) + kMessage);
  EXPECT_EQ(v.status, 0);
  EXPECT_EQ(v.x, 0);  // no variance on either side: the gain is 0 times 1e20
}

TEST(KalmanFilter, AVarianceThatIsNotANumberSaysSoForEachRowOfNothingButThatAndZeros) {
  KalmanFilter filter;
  Initialize(filter, 0, {});
  testing::internal::CaptureStdout();
  const Values v = Fixed(filter, 0, 5, 6, kNan);  // S = [NaN 0, 0 NaN]: no element is larger than 0
  EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kMessage) + kMessage);
  EXPECT_EQ(v.status, 0);
  EXPECT_TRUE(std::isnan(v.x));
}

TEST(KalmanFilter, PositionVelocityGivesStatusZeroAndDoesNothing) {
  KalmanFilter filter;
  Initialize(filter, 10, {1, 2, 3, 4, 5, 6, 7});
  Values v = kUntouched;
  filter.UpdatePositionVelocity(5, v.x, v.y, v.vx, v.vy, v.varX, v.varY, v.covXY, v.status);
  Values expected = kUntouched;
  expected.status = 0;
  ExpectValues(v, expected);
  EXPECT_EQ(TimeOf(filter), 10);
}

TEST(KalmanFilter, ArgumentsMayBeOneVariable) {
  KalmanFilter a, b;
  Initialize(a, 0, {0, 0, 0, 0, 4, 4});
  Initialize(b, 0, {0, 0, 0, 0, 4, 4});
  double all = 8;
  int status = -1;
  a.UpdatePosition(0, all, all, all, all, all, all, all, status);
  Values v = {8, 8, 8, 8, 8, 8, 8, -1};
  Update(b, 0, v);
  EXPECT_EQ(status, 0);
  ExpectValues(StateOf(a), StateOf(b));
}

// --- Prediction ------------------------------------------------------------------------------------------------------

TEST(KalmanFilter, PredictStateCanBeRepeatedAndDoesNotAdvanceTheFilter) {
  KalmanFilter filter, untouched;
  for (KalmanFilter* f : {&filter, &untouched}) {
    Initialize(*f, 0, {0, 0, 1, 2, 9, 9});
    Fixed(*f, 1, 3, 4);
  }
  const Values first = Predicted(filter, 5);
  ExpectValues(Predicted(filter, 5), first);
  Predicted(filter, 100);
  ExpectValues(Predicted(filter, 5), first);
  EXPECT_EQ(TimeOf(filter), 1);
  ExpectValues(Fixed(filter, 6, 7, 8), Fixed(untouched, 6, 7, 8));
}

TEST(KalmanFilter, PredictStateGivesTheCovarianceOfTheLastPositionUpdate) {
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 1, 2, 9, 9});
  Values predicted = Predicted(filter, 1000);
  EXPECT_EQ(predicted.varX, 0);  // there was no update
  const Values fixed = Fixed(filter, 1, 3, 4, 4, 1);
  Moved(filter, 10, 30, 40);  // widens the covariance that the next step goes by
  predicted = Predicted(filter, 1000);
  EXPECT_EQ(predicted.varX, fixed.varX);
  EXPECT_EQ(predicted.varY, fixed.varY);
  EXPECT_EQ(predicted.covXY, fixed.covXY);
}

TEST(KalmanFilter, StateVectorGivesThePredictionMadeBeforeTheFix) {
  KalmanFilter filter;
  Initialize(filter, 0, {10, 20, 1, 2, 9, 9});
  const Values fixed = Fixed(filter, 2, 100, 200);
  const Values state = StateOf(filter);
  EXPECT_EQ(state.x, 12);
  EXPECT_EQ(state.y, 24);
  EXPECT_EQ(state.vx, 1);
  EXPECT_EQ(state.vy, 2);
  EXPECT_EQ(state.varX, fixed.varX);
  EXPECT_EQ(state.varY, fixed.varY);
  EXPECT_EQ(state.covXY, fixed.covXY);
}

TEST(KalmanFilter, StateVectorGivesThePredictedStateWhichAPredictionChanges) {
  KalmanFilter filter;
  Initialize(filter, 0, {10, 20, 1, 2, 9, 9});
  Predicted(filter, 8);
  double time = -1;
  const Values state = StateOf(filter, &time);
  EXPECT_EQ(state.x, 18);
  EXPECT_EQ(state.y, 36);
  EXPECT_EQ(time, 0);
}

// --- Velocity --------------------------------------------------------------------------------------------------------

TEST(KalmanFilter, AVelocityMovesThePositionOnByHand) {
  KalmanFilter filter;
  Initialize(filter, 0, {10, 20, 99, 99, 5, 6, 1.5});
  // Speed 5, five per cent of it 0.25, squared 0.0625; times 2 squared 0.25.
  const Values v = Moved(filter, 2, 3, -4);
  EXPECT_EQ(v.x, 16);
  EXPECT_EQ(v.y, 12);
  EXPECT_EQ(v.vx, 3);
  EXPECT_EQ(v.vy, -4);
  EXPECT_DOUBLE_EQ(v.varX, 5.25);
  EXPECT_DOUBLE_EQ(v.varY, 6.25);
  EXPECT_EQ(v.covXY, 1.5);
  EXPECT_EQ(v.status, 0);
  EXPECT_EQ(TimeOf(filter), 2);
  const Values predicted = Predicted(filter, 3);
  EXPECT_EQ(predicted.vx, 3);  // the velocity is the state's now
  EXPECT_EQ(predicted.x, 19);
}

TEST(KalmanFilter, AVelocityDoesNotPropagateTheCovariance) {
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 0, 0, 9, 9});
  const Values fixed = Fixed(filter, 3, 1, 1, 9);  // leaves the position and the velocity correlated
  const Values v = Moved(filter, 103, 0, 0);
  EXPECT_EQ(v.varX, fixed.varX);
  EXPECT_EQ(v.varY, fixed.varY);
}

TEST(KalmanFilter, StateVectorAfterAVelocityIsTheDeadReckonedPositionWithTheCovarianceOfTheFix) {
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 0, 0, 9, 9});
  const Values fixed = Fixed(filter, 1, 0, 0, 9);
  const Values moved = Moved(filter, 3, 10, 20);
  const Values state = StateOf(filter);
  EXPECT_EQ(state.x, moved.x);
  EXPECT_EQ(state.y, moved.y);
  EXPECT_EQ(state.vx, 10);
  EXPECT_EQ(state.varX, fixed.varX);
  EXPECT_NE(moved.varX, fixed.varX);
}

// --- Chains of calls -------------------------------------------------------------------------------------------------

namespace {

// Our filter and the second transcription side by side, fed the same.
class Pair {
 public:
  explicit Pair(EdgeValues& values) : m_values(values) {}

  void SetDynamics(int dynamics) {
    ours.SetFilterDynamics(dynamics);
    second.SetDynamics(dynamics);
  }

  void SetCalibration(double heading, double scale) {
    ours.SetCalibrationValues(heading, scale);
    second.SetCalibration(heading, scale);
  }

  void Initialize(double time, const Values& v, int dynamics) {
    const double heading = m_values.Grid();
    const double scale = m_values.Grid();
    ::Initialize(ours, time, v, heading, scale, dynamics);
    second.Initialize(time, v, heading, scale, dynamics);
  }

  Values Update(double time, Values v) {
    Values w = v;
    ::Update(ours, time, v);
    second.Update(time, w);
    return Compared(v, w);
  }

  Values UpdateVelocity(double time, Values v) {
    Values w = v;
    ::UpdateVelocity(ours, time, v);
    second.UpdateVelocity(time, w);
    return Compared(v, w);
  }

  Values Predict(double time) {
    const Values v = Predicted(ours, time);
    Values w = kUntouched;
    second.Predict(time, w);
    return Compared(v, w);
  }

  KalmanFilter ours;
  SecondKalmanFilter second;

 private:
  Values Compared(const Values& v, const Values& w) {
    ExpectValues(v, w);
    double time = 0;
    Values state;
    second.GetStateVector(time, state);
    ExpectValues(StateOf(ours), state);
    EXPECT_TRUE(::Same(TimeOf(ours), time));
    EXPECT_TRUE(::Same(HeadingOf(ours), second.headingOffset));
    EXPECT_TRUE(::Same(ScaleOf(ours), second.scaleError));
    return v;
  }

  EdgeValues& m_values;
};

Values AnyValues(EdgeValues& values, bool wild) {
  const auto number = [&](double low, double high) {
    if (wild && values.Index(12) == 0) return values.Coordinate();
    return values.Between(low, high);
  };
  return {number(-500, 500), number(-500, 500), number(-5, 5), number(-5, 5), number(0, 9), number(0, 9), number(-1, 1), -1};
}

}  // namespace

TEST(KalmanFilter, AnyChainOfCallsGivesWhatTheSecondTranscriptionGives) {
  EdgeValues values(8250);
  Tally tally({"backwards", "not finite", "finite", "message"});
  testing::internal::CaptureStdout();
  std::string printed;
  for (int chain = 0; chain < kHeavyRounds / 10 && !testing::Test::HasFailure(); ++chain) {
    Pair pair(values);
    const bool wild = values.Flag();
    double time = wild ? values.Coordinate() : 0;
    for (int i = 0; i < 60; ++i) {
      const double steps[] = {0, 0.5, 1, 1, 2, 3.5, 4.9, 7, -0.25};
      time += wild && values.Index(20) == 0 ? values.Wild() : steps[values.Index(9)];
      if (std::isnan(time)) time = 0;
      Values v;
      switch (values.Index(12)) {
        case 0:
          if (values.Index(3) == 0) pair.Initialize(time, AnyValues(values, wild), values.Index(9) - 1);
          break;
        case 1: pair.SetDynamics(values.Index(9) - 1); break;
        case 2: pair.SetCalibration(values.Grid(), values.Grid()); break;
        case 3:
        case 4: v = pair.Predict(wild && values.Index(9) == 0 ? values.Wild() : time + 1); break;
        case 5:
        case 6:
        case 7:
        case 8:
          v = pair.Update(time, AnyValues(values, wild));
          tally.Count(std::isfinite(v.x) ? "finite" : "not finite");
          break;
        default: v = pair.UpdateVelocity(time, AnyValues(values, wild)); break;
      }
      if (v.status == 4) tally.Count("backwards");
    }
    if (!pair.second.printed.empty()) tally.Count("message");
    printed += pair.second.printed;
  }
  EXPECT_TRUE(testing::internal::GetCapturedStdout() == printed);
}

TEST(KalmanFilter, LongTracksGiveWhatTheSecondTranscriptionGives) {
  EdgeValues values(8260);
  int closed = 0;
  for (int track = 0; track < 12 && !testing::Test::HasFailure(); ++track) {
    Pair pair(values);
    pair.Initialize(1000, AnyValues(values, false), 1 + track % 5);
    double x = 0;
    double y = 0;
    double course = values.Between(0, 360);
    const double speed = track % 4 == 3 ? 0.1 : 3;
    for (double time = 1000; time < 2000; time += values.Index(40) == 0 ? values.Between(3, 8) : 1.0) {
      course += values.Between(-3, 3);
      x += speed * East(course);
      y += speed * North(course);
      if (values.Index(10) != 0) {
        pair.Update(time, {x + values.Between(-2, 2), y + values.Between(-2, 2), 0, 0, 4, 5, 0.5, -1});
      }
      const double shown = course + values.Between(-30, 30);
      pair.UpdateVelocity(time + 0.25, {0, 0, speed * East(shown), speed * North(shown), 0, 0, 0, -1});
      pair.Predict(time + 0.75);
    }
    closed += pair.second.closed;
  }
  EXPECT_GT(closed, 20);
}

TEST(KalmanFilter, NothingIsAllocatedByItsSteps) {
  KalmanFilter filter;
  Initialize(filter, 0, {0, 0, 1, 1, 9, 9});
  KalmanFilter other;
  Lops lops;
  lops.Add(kRange, 0, 0, 500);
  lops.Add(kRange, 1000, 400, 700);
  lops.Add(kBearing, 300, -1000, 1);
  const long before = CountedAllocations();
  for (int t = 0; t < 130; ++t) {
    Fixed(filter, t, 2 * t, 3 * t);
    Moved(filter, t, 2, 3);
    Predicted(filter, t + 1);
    StateOf(filter);
    Fix fix = {250, 480};
    filter.ReduceLops(0, lops.lops.data(), fix.x, fix.y, fix.varX, fix.varY, fix.covXY, fix.sigma, fix.count, fix.status);
    filter.ComputeEllipse(fix.varX, fix.varY, fix.covXY, fix.x, fix.y, fix.sigma);
    other = filter;
  }
  Fixed(filter, kNan, 1, 2);  // by the full formulas
  EXPECT_EQ(CountedAllocations(), before);
  const KalmanFilter counted;  // the counter does count
  EXPECT_GT(CountedAllocations(), before);
}
