#include "survey/ChartLabels.h"

#include <algorithm>
#include <cmath>

namespace zel {
namespace {

constexpr double kMostCells = 2000.0;  // a side

double CellsAlong(double length, double cell) {
  const double cells = std::ceil(length / cell);
  return cells >= 1.0 ? std::min(cells, kMostCells) : 1.0;
}

std::size_t CellOf(double offset, double cell, std::size_t cells) {
  const double index = std::floor(offset / cell);
  if (!(index > 0.0)) return 0;
  return index < static_cast<double>(cells) ? static_cast<std::size_t>(index) : cells - 1;
}

}  // namespace

BoxIndex::BoxIndex(const Page& area, double cellWidth, double cellHeight)
    : m_area(area),
      m_columns(static_cast<std::size_t>(CellsAlong(area.Width(), cellWidth))),
      m_rows(static_cast<std::size_t>(CellsAlong(area.Height(), cellHeight))),
      m_cells(m_columns * m_rows) {
  m_cellWidth = std::max(cellWidth, area.Width() / static_cast<double>(m_columns));
  m_cellHeight = std::max(cellHeight, area.Height() / static_cast<double>(m_rows));
}

BoxIndex::Range BoxIndex::CellsOf(const Page& box) const {
  return {CellOf(box.left - m_area.left, m_cellWidth, m_columns), CellOf(box.right - m_area.left, m_cellWidth, m_columns),
          CellOf(box.bottom - m_area.bottom, m_cellHeight, m_rows), CellOf(box.top - m_area.bottom, m_cellHeight, m_rows)};
}

bool BoxIndex::IsFree(const Page& box) const {
  const Range range = CellsOf(box);
  for (std::size_t row = range.fromRow; row <= range.toRow; ++row) {
    for (std::size_t column = range.fromColumn; column <= range.toColumn; ++column) {
      const auto& cell = m_cells[row * m_columns + column];
      if (std::ranges::any_of(cell, [&](std::size_t other) { return m_boxes[other].IsRectInPage(box); })) return false;
    }
  }
  return true;
}

void BoxIndex::Add(const Page& box) {
  const Range range = CellsOf(box);
  for (std::size_t row = range.fromRow; row <= range.toRow; ++row) {
    for (std::size_t column = range.fromColumn; column <= range.toColumn; ++column) {
      m_cells[row * m_columns + column].push_back(m_boxes.size());
    }
  }
  m_boxes.push_back(box);
}

LabelCandidates::LabelCandidates(const Page& area, double cellWidth, double cellHeight)
    : m_area(area), m_columns(CellsAlong(area.Width(), cellWidth)), m_rows(CellsAlong(area.Height(), cellHeight)) {
  m_cellWidth = std::max(cellWidth, area.Width() / m_columns);
  m_cellHeight = std::max(cellHeight, area.Height() / m_rows);
  m_stride = static_cast<std::size_t>(m_columns);
  m_cells.resize(m_stride * static_cast<std::size_t>(m_rows));
}

std::vector<LabelCandidate> LabelCandidates::ByShoalest() const {
  std::vector<LabelCandidate> candidates;
  std::ranges::copy_if(m_cells, std::back_inserter(candidates), [](const LabelCandidate& each) { return std::isfinite(each.z); });
  std::ranges::sort(candidates,
                    [](const LabelCandidate& a, const LabelCandidate& b) { return a.z != b.z ? a.z > b.z : a.index < b.index; });
  return candidates;
}

}  // namespace zel
