// Which soundings of many have their depth written on the chart: so that no two labels touch, and the shoalest keeps its own.
// Neighbours: ChartSoundings.h offers the soundings, ChartDepths.h writes the labels.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "zelbase/geometry/Page.h"

namespace zel {

// Boxes on a sheet, and whether a further one would touch any. Boxes are pages with bottom below top, whichever way the sheet runs.
// Asking and adding take a time that does not depend on how many boxes there are, as long as they do not touch.
class BoxIndex {
 public:
  // For boxes that lie mainly within `area`; `cellWidth` and `cellHeight` are near the size of a usual box. What lies outside counts
  // too, more slowly.
  BoxIndex(const Page& area, double cellWidth, double cellHeight);

  // Whether `box` shares more than an edge with none of those added.
  bool IsFree(const Page& box) const;

  void Add(const Page& box);

 private:
  struct Range {
    std::size_t fromColumn, toColumn, fromRow, toRow;  // both ends included
  };
  Range CellsOf(const Page& box) const;

  Page m_area;
  double m_cellWidth, m_cellHeight;
  std::size_t m_columns, m_rows;
  std::vector<std::vector<std::size_t>> m_cells;  // numbers of boxes
  std::vector<Page> m_boxes;
};

// A sounding that may have a label.
struct LabelCandidate {
  double x = 0.0, y = 0.0;                                      // on the sheet
  double z = -std::numeric_limits<double>::infinity();          // metres, upwards
  std::size_t index = std::numeric_limits<std::size_t>::max();  // of the sounding
};

// Keeps the shoalest sounding of each cell of a sheet. Offering is a few steps a sounding; the memory is the cells' alone.
class LabelCandidates {
 public:
  LabelCandidates(const Page& area, double cellWidth, double cellHeight);

  // Of equal ones in a cell the first offered stays. What lies outside the area is passed over.
  void Offer(double x, double y, double z, std::size_t index) {
    const double column = (x - m_area.left) / m_cellWidth, row = (y - m_area.bottom) / m_cellHeight;
    if (!(column >= 0.0 && column < m_columns && row >= 0.0 && row < m_rows)) return;
    LabelCandidate& cell = m_cells[static_cast<std::size_t>(row) * m_stride + static_cast<std::size_t>(column)];
    if (z > cell.z) cell = {x, y, z, index};
  }

  // One a cell that has any, the shoalest first, of equal ones the first offered.
  std::vector<LabelCandidate> ByShoalest() const;

 private:
  Page m_area;
  double m_cellWidth, m_cellHeight;
  double m_columns, m_rows;
  std::size_t m_stride;
  std::vector<LabelCandidate> m_cells;
};

}  // namespace zel
