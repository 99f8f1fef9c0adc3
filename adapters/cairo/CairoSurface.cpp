#include "adapters/cairo/CairoSurface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <utility>

#include "adapters/cairo/detail/DotStamp.h"
#include "adapters/cairo/detail/PixelCanvas.h"
#include "adapters/cairo/detail/StrokePath.h"
#include "adapters/cairo/detail/SurfaceObjects.h"
#include "adapters/cairo/detail/SurfacePaper.h"
#include "adapters/cairo/detail/SurfaceText.h"
#include "adapters/cairo/detail/ThickLine.h"

using zelbase::detail::CairoContextPtr;
using zelbase::detail::CairoSurfacePtr;
using zelbase::detail::DashPattern;
using zelbase::detail::DotStamp;
using zelbase::detail::EllipseRows;
using zelbase::detail::kColourBits;
using zelbase::detail::kFarthest;
using zelbase::detail::PixelCanvas;
using zelbase::detail::PixelInk;
using zelbase::detail::SaturatedAdd;
using zelbase::detail::SaturatedSubtract;
using zelbase::detail::StrokePath;
using zelbase::detail::SurfaceBrush;
using zelbase::detail::SurfaceObjects;
using zelbase::detail::SurfacePaper;
using zelbase::detail::TextBox;
using zelbase::detail::ThickLine;

namespace {

constexpr COLORREF kNoColour = 0xFFFFFFFF;
constexpr int kWidestPen = 32767;
constexpr std::size_t kLongestText = 8192;
constexpr unsigned kVerticalAlign = TA_BOTTOM | TA_BASELINE;
constexpr unsigned kHorizontalAlign = TA_RIGHT | TA_CENTER;
constexpr double kLeastSize = 0.01;  // what Cairo strokes with proper corners
constexpr double kDegree = std::numbers::pi / 180;

CRect InOrder(int x1, int y1, int x2, int y2) {
  CRect rect(x1, y1, x2, y2);
  rect.NormalizeRect();
  return rect;
}

bool IsNear(int coordinate) { return coordinate >= -kFarthest && coordinate <= kFarthest; }
bool IsNear(const CRect& rect) { return IsNear(rect.left) && IsNear(rect.top) && IsNear(rect.right) && IsNear(rect.bottom); }

// Moves edges that are too far away for Cairo; they stay out of sight.
CRect Near(const CRect& rect) {
  const auto move = [](int coordinate) { return std::clamp(coordinate, -kFarthest, kFarthest); };
  return CRect(move(rect.left), move(rect.top), move(rect.right), move(rect.bottom));
}

void SetSource(cairo_t* context, COLORREF color) {
  const auto part = [color](unsigned shift) { return (color >> shift & 0xFFu) / 255.0; };
  cairo_set_source_rgb(context, part(0), part(8), part(16));
}

void AddRectangle(cairo_t* context, const CRect& rect) { cairo_rectangle(context, rect.left, rect.top, rect.Width(), rect.Height()); }

int WidthOf(const LOGPEN& pen) { return std::max(pen.lopnWidth.x, 1); }

// Runs of a pen with gaps, painted first; the same as DashPattern's.
std::span<const double> RunsOf(unsigned style) {
  static constexpr std::array<double, 2> kDash = {18, 6};
  static constexpr std::array<double, 2> kDot = {3, 3};
  static constexpr std::array<double, 4> kDashDot = {9, 6, 3, 6};
  static constexpr std::array<double, 6> kDashDotDot = {9, 3, 3, 3, 3, 3};
  switch (style) {
    case PS_DASH: return kDash;
    case PS_DOT: return kDot;
    case PS_DASHDOT: return kDashDot;
    case PS_DASHDOTDOT: return kDashDotDot;
    default: return {};
  }
}

// All that a stroke depends on, but for colour and path. The end of a line of one pixel is the edge of its pixel.
void UsePen(cairo_t* context, const LOGPEN& pen) {
  const int width = WidthOf(pen);
  const cairo_line_cap_t cap = width == 1 ? CAIRO_LINE_CAP_SQUARE : CAIRO_LINE_CAP_ROUND;
  const std::span<const double> runs = RunsOf(pen.lopnStyle);
  std::array<double, 6> scaled = {};
  std::transform(runs.begin(), runs.end(), scaled.begin(), [width](double run) { return run * width; });
  cairo_set_dash(context, scaled.data(), static_cast<int>(runs.size()), 0);
  cairo_set_line_width(context, width);
  cairo_set_line_cap(context, runs.empty() ? cap : CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(context, width == 1 ? CAIRO_LINE_JOIN_BEVEL : CAIRO_LINE_JOIN_ROUND);
}

}  // namespace

struct CairoSurface::Body {
  Body(CairoFormat wanted, int across, int down, int dotsPerInch)
      : paper(wanted, across, down, dotsPerInch), format(wanted), width(across), height(down), dots(dotsPerInch) {}

