#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "TextEdge.h"
#include "adapters/cairo/CairoSurface.h"
#include "survey/ChartFurniture.h"
#include "survey/ChartLegend.h"
#include "survey/ChartSteps.h"
#include "survey/MapPen.h"
#include "survey/PictureFile.h"
#include "survey/ProfileLayout.h"
#include "survey/SheetPen.h"
#include "survey/SurveyPictures.h"
#include "zelbase/frame/NumberFormat.h"

namespace zel {
namespace {

using namespace section_sheet;

constexpr int kParts = sheet::kPngParts;
constexpr double kBottomLine = 0.35, kDesignLine = 0.45, kOverDepthLine = 0.3, kShoalLine = 0.15;
constexpr Ink kGround{0.945, 0.915, 0.850};
constexpr Ink kBottomInk{0.27, 0.22, 0.17};

std::string Utf8(const std::string& text) { return ToTerminal(text, Encoding::Windows1252); }

// A line of the design as runs of points of the profile's plane, parted at gaps.
std::vector<std::vector<Point>> RunsOf(LineData* line) {
  std::vector<std::vector<Point>> runs;
  if (line == nullptr) return runs;
  for (int i = 0; i < line->NumDataPoints(); ++i) {
    const ProfilePoint point = line->DataPoint(i);
    if (runs.empty() || point.sectionStart) runs.emplace_back();
    runs.back().push_back(point.Relative());
  }
  return runs;
}

// The measured rows as runs, each a pair of numbers of rows, both included.
std::vector<std::pair<std::size_t, std::size_t>> MeasuredRuns(const LongSection& section) {
  std::vector<std::pair<std::size_t, std::size_t>> runs;
  for (std::size_t i = 0; i < section.rows.size(); ++i) {
    if (!section.rows[i].measured) continue;
    const bool goesOn = !runs.empty() && runs.back().second + 1 == i && !section.rows[i].sectionStart;
    if (goesOn) runs.back().second = i;
    else runs.emplace_back(i, i);
  }
  return runs;
}

class Profile {
 public:
  Profile(const Survey& survey, CairoSurface& surface)
      : m_survey(survey), m_view(ProfileViewOf(survey)), m_surface(surface), m_system(m_view.System(kParts)) {}

  void Draw() {
    {
      const SheetPen pen(m_surface.Context(), kParts);
      pen.Fill(0.0, 0.0, kWidth, kHeight, inks::kPaper);
      pen.Box(sheet::kBorder, sheet::kBorder, kWidth - 2 * sheet::kBorder, kHeight - 2 * sheet::kBorder, 0.5, inks::kText);
      pen.Fill(kFrame.left, kFrame.bottom, kFrame.Width(), kFrame.Height(), IsMap() ? inks::kWater : inks::kPaper);
      if (IsMap()) DrawGround(pen);
      if (IsMap()) DrawGrid(pen);
      if (IsMap()) DrawDifferences(pen);
    }
    if (IsMap()) DrawLines();
    const SheetPen pen(m_surface.Context(), kParts);
    Title(pen);
    if (IsMap()) {
      pen.Box(kFrame.left, kFrame.bottom, kFrame.Width(), kFrame.Height(), 0.35, inks::kText);
      DrawAxes(pen);
      DrawColumn(pen);
    } else {
      DrawNotice(pen);
    }
  }

 private:
  bool IsMap() const { return !m_view.isEmpty && m_view.isDrawable; }
  std::string Word(const std::string& english) const { return Worded(m_survey, english); }

  // Millimetres on the sheet, unrounded: what is filled between rows should have no steps.
  double X(double chainage) const { return kFrame.left + (chainage - m_view.window.left) / m_view.alongScale * 1000.0; }
  double Y(double z) const { return kFrame.bottom + (m_view.window.top - z) / m_view.upwardScale * 1000.0; }

  double ShownChainage(double metres) const { return m_survey.units.ConvertUnit(CZelUnitCnv::Distance, metres); }

  // Values of an axis with their places on the sheet.
  struct AxisMark {
    double value, at;
  };

  std::vector<AxisMark> AlongMarks(double& step) const {
    constexpr double kLeast = 25.0;
    const double from = ShownChainage(m_view.window.left), to = ShownChainage(m_view.window.right);
    step = NiceStep(std::abs(to - from) * kLeast / kFrame.Width(), 1.0);
    std::vector<AxisMark> marks;
    for (const double value : Multiples(std::min(from, to), std::max(from, to), step)) {
      marks.push_back({value, X(m_survey.units.ConvertFromUnit(CZelUnitCnv::Distance, value))});
    }
    return marks;
  }

