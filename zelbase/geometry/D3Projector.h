// Lines of a scene in space, seen from above or aslant, drawn on a window. Neighbours: CoordinateSystem.h, which maps the projected
// plane to pixels; Rotation.h for turning points by themselves.
#pragma once

#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/platform/CRect.h"
#include "zelbase/platform/ZelBaseApi.h"

class CDC;

// The eye stands above the plane z = 0, at z = view distance, and looks down. The scene is shifted by the reference position, turned
// by the bearing, tilted by the observe angle and projected on that plane from the eye. All in metres and degrees.
//
//   D3Projector projector;
//   projector.SetPixelWindow(CRect(0, 0, 800, 600));
//   projector.GetCoordinateSystem().SetWorldWindow(Page(-400, -300, 400, 300));
//   projector.SetViewDistance(1000);
//   projector.SetRefXYposition(5000, 7000);
//   projector.SetObserveAngle(60);
//   projector.DrawLine(dc, Point(5000, 7000, 0), Point(5100, 7000, -20), false);
//
// What is not finite is projected as the arithmetic goes; a view distance that is no number has nothing in front of the eye.
//
// One thread at a time, the one that paints. Copies are independent.
class ZELBASE_API D3Projector {
 public:
  D3Projector() = default;
  D3Projector(const D3Projector&) = default;
  D3Projector& operator=(const D3Projector&) = default;
  virtual ~D3Projector() = default;

  // Stored for callers; nothing here goes by it.
  void SetViewWindow(const Page& page) { m_viewWindow = page; }
  const Page& GetViewWindow() const { return m_viewWindow; }

  // The pixel window of the coordinate system. A bottom above the top is taken as the top, a right left of the left as the left; that
  // leaves no width or height, and the answer is false as CoordinateSystem::SetPixelWindow gives it.
  bool SetPixelWindow(CRect rect);

  // For its world window, which also clips what is drawn.
  CoordinateSystem& GetCoordinateSystem() { return m_coordinateSystem; }
  const CoordinateSystem& GetCoordinateSystem() const { return m_coordinateSystem; }

  void SetViewDistance(double distance) { m_viewDistance = distance; }
  double GetViewDistance() const { return m_viewDistance; }

  void SetObserveAngle(double angle) { m_observeAngle = angle; }
  double GetObserveAngle() const { return m_observeAngle; }

  void SetRefXYposition(double x, double y);
  const Point& GetRefXYposition() const { return m_refXY; }

  void SetBearing(double bearing) { m_bearing = bearing; }
  double GetBearing() const { return m_bearing; }

  // Off, the scene is not tilted. What is nearer to the eye is larger all the same.
  void SetPerspective(bool on) { m_perspective = on; }
  bool IsPerspectiveOn() const { return m_perspective; }

  // Where the ray from the eye through `point` meets the plane z = 0. False, x and y untouched, for a point level with the eye or
  // behind it.
  bool Conv3dTo2d(Point point, double& x, double& y) const;

  // Turns the point by `b` degrees around z and tilts it by `a` degrees around x. `out` may be the point itself.
  void Rotate(const Point& point, double a, double b, Point& out) const;

  // Draws the line between two points of the scene; with `noBearing` it is not turned. What is not in front of the eye is left out:
  // a line that passes the eye ends where it is 0.1 metres before it (and is not drawn at a view distance beside which that is
  // nothing); one whose other end is nearer than that is prolonged back to there. Ends that fall on one point of the plane, as
  // those of a line of height below the eye do, and null draw nothing.
  void DrawLine(CDC* dc, const Point& p1, const Point& p2, bool noBearing) const;

 private:
  Point ToView(const Point& point, bool noBearing) const;
  bool IsInFront(const Point& point) const { return m_viewDistance - point.z > 0; }
  Point JustBeforeEye(const Point& front, const Point& behind) const;

  Page m_viewWindow = Page(0, 0, 0, 0);
  CoordinateSystem m_coordinateSystem;
  double m_viewDistance = 1;
  Point m_refXY;
  double m_observeAngle = 0;
  double m_bearing = 0;
  bool m_perspective = true;
};
