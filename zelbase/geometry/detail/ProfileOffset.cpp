#include "zelbase/geometry/detail/ProfileOffset.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zelbase/geometry/Angles.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/Polar.h"

namespace zelbase::detail {
namespace {

constexpr int kMostArcPoints = 4096;

// What the whole line shares, so that no corner computes it again.
struct ArcForm {
  ArcForm(double offset, double tolerance)
      : r(std::fabs(offset)),
        drawn(r > tolerance),
        step(std::acos((r - tolerance) / (r + tolerance))),
        cosine(std::cos(step * 0.5)),
        outer(r + (1 - cosine) * r / (1 + cosine)) {}

  double r;       // metres
  bool drawn;     // whether corners have arcs at all
  double step;    // radians between two points whose chord keeps the tolerance
  double cosine;  // of half a step
  double outer;   // the radius on which points stand, so that chords lie on either side of the arc
};

// One corner's share of points: `count` of them, `angleStep` degrees apart, on `radius`.
struct CornerArc {
  int count = 0;
  double angleStep = 0.0;
  double radius = 0.0;
};

CornerArc ArcOfTurn(const ArcForm& form, double turn) {
  CornerArc arc;
  if (!form.drawn) return arc;
  const double turnRadians = std::fabs(turn * D_TO_R);
  const bool isUnderOneStep = turnRadians < form.step;
  const double stepDegrees = (isUnderOneStep ? turnRadians : form.step) / D_TO_R;
  // Before the division: a straight joint has a step of 0.
  if (std::fabs(turn + turn) <= stepDegrees) return arc;
  // Kept: the sum is cut, not the quotient; a corner under one step has 2 points whichever way its quotient rounds.
  const double count = 1.0 + std::fabs(turn / stepDegrees);
  if (std::isnan(count)) return arc;
  arc.count = static_cast<int>(std::min(count, static_cast<double>(kMostArcPoints)));
  arc.angleStep = turn / arc.count;
  arc.radius = isUnderOneStep ? form.r : form.outer;
  return arc;
}

// A segment's direction in the plan. Moving by m along the profile changes x by -uy * m and y by ux * m.
struct PlanDirection {
  PlanDirection(double dx, double dy) {
    const double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0)) return;
    ux = dy / length;
    uy = -dx / length;
  }
  // Kept: without movement in the plan the profile counts as running along x, backwards.
  double ux = 0.0;
  double uy = 1.0;
};

class Builder {
 public:
  Builder(std::size_t points, double offset, double tolerance) : m_offset(offset), m_form(offset, tolerance) { m_work.reserve(2 * points); }

  void AddSegment(const ProfilePoint& from, const ProfilePoint& to) {
    const PlanDirection direction(to.x - from.x, to.y - from.y);
    double bearing = 0.0;
    double length = 0.0;
    XYToPolar(to.distance - from.distance, to.z - from.z, bearing, length);
    const double normal = TrimAngle(bearing - 90.0);
    // Kept: the arc's points go by the direction of the new segment in the plan.
    if (m_hasPrevious) AddCorner(from, direction, normal);
    double shiftD = 0.0;
    double shiftZ = 0.0;
    PolarToXY(normal, m_offset, shiftD, shiftZ);
    AddMoved(from, direction, shiftD, shiftZ, from.sectionStart);
    AddMoved(to, direction, shiftD, shiftZ, to.sectionStart);
    m_previousNormal = normal;
    m_hasPrevious = true;
  }

  void EndSection() { m_hasPrevious = false; }

  std::vector<ProfilePoint> Take() { return std::move(m_work); }

 private:
  // Kept: at an inner corner as at an outer one; the loops of inner ones are cut out afterwards.
  void AddCorner(const ProfilePoint& corner, const PlanDirection& direction, double normal) {
    const CornerArc arc = ArcOfTurn(m_form, modgeo(normal - m_previousNormal));
    const double radius = std::copysign(arc.radius, m_offset);
    double angle = m_previousNormal + arc.angleStep * 0.5;
    for (int i = 0; i < arc.count; ++i) {
      double shiftD = 0.0;
      double shiftZ = 0.0;
      PolarToXY(angle, radius, shiftD, shiftZ);
      AddMoved(corner, direction, shiftD, shiftZ, false);
      angle += arc.angleStep;
    }
  }

  void AddMoved(const ProfilePoint& point, const PlanDirection& direction, double shiftD, double shiftZ, bool flag) {
    m_work.emplace_back(point.x - direction.uy * shiftD, point.y + direction.ux * shiftD, point.z + shiftZ, point.distance + shiftD, flag);
  }

  double m_offset;
  ArcForm m_form;
  std::vector<ProfilePoint> m_work;
  bool m_hasPrevious = false;
  double m_previousNormal = 0.0;
};

}  // namespace

std::vector<ProfilePoint> LiftedPoints(LineData& source, double zShift) {
  std::vector<ProfilePoint> points;
  const int count = source.NumDataPoints();
  if (count > 0) points.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    points.push_back(source.DataPoint(i));
    points.back().z += zShift;
  }
  return points;
}

std::vector<ProfilePoint> OffsetSegments(const std::vector<ProfilePoint>& line, double offset, double tolerance) {
  Builder builder(line.size(), offset, tolerance);
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i].sectionStart) {
      builder.EndSection();
    } else {
      builder.AddSegment(line[i - 1], line[i]);
    }
  }
  return builder.Take();
}

}  // namespace zelbase::detail
