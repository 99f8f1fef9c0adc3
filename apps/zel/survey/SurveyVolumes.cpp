#include "survey/SurveyVolumes.h"

#include <algorithm>
#include <cmath>

namespace zel {
namespace {

// The steps of the difference colours by rising value; those without a height, and what is no number, are left out.
std::vector<VolumeBand> BandsOf(const ColorTable& colours) {
  std::vector<VolumeBand> bands(1);
  bands[0].color = colours.LowColor();
  bands[0].name = colours.LowColorName();
  for (int i = 0; i < colours.NumEntries(); ++i) {
    const double value = colours.EntryValue(i);
    const bool rises = std::isfinite(value) && (bands.size() == 1 || value > bands.back().low);
    if (!rises) continue;
    bands.back().high = value;
    VolumeBand& band = bands.emplace_back();
    band.low = value;
    band.color = colours.EntryColor(i);
    band.name = colours.EntryName(i);
  }
  bands.front().low = bands.front().high;
  bands.back().high = bands.back().low;
  bands.front().isLowest = bands.back().isHighest = true;
  return bands;
}

VolumeBand& BandOf(std::vector<VolumeBand>& bands, double difference) {
  const auto above =
      std::upper_bound(bands.begin() + 1, bands.end(), difference, [](double value, const VolumeBand& band) { return value < band.low; });
  return *(above - 1);
}

void AddCell(SurveyVolumes& volumes, double difference, double overDepth, double area) {
  ++volumes.cells;
  (difference > 0.0 ? volumes.above : volumes.below) += std::abs(difference) * area;
  volumes.belowOverDepth += std::max(0.0, overDepth - difference) * area;
  VolumeBand& band = BandOf(volumes.bands, difference);
  ++band.cells;
  band.area += area;
  band.volume += difference * area;
}

}  // namespace

SurveyCells::SurveyCells(const Extents3D& extents, double cellSize) : m_size(cellSize) {
  if (!extents.IsValid()) return;
  const auto count = [&extents, this] {
    return (std::floor(extents.GetXDiff() / m_size) + 1.0) * (std::floor(extents.GetYDiff() / m_size) + 1.0);
  };
  while (count() > kMostCells) m_size *= 2.0;
  m_left = extents.xMin;
  m_bottom = extents.yMin;
  m_columns = static_cast<std::size_t>(extents.GetXDiff() / m_size) + 1;
  m_rows = static_cast<std::size_t>(extents.GetYDiff() / m_size) + 1;
  m_sums.resize(m_columns * m_rows);
  m_counts.resize(m_columns * m_rows);
}

void SurveyCells::Add(const Point& point) {
  const std::size_t column = std::min(static_cast<std::size_t>((point.x - m_left) / m_size), m_columns - 1);
  const std::size_t row = std::min(static_cast<std::size_t>((point.y - m_bottom) / m_size), m_rows - 1);
  m_sums[row * m_columns + column] += point.z;
  ++m_counts[row * m_columns + column];
}

Point SurveyCells::Middle(std::size_t cell) const {
  const std::size_t row = cell / m_columns;
  return Point(m_left + (static_cast<double>(cell % m_columns) + 0.5) * m_size, m_bottom + (static_cast<double>(row) + 0.5) * m_size, 0.0);
}

double SurveyCells::Covered(const SurveyArea& area) const {
  std::size_t cells = 0;
  for (std::size_t i = 0; i < m_counts.size(); ++i) {
    if (m_counts[i] == 0) continue;
    const Point middle = Middle(i);
    cells += area.Holds(middle.x, middle.y) ? 1 : 0;
  }
  return static_cast<double>(cells) * m_size * m_size;
}

SurveyVolumes SurveyCells::Volumes(const SurveyArea& area, const SurveyDesign& design, const DesignSurface& surface,
                                   const ColorTable& colours) const {
  SurveyVolumes volumes;
  volumes.cellSize = m_size;
  volumes.bands = BandsOf(colours);
  for (std::size_t i = 0; i < m_counts.size(); ++i) {
    if (m_counts[i] == 0) continue;
    const Point middle = Middle(i);
    DesignPlace place;
    if (!surface.Find(middle.x, middle.y, place) || !surface.Applies(place) || !area.Holds(middle.x, middle.y)) continue;
    // The over-depth line lies as far below the slope as below the floor.
    const double overDepth = OverDepthAt(design, place.chainage, place.line) - place.line;
    AddCell(volumes, m_sums[i] / m_counts[i] - place.design, overDepth, m_size * m_size);
  }
  volumes.area = static_cast<double>(volumes.cells) * m_size * m_size;
  return volumes;
}

}  // namespace zel
