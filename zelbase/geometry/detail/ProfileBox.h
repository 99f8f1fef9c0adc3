// The box around a segment of a profile, for passing over pairs of segments that cannot cross. Internal to the library.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "zelbase/geometry/ProfilePoint.h"

namespace zelbase::detail {

// In the plane of chainage and height. Empty by default, and for a segment with NaN, which crosses nothing.
struct ProfileBox {
  static ProfileBox Of(const ProfilePoint& a, const ProfilePoint& b) {
    if (std::isunordered(a.distance, b.distance) || std::isunordered(a.z, b.z)) return ProfileBox();
    return {std::min(a.distance, b.distance), std::min(a.z, b.z), std::max(a.distance, b.distance), std::max(a.z, b.z)};
  }

  void Add(const ProfileBox& other) {
    left = std::min(left, other.left);
    bottom = std::min(bottom, other.bottom);
    right = std::max(right, other.right);
    top = std::max(top, other.top);
  }

  // More than 1e-3 apart. Segments in such boxes cannot both hold their crossing: the test for that compares products of
  // differences with 1e-07, which a point further than 3.2e-4 from a segment's box fails.
  bool IsFarFrom(const ProfileBox& other) const {
    constexpr double kApart = 1e-3;
    return right + kApart < other.left || other.right + kApart < left || top + kApart < other.bottom || other.top + kApart < bottom;
  }

  bool operator==(const ProfileBox&) const = default;

  double left = std::numeric_limits<double>::infinity();
  double bottom = std::numeric_limits<double>::infinity();
  double right = -std::numeric_limits<double>::infinity();
  double top = -std::numeric_limits<double>::infinity();
};

}  // namespace zelbase::detail
