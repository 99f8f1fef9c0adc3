#include "zelbase/geometry/Curve.h"

#include <cmath>

#include "zelbase/frame/NumericHelpers.h"
#include "zelbase/geometry/Angles.h"
#include "zelbase/geometry/Intersect.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/Polar.h"

namespace {

constexpr double kMostSteps = 10'000'000;

}  // namespace

Curve::Curve(const Point& centrePoint, double signedRadius, double startBearing, double endBearing) {
  Set(centrePoint, signedRadius, startBearing, endBearing);
}

Curve::Curve(const Point& p1, const Point& p2, double bulge) {
  double bearing = 0;
  double chord = 0;
  XYToPolar(p2 - p1, bearing, chord);
  const double sagitta = std::fabs(bulge) * chord * 0.5;
  Point aside;
  PolarToXY(bulge >= 0 ? bearing + 90.0 : bearing - 90.0, sagitta, aside);
  Point middle;
  if (!CentreCircleFrom3P(p1, (p1 + p2) * 0.5 + aside, p2, middle)) return;
  centre = middle;
  double distance = 0;
  // Kept: untrimmed, so that an end just west of north may be stored as 360.
  XYToPolar(p1 - centre, startAngle, distance);
  XYToPolar(p2 - centre, endAngle, distance);
  radius = bulge > 0 ? -distance : distance;
  centre.z = (p1.z + p2.z) * 0.5;
}

void Curve::Set(const Point& centrePoint, double signedRadius, double startBearing, double endBearing) {
  const bool isFullCircle = startBearing == 0.0 && endBearing == 360.0;
  centre = centrePoint;
  radius = signedRadius;
  startAngle = isFullCircle ? startBearing : TrimAngle(startBearing);
  endAngle = isFullCircle ? endBearing : TrimAngle(endBearing);
}

bool Curve::IsEmptyArc() const {
  // Kept: fails where an angle is 0, so that (0, 0) holds north.
  return Epsilon(startAngle * endAngle) > std::fabs(endAngle - startAngle);
}

bool Curve::AngleInCurve(double angle) const {
  if (IsEmptyArc()) return false;
  const double a = TrimAngle(angle);
  // The arc as a clockwise one.
  // Kept: 0 to 360 is the full circle clockwise only; the other way it runs from 360 to 0 and holds north alone.
  const double from = radius >= 0 ? startAngle : endAngle;
  const double to = radius >= 0 ? endAngle : startAngle;
  if (from > to) return a >= from || a <= to;  // past north
  return from <= a && a <= to;
}

Point Curve::AngleToPoint(double angle) const { return PointOnRing(angle * D_TO_R, std::fabs(radius)); }

bool Curve::PointInSegment(const Point& point) const {
  double bearing = 0;
  double distance = 0;
  XYToPolar(point - centre, bearing, distance);
  return AngleInCurve(bearing);
}

bool Curve::PointInCurveRatio(const Point& point, double& ratio) const {
  double bearing = 0;
  double distance = 0;
  XYToPolar(point - centre, bearing, distance);
  const bool inCurve = AngleInCurve(bearing);
  // Kept: not guarded against a sweep of 0.
  if (radius >= 0) {
    if (bearing < startAngle) bearing += 360.0;
    ratio = (bearing - startAngle) / SectorAngle();
  } else {
    if (bearing > startAngle) bearing -= 360.0;
    ratio = (startAngle - bearing) / SectorAngle();
  }
  return inCurve;
}

double Curve::SectorAngle() const {
  if (startAngle == endAngle || IsEmptyArc()) return 0.0;
  return radius >= 0 ? TrimAngle(endAngle - startAngle) : TrimAngle(startAngle - endAngle);
}

double Curve::Bow() const { return SectorAngle() * D_TO_R * std::fabs(radius); }

bool Curve::GetExtents(Page& page) const {
  const Point first = AngleToPoint(startAngle);
  Page box(first, first);
  box |= AngleToPoint(endAngle);
  const double r = std::fabs(radius);
  if (AngleInCurve(0)) box.top = centre.y + r;
  if (AngleInCurve(90)) box.right = centre.x + r;
  if (AngleInCurve(180)) box.bottom = centre.y - r;
  if (AngleInCurve(270)) box.left = centre.x - r;
  page = box;
  return true;
}

bool Curve::GetAsPoints(std::vector<Point>& points, double tolerance) const {
  const double r = std::fabs(radius);
  if (tolerance > r) return false;
  double step = std::acos((r - tolerance) / (r + tolerance));
  // Kept: a radius of 0 is swept as a negative one, unlike in SectorAngle.
  const double sweep = (radius > 0 ? TrimAngle(endAngle - startAngle) : TrimAngle(startAngle - endAngle)) * D_TO_R;
  if (!(step > 0 && sweep / step <= kMostSteps)) return false;
  const double c = std::cos(step * 0.5);
  const double outer = r + (1 - c) * r / (1 + c);

  points.push_back(AngleToPoint(startAngle));  // Kept: appended; a path of several arcs is put together so.
  const int n = static_cast<int>(sweep / step);
  step = sweep / n;  // not finite when n is 0, and not used then
  if (radius < 0) step = -step;
  double bearing = startAngle * D_TO_R + step * 0.5;
  for (int i = 0; i < n; ++i, bearing += step) points.push_back(PointOnRing(bearing, outer));
  points.push_back(AngleToPoint(endAngle));
  return true;
}

Point Curve::PointOnRing(double radians, double ringRadius) const {
  return Point(centre.x + std::sin(radians) * ringRadius, centre.y + std::cos(radians) * ringRadius, centre.z);
}
