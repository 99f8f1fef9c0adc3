#include "survey/SurveyArea.h"

#include <algorithm>

namespace zel {
namespace {

// Strips times edges stays below this.
constexpr std::size_t kMostEntries = 4000000;
constexpr std::size_t kMostStrips = 2048;

}  // namespace

SurveyArea::SurveyArea(const std::vector<SurveyPolygon>& polygons) {
  std::vector<Edge> edges;
  for (const SurveyPolygon& polygon : polygons) {
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      const Point& a = polygon[i];
      const Point& b = polygon[(i + 1) % polygon.size()];
      m_page |= a;
      if (a.y == b.y) continue;
      const Point& low = a.y < b.y ? a : b;
      const Point& high = a.y < b.y ? b : a;
      edges.push_back({low.x, low.y, high.y, (high.x - low.x) / (high.y - low.y)});
    }
  }
  if (polygons.empty()) return;
  m_strips.resize(std::clamp(kMostEntries / std::max<std::size_t>(edges.size(), 1), std::size_t{1}, kMostStrips));
  m_stripsPerMetre = m_page.Height() > 0.0 ? static_cast<double>(m_strips.size()) / m_page.Height() : 0.0;
  for (const Edge& edge : edges) Add(edge);
}

std::size_t SurveyArea::StripOf(double y) const {
  return std::min(static_cast<std::size_t>((y - m_page.bottom) * m_stripsPerMetre), m_strips.size() - 1);
}

void SurveyArea::Add(const Edge& edge) {
  const std::size_t last = StripOf(edge.endY);
  for (std::size_t i = StripOf(edge.y); i <= last; ++i) m_strips[i].push_back(edge);
}

bool SurveyArea::Holds(double x, double y) const {
  if (m_strips.empty()) return true;
  if (!m_page.IsPointInPage(x, y)) return false;
  bool inside = false;
  for (const Edge& edge : m_strips[StripOf(y)]) {
    if (y >= edge.y && y < edge.endY && x < edge.x + (y - edge.y) * edge.slope) inside = !inside;
  }
  return inside;
}

}  // namespace zel