  bool IsSmooth() const { return (isSmooth && rop2 == R2_COPYPEN) || !paper.IsImage(); }

  // Whether outlines of the pen are pixels of the canvas's.
  bool IsThin() const { return !IsSmooth() && WidthOf(objects.Pen()) == 1; }

  cairo_t* Context();
  PixelCanvas& Pixels();
  void FlushStrokes();
  void GatherStroke(const CPoint& from, const CPoint& to);
  void FlipStroke(const CPoint& from, const CPoint& to);
  void PreparePaint(cairo_t* context) const;

  template <class AddPath>
  bool PaintShape(AddPath addPath);
  template <class AddPath>
  void FlipShape(AddPath addPath);
  void FlipMask(cairo_surface_t* mask, COLORREF color);

  void OutlineRect(const CRect& rect);
  COLORREF PaintPixel(int x, int y, COLORREF color);
  void PaintSheetSquares(std::span<const CPoint> points, std::span<const COLORREF> colors, int radius);

  TextBox UseFont(cairo_t* context, const std::string& text) const;

  SurfacePaper paper;
  SurfaceObjects objects;
  StrokePath strokes;
  DashPattern dash;
  const CairoFormat format;
  const int width;
  const int height;
  const int dots;
  CPoint position;
  int rop2 = R2_COPYPEN;
  unsigned align = TA_LEFT | TA_TOP;
  int bkMode = OPAQUE;
  COLORREF bkColor = 0xFFFFFF;
  COLORREF textColor = 0;
  bool isSmooth = false;
};

cairo_t* CairoSurface::Body::Context() {
  FlushStrokes();
  return paper.Context();
}

PixelCanvas& CairoSurface::Body::Pixels() {
  if (!strokes.IsEmpty()) FlushStrokes();
  return paper.Pixels();
}

void CairoSurface::Body::PreparePaint(cairo_t* context) const {
  cairo_set_operator(context, CAIRO_OPERATOR_OVER);
  cairo_set_antialias(context, IsSmooth() ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
}

void CairoSurface::Body::FlushStrokes() {
  if (strokes.IsEmpty()) return;
  cairo_t* const context = paper.Context();
  if (context == nullptr) return;
  strokes.Finish(context);
  PreparePaint(context);
  SetSource(context, objects.Pen().lopnColor);
  UsePen(context, objects.Pen());
  cairo_stroke(context);
}

void CairoSurface::Body::GatherStroke(const CPoint& from, const CPoint& to) {
  // One path of many lines makes a sheet small. On an image it takes longer than many paths.
  if (paper.IsImage() && !strokes.GoesOnFrom(from)) FlushStrokes();
  cairo_t* const context = paper.Context();
  if (context == nullptr) return;
  if (strokes.IsEmpty()) cairo_new_path(context);
  strokes.SetWidth(WidthOf(objects.Pen()));
  strokes.Add(context, from, to);
  if (strokes.IsLong()) FlushStrokes();
}

// Turns over, in the raster mode, what the mask covers.
void CairoSurface::Body::FlipMask(cairo_surface_t* mask, COLORREF color) {
  cairo_surface_flush(mask);
  const unsigned char* const bits = cairo_image_surface_get_data(mask);
  if (bits == nullptr) return;
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(mask);
  const PixelInk ink = PixelInk::Make(color, rop2);
  const PixelCanvas& canvas = paper.Pixels();
  const CRect& clip = canvas.Clip();
  for (int y = clip.top; y < clip.bottom; ++y) {
    for (int x = clip.left; x < clip.right; ++x) {
      if (bits[y * stride + x] != 0) ink.Paint(canvas.At(x, y));
    }
  }
}

// Outline and inside of a path each on its own, so that no pixel is turned over twice.
template <class AddPath>
void CairoSurface::Body::FlipShape(AddPath addPath) {
  const CairoSurfacePtr mask(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height), cairo_surface_destroy);
  const CairoContextPtr context(cairo_create(mask.get()), cairo_destroy);
  cairo_set_antialias(context.get(), CAIRO_ANTIALIAS_NONE);
  UsePen(context.get(), objects.Pen());
  addPath(context.get());
  const bool hasOutline = objects.Pen().lopnStyle != PS_NULL;
  if (!objects.Brush().isHollow) {
    cairo_fill_preserve(context.get());
    cairo_set_operator(context.get(), CAIRO_OPERATOR_CLEAR);
    if (hasOutline) cairo_stroke_preserve(context.get());
    FlipMask(mask.get(), objects.Brush().color);
    cairo_surface_mark_dirty(mask.get());
    cairo_paint(context.get());
    cairo_set_operator(context.get(), CAIRO_OPERATOR_OVER);
  }
  if (!hasOutline) return;
  cairo_stroke(context.get());
  FlipMask(mask.get(), objects.Pen().lopnColor);
}

void CairoSurface::Body::FlipStroke(const CPoint& from, const CPoint& to) {
  const CairoSurfacePtr mask(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height), cairo_surface_destroy);
  const CairoContextPtr context(cairo_create(mask.get()), cairo_destroy);
  cairo_set_antialias(context.get(), CAIRO_ANTIALIAS_NONE);
  UsePen(context.get(), objects.Pen());
  StrokePath line;
  line.SetWidth(WidthOf(objects.Pen()));
  line.Add(context.get(), from, to);
  line.Finish(context.get());
  cairo_stroke(context.get());
  FlipMask(mask.get(), objects.Pen().lopnColor);
}

