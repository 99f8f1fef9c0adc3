#include "zelbase/geometry/OffsetLineData.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "zelbase/geometry/detail/LineDataSource.h"
#include "zelbase/geometry/detail/ProfileFolds.h"
#include "zelbase/geometry/detail/ProfileOffset.h"

OffsetLineData::OffsetLineData(LineData* source, bool ownsSource)
    : LineData("Offset"), m_source(zelbase::detail::HoldSource(source, ownsSource)) {}

bool OffsetLineData::GetModelExtents(Page& page) { return m_source != nullptr && m_source->GetModelExtents(page); }

void OffsetLineData::SetAttributes(const CAttributeMap& attributes) {
  if (m_source != nullptr) m_source->SetAttributes(attributes);
}

bool OffsetLineData::LoadLineData(const std::string& a, const std::string& b, const CenterLine& line) {
  m_points.clear();
  if (m_source == nullptr || !m_source->LoadLineData(a, b, line)) return false;
  ApplyOffset();
  return true;
}

void OffsetLineData::SetOffset(double offset) { m_offset = offset; }

double OffsetLineData::GetOffset() const { return m_offset; }

void OffsetLineData::SetZShift(double zShift) { m_zShift = zShift; }

double OffsetLineData::GetZShift() const { return m_zShift; }

void OffsetLineData::SetMaxZ(double maxZ, bool enabled) {
  m_maxZ = maxZ;
  m_maxZEnabled = enabled;
}

double OffsetLineData::GetMaxZ() const { return m_maxZ; }

bool OffsetLineData::IsMaxZEnabled() const { return m_maxZEnabled; }

double OffsetLineData::GetTolerance() const { return m_tolerance; }

bool OffsetLineData::ApplyOffset() {
  m_points.clear();
  if (m_source == nullptr) return true;
  std::vector<ProfilePoint> points = zelbase::detail::LiftedPoints(*m_source, m_zShift);
  if (m_offset != 0.0) {
    points = zelbase::detail::OffsetSegments(points, m_offset, m_tolerance);
    zelbase::detail::CutFolds(points);
  }
  m_points = std::move(points);
  if (m_maxZEnabled) ClipToMaxZ();
  return true;
}

void OffsetLineData::ClipToMaxZ() {
  std::vector<ProfilePoint> clipped;
  clipped.reserve(m_points.size());
  // Kept: the partner of every point is the origin, never the point before; levels of stored designs rely on it.
  const ProfilePoint b;
  for (ProfilePoint cur : m_points) {
    if ((cur.z - m_maxZ) * (b.z - m_maxZ) < 0 && !cur.sectionStart) {
      const double t = (m_maxZ - b.z) / (cur.z - b.z);
      clipped.emplace_back(b.x + (cur.x - b.x) * t, b.y + (cur.y - b.y) * t, m_maxZ, b.distance + (cur.distance - b.distance) * t, false);
    }
    // Kept: the level is a floor; what lies below is lifted, and a flagged point too.
    if (m_maxZ > cur.z) cur.z = m_maxZ;
    clipped.push_back(cur);
  }
  m_points = std::move(clipped);
}
