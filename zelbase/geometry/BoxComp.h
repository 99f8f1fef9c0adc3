// A rotated rectangle given by one of nine reference points: the box of a part of a vessel, or of a text. Neighbours: Page.h,
// the rectangle along the axes; VesselContour.h, the outline of a whole vessel.
#pragma once

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value: what was given, and the corners that follow from it. Drawn for rotation 0, with the numbers of the reference points:
//
//     3 ---- 6 ---- 2
//     |             |        height: along the bearing `rotation` (degrees, clockwise from north)
//     8      4      7        width: across it, to the right
//     |             |        corners 0 to 3; corner 4 is corner 0 again, so that the box closes
//     0 ---- 5 ---- 1
//
//   BoxComp box(4, Point(0, 0, 0), 4, 2, 0);    // around the origin
//   box.GetCornerPoint(2);                      // (1, 2, 0)
//
// All lengths are in the unit of the reference point; a negative one turns the box over. Nothing is checked but the code in
// Set: what is not finite gives corners that are not.
//
// What surprises:
//   (1) The corners' z is 0, whatever z the reference point has.
//   (2) A code outside 0 to 8, which Set refuses and all else takes, leaves corner 0 where it was ((0, 0) in a new box) and
//       lays the box there.
//
// Copies are independent. One object belongs to one thread at a time; several may read it.
class ZELBASE_API BoxComp {
 public:
  BoxComp(short refCode, const Point& refPoint, double height, double width, double rotation);

  // All five at once. A code outside 0 to 8 gives false and changes nothing at all.
  bool Set(short refCode, const Point& refPoint, double height, double width, double rotation);

  // One of them; the corners follow. Always true.
  bool SetRefCode(short refCode);
  bool SetRefPoint(const Point& refPoint);
  bool SetRotation(double rotation);
  bool SetWidth(double width);
  bool SetHeight(double height);

  short GetRefCode() const { return m_refCode; }
  Point GetRefPoint() const { return m_refPoint; }
  double GetRotation() const { return m_rotation; }
  double GetWidth() const { return m_width; }
  double GetHeight() const { return m_height; }

  // The corner of that number, 0 to 4. Any other number gives the zero point, or false with `corner` untouched.
  Point GetCornerPoint(int index) const;
  bool GetCornerPoint(int index, Point& corner) const;

  // The box along the axes that holds all corners. Coordinates that are NaN do not count: when all of an axis are, its low
  // bound is the largest double and its high bound the lowest. Always true.
  bool GetBoundaries(double& left, double& bottom, double& right, double& top) const;

 private:
  static constexpr int kCorners = 5;

  bool Compute();

  // Where corner 0 would be if `refCode`, 0 to 8, were the reference point's place; z is 0.
  Point CalcPoint(short refCode, double sine, double cosine) const;

  short m_refCode;
  Point m_refPoint;
  double m_height;
  double m_width;
  double m_rotation;
  Point m_corners[kCorners];
};