// Fills and outlines a path by Cairo.
template <class AddPath>
bool CairoSurface::Body::PaintShape(AddPath addPath) {
  cairo_t* const context = Context();
  if (context == nullptr) return false;
  if (paper.IsImage() && rop2 != R2_COPYPEN) {
    FlipShape(addPath);
    return true;
  }
  cairo_new_path(context);
  addPath(context);
  PreparePaint(context);
  if (!objects.Brush().isHollow) {
    SetSource(context, objects.Brush().color);
    cairo_fill_preserve(context);
  }
  if (objects.Pen().lopnStyle != PS_NULL) {
    SetSource(context, objects.Pen().lopnColor);
    UsePen(context, objects.Pen());
    cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
    cairo_stroke_preserve(context);
  }
  cairo_new_path(context);
  return true;
}

// The thin outline of a rectangle, each pixel once.
void CairoSurface::Body::OutlineRect(const CRect& rect) {
  const PixelCanvas& canvas = Pixels();
  const PixelInk ink = PixelInk::Make(objects.Pen().lopnColor, rop2);
  const int right = rect.right - 1;
  const int bottom = rect.bottom - 1;
  if (rect.left == right || rect.top == bottom) {
    canvas.FillRect(rect, ink);
    return;
  }
  DashPattern gaps = DashPattern::Make(objects.Pen().lopnStyle);
  canvas.Line(CPoint(rect.left, rect.top), CPoint(right, rect.top), ink, gaps);
  canvas.Line(CPoint(right, rect.top), CPoint(right, bottom), ink, gaps);
  canvas.Line(CPoint(right, bottom), CPoint(rect.left, bottom), ink, gaps);
  canvas.Line(CPoint(rect.left, bottom), CPoint(rect.left, rect.top), ink, gaps);
}

