// A second transcription of the polygon clipper, step by step and as slow as it is plain: one flag a point, a
// bubble sort, and a linear search wherever something is looked up. It judges the quick one, and counts which
// of its steps were reached.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/PolyClipper.h"

class LiteralPolyClipper {
 public:
  struct Reached {
    long swaps = 0;          // of the bubble sort
    long ties = 0;           // swaps that mended a pairing
    long jumps = 0;          // from a crossing to its partner
    long closings = 0;       // at a partner that was used
    long dropped = 0;        // a crossing without a partner
    long sections = 0;       // rings begun at a pair
    long stops = 0;          // at the next polygon
    long nowhere = 0;        // edges that are neither in nor out
    long crossedStarts = 0;  // polygons that begin with a crossing
  };

  explicit LiteralPolyClipper(const Page& page) : m_page(page) {}

  bool FillPolygon(const std::vector<Point>& polygon) {
    if (polygon.empty()) return false;
    InitPoly(m_page.left, true, false);
    for (std::size_t i = 0; i < polygon.size(); ++i) AddPoint(polygon[i], i == 0);
    if (polygon.back() != polygon.front()) AddPoint(polygon.front(), false);
    Finish();
    ClipOtherSides();
    return true;
  }

  void Store(const Point& point, bool newRing) {
    outputPoints.push_back(point);
    outputFlags.push_back(newRing);
  }

  bool DoPolyClip(bool closeLast) {
    if (outputPoints.empty()) return false;
    InitPoly(std::min(m_page.left, m_page.right), true, false);
    Feed();
    if (closeLast && outputPoints.back() != outputPoints.front()) AddPoint(outputPoints.front(), false);
    Finish();
    ClipOtherSides();
    return true;
  }

  double Area() const {
    double total = 0.0;
    double ringSum = 0.0;
    int count = 0;
    const int size = static_cast<int>(outputPoints.size());
    for (int i = 0; i <= size - 2; ++i) {
      ++count;
      const std::size_t at = static_cast<std::size_t>(i);
      if (outputFlags[at + 1]) {
        if (count > 2) total += std::fabs(ringSum);
        ringSum = 0.0;
        count = 0;
        continue;
      }
      const Point origin = outputPoints[0];
      const Point a = outputPoints[at];
      const Point b = outputPoints[at + 1];
      ringSum += ((a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y)) * 0.5;
    }
    if (count > 2) total += std::fabs(ringSum);
    return total;
  }

  std::vector<Point> outputPoints;
  std::vector<bool> outputFlags;
  Reached reached;

 private:
  void ClipOtherSides() {
    InitPoly(std::max(m_page.bottom, m_page.top), false, true);
    Feed();
    Finish();
    InitPoly(std::max(m_page.left, m_page.right), true, true);
    Feed();
    Finish();
    InitPoly(std::min(m_page.bottom, m_page.top), false, false);
    Feed();
    Finish();
  }

  void Feed() {
    for (std::size_t i = 0; i < outputPoints.size(); ++i) AddPoint(outputPoints[i], outputFlags[i]);
  }

  void Finish() {
    outputPoints.clear();
    outputFlags.clear();
    SortIntersections();
    CheckIntersectionList();
    CreateOutputList();
  }

  void InitPoly(double limit, bool clipOnX, bool keepBelow) {
    m_points.clear();
    m_flags.clear();
    m_intersections.clear();
    m_used.clear();
    m_polyStarts.clear();
    m_limit = limit;
    m_clipOnX = clipOnX;
    m_keepBelow = keepBelow;
    m_hasLast = false;
    m_pending = true;
  }

