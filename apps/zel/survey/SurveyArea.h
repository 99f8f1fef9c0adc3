// Polygons as an area of which millions of points can be asked whether they lie in it. Neighbours: zelbase/geometry/Page.h, by which
// most of what lies outside is told; SurveySoundings.h, which asks.
#pragma once

#include <vector>

#include "survey/Survey.h"
#include "zelbase/geometry/Page.h"

namespace zel {

// By the even-odd rule over all polygons at once, so that a polygon within another is a hole. A point exactly on a side belongs to the
// area on its right or above it. The edges are kept by horizontal strips: a point is compared with those of its strip.
class SurveyArea {
 public:
  // Edges beyond which no area is made: whoever asks would wait for hours. A work area has tens of them.
  static constexpr std::size_t kMostEdges = 20000;

  // Everywhere, when there are no polygons.
  explicit SurveyArea(const std::vector<SurveyPolygon>& polygons = {});

  bool IsEverywhere() const { return m_strips.empty(); }
  bool Holds(double x, double y) const;

 private:
  struct Edge {
    double x, y, endY;  // from its lower end, y < endY
    double slope;       // dx/dy
  };

  void Add(const Edge& edge);
  std::size_t StripOf(double y) const;

  Page m_page;
  double m_stripsPerMetre = 0.0;
  std::vector<std::vector<Edge>> m_strips;
};

}  // namespace zel
