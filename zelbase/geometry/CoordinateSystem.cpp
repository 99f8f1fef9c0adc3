#include "zelbase/geometry/CoordinateSystem.h"

#include <cmath>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/detail/PixelRow.h"

using zelbase::detail::ToPixel;

namespace {

constexpr double kSmallestScale = 1e-10;
constexpr double kLargestScale = 1e10;

// Added where others add half a pixel; it leaves every number as it is, -0.0 too.
constexpr double kNothing = -0.0;

bool IsWithinScales(double scale) {
  const double size = std::fabs(scale);
  return size >= kSmallestScale && size <= kLargestScale;
}

}  // namespace

bool CoordinateSystem::operator==(const CoordinateSystem& other) const {
  if (!(worldWindow == other.worldWindow && pixelWindow == other.pixelWindow)) return false;
  if (rotationMode != other.rotationMode) return false;
  // Kept: a skew that is not in use makes no difference, nor does the scale; views ask whether they must be drawn anew.
  if (rotationMode != ROTATIONMODE_SKEW) return true;
  return worldCentre == other.worldCentre && pixelCentre == other.pixelCentre && skew == other.skew && sinSkew == other.sinSkew &&
         cosSkew == other.cosSkew;
}

bool CoordinateSystem::IsScaleValid() const { return IsWithinScales(scale.x) && IsWithinScales(scale.y); }

CRect CoordinateSystem::PixelWindow() const {
  return CRect(ToPixel(pixelWindow.left), ToPixel(pixelWindow.top), ToPixel(pixelWindow.right), ToPixel(pixelWindow.bottom));
}

void CoordinateSystem::SetSkew(double angle) {
  // Kept: the scale stays; the caller sets a window next, and then both are there.
  skew = angle;
  sinSkew = std::sin(angle * D_TO_R);
  cosSkew = std::cos(angle * D_TO_R);
}

void CoordinateSystem::RotatePtoW(double& x, double& y) const {
  if (rotationMode != ROTATIONMODE_SKEW) return;
  const double turnedX = x * cosSkew - y * sinSkew;
  y = y * cosSkew + x * sinSkew;
  x = turnedX;
}

void CoordinateSystem::RotateWtoP(double& x, double& y) const {
  if (rotationMode != ROTATIONMODE_SKEW) return;
  const double turnedX = y * sinSkew + x * cosSkew;
  y = y * cosSkew - x * sinSkew;
  x = turnedX;
}

// The pixel of a place in the world; z is 0.
Point CoordinateSystem::Floor(double x, double y, double rounding) const {
  double dx = x - worldCentre.x;
  double dy = y - worldCentre.y;
  RotateWtoP(dx, dy);
  return Point(std::floor(dx * scale.x + pixelCentre.x + rounding), std::floor(scale.y * dy + pixelCentre.y + rounding), 0);
}

// The place in the world of a pixel; z is 0.
Point CoordinateSystem::FromPixel(double px, double py, double halfPixel) const {
  double wx = (px - pixelCentre.x + halfPixel) / scale.x;
  double wy = (py - pixelCentre.y + halfPixel) / scale.y;
  RotatePtoW(wx, wy);
  return Point(wx + worldCentre.x, wy + worldCentre.y, 0);
}

void CoordinateSystem::WorldToPixel(double x, double y, double* px, double* py) const {
  // Kept: rounded down where pages are rounded to the nearest; a point belongs to the pixel that it lies in.
  const Point pixel = Floor(x, y, kNothing);
  if (px != nullptr) *px = pixel.x;
  if (py != nullptr) *py = pixel.y;
}

void CoordinateSystem::WorldToPixel(const Point& world, Point* pixel) const {
  if (pixel != nullptr) WorldToPixel(world.x, world.y, &pixel->x, &pixel->y);
}

CPoint CoordinateSystem::WorldToPixel(double x, double y) const {
  const Point pixel = Floor(x, y, kNothing);
  return CPoint(ToPixel(pixel.x), ToPixel(pixel.y));
}

CPoint CoordinateSystem::WorldToPixel(const Point& world) const { return WorldToPixel(world.x, world.y); }

void CoordinateSystem::WorldToPixel(std::span<const Point> points, CPoint* pixels) const {
  if (pixels != nullptr) zelbase::detail::PixelRow(*this).PixelsOf(points, pixels);
}

void CoordinateSystem::WorldToPixel(const Page& world, Page* pixel) const {
  if (pixel == nullptr) return;
  constexpr double kNearest = 0.5;
  *pixel = Page(Floor(world.left, world.bottom, kNearest), Floor(world.right, world.top, kNearest));
}

CRect CoordinateSystem::WorldToPixel(const Page& world) const {
  Page pixel;
  WorldToPixel(world, &pixel);
  return CRect(ToPixel(pixel.left), ToPixel(pixel.top), ToPixel(pixel.right), ToPixel(pixel.bottom));
}

