// The design of a survey as a surface: at which height the bottom is to lie at a place, and how far along the design line that is.
// Neighbours: Survey.h has the line itself; SurveySection.h and SurveyVolumes.h ask here.
#pragma once

#include <vector>

#include "survey/Survey.h"
#include "zelbase/geometry/Page.h"

namespace zel {

// A place beside the design line.
struct DesignPlace {
  double chainage = 0.0;
  double offset = 0.0;  // metres from the line, never negative
  double design = 0.0;  // z of the design there: the line's, raised by the slope where it lies beside the floor
  double line = 0.0;    // z of the line
  std::size_t segment = 0;
};

// Each place belongs to the nearest point of the line in the plan. The floor is as wide as the design says; beside it the design rises by
// the slope, as far as that reaches. A place before the beginning or behind the end of a section of the line belongs to no design.
class DesignSurface {
 public:
  // Points beyond which no surface is made of a line.
  static constexpr std::size_t kMostPoints = 5000;

  // `reach`: places up to this far from the line are found, also where the design does not reach.
  DesignSurface(const SurveyDesign& design, double reach);

  // False when the place lies further than the reach from the line, or beyond an end.
  bool Find(double x, double y, DesignPlace& place) const;

  // How far from the line the design applies.
  double HalfWidth() const { return m_halfFloor + m_slopeWidth; }

  // Around all places that can be found.
  const Page& Bounds() const { return m_page; }

  // Whether the design reaches a place that was found.
  bool Applies(const DesignPlace& place) const { return place.offset <= HalfWidth(); }

 private:
  struct Segment {
    Point start;
    double dx, dy, dz, length;
    double chainage;
    bool first, last;  // of its section
  };

  void AddSegments(LineData& line);
  void MakeCells();
  bool Nearest(const std::vector<unsigned int>& candidates, double x, double y, DesignPlace& place) const;
  std::size_t Column(double x) const;
  std::size_t Row(double y) const;

  std::vector<Segment> m_segments;
  double m_halfFloor, m_slopeWidth, m_slope, m_reach;
  Page m_page;
  // Candidates by cell, so that a place is compared with the segments near it.
  std::size_t m_columns = 1, m_rows = 1;
  std::vector<std::vector<unsigned int>> m_cells;
};

// Reads the design line from a text of points, a section a run, with its over-depth line. `design` keeps no line when there is none to
// be had; what is wrong is reported.
void ReadDesign(const std::string& path, double offset, bool offsetIsVertical, SurveyDesign& design);

// z of the over-depth line at a chainage; `fallback` where it has none.
double OverDepthAt(const SurveyDesign& design, double chainage, double fallback);

}  // namespace zel
