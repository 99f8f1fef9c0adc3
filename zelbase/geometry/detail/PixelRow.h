// World to pixel for rows of points. Internal to the library; CoordinateSystem.h says what a point's pixel is.
#pragma once

#include <cstddef>
#include <span>

#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// What PixelsOf and PixelsOfPortably give is that of CoordinateSystem::WorldToPixel for each point. The system is looked at during
// the calls and must outlive this.
class ZELBASE_API PixelRow {
 public:
  explicit PixelRow(const CoordinateSystem& system) : m_system(system) {}

  // `pixels` has room for as many as there are points. By vectors where the processor has them.
  void PixelsOf(std::span<const Point> points, CPoint* pixels) const;

  // The same without vectors.
  void PixelsOfPortably(std::span<const Point> points, CPoint* pixels) const;

  // Whether this processor has the vectors.
  static bool HasVectors();

 private:
  const CoordinateSystem& m_system;
};

}  // namespace zelbase::detail