void CoordinateSystem::PixelToWorld(double px, double py, double* x, double* y) const {
  // Kept: the half pixel is for points alone; a page begins at the edge of its first pixel.
  const Point world = FromPixel(px, py, 0.5);
  if (x != nullptr) *x = world.x;
  if (y != nullptr) *y = world.y;
}

void CoordinateSystem::PixelToWorld(const Point& pixel, Point* world) const {
  if (world != nullptr) PixelToWorld(pixel.x, pixel.y, &world->x, &world->y);
}

Point CoordinateSystem::PixelToWorld(const CPoint& pixel) const {
  Point world;
  PixelToWorld(Point(pixel), &world);
  return world;
}

void CoordinateSystem::PixelToWorld(const Page& pixel, Page* world) const {
  if (world == nullptr) return;
  *world = Page(FromPixel(pixel.left, pixel.bottom, kNothing), FromPixel(pixel.right, pixel.top, kNothing));
}

Page CoordinateSystem::PixelToWorld(const CRect& pixel) const {
  Page world;
  PixelToWorld(Page(pixel.left, pixel.bottom, pixel.right, pixel.top), &world);
  return world;
}

// A width and height of the world as the turned window has them.
Point CoordinateSystem::TurnedSize(double width, double height) const {
  if (rotationMode != ROTATIONMODE_SKEW) return Point(width, height, 0);
  return Point(width * cosSkew + sinSkew * height, height * cosSkew - width * sinSkew, 0);
}

void CoordinateSystem::CalcScale() {
  const Point size = TurnedSize(worldWindow.Width(), worldWindow.Height());
  scale.x = pixelWindow.Width() / size.x;
  scale.y = pixelWindow.Height() / size.y;
}

Page CoordinateSystem::GetExtend(const Page& page) const {
  if (rotationMode != ROTATIONMODE_SKEW) return page;
  Point side(0, TurnedSize(page.Width(), page.Height()).y, 0);
  RotatePtoW(side.x, side.y);
  Page extend(page.BottomLeft(), page.BottomLeft());
  extend |= page.BottomLeft() + side;
  extend |= page.TopRight();
  extend |= page.TopRight() - side;
  return extend;
}

bool CoordinateSystem::SetWorldWindow(const Page& page) {
  if (page.Width() == 0 || page.Height() == 0) return false;
  worldWindow = page;
  worldCentre = page.GetCenter();
  CalcScale();
  return true;
}

bool CoordinateSystem::SetPixelWindow(const Page& page) {
  if (page.Width() == 0 || page.Height() == 0) return false;
  pixelWindow = page;
  pixelCentre = page.GetCenter();
  CalcScale();
  return true;
}

bool CoordinateSystem::SetPixelWindow(const CRect& rect) { return SetPixelWindow(Page(rect.left, rect.bottom, rect.right, rect.top)); }

bool CoordinateSystem::CenterWorldAreaOnPixelWindow(const Page& area, double factor) {
  const Point centre = area.GetCenter();
  const bool hasSize = area.Width() != 0 || area.Height() != 0;
  const Point size = hasSize ? TurnedSize(area.Width(), area.Height()) : TurnedSize(worldWindow.Width(), worldWindow.Height());
  double sx = size.x != 0 ? pixelWindow.Width() / size.x : 0;
  double sy = size.y != 0 ? pixelWindow.Height() / size.y : 0;
  if (sx == 0) {
    sx = -sy;
  } else if (sy == 0) {
    sy = -sx;
  }
  if (-sy <= sx) {
    sy *= factor;
    sx = -sy;
  } else {
    sx *= factor;
    sy = -sx;
  }
  // Kept: half-sizes of the window, not turned back; a view that is turned sets its window itself.
  const Point half((pixelWindow.Width() * 0.5) / sx, (pixelWindow.Height() * 0.5) / sy, 0);
  return SetWorldWindow(Page(centre - half, centre + half));
}

bool CoordinateSystem::SetWorldWindowFromCoordinateSystem(const CoordinateSystem& other, double factor) {
  Point size(pixelWindow.Width() / other.scale.x, pixelWindow.Height() / other.scale.y, 0);
  RotatePtoW(size.x, size.y);
  const Point half = size * 0.5;
  return CenterWorldAreaOnPixelWindow(Page(other.worldCentre - half, other.worldCentre + half), factor);
}

bool CoordinateSystem::SetWorldWindowFromPoint(const Point& point, const CoordinateSystem& other) {
  // Kept: taken before the window is known to have a size; a refused window leaves it taken.
  scale = other.scale;
  Point half(pixelWindow.Width() / scale.x * 0.5, pixelWindow.Height() / scale.y * 0.5, 0);
  RotatePtoW(half.x, half.y);
  return SetWorldWindow(Page(point - half, point + half));
}