COLORREF CairoSurface::Body::PaintPixel(int x, int y, COLORREF color) {
  const PixelCanvas& canvas = Pixels();
  if (!canvas.IsInside(x, y)) return kNoColour;
  std::uint32_t& pixel = canvas.At(x, y);
  PixelInk::Make(color, rop2).Paint(pixel);
  return zelbase::detail::ToColour(pixel);
}

// Squares of a unit, or circles about their middles: those of one colour that follow each other in one area.
void CairoSurface::Body::PaintSheetSquares(std::span<const CPoint> points, std::span<const COLORREF> colors, int radius) {
  cairo_t* const context = Context();
  if (context == nullptr) return;
  PreparePaint(context);
  cairo_new_path(context);
  constexpr std::size_t kMostInOne = 256;
  std::size_t gathered = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const COLORREF color = colors[colors.size() == 1 ? 0 : i];
    const CPoint& point = points[i];
    if (IsNear(point.x) && IsNear(point.y)) {
      cairo_new_sub_path(context);
      if (radius > 0) {
        cairo_arc(context, point.x + 0.5, point.y + 0.5, radius + 0.5, 0, 2 * std::numbers::pi);
      } else {
        cairo_rectangle(context, point.x, point.y, 1, 1);
      }
      ++gathered;
    }
    const bool goesOn = i + 1 < points.size() && (colors.size() == 1 || colors[i + 1] == color) && gathered < kMostInOne;
    if (goesOn) continue;
    SetSource(context, color);
    cairo_fill(context);
    gathered = 0;
  }
}

// Puts the selected font on the context and measures a text in it.
TextBox CairoSurface::Body::UseFont(cairo_t* context, const std::string& text) const {
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, IsSmooth() ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
  cairo_font_options_set_hint_style(options, paper.IsImage() ? CAIRO_HINT_STYLE_DEFAULT : CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, paper.IsImage() ? CAIRO_HINT_METRICS_ON : CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(context, options);
  cairo_font_options_destroy(options);
  zelbase::detail::UseFont(context, objects.Font(), dots);
  return zelbase::detail::MeasureText(context, text);
}

CairoSurface::CairoSurface(CairoFormat format, int width, int height, int dotsPerInch)
    : m_body(std::make_unique<Body>(format, width, height, dotsPerInch)) {}

CairoSurface::~CairoSurface() = default;

bool CairoSurface::IsGood() const { return m_body->paper.IsGood(); }
CairoFormat CairoSurface::Format() const { return m_body->format; }
int CairoSurface::Width() const { return m_body->width; }
int CairoSurface::Height() const { return m_body->height; }

bool CairoSurface::Save(const std::function<bool(std::string_view)>& write) {
  m_body->FlushStrokes();
  return m_body->paper.Save(write);
}

cairo_t* CairoSurface::Context() { return m_body->Context(); }

COLORREF CairoSurface::GetPixel(int x, int y) {
  const PixelCanvas& canvas = m_body->Pixels();
  const bool isImage = m_body->paper.IsImage() && IsGood();
  const bool isInside = x >= 0 && x < m_body->width && y >= 0 && y < m_body->height;
  return isImage && isInside ? zelbase::detail::ToColour(canvas.At(x, y)) : kNoColour;
}

bool CairoSurface::SetSmooth(bool smooth) {
  m_body->FlushStrokes();
  return std::exchange(m_body->isSmooth, smooth);
}

void CairoSurface::SetClipRect(const CRect& rect) {
  m_body->FlushStrokes();
  m_body->paper.SetClip(rect);
}

void CairoSurface::ResetClip() { SetClipRect(CRect(0, 0, m_body->width, m_body->height)); }

int CairoSurface::SetROP2(int rop2) {
  if (rop2 != R2_NOT && rop2 != R2_XORPEN && rop2 != R2_COPYPEN) return m_body->rop2;
  m_body->FlushStrokes();
  return std::exchange(m_body->rop2, rop2);
}

COLORREF CairoSurface::SetTextColor(COLORREF color) { return std::exchange(m_body->textColor, color & kColourBits); }

HGDIOBJ CairoSurface::CreatePen(unsigned style, int width, COLORREF color) {
  if (style > PS_NULL) return nullptr;
  LOGPEN pen;
  pen.lopnStyle = style;
  pen.lopnWidth.x = std::clamp(width, 0, kWidestPen);
  pen.lopnColor = color & kColourBits;
  return m_body->objects.Add(pen);
}

void CairoSurface::SetPixels(std::span<const CPoint> points, std::span<const COLORREF> colors) {
  if (colors.size() != 1) points = points.first(std::min(points.size(), colors.size()));
  if (points.empty()) return;
  if (!m_body->paper.IsImage()) {
    m_body->PaintSheetSquares(points, colors, 0);
    return;
  }
  const PixelCanvas& canvas = m_body->Pixels();
  const std::size_t step = colors.size() == 1 ? 0 : 1;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (canvas.IsInside(points[i].x, points[i].y)) {
      PixelInk::Make(colors[i * step], m_body->rop2).Paint(canvas.At(points[i].x, points[i].y));
    }
  }
}

