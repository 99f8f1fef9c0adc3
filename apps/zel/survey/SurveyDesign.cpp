#include "survey/SurveyDesign.h"

#include <algorithm>
#include <cmath>

#include "PointFile.h"
#include "survey/SurveyFaults.h"
#include "survey/SurveySoundings.h"
#include "zelbase/geometry/OffsetLineData.h"
#include "zelbase/geometry/VerticalOffsetLineData.h"

namespace zel {
namespace {

constexpr const char* kContext = "Design";
constexpr double kShortest = 1e-6;  // metres, of a segment
constexpr double kLeastReach = 0.01;
constexpr std::size_t kMostCells = 65536;
constexpr std::size_t kMostEntries = 20000000;  // cells times segments stays below this

// ---- reading ----

// What was left out of the sections of a line.
struct LeftOut {
  std::size_t offGrid = 0, beyond = 0, single = 0;

  void Report(const std::string& path) const {
    if (offGrid > 0) ReportFault(kContext, Counted(offGrid, "point is", "points are") + " too far away to be in any grid", path);
    if (single > 0) ReportFault(kContext, Counted(single, "section has", "sections have") + " fewer than two points", path);
    if (beyond == 0) return;
    ReportFault(kContext, "the line has too many points: the first " + std::to_string(DesignSurface::kMostPoints) + " are used", path);
  }
};

// Leaves out points that are on no grid or repeat the one before, and sections of a single point.
std::vector<std::vector<Point>> UsableSections(const PointFile& file, LeftOut& leftOut) {
  std::vector<std::vector<Point>> sections;
  std::size_t points = 0;
  for (const std::vector<Point>& run : file.runs) {
    std::vector<Point> section;
    for (const Point& point : run) {
      if (!IsOnGrid(point)) {
        ++leftOut.offGrid;
      } else if (points == DesignSurface::kMostPoints) {
        ++leftOut.beyond;
      } else if (section.empty() || point.Dist2D(section.back()) > kShortest) {
        section.push_back(point);
        ++points;
      }
    }
    if (section.size() == 1) ++leftOut.single;
    if (section.size() > 1) sections.push_back(std::move(section));
  }
  return sections;
}

// A line with the source that it is on.
template <class Line>
struct Held {
  explicit Held(const std::shared_ptr<LineData>& line) : source(line), shifted(line.get(), false) {}
  std::shared_ptr<LineData> source;
  Line shifted;
};

std::shared_ptr<LineData> OverDepthLine(const SurveyDesign& design) {
  if (design.offsetIsVertical) {
    const auto held = std::make_shared<Held<VerticalOffsetLineData>>(design.line);
    held->shifted.SetOffset(design.offset);
    return std::shared_ptr<LineData>(held, &held->shifted);
  }
  const auto held = std::make_shared<Held<OffsetLineData>>(design.line);
  held->shifted.SetOffset(design.offset);
  held->shifted.ApplyOffset();
  return std::shared_ptr<LineData>(held, &held->shifted);
}

}  // namespace

void ReadDesign(const std::string& path, double offset, bool offsetIsVertical, SurveyDesign& design) {
  PointFile file;
  if (!ReadReported(kContext, path, file)) return;
  LeftOut leftOut;
  const std::vector<std::vector<Point>> sections = UsableSections(file, leftOut);
  leftOut.Report(path);
  if (sections.empty()) {
    ReportFault(kContext, "the design line has fewer than two points", path);
    return;
  }
  design.line = std::make_shared<SurveyLine>(sections);
  design.start = design.line->DataPoint(0).distance;
  design.end = design.line->DataPoint(design.line->NumDataPoints() - 1).distance;
  design.offset = offset;
  design.offsetIsVertical = offsetIsVertical;
  if (offset != 0.0) design.overDepth = OverDepthLine(design);
}

// The line is walked by index: a line that shifts heights alone has no answer by chainage. Its loops have been cut out, so that its
// chainages rise.
double OverDepthAt(const SurveyDesign& design, double chainage, double fallback) {
  if (design.overDepth == nullptr) return fallback;
  LineData& line = *design.overDepth;
  int low = 0, high = line.NumDataPoints() - 1;
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    (line.DataPoint(middle).distance <= chainage ? low : high) = middle;
  }
  if (high < 1) return fallback;
  const ProfilePoint a = line.DataPoint(low), b = line.DataPoint(high);
  const bool between = chainage >= a.distance && chainage <= b.distance && b.distance > a.distance && !b.sectionStart;
  if (between) return a.z + (chainage - a.distance) / (b.distance - a.distance) * (b.z - a.z);
  // The offset line may begin a little behind the design's beginning, or end before its end.
  return chainage < a.distance ? a.z : b.z;
}

// ---- the surface ----

