// The way from the world plane to the pixels of a window and back, with the map turned if wanted. Neighbours: CDC.h, the surface that
// the pixels are on; D3Projector.h, which puts a scene in space before it; the Draw members of Point.h, Line.h, Curve.h and Page.h.
#pragma once

#include <span>
#include <type_traits>

#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/ROTATIONMODE.h"
#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CRect.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plain value: a world window and a pixel window, with what follows from them. Pixels run down, so that the pixel window's bottom
// is its larger y and scale.y is negative. World coordinates are metres.
//
//   CoordinateSystem system;
//   system.SetPixelWindow(CRect(0, 0, 800, 600));
//   system.SetWorldWindow(Page(1000, 2000, 1800, 2600));
//   system.WorldToPixel(1000.25, 2599.75);              // (0, 0)
//   system.PixelToWorld(CPoint(0, 0));                  // (1000.5, 2599.5, 0): the middle of the pixel
//
// What holds:
//   (1) A point goes to the pixel that it lies in: its place is rounded down, negative ones too. A pixel comes back as the point in
//       its middle, so that the way there and back is off by up to a pixel's size, and by half a pixel for a point on an edge.
//   (2) A page's corners go to the nearest pixel edges, and come back without the half pixel. Clip windows are made so; drawn points
//       are not.
//   (3) In ROTATIONMODE_SKEW the map is turned clockwise by the skew before it is scaled: with 90 degrees north is to the right.
//   (4) Setting a skew or a mode stores it and nothing more. The scale is of the old one until a window is set again.
//
// Nothing is refused but windows without width or height. Others may give a scale that is no use (IsScaleValid tells), and pixels
// that are infinite or no number. Where pixels become whole numbers, what is no number is 0 and what is beyond int the nearest int.
// A null output is not written.
//
// The fields are there to be read. Change them through the members, which keep them in step.
//
// Copies are independent. A view on another thread gets a copy of its own.
class ZELBASE_API CoordinateSystem {
 public:
  // The world from (0, 0) to (1, 1) on one pixel.
  CoordinateSystem() = default;

  // Equal windows and modes; the skew, its sine and cosine and the centres count in ROTATIONMODE_SKEW alone, and the scale never
  // does. Exact.
  bool operator==(const CoordinateSystem& other) const;

  // Whether both scales lie within 1e-10 and 1e10 in size, ends included.
  bool IsScaleValid() const;

  const Page& GetPixelWindow() const { return pixelWindow; }

  // The same as a rectangle, its left, top, right and bottom truncated.
  CRect PixelWindow() const;

  // Degrees.
  double GetSkew() const { return skew; }
  void SetSkew(double angle);

  ROTATIONMODE GetRotationMode() const { return rotationMode; }
  void SetRotationMode(ROTATIONMODE mode) { rotationMode = mode; }

  // Turns a vector of the window into one of the world, and the other way; only in ROTATIONMODE_SKEW.
  void RotatePtoW(double& x, double& y) const;
  void RotateWtoP(double& x, double& y) const;

  // The pixel that a point lies in. The z of a Point stays as it was.
  void WorldToPixel(double x, double y, double* px, double* py) const;
  void WorldToPixel(const Point& world, Point* pixel) const;
  CPoint WorldToPixel(double x, double y) const;
  CPoint WorldToPixel(const Point& world) const;

  // The same for a row of points, several at a time where the processor can: pixels[i] is of points[i], to the last bit. `pixels` has
  // room for as many; null writes nothing.
  void WorldToPixel(std::span<const Point> points, CPoint* pixels) const;

  // The pixel edges nearest to the page's: those of the bottom left and the top right corner, also in a turned map. As a rectangle
  // it is left, top, right, bottom.
  void WorldToPixel(const Page& world, Page* pixel) const;
  CRect WorldToPixel(const Page& world) const;

  // The point in the middle of a pixel. The z of a Point stays as it was, and is 0 in one made here.
  void PixelToWorld(double px, double py, double* x, double* y) const;
  void PixelToWorld(const Point& pixel, Point* world) const;
  Point PixelToWorld(const CPoint& pixel) const;

  // The page between two corners of pixels.
  void PixelToWorld(const Page& pixel, Page* world) const;
  Page PixelToWorld(const CRect& pixel) const;

  // The page of the world that holds the window `page` as it stands on the screen: itself, unless the map is turned.
  Page GetExtend(const Page& page) const;

  // False, and nothing changed, for a window whose width or height is exactly 0. Any other is taken, the invalid page too.
  bool SetWorldWindow(const Page& page);
  bool SetPixelWindow(const Page& page);
  bool SetPixelWindow(const CRect& rect);

  // Shows an area in the middle of the pixel window, as large as it will go, with the same number of pixels to a metre in both
  // directions; then `factor` times as large. An area without width and height shows as much as now. Gives what SetWorldWindow gives.
  // In a turned map the new world window is not turned back: its scales differ, and may change sign.
  bool CenterWorldAreaOnPixelWindow(const Page& area, double factor);

  // Shows what `other` shows in its middle, at its scale times `factor`, in this pixel window.
  bool SetWorldWindowFromCoordinateSystem(const CoordinateSystem& other, double factor);

  // Shows the surroundings of a point at the scale of `other`. When SetWorldWindow refuses them, only the scale has changed.
  bool SetWorldWindowFromPoint(const Point& point, const CoordinateSystem& other);

  Point scale = Point(1, -1, 0);  // pixels to a metre in x and y
  Page worldWindow = Page(0, 0, 1, 1);
  Page pixelWindow = Page(0, 1, 1, 0);
  Point worldCentre = Point(0.5, 0.5, 0);
  Point pixelCentre = Point(0.5, 0.5, 0);
  double skew = 0;  // degrees
  ROTATIONMODE rotationMode = ROTATIONMODE_0;
  double sinSkew = 0;
  double cosSkew = 1;

 private:
  Point Floor(double x, double y, double rounding) const;
  Point FromPixel(double px, double py, double halfPixel) const;
  Point TurnedSize(double width, double height) const;
  void CalcScale();
};

static_assert(std::is_trivially_copyable_v<CoordinateSystem> && std::is_standard_layout_v<CoordinateSystem>);
