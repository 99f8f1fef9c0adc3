// The drawing surface on an image against Cairo called by hand without anti-aliasing, for each segment a
// stroke and for all segments one, whichever is faster; and a million soundings as pixels and as dots against
// rectangles and circles filled by Cairo. Both sides draw the same picture, though Cairo's choice of pixels
// is its own.

#include <cairo.h>

#include <cstdio>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "adapters/cairo/CairoSurface.h"
#include "bench/Compare.h"

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 1200;
constexpr int kReach = 40;  // of a segment, either way
constexpr double kBar = 1.0;
constexpr std::size_t kBarSegments = 100000;
constexpr std::size_t kBarSoundings = 1000000;

struct Segment {
  CPoint from;
  CPoint to;
};

std::vector<CPoint> MakePoints(std::size_t count) {
  std::mt19937 random(20250301);
  std::uniform_int_distribution<int> x(0, kWidth - 1);
  std::uniform_int_distribution<int> y(0, kHeight - 1);
  std::vector<CPoint> points(count);
  for (CPoint& point : points) point = CPoint(x(random), y(random));
  return points;
}

std::vector<Segment> MakeSegments(std::size_t count) {
  std::mt19937 random(4711);
  std::uniform_int_distribution<int> step(-kReach, kReach);
  std::vector<Segment> segments;
  for (const CPoint& from : MakePoints(count)) segments.push_back({from, from + CSize(step(random), step(random))});
  return segments;
}

// Of 64 colours, and hardly ever the same one twice in a row.
std::vector<COLORREF> MakeColours(std::size_t count) {
  std::mt19937 random(99);
  std::vector<COLORREF> colors(count);
  for (COLORREF& color : colors) color = 0x3F3F3Fu * static_cast<COLORREF>(random() % 4) + 0x010203u * static_cast<COLORREF>(random() % 16);
  return colors;
}

// An image of Cairo's own, as a program without the surface would have it.
class ByHand {
 public:
  ByHand() : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)), m_context(cairo_create(m_surface)) {
    cairo_set_antialias(m_context, CAIRO_ANTIALIAS_NONE);
  }
  ~ByHand() {
    cairo_destroy(m_context);
    cairo_surface_destroy(m_surface);
  }
  ByHand(const ByHand&) = delete;
  ByHand& operator=(const ByHand&) = delete;

  cairo_t* Context() const { return m_context; }

  void SetColour(COLORREF color) const {
    cairo_set_source_rgb(m_context, (color & 0xFF) / 255.0, (color >> 8 & 0xFF) / 255.0, (color >> 16 & 0xFF) / 255.0);
  }

  void Add(const Segment& segment) const {
    cairo_move_to(m_context, segment.from.x + 0.5, segment.from.y + 0.5);
    cairo_line_to(m_context, segment.to.x + 0.5, segment.to.y + 0.5);
  }

  void StrokeEach(const std::vector<Segment>& segments, double width) const {
    cairo_set_line_width(m_context, width);
    for (const Segment& segment : segments) {
      Add(segment);
      cairo_stroke(m_context);
    }
  }

  void StrokeAllAtOnce(const std::vector<Segment>& segments, double width) const {
    cairo_set_line_width(m_context, width);
    for (const Segment& segment : segments) Add(segment);
    cairo_stroke(m_context);
  }

 private:
  cairo_surface_t* m_surface;
  cairo_t* m_context;
};

void DrawSegments(CairoSurface& surface, const std::vector<Segment>& segments) {
  for (const Segment& segment : segments) {
    surface.MoveTo(segment.from.x, segment.from.y);
    surface.LineTo(segment.to.x, segment.to.y);
  }
  cairo_surface_flush(cairo_get_target(surface.Context()));
}

