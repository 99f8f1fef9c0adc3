#include "zelbase/geometry/Point.h"

#include "zelbase/geometry/Rotation.h"
#include "zelbase/geometry/detail/ComponentText.h"

void Point::Rotate(double angle, const Point& centre) {
  if (angle == 0.0) return;  // Kept: no round trip through the centre, whose rounding callers would see.
  Rotation2D(centre.x, centre.y, x - centre.x, y - centre.y, angle, x, y);
}

std::string Point::ToString() const { return zelbase::detail::ComponentText("point: ", x, y, z); }
