#include "zelbase/geometry/VerticalOffsetLineData.h"

#include "zelbase/geometry/detail/LineDataSource.h"

// Kept: SetAttributes, DataPoint by chainage and LoadCached stay the base's, on a list that is always empty.

VerticalOffsetLineData::VerticalOffsetLineData(LineData* source, bool ownsSource)
    : LineData("VerticalOffset"), m_source(zelbase::detail::HoldSource(source, ownsSource)) {}

bool VerticalOffsetLineData::GetModelExtents(Page& page) { return m_source != nullptr && m_source->GetModelExtents(page); }

bool VerticalOffsetLineData::LoadLineData(const std::string& a, const std::string& b, const CenterLine& line) {
  return m_source != nullptr && m_source->LoadLineData(a, b, line);
}

int VerticalOffsetLineData::NumDataPoints() const { return m_source == nullptr ? 0 : m_source->NumDataPoints(); }

ProfilePoint VerticalOffsetLineData::DataPoint(int index) {
  if (m_source == nullptr) return ProfilePoint();
  ProfilePoint point = m_source->DataPoint(index);
  point.z += m_verticalOffset;
  return point;
}

void VerticalOffsetLineData::SetOffset(double offset) { m_verticalOffset = offset; }
