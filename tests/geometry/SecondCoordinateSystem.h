// The rules of the coordinate system a second time, written down one after the other, and random systems to try them on.
#pragma once

#include <algorithm>
#include <cmath>

#include "tests/geometry/EdgeValues.h"
#include "zelbase/geometry/CoordinateSystem.h"

struct SecondSystem {
  double scale[2] = {1, -1};
  double world[4] = {0, 0, 1, 1};  // left, bottom, right, top
  double pixel[4] = {0, 1, 1, 0};
  double worldCentre[2] = {0.5, 0.5};
  double pixelCentre[2] = {0.5, 0.5};
  double skew = 0;
  int mode = 0;
  double s = 0;
  double c = 1;

  struct Pair {
    double x, y;
  };

  void SetSkew(double angle) {
    skew = angle;
    s = std::sin(angle * 0.017453292519943);
    c = std::cos(angle * 0.017453292519943);
  }
  Pair ToWindow(Pair v) const { return mode == 3 ? Pair{v.y * s + v.x * c, v.y * c - v.x * s} : v; }
  Pair ToWorld(Pair v) const { return mode == 3 ? Pair{v.x * c - v.y * s, v.y * c + v.x * s} : v; }

  void CalcScale() {
    const double w = world[2] - world[0];
    const double h = world[3] - world[1];
    const double turnedW = mode == 3 ? w * c + s * h : w;
    const double turnedH = mode == 3 ? h * c - w * s : h;
    scale[0] = (pixel[2] - pixel[0]) / turnedW;
    scale[1] = (pixel[3] - pixel[1]) / turnedH;
  }

  Pair PixelOfPoint(double x, double y) const {
    const Pair d = ToWindow({x - worldCentre[0], y - worldCentre[1]});
    return {std::floor(d.x * scale[0] + pixelCentre[0]), std::floor(scale[1] * d.y + pixelCentre[1])};
  }
  Pair PixelOfCorner(double x, double y) const {
    const Pair d = ToWindow({x - worldCentre[0], y - worldCentre[1]});
    return {std::floor(d.x * scale[0] + pixelCentre[0] + 0.5), std::floor(scale[1] * d.y + pixelCentre[1] + 0.5)};
  }
  Pair WorldOfPoint(double px, double py) const {
    const Pair v = ToWorld({(px - pixelCentre[0] + 0.5) / scale[0], (py - pixelCentre[1] + 0.5) / scale[1]});
    return {v.x + worldCentre[0], v.y + worldCentre[1]};
  }
  Pair WorldOfCorner(double px, double py) const {
    const Pair v = ToWorld({(px - pixelCentre[0]) / scale[0], (py - pixelCentre[1]) / scale[1]});
    return {v.x + worldCentre[0], v.y + worldCentre[1]};
  }
  Page PixelOfPage(const Page& p) const {
    const Pair a = PixelOfCorner(p.left, p.bottom);
    const Pair b = PixelOfCorner(p.right, p.top);
    return Page(a.x, a.y, b.x, b.y);
  }
  Page WorldOfPage(const Page& p) const {
    const Pair a = WorldOfCorner(p.left, p.bottom);
    const Pair b = WorldOfCorner(p.right, p.top);
    return Page(a.x, a.y, b.x, b.y);
  }

  static bool Store(const Page& p, double (&window)[4], double (&centre)[2]) {
    if (p.right - p.left == 0 || p.top - p.bottom == 0) return false;
    window[0] = p.left, window[1] = p.bottom, window[2] = p.right, window[3] = p.top;
    centre[0] = 0.5 * (p.left + p.right);
    centre[1] = 0.5 * (p.bottom + p.top);
    return true;
  }
  bool SetWorld(const Page& p) {
    if (!Store(p, world, worldCentre)) return false;
    CalcScale();
    return true;
  }
  bool SetPixel(const Page& p) {
    if (!Store(p, pixel, pixelCentre)) return false;
    CalcScale();
    return true;
  }

  Page Extend(const Page& p) const {
    if (mode != 3) return p;
    const double up = (p.top - p.bottom) * c - s * (p.right - p.left);
    const Pair v = ToWorld({0, up});
    const double xs[] = {p.left, p.left + v.x, p.right, p.right - v.x};
    const double ys[] = {p.bottom, p.bottom + v.y, p.top, p.top - v.y};
    return Page(*std::min_element(xs, xs + 4), *std::min_element(ys, ys + 4), *std::max_element(xs, xs + 4), *std::max_element(ys, ys + 4));
  }

