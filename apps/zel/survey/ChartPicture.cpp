#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>

#include "OutputFile.h"
#include "adapters/cairo/CairoSurface.h"
#include "survey/ChartDepths.h"
#include "survey/ChartFurniture.h"
#include "survey/ChartGrid.h"
#include "survey/ChartLabels.h"
#include "survey/ChartLayout.h"
#include "survey/ChartOverlay.h"
#include "survey/ChartSoundings.h"
#include "survey/PictureFile.h"
#include "survey/SurveyPictures.h"

namespace zel {
namespace {

// The survey's table; one over its depths when it has none.
ColorTable ColoursOf(const Survey& survey) {
  if (survey.depthColours.NumEntries() > 0 || survey.soundings.empty()) return survey.depthColours;
  constexpr int kColours = 12;
  constexpr COLORREF kShoal = 0x0000FF, kDeep = 0xFF0000;
  ColorTable colours;
  colours.SetRange(survey.depths.minimum, std::max(survey.depths.maximum, survey.depths.minimum + 0.1), kColours, kShoal, kDeep);
  return colours;
}

// Draws an image whose pixels are a millimetre's part each.
void PaintImage(cairo_t* context, const PixelImage& image, double unitsPerPixel) {
  if (image.IsEmpty()) return;
  auto* const bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels.data()));
  cairo_surface_t* const surface =
      cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, image.width, image.height, image.width * 4);
  cairo_save(context);
  cairo_scale(context, unitsPerPixel, unitsPerPixel);
  cairo_set_source_surface(context, surface, image.left, image.top);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
  cairo_paint(context);
  cairo_restore(context);
  cairo_surface_destroy(surface);
}

}  // namespace

struct SurveyChart::Body {
  Body(const Survey& of, const SurveyProgress& progress)
      : survey(of),
        view(ViewOf(of)),
        colours(ColoursOf(of)),
        grid(of, view),
        candidates(sheet::kMap, depths::kCell, depths::kCell),
        soundings(
            ShownSoundings(), view, [this](double x, double y, double z, std::size_t index) { candidates.Offer(x, y, z, index); },
            progress) {}

  const std::vector<Point>& ShownSoundings() const {
    static const std::vector<Point> none;
    return view.IsMap() ? survey.soundings : none;
  }

  void Draw(CairoSurface& surface, int parts) const;
  void DrawMap(CairoSurface& surface, int parts, BoxIndex& taken) const;
  void DrawNotice(const SheetPen& pen) const;
  bool Save(CairoFormat format, const std::string& path, std::string& reason) const;

  const Survey& survey;
  MapView view;
  ColorTable colours;
  ChartGrid grid;
  LabelCandidates candidates;
  ChartSoundings soundings;
};

void SurveyChart::Body::DrawMap(CairoSurface& surface, int parts, BoxIndex& taken) const {
  const bool isPng = surface.Format() == CairoFormat::Png;
  MapPen map(surface, view.System(parts), parts);
  DrawGround(map, survey);
  const PixelImage image = isPng ? soundings.Coarse(colours) : soundings.Fine(colours);
  PaintImage(surface.Context(), image, static_cast<double>(parts) / (isPng ? sheet::kPngParts : sheet::kFineParts));
  DrawOverlay(map, survey, view, grid, taken);
}

void SurveyChart::Body::DrawNotice(const SheetPen& pen) const {
  const Point middle = sheet::kMap.GetCenter();
  const std::string text = Worded(survey, view.isEmpty ? "The survey holds nothing to draw" : "The survey covers too much to be drawn");
  pen.Text(middle.x, middle.y, text, {6.0, inks::kFaint, Face::Serif, 0.5, 0.0});
}

void SurveyChart::Body::Draw(CairoSurface& surface, int parts) const {
  BoxIndex taken(sheet::kMap, 5.0, 5.0);
  {
    const SheetPen pen(surface.Context(), parts);
    DrawSheet(pen);
    const Page& map = sheet::kMap;
    pen.Fill(map.left, map.bottom, map.Width(), map.Height(), view.IsMap() ? inks::kWater : inks::kPaper);
  }
  if (view.IsMap()) DrawMap(surface, parts, taken);
  const SheetPen pen(surface.Context(), parts);
  if (view.IsMap()) DrawDepths(pen, PlaceDepths(pen, survey, candidates.ByShoalest(), sheet::kMap, taken));
  else DrawNotice(pen);
  grid.DrawFrame(pen);
  DrawColumn(pen, survey, view, colours);
}

bool SurveyChart::Body::Save(CairoFormat format, const std::string& path, std::string& reason) const {
  const int parts = format == CairoFormat::Png ? sheet::kPngParts : sheet::kSheetParts;
  CairoSurface surface(format, sheet::kWidth * parts, sheet::kHeight * parts, DotsPerInch(parts));
  if (surface.IsGood()) Draw(surface, parts);
  return SavePicture(surface, path, reason);
}

SurveyChart::SurveyChart(const Survey& survey, const SurveyProgress& progress) : m_body(std::make_unique<Body>(survey, progress)) {}

SurveyChart::~SurveyChart() = default;

bool SurveyChart::SavePng(const std::string& path, std::string& reason) const { return m_body->Save(CairoFormat::Png, path, reason); }
bool SurveyChart::SaveSvg(const std::string& path, std::string& reason) const { return m_body->Save(CairoFormat::Svg, path, reason); }
bool SurveyChart::SavePdf(const std::string& path, std::string& reason) const { return m_body->Save(CairoFormat::Pdf, path, reason); }

}  // namespace zel
