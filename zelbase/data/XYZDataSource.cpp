#include "zelbase/data/XYZDataSource.h"

#include <limits>

namespace {

// Each axis by itself. A comparison with NaN is false, so NaN neither replaces nor is replaced.
void Widen(Point& minimum, Point& maximum, const Point& point) {
  if (point.x < minimum.x) minimum.x = point.x;
  if (point.y < minimum.y) minimum.y = point.y;
  if (point.z < minimum.z) minimum.z = point.z;
  if (point.x > maximum.x) maximum.x = point.x;
  if (point.y > maximum.y) maximum.y = point.y;
  if (point.z > maximum.z) maximum.z = point.z;
}

}  // namespace

// The points of one pass over a source. They are published at its beginning, so that a source that asks for its own extents
// meanwhile does not begin another pass; and they stay alive to its end, whatever the source does.
class XYZDataSource::Pass {
 public:
  explicit Pass(XYZDataSource& source) : m_source(source) {
    m_source.m_minimum = minimum;
    m_source.m_maximum = maximum;
  }
  // A pass that an exception ends leaves nothing half done.
  ~Pass() {
    if (!m_complete && IsCurrent()) m_source.Clear();
  }
  Pass(const Pass&) = delete;
  Pass& operator=(const Pass&) = delete;

  // False as soon as the source has called Clear.
  bool IsCurrent() const { return m_source.m_minimum == minimum; }

  bool Complete() { return m_complete = IsCurrent(); }

  const std::shared_ptr<TimePoint> minimum = std::make_shared<TimePoint>();
  const std::shared_ptr<TimePoint> maximum = std::make_shared<TimePoint>();

 private:
  XYZDataSource& m_source;
  bool m_complete = false;
};

XYZDataSource::~XYZDataSource() { Clear(); }

void XYZDataSource::Clear() const {
  m_minimum.reset();
  m_maximum.reset();
  m_numberOfPoints = -1;
}

int XYZDataSource::GetNumberOfPoints() {
  Point minimum, maximum;
  GetExtents(minimum, maximum);
  return m_numberOfPoints;  // Kept: that of the last pass, until Clear; an empty source is asked again every time
}

bool XYZDataSource::GetExtents(Point& minimum, Point& maximum) {
  if (m_minimum == nullptr && !ComputeExtents()) return false;
  minimum = m_minimum->position;
  maximum = m_maximum->position;
  return true;
}

bool XYZDataSource::ComputeExtents() {
  Pass pass(*this);
  if (!GetFirstPoint(*pass.minimum) || !pass.IsCurrent()) return false;
  m_numberOfPoints = 1;
  pass.maximum->position = pass.minimum->position;
  pass.maximum->time = pass.minimum->time;  // Kept: the time of both stays that of the first point

  TimePoint point;
  while (GetNextPoint(point) && pass.IsCurrent()) {
    Widen(pass.minimum->position, pass.maximum->position, point.position);
    if (m_numberOfPoints < std::numeric_limits<int>::max()) ++m_numberOfPoints;
  }
  return pass.Complete();
}
