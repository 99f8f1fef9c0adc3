#include "zelbase/geometry/FloatPoint.h"

#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/detail/ComponentText.h"

void FloatPoint::Rotate(double angle, const FloatPoint& centre) {
  if (angle == 0.0) return;  // Kept: as Point does.
  const float radians = static_cast<float>(angle * D_TO_R);
  const float sine = static_cast<float>(std::sin(static_cast<double>(radians)));
  const float cosine = static_cast<float>(std::cos(static_cast<double>(radians)));
  const float dx = x - centre.x;
  const float dy = y - centre.y;
  *this = FloatPoint(cosine * dx + sine * dy + centre.x, cosine * dy - sine * dx + centre.y, z);
}

std::string FloatPoint::ToString() const { return zelbase::detail::ComponentText("FloatPoint: ", x, y, z); }
