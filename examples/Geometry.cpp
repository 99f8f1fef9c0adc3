// Geometry: a line clipped to a page, a polygon to the same page, and a profile's over-depth line.
#include <cstdio>
#include <vector>

#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/OffsetLineData.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/PolyClipper.h"

class Design : public LineData {
 public:
  Design() : LineData("Design") {
    m_points.emplace_back(Point(0, 0, -10), 0.0, true);
    m_points.emplace_back(Point(100, 0, -10), 100.0, false);
  }
};

int main() {
  const Page page(0.0, 0.0, 10.0, 10.0);
  Line line(Point(-5, 2, 0), Point(20, 2, 0));
  if (page.ClipLine(line)) std::printf("line from %.0f to %.0f\n", line.start.x, line.end.x);

  PolyClipper clipper;
  clipper.SetPage(page);
  clipper.FillPolygon({Point(5, 5, 0), Point(15, 5, 0), Point(15, 15, 0), Point(5, 15, 0)});
  std::printf("polygon of %d corners\n", clipper.GetOutputSize());

  Design design;
  OffsetLineData overDepth(&design, false);
  overDepth.SetOffset(-0.5);
  overDepth.ApplyOffset();
  const ProfilePoint point = overDepth.DataPoint(0);
  std::printf("over-depth at %.1f m\n", point.z);
  return 0;
}

// Prints:
//   line from 0 to 10
//   polygon of 5 corners
//   over-depth at -10.5 m
