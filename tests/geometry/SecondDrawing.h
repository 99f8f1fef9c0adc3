// What drawing should ask of a surface and do on it, written down a second time from its rules, as the lines of a RecordingSurface.
// Clipping itself is not repeated here; its own tests do that.
#pragma once

#include <climits>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "tests/geometry/SecondCoordinateSystem.h"
#include "zelbase/geometry/BoxComp.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/platform/RecordingSurface.h"

class SecondDrawing {
 public:
  using Pair = SecondSystem::Pair;

  explicit SecondDrawing(const SecondSystem& rules) : system(rules) {}

  // --- Points

  // upright and diagonal: kind 0 is the first, 1 the second, 2 both.
  void Symbol(double x, double y, int size, int kind) {
    Say("GetDeviceCaps", {90});
    const double s = std::round(static_cast<double>(size) * dotsPerInch / 96);
    AskPen();
    const long long e = system.mode == 3 ? 0 : Width() % 2;
    const Pair p = system.PixelOfPoint(x, y);
    const long long px = Whole(p.x);
    const long long py = Whole(p.y);
    for (const int diagonal : {0, 1}) {
      if (kind != 2 && kind != diagonal) continue;
      Pair arm{s, diagonal * s};
      if (system.mode == 3) arm = system.ToWorld({s + 1.0, diagonal * (s + 1.0)});
      const long long ax = Whole(arm.x);
      const long long ay = Whole(arm.y);
      Say("MoveTo", {px - ax, py - ay});
      Say("LineTo", {px + ax + e, py + ay});
      Say("MoveTo", {px + ay, py - ax});
      Say("LineTo", {px - ay, py + ax + e});
    }
  }

  void Pixel(double x, double y, unsigned color) {
    const Pair p = system.PixelOfPoint(x, y);
    const double* w = system.pixel;
    const double low = std::min(w[1], w[3]);
    const double high = std::max(w[1], w[3]);
    if (p.x < w[0] || p.x > w[2] || p.y < low || p.y > high) return;
    Say("SetPixel", {Whole(p.x), Whole(p.y)}, color);
  }

  void Dot(double x, double y, long long radius, CSize offset, bool outline, long long margin) {
    const Pair p = system.PixelOfPoint(x, y);
    const long long px = Whole(p.x) + static_cast<long long>(offset.cx);
    const long long py = Whole(p.y) + static_cast<long long>(offset.cy);
    AskPen();
    if (outline) {
      Say("SelectStockObject", {5});
      const long long reach = radius < 1 ? margin : radius + margin;
      Say("Rectangle", {px - reach, py - reach, px + reach + 1, py + reach + 1});
      Say("SelectObject", {2});
    } else if (radius < 1) {
      Say("SetPixel", {px, py}, Color());
    } else {
      const long long brush = nextThing++;
      calls.push_back("CreateSolidBrush " + std::to_string(Color()));
      Say("SelectObject", {brush});
      Say("Ellipse", {px - radius, py - radius, px + radius + 1, py + radius + 1});
      Say("SelectObject", {2});
      Say("DeleteObject", {brush});
    }
  }

  // --- Lines

  void DrawLine(const Line& line, const Page& page) {
    if (line.start.x == line.end.x && line.start.y == line.end.y && line.start.z == line.end.z) return;
    Line pixels = Pixels(line);
    if (!system.PixelOfPage(page).ClipLine(pixels)) return;
    const long long x = Whole(pixels.end.x);
    const long long y = Whole(pixels.end.y);
    Say("MoveTo", {Whole(pixels.start.x), Whole(pixels.start.y)});
    Say("LineTo", {x, y});
    AskPen();
    if (!pen) return;
    Say("SetPixel", {x, y}, Color());
    Say("GetROP2", {});
    if (rop2 == 6 || rop2 == 7) Say("SetPixel", {x, y}, Color());
  }

  bool Annotate(const Line& line, const Page& page, const std::string& text, int height) {
    if (line.start == line.end) return false;
    const Page pixelPage = system.PixelOfPage(page);
    const Line pixels = Pixels(line);
    Line seen;
    if (!pixelPage.ClipLine(pixels, &seen)) return false;
    const double b = Bearing(seen.end.x - seen.start.x, -(seen.end.y - seen.start.y));
    long long tenths = Whole(4500.0 - b * 10.0);
    if (tenths > 3600) tenths -= 3600;
    const long long font = nextThing++;
    calls.push_back("CreateFontIndirect " + std::to_string(height) + " 0 " + std::to_string(tenths) + ' ' + std::to_string(tenths) +
                    " 0 'Arial'");
    Say("SelectObject", {font});
    Say("SetBkMode", {1});
    calls.push_back("GetTextExtentPoint32A '" + text + "'");
    double ax = seen.start.x;
    double ay = seen.start.y;
    const bool moved = Place(pixels, ax, ay, b, letter.cx * static_cast<double>(text.size()), letter.cy, pixelPage);
    Say("SetTextAlign", {moved ? 10 : 26});
    calls.push_back("TextOut " + std::to_string(Whole(ax)) + ' ' + std::to_string(Whole(ay)) + " '" + text + "'");
    Say("SelectObject", {3});
    Say("SetTextAlign", {0});
    Say("SetBkMode", {2});
    Say("DeleteObject", {font});
    return true;
  }

  // --- Arcs: {centre x, centre y, radius, start, end}

