#include "survey/ChartFurniture.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "TextEdge.h"
#include "survey/ChartLegend.h"
#include "survey/ChartSteps.h"
#include "survey/ChartSymbols.h"

namespace zel {
namespace {

constexpr Page kColumn = sheet::kColumn;
constexpr double kColumnWidth = kColumn.right - kColumn.left;
constexpr double kLabelWidth = 24.0;  // of the particulars' names

std::string Utf8(const std::string& text) { return ToTerminal(text, Encoding::Windows1252); }

std::string Count(long long count) { return Thousands(static_cast<double>(count)); }

// Fills the column from the top down.
class Column {
 public:
  Column(const SheetPen& pen, const Survey& survey, const MapView& view, const ColorTable& colours)
      : m_pen(pen), m_survey(survey), m_view(view), m_colours(colours) {}

  void Draw() {
    Title();
    Particulars();
    Scale();
    const std::vector<ChartSymbol> symbols = SymbolsOf(m_survey, m_view);
    const double keyHeight = symbols.empty() ? 0.0 : kHeadHeight + kKeyRow * static_cast<double>(symbols.size()) + 3.0;
    Legend(kColumn.top - kFootHeight - keyHeight);
    Key(symbols);
    Foot();
  }

 private:
  static constexpr double kHeadHeight = 6.0, kKeyRow = 6.2, kFootHeight = 7.0;

  std::string Word(const std::string& english) const { return Worded(m_survey, english); }

  void Divide() {
    m_pen.Rule(kColumn.left, m_y, kColumn.right, m_y, 0.2, inks::kRule);
    m_y += 5.4;
  }

  void Title() {
    constexpr TextStyle kTitle{6.0, inks::kText, Face::SerifBold};
    constexpr TextStyle kClient{3.4, inks::kText, Face::Serif};
    m_y = kColumn.bottom + 6.0;
    const std::string title = m_survey.title.title.empty() ? Word("Survey chart") : Utf8(m_survey.title.title);
    for (const std::string& line : m_pen.Wrap(title, kTitle, kColumnWidth, 3)) {
      m_pen.Text(kColumn.left, m_y, line, kTitle);
      m_y += 7.4;
    }
    for (const std::string& line : m_pen.Wrap(Utf8(m_survey.title.client), kClient, kColumnWidth, 2)) {
      m_pen.Text(kColumn.left, m_y, line, kClient);
      m_y += 4.6;
    }
    m_y -= 1.2;
    Divide();
  }

  void Particular(const std::string& name, const std::string& value) {
    constexpr TextStyle kName{2.8, inks::kFaint};
    constexpr TextStyle kValue{2.9};
    if (value.empty()) return;
    m_pen.Text(kColumn.left, m_y, m_pen.Fit(Word(name), kName, kLabelWidth - 1.0), kName);
    for (const std::string& line : m_pen.Wrap(value, kValue, kColumnWidth - kLabelWidth, 2)) {
      m_pen.Text(kColumn.left + kLabelWidth, m_y, line, kValue);
      m_y += 4.7;
    }
  }

  void Particulars() {
    const SurveyTitle& title = m_survey.title;
    Particular("Vessel", Utf8(title.vessel));
    Particular("Date", Utf8(title.date));
    Particular("Soundings", Count(static_cast<long long>(m_survey.soundings.size())));
    Particular("Left out", LeftOut());
    if (m_survey.counts.keptUnreduced > 0) Particular("Unreduced", Count(m_survey.counts.keptUnreduced) + ' ' + Word("without tide"));
    Particular("Depths", Depths());
    Particular("Datum", Utf8(title.datum));
    if (m_survey.areaCovered > 0.0) Particular("Area covered", Measured(m_survey, CZelUnitCnv::Area, m_survey.areaCovered, 0));
    Particular("Grid", GridText());
    m_y -= 1.0;
    Divide();
  }

  std::string LeftOut() const {
    const SurveyCounts& counts = m_survey.counts;
    const std::pair<long long, const char*> reasons[] = {
        {counts.outside, "outside the work area"},
        {counts.withoutTide - counts.keptUnreduced, "without tide"},
        {counts.rejectedBeams, counts.rejectedBeams == 1 ? "rejected beam" : "rejected beams"}};
    std::string text;
    for (const auto& [count, reason] : reasons) {
      if (count > 0) text += (text.empty() ? "" : ", ") + Count(count) + ' ' + Word(reason);
    }
    return text;
  }

