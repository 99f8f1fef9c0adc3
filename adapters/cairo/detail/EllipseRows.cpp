#include "adapters/cairo/detail/EllipseRows.h"

#include <cmath>

namespace zelbase::detail {

EllipseRows::EllipseRows(const CRect& bounds)
    : m_bounds(bounds),
      m_centreX((static_cast<double>(bounds.left) + bounds.right) / 2),
      m_centreY((static_cast<double>(bounds.top) + bounds.bottom) / 2),
      m_radiusX((static_cast<double>(bounds.right) - bounds.left) / 2),
      m_radiusY((static_cast<double>(bounds.bottom) - bounds.top) / 2) {}

RowSpan EllipseRows::Row(int y) const {
  if (y < m_bounds.top || y >= m_bounds.bottom) return {};
  const double height = (y + 0.5 - m_centreY) / m_radiusY;  // of the pixels' centres; below 1 in magnitude
  const double half = m_radiusX * std::sqrt(1 - height * height);
  return {static_cast<int>(std::ceil(m_centreX - half - 0.5)), static_cast<int>(std::floor(m_centreX + half - 0.5))};
}

}  // namespace zelbase::detail