void CairoSurface::FillDots(std::span<const CPoint> points, std::span<const COLORREF> colors, int radius) {
  if (colors.size() != 1) points = points.first(std::min(points.size(), colors.size()));
  if (points.empty() || radius < 0) return;
  if (!m_body->paper.IsImage()) {
    m_body->PaintSheetSquares(points, colors, std::min(radius, kFarthest));
    return;
  }
  const PixelCanvas& canvas = m_body->Pixels();
  const std::size_t step = colors.size() == 1 ? 0 : 1;
  const std::optional<DotStamp> stamp = radius <= DotStamp::kLargest ? std::optional<DotStamp>(radius) : std::nullopt;
  const bool isSmooth = m_body->IsSmooth();
  for (std::size_t i = 0; i < points.size(); ++i) {
    const COLORREF color = colors[i * step];
    const CPoint& at = points[i];
    const PixelInk ink = PixelInk::Make(color, m_body->rop2);
    if (!stamp) {
      const int reach = SaturatedAdd(radius, 1);
      const CRect box(SaturatedSubtract(at.x, radius), SaturatedSubtract(at.y, radius), SaturatedAdd(at.x, reach),
                      SaturatedAdd(at.y, reach));
      canvas.Ellipse(EllipseRows(box), &ink, &ink);
    } else if (isSmooth) {
      stamp->PaintSmooth(canvas, at.x, at.y, zelbase::detail::ToPixel(color));
    } else {
      stamp->Paint(canvas, at.x, at.y, ink);
    }
  }
}

CPoint CairoSurface::MoveTo(int x, int y) {
  m_body->dash.phase = 0;
  return std::exchange(m_body->position, CPoint(x, y));
}

bool CairoSurface::LineTo(int x, int y) {
  Body& body = *m_body;
  const CPoint to(x, y);
  const CPoint from = std::exchange(body.position, to);
  const LOGPEN& pen = body.objects.Pen();
  if (!IsGood()) return false;
  if (from == to || pen.lopnStyle == PS_NULL) return true;
  if (body.IsThin()) {
    body.dash.bits = DashPattern::Make(pen.lopnStyle).bits;
    body.Pixels().Line(from, to, PixelInk::Make(pen.lopnColor, body.rop2), body.dash);
  } else if (!body.IsSmooth() && pen.lopnStyle == PS_SOLID) {
    body.Pixels().Line(ThickLine(from, to, WidthOf(pen)), PixelInk::Make(pen.lopnColor, body.rop2));
  } else if (body.paper.IsImage() && body.rop2 != R2_COPYPEN) {
    body.FlipStroke(from, to);
  } else {
    body.GatherStroke(from, to);
  }
  return true;
}

