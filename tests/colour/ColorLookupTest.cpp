#include "zelbase/colour/detail/ColorLookup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using zelbase::detail::ColorLookup;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::vector<COLORREF> CountingColors(std::size_t numStarts) {
  std::vector<COLORREF> colors(numStarts + 1);
  for (std::size_t i = 0; i < colors.size(); ++i) colors[i] = static_cast<COLORREF>(i);
  return colors;
}

// With CountingColors, the colour of a value is the number of starts up to it.
COLORREF NumUpTo(const std::vector<double>& starts, double value) {
  return static_cast<COLORREF>(std::count_if(starts.begin(), starts.end(), [value](double start) { return start <= value; }));
}

std::vector<double> Probes(const std::vector<double>& starts, std::mt19937_64& random) {
  std::vector<double> probes = {kNan, kInfinity, -kInfinity, 0.0, -0.0, 1e308, -1e308, 5e-324};
  for (const double start : starts) {
    for (const double value : {start, std::nextafter(start, kInfinity), std::nextafter(start, -kInfinity)}) {
      probes.push_back(value);
    }
  }
  const double span = starts.back() - starts.front();
  for (int i = 0; i < 300; ++i) {
    probes.push_back(starts.front() + span * (static_cast<double>(random() % 1200) / 1000 - 0.1));
  }
  std::shuffle(probes.begin(), probes.end(), random);
  return probes;
}

void ExpectCounts(const std::vector<double>& starts, std::mt19937_64& random) {
  const ColorLookup lookup(starts, CountingColors(starts.size()));
  const std::vector<double> probes = Probes(starts, random);
  std::vector<COLORREF> fast(probes.size());
  std::vector<COLORREF> portable(probes.size());
  lookup.ColorsOf(probes, fast.data());
  lookup.ColorsOfPortably(probes, portable.data());
  for (std::size_t i = 0; i < probes.size(); ++i) {
    const COLORREF expected = NumUpTo(starts, probes[i]);
    ASSERT_EQ(lookup.ColorOf(probes[i]), expected) << probes[i];
    ASSERT_EQ(portable[i], expected) << probes[i];
    ASSERT_EQ(fast[i], expected) << probes[i] << (ColorLookup::HasVectors() ? " by vectors" : "");
  }
}

TEST(ColorLookup, EvenStartsHaveABucketEach) {
  std::mt19937_64 random(1);
  for (const int size : {1, 2, 3, 7, 64, 100, 4096, 5000}) {
    std::vector<double> starts;
    for (int i = 0; i < size; ++i) starts.push_back(0.1 * i - 3);
    EXPECT_FALSE(ColorLookup(starts, CountingColors(starts.size())).HasCrowds()) << size;
    ExpectCounts(starts, random);
  }
}

TEST(ColorLookup, CrowdedStartsShareBuckets) {
  std::mt19937_64 random(2);
  for (const int size : {4, 5, 8, 9, 64, 500}) {
    std::vector<double> starts = {-1e9};
    for (int i = 2; i < size; ++i) starts.push_back(0.001 * i);
    starts.push_back(1e9);
    EXPECT_TRUE(ColorLookup(starts, CountingColors(starts.size())).HasCrowds()) << size;
    ExpectCounts(starts, random);
  }
}

TEST(ColorLookup, EqualStartsCountAllAtOnce) {
  std::mt19937_64 random(3);
  ExpectCounts({1, 1}, random);
  ExpectCounts({1, 1, 1, 1, 1, 1}, random);
  ExpectCounts({0, 1, 1, 1, 2, 2, 1e5}, random);
}

TEST(ColorLookup, TheSmallestAndTheLargestNumbersAreStarts) {
  std::mt19937_64 random(4);
  constexpr double kLargest = std::numeric_limits<double>::max();
  ExpectCounts({0, 5e-324}, random);
  ExpectCounts({-5e-324, 0, 5e-324, 1e-323}, random);
  ExpectCounts({0, kLargest / 4, kLargest / 2}, random);
  ExpectCounts({kLargest}, random);
  ExpectCounts({std::nextafter(kLargest, 0.0), kLargest}, random);
}

TEST(ColorLookup, RandomStartsOfEverySpacingAreFound) {
  std::mt19937_64 random(5);
  int numCrowded = 0;
  for (int round = 0; round < 400; ++round) {
    std::vector<double> starts(random() % 90 + 1);
    const double power = static_cast<double>(random() % 6) + 1;
    for (double& start : starts) start = std::pow(static_cast<double>(random() % 1000) / 100 - 5, power);
    std::sort(starts.begin(), starts.end());
    numCrowded += ColorLookup(starts, CountingColors(starts.size())).HasCrowds() ? 1 : 0;
    ExpectCounts(starts, random);
  }
  EXPECT_GT(numCrowded, 40);
  EXPECT_LT(numCrowded, 360);
}

TEST(ColorLookup, RowsOfEveryLengthAreFilledAndNoFurther) {
  const std::vector<double> starts = {0, 1, 2};
  const ColorLookup lookup(starts, CountingColors(3));
  for (std::size_t length = 0; length < 20; ++length) {
    const std::vector<double> values(length, 1.5);
    std::vector<COLORREF> colors(length + 1, 99);
    lookup.ColorsOf(values, colors.data());
    EXPECT_EQ(std::count(colors.begin(), colors.end(), 2u), static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(colors.back(), 99u);
  }
}

}  // namespace