  std::vector<AxisMark> DepthMarks(double& step) const {
    constexpr double kLeast = 12.0;
    const double from = m_survey.ShownDepth(m_view.window.top), to = m_survey.ShownDepth(m_view.window.bottom);
    step = NiceStep(std::abs(to - from) * kLeast / kFrame.Height(), 1.0);
    std::vector<AxisMark> marks;
    for (const double value : Multiples(std::min(from, to), std::max(from, to), step)) {
      marks.push_back({value, Y(-m_survey.units.ConvertFromUnit(CZelUnitCnv::Depth, value))});
    }
    return marks;
  }

  void Clip(const SheetPen& pen) const {
    cairo_rectangle(pen.Context(), kFrame.left, kFrame.bottom, kFrame.Width(), kFrame.Height());
    cairo_clip(pen.Context());
  }

  // What lies below the measured bottom.
  void DrawGround(const SheetPen& pen) const {
    cairo_save(pen.Context());
    Clip(pen);
    for (const auto& [first, last] : MeasuredRuns(m_survey.section)) {
      const std::vector<Point> path = RowPath(first, last, &SectionRow::bottom);
      cairo_move_to(pen.Context(), X(path.front().x), kFrame.top);
      for (const Point& point : path) cairo_line_to(pen.Context(), X(point.x), Y(point.y));
      cairo_line_to(pen.Context(), X(path.back().x), kFrame.top);
      pen.FillPath(kGround);
    }
    cairo_restore(pen.Context());
  }

  void DrawGrid(const SheetPen& pen) const {
    double step = 0.0;
    for (const AxisMark& mark : AlongMarks(step)) pen.Rule(mark.at, kFrame.bottom, mark.at, kFrame.top, 0.12, inks::kGridLine);
    for (const AxisMark& mark : DepthMarks(step)) pen.Rule(kFrame.left, mark.at, kFrame.right, mark.at, 0.12, inks::kGridLine);
  }

  // The room between design and bottom, each row's half way to its neighbours, or half a step where it has none, in the colour of its
  // difference.
  void DrawDifferences(const SheetPen& pen) const {
    const std::vector<SectionRow>& rows = m_survey.section.rows;
    std::vector<double> differences;
    differences.reserve(rows.size());
    for (const SectionRow& row : rows) differences.push_back(row.difference);
    std::vector<COLORREF> colours(rows.size());
    m_survey.differenceColours.GetColors(differences, colours);
    cairo_save(pen.Context());
    Clip(pen);
    cairo_set_antialias(pen.Context(), CAIRO_ANTIALIAS_NONE);  // no seams between rows
    for (const auto& [first, last] : MeasuredRuns(m_survey.section)) {
      for (std::size_t i = first; i <= last; ++i) {
        const Place before = i == first ? Beside(i, -1.0) : HalfWay(i - 1, i), behind = i == last ? Beside(i, 1.0) : HalfWay(i, i + 1);
        DrawDifference(pen, {before, HalfWay(i, i), behind}, Ink::Of(colours[i]));
      }
    }
    cairo_restore(pen.Context());
  }

  struct Place {
    double chainage, design, bottom;
  };

  Place HalfWay(std::size_t a, std::size_t b) const {
    const SectionRow &first = m_survey.section.rows[a], &second = m_survey.section.rows[b];
    return {(first.chainage + second.chainage) / 2.0, (first.design + second.design) / 2.0, (first.bottom + second.bottom) / 2.0};
  }

  // Where a row's soundings end that has no neighbour before (-1) or behind it (1): half a step aside, but not off its section.
  Place Beside(std::size_t row, double side) const {
    const std::vector<SectionRow>& rows = m_survey.section.rows;
    const bool endsHere = side < 0.0 ? row == 0 || rows[row].sectionStart : row + 1 == rows.size() || rows[row + 1].sectionStart;
    if (endsHere) return HalfWay(row, row);
    const SectionRow& neighbour = side < 0.0 ? rows[row - 1] : rows[row + 1];
    Place place = HalfWay(row, row);
    place.chainage = (place.chainage + neighbour.chainage) / 2.0;
    place.design = (place.design + neighbour.design) / 2.0;
    return place;
  }

  void DrawDifference(const SheetPen& pen, const std::array<Place, 3>& places, const Ink& ink) const {
    for (const Place& place : places) cairo_line_to(pen.Context(), X(place.chainage), Y(place.bottom));
    for (int i = 2; i >= 0; --i)
      cairo_line_to(pen.Context(), X(places[static_cast<std::size_t>(i)].chainage), Y(places[static_cast<std::size_t>(i)].design));
    cairo_close_path(pen.Context());
    pen.FillPath(ink);
  }

