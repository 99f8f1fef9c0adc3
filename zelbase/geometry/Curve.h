// A directed arc of a circle between two bearings. Neighbours: Line.h for straight segments, Intersect.h for
// what curves have in common with lines and with each other, Angles.h and Polar.h for bearings.
#pragma once

#include <type_traits>
#include <vector>

#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

class CDC;
class CoordinateSystem;

// A plain value. Angles are degrees and bearings seen from the centre: 0 along +y, 90 along +x, clockwise.
//
//   const Curve quarter(Point(0, 0, 0), 10, 0, 90);    // clockwise from (0, 10) to (10, 0)
//   const Curve back(Point(0, 0, 0), -10, 90, 0);      // the same arc the other way round
//   quarter.Bow();                                     // 15.7 metres along the arc
//
// What holds:
//   (1) The sign of the radius is the direction of travel from startAngle to endAngle. Positive or 0 runs
//       clockwise, by rising bearing; negative runs counter-clockwise, and so does NaN.
//   (2) Angles are stored within [0, 360), by TrimAngle. The pair 0.0 and 360.0 alone is stored as given: the
//       full circle. It is full for AngleInCurve and a positive radius only; with a negative one it holds
//       north alone. Its SectorAngle, and all that is measured by it, is 0 either way.
//   (3) Two equal angles are an empty arc. Where one of them is 0 the test for that fails, so that (0, 0),
//       and with it a default curve, holds north. Its SectorAngle is 0 like that of any other.
//   (4) Both ends are part of the arc, without a tolerance. Bearings of points are a little off, as Polar.h
//       says: a point due south does not lie on the arc 0 to 180, nor one due east on 0 to 90, while one due
//       south lies on 180 to 270.
class ZELBASE_API Curve {
 public:
  constexpr Curve() = default;
  Curve(const Point& centrePoint, double signedRadius, double startBearing, double endBearing);

  // The arc from `p1` to `p2` with the bulge factor of DXF: the sagitta is |bulge| times half the chord. A
  // positive bulge runs counter-clockwise and bows to the right of travel, a negative one clockwise and to
  // the left. The height of the centre is the mean of both. Points on one line (a bulge of nearly 0 among
  // them, or coincident points) leave a default curve, whose radius is 0.
  Curve(const Point& p1, const Point& p2, double bulge);

  void Set(const Point& centrePoint, double signedRadius, double startBearing, double endBearing);

  // Whether the bearing, trimmed, lies on the arc.
  bool AngleInCurve(double angle) const;

  // The point of the circle at a bearing, with the centre's z; also off the arc.
  Point AngleToPoint(double angle) const;

  // Whether the point's bearing from the centre lies on the arc. Its distance is not looked at: a far away
  // point in the right direction does.
  bool PointInSegment(const Point& point) const;

  // The part of the way along the arc at which the point's bearing lies: 0 at the start, 1 at the end, above
  // 1 beyond it. The answer is PointInSegment; the ratio is written in any case, and where SectorAngle is 0
  // it is a division by zero (infinity, or NaN at the start).
  bool PointInCurveRatio(const Point& point, double& ratio) const;

  // The sweep in degrees, [0, 360): 0.0 when the angles are equal within Epsilon(startAngle * endAngle).
  double SectorAngle() const;

  // The length along the arc.
  double Bow() const;

  // Sets `page` to the box around both ends and those of the four quarters that AngleInCurve holds. Always
  // true.
  bool GetExtents(Page& page) const;

  // Appends the arc as a polyline: the start point, points half a step off it and on, slightly outside of the
  // circle so that the chords lie to both sides of the arc, and the end point; all with the centre's z. The
  // step is acos((r - tolerance) / (r + tolerance)) in radians, with the tolerance in metres; a sweep below
  // one step gives both end points only, as does the full circle.
  //
  // False, and nothing appended, for a tolerance above the radius, and unless the step is above 0 and the
  // sweep has at most 10 000 000 of them: so for a tolerance of 0 or NaN, for a negative one (unless the
  // radius is 0), and for one that is tiny beside the radius.
  bool GetAsPoints(std::vector<Point>& points, double tolerance) const;

  // Draws in the selected pen what `page` shows of the arc, by chords (Line::DrawLine) that leave it by half a pixel at the most. A
  // radius below half a pixel draws nothing. Equal angles draw the full circle. A visible piece that would need more than 1 000 000
  // chords, or has no chord length because the scale is negative or no number, is one chord from end to end.
  // Null draws nothing.
  //
  // On a turned map give equal angles for a full circle. The pair 0 and 360 is turned there by the skew like any other, and rounded:
  // with one skew in three it becomes an arc of nearly nothing, a dot at north.
  void DrawCurve(CDC* dc, const CoordinateSystem& cs, const Page& page) const;

  Point centre;
  double radius = 0;      // metres; the sign is the direction of travel
  double startAngle = 0;  // degrees
  double endAngle = 0;    // degrees

 private:
  bool IsEmptyArc() const;
  Point PointOnRing(double radians, double ringRadius) const;
  void DrawSegment(CDC* dc, const CoordinateSystem& cs, const Page& page, double from, double to) const;
};

static_assert(sizeof(Curve) == sizeof(Point) + 3 * sizeof(double));
static_assert(std::is_trivially_copyable_v<Curve> && std::is_standard_layout_v<Curve>);