COLORREF CairoSurface::SetPixel(int x, int y, COLORREF color) {
  Body& body = *m_body;
  color &= kColourBits;
  // The end of a line in work is painted with it.
  if (body.objects.Pen().lopnColor == color && body.paper.Clip().PtInRect(CPoint(x, y)) && body.strokes.CompleteAt(CPoint(x, y))) {
    return color;
  }
  if (body.paper.IsImage()) return body.PaintPixel(x, y, color);
  if (!body.paper.Clip().PtInRect(CPoint(x, y)) || !IsGood()) return kNoColour;
  const CPoint point(x, y);
  body.PaintSheetSquares({&point, 1}, {&color, 1}, 0);
  return color;
}

bool CairoSurface::Rectangle(int x1, int y1, int x2, int y2) {
  Body& body = *m_body;
  if (!IsGood()) return false;
  const CRect rect = InOrder(x1, y1, x2, y2);
  if (rect.IsRectEmpty()) return true;
  const bool hasPen = body.objects.Pen().lopnStyle != PS_NULL;
  const SurfaceBrush& brush = body.objects.Brush();
  if (body.paper.IsImage() && (!hasPen || WidthOf(body.objects.Pen()) == 1)) {
    CRect inside = rect;
    if (hasPen) inside.InflateRect(-1, -1);
    if (!brush.isHollow) body.Pixels().FillRect(inside, PixelInk::Make(brush.color, body.rop2));
    if (hasPen) body.OutlineRect(rect);
    return true;
  }
  // The pen's middle, which lies half a pixel inside for an odd width.
  const double inset = hasPen && WidthOf(body.objects.Pen()) % 2 != 0 ? 0.5 : 0.0;
  const CRect near = Near(rect);
  return body.PaintShape([&](cairo_t* context) {
    cairo_rectangle(context, near.left + inset, near.top + inset, std::max(near.Width() - 2 * inset, kLeastSize),
                    std::max(near.Height() - 2 * inset, kLeastSize));
  });
}

