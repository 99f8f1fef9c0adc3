#include "survey/MapPen.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "zelbase/geometry/PolyClipper.h"

namespace zel {
namespace {

unsigned int Byte(double share) { return static_cast<unsigned int>(std::lround(std::clamp(share, 0.0, 1.0) * 255.0)); }

COLORREF ColourOf(const Ink& ink) { return Byte(ink.red) | Byte(ink.green) << 8 | Byte(ink.blue) << 16; }

int WholePixels(double width, int least) { return std::max(static_cast<int>(std::lround(std::clamp(width, 0.0, 1000.0))), least); }

// The rings that a clipper left, as a path of pixels.
void AddPath(cairo_t* context, const PolyClipper& clipper) {
  for (int i = 0; i < clipper.GetOutputSize(); ++i) {
    const Point point = clipper.GetOutputPoint(i);
    if (clipper.GetOutputFlag(i)) cairo_new_sub_path(context);
    cairo_line_to(context, point.x, point.y);
  }
}

}  // namespace

MapPen::MapPen(CairoSurface& surface, const CoordinateSystem& system, int parts) : m_surface(surface), m_system(system), m_parts(parts) {
  m_surface.SetClipRect(m_system.PixelWindow());
  m_surface.SetSmooth(true);
}

MapPen::~MapPen() {
  if (m_former != nullptr) m_surface.SelectObject(m_former);
  if (m_pen != nullptr) m_surface.DeleteObject(m_pen);
  m_surface.ResetClip();
}

void MapPen::Use(const Ink& ink, double width, double rim) {
  const HGDIOBJ pen = m_surface.CreatePen(PS_SOLID, WholePixels(width * m_parts, 1) + 2 * WholePixels(rim * m_parts, 0), ColourOf(ink));
  if (pen == nullptr) return;
  const HGDIOBJ former = m_surface.SelectObject(pen);
  if (m_pen == nullptr) m_former = former;
  else m_surface.DeleteObject(m_pen);
  m_pen = pen;
}

void MapPen::Draw(const std::vector<Point>& path) const {
  for (std::size_t i = 1; i < path.size(); ++i) Draw(Line(path[i - 1], path[i]));
}

void MapPen::DrawRings(const std::vector<std::vector<Point>>& rings) const {
  for (const std::vector<Point>& ring : rings) {
    if (ring.empty()) continue;
    Draw(ring);
    Draw(Line(ring.back(), ring.front()));
  }
}

void MapPen::Fill(const std::vector<std::vector<Point>>& rings, const Ink& ink) const {
  cairo_t* const context = m_surface.Context();
  if (context == nullptr) return;
  const Page& window = m_system.GetPixelWindow();
  cairo_save(context);
  cairo_new_path(context);
  for (const std::vector<Point>& ring : rings) {
    std::vector<Point> pixels(ring.size());
    for (std::size_t i = 0; i < ring.size(); ++i) m_system.WorldToPixel(ring[i], &pixels[i]);
    PolyClipper clipper;
    clipper.SetPage(Page(window.left, window.top, window.right, window.bottom));
    if (clipper.FillPolygon(pixels)) AddPath(context, clipper);
  }
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_set_source_rgba(context, ink.red, ink.green, ink.blue, ink.cover);
  cairo_fill(context);
  cairo_restore(context);
}

void MapPen::Cross(const Point& place, double size) const {
  const double reach = size * m_parts / m_system.scale.x;
  for (const double side : {-1.0, 1.0}) {
    Point arm(reach, side * reach, 0.0);
    m_system.RotatePtoW(arm.x, arm.y);
    Draw(Line(place - arm, place + arm));
  }
}

HGDIOBJ MapPen::MakeFont(double height) const {
  LOGFONT font{};
  font.lfHeight = static_cast<int>(std::lround(height * m_parts));
  font.lfFaceName = "Arial";  // as AnnotateLine writes
  return m_surface.CreateFontIndirect(font);
}

double MapPen::AnnotationWidth(const std::string& text, double height) const {
  const HGDIOBJ font = MakeFont(height);
  const HGDIOBJ former = m_surface.SelectObject(font);
  const CSize size = m_surface.GetTextExtentPoint32A(text);
  m_surface.SelectObject(former);
  m_surface.DeleteObject(font);
  return size.cx / m_parts;
}

void MapPen::Annotate(const Line& line, const std::string& text, double height, const Ink& ink) const {
  const COLORREF former = m_surface.SetTextColor(ColourOf(ink));
  line.AnnotateLine(&m_surface, m_system, m_system.worldWindow, text, static_cast<int>(std::lround(height * m_parts)));
  m_surface.SetTextColor(former);
}

void MapPen::AnnotateWithRim(const Line& line, const std::string& text, double height, const Ink& ink, double metres) const {
  constexpr int kDirections = 8;
  for (int i = 0; i < kDirections; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / kDirections;
    const Point aside(metres * std::sin(angle), metres * std::cos(angle), 0.0);
    Annotate(Line(line.start + aside, line.end + aside), text, height, inks::kPaper);
  }
  Annotate(line, text, height, ink);
}

Point MapPen::OnSheet(const Point& world) const {
  Point pixel;
  m_system.WorldToPixel(world, &pixel);
  return Point((pixel.x + 0.5) / m_parts, (pixel.y + 0.5) / m_parts, 0.0);
}

}  // namespace zel
