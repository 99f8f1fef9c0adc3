// Lines of position reduced to a fix, and the ellipse of a covariance.

#include "zelbase/numerics/KalmanFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "tests/numerics/KalmanTestHelp.h"

TEST(ReduceLops, RangesToThreeStationsMeetAtTheVessel) {
  Lops lops;
  lops.Add(kRange, 0, 0, 500);  // the vessel at (300, 400)
  lops.Add(kRange, 1000, 400, 700);
  lops.Add(kRange, 300, -1000, 1400);
  const Fix fix = lops.Reduce(250, 480);
  EXPECT_EQ(fix.status, 0);
  EXPECT_EQ(fix.count, 3);
  EXPECT_NEAR(fix.x, 300, 1e-6);
  EXPECT_NEAR(fix.y, 400, 1e-6);
  EXPECT_NEAR(fix.sigma, 0, 1e-6);
  EXPECT_NEAR(lops.lops[0].azimuth, std::atan2(300, 400) * 180 / std::acos(-1.0), 1e-2);
  EXPECT_NEAR(lops.lops[1].azimuth, 270, 1e-2);
  EXPECT_NEAR(std::remainder(lops.lops[2].azimuth, 360), 0, 1e-2);
}

TEST(ReduceLops, BearingsFromTwoStationsMeetAtTheVessel) {
  Lops lops;
  lops.Add(kBearing, 0, 0, 45);  // the vessel at (1000, 1000)
  lops.Add(kBearing, 2000, 0, 315);
  const Fix fix = lops.Reduce(900, 1050);
  EXPECT_EQ(fix.status, 0);
  EXPECT_NEAR(fix.x, 1000, 1e-3);
  EXPECT_NEAR(fix.y, 1000, 1e-3);
}

TEST(ReduceLops, CovarianceIsThatOfTheWeightedEquations) {
  Lops ranges;
  ranges.Add(kRange, -1000, 0, 1000, 4);
  ranges.Add(kRange, 0, -1000, 1000, 9);
  Fix fix = ranges.Reduce(0, 0);
  EXPECT_DOUBLE_EQ(fix.varX, 4);
  EXPECT_DOUBLE_EQ(fix.varY, 9);
  EXPECT_EQ(fix.covXY, 0);
  EXPECT_EQ(fix.sigma, 0);
  // A bearing's variance is multiplied by the square of the distance; it measures across its line.
  Lops bearings;
  bearings.Add(kBearing, 0, -100, 0, 0.0004);
  bearings.Add(kBearing, -200, 0, 90, 0.0001);
  fix = bearings.Reduce(0, 0);
  EXPECT_DOUBLE_EQ(fix.varX, 4);
  EXPECT_DOUBLE_EQ(fix.varY, 4);
  // Stations at 45 degrees to either side of north: x and y each half of the sum of both.
  Lops oblique;
  oblique.Add(kRange, -1000, -1000, std::sqrt(2e6), 2);
  oblique.Add(kRange, 1000, -1000, std::sqrt(2e6), 6);
  fix = oblique.Reduce(0, 0);
  EXPECT_NEAR(fix.varX, 4, 1e-12);
  EXPECT_NEAR(fix.varY, 4, 1e-12);
  EXPECT_NEAR(fix.covXY, (2.0 - 6.0) / 2, 1e-12);
}

TEST(ReduceLops, ResidualIsComputedMinusObserved) {
  Lops lops;
  lops.Add(kRange, 1000, 0, 1001, 2);
  lops.Add(kRange, -1000, 0, 1001, 2);  // both a metre too long
  lops.Add(kRange, 0, -1000, 1000);
  const Fix fix = lops.Reduce(0, 0);
  EXPECT_EQ(fix.status, 0);
  EXPECT_EQ(lops.lops[0].residual, -1);
  EXPECT_EQ(lops.lops[1].residual, -1);
  EXPECT_EQ(lops.lops[2].residual, 0);
  EXPECT_EQ(fix.sigma, 1);  // twice 1 / 2
}

TEST(ReduceLops, CorrectionIsAddedToTheObservation) {
  Lops lops;
  lops.Add(kRange, -1000, 0, 900);
  lops.lops[0].correction = 100;
  lops.Add(kBearing, 0, -1000, 3);
  lops.lops[1].correction = -3;
  const Fix fix = lops.Reduce(0, 0);
  EXPECT_EQ(fix.status, 0);
  EXPECT_EQ(lops.lops[0].residual, 0);
  EXPECT_EQ(lops.lops[1].residual, 0);
}

