#include "zelbase/geometry/D3Projector.h"

#include <algorithm>
#include <cmath>

#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/MathConstants.h"

bool D3Projector::SetPixelWindow(CRect rect) {
  rect.bottom = std::max(rect.bottom, rect.top);
  rect.right = std::max(rect.right, rect.left);
  return m_coordinateSystem.SetPixelWindow(rect);
}

void D3Projector::SetRefXYposition(double x, double y) {
  m_refXY.x = x;
  m_refXY.y = y;
}

bool D3Projector::Conv3dTo2d(Point point, double& x, double& y) const {
  const double d = m_viewDistance - point.z;
  if (d <= 0) return false;
  // Kept: each axis in its own order of multiplying and dividing; their last digits differ.
  x = point.x * m_viewDistance / d;
  y = m_viewDistance / d * point.y;
  return true;
}

void D3Projector::Rotate(const Point& point, double a, double b, Point& out) const {
  const double sinA = std::sin(a * D_TO_R);
  const double cosA = std::cos(a * D_TO_R);
  const double sinB = std::sin(b * D_TO_R);
  const double cosB = std::cos(b * D_TO_R);
  out = Point(cosB * point.x + sinB * point.y, cosA * cosB * point.y - cosA * sinB * point.x + sinA * point.z,
              sinA * sinB * point.x - sinA * cosB * point.y + cosA * point.z);
}

Point D3Projector::ToView(const Point& point, bool noBearing) const {
  Point view(point.x - m_refXY.x, point.y - m_refXY.y, point.z);
  // Kept: without perspective the tilt goes, and the division by the distance stays.
  Rotate(view, m_perspective ? m_observeAngle : 0.0, noBearing ? 0.0 : m_bearing, view);
  return view;
}

Point D3Projector::JustBeforeEye(const Point& front, const Point& behind) const {
  constexpr double kBeforeEye = 0.1;
  const double z = m_viewDistance - kBeforeEye;
  const double part = (z - front.z) / (behind.z - front.z);
  return Point(front.x + part * (behind.x - front.x), front.y + part * (behind.y - front.y), z);
}

void D3Projector::DrawLine(CDC* dc, const Point& p1, const Point& p2, bool noBearing) const {
  Point first = ToView(p1, noBearing);
  Point second = ToView(p2, noBearing);
  const bool isFirstSeen = IsInFront(first);
  const bool isSecondSeen = IsInFront(second);
  if (!isFirstSeen && !isSecondSeen) return;
  if (!isFirstSeen) first = JustBeforeEye(second, first);
  if (!isSecondSeen) second = JustBeforeEye(first, second);
  Line plane;
  if (!Conv3dTo2d(first, plane.start.x, plane.start.y) || !Conv3dTo2d(second, plane.end.x, plane.end.y)) return;
  plane.DrawLine(dc, m_coordinateSystem, m_coordinateSystem.worldWindow);
}
