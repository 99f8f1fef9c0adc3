#include "zelbase/frame/detail/FixedDigits.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/support/Printed.h"
#include "tests/support/RandomDoubles.h"

namespace zelbase::detail {
namespace {

std::string Fixed(double magnitude, int decimals) {
  std::vector<char> room(static_cast<std::size_t>(kMostWholeDigits + 1 + decimals));
  return std::string(room.data(), WriteFixed(room.data(), magnitude, decimals));
}

TEST(FixedDigits, AnExactHalfRoundsToEven) {
  EXPECT_EQ(Fixed(0.5, 0), "0");
  EXPECT_EQ(Fixed(1.5, 0), "2");
  EXPECT_EQ(Fixed(2.5, 0), "2");
  EXPECT_EQ(Fixed(9.5, 0), "10");
  EXPECT_EQ(Fixed(0.125, 2), "0.12");
  EXPECT_EQ(Fixed(0.375, 2), "0.38");
  EXPECT_EQ(Fixed(1.0625, 3), "1.062");
  // 2^-18 has 18 decimals and ends in 5: the last count of decimals that is written quickly cuts just that digit.
  EXPECT_EQ(Fixed(1.0 / 262144, 17), "0.00000381469726562");
}

TEST(FixedDigits, ACarryReachesTheWholePart) {
  EXPECT_EQ(Fixed(0.999, 2), "1.00");
  EXPECT_EQ(Fixed(99.9999, 3), "100.000");
  EXPECT_EQ(Fixed(std::nextafter(1.0, 0.0), 15), "1.000000000000000");
  EXPECT_EQ(Fixed(std::nextafter(1.0, 0.0), 16), "0.9999999999999999");
  EXPECT_EQ(Fixed(4503599627370495.5, 0), "4503599627370496");
}

TEST(FixedDigits, TheEndsOfTheRange) {
  EXPECT_EQ(Fixed(0.0, 0), "0");
  EXPECT_EQ(Fixed(0.0, 3), "0.000");
  EXPECT_EQ(Fixed(DBL_TRUE_MIN, 17), "0.00000000000000000");
  EXPECT_EQ(Fixed(9007199254740991.0, 1), "9007199254740991.0");
  EXPECT_EQ(Fixed(9007199254740992.0, 1), "9007199254740992.0");
  EXPECT_EQ(Fixed(1e22, 2), "10000000000000000000000.00");
  EXPECT_EQ(Fixed(DBL_MAX, 0).size(), static_cast<std::size_t>(kMostWholeDigits));
}

// Numbers of few binary digits behind the point, so that with one decimal less than they have each is an exact half.
TEST(FixedDigitsLong, EqualsTheCLibraryOnExactHalves) {
  std::mt19937_64 random(17);
  for (int i = 0; i < 200'000; ++i) {
    const int places = static_cast<int>(1 + random() % 20);
    const double magnitude = std::ldexp(static_cast<double>(2 * (random() >> (12 + random() % 40)) + 1), -places);
    for (const int decimals : {places - 1, places}) {
      ASSERT_EQ(Fixed(magnitude, decimals), Printed("%.*f", decimals, magnitude));
    }
  }
}

TEST(FixedDigits, EqualsTheCLibraryAroundEachPowerOfTwo) {
  for (int exponent = -1074; exponent < 1024; ++exponent) {
    const double power = std::ldexp(1.0, exponent);
    for (const double magnitude : {std::nextafter(power, 0.0), power, std::nextafter(power, DBL_MAX)}) {
      for (const int decimals : {0, 1, 6, 16, 17, 18, 40}) {
        ASSERT_EQ(Fixed(magnitude, decimals), Printed("%.*f", decimals, magnitude)) << exponent;
      }
    }
  }
}

TEST(FixedDigitsLong, EqualsTheCLibraryOnRandomNumbers) {
  RandomDoubles doubles;
  for (int i = 0; i < 500'000; ++i) {
    const double magnitude = std::fabs(doubles.Next());
    const int decimals = static_cast<int>(doubles.Below(20));
    ASSERT_EQ(Fixed(magnitude, decimals), Printed("%.*f", decimals, magnitude)) << magnitude << ' ' << decimals;
  }
}

}  // namespace
}  // namespace zelbase::detail
