// Drawing: the world on a window's pixels, and a line drawn on a surface that keeps every call.
#include <cstdio>

#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/platform/RecordingSurface.h"

int main() {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 800, 600));
  system.SetWorldWindow(Page(1000, 2000, 1800, 2600));
  const CPoint pixel = system.WorldToPixel(1100.0, 2500.0);
  std::printf("pixel %d, %d\n", pixel.x, pixel.y);
  const Point world = system.PixelToWorld(pixel);
  std::printf("its middle is %.1f, %.1f\n", world.x, world.y);

  RecordingSurface surface;
  Line(Point(900, 2300, 0), Point(1400, 2300, 0)).DrawLine(&surface, system, system.worldWindow);
  for (const std::string& call : surface.Painted()) std::printf("%s\n", call.c_str());
  return 0;
}

// Prints:
//   pixel 100, 100
//   its middle is 1100.5, 2499.5
//   MoveTo 0 300
//   LineTo 400 300
//   SetPixel 400 300 0
