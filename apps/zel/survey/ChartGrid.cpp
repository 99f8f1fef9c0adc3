#include "survey/ChartGrid.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "TextEdge.h"
#include "survey/ChartSteps.h"
#include "zelbase/frame/GeographicText.h"

namespace zel {
namespace {

constexpr double kLeastSpacing = 32.0;  // of grid lines
constexpr int kFineParts = 100;         // pixels to a millimetre, where crossings are sought
constexpr double kBeyond = 0.05;        // of the map that lines are longer
constexpr double kBar = 1.3;            // width of the bars around the map
constexpr double kGap = 1.4;            // from the bars to the labels
constexpr TextStyle kLabel{2.5, inks::kText, Face::Plain, 0.5, 0.0};

bool IsHorizontal(Side side) { return side == Side::Top || side == Side::Bottom; }
double StartOf(Side side) { return IsHorizontal(side) ? sheet::kMap.left : sheet::kMap.bottom; }
double EndOf(Side side) { return IsHorizontal(side) ? sheet::kMap.right : sheet::kMap.top; }

// The side's own coordinate, across the one that runs along it.
double PlaceOf(Side side) {
  switch (side) {
    case Side::Top: return sheet::kMap.bottom;
    case Side::Bottom: return sheet::kMap.top;
    case Side::Left: return sheet::kMap.left;
    case Side::Right: break;
  }
  return sheet::kMap.right;
}

// Where the way from `a` to `b` crosses the side; false when it does not. Points on the side count with what lies beyond it.
bool Crossing(const Point& a, const Point& b, Side side, double& at) {
  const double acrossA = IsHorizontal(side) ? a.y : a.x, acrossB = IsHorizontal(side) ? b.y : b.x;
  const double alongA = IsHorizontal(side) ? a.x : a.y, alongB = IsHorizontal(side) ? b.x : b.y;
  const double place = PlaceOf(side);
  if ((acrossA < place) == (acrossB < place)) return false;
  at = alongA + (alongB - alongA) * ((place - acrossA) / (acrossB - acrossA));
  return at >= StartOf(side) && at <= EndOf(side);
}

}  // namespace

// What the map covers, in the coordinates that are shown, and how many of their units a metre is.
struct ChartGrid::Bounds {
  double left, bottom, right, top;
  double perMetreX, perMetreY;
};

ChartGrid::ChartGrid(const Survey& survey, const MapView& view) : m_survey(survey), m_view(view) {
  const double turn = view.rotation * std::numbers::pi / 180.0;
  m_eastingsAcross = std::abs(std::cos(turn)) >= std::abs(std::sin(turn));
  if (!view.IsMap()) return;
  Bounds bounds = GridBounds();
  m_isGeographic = survey.coordinates.form != CoordinateForm::Grid && GeographicBounds(bounds);
  ChooseSteps(bounds);
  MakeLines(bounds);
  for (auto& marks : m_marks) std::ranges::sort(marks, {}, &FrameMark::at);
}

ChartGrid::Bounds ChartGrid::GridBounds() const {
  const CoordinateSystem system = m_view.System(1);
  Page page = system.GetExtend(system.worldWindow);
  page.Normalize();
  return {page.left, page.bottom, page.right, page.top, 1.0, 1.0};
}

// False, `bounds` as they were, when the projection is not known or has no sensible answer there.
bool ChartGrid::GeographicBounds(Bounds& bounds) const {
  constexpr int kParts = 16;
  Page page;
  for (int i = 0; i <= kParts; ++i) {
    for (int j = 0; j <= kParts; ++j) {
      const double x = bounds.left + (bounds.right - bounds.left) * i / kParts,
                   y = bounds.bottom + (bounds.top - bounds.bottom) * j / kParts;
      double latitude = 0.0, longitude = 0.0;
      if (!m_survey.coordinates.projection.ToGeographic(x, y, latitude, longitude) || std::abs(latitude) >= 89.0) return false;
      page |= Point(longitude, latitude, 0.0);
    }
  }
  if (!(page.Width() > 0.0 && page.Width() < 60.0 && page.Height() > 0.0 && page.Height() < 60.0)) return false;
  bounds = {page.left,
            page.bottom,
            page.right,
            page.top,
            page.Width() / (bounds.right - bounds.left),
            page.Height() / (bounds.top - bounds.bottom)};
  return true;
}

void ChartGrid::ChooseSteps(const Bounds& bounds) {
  const double metres = kLeastSpacing * m_view.MetresPerMillimetre();
  const SurveyCoordinates& coordinates = m_survey.coordinates;
  if (!m_isGeographic) {
    m_stepX = m_stepY = NiceStep(metres, 1.0);
    m_decimals = DecimalsOf(m_stepX);
    return;
  }
  m_stepX = NiceAngleStep(metres * bounds.perMetreX, 1.0, coordinates.form);
  m_stepY = NiceAngleStep(metres * bounds.perMetreY, 1.0, coordinates.form);
  const double parts = coordinates.form == CoordinateForm::Seconds ? 3600.0 : coordinates.form == CoordinateForm::Minutes ? 60.0 : 1.0;
  m_decimals = std::max(coordinates.decimals, DecimalsOf(std::min(m_stepX, m_stepY) * parts));
}

void ChartGrid::MakeLines(const Bounds& bounds) {
  constexpr std::size_t kMost = 500;
  for (const bool isEasting : {true, false}) {
    const double half = (isEasting ? m_stepX : m_stepY) / 2.0;
    for (const double value : Multiples(isEasting ? bounds.left : bounds.bottom, isEasting ? bounds.right : bounds.top, half, kMost)) {
      FrameMark mark;
      mark.value = value;
      mark.number = std::llround(std::fmod(value / half, 1e6));
      mark.isWhole = mark.number % 2 == 0;
      std::vector<Point> path = PathOf(value, isEasting, bounds);
      MarkCrossings(path, isEasting, mark);
      if (mark.isWhole) m_lines.push_back(std::move(path));
    }
  }
}

// Reaches a little beyond the map on both sides, so that it crosses the frame.
std::vector<Point> ChartGrid::PathOf(double value, bool isEasting, const Bounds& bounds) const {
  const int parts = m_isGeographic ? 32 : 1;
  std::vector<Point> path;
  for (int i = 0; i <= parts; ++i) {
    const double share = -kBeyond + (1.0 + 2.0 * kBeyond) * i / parts;
    const double latitude = isEasting ? bounds.bottom + (bounds.top - bounds.bottom) * share : value;
    const double longitude = isEasting ? value : bounds.left + (bounds.right - bounds.left) * share;
    Point point(longitude, latitude, 0.0);
    if (m_isGeographic) m_survey.coordinates.projection.ToGrid(latitude, longitude, point.x, point.y);
    path.push_back(point);
  }
  return path;
}

void ChartGrid::MarkCrossings(const std::vector<Point>& path, bool isEasting, FrameMark mark) {
  const CoordinateSystem system = m_view.System(kFineParts);
  const auto onSheet = [&system](const Point& world) {
    Point pixel;
    system.WorldToPixel(world, &pixel);
    return Point(pixel.x / kFineParts, pixel.y / kFineParts, 0.0);
  };
  for (std::size_t i = 1; i < path.size(); ++i) {
    const Point a = onSheet(path[i - 1]), b = onSheet(path[i]);
    for (const Side side : {Side::Top, Side::Right, Side::Bottom, Side::Left}) {
      if (ShowsEastings(side) == isEasting && Crossing(a, b, side, mark.at)) m_marks[static_cast<std::size_t>(side)].push_back(mark);
    }
  }
}

std::string ChartGrid::LabelOf(double value, bool isEasting) const {
  if (!m_isGeographic) return Thousands(value, m_decimals) + (isEasting ? " E" : " N");
  std::string text;
  FormatGeogs(value, m_survey.coordinates.GeogsFormat(), m_decimals, isEasting ? 11 : 10, text, true, true);
  return ToTerminal(text, Encoding::Windows1252);
}

void ChartGrid::DrawFrame(const SheetPen& pen) const {
  const Page& map = sheet::kMap;
  for (const Side side : {Side::Top, Side::Right, Side::Bottom, Side::Left}) {
    DrawBars(pen, side);
    DrawLabels(pen, side);
  }
  pen.Box(map.left, map.bottom, map.Width(), map.Height(), 0.2, inks::kText);
  pen.Box(map.left - kBar, map.bottom - kBar, map.Width() + 2 * kBar, map.Height() + 2 * kBar, 0.35, inks::kText);
}

// Every other half step is dark; the same ones on opposite sides of a map with north up.
void ChartGrid::DrawBars(const SheetPen& pen, Side side) const {
  const std::vector<FrameMark>& marks = Marks(side);
  if (marks.empty()) return;
  const bool rises = marks.size() < 2 || marks.front().number < marks.back().number;
  for (std::size_t i = 0; i <= marks.size(); ++i) {
    const long long below = i < marks.size() ? marks[i].number - (rises ? 1 : 0) : marks.back().number - (rises ? 0 : 1);
    if (below % 2 != 0) continue;
    const double from = i == 0 ? StartOf(side) : marks[i - 1].at, to = i == marks.size() ? EndOf(side) : marks[i].at;
    const double across = PlaceOf(side) - (side == Side::Top || side == Side::Left ? kBar : 0.0);
    if (IsHorizontal(side)) pen.Fill(from, across, to - from, kBar, inks::kText);
    else pen.Fill(across, from, kBar, to - from, inks::kText);
  }
}

void ChartGrid::DrawLabels(const SheetPen& pen, Side side) const {
  constexpr double kMostShift = 2.5, kApart = 3.0;
  constexpr double kAscent = 0.73;  // of the font's size
  double taken = StartOf(side) - kApart;
  for (const FrameMark& mark : Marks(side)) {
    if (!mark.isWhole) continue;
    const std::string text = LabelOf(mark.value, ShowsEastings(side));
    const double half = pen.Width(text, kLabel) / 2.0;
    if (2.0 * half > EndOf(side) - StartOf(side)) continue;
    const double at = std::clamp(mark.at, StartOf(side) + half, EndOf(side) - half);
    if (std::abs(at - mark.at) > kMostShift || at - half < taken + kApart) continue;
    taken = at + half;
    TextStyle style = kLabel;
    if (side == Side::Top) pen.Text(at, PlaceOf(side) - kBar - kGap, text, style);
    if (side == Side::Bottom) pen.Text(at, PlaceOf(side) + kBar + kGap + kAscent * style.size, text, style);
    style.angle = -90.0;
    if (side == Side::Left) pen.Text(PlaceOf(side) - kBar - kGap, at, text, style);
    if (side == Side::Right) pen.Text(PlaceOf(side) + kBar + kGap + kAscent * style.size, at, text, style);
  }
}

}  // namespace zel