DesignSurface::DesignSurface(const SurveyDesign& design, double reach)
    : m_halfFloor(design.width / 2.0),
      m_slopeWidth(design.slope > 0.0 ? design.slopeWidth : 0.0),
      m_slope(design.slope),
      m_reach(std::max({reach, m_halfFloor + m_slopeWidth, kLeastReach})) {
  if (!design.IsGiven()) return;
  AddSegments(*design.line);
  if (!m_segments.empty()) MakeCells();
}

void DesignSurface::AddSegments(LineData& line) {
  for (int i = 1; i < line.NumDataPoints(); ++i) {
    const ProfilePoint a = line.DataPoint(i - 1), b = line.DataPoint(i);
    if (b.sectionStart) continue;
    const bool last = i + 1 == line.NumDataPoints() || line.DataPoint(i + 1).sectionStart;
    m_segments.push_back(
        {a.Absolute(), b.x - a.x, b.y - a.y, b.z - a.z, std::hypot(b.x - a.x, b.y - a.y), a.distance, a.sectionStart, last});
    m_page |= a.Absolute();
    m_page |= b.Absolute();
  }
  m_page.Set(m_page.left - m_reach, m_page.bottom - m_reach, m_page.right + m_reach, m_page.top + m_reach);
}

std::size_t DesignSurface::Column(double x) const {
  return static_cast<std::size_t>(
      std::clamp((x - m_page.left) / m_page.Width() * static_cast<double>(m_columns), 0.0, static_cast<double>(m_columns - 1)));
}

std::size_t DesignSurface::Row(double y) const {
  return static_cast<std::size_t>(
      std::clamp((y - m_page.bottom) / m_page.Height() * static_cast<double>(m_rows), 0.0, static_cast<double>(m_rows - 1)));
}

void DesignSurface::MakeCells() {
  const std::size_t cells = std::clamp(kMostEntries / m_segments.size(), std::size_t{1}, kMostCells);
  m_columns = m_rows = static_cast<std::size_t>(std::sqrt(static_cast<double>(cells)));
  m_cells.resize(m_columns * m_rows);
  const double width = m_page.Width() / static_cast<double>(m_columns), height = m_page.Height() / static_cast<double>(m_rows);
  const double near = m_reach + std::hypot(width, height) / 2.0;
  for (unsigned int i = 0; i < m_segments.size(); ++i) {
    const Segment& segment = m_segments[i];
    Page around = Page(segment.start, segment.start) |= segment.start + Point(segment.dx, segment.dy, 0.0);
    const std::size_t top = Row(around.top + m_reach), right = Column(around.right + m_reach);
    for (std::size_t row = Row(around.bottom - m_reach); row <= top; ++row) {
      for (std::size_t column = Column(around.left - m_reach); column <= right; ++column) {
        const double x = m_page.left + (static_cast<double>(column) + 0.5) * width - segment.start.x;
        const double y = m_page.bottom + (static_cast<double>(row) + 0.5) * height - segment.start.y;
        const double t = std::clamp((x * segment.dx + y * segment.dy) / (segment.length * segment.length), 0.0, 1.0);
        if (std::hypot(x - t * segment.dx, y - t * segment.dy) <= near) m_cells[row * m_columns + column].push_back(i);
      }
    }
  }
}

bool DesignSurface::Nearest(const std::vector<unsigned int>& candidates, double x, double y, DesignPlace& place) const {
  double nearest = m_reach * m_reach, part = 0.0;
  bool found = false, beyond = false;
  for (const unsigned int i : candidates) {
    const Segment& segment = m_segments[i];
    const double px = x - segment.start.x, py = y - segment.start.y;
    const double along = (px * segment.dx + py * segment.dy) / (segment.length * segment.length);
    const double t = along < 0.0 ? 0.0 : along > 1.0 ? 1.0 : along;
    const double qx = px - t * segment.dx, qy = py - t * segment.dy;
    const double square = qx * qx + qy * qy;
    if (square > nearest || (found && square == nearest)) continue;
    nearest = square;
    part = t;
    place.segment = i;
    beyond = (along < 0.0 && segment.first) || (along > 1.0 && segment.last);
    found = true;
  }
  if (!found || beyond) return false;
  const Segment& segment = m_segments[place.segment];
  place.offset = std::sqrt(nearest);
  place.chainage = segment.chainage + part * segment.length;
  place.line = segment.start.z + part * segment.dz;
  return true;
}

bool DesignSurface::Find(double x, double y, DesignPlace& place) const {
  if (m_segments.empty() || !m_page.IsPointInPage(x, y)) return false;
  if (!Nearest(m_cells[Row(y) * m_columns + Column(x)], x, y, place)) return false;
  const double beside = place.offset - m_halfFloor;
  place.design = place.line + (beside > 0.0 && m_slope > 0.0 ? beside / m_slope : 0.0);
  return true;
}

}  // namespace zel
