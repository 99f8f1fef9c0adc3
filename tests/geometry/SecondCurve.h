// The rules of bearings and arcs a second time, for the tests of what is built on them. Arcs are given as
// {centre x, centre y, signed radius, start, end}.
#pragma once

#include <cmath>

struct SecondCurve {
  static constexpr double kDegree = 0.017453292519943;

  static double Trim(double angle) {
    double rest = std::fmod(angle, 360.0);
    if (rest < 0) rest = 360.0 + rest;
    return rest;
  }

  static double Bearing(double x, double y) {
    if (x < 1e-07 && x > -1e-07) x = 0;
    if (y < 1e-07 && y > -1e-07) y = 0;
    const double angle = std::atan2(x, y) / kDegree;
    return angle < 0 ? 360.0 + angle : angle;
  }

  bool IsEmpty() const {
    const double apart = end - start;
    return std::fabs(start * end * 2.220446049250313e-16) > std::fabs(apart);
  }

  // The four rows of the rule, one by one.
  bool Holds(double angle) const {
    if (IsEmpty()) return false;
    const double a = Trim(angle);
    if (radius >= 0) {
      if (start <= end) return start <= a && a <= end;
      if (start > end) return a >= start || a <= end;
      return false;
    }
    if (start >= end) return end <= a && a <= start;
    if (start < end) return a <= start || a >= end;
    return false;
  }

  bool HoldsPoint(double x, double y) const { return Holds(Bearing(x - centreX, y - centreY)); }

  double Sector() const {
    if (start == end || IsEmpty()) return 0;
    if (radius >= 0) return Trim(end - start);
    return Trim(start - end);
  }

  double centreX;
  double centreY;
  double radius;
  double start;
  double end;
};
