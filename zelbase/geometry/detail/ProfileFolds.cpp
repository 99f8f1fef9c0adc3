#include "zelbase/geometry/detail/ProfileFolds.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "zelbase/frame/NumericHelpers.h"
#include "zelbase/geometry/Intersect.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/detail/GroupedRow.h"
#include "zelbase/geometry/detail/ProfileBox.h"
#include "zelbase/platform/detail/IntendedWraps.h"

// Points keep the number that they have in the line as it comes. A crossing takes the number of the first point that it
// replaces, so that numbers always rise along the line. Segment s runs from the point before s to s.

namespace zelbase::detail {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr long kOnBothSegments = 3;

// The points in their order, such that a run of them can be replaced without moving the rest.
class Chain {
 public:
  ZELBASE_WRAPS explicit Chain(const std::vector<ProfilePoint>& points) {
    m_links.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) m_links.push_back({points[i], i - 1, i + 1});
    m_links.back().next = kNone;
  }

  std::size_t Size() const { return m_links.size(); }  // of the numbers, not of the points left
  const ProfilePoint& operator[](std::size_t at) const { return m_links[at].point; }
  std::size_t Next(std::size_t at) const { return m_links[at].next; }
  std::size_t Previous(std::size_t at) const { return m_links[at].previous; }

  // Puts `point` in the place of the points from `first` up to before `end`, which is not the line's.
  void Replace(std::size_t first, std::size_t end, const ProfilePoint& point) {
    m_links[first].point = point;
    m_links[first].next = end;
    m_links[end].previous = first;
  }

  void CopyTo(std::vector<ProfilePoint>& points) const {
    points.clear();
    for (std::size_t at = 0; at != kNone; at = Next(at)) points.push_back(m_links[at].point);
  }

 private:
  struct Link {
    ProfilePoint point;
    std::size_t previous;
    std::size_t next;
  };
  std::vector<Link> m_links;
};

// What the searches ask about a point and its segment, or about a group of them. The default is that of a replaced point.
//
// `tested`: the segment is known to cross none of the segments from behind it up to that number, its neighbour left out.
struct FoldEntry {
  void Add(const FoldEntry& other) {
    box.Add(other.box);
    lowest = std::min(lowest, other.lowest);
    highest = std::max(highest, other.highest);
    leastTested = std::min(leastTested, other.leastTested);
    mostTested = std::max(mostTested, other.mostTested);
  }
  void SetTested(std::size_t upTo) { leastTested = mostTested = upTo; }
  bool operator==(const FoldEntry&) const = default;

  ProfileBox box;
  double lowest = kInfinity;    // chainage; NaN, at which every walk stops, is -infinity here
  double highest = -kInfinity;  // and +infinity here
  std::size_t leastTested = kNone;
  std::size_t mostTested = 0;
};

// `at`: chainage and height.
ProfilePoint OnSegment(const ProfilePoint& start, const ProfilePoint& end, const Point& at) {
  const double t = (at.y - start.z) / (end.z - start.z);
  return ProfilePoint(start.x + (end.x - start.x) * t, start.y + (end.y - start.y) * t, at.y, at.x, false);
}

// The walk over a line, from its first point to its last, cutting one fold after the other.
class FoldCutter {
 public:
  FoldCutter(std::vector<ProfilePoint>& line, std::size_t narrow)
      : m_line(line), m_chain(line), m_noFall(Epsilon(line.back().distance * 100.0)), m_narrow(narrow) {}

  // Kept: sections play no part, and a fold still open at the end stays.
  void Run() {
    std::size_t foldStart = kNone;
    double lastDistance = m_chain[0].distance;
    for (std::size_t at = m_chain.Next(0); at != kNone; at = m_chain.Next(at)) {
      const bool falls = lastDistance - m_chain[at].distance > m_noFall;
      if (falls && foldStart == kNone) foldStart = m_chain.Previous(at);
      if (!falls && foldStart != kNone) {
        const std::size_t crossing = Cut(foldStart, m_chain.Previous(at));
        // Kept: the walk goes on from the crossing, wherever in the line that is.
        if (crossing != kNone) at = crossing;
        foldStart = kNone;
      }
      lastDistance = m_chain[at].distance;
    }
    if (m_hasCut) m_chain.CopyTo(m_line);
  }