TEST(ReduceLops, FewerThanTwoUsableEntriesIsStatusOne) {
  Lops lops;
  ExpectRefused(lops.Reduce(7, 8), 1, 7, 8);
  lops.Add(kRange, 7, -1000, 1000);
  lops.Add(kRange, -1000, 0, 1000, 1, 1);  // one of the two flags is not enough
  lops.Add(kRange, 0, -1000, 1000, 1, 2);
  lops.Add(kRange, 0, 1000, 1000, 1, 0xFFFFFFFC);
  ExpectRefused(lops.Reduce(7, 8), 1, 7, 8);
  EXPECT_EQ(lops.lops[0].azimuth, 0);
  EXPECT_EQ(lops.lops[0].residual, 0);
  for (int i = 1; i < 4; ++i) {
    EXPECT_EQ(lops.lops[static_cast<std::size_t>(i)].azimuth, 0);
    EXPECT_EQ(lops.lops[static_cast<std::size_t>(i)].residual, 0);
  }
}

TEST(ReduceLops, AzimuthsStayFilledWithoutAFix) {
  Lops lops;
  lops.Add(kRange, -1000, 0, 1000);
  ExpectRefused(lops.Reduce(0, 0), 1);
  EXPECT_EQ(lops.lops[0].azimuth, 90);
}

TEST(ReduceLops, FurtherFlagsDoNoHarm) {
  Lops lops;
  lops.Add(kRange, -1000, 0, 1000, 1, 7);
  lops.Add(kRange, 0, -1000, 1000, 1, 0xFFFFFFFF);
  EXPECT_EQ(lops.Reduce(0, 0).count, 2);
}

TEST(ReduceLops, WithoutAnArrayItIsStatusOne) {
  KalmanFilter filter;
  Fix fix = kUntouchedFix;
  filter.ReduceLops(0, nullptr, fix.x, fix.y, fix.varX, fix.varY, fix.covXY, fix.sigma, fix.count, fix.status);
  ExpectRefused(fix, 1);
}

TEST(ReduceLops, OtherTypesCountWithoutAnEquation) {
  Lops lops;
  lops.Add(kRange, -1000, 0, 1000);
  lops.Add(7, 0, 500, 123456);
  lops.Add(-1, 0, -500, 123456);
  lops.Add(kRange, 0, -1000, 1000);
  const Fix fix = lops.Reduce(0, 0);
  EXPECT_EQ(fix.status, 0);
  EXPECT_EQ(fix.count, 4);
  EXPECT_EQ(fix.x, 0);
  EXPECT_EQ(lops.lops[1].azimuth, 180);
  EXPECT_EQ(lops.lops[1].residual, 0);
  Lops alone;  // two count, though one equation is not enough
  alone.Add(kRange, -1000, 0, 1000);
  alone.Add(7, 0, 0, 0);
  testing::internal::CaptureStdout();
  EXPECT_EQ(alone.Reduce(0, 0).status, 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), kMessage);
}

TEST(ReduceLops, AMisclosureOfExactlyTenThousandIsAllowed) {
  for (const bool tooLarge : {false, true}) {
    Lops lops;
    lops.Add(kRange, -1e6, 0, tooLarge ? 1010000.1 : 1010000.0);
    lops.Add(kRange, 0, -1e6, 1e6);
    const Fix fix = lops.Reduce(0, 0);
    if (tooLarge) {
      ExpectRefused(fix, 3);
      EXPECT_EQ(lops.lops[0].azimuth, 90);
      EXPECT_EQ(lops.lops[0].residual, 0);
    } else {
      EXPECT_EQ(fix.status, 0);
      // The stations' circles: x = 1010000 cos - 1000000, and so on, within a step of the convergence.
      EXPECT_NEAR(std::hypot(fix.x + 1e6, fix.y), 1010000, 0.1);
      EXPECT_NEAR(std::hypot(fix.x, fix.y + 1e6), 1e6, 0.1);
    }
  }
}

