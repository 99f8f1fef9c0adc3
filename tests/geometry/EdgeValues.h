// Random values aimed at the edges of geometry, the comparison that goes with them, and a count of what they
// reached.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Effort.h"
#include "zelbase/geometry/Point.h"

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kLargest = std::numeric_limits<double>::max();
inline constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
inline constexpr int kRandomRounds = 100'000;

// Whether the tests run in full: optimised and without a sanitizer.
#ifdef __OPTIMIZE__
inline constexpr bool runsInFull = !runsSanitized;
#else
inline constexpr bool runsInFull = false;
#endif

// The rounds of a test with heavy ones: a tenth where it does not run in full.
inline constexpr int kHeavyRounds = runsInFull ? kRandomRounds : kRandomRounds / 10;

// Equal to the last bit, the sign of 0 included; any NaN is like any other.
template <class Number>
bool Same(Number a, Number b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return a == b && std::signbit(a) == std::signbit(b);
}

inline bool Same(const Point& a, const Point& b) { return Same(a.x, b.x) && Same(a.y, b.y) && Same(a.z, b.z); }

// A sequence of numbers for a test, repeatable by its seed, which is printed.
class EdgeValues {
 public:
  explicit EdgeValues(unsigned int seed) : m_random(seed) { std::cout << "seed " << seed << '\n'; }

  // 0 to count - 1.
  int Index(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
  bool Flag() { return Index(2) == 0; }
  double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }

  // A whole number of few: coincident, collinear and touching shapes come by themselves.
  double Grid() { return Index(9) - 4; }

  // Next to `value`: itself, a neighbouring double, or off by about a tolerance of geometry.
  double Near(double value) {
    switch (Index(6)) {
      case 0: return value;
      case 1: return std::nextafter(value, kInfinity);
      case 2: return std::nextafter(value, -kInfinity);
      case 3: return value + Between(-3e-7, 3e-7);
      case 4: return value + Between(-3e-14, 3e-14);
      default: return value * (1 + Between(-1e-13, 1e-13));
    }
  }

  // What ought not to be given, but is.
  double Wild() {
    static constexpr double kValues[] = {0.0,       -0.0,       kNan,   kInfinity, -kInfinity, kLargest, -kLargest,
                                         kSmallest, -kSmallest, 1e-300, -1e-300,   1e-7,       -1e-7,    1e-160,
                                         1e160,     -1e160,     1e10,   -1e10,     1e308,      2.2e-308, 360.0};
    return kValues[Index(static_cast<int>(std::size(kValues)))];
  }

  // Mostly a coordinate that a survey has, or a grid's, or one beside it; at times something wild.
  double Coordinate() {
    switch (Index(16)) {
      case 0: return Wild();
      case 1:
      case 2:
      case 3:
      case 4: return Between(-1000, 1000);
      case 5: return Between(-7e6, 7e6);
      case 6:
      case 7:
      case 8: return Near(Grid());
      case 9: return Between(-2e-7, 2e-7);
      default: return Grid();
    }
  }

  // A bearing: mostly a quarter of the circle, one beside it, or any; at times something wild.
  double Bearing() {
    switch (Index(16)) {
      case 0: return Wild();
      case 1:
      case 2:
      case 3:
      case 4: return Between(0, 360);
      case 5: return Between(-2000, 2000);
      case 6:
      case 7:
      case 8: return Near(90.0 * Index(5));
      case 9: return Between(-1e-13, 1e-13);
      case 10: return 45.0 * (Index(33) - 16);
      default: return 90.0 * Index(5);
    }
  }

  Point AnyPoint() { return Point(Coordinate(), Coordinate(), Coordinate()); }

  // `point` or one beside it.
  Point NearPoint(const Point& point) { return Point(Near(point.x), Near(point.y), Near(point.z)); }

  // On the line through two points, at one of them, between or beyond; exactly, as far as rounding lets it,
  // or beside it.
  Point NearLine(const Point& a, const Point& b) {
    static constexpr double kPlaces[] = {0, 1, 0.5, -1, 2, 0.25};
    const double place = Flag() ? kPlaces[Index(6)] : Between(-1, 2);
    const Point on = place == 1 ? b : a + (b - a) * place;
    return Flag() ? on : NearPoint(on);
  }

  // A segment that makes a case of another: the same, reversed, on one line with it, from a point on it, or
  // beside it at its distance and direction; exactly or nearly.
  std::pair<Point, Point> Related(const Point& a, const Point& b) {
    const auto near = [&](const Point& point) { return Flag() ? point : NearPoint(point); };
    switch (Index(5)) {
      case 0: return {near(a), near(b)};
      case 1: return {near(b), near(a)};
      case 2: return {NearLine(a, b), NearLine(a, b)};
      case 3: return {NearLine(a, b), AnyPoint()};
      default: {
        const Point beside = Point(b.y - a.y, a.x - b.x, 0) * (Flag() ? Between(-1e-6, 1e-6) : Grid());
        return {near(a + beside), near(b + beside)};
      }
    }
  }

  // Finite and of ordinary size.
  Point GridPoint() { return Point(Grid(), Grid(), Grid()); }

  // Any bits at all.
  double Bits() { return std::bit_cast<double>(m_random()); }

 private:
  std::mt19937_64 m_random;
};

// Counts the branches that a random test went through, prints the counts, and fails for a branch that was
// hardly reached.
class Tally {
 public:
  explicit Tally(std::vector<std::string> branches) {
    for (const std::string& branch : branches) m_counts[branch] = 0;
  }
  ~Tally() {
    for (const auto& [branch, count] : m_counts) {
      std::cout << "  " << branch << ": " << count << '\n';
      EXPECT_GE(count, 10) << "hardly reached: " << branch;
    }
  }
  void Count(const std::string& branch) {
    ASSERT_TRUE(m_counts.contains(branch)) << branch;
    ++m_counts[branch];
  }
  // Counts one of two branches and hands the question on.
  bool Either(bool question, const std::string& yes, const std::string& no) {
    Count(question ? yes : no);
    return question;
  }

 private:
  std::map<std::string, long> m_counts;
};
