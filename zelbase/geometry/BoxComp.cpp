#include "zelbase/geometry/BoxComp.h"

#include <cmath>
#include <limits>

#include "zelbase/geometry/MathConstants.h"

namespace {

constexpr short kLastCode = 8;

bool IsRefCode(short code) { return code >= 0 && code <= kLastCode; }

}  // namespace

BoxComp::BoxComp(short refCode, const Point& refPoint, double height, double width, double rotation)
    : m_refCode(refCode), m_refPoint(refPoint), m_height(height), m_width(width), m_rotation(rotation) {
  // Kept: any code is taken; a bad one lays corner 0 at the origin.
  Compute();
}

bool BoxComp::Set(short refCode, const Point& refPoint, double height, double width, double rotation) {
  // Kept: only here is a bad code refused, and then nothing changes.
  if (!IsRefCode(refCode)) return false;
  m_refCode = refCode;
  m_refPoint = refPoint;
  m_height = height;
  m_width = width;
  m_rotation = rotation;
  return Compute();
}

bool BoxComp::SetRefCode(short refCode) {
  // Kept: a bad code is taken, and the box stays at the corner 0 that it has.
  m_refCode = refCode;
  return Compute();
}

bool BoxComp::SetRefPoint(const Point& refPoint) {
  m_refPoint = refPoint;
  return Compute();
}

bool BoxComp::SetRotation(double rotation) {
  m_rotation = rotation;
  return Compute();
}

bool BoxComp::SetWidth(double width) {
  m_width = width;
  return Compute();
}

bool BoxComp::SetHeight(double height) {
  m_height = height;
  return Compute();
}

Point BoxComp::GetCornerPoint(int index) const {
  Point corner;
  GetCornerPoint(index, corner);
  return corner;
}

bool BoxComp::GetCornerPoint(int index, Point& corner) const {
  if (static_cast<unsigned int>(index) >= kCorners) return false;
  corner = m_corners[index];
  return true;
}

bool BoxComp::GetBoundaries(double& left, double& bottom, double& right, double& top) const {
  left = bottom = std::numeric_limits<double>::max();
  right = top = std::numeric_limits<double>::lowest();
  for (const Point& corner : m_corners) {
    if (corner.x < left) left = corner.x;
    if (corner.x > right) right = corner.x;
    if (corner.y < bottom) bottom = corner.y;
    if (corner.y > top) top = corner.y;
  }
  return true;
}

bool BoxComp::Compute() {
  const double sine = std::sin(m_rotation * D_TO_R);
  const double cosine = std::cos(m_rotation * D_TO_R);
  // Kept: x and y alone are written, so that the corners' z stays 0 whatever z the reference point has.
  if (IsRefCode(m_refCode)) m_corners[0] = CalcPoint(m_refCode, sine, cosine);
  const Point& origin = m_corners[0];
  m_corners[1] = Point(origin.x + cosine * m_width, origin.y - sine * m_width, 0.0);
  m_corners[2] = Point(m_corners[1].x + sine * m_height, m_corners[1].y + cosine * m_height, 0.0);
  m_corners[3] = Point(origin.x + sine * m_height, origin.y + cosine * m_height, 0.0);
  m_corners[4] = origin;
  return true;
}

Point BoxComp::CalcPoint(short refCode, double s, double c) const {
  const double x = m_refPoint.x;
  const double y = m_refPoint.y;
  const double h = m_height;
  const double w = m_width;
  switch (refCode) {
    case 1: return Point(x - c * w, y + s * w, 0.0);
    case 2: return Point(x - s * h - c * w, y - c * h + s * w, 0.0);
    case 3: return Point(x - s * h, y - c * h, 0.0);
    case 4: return Point(x - s * h / 2 - c * w / 2, y - c * h / 2 + s * w / 2, 0.0);
    case 5: return Point(x - c * w / 2, y + s * w / 2, 0.0);
    case 6: return Point(x - s * h - c * w / 2, y - c * h + s * w / 2, 0.0);
    case 7: return Point(x - s * h / 2 - c * w, y - c * h / 2 + s * w, 0.0);
    case 8: return Point(x - s * h / 2, y - c * h / 2, 0.0);
    default: return Point(x, y, 0.0);
  }
}
