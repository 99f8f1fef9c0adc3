// The soundings of a survey gathered in square cells, and the volumes between their mean heights and the design. Neighbours:
// SurveyDesign.h, the design as a surface; SurveyComputation.cpp, which hands the soundings over.
#pragma once

#include <vector>

#include "survey/Survey.h"
#include "survey/SurveyArea.h"
#include "survey/SurveyDesign.h"

namespace zel {

class SurveyCells {
 public:
  static constexpr double kMostCells = 16000000.0;

  // Over the extents. A cell size that would give more cells than that is made larger.
  SurveyCells(const Extents3D& extents, double cellSize);

  // A point within the extents.
  void Add(const Point& point);

  double CellSize() const { return m_size; }

  // Of all cells with a sounding whose middle lies in the area.
  double Covered(const SurveyArea& area) const;

  // Of these, those whose middle the design reaches.
  SurveyVolumes Volumes(const SurveyArea& area, const SurveyDesign& design, const DesignSurface& surface, const ColorTable& colours) const;

 private:
  Point Middle(std::size_t cell) const;

  double m_size;
  double m_left = 0.0, m_bottom = 0.0;
  std::size_t m_columns = 0, m_rows = 0;
  std::vector<double> m_sums;
  std::vector<unsigned int> m_counts;
};

}  // namespace zel
