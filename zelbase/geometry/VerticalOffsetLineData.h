// A profile line shown higher or lower than it is. Neighbours: OffsetLineData.h shifts a line at right angles to itself,
// LineData.h is what both show.
#pragma once

#include <memory>
#include <string>

#include "zelbase/geometry/LineData.h"
#include "zelbase/platform/ZelBaseApi.h"

// Adds an offset to each height of a source line at the moment it is asked for, and stores nothing. Extents, loading and the
// number of points are the source's.
//
// What works on a stored list of points finds none here: DataPoint by chainage answers false, LoadCached loads the source, at
// the first request of its two strings, and answers false, and SetAttributes goes nowhere. Callers go by index.
//
// Copies share the source; where it is owned, the last copy destroys it. Without a source the line is empty: extents and
// loading fail.
class ZELBASE_API VerticalOffsetLineData : public LineData {
 public:
  // A line on `source`, with offset 0. With `ownsSource` the source is destroyed with this line, otherwise it must outlive it.
  VerticalOffsetLineData(LineData* source, bool ownsSource);

  using LineData::DataPoint;

  bool GetModelExtents(Page& page) override;
  bool LoadLineData(const std::string& a, const std::string& b, const CenterLine& line) override;
  int NumDataPoints() const override;

  // The source's point with the offset added to z, also when the source answers an index out of range with a default point.
  ProfilePoint DataPoint(int index) override;

  // Metres, upwards. Takes effect at once.
  void SetOffset(double offset);

 private:
  std::shared_ptr<LineData> m_source;
  double m_verticalOffset = 0.0;
};
