#include "zelbase/geometry/MathConstants.h"

// After the header on purpose: the macros must not come back.
#include <math.h>

#include <cmath>

#if defined(M_E) || defined(M_LOG2E) || defined(M_LOG10E) || defined(M_LN2) || defined(M_LN10) || defined(M_PI) || defined(M_PI_2) || \
    defined(M_PI_4) || defined(M_1_PI) || defined(M_2_PI) || defined(M_2_SQRTPI) || defined(M_SQRT2)
#error "a macro of <cmath> hides a constant of MATH"
#endif

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace MATH {

static double ToleranceInside() { return TOLERANCE; }

}  // namespace MATH

namespace {

TEST(MathConstants, ToleranceIsAnotherInsideMath) {
  EXPECT_EQ(TOLERANCE, 1e-07);
  EXPECT_EQ(MATH::TOLERANCE, 1e-10);
  EXPECT_EQ(MATH::ToleranceInside(), 1e-10);
}

TEST(MathConstants, ToleranceBehindAUsingDeclarationIsTheFineOne) {
  using MATH::TOLERANCE;
  EXPECT_EQ(TOLERANCE, 1e-10);
  EXPECT_EQ(::TOLERANCE, 1e-07);
}

TEST(MathConstants, EpsilonIsTheStepAboveOne) { EXPECT_EQ(EPSILON, std::numeric_limits<double>::epsilon()); }

TEST(MathConstants, DegreesToRadiansStaysTruncated) {
  EXPECT_LT(D_TO_R, MATH::DTR);
  EXPECT_NE(D_TO_R, std::numbers::pi / 180);
  EXPECT_NEAR(D_TO_R * 1e15, 17453292519943.0, 1e-2);  // all digits behind the fifteenth are gone
}

// The nearest doubles to the well-known numbers, from the standard library or by the nearest root.
TEST(MathConstants, WellKnownNumbersAreTheNearestDoubles) {
  EXPECT_EQ(MATH::M_E, std::numbers::e);
  EXPECT_EQ(MATH::M_LOG2E, std::numbers::log2e);
  EXPECT_EQ(MATH::M_LOG10E, std::numbers::log10e);
  EXPECT_EQ(MATH::M_LN2, std::numbers::ln2);
  EXPECT_EQ(MATH::M_LN10, std::numbers::ln10);
  EXPECT_EQ(MATH::M_PI, std::numbers::pi);
  EXPECT_EQ(MATH::M_PI_2, std::numbers::pi / 2);
  EXPECT_EQ(MATH::M_PI_4, std::numbers::pi / 4);
  EXPECT_EQ(MATH::M_1_PI, std::numbers::inv_pi);
  EXPECT_EQ(MATH::M_2_PI, 2 * std::numbers::inv_pi);
  EXPECT_EQ(MATH::M_1_SQRTPI, std::numbers::inv_sqrtpi);
  EXPECT_EQ(MATH::M_2_SQRTPI, 2 * std::numbers::inv_sqrtpi);
  EXPECT_EQ(MATH::M_SQRT2, std::numbers::sqrt2);
  EXPECT_EQ(MATH::M_SQRT2_2, std::sqrt(0.5));
  EXPECT_EQ(MATH::DTR, static_cast<double>(std::numbers::pi_v<long double> / 180));
  EXPECT_EQ(MATH::RTD, static_cast<double>(180 / std::numbers::pi_v<long double>));
  EXPECT_EQ(MATH::TWOPI, 2 * std::numbers::pi);
}

TEST(MathConstants, AllAreThereForAStaticInitialiser) {
  static constexpr double kSum = EPSILON + TOLERANCE + D_TO_R + MATH::TOLERANCE + MATH::M_PI;
  EXPECT_GT(kSum, 3.15);
}

}  // namespace
