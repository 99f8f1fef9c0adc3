#include <cmath>

#include "zelbase/geometry/Angles.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Curve.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/MathConstants.h"

namespace {

// A piece of more chords than this is drawn as one.
constexpr double kMostChords = 1'000'000;

constexpr int kMostPieces = 5;

}  // namespace

void Curve::DrawCurve(CDC* dc, const CoordinateSystem& cs, const Page& page) const {
  if (dc == nullptr) return;
  Page pixelPage;
  Point pixelCentre;
  cs.WorldToPixel(page, &pixelPage);
  cs.WorldToPixel(centre, &pixelCentre);

  const bool isTurned = cs.GetRotationMode() == ROTATIONMODE_SKEW;
  double from = startAngle;
  double to = endAngle;
  // Kept: equal angles, which draw the full circle, are not turned here, but they are turned back below.
  // Kept: 0 and 360 are turned one by one; where 360 rounds up on the way they draw a dot, and callers give equal angles.
  if (isTurned && from != to) {
    from = TrimAngle(from + cs.GetSkew());
    to = TrimAngle(to + cs.GetSkew());
  }
  int count = 0;
  double starts[kMostPieces];
  double ends[kMostPieces];
  const double pixelRadius = radius * cs.scale.x;
  if (radius >= 0) {
    pixelPage.ClipCircle(pixelCentre, pixelRadius, from, to, count, starts, ends);
  } else {
    pixelPage.ClipCircle(pixelCentre, -pixelRadius, to, from, count, starts, ends);
  }
  for (int i = 0; i < count; ++i) {
    if (isTurned) {
      starts[i] = TrimAngle(starts[i] - cs.GetSkew());
      ends[i] = TrimAngle(ends[i] - cs.GetSkew());
    }
    DrawSegment(dc, cs, page, starts[i], ends[i]);
  }
}

void Curve::DrawSegment(CDC* dc, const CoordinateSystem& cs, const Page& page, double from, double to) const {
  const double r = std::fabs(radius);
  const double tolerance = 0.5 / cs.scale.x;  // half a pixel
  if (r < tolerance) return;
  const double step = std::acos((r - tolerance) / (r + tolerance));
  if (to <= from) to += 360.0;
  double angle = from * D_TO_R;
  const double last = to * D_TO_R;

  const auto pointAt = [this, r](double radians) { return Point(r * std::sin(radians) + centre.x, r * std::cos(radians) + centre.y, 0); };
  Point start = pointAt(angle);
  // A scale without use, or a radius beyond all pixels: nothing is gained by more than one chord.
  const bool hasSteps = step > 0 && (last - angle) / step <= kMostChords;
  while (hasSteps && angle + step < last) {
    angle += step;
    const Point end = pointAt(angle);
    Line(start, end).DrawLine(dc, cs, page);
    start = end;
  }
  Line(start, pointAt(last)).DrawLine(dc, cs, page);
}