bool CairoSurface::Ellipse(int x1, int y1, int x2, int y2) {
  Body& body = *m_body;
  if (!IsGood()) return false;
  const CRect rect = InOrder(x1, y1, x2, y2);
  if (rect.IsRectEmpty()) return true;
  const LOGPEN& pen = body.objects.Pen();
  const SurfaceBrush& brush = body.objects.Brush();
  const bool hasPen = pen.lopnStyle != PS_NULL;
  if (!body.IsSmooth() && (!hasPen || (body.IsThin() && pen.lopnStyle == PS_SOLID))) {
    const PixelInk edge = PixelInk::Make(hasPen ? pen.lopnColor : brush.color, body.rop2);
    const PixelInk inside = PixelInk::Make(brush.color, body.rop2);
    body.Pixels().Ellipse(EllipseRows(rect), hasPen || !brush.isHollow ? &edge : nullptr, brush.isHollow ? nullptr : &inside);
    return true;
  }
  if (!IsNear(rect)) return false;
  const double inset = hasPen && WidthOf(pen) % 2 != 0 ? 0.5 : 0.0;
  return body.PaintShape([&](cairo_t* context) {
    cairo_matrix_t level;
    cairo_get_matrix(context, &level);
    cairo_translate(context, (rect.left + rect.right) / 2.0, (rect.top + rect.bottom) / 2.0);
    cairo_scale(context, std::max(rect.Width() / 2.0 - inset, kLeastSize), std::max(rect.Height() / 2.0 - inset, kLeastSize));
    cairo_new_sub_path(context);
    cairo_arc(context, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(context);
    cairo_set_matrix(context, &level);
  });
}

int CairoSurface::GetDeviceCaps(int index) const { return index == LOGPIXELSY && IsGood() ? m_body->dots : 0; }

HGDIOBJ CairoSurface::GetCurrentObject(unsigned kind) const { return m_body->objects.Current(kind); }

bool CairoSurface::GetObject(HGDIOBJ object, LOGPEN& pen) const {
  const LOGPEN* const found = m_body->objects.FindPen(object);
  if (found != nullptr) pen = *found;
  return found != nullptr;
}

int CairoSurface::GetROP2() const { return m_body->rop2; }

HGDIOBJ CairoSurface::SelectObject(HGDIOBJ object) {
  // Lines in work are the former pen's.
  if (m_body->objects.FindPen(object) != nullptr) m_body->FlushStrokes();
  return m_body->objects.Select(object);
}

HGDIOBJ CairoSurface::SelectStockObject(int index) { return SelectObject(m_body->objects.Stock(index)); }

HGDIOBJ CairoSurface::CreateSolidBrush(COLORREF color) { return m_body->objects.Add(SurfaceBrush{false, color & kColourBits}); }

HGDIOBJ CairoSurface::CreateFontIndirect(const LOGFONT& font) { return m_body->objects.Add(font); }

bool CairoSurface::DeleteObject(HGDIOBJ object) { return m_body->objects.Remove(object); }

CSize CairoSurface::GetTextExtentPoint32A(const std::string& text) const {
  cairo_t* const context = m_body->paper.Questions();
  if (context == nullptr) return {};
  const TextBox box = m_body->UseFont(context, zelbase::detail::ToDrawnText(text, kLongestText));
  return CSize(static_cast<int>(std::ceil(box.width)), static_cast<int>(std::ceil(box.ascent + box.descent)));
}

unsigned CairoSurface::SetTextAlign(unsigned align) { return std::exchange(m_body->align, align); }

int CairoSurface::SetBkMode(int mode) { return std::exchange(m_body->bkMode, mode); }

bool CairoSurface::TextOut(int x, int y, const std::string& text) {
  Body& body = *m_body;
  cairo_t* const context = body.Context();
  if (context == nullptr) return false;
  if (!IsNear(x) || !IsNear(y)) return true;
  const std::string drawn = zelbase::detail::ToDrawnText(text, kLongestText);
  const TextBox box = body.UseFont(context, drawn);
  const unsigned across = body.align & kHorizontalAlign;
  const unsigned down = body.align & kVerticalAlign;
  const double left = across == TA_RIGHT ? -box.width : across == TA_CENTER ? -box.width / 2 : 0.0;
  const double base = down == TA_BASELINE ? 0.0 : down == TA_BOTTOM ? -box.descent : box.ascent;

  cairo_matrix_t level;
  cairo_get_matrix(context, &level);
  cairo_translate(context, x, y);
  cairo_rotate(context, -(body.objects.Font().lfEscapement % 3600) / 10.0 * kDegree);
  body.PreparePaint(context);
  cairo_new_path(context);
  if (body.bkMode == OPAQUE) {
    SetSource(context, body.bkColor);
    cairo_rectangle(context, left, base - box.ascent, box.width, box.ascent + box.descent);
    cairo_fill(context);
  }
  SetSource(context, body.textColor);
  cairo_move_to(context, left, base);
  cairo_show_text(context, drawn.c_str());
  cairo_new_path(context);
  cairo_set_matrix(context, &level);
  return true;
}

void CairoSurface::FillSolidRect(const CRect& rect, COLORREF color) {
  Body& body = *m_body;
  body.bkColor = color & kColourBits;
  if (rect.IsRectEmpty()) return;
  if (body.paper.IsImage()) {
    body.Pixels().FillRect(rect, PixelInk::Make(color, R2_COPYPEN));
    return;
  }
  cairo_t* const context = body.Context();
  if (context == nullptr) return;
  body.PreparePaint(context);
  cairo_new_path(context);
  SetSource(context, color);
  AddRectangle(context, Near(rect));
  cairo_fill(context);
}

COLORREF CairoSurface::GetBkColor() const { return m_body->bkColor; }

COLORREF CairoSurface::SetBkColor(COLORREF color) { return std::exchange(m_body->bkColor, color & kColourBits); }