  // 1 entering, 2 leaving, 3 both inside, 4 both outside, 0 none of these.
  int Classify(double a0, double a1, double b0, double b1, double& out0, double& out1) const {
    out0 = 0.0;
    out1 = 0.0;
    int result = 0;
    if (m_keepBelow) {
      if (a1 > m_limit && b1 <= m_limit) result = 1;
      if (a1 <= m_limit && b1 > m_limit) result = 2;
      if (a1 <= m_limit && b1 <= m_limit) result = 3;
      if (a1 > m_limit && b1 > m_limit) result = 4;
    } else {
      if (a1 < m_limit && b1 >= m_limit) result = 1;
      if (a1 >= m_limit && b1 < m_limit) result = 2;
      if (a1 >= m_limit && b1 >= m_limit) result = 3;
      if (a1 < m_limit && b1 < m_limit) result = 4;
    }
    if (result == 1 || result == 2) {
      out1 = m_limit;
      const bool aFirst = m_keepBelow ? a1 > m_limit : a1 >= m_limit;
      if (aFirst) {
        out0 = ((m_limit - b1) * a0 + (a1 - m_limit) * b0) / (a1 - b1);
      } else {
        out0 = ((b1 - m_limit) * a0 + (m_limit - a1) * b0) / (b1 - a1);
      }
    }
    return result;
  }

  int ClassifyEdge(const Point& a, const Point& b, Point& crossing) const {
    if (m_clipOnX) return Classify(a.y, a.x, b.y, b.x, crossing.y, crossing.x);
    return Classify(a.x, a.y, b.x, b.y, crossing.x, crossing.y);
  }

  void AddPoint(const Point& point, bool newPolygon) {
    if (newPolygon) {
      m_hasLast = false;
      m_pending = true;
    }
    Point crossing;
    if (m_hasLast) {
      const int result = ClassifyEdge(m_lastPoint, point, crossing);
      if (result == 1 || result == 2) {
        SetHeight(m_lastPoint, point, crossing);
        m_intersections.push_back(static_cast<int>(m_points.size()));
        m_used.push_back(false);
        StorePoint(crossing, result);
      }
      if (result == 1 || result == 3) StorePoint(point, 0);
      if (result == 0) ++reached.nowhere;
    } else {
      m_hasLast = true;
      if (ClassifyEdge(point, point, crossing) == 3) StorePoint(point, 0);
    }
    m_lastPoint = point;
  }

  static void SetHeight(const Point& a, const Point& b, Point& p) {
    if (a.z == b.z) {
      p.z = a.z;
      return;
    }
    const double da = std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
    const double dp = std::sqrt((p.x - a.x) * (p.x - a.x) + (p.y - a.y) * (p.y - a.y));
    p.z = a.z + (b.z - a.z) / (da / dp);
  }

  void StorePoint(const Point& point, int flag) {
    m_points.push_back(point);
    m_flags.push_back(flag);
    if (!m_pending) return;
    m_polyStarts.push_back(static_cast<int>(m_points.size()) - 1);
    m_flags.back() += 4;
    m_pending = false;
  }

  double Along(std::size_t entry) const {
    const Point& point = m_points[static_cast<std::size_t>(m_intersections[entry])];
    return m_clipOnX ? point.y : point.x;
  }

  void Swap(std::size_t i, std::size_t j) {
    std::swap(m_intersections[i], m_intersections[j]);
    const bool used = m_used[i];
    m_used[i] = m_used[j];
    m_used[j] = used;
  }

  void SortIntersections() {
    bool swapped = true;
    while (swapped) {
      swapped = false;
      for (std::size_t i = 0; i + 1 < m_intersections.size(); ++i) {
        if (!(Along(i + 1) < Along(i))) continue;
        Swap(i, i + 1);
        swapped = true;
        ++reached.swaps;
      }
    }
  }

  int Type(int entry) const { return m_flags[static_cast<std::size_t>(m_intersections[static_cast<std::size_t>(entry)])] & 3; }