// Cairo's ends are its cheapest ones for one pixel, where they make no difference; round as ours for wide
// pens.
void CompareSegments(Comparison& table, std::size_t count, int width, double bar, bool smooth = false) {
  const std::vector<Segment> segments = MakeSegments(count);
  CairoSurface surface(CairoFormat::Png, kWidth, kHeight);
  surface.SelectObject(surface.CreatePen(PS_SOLID, width, 0x800000));
  surface.SetSmooth(smooth);
  const ByHand byHand;
  if (smooth) cairo_set_antialias(byHand.Context(), CAIRO_ANTIALIAS_DEFAULT);
  if (width > 1) cairo_set_line_cap(byHand.Context(), CAIRO_LINE_CAP_ROUND);
  byHand.SetColour(0x800000);
  const std::string what = Grouped(count) + " segments, " + std::to_string(width) + (smooth ? " px smooth" : " px");
  const auto units = static_cast<double>(count);
  const auto ours = [&] { DrawSegments(surface, segments); };
  const auto limit = [&] { ReadOnce(segments); };
  table.Row(
      what + " : stroke each", units, "sg", bar, ours, [&] { byHand.StrokeEach(segments, width); }, limit);
  table.Row(
      what + " : one stroke", units, "sg", bar, ours, [&] { byHand.StrokeAllAtOnce(segments, width); }, limit);
}

void CompareSoundings(Comparison& table, std::size_t count) {
  const std::vector<CPoint> points = MakePoints(count);
  const std::vector<COLORREF> colors = MakeColours(count);
  const auto units = static_cast<double>(count);
  const double bar = Comparison::BarAt(count == kBarSoundings, kBar);
  const std::string of = Grouped(count) + " ";
  const auto limit = [&] {
    ReadOnce(points);
    ReadOnce(colors);
  };
  CairoSurface surface(CairoFormat::Png, kWidth, kHeight);
  const ByHand byHand;
  const auto squares = [&](int size) {
    for (std::size_t i = 0; i < count; ++i) {
      byHand.SetColour(colors[i]);
      cairo_rectangle(byHand.Context(), points[i].x, points[i].y, size, size);
      cairo_fill(byHand.Context());
    }
  };
  const auto circles = [&](int radius) {
    for (std::size_t i = 0; i < count; ++i) {
      byHand.SetColour(colors[i]);
      cairo_arc(byHand.Context(), points[i].x + 0.5, points[i].y + 0.5, radius + 0.5, 0, 2 * std::numbers::pi);
      cairo_fill(byHand.Context());
    }
  };
  table.Row(
      of + "soundings, SetPixels : rectangles", units, "pt", bar, [&] { surface.SetPixels(points, colors); }, [&] { squares(1); }, limit);
  table.Row(
      of + "soundings, SetPixel each : rectangles", units, "pt", bar,
      [&] {
        for (std::size_t i = 0; i < count; ++i) surface.SetPixel(points[i].x, points[i].y, colors[i]);
      },
      [&] { squares(1); }, limit);
  table.Row(
      of + "soundings, FillSolidRect 3 x 3 : rectangles", units, "pt", bar,
      [&] {
        for (std::size_t i = 0; i < count; ++i) surface.FillSolidRect(CRect(points[i], CSize(3, 3)), colors[i]);
      },
      [&] { squares(3); }, limit);
  table.Row(
      of + "soundings, FillDots of 5 px : circles", units, "pt", bar, [&] { surface.FillDots(points, colors, 2); }, [&] { circles(2); },
      limit);
  table.Row(
      of + "soundings, a brush and an Ellipse each : circles", units, "pt", bar,
      [&] {
        for (std::size_t i = 0; i < count; ++i) {
          const HGDIOBJ former = surface.SelectObject(surface.CreateSolidBrush(colors[i]));
          surface.Ellipse(points[i].x - 2, points[i].y - 2, points[i].x + 3, points[i].y + 3);
          surface.DeleteObject(surface.SelectObject(former));
        }
      },
      [&] { circles(2); }, limit);
  surface.SetSmooth(true);
  cairo_set_antialias(byHand.Context(), CAIRO_ANTIALIAS_DEFAULT);
  table.Row(
      of + "soundings, smooth dots of 5 px : circles", units, "pt", bar, [&] { surface.FillDots(points, colors, 2); }, [&] { circles(2); },
      limit);
}

}  // namespace

int main() {
  Comparison table("drawing on an image of 1600 x 1200 (peer: Cairo called by hand)", 3);
  for (const std::size_t count : {std::size_t{1000}, std::size_t{10000}, kBarSegments}) {
    for (const int width : {1, 2, 5}) CompareSegments(table, count, width, Comparison::BarAt(count == kBarSegments, kBar));
    CompareSegments(table, count, 1, Comparison::kNoBar, true);
  }
  for (const std::size_t count : {std::size_t{10000}, std::size_t{100000}, kBarSoundings}) CompareSoundings(table, count);
  return table.Finish();
}