TEST(ReduceLops, BearingsAreNotWrappedInTheMisclosure) {
  Lops across;
  across.Add(kBearing, 0, -2000, 359.99);  // taken as 359.99 degrees off, 12566 m
  across.Add(kRange, 0, -2000, 2000);
  ExpectRefused(across.Reduce(0, 0), 3);
  Lops same;
  same.Add(kBearing, 0, -2000, 0.01);
  same.Add(kRange, 0, -2000, 2000);
  EXPECT_EQ(same.Reduce(0, 0).status, 0);
}

TEST(ReduceLops, ConvergesWithTheFifthCorrectionAndNotWithTheSixthHoweverSmall) {
  // Two stations 2 km apart, the vessel on the line between them: each correction halves what is left of y, so that the
  // fifth is y / 32 and the sixth y / 64.
  for (const double y : {3.0, 5.0}) {
    Lops lops;
    lops.Add(kRange, -1000, 0, 1000);
    lops.Add(kRange, 1000, 0, 1000);
    const Fix fix = lops.Reduce(0, y);
    if (y == 3.0) {
      EXPECT_EQ(fix.status, 0);
      EXPECT_NEAR(fix.y, 3.0 / 32, 1e-4);
    } else {
      ExpectRefused(fix, 2, 0, 5);
      EXPECT_NEAR(lops.lops[0].azimuth, 90, 1);
    }
  }
}

TEST(ReduceLops, CirclesThatDoNotMeetDoNotConverge) {
  Lops lops;
  lops.Add(kRange, -1000, 0, 300);
  lops.Add(kRange, 1000, 0, 300);
  ExpectRefused(lops.Reduce(0, 500), 2, 0, 500);
}

TEST(ReduceLops, AnEstimateOnTheStationOfARangeIsMovedNorth) {
  Lops lops;
  lops.Add(kRange, 0, 0, 10);
  lops.Add(kRange, 1000, 0, 1000);
  const Fix fix = lops.Reduce(0, 0);
  EXPECT_EQ(fix.status, 0);
  EXPECT_NEAR(fix.y, 10, 0.01);
  EXPECT_NEAR(fix.x, 0.05, 0.001);  // the other circle bends away by 10 * 10 / 2000
}

TEST(ReduceLops, AnEstimateOnTheStationOfABearingIsHeldToItsX) {
  Lops lops;
  lops.Add(kBearing, 0, 0, 123, 0.25);
  lops.Add(kRange, 0, -1000, 1000, 4);
  const Fix fix = lops.Reduce(0, 0);
  EXPECT_EQ(fix.status, 0);
  EXPECT_EQ(fix.x, 0);
  EXPECT_EQ(fix.varX, 0.25);  // the variance itself, without a distance
  EXPECT_EQ(fix.varY, 4);
}

TEST(ReduceLops, AnEstimateWithinRoundingOfTheStationCountsAsOnIt) {
  // 1e-17 east of the station: seen from there the range would lie along x.
  Lops range;
  range.Add(kRange, 0, 0, 0.0625);
  range.Add(kRange, 1000, 0, 1000);
  const Fix moved = range.Reduce(1e-17, 0);
  EXPECT_EQ(moved.status, 0);
  EXPECT_NEAR(moved.y, 0.0625, 1e-9);
  // And the bearing along y; on the station it goes to x, where its misclosure is that of the distance.
  Lops bearing;
  bearing.Add(kBearing, 0, 0, 100);
  bearing.Add(kRange, 0, -1000, 1000);
  const Fix held = bearing.Reduce(1e-17, 0);
  EXPECT_EQ(held.status, 0);
  EXPECT_NEAR(held.x, 1e-17 * (1 + 100 * 3.14159265358979 / 180), 1e-27);
}

TEST(ReduceLops, ACorrectionOfExactlyTheLimitIsTheLast) {
  Lops lops;
  lops.Add(kRange, 0, 0, 0.1);  // on the station: 0.1 north
  lops.Add(kRange, 1000, 0, 1000);
  const Fix north = lops.Reduce(0, 0);
  EXPECT_EQ(north.status, 0);
  EXPECT_EQ(north.y, 0.1);
  EXPECT_EQ(north.x, 0);  // another pass would follow the bend of the second circle
}