  void CheckIntersectionList() {
    const int size = static_cast<int>(m_intersections.size());
    for (int i = 0; i <= size - 2; ++i) {
      if (Type(i) != Type(i + 1)) continue;
      const std::size_t at = static_cast<std::size_t>(i);
      if (i >= 1 && Along(at - 1) == Along(at)) {
        Swap(at - 1, at);
        ++reached.ties;
      }
      if (i < size - 2 && Along(at) == Along(at + 1)) {
        Swap(at, at + 1);
        ++reached.ties;
      }
    }
  }

  int Find(int index) const {
    for (std::size_t i = 0; i < m_intersections.size(); ++i) {
      if (m_intersections[i] == index) return static_cast<int>(i);
    }
    return -1;
  }

  int GetNextPolyStart() {
    for (int& start : m_polyStarts) {
      if (start < 0) continue;
      const int index = start;
      start = -1;
      int& flag = m_flags[static_cast<std::size_t>(index)];
      if ((flag & 3) != 0) {
        const int entry = Find(index);
        if (entry >= 0) m_used[static_cast<std::size_t>(entry)] = true;
        ++reached.crossedStarts;
      }
      flag = 0;
      return index;
    }
    return -1;
  }

  int GetNextSection() {
    for (int i = 0; i < static_cast<int>(m_intersections.size()) - 1; i += 2) {
      const std::size_t at = static_cast<std::size_t>(i);
      if (m_used[at] || m_used[at + 1]) continue;
      const std::size_t chosen = Type(i) == 1 ? at : at + 1;
      m_used[chosen] = true;
      ++reached.sections;
      return m_intersections[chosen];
    }
    return -1;
  }

  int GetIntersectionPartner(int index, bool& used) {
    const int entry = Find(index);
    if (entry < 0) return -1;
    const std::size_t at = static_cast<std::size_t>(entry);
    const std::size_t partner = entry % 2 == 0 ? at + 1 : at - 1;
    m_used[at] = true;
    if (partner >= m_intersections.size()) return -1;
    used = m_used[partner];
    m_used[partner] = true;
    return m_intersections[partner];
  }

  void CreateOutputList() {
    int index = GetNextPolyStart();
    if (index < 0) index = GetNextSection();
    bool first = true;
    if (index < 0) return;
    const int n = static_cast<int>(m_points.size());
    for (;;) {
      while (index >= 0) {
        const std::size_t at = static_cast<std::size_t>(index);
        if (index < n && m_flags[at] == 2) {
          bool used = false;
          const int partner = GetIntersectionPartner(index, used);
          if (partner == -1) {
            ++reached.dropped;
            return;
          }
          if (used) {
            Store(m_points[at], false);
            Store(m_points[static_cast<std::size_t>(partner)], false);
            ++reached.closings;
            break;
          }
          Store(m_points[at], first);
          first = false;
          index = partner;
          ++reached.jumps;
          continue;
        }
        if (index == n) break;
        if (m_flags[at] >= 4) {
          ++reached.stops;
          break;
        }
        Store(m_points[at], first);
        first = false;
        ++index;
      }
      index = GetNextPolyStart();
      first = true;
      if (index == -1) index = GetNextSection();
      if (index == -1) return;
    }
  }

  Page m_page;
  Point m_lastPoint;
  bool m_hasLast = false;
  bool m_pending = false;
  std::vector<Point> m_points;
  std::vector<int> m_flags;
  std::vector<int> m_intersections;
  std::vector<bool> m_used;
  std::vector<int> m_polyStarts;
  double m_limit = 0.0;
  bool m_clipOnX = false;
  bool m_keepBelow = false;
};

// The same points to the last bit, rings and area.
inline bool SameRings(const PolyClipper& clipper, const LiteralPolyClipper& literal) {
  if (static_cast<std::size_t>(clipper.GetOutputSize()) != literal.outputPoints.size()) return false;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) {
    const std::size_t at = static_cast<std::size_t>(i);
    if (!Same(clipper.GetOutputPoint(i), literal.outputPoints[at])) return false;
    if (clipper.GetOutputFlag(i) != literal.outputFlags[at]) return false;
  }
  return Same(clipper.Area(), literal.Area());
}
