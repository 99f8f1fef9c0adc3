// The values at the edge of what a double is, put into every place of a question: all fillings of two
// segments, 43 million, and of whatever else is asked by a few numbers. EdgeValues.h has random ones.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <iostream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/geometry/EdgeValues.h"

inline constexpr std::size_t kEdgeValueCount = 9;

// Both zeros, 1 and the next after it, the smallest and the largest that still divide, and what is no number.
inline const std::array<double, kEdgeValueCount> kEdgeValues = {0.0,
                                                                -0.0,
                                                                1.0,
                                                                std::nextafter(1.0, 2.0),
                                                                1e-308,
                                                                1e15,
                                                                1e300,
                                                                std::numeric_limits<double>::infinity(),
                                                                std::numeric_limits<double>::quiet_NaN()};

// Hands the check the numbers below `all`, each once, as long as it answers true: all of them in an optimised
// build; in any other, and under a sanitizer, one of `stride` of them, which has no factor in common with
// `all`, spread from the first to the last. False when the check answered false; the number that it did so
// for is in `number`.
template <class Check>
bool ForSpread(std::size_t all, std::size_t stride, std::size_t& number, Check check) {
  const std::size_t step = runsInFull ? 1 : stride;
  number = 0;
  for (std::size_t left = all / step; left > 0; --left) {
    if (!check(number)) return false;
    number += step;
    if (number >= all) number -= all;
  }
  return true;
}

// Hands the check every filling of kPlaces places by the edge values, or one of 101, and its number.
template <std::size_t kPlaces, class Check>
void ForEdgeFillings(Check check) {
  std::size_t all = 1;
  for (std::size_t i = 0; i < kPlaces; ++i) all *= kEdgeValueCount;
  std::array<double, kPlaces> values;
  const auto fill = [&](std::size_t filling) {
    for (double& value : values) {
      value = kEdgeValues[filling % kEdgeValueCount];
      filling /= kEdgeValueCount;
    }
  };
  std::size_t filling = 0;
  const bool isRight = ForSpread(all, 101, filling, [&](std::size_t number) {
    fill(number);
    return check(values, number);
  });
  if (isRight) return;
  std::string shown;
  for (const double value : values) shown += ' ' + testing::PrintToString(value);
  ADD_FAILURE() << "filling " << filling << ':' << shown;
}

// Counts the kinds of answer that a long test came upon, by number, and fails for a kind that hardly came.
class KindCount {
 public:
  explicit KindCount(std::vector<std::string> names, long least = 10)
      : m_names(std::move(names)), m_counts(m_names.size(), 0), m_least(least) {}
  KindCount(const KindCount&) = delete;
  KindCount& operator=(const KindCount&) = delete;
  ~KindCount() {
    for (std::size_t kind = 0; kind < m_names.size(); ++kind) {
      std::cout << "  " << m_names[kind] << ": " << m_counts[kind] << '\n';
      EXPECT_GE(m_counts[kind], m_least) << "hardly came: " << m_names[kind];
    }
  }
  void Count(std::size_t kind) { ++m_counts.at(kind); }

 private:
  std::vector<std::string> m_names;
  std::vector<long> m_counts;
  long m_least;
};
