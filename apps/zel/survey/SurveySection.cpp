#include "survey/SurveySection.h"

#include <algorithm>
#include <cmath>

namespace zel {

SectionBuilder::SectionBuilder(const SurveyDesign& design, double step, double corridor) : m_design(design) {
  m_section.step = std::max(step, (design.end - design.start) / kMostRows);
  m_section.corridor = corridor;
  if (design.IsGiven()) AddRows(*design.line);
  m_sums.resize(m_section.rows.size());
}

void SectionBuilder::AddRow(const ProfilePoint& a, const ProfilePoint& b, double chainage, bool sectionStart) {
  const double length = b.distance - a.distance;
  const double part = length > 0.0 ? std::clamp((chainage - a.distance) / length, 0.0, 1.0) : 0.0;
  const Point at = a.Absolute() + (b.Absolute() - a.Absolute()) * part;
  SectionRow& row = m_section.rows.emplace_back();
  row.chainage = chainage;
  row.x = at.x;
  row.y = at.y;
  row.design = at.z;
  row.overDepth = OverDepthAt(m_design, chainage, at.z);
  row.sectionStart = sectionStart;
}

void SectionBuilder::AddRows(LineData& line) {
  const double step = m_section.step;
  for (int i = 1; i < line.NumDataPoints(); ++i) {
    const ProfilePoint a = line.DataPoint(i - 1), b = line.DataPoint(i);
    if (b.sectionStart) continue;
    if (a.sectionStart) AddRow(a, b, a.distance, true);
    const double first = std::floor(a.distance / step) + 1.0;
    for (double multiple = first; multiple * step < b.distance; ++multiple) AddRow(a, b, multiple * step, false);
    const bool last = i + 1 == line.NumDataPoints() || line.DataPoint(i + 1).sectionStart;
    // A multiple of the step that falls on a station belongs to the segment that ends there.
    const bool onStation = std::fmod(b.distance, step) == 0.0;
    if (last || onStation) AddRow(a, b, b.distance, false);
  }
}

void SectionBuilder::Add(const DesignPlace& place, double z) {
  if (place.offset > m_section.corridor) return;
  std::vector<SectionRow>& rows = m_section.rows;
  auto row = std::lower_bound(rows.begin(), rows.end(), place.chainage,
                              [](const SectionRow& candidate, double chainage) { return candidate.chainage < chainage; });
  const bool isNearerBefore =
      row == rows.end() || (row != rows.begin() && place.chainage - (row - 1)->chainage < row->chainage - place.chainage);
  if (isNearerBefore) --row;
  if (std::abs(row->chainage - place.chainage) > m_section.step / 2.0) return;
  row->shoalest = row->soundings == 0 ? z : std::max(row->shoalest, z);
  ++row->soundings;
  m_sums[static_cast<std::size_t>(row - rows.begin())] += z;
}

LongSection SectionBuilder::Finish() {
  for (std::size_t i = 0; i < m_section.rows.size(); ++i) {
    SectionRow& row = m_section.rows[i];
    row.measured = row.soundings > 0;
    if (!row.measured) continue;
    row.bottom = m_sums[i] / row.soundings;
    row.difference = row.bottom - row.design;
  }
  return std::move(m_section);
}

}  // namespace zel