  bool Center(const Page& area, double factor) {
    const double cx = 0.5 * (area.left + area.right);
    const double cy = 0.5 * (area.bottom + area.top);
    double w = area.right - area.left;
    double h = area.top - area.bottom;
    if (w == 0 && h == 0) w = world[2] - world[0], h = world[3] - world[1];
    if (mode == 3) {
      const double turned = s * h + c * w;
      h = c * h - s * w;
      w = turned;
    }
    const double pw = pixel[2] - pixel[0];
    const double ph = pixel[3] - pixel[1];
    double sx = 0;
    double sy = 0;
    if (w != 0) sx = pw / w;
    if (h != 0) sy = ph / h;
    if (sx == 0) sx = -sy;
    else if (sy == 0) sy = -sx;
    if (-sy <= sx) sy = sy * factor, sx = -sy;
    else sx = sx * factor, sy = -sx;
    return SetWorld(Page(cx - (pw * 0.5) / sx, cy - (ph * 0.5) / sy, cx + (pw * 0.5) / sx, cy + (ph * 0.5) / sy));
  }
  bool FromOther(const SecondSystem& other, double factor) {
    const Pair size = ToWorld({(pixel[2] - pixel[0]) / other.scale[0], (pixel[3] - pixel[1]) / other.scale[1]});
    const double x = 0.5 * (other.world[0] + other.world[2]);
    const double y = 0.5 * (other.world[1] + other.world[3]);
    return Center(Page(x - size.x * 0.5, y - size.y * 0.5, x + size.x * 0.5, y + size.y * 0.5), factor);
  }
  bool FromPoint(double x, double y, const SecondSystem& other) {
    scale[0] = other.scale[0], scale[1] = other.scale[1];
    const Pair half = ToWorld({(pixel[2] - pixel[0]) / scale[0] * 0.5, (pixel[3] - pixel[1]) / scale[1] * 0.5});
    return SetWorld(Page(x - half.x, y - half.y, x + half.x, y + half.y));
  }
};

// The same system twice, as our class and as the transcription.
struct TwoSystems {
  CoordinateSystem ours;
  SecondSystem second;

  void SetMode(int mode) {
    ours.SetRotationMode(static_cast<ROTATIONMODE>(mode));
    second.mode = mode;
  }
  void SetSkew(double angle) {
    ours.SetSkew(angle);
    second.SetSkew(angle);
  }
  void SetPixel(const Page& page) { EXPECT_EQ(ours.SetPixelWindow(page), second.SetPixel(page)); }
  void SetWorld(const Page& page) { EXPECT_EQ(ours.SetWorldWindow(page), second.SetWorld(page)); }
};

// A system as views have them: a window of some hundred pixels, usually of the screen, on some hundred metres; every other one
// turned.
inline TwoSystems AnySystem(EdgeValues& values) {
  TwoSystems both;
  both.SetMode(values.Flag() ? 3 : values.Index(3));
  both.SetSkew(values.Flag() ? values.Between(-360, 360) : 90.0 * values.Index(5));
  const double width = 50 + values.Index(500);
  const double height = 50 + values.Index(500);
  const double left = values.Index(100) - 50;
  const double top = values.Index(100) - 50;
  both.SetPixel(values.Index(4) == 0 ? Page(left, top, left + width, top + height) : Page(left, top + height, left + width, top));
  const double x = values.Between(-1000, 1000);
  const double y = values.Between(-1000, 1000);
  both.SetWorld(Page(x, y, x + values.Between(10, 500), y + values.Between(10, 500)));
  return both;
}

// A system of numbers that ought not to be given.
inline CoordinateSystem WildSystem(EdgeValues& values) {
  CoordinateSystem system = AnySystem(values).ours;
  system.SetSkew(values.Wild());
  system.SetPixelWindow(Page(values.Wild(), values.Wild(), values.Wild(), values.Wild()));
  system.SetWorldWindow(Page(values.Wild(), values.Wild(), values.Wild(), values.Wild()));
  return system;
}