 private:
  // Cuts at the outermost crossing of the fold from `m` to `n` and gives the number of the new point; kNone without one.
  std::size_t Cut(std::size_t m, std::size_t n) { return CollectNarrowFold(m, n) ? CutNarrow() : CutWide(m, n); }

  // --- A fold of few points: all of it is looked at ---

  // Puts the points from P to Q into m_fold, with their segments' boxes. False when there are too many.
  bool CollectNarrowFold(std::size_t m, std::size_t n) {
    std::size_t p = m;
    for (std::size_t left = m_narrow; p != 0 && m_chain[n].distance < m_chain[p].distance; --left) {
      if (left == 0) return false;
      p = m_chain.Previous(p);
    }
    m_fold.clear();
    bool isBehind = false;  // at or behind n
    for (std::size_t at = p; at != kNone; at = m_chain.Next(at)) {
      if (m_fold.size() > m_narrow) return false;
      m_fold.push_back({at, at == p ? ProfileBox() : BoxOf(at)});
      isBehind = isBehind || at == n;
      if (isBehind && !(m_chain[at].distance < m_chain[m].distance)) break;
    }
    return true;
  }

  std::size_t CutNarrow() {
    const std::size_t last = m_fold.size() - 1;
    for (std::size_t i = 1; i < last; ++i) {
      for (std::size_t k = last; k > i + 1; --k) {
        if (m_fold[k].box.IsFarFrom(m_fold[i].box) || !Cross(m_fold[i].at, m_fold[k].at)) continue;
        CutAt(m_fold[i].at, m_fold[k].at);
        return m_fold[i].at;
      }
    }
    return kNone;
  }

  // --- A fold of many: by the index, and nothing is tried twice ---

  std::size_t CutWide(std::size_t m, std::size_t n) {
    if (!m_entries) m_entries.emplace(MakeEntries());
    const std::size_t p = LastNotBeyond(m_chain[n].distance, m);
    const std::size_t q = FirstThatReaches(m_chain[m].distance, n);
    const auto isOpen = [q](const FoldEntry& entry) { return entry.leastTested < q; };
    for (std::size_t i = m_entries->Next(p + 1, q, isOpen); i != kNone; i = m_entries->Next(i + 1, q, isOpen)) {
      const std::size_t k = LastCrossing(i, q);
      if (k != kNone) {
        CutAt(i, k);
        return i;
      }
      SetTested(i, q);
    }
    return kNone;
  }

  GroupedRow<FoldEntry> MakeEntries() const {
    std::vector<FoldEntry> entries(m_chain.Size());
    for (std::size_t at = 0; at != kNone; at = m_chain.Next(at)) entries[at] = EntryOf(at);
    return GroupedRow<FoldEntry>(std::move(entries));
  }

  FoldEntry EntryOf(std::size_t at) const {
    FoldEntry entry;
    if (at != 0) entry.box = BoxOf(at);
    const double distance = m_chain[at].distance;
    entry.lowest = std::isnan(distance) ? -kInfinity : distance;
    entry.highest = std::isnan(distance) ? kInfinity : distance;
    entry.SetTested(at);
    return entry;
  }

  // The last point up to `m` whose chainage does not exceed `distance`, or the first of all.
  std::size_t LastNotBeyond(double distance, std::size_t m) const {
    const auto found = m_entries->Previous(0, m + 1, [distance](const FoldEntry& entry) { return !(distance < entry.lowest); });
    return found == kNone ? 0 : found;
  }

  // The first point from `n` on whose chainage is not below `distance`, or the last of all.
  std::size_t FirstThatReaches(double distance, std::size_t n) const {
    const auto found = m_entries->Next(n, m_chain.Size(), [distance](const FoldEntry& entry) { return !(entry.highest < distance); });
    return found == kNone ? m_chain.Size() - 1 : found;
  }

