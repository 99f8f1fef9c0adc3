// World to pixel for rows of points. Internal to the library; CoordinateSystem.h says what a point's pixel is.
#pragma once

#include <span>

#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Each way gives what CoordinateSystem::WorldToPixel gives point by point, to the last bit. The system is looked at during the
// calls and must outlive this.
class ZELBASE_API PixelRow {
 public:
  // By single points, or by vectors of two (AVX2) or of four (AVX-512).
  enum class Way { kSingle, kTwo, kFour };

  explicit PixelRow(const CoordinateSystem& system) : m_system(system) {}

  // `pixels` has room for as many as there are points. In the best way that this processor has.
  void PixelsOf(std::span<const Point> points, CPoint* pixels) const { PixelsOf(points, pixels, BestWay()); }

  // In a way that this processor has.
  void PixelsOf(std::span<const Point> points, CPoint* pixels, Way way) const;

  // The last of the ways that this processor has; it has those before, too.
  static Way BestWay();

 private:
  const CoordinateSystem& m_system;
};

}  // namespace zelbase::detail
