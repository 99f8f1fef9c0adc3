// Round numbers for axes, grids and bars.

#include "survey/ChartSteps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace zel;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(ChartSteps, StepsAreTheLeastOfOneTwoFive) {
  struct Row {
    double range, parts, step;
  };
  for (const Row& row : {Row{10, 10, 1},
                         {11, 10, 2},
                         {20, 10, 2},
                         {21, 10, 5},
                         {50, 10, 5},
                         {51, 10, 10},
                         {1, 10, 0.1},
                         {1.01, 10, 0.2},
                         {0.0049, 1, 0.005},
                         {3e7, 3, 1e7},
                         {3.1e7, 3, 2e7},
                         {7, 7, 1}}) {
    EXPECT_NEAR(NiceStep(row.range, row.parts), row.step, row.step * 1e-12) << row.range << " in " << row.parts;
  }
}

TEST(ChartSteps, StepsOfNoRangeAreOne) {
  for (const double range : {0.0, -3.0, kInfinity, kNan}) EXPECT_EQ(NiceStep(range, 5), 1.0);
}

TEST(ChartSteps, LengthsAreTheGreatestOfOneTwoFive) {
  for (const auto& [most, length] :
       {std::pair{1.0, 1.0}, {1.9, 1.0}, {2.0, 2.0}, {4.99, 2.0}, {5.0, 5.0}, {9.99, 5.0}, {10.0, 10.0}, {0.07, 0.05}, {2300.0, 2000.0}}) {
    EXPECT_NEAR(NiceLength(most), length, length * 1e-12) << most;
  }
  EXPECT_EQ(NiceLength(0.0), 1.0);
  EXPECT_EQ(NiceLength(kNan), 1.0);
}

TEST(ChartSteps, ScalesAreCustomaryAndNotBelowTheLeast) {
  for (const auto& [least, scale] : {std::pair{1000.0, 1000.0},
                                     {1001.0, 1250.0},
                                     {1251.0, 1500.0},
                                     {1600.0, 2000.0},
                                     {2001.0, 2500.0},
                                     {2501.0, 3000.0},
                                     {3500.0, 4000.0},
                                     {4054.0, 5000.0},
                                     {5500.0, 6000.0},
                                     {6100.0, 7500.0},
                                     {7600.0, 8000.0},
                                     {8100.0, 10000.0},
                                     {3.0, 10.0},
                                     {0.0, 10.0}}) {
    EXPECT_NEAR(NiceScale(least), scale, scale * 1e-12) << least;
  }
}

TEST(ChartSteps, AngleStepsAreThoseOfAClock) {
  const double second = 1.0 / 3600.0, minute = 1.0 / 60.0;
  struct Row {
    double least, step;
  };
  for (const Row& row : {Row{0.9 * second, second},
                         {3 * second, 5 * second},
                         {11 * second, 15 * second},
                         {16 * second, 20 * second},
                         {31 * second, minute},
                         {3 * minute, 5 * minute},
                         {12 * minute, 15 * minute},
                         {31 * minute, 1.0},
                         {3.0, 5.0},
                         {0.11 * second, 0.2 * second}}) {
    EXPECT_NEAR(NiceAngleStep(row.least, 1, CoordinateForm::Seconds), row.step, row.step * 1e-9) << row.least;
  }
  EXPECT_NEAR(NiceAngleStep(11 * second, 1, CoordinateForm::Minutes), 0.2 * minute, 1e-12) << "tenths of a minute, not seconds";
  EXPECT_NEAR(NiceAngleStep(16 * minute, 1, CoordinateForm::Minutes), 20 * minute, 1e-12);
  EXPECT_NEAR(NiceAngleStep(16 * minute, 1, CoordinateForm::Degrees), 0.5, 1e-12) << "decimals of a degree";
}

TEST(ChartSteps, DecimalsTellMultiplesApart) {
  for (const auto& [step, decimals] : {std::pair{1.0, 0}, {200.0, 0}, {0.5, 1}, {0.1, 1}, {0.02, 2}, {0.001, 3}, {1e-20, 12}})
    EXPECT_EQ(DecimalsOf(step), decimals) << step;
  EXPECT_EQ(DecimalsOf(kNan), 0);
}

TEST(ChartSteps, MultiplesIncludeBothEndsAndAreBounded) {
  EXPECT_EQ(Multiples(-20, 40, 20), (std::vector<double>{-20, 0, 20, 40}));
  EXPECT_EQ(Multiples(0.05, 0.35, 0.1).size(), 3u);
  EXPECT_EQ(Multiples(21, 39, 20), std::vector<double>{});
  EXPECT_TRUE(Multiples(0, 1e9, 1).empty()) << "too many";
  EXPECT_TRUE(Multiples(0, kInfinity, 1).empty());
  EXPECT_TRUE(Multiples(0, 1, 0).empty());
  EXPECT_TRUE(Multiples(0, 1, kNan).empty());
  EXPECT_FALSE(std::signbit(Multiples(-1, 1, 1)[1])) << "never -0";
}

TEST(ChartSteps, ThousandsAreSetApart) {
  const std::string thin = "\u2009";
  EXPECT_EQ(Thousands(5752300), "5" + thin + "752" + thin + "300");
  EXPECT_EQ(Thousands(999), "999");
  EXPECT_EQ(Thousands(-1234.5, 1), "-1" + thin + "234.5");
  EXPECT_EQ(Thousands(-123), "-123");
  EXPECT_EQ(Thousands(0.25, 2), "0.25");
}
