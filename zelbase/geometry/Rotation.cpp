#include "zelbase/geometry/Rotation.h"

#include <cmath>

#include "zelbase/geometry/MathConstants.h"

void Rotation2D(double cx, double cy, double dx, double dy, double angle, double& x, double& y) {
  const double radians = angle * D_TO_R;
  const double sine = std::sin(radians);
  const double cosine = std::cos(radians);
  x = cosine * dx + sine * dy + cx;
  y = cosine * dy - sine * dx + cy;
}

void Rotation3D(const Point& in, const Point& angles, Point& out) {
  Point turned = in;
  const Point by = angles;
  Rotation2D(0, 0, turned.x, turned.z, -by.y, turned.x, turned.z);
  Rotation2D(0, 0, turned.y, turned.z, by.x, turned.y, turned.z);
  Rotation2D(0, 0, turned.x, turned.y, by.z, turned.x, turned.y);
  out = turned;
}
