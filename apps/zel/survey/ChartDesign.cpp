#include "survey/ChartDesign.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "survey/ChartSteps.h"
#include "survey/ChartSymbols.h"
#include "zelbase/frame/NumberFormat.h"

namespace zel {
namespace {

constexpr double kLeastMajor = 24.0;                  // millimetres from number to number
constexpr double kMinorTick = 0.8, kMajorTick = 1.7;  // to either side
constexpr double kTextHeight = 3.0;
constexpr double kTextGap = 0.7;
constexpr double kTickLine = 0.3, kFloorEdge = 0.18;

std::vector<ProfilePoint> PointsOf(LineData& line) {
  std::vector<ProfilePoint> points;
  points.reserve(static_cast<std::size_t>(line.NumDataPoints()));
  for (int i = 0; i < line.NumDataPoints(); ++i) points.push_back(line.DataPoint(i));
  return points;
}

// Calls `use` for each piece of the line that has a length.
template <typename Use>
void ForPieces(const std::vector<ProfilePoint>& points, Use use) {
  for (std::size_t i = 1; i < points.size(); ++i) {
    const bool isGap = points[i].sectionStart;
    if (!isGap && points[i - 1].Absolute().Dist2D(points[i].Absolute()) > 0.0) use(points[i - 1], points[i]);
  }
}

Point RightOf(const Point& from, const Point& to) {
  const double length = from.Dist2D(to);
  return Point((to.y - from.y) / length, (from.x - to.x) / length, 0.0);
}

double Dot(const Point& a, const Point& b) { return a.x * b.x + a.y * b.y; }

// Joins a piece to the path before it, about the corner where the line turns from one right-hand direction to the other: outside the
// bend by an arc, inside it where the two pieces meet. Pieces that are too short to meet are joined end to start.
void JoinBeside(std::vector<Point>& path, const Point& corner, const Point& before, const Point& behind, double distance,
                const Point& end) {
  constexpr double kMostTurn = 0.1, kBack = 1e-6;  // radians of an arc's chord; of one plus the cosine, where the line turns back
  const double turn = std::atan2(before.x * behind.y - before.y * behind.x, Dot(before, behind));
  if (turn * distance > 0.0) {
    const int chords = static_cast<int>(std::ceil(std::abs(turn) / kMostTurn));
    for (int i = 1; i <= chords; ++i) {
      const double angle = turn * i / chords, sine = std::sin(angle), cosine = std::cos(angle);
      path.push_back(corner + Point(before.x * cosine - before.y * sine, before.x * sine + before.y * cosine, 0.0) * distance);
    }
    return;
  }
  const double spread = 1.0 + Dot(before, behind);
  const Point meeting = spread > kBack ? corner + (before + behind) * (distance / spread) : corner;
  const Point alongBefore(-before.y, before.x, 0.0), alongBehind(-behind.y, behind.x, 0.0);
  const bool meets = spread > kBack && Dot(meeting - path[path.size() - 2], alongBefore) > 0.0 && Dot(end - meeting, alongBehind) > 0.0;
  if (meets) path.back() = meeting;
  else path.push_back(corner + behind * distance);
}

void DrawTicks(const MapPen& pen, const std::vector<ChainageTick>& ticks, const MapView& view) {
  for (const ChainageTick& tick : ticks) {
    const Point half = tick.across * ((tick.text.empty() ? kMinorTick : kMajorTick) * view.MetresPerMillimetre());
    pen.Draw(Line(tick.place - half, tick.place + half));
  }
}

// The box around a text that ends at `end` and comes from the direction `from`, both on the sheet.
Page BoxAround(const Point& end, const Point& from, double height) {
  Page box(end, end);
  box |= from;
  return Page(box.left - height / 2.0, box.bottom - height / 2.0, box.right + height / 2.0, box.top + height / 2.0);
}

// Writes a chainage beside its tick, on the side from which it stands upright.
void Annotate(const MapPen& pen, const ChainageTick& tick, const MapView& view, BoxIndex& taken) {
  const double outside = (kMajorTick + kTextGap) * view.MetresPerMillimetre();
  const Point middle = pen.OnSheet(tick.place), right = pen.OnSheet(tick.place + tick.across * outside);
  const double side = right.x < middle.x || (right.x == middle.x && right.y > middle.y) ? 1.0 : -1.0;
  const Point start = tick.place + tick.across * (side * outside);
  const Point end = pen.OnSheet(start);
  const double reach = pen.AnnotationWidth(tick.text, kTextHeight), scale = reach / std::max(end.Dist2D(middle), 1e-6);
  const Page box = BoxAround(end, end + (end - middle) * scale, kTextHeight);
  if (!sheet::kMap.IsPointInPage(box.BottomLeft()) || !sheet::kMap.IsPointInPage(box.TopRight()) || !taken.IsFree(box)) return;
  constexpr double kRim = 0.3;
  pen.AnnotateWithRim(Line(start, tick.place), tick.text, kTextHeight, inks::kDesign, kRim * view.MetresPerMillimetre());
  taken.Add(box);
}

}  // namespace

std::vector<ChainageTick> ChainageTicks(const Survey& survey, double metresPerMillimetre) {
  constexpr std::size_t kMost = 5000;
  std::vector<ChainageTick> ticks;
  if (!survey.design.IsGiven()) return ticks;
  const auto shown = [&survey](double metres) { return survey.units.ConvertUnit(CZelUnitCnv::Distance, metres); };
  const double major = NiceStep(shown(kLeastMajor * metresPerMillimetre), 1.0), minor = major / 5.0;
  ForPieces(PointsOf(*survey.design.line), [&](const ProfilePoint& from, const ProfilePoint& to) {
    const double first = shown(from.distance), last = shown(to.distance);
    if (!(last > first)) return;
    for (const double chainage : Multiples(first, last, minor, kMost)) {
      if (ticks.size() >= kMost || (!ticks.empty() && chainage <= ticks.back().chainage)) continue;
      const double share = (chainage - first) / (last - first);
      const Point place = from.Absolute() + (to.Absolute() - from.Absolute()) * share;
      const bool isMajor = std::abs(chainage / major - std::round(chainage / major)) < 1e-6;
      ticks.push_back({chainage, place, RightOf(from.Absolute(), to.Absolute()), isMajor ? FormatDouble(chainage, DecimalsOf(major)) : ""});
    }
  });
  return ticks;
}

std::vector<std::vector<Point>> PathsBeside(const Survey& survey, double distance) {
  std::vector<std::vector<Point>> paths;
  if (!survey.design.IsGiven()) return paths;
  Point before;
  ForPieces(PointsOf(*survey.design.line), [&](const ProfilePoint& from, const ProfilePoint& to) {
    const Point behind = RightOf(from.Absolute(), to.Absolute()), end = to.Absolute() + behind * distance;
    if (paths.empty() || from.sectionStart) paths.push_back({from.Absolute() + behind * distance});
    else JoinBeside(paths.back(), from.Absolute(), before, behind, distance, end);
    paths.back().push_back(end);
    before = behind;
  });
  return paths;
}

void DrawDesign(MapPen& pen, const Survey& survey, const MapView& view, BoxIndex& taken) {
  if (!survey.design.IsGiven()) return;
  const std::vector<ProfilePoint> points = PointsOf(*survey.design.line);
  if (survey.design.width > 0.0) {
    pen.Use(inks::kDesign, kFloorEdge);
    for (const double side : {-0.5, 0.5}) {
      for (const std::vector<Point>& path : PathsBeside(survey, side * survey.design.width)) pen.Draw(path);
    }
  }
  const std::vector<ChainageTick> ticks = ChainageTicks(survey, view.MetresPerMillimetre());
  for (const auto& [ink, rim] : {std::pair{inks::kPaper, lines::kRim}, {inks::kDesign, 0.0}}) {
    pen.Use(ink, lines::kDesign, rim);
    ForPieces(points, [&pen](const ProfilePoint& from, const ProfilePoint& to) { pen.Draw(Line(from.Absolute(), to.Absolute())); });
    pen.Use(ink, kTickLine, rim);
    DrawTicks(pen, ticks, view);
  }
  for (const ChainageTick& tick : ticks) {
    if (!tick.text.empty()) Annotate(pen, tick, view, taken);
  }
}

}  // namespace zel
