#include "zelbase/geometry/Polar.h"

#include <cmath>

#include "zelbase/geometry/MathConstants.h"

namespace {

double WithoutTrifle(double component) { return std::fabs(component) < TOLERANCE ? 0.0 : component; }

}  // namespace

void XYToPolar(double x, double y, double& bearing, double& length) {
  // Kept: the quotient, which gives due south as 180.00000000000304; arcs that end on an axis depend on it.
  const double angle = std::atan2(WithoutTrifle(x), WithoutTrifle(y)) / D_TO_R;
  // Kept: of the components as given; what counts as 0 does so for the bearing only.
  length = std::sqrt(x * x + y * y);
  bearing = angle < 0 ? angle + 360.0 : angle;
}

void XYToPolar(const Point& vector, double& bearing, double& length) { XYToPolar(vector.x, vector.y, bearing, length); }

void PolarToXY(double bearing, double length, double& x, double& y) {
  const double radians = bearing * D_TO_R;
  x = std::sin(radians) * length;
  y = std::cos(radians) * length;
}

void PolarToXY(double bearing, double length, Point& vector) {
  PolarToXY(bearing, length, vector.x, vector.y);  // Kept: z stays; an offset line gets its height from it.
}
