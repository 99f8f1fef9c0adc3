// A number without rounding: the quotient of two whole numbers, for what small grids of points are held
// against. As with a double, a division by zero gives what is no number, and that is neither below, nor
// above, nor equal to anything.
#pragma once

#include <limits>
#include <numeric>
#include <stdexcept>

#include "tests/geometry/LiteralSegments.h"

class Fraction {
 public:
  constexpr Fraction(int whole = 0) : m_above(whole) {}
  constexpr Fraction(long long above, long long below) : Fraction(Of(above, below)) {}

  bool IsNumber() const { return m_below != 0; }
  double Nearest() const {
    if (!IsNumber()) return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(m_above) / static_cast<double>(m_below);
  }

  friend constexpr Fraction operator+(const Fraction& a, const Fraction& b) {
    return Of(Wide(a.m_above) * b.m_below + Wide(b.m_above) * a.m_below, Wide(a.m_below) * b.m_below);
  }
  friend constexpr Fraction operator-(const Fraction& a, const Fraction& b) { return a + Fraction(-1) * b; }
  friend constexpr Fraction operator*(const Fraction& a, const Fraction& b) {
    return Of(Wide(a.m_above) * b.m_above, Wide(a.m_below) * b.m_below);
  }
  friend constexpr Fraction operator/(const Fraction& a, const Fraction& b) {
    return b.m_below == 0 ? Of(0, 0) : Of(Wide(a.m_above) * b.m_below, Wide(a.m_below) * b.m_above);
  }
  constexpr Fraction& operator+=(const Fraction& other) { return *this = *this + other; }

  friend constexpr bool operator<(const Fraction& a, const Fraction& b) {
    return a.m_below != 0 && b.m_below != 0 && Wide(a.m_above) * b.m_below < Wide(b.m_above) * a.m_below;
  }
  friend constexpr bool operator>(const Fraction& a, const Fraction& b) { return b < a; }
  friend constexpr bool operator==(const Fraction& a, const Fraction& b) {
    return a.m_below != 0 && b.m_below != 0 && a.m_above == b.m_above && a.m_below == b.m_below;
  }
  friend constexpr bool operator<=(const Fraction& a, const Fraction& b) { return a < b || a == b; }
  friend constexpr bool operator>=(const Fraction& a, const Fraction& b) { return b <= a; }
  friend constexpr Fraction abs(const Fraction& a) { return a < Fraction(0) ? Fraction(0) - a : a; }

 private:
  __extension__ using Wide = __int128;

  // In lowest terms, the lower number positive, or 0 for what is no number.
  static constexpr Fraction Of(Wide above, Wide below) {
    Fraction fraction;
    if (below == 0) {
      fraction.m_above = 0;
      fraction.m_below = 0;
      return fraction;
    }
    Wide a = above < 0 ? -above : above;
    Wide b = below < 0 ? -below : below;
    while (b != 0) {
      const Wide rest = a % b;
      a = b;
      b = rest;
    }
    fraction.m_above = Narrow(below < 0 ? -above / a : above / a);
    fraction.m_below = Narrow(below < 0 ? -below / a : below / a);
    return fraction;
  }

  static constexpr long long Narrow(Wide value) {
    if (value > std::numeric_limits<long long>::max() || value < -std::numeric_limits<long long>::max())
      throw std::overflow_error("a fraction of a test has grown beyond 64 bits");
    return static_cast<long long>(value);
  }

  long long m_above = 0;
  long long m_below = 1;
};

template <>
struct LiteralLimits<Fraction> {
  static constexpr Fraction tolerance{1, 10'000'000};
  static constexpr Fraction steep{10'000'000'000, 1};
  static constexpr Fraction noDistance{1, 1LL << 51};
};
