// The pieces of a clockwise arc that lie in a page, in three steps: find the crossings with the edges, select
// those on the arc, write the pieces between them. Internal to the library; Page::ClipCircle says what comes
// out.
#pragma once

#include <cstddef>

#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"

namespace zelbase::detail {

// All angles are bearings in degrees. Lives on the stack and allocates nothing; trigonometry is taken of
// crossings and of the start only.
class ArcPieces {
 public:
  // `radius` is not negative. A page whose edges stand in the other order is mirrored, and the centre with
  // it.
  ArcPieces(const Page& page, const Point& centre, double radius, double start);

  void FindCrossings();
  void SelectCrossings(double end);

  // The number of pairs written, 0 to 5.
  int Write(double* starts, double* ends);

 private:
  static constexpr std::size_t kMostBearings = 10;  // the start, two crossings an edge, the end

  void CrossHorizontal(double edge);
  void CrossVertical(double edge);
  void SortCrossings();
  bool BeginsInside() const;
  bool GoesInside(const Point& start) const;

  Page m_page;
  Point m_centre;
  double m_radius;
  double m_bearings[kMostBearings];
  std::size_t m_size = 1;  // of m_bearings; [0] is the start
  bool m_startOnEdge = false;
};

}  // namespace zelbase::detail