  std::string Depths() const {
    if (m_survey.depths.count == 0) return "";
    const auto shown = [this](double depth) { return Utf8(m_survey.DepthText(-depth)); };
    return shown(m_survey.depths.minimum) + " \u2013 " + shown(m_survey.depths.maximum) + ' ' + Utf8(m_survey.DepthUnit()) + ", " +
           Word("mean") + ' ' + shown(m_survey.depths.mean);
  }

  std::string GridText() const { return m_view.IsMap() ? Utf8(m_survey.coordinates.projection.Name()) : ""; }

  void Scale() {
    if (!m_view.IsMap()) return;
    constexpr double kArrow = 20.0;
    constexpr TextStyle kScale{4.6, inks::kText, Face::SerifBold};
    constexpr TextStyle kNote{2.5, inks::kFaint};
    const double top = m_y - 3.0;
    m_pen.Text(kColumn.left, m_y, Word("Scale") + " 1 : " + Thousands(m_view.scale), kScale);
    m_pen.Text(kColumn.left, m_y + 4.2, Word("on a sheet of A3 size"), kNote);
    DrawBar(m_y + 9.0);
    DrawNorthArrow(m_pen, kColumn.right - kArrow / 2.0 - 0.5, top + kArrow / 2.0, kArrow, m_view.rotation);
    m_y = top + kArrow + 5.0;
    if (m_view.rotation != 0.0) {
      const double up = m_view.rotation < 0.0 ? m_view.rotation + 360.0 : m_view.rotation;
      m_pen.Text(kColumn.left, m_y - 2.2, Word("Map turned: up is") + ' ' + Thousands(up, 1) + "\u00B0", kNote);
    }
    m_y += 1.0;
    Divide();
  }

  void DrawBar(double y) {
    constexpr double kMost = 46.0, kHeight = 1.6;
    constexpr TextStyle kNumber{2.4, inks::kText, Face::Plain, 0.5};
    const ScaleBar bar = ScaleBarFor(m_survey, m_view, kMost);
    const double part = bar.paper / bar.parts, left = kColumn.left + 1.0;
    for (int i = 0; i < bar.parts; ++i) {
      if (i % 2 == 0) m_pen.Fill(left + i * part, y, part, kHeight, inks::kText);
    }
    m_pen.Box(left, y, bar.paper, kHeight, 0.2, inks::kText);
    const int decimals = DecimalsOf(bar.length / bar.parts);
    const std::string last = Thousands(bar.length, DecimalsOf(bar.length)) + ' ' + bar.unit;
    double taken = left - 10.0;
    for (int i = 0; i <= bar.parts; ++i) {
      const std::string text = i == bar.parts ? last : Thousands(bar.length * i / bar.parts, i == 0 ? 0 : decimals);
      const double half = m_pen.Width(text, kNumber) / 2.0, at = left + i * part;
      const double free = i == bar.parts ? at + 1.0 : left + bar.paper - m_pen.Width(last, kNumber) / 2.0 - 1.5;
      if (at - half < taken + 1.5 || (i < bar.parts && at + half > free)) continue;
      m_pen.Text(at, y + kHeight + 3.2, text, kNumber);
      taken = at + half;
    }
  }

  void Head(const std::string& text) {
    constexpr TextStyle kHead{3.1, inks::kText, Face::Bold};
    m_pen.Text(kColumn.left, m_y, m_pen.Fit(text, kHead, kColumnWidth), kHead);
    m_y += kHeadHeight - 3.0;
  }

  void Legend(double bottom) {
    if (m_survey.soundings.empty()) return;
    constexpr double kLeast = 12.0;
    Head(Word("Depth") + ", " + Utf8(m_survey.DepthUnit()) +
         (m_survey.title.datum.empty() ? "" : ' ' + Word("below") + ' ' + Utf8(m_survey.title.datum)));
    LegendForm form;
    form.x = kColumn.left;
    form.y = m_y;
    form.mostHeight = std::max(bottom - m_y - 8.0, kLeast);
    form.width = kColumnWidth;
    form.shown = [this](double depth) { return m_survey.ShownDepth(-depth); };
    m_y += DrawLegend(m_pen, LegendSteps(m_colours, m_survey.depths.minimum, m_survey.depths.maximum), form) + 4.0;
    Divide();
  }

