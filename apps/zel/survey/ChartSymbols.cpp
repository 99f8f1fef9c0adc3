#include "survey/ChartSymbols.h"

#include <algorithm>
#include <cmath>

#include "survey/ChartFurniture.h"
#include "survey/ChartSteps.h"

namespace zel {
namespace {

void DrawWorkArea(const SheetPen& pen, double x, double y, double width) {
  pen.Rule(x, y, x + width, y, lines::kWorkArea, inks::kWorkArea);
}

void DrawLand(const SheetPen& pen, double x, double y, double width) {
  pen.Fill(x, y - 1.5, width, 3.0, inks::kLand);
  pen.Box(x, y - 1.5, width, 3.0, lines::kCoast, inks::kCoast);
}

void DrawDesign(const SheetPen& pen, double x, double y, double width) {
  pen.Rule(x, y, x + width, y, lines::kDesign, inks::kDesign);
  for (const double part : {0.15, 0.5, 0.85})
    pen.Rule(x + part * width, y - 1.0, x + part * width, y + 1.0, 0.6 * lines::kDesign, inks::kDesign);
}

void DrawTrack(const SheetPen& pen, double x, double y, double width) {
  cairo_t* const context = pen.Context();
  for (const double part : {0.2, 0.8}) {
    cairo_save(context);
    cairo_translate(context, x + part * width, y);
    cairo_scale(context, 1.7, 1.1);
    cairo_arc(context, 0.0, 0.0, 1.0, 0.0, 6.283185307179586);
    cairo_restore(context);
    pen.Stroke(lines::kEllipse, inks::kTrack);
  }
  pen.Rule(x, y, x + width, y, lines::kTrack, inks::kTrack);
}

void DrawRefused(const SheetPen& pen, double x, double y, double width) {
  const double middle = x + width / 2.0;
  pen.Rule(middle - 1.0, y - 1.0, middle + 1.0, y + 1.0, lines::kRefused, inks::kDesign);
  pen.Rule(middle - 1.0, y + 1.0, middle + 1.0, y - 1.0, lines::kRefused, inks::kDesign);
}

void DrawVessel(const SheetPen& pen, double x, double y, double width) {
  cairo_t* const context = pen.Context();
  cairo_move_to(context, x + 0.15 * width, y - 1.1);
  cairo_line_to(context, x + 0.6 * width, y - 1.1);
  cairo_line_to(context, x + 0.85 * width, y);
  cairo_line_to(context, x + 0.6 * width, y + 1.1);
  cairo_line_to(context, x + 0.15 * width, y + 1.1);
  cairo_close_path(context);
  cairo_set_source_rgb(context, inks::kVessel.red, inks::kVessel.green, inks::kVessel.blue);
  cairo_fill_preserve(context);
  pen.Stroke(lines::kVessel, inks::kText);
}

void DrawDrying(const SheetPen& pen, double x, double y, double width) {
  const double middle = x + width / 2.0;
  pen.Text(middle, y + 0.8, "1", {2.4, inks::kText, Face::Plain, 0.5, 0.0});
  pen.Rule(middle - 0.8, y + 1.3, middle + 0.8, y + 1.3, 0.2, inks::kText);
}

std::string TrackText(const Survey& survey, const MapView& view) {
  const double enlargement = EllipseEnlargement(survey.track, view);
  const std::string text = Worded(survey, "Filtered track, error ellipses of three sigma");
  return enlargement > 1.0 ? text + " \u00D7 " + Thousands(enlargement) : text;
}

}  // namespace

double EllipseEnlargement(const SurveyTrack& track, const MapView& view) {
  constexpr double kSeen = 1.4;  // millimetres; no larger than that
  constexpr double kMost = 1000.0;
  std::vector<double> sizes;
  for (const TrackPlace& place : track.places) {
    if (place.isFix && !place.refused && place.semiMajor > 0.0)
      sizes.push_back(kEllipseSigmas * place.semiMajor / view.MetresPerMillimetre());
  }
  if (sizes.empty()) return 1.0;
  const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
  std::ranges::nth_element(sizes, middle);
  return std::clamp(NiceLength(kSeen / *middle), 1.0, kMost);
}

std::vector<ChartSymbol> SymbolsOf(const Survey& survey, const MapView& view) {
  const auto word = [&survey](const std::string& english) { return Worded(survey, english); };
  std::vector<ChartSymbol> symbols;
  if (!survey.workArea.empty()) symbols.push_back({word("Limit of the work area"), DrawWorkArea});
  if (survey.design.IsGiven()) symbols.push_back({word("Design line with chainage"), DrawDesign});
  if (!survey.track.places.empty()) symbols.push_back({TrackText(survey, view), DrawTrack});
  if (survey.track.refused > 0) symbols.push_back({word("Refused fix"), DrawRefused});
  if (survey.vessel.known) symbols.push_back({word("Vessel at her last position"), DrawVessel});
  if (!survey.land.empty()) symbols.push_back({word("Land"), DrawLand});
  const bool dries = survey.depths.count > 0 && survey.depths.minimum < 0.0;
  if (dries) symbols.push_back({word("Dries, height above the datum"), DrawDrying});
  return symbols;
}

}  // namespace zel