  void DrawArc(double cx, double cy, double radius, double start, double end, const Page& page) {
    const Page pixelPage = system.PixelOfPage(page);
    const Pair c = system.PixelOfPoint(cx, cy);
    double r = radius * system.scale[0];
    double from = start;
    double to = end;
    if (system.mode == 3 && start != end) from = Trim(start + system.skew), to = Trim(end + system.skew);
    if (!(radius >= 0)) r = -r, std::swap(from, to);
    int count = 0;
    double starts[5];
    double ends[5];
    pixelPage.ClipCircle(Point(c.x, c.y, 0), r, from, to, count, starts, ends);
    for (int i = 0; i < count; ++i) {
      const bool turned = system.mode == 3;
      Segment(cx, cy, std::fabs(radius), turned ? Trim(starts[i] - system.skew) : starts[i], turned ? Trim(ends[i] - system.skew) : ends[i],
              page);
    }
  }

  SecondSystem system;
  std::optional<LOGPEN> pen = LOGPEN();
  int dotsPerInch = 96;
  int rop2 = 13;
  CSize letter = CSize(8, 16);
  std::vector<std::string> calls;
  long long nextThing = 5;

 private:
  static constexpr double kDegree = 0.017453292519943;

  static int Whole(double value) {
    if (value != value) return 0;
    if (value >= INT_MAX) return INT_MAX;
    if (value <= INT_MIN) return INT_MIN;
    return static_cast<int>(value);
  }
  static double Trim(double angle) {
    const double rest = std::fmod(angle, 360.0);
    return rest < 0 ? rest + 360.0 : rest;
  }
  static double Bearing(double x, double y) {
    if (std::fabs(x) < 1e-07) x = 0;
    if (std::fabs(y) < 1e-07) y = 0;
    const double angle = std::atan2(x, y) / kDegree;
    return angle < 0 ? angle + 360.0 : angle;
  }

  // Coordinates end at the nearest int; colours do not.
  void Say(const std::string& name, std::vector<long long> numbers, std::optional<unsigned> color = {}) {
    std::string line = name;
    for (const long long number : numbers) {
      line += ' ' + std::to_string(std::max<long long>(INT_MIN, std::min<long long>(INT_MAX, number)));
    }
    if (color) line += ' ' + std::to_string(*color);
    calls.push_back(line);
  }
  void AskPen() {
    Say("GetCurrentObject", {1});
    if (pen) Say("GetObject", {1});
  }
  int Width() const { return pen ? pen->lopnWidth.x : 0; }
  unsigned Color() const { return pen ? pen->lopnColor : 0; }

  Line Pixels(const Line& line) const {
    const Pair a = system.PixelOfPoint(line.start.x, line.start.y);
    const Pair b = system.PixelOfPoint(line.end.x, line.end.y);
    return Line(Point(a.x, a.y, 0), Point(b.x, b.y, 0));
  }

  static bool Place(const Line& line, double& ax, double& ay, double b, double width, double height, const Page& page) {
    double l, bo, r, t;
    BoxComp(1, Point(0, 0, 0), height, width, b - 90.0).GetBoundaries(l, bo, r, t);
    if (page.IsPointInPage(ax + l, ay - bo) && page.IsPointInPage(ax + r, ay - t)) return false;
    bool start = false;
    bool end = false;
    line.Clip(page, true, false, start, end);
    if (!start) return false;
    const int q = (static_cast<int>(b) % 360) / 90;
    const int rest = static_cast<int>(b) % 90;
    const double spaces[] = {std::fabs(ax - page.left), std::fabs(ay - page.top), std::fabs(ax - page.right), std::fabs(ay - page.bottom)};
    double way = width;
    if (rest > 0 && spaces[q] < height) way = width + height / std::tan(rest * kDegree);
    ax += std::sin(b * kDegree) * way;
    ay -= std::cos(b * kDegree) * way;
    return true;
  }

  void Segment(double cx, double cy, double r, double from, double to, const Page& page) {
    const double tol = 0.5 / system.scale[0];
    if (r < tol) return;
    const double step = std::acos((r - tol) / (r + tol));
    if (to <= from) to += 360.0;
    const double last = to * kDegree;
    const auto at = [&](double a) { return Point(r * std::sin(a) + cx, r * std::cos(a) + cy, 0); };
    double a = from * kDegree;
    if (!(step > 0) || (last - a) / step > 1e6) return DrawLine(Line(at(a), at(last)), page);
    for (; a + step < last; a += step) DrawLine(Line(at(a), at(a + step)), page);
    DrawLine(Line(at(a), at(last)), page);
  }
};

// A surface as hosts have them, and the rules told the same of it.
inline void AnySurface(EdgeValues& values, RecordingSurface& surface, SecondDrawing& second) {
  static constexpr int kRasterModes[] = {13, 6, 7, 1, 8};
  second.dotsPerInch = surface.dotsPerInch = values.Flag() ? 96 : 48 + 12 * values.Index(20);
  second.rop2 = surface.rop2 = kRasterModes[values.Index(5)];
  second.letter = surface.letter = CSize(1 + values.Index(12), 1 + values.Index(30));
  second.pen.reset();
  if (values.Index(4) != 0) second.pen = LOGPEN{0, CPoint(values.Index(5), 99), static_cast<COLORREF>(values.Index(0x1000000))};
  surface.SetPen(second.pen);
}

// A place in or around the pixel window, in the world; at times any place at all.
inline Point AnyPlace(EdgeValues& values, const CoordinateSystem& system) {
  if (values.Index(20) == 0) return values.AnyPoint();
  const Page& window = system.GetPixelWindow();
  const double x = window.left + values.Between(-0.4, 1.4) * window.Width();
  const double y = window.bottom + values.Between(-0.4, 1.4) * window.Height();
  Point world(0, 0, values.Grid());
  system.PixelToWorld(values.Flag() ? x : std::floor(x), y, &world.x, &world.y);
  return world;
}