  void Key(const std::vector<ChartSymbol>& symbols) {
    constexpr double kSymbolWidth = 13.0;
    constexpr TextStyle kText{2.8};
    for (const ChartSymbol& symbol : symbols) {
      symbol.draw(m_pen, kColumn.left + 0.5, m_y - 1.0, kSymbolWidth - 2.0);
      m_pen.Text(kColumn.left + kSymbolWidth + 1.5, m_y, m_pen.Fit(symbol.text, kText, kColumnWidth - kSymbolWidth - 1.5), kText);
      m_y += kKeyRow;
    }
  }

  void Foot() {
    constexpr TextStyle kFoot{2.1, inks::kFaint};
    m_pen.Text(kColumn.left, kColumn.top, Word("Drawn by") + " zel " ZEL_VERSION, kFoot);
  }

  const SheetPen& m_pen;
  const Survey& m_survey;
  const MapView& m_view;
  const ColorTable& m_colours;
  double m_y = 0.0;
};

void ArrowHalf(const SheetPen& pen, double size, double side, const Ink& ink) {
  cairo_t* const context = pen.Context();
  cairo_move_to(context, 0.0, -0.36 * size);
  cairo_line_to(context, side * 0.13 * size, 0.42 * size);
  cairo_line_to(context, 0.0, 0.28 * size);
  cairo_close_path(context);
  cairo_set_source_rgba(context, ink.red, ink.green, ink.blue, ink.cover);
  cairo_fill_preserve(context);
  pen.Stroke(0.2, inks::kText);
}

}  // namespace

std::string Worded(const Survey& survey, const std::string& english) { return Utf8(survey.Word(english)); }

std::string Measured(const Survey& survey, int kind, double value, int decimals) {
  return Thousands(survey.units.ConvertUnit(kind, value), decimals) + ' ' + Utf8(survey.units.GetUnitMnem(kind));
}

ScaleBar ScaleBarFor(const Survey& survey, const MapView& view, double most) {
  const double perUnit =
      survey.units.ConvertFromUnit(CZelUnitCnv::Distance, 1.0) - survey.units.ConvertFromUnit(CZelUnitCnv::Distance, 0.0);
  const bool isUsable = std::isfinite(perUnit) && perUnit > 0.0;
  double metres = isUsable ? perUnit : 1.0;
  ScaleBar bar;
  bar.unit = isUsable ? Utf8(survey.units.GetUnitMnem(CZelUnitCnv::Distance)) : "m";
  constexpr double kManyMetres = 2000.0;
  if (metres == 1.0 && most * view.MetresPerMillimetre() >= kManyMetres) {
    metres = 1000.0;
    bar.unit = "km";
  }
  bar.length = NiceLength(most * view.MetresPerMillimetre() / metres);
  bar.metres = bar.length * metres;
  bar.paper = bar.metres / view.MetresPerMillimetre();
  const double leading = bar.length / std::pow(10.0, std::floor(std::log10(bar.length * 1.000001)));
  bar.parts = std::lround(leading) == 2 ? 4 : 5;
  return bar;
}

void DrawNorthArrow(const SheetPen& pen, double x, double y, double size, double rotation) {
  cairo_t* const context = pen.Context();
  cairo_save(context);
  cairo_translate(context, x, y);
  cairo_rotate(context, -rotation * 0.017453292519943295);
  ArrowHalf(pen, size, -1.0, inks::kText);
  ArrowHalf(pen, size, 1.0, inks::kPaper);
  pen.Text(0.0, -0.36 * size - 0.6, "N", {0.2 * size, inks::kText, Face::SerifBold, 0.5, 0.0});
  cairo_restore(context);
}

void DrawColumn(const SheetPen& pen, const Survey& survey, const MapView& view, const ColorTable& colours) {
  Column(pen, survey, view, colours).Draw();
}

void DrawSheet(const SheetPen& pen) {
  pen.Fill(0.0, 0.0, sheet::kWidth, sheet::kHeight, inks::kPaper);
  pen.Box(sheet::kBorder, sheet::kBorder, sheet::kWidth - 2 * sheet::kBorder, sheet::kHeight - 2 * sheet::kBorder, 0.5, inks::kText);
}

}  // namespace zel