TEST(ReduceLops, TwoEqualRangesAlongAnAxisSaySoOnceAPass) {
  Lops lops;
  lops.Add(kRange, 1000, 0, 1000);
  lops.Add(kRange, 1000, 0, 1000);
  testing::internal::CaptureStdout();
  const Fix fix = lops.Reduce(0, 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), kMessage);
  EXPECT_EQ(fix.status, 0);
  EXPECT_DOUBLE_EQ(fix.varX, 0.5);
  EXPECT_DOUBLE_EQ(fix.varY, 1e20);
  Lops moved;
  moved.Add(kRange, 1000, 0, 900);  // a second pass
  moved.Add(kRange, 1000, 0, 900);
  testing::internal::CaptureStdout();
  EXPECT_EQ(moved.Reduce(0, 0).x, 100);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kMessage) + kMessage);
}

TEST(ReduceLops, TwoEqualRangesElsewhereSayNothing) {
  Lops lops;
  lops.Add(kRange, 300, 400, 500);
  lops.Add(kRange, 300, 400, 500);
  testing::internal::CaptureStdout();
  lops.Reduce(0, 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ReduceLops, TouchesNoStateAndNoWordOfTheCallers) {
  KalmanFilter filter;
  Initialize(filter, 5, {1, 2, 3, 4, 5, 6, 7});
  Lops lops;
  lops.Add(kRange, -1000, 0, 1000);
  lops.Add(kRange, 0, -1000, 1000);
  lops.lops[0].callerWord1 = 11;
  lops.lops[0].callerWord2 = 12;
  lops.lops[0].callerValue = 13;
  Fix fix;
  filter.ReduceLops(kNan, lops.lops.data(), fix.x, fix.y, fix.varX, fix.varY, fix.covXY, fix.sigma, fix.count, fix.status);
  EXPECT_EQ(fix.status, 0);
  ExpectValues(StateOf(filter), Values());
  EXPECT_EQ(TimeOf(filter), 5);
  EXPECT_EQ(lops.lops[0].callerWord1, 11u);
  EXPECT_EQ(lops.lops[0].callerWord2, 12u);
  EXPECT_EQ(lops.lops[0].callerValue, 13);
  EXPECT_EQ(lops.lops[0].observed, 1000);
  EXPECT_EQ(lops.lops[0].variance, 1);
}

namespace {

void ExpectAnyEntriesAsTheSecond(unsigned int seed, int rounds, const std::function<void(const std::string&)>& tally) {
  EdgeValues values(seed);
  testing::internal::CaptureStdout();
  SecondKalmanFilter second;
  for (int round = 0; round < rounds; ++round) {
    Lops ours;
    const bool wild = values.Index(4) == 0;
    const bool related = values.Flag();
    const int count = values.Index(9);
    for (int i = 0; i < count; ++i) {
      double x = wild ? values.Coordinate() : values.Between(-3000, 3000);
      double y = wild ? values.Coordinate() : values.Between(-3000, 3000);
      if (i > 0 && related) {
        // The station before, or the one across from it, or in line with it.
        const LopStruct& before = ours.lops[static_cast<std::size_t>(i - 1)];
        const double factor = std::array{1.0, -1.0, 2.0}[static_cast<std::size_t>(values.Index(3))];
        x = values.Near(factor * before.x);
        y = values.Near(factor * before.y);
        tally("related stations");
      }
      const int type = values.Index(10) == 0 ? values.Index(5) - 2 : values.Index(2);
      const double truth = type == kRange ? std::hypot(x, y) : std::fmod(std::atan2(-x, -y) * 57.29578 + 360, 360);
      const double observed = wild ? values.Coordinate() : truth + values.Between(-0.5, 0.5);
      ours.Add(type, x, y, observed, wild ? values.Coordinate() : values.Between(0.0001, 4),
               values.Index(8) == 0 ? static_cast<unsigned int>(values.Index(8)) : 3u);
      ours.lops[static_cast<std::size_t>(i)].correction = wild ? values.Grid() : 0.25;
    }
    const double x = wild ? values.Coordinate() : values.Between(-500, 500);
    const double y = wild ? values.Coordinate() : values.Between(-500, 500);
    std::vector<LopStruct> lops = ours.lops;
    Fix expected = kUntouchedFix;
    expected.x = x;
    expected.y = y;
    const std::size_t before = second.printed.size();
    second.Reduce(lops, expected);
    const Fix fix = ours.Reduce(x, y);
    EXPECT_TRUE(Same(fix, expected)) << "round " << round << ": " << fix.x << " " << expected.x << ", status " << fix.status << " "
                                     << expected.status;
    for (std::size_t i = 0; i < 8; ++i) {
      EXPECT_TRUE(::Same(ours.lops[i].residual, lops[i].residual)) << "round " << round;
      EXPECT_TRUE(::Same(ours.lops[i].azimuth, lops[i].azimuth)) << "round " << round;
    }
    tally("status " + std::to_string(fix.status));
    if (second.printed.size() > before) tally("message");
    if (fix.status == 0 && !std::isfinite(fix.x)) tally("not finite");
    if (testing::Test::HasFailure()) break;
  }
  EXPECT_TRUE(testing::internal::GetCapturedStdout() == second.printed);
}

}  // namespace

// Weights so small that a variance of the fix is beyond all numbers.
TEST(ReduceLops, VariancesNearTheLargestGiveWhatTheSecondTranscriptionGives) {
  EdgeValues values(8232);
  testing::internal::CaptureStdout();
  SecondKalmanFilter second;
  const std::array places = {0.0, 1.0, -1.0, 1000.0, -1000.0, 2500.0};
  const std::array variances = {1.0, 1e300, 1e308, 1.7e308};
  int infinite = 0;
  for (int round = 0; round < 3000; ++round) {
    Lops ours;
    for (int i = 2 + values.Index(3); i > 0; --i) {
      const double x = places[static_cast<std::size_t>(values.Index(6))];
      const double y = places[static_cast<std::size_t>(values.Index(6))];
      ours.Add(kRange, x, y, std::hypot(x, y) + values.Between(-0.5, 0.5), variances[static_cast<std::size_t>(values.Index(4))]);
    }
    std::vector<LopStruct> lops = ours.lops;
    Fix expected = kUntouchedFix;
    expected.x = expected.y = 0;
    second.Reduce(lops, expected);
    const Fix fix = ours.Reduce(0, 0);
    EXPECT_TRUE(Same(fix, expected)) << "round " << round << ": " << fix.x << ' ' << expected.x << ", status " << fix.status;
    infinite += std::isfinite(expected.varX) ? 0 : 1;
  }
  EXPECT_GT(infinite, 100);
  EXPECT_TRUE(testing::internal::GetCapturedStdout() == second.printed);
}

TEST(ReduceLops, SomeEntriesGiveWhatTheSecondTranscriptionGives) {
  ExpectAnyEntriesAsTheSecond(8231, 2000, [](const std::string&) {});
}

TEST(ReduceLopsLong, AnyEntriesGiveWhatTheSecondTranscriptionGives) {
  Tally tally({"status 0", "status 1", "status 2", "status 3", "message", "not finite", "related stations"});
  ExpectAnyEntriesAsTheSecond(8230, kHeavyRounds, [&tally](const std::string& branch) { tally.Count(branch); });
}

// --- Ellipse ---------------------------------------------------------------------------------------------------------

namespace {

struct Ellipse {
  double semiMajor = -1;
  double semiMinor = -1;
  double orientation = -1;
};

Ellipse EllipseOf(double varX, double varY, double covXY) {
  Ellipse e;
  KalmanFilter::ComputeEllipse(varX, varY, covXY, e.semiMajor, e.semiMinor, e.orientation);
  return e;
}

void ExpectEllipse(const Ellipse& e, double semiMajor, double semiMinor, double orientation) {
  EXPECT_NEAR(e.semiMajor, semiMajor, 1e-7);
  EXPECT_NEAR(e.semiMinor, semiMinor, 1e-7);
  EXPECT_NEAR(e.orientation, orientation, 1e-9);
}

}  // namespace

TEST(ComputeEllipse, EqualVariancesTakeFortyFiveDegrees) {
  ExpectEllipse(EllipseOf(1, 1, 0), 1, 1, 45);
  ExpectEllipse(EllipseOf(2, 2, 1), std::sqrt(3.0), 1, 45);
  ExpectEllipse(EllipseOf(2, 2, -1), std::sqrt(3.0), 1, 135);
}

TEST(ComputeEllipse, VariancesAreEqualBelowAThousandth) {
  EXPECT_NEAR(EllipseOf(1, 1.0009, 0.5).orientation, 45, 1e-9);
  EXPECT_NEAR(EllipseOf(1, 1.0011, 0.5).orientation, std::atan(1 / 0.0011) * 90 / std::acos(-1.0), 1e-9);
  EXPECT_NEAR(EllipseOf(0.001, 0, 0.01).orientation, 90 - std::atan(20) * 90 / std::acos(-1.0), 1e-9);
}

TEST(ComputeEllipse, TheMajorAxisIsGivenClockwiseFromNorth) {
  ExpectEllipse(EllipseOf(4, 1, 0), 2, 1, 90);
  ExpectEllipse(EllipseOf(1, 4, 0), 2, 1, 0);
}

TEST(ComputeEllipse, IsAlsoAMember) {
  const KalmanFilter filter;
  Ellipse e;
  filter.ComputeEllipse(4, 1, 0, e.semiMajor, e.semiMinor, e.orientation);
  ExpectEllipse(e, 2, 1, 90);
}

TEST(ComputeEllipse, AxesAndDirectionOfAnyEllipse) {
  EdgeValues values(8240);
  for (int round = 0; round < kRandomRounds; ++round) {
    const double major = values.Between(5, 10);
    const double minor = values.Between(0.5, 4);
    const double angle = values.Between(0, 180);
    // The covariance of an ellipse that is turned clockwise from north.
    const double s = East(angle);
    const double c = North(angle);
    const double varX = major * major * s * s + minor * minor * c * c;
    const double varY = major * major * c * c + minor * minor * s * s;
    const double covXY = (major * major - minor * minor) * s * c;
    if (std::fabs(varX - varY) < 0.01) continue;
    const Ellipse e = EllipseOf(varX, varY, covXY);
    ASSERT_NEAR(e.semiMajor, major, 1e-7);
    ASSERT_NEAR(e.semiMinor, minor, 1e-7);
    const double apart = std::fabs(e.orientation - angle);
    ASSERT_NEAR(std::min(apart, 180 - apart), 0, 1e-7);
    ASSERT_GE(e.orientation, 0);
    ASSERT_LE(e.orientation, 180);
  }
}

// The squares of the axes are the eigenvalues; between variances that count as equal, to half their difference.
TEST(ComputeEllipse, AxesOfNearlyRoundAndNearlyFlatEllipsesAreTheEigenvalues) {
  EdgeValues values(8241);
  Tally tally({"variances count as equal", "variances differ", "round", "flat"});
  for (int round = 0; round < kRandomRounds; ++round) {
    const double varX = values.Between(0.01, 9);
    const double varY = values.Flag() ? values.Near(varX) : values.Flag() ? varX + values.Between(-0.002, 0.002) : values.Between(0.01, 9);
    const double most = std::sqrt(varX * varY);
    const double covXY = values.Flag()   ? most * values.Between(-0.999, 0.999)
                         : values.Flag() ? 0
                                         : (values.Flag() ? most : -most) * 0.999999;
    const double middle = (varX + varY) / 2;
    const double apart = std::hypot((varX - varY) / 2, covXY);
    const bool isEqual = std::fabs(varX - varY) < 0.001;
    const double tolerance = 1e-9 + (isEqual ? std::fabs(varX - varY) / 2 : 0);
    tally.Count(isEqual ? "variances count as equal" : "variances differ");
    if (apart < 1e-6) tally.Count("round");
    if (middle - apart < 1e-4) tally.Count("flat");
    const Ellipse e = EllipseOf(varX, varY, covXY);
    ASSERT_NEAR(e.semiMajor * e.semiMajor, middle + apart, tolerance) << varX << ' ' << varY << ' ' << covXY;
    ASSERT_NEAR(e.semiMinor * e.semiMinor, middle - apart, tolerance) << varX << ' ' << varY << ' ' << covXY;
    ASSERT_TRUE(e.orientation >= 0 && e.orientation <= 180);
  }
}

TEST(ComputeEllipse, WhatIsNoCovarianceGivesNotANumbers) {
  EXPECT_TRUE(std::isnan(EllipseOf(-4, -1, 0).semiMajor));
  EXPECT_TRUE(std::isnan(EllipseOf(kNan, 1, 0).semiMajor));
  EXPECT_TRUE(std::isnan(EllipseOf(1, 1, kInfinity).semiMajor));
}