  // The last segment up to `q` that crosses segment i. Those known to cross it not, and the one that goes on from it, are
  // left out.
  std::size_t LastCrossing(std::size_t i, std::size_t q) {
    const FoldEntry& own = (*m_entries)[i];
    const std::size_t neighbour = m_chain.Next(i);
    const std::size_t first = std::max(own.leastTested, neighbour) + 1;
    const auto isNear = [&own](const FoldEntry& entry) { return !entry.box.IsFarFrom(own.box); };
    for (std::size_t k = m_entries->Previous(first, q + 1, isNear); k != kNone; k = m_entries->Previous(first, k, isNear)) {
      if (Cross(i, k)) return k;
    }
    return kNone;
  }

  // Segment k has changed: segments before it that were tested against the former one and cross this one are to be tested
  // again from here on.
  void Reopen(std::size_t k) {
    const ProfileBox box = (*m_entries)[k].box;
    const auto isDone = [k, &box](const FoldEntry& entry) { return entry.mostTested >= k && !entry.box.IsFarFrom(box); };
    const std::size_t end = m_chain.Previous(k);  // the neighbour is never tested
    for (std::size_t i = m_entries->Next(1, end, isDone); i != kNone; i = m_entries->Next(i + 1, end, isDone)) {
      if (Cross(i, k)) SetTested(i, k - 1);
    }
  }

  void SetTested(std::size_t i, std::size_t upTo) {
    FoldEntry entry = (*m_entries)[i];
    entry.SetTested(upTo);
    m_entries->Set(i, entry);
  }

  // --- Segments ---

  ProfileBox BoxOf(std::size_t segment) const { return ProfileBox::Of(m_chain[m_chain.Previous(segment)], m_chain[segment]); }

  // Whether segments i and k cross within both, and where.
  bool Cross(std::size_t i, std::size_t k) {
    const Line first(m_chain[m_chain.Previous(i)].Relative(), m_chain[i].Relative());
    const Line second(m_chain[m_chain.Previous(k)].Relative(), m_chain[k].Relative());
    long flags = 0;
    return Intersect(first, second, m_crossing, flags) && flags == kOnBothSegments;
  }

  // Replaces the points from i to before k by the crossing of segments i and k that was just found. Their flags are lost.
  void CutAt(std::size_t i, std::size_t k) {
    const ProfilePoint point = PointOfCrossing(i, k);
    if (m_entries) {
      for (std::size_t at = m_chain.Next(i); at != k; at = m_chain.Next(at)) m_entries->Set(at, FoldEntry());
    }
    m_chain.Replace(i, k, point);
    m_hasCut = true;
    if (!m_entries) return;
    for (const std::size_t changed : {i, k}) m_entries->Set(changed, EntryOf(changed));
    for (const std::size_t changed : {i, k}) Reopen(changed);
  }

  ProfilePoint PointOfCrossing(std::size_t i, std::size_t k) const {
    const ProfilePoint& start1 = m_chain[m_chain.Previous(i)];
    const ProfilePoint& start2 = m_chain[m_chain.Previous(k)];
    const ProfilePoint& end2 = m_chain[k];
    // Kept: the height above the start of one is compared with the rise of the other. A segment that is flat just there
    // divides by 0, and x and y are what that gives.
    if (std::fabs(m_crossing.y - start1.z) <= std::fabs(end2.z - start2.z)) return OnSegment(start2, end2, m_crossing);
    return OnSegment(start1, m_chain[i], m_crossing);
  }

  struct FoldPoint {
    std::size_t at;
    ProfileBox box;  // of the segment that ends here
  };

  std::vector<ProfilePoint>& m_line;
  Chain m_chain;
  double m_noFall;  // Kept: what counts as no fall goes by the last point's chainage; a long line is coarser all along.
  std::size_t m_narrow;
  bool m_hasCut = false;
  Point m_crossing;                                // the last one found: chainage, height
  std::vector<FoldPoint> m_fold;                   // a narrow one
  std::optional<GroupedRow<FoldEntry>> m_entries;  // made for the first wide fold
};

}  // namespace

void CutFolds(std::vector<ProfilePoint>& line, std::size_t narrow) {
  constexpr std::size_t kFewest = 4;  // Kept: a fold of the first three points alone is no loop.
  if (line.size() < kFewest) return;
  FoldCutter(line, narrow).Run();
}

}  // namespace zelbase::detail
