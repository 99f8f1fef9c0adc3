// How the two bounds of one axis take in a coordinate or another pair of bounds: the rule that the boxes of
// the library share. Internal to the library.
//
// An axis is reversed, and then holds nothing, while its upper bound lies below its lower one. NaN reverses
// nothing: an axis with a NaN bound is not taken for empty, and no comparison ever replaces that bound.
#pragma once

namespace zelbase::detail {

// Takes `value` in.
constexpr void GrowAxis(double& low, double& high, double value) {
  if (high < low) {
    low = high = value;
  } else if (value > high) {
    high = value;
  } else if (value < low) {
    low = value;
  }
}

// Takes the other pair in. A reversed axis becomes the other as it stands, even when that is reversed, too;
// otherwise a reversed other changes nothing.
constexpr void UniteAxis(double& low, double& high, double otherLow, double otherHigh) {
  if (high < low) {
    low = otherLow;  // Kept: a reversed other is copied as well.
    high = otherHigh;
    return;
  }
  if (otherHigh < otherLow) return;
  if (otherLow < low) low = otherLow;
  if (otherHigh > high) high = otherHigh;
}

// Puts the bounds in order.
constexpr void OrderAxis(double& low, double& high) {
  if (!(high < low)) return;
  const double kept = low;
  low = high;
  high = kept;
}

}  // namespace zelbase::detail