  void DrawLines() {
    MapPen pen(m_surface, m_system, kParts);
    for (const auto& [height, ink, width] :
         {std::tuple{&SectionRow::shoalest, inks::kFaint, kShoalLine}, {&SectionRow::bottom, kBottomInk, kBottomLine}}) {
      pen.Use(ink, width);
      for (const auto& [first, last] : MeasuredRuns(m_survey.section)) pen.Draw(RowPath(first, last, height));
    }
    pen.Use(inks::kOverDepth, kOverDepthLine);
    for (const std::vector<Point>& run : RunsOf(m_survey.design.overDepth.get())) pen.Draw(run);
    pen.Use(inks::kDesign, kDesignLine);
    for (const std::vector<Point>& run : RunsOf(m_survey.design.line.get())) pen.Draw(run);
  }

  // A height along rows, level as far as their soundings reach at both ends.
  std::vector<Point> RowPath(std::size_t first, std::size_t last, double SectionRow::*height) const {
    const std::vector<SectionRow>& rows = m_survey.section.rows;
    std::vector<Point> path = {Point(Beside(first, -1.0).chainage, rows[first].*height, 0.0)};
    for (std::size_t i = first; i <= last; ++i) path.emplace_back(rows[i].chainage, rows[i].*height, 0.0);
    path.emplace_back(Beside(last, 1.0).chainage, rows[last].*height, 0.0);
    return path;
  }

  void Title(const SheetPen& pen) const {
    constexpr TextStyle kTitle{6.0, inks::kText, Face::SerifBold};
    constexpr TextStyle kUnder{3.0, inks::kFaint};
    const std::string title = m_survey.title.title.empty() ? Word("Survey") : Utf8(m_survey.title.title);
    pen.Text(kFrame.left, 19.0, pen.Fit(title + ": " + Word("long section"), kTitle, kColumn.right - kFrame.left), kTitle);
    std::string under;
    for (const std::string& part : {m_survey.title.client, m_survey.title.vessel, m_survey.title.date}) {
      if (!part.empty()) under += (under.empty() ? "" : " \u00B7 ") + Utf8(part);
    }
    pen.Text(kFrame.left, 26.0, pen.Fit(under, kUnder, kColumn.right - kFrame.left), kUnder);
  }

  void DrawAxes(const SheetPen& pen) const {
    constexpr TextStyle kAlong{2.6, inks::kText, Face::Plain, 0.5}, kUp{2.6, inks::kText, Face::Plain, 1.0},
        kHead{2.8, inks::kFaint, Face::Plain, 0.5};
    double step = 0.0;
    for (const AxisMark& mark : AlongMarks(step)) {
      pen.Rule(mark.at, kFrame.top, mark.at, kFrame.top + 1.4, 0.25, inks::kText);
      pen.Text(mark.at, kFrame.top + 4.6, Thousands(mark.value, DecimalsOf(step)), kAlong);
    }
    for (const AxisMark& mark : DepthMarks(step)) {
      pen.Rule(kFrame.left - 1.4, mark.at, kFrame.left, mark.at, 0.25, inks::kText);
      pen.Text(kFrame.left - 2.4, mark.at + 0.36 * kUp.size, Thousands(mark.value, DecimalsOf(step)), kUp);
    }
    const Point middle = kFrame.GetCenter();
    pen.Text(middle.x, kFrame.top + 10.6, Word("Chainage") + ", " + Utf8(m_survey.units.GetUnitMnem(CZelUnitCnv::Distance)), kHead);
    TextStyle upward = kHead;
    upward.angle = -90.0;
    pen.Text(kFrame.left - 13.5, middle.y, pen.Fit(DepthHead(), upward, kFrame.Height()), upward);
    const std::string scales = Word("Along") + " 1 : " + Thousands(m_view.alongScale) + ", " + Word("upward") +
                               " 1 : " + Thousands(m_view.upwardScale) + ", " + Word("vertical exaggeration") + ' ' + Exaggeration();
    pen.Text(kFrame.left, kFrame.top + 18.0, scales, {2.6, inks::kText});
  }

  std::string Exaggeration() const {
    const double exaggeration = m_view.Exaggeration();
    const bool isWhole = std::abs(exaggeration - std::round(exaggeration)) < 0.005 * exaggeration;
    return Thousands(exaggeration, isWhole ? 0 : exaggeration < 10.0 ? 2 : 1) + " \u00D7";
  }

  std::string DepthHead() const {
    const std::string datum = Utf8(m_survey.title.datum);
    return Word("Depth") + ", " + Utf8(m_survey.DepthUnit()) + (datum.empty() ? "" : ' ' + Word("below") + ' ' + datum);
  }

