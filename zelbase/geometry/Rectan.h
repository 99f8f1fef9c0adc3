// Four doubles and two whole numbers in one value, all of them their user's own. Neighbours: Page.h is the
// rectangle of this library; nothing here reads a Rectan.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// A plain value. The whole numbers take part in Set and in assignment, and never in a comparison.
class ZELBASE_API Rectan {
 public:
  constexpr Rectan() = default;
  constexpr Rectan(double aValue, double bValue, double cValue, double dValue) : a(aValue), b(bValue), c(cValue), d(dValue) {}

  // Of each long the low 32 bits are kept.
  constexpr void Set(double aValue, double bValue, double cValue, double dValue, long firstValue, long secondValue) {
    *this = Rectan(aValue, bValue, cValue, dValue);
    first = static_cast<int>(firstValue);
    second = static_cast<int>(secondValue);
  }

  // Exact, over the four doubles.
  constexpr bool operator==(const Rectan& other) const {
    // Kept: the whole numbers are left out; users file them apart from the value.
    return a == other.a && b == other.b && c == other.c && d == other.d;
  }

  double a = 0;
  double b = 0;
  double c = 0;
  double d = 0;
  int first = 0;
  int second = 0;
};