  void DrawColumn(const SheetPen& pen) const {
    double y = kColumn.bottom + 2.0;
    DrawKey(pen, y);
    DrawDifferenceLegend(pen, y);
    DrawVolumes(pen, y);
  }

  void DrawKey(const SheetPen& pen, double& y) const {
    struct Row {
      std::string text;
      Ink ink;
      double width;
    };
    std::vector<Row> rows = {{Word("Design"), inks::kDesign, kDesignLine}};
    if (m_survey.design.overDepth) rows.push_back({Word("Over-depth") + OffsetText(), inks::kOverDepth, kOverDepthLine});
    if (HasBottom()) rows.push_back({Word("Measured bottom, mean"), kBottomInk, kBottomLine});
    if (HasBottom()) rows.push_back({Word("Shoalest sounding"), inks::kFaint, kShoalLine});
    constexpr TextStyle kText{2.6};
    for (const Row& row : rows) {
      pen.Rule(kColumn.left, y - 0.9, kColumn.left + 11.0, y - 0.9, row.width, row.ink);
      pen.Text(kColumn.left + 13.0, y, pen.Fit(row.text, kText, kColumn.Width() - 13.0), kText);
      y += 4.8;
    }
    if (HasBottom() && m_survey.section.corridor > 0.0) {
      const std::string text = Word("Soundings within") + ' ' + Measured(m_survey, CZelUnitCnv::Distance, m_survey.section.corridor, 1) +
                               ' ' + Word("of the line");
      pen.Text(kColumn.left, y, pen.Fit(text, {2.3}, kColumn.Width()), {2.3, inks::kFaint});
      y += 4.8;
    }
    y += 3.4;
  }

  std::string OffsetText() const { return ' ' + Measured(m_survey, CZelUnitCnv::Depth, m_survey.design.offset, 2); }

  bool HasBottom() const { return std::ranges::any_of(m_survey.section.rows, &SectionRow::measured); }

  void DrawDifferenceLegend(const SheetPen& pen, double& y) const {
    if (!HasBottom()) return;
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const SectionRow& row : m_survey.section.rows) {
      if (!row.measured) continue;
      low = std::min(low, row.difference);
      high = std::max(high, row.difference);
    }
    pen.Text(kColumn.left, y, Word("Bottom less design") + ", " + Utf8(m_survey.DepthUnit()), {2.9, inks::kText, Face::Bold});
    LegendForm form;
    form.x = kColumn.left;
    form.y = y + 2.6;
    form.mostHeight = 82.0;
    form.lowestFirst = false;
    form.width = kColumn.Width();
    form.shown = [this](double difference) { return m_survey.ShownDepth(-difference) - m_survey.ShownDepth(0.0); };
    y += 2.6 + DrawLegend(pen, LegendSteps(m_survey.differenceColours, low, high), form) + 7.0;
  }

  void DrawVolumes(const SheetPen& pen, double y) const {
    if (m_survey.volumes.cells == 0) return;
    const std::pair<const char*, double> rows[] = {{"Above the design", m_survey.volumes.above},
                                                   {"Below the design", m_survey.volumes.below},
                                                   {"Below the over-depth", m_survey.volumes.belowOverDepth}};
    pen.Text(kColumn.left, y, Word("Volumes of the whole area"), {2.9, inks::kText, Face::Bold});
    for (const auto& [name, volume] : rows) {
      y += 4.8;
      pen.Text(kColumn.left, y, Word(name), {2.5, inks::kFaint});
      pen.Text(kColumn.right, y, Measured(m_survey, CZelUnitCnv::Volume, volume, 0), {2.6, inks::kText, Face::Plain, 1.0});
    }
  }

  void DrawNotice(const SheetPen& pen) const {
    const Point middle = kFrame.GetCenter();
    const std::string text = Word(m_view.isEmpty ? "The survey has no design line" : "The section is too large to be drawn");
    pen.Text(middle.x, middle.y, text, {6.0, inks::kFaint, Face::Serif, 0.5, 0.0});
  }

  const Survey& m_survey;
  ProfileView m_view;
  CairoSurface& m_surface;
  CoordinateSystem m_system;
};

}  // namespace

bool SaveProfilePng(const Survey& survey, const std::string& path, std::string& reason) {
  CairoSurface surface(CairoFormat::Png, kWidth * kParts, kHeight * kParts, DotsPerInch(kParts));
  if (surface.IsGood()) Profile(survey, surface).Draw();
  return SavePicture(surface, path, reason);
}

}  // namespace zel
