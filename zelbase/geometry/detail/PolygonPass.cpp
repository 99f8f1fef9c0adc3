#include "zelbase/geometry/detail/PolygonPass.h"

#include <algorithm>

namespace zelbase::detail {

namespace {

template <bool kOnX>
double Across(const Point& point) {
  return kOnX ? point.x : point.y;
}

template <bool kOnX>
double Along(const Point& point) {
  return kOnX ? point.y : point.x;
}

// On the side is inside. Of NaN neither holds.
template <bool kBelow>
bool IsInside(double across, double limit) {
  return kBelow ? across <= limit : across >= limit;
}

template <bool kBelow>
bool IsOutside(double across, double limit) {
  return kBelow ? across > limit : across < limit;
}

// The first point from `point` on of which the test does not hold.
template <bool kOnX, class Test>
const Point* EndOfRun(const Point* point, const Point* end, Test test) {
  while (point != end && test(Across<kOnX>(*point))) ++point;
  return point;
}

// Where the edge meets the side, along the side. `a` is the end above the limit, `b` the one below: as the
// side is crossed, there is one of each.
template <bool kOnX>
double Interpolate(const Point& a, const Point& b, double limit) {
  const double a1 = Across<kOnX>(a);
  const double b1 = Across<kOnX>(b);
  return ((limit - b1) * Along<kOnX>(a) + (a1 - limit) * Along<kOnX>(b)) / (a1 - b1);
}

// Height of `p` on the edge from `a` to `b`, by horizontal distances.
double IntersectionHeight(const Point& a, const Point& b, const Point& p) {
  if (a.z == b.z) return a.z;
  return a.z + (b.z - a.z) / (a.Dist2D(b, false) / a.Dist2D(p, false));
}

}  // namespace

const std::vector<PolygonRun>& PolygonPass::Clip(const std::vector<PolygonRun>& polygons, const PolygonSide& side, std::size_t mostPoints) {
  InitPoly(side);
  AddPolygons(polygons);
  // The walk would give every polygon back as it is.
  if (m_intersections.empty() && m_stored == m_added) return polygons;
  SortIntersections();
  CheckIntersectionList();
  CreateOutputList(mostPoints);
  return m_rings;
}

// --- Adding ---

void PolygonPass::InitPoly(const PolygonSide& side) {
  m_side = side;
  m_lastPoint = nullptr;
  m_polyStartPending = true;
  m_added = 0;
  m_stored = 0;
  m_pieces.clear();
  m_polyStarts.clear();
  m_intersections.clear();
  m_nextPolyStart = 0;
  m_nextSection = 0;
}

void PolygonPass::AddPolygons(const std::vector<PolygonRun>& polygons) {
  if (m_side.clipOnX) {
    m_side.keepBelow ? AddRuns<true, true>(polygons) : AddRuns<true, false>(polygons);
  } else {
    m_side.keepBelow ? AddRuns<false, true>(polygons) : AddRuns<false, false>(polygons);
  }
}

template <bool kOnX, bool kBelow>
void PolygonPass::AddRuns(const std::vector<PolygonRun>& polygons) {
  for (const PolygonRun& run : polygons) {
    if (run.newRing) {
      m_lastPoint = nullptr;
      m_polyStartPending = true;
    }
    m_added += static_cast<std::size_t>(run.end - run.begin);
    const Point* point = run.begin;
    while (point != run.end) point = AddPoints<kOnX, kBelow>(point, run.end);
  }
}

// Adds `point`, and with it all that follow it on the same side of the limit; gives the first that does not.
// Only the edge to `point` itself can be a crossing.
template <bool kOnX, bool kBelow>
const Point* PolygonPass::AddPoints(const Point* point, const Point* end) {
  const double limit = m_side.limit;
  const double across = Across<kOnX>(*point);
  const Where from = m_lastPoint == nullptr ? Where::kInside : m_lastWhere;
  const Point* next = point + 1;
  if (IsInside<kBelow>(across, limit)) {
    next = EndOfRun<kOnX>(next, end, [limit](double other) { return IsInside<kBelow>(other, limit); });
    if (from == Where::kOutside) AddCrossing<kOnX>(*point, kEntering);
    StorePoints(from == Where::kNowhere ? point + 1 : point, next);
    m_lastWhere = Where::kInside;
  } else if (IsOutside<kBelow>(across, limit)) {
    next = EndOfRun<kOnX>(next, end, [limit](double other) { return IsOutside<kBelow>(other, limit); });
    if (m_lastPoint != nullptr && from == Where::kInside) AddCrossing<kOnX>(*point, kLeaving);
    m_lastWhere = Where::kOutside;
  } else {
    // Kept: a point that lies nowhere (NaN) is the last one all the same; no edge to it or from it is cut,
    // nor its end stored.
    m_lastWhere = Where::kNowhere;
  }
  m_lastPoint = next - 1;
  return next;
}

// The crossing of the edge from the last point to `point`.
template <bool kOnX>
void PolygonPass::AddCrossing(const Point& point, int type) {
  const Point& last = *m_lastPoint;
  const bool isLastAbove = m_side.keepBelow == (type == kEntering);
  const double along = isLastAbove ? Interpolate<kOnX>(last, point, m_side.limit) : Interpolate<kOnX>(point, last, m_side.limit);
  Point crossing = kOnX ? Point(m_side.limit, along, 0.0) : Point(along, m_side.limit, 0.0);
  crossing.z = IntersectionHeight(last, point, crossing);
  StoreIntersection(crossing, along, type);
}

// The points follow a crossing that has none yet, or are a piece without a crossing.
void PolygonPass::StorePoints(const Point* begin, const Point* end) {
  if (begin == end) return;
  m_stored += static_cast<std::size_t>(end - begin);
  if (m_polyStartPending || m_pieces.empty() || m_pieces.back().begin != nullptr) {
    m_pieces.push_back(Piece{Point(), begin, end, TakePolyStart(), kNone});
    return;
  }
  m_pieces.back().begin = begin;
  m_pieces.back().end = end;
}

void PolygonPass::StoreIntersection(const Point& point, double along, int type) {
  m_intersections.push_back(Intersection{along, static_cast<int>(m_pieces.size()), false});
  m_pieces.push_back(Piece{point, nullptr, nullptr, type + TakePolyStart(), kNone});
}

// kPolyStart for the first stored point of a polygon, which is that of the piece to come; otherwise nothing.
int PolygonPass::TakePolyStart() {
  if (!m_polyStartPending) return 0;
  m_polyStartPending = false;
  m_polyStarts.push_back(static_cast<int>(m_pieces.size()));
  return kPolyStart;
}

// --- Pairing ---

// Ascending along the side, ties in the order of the polygon, as a bubble sort by "the later is smaller"
// leaves them. NaN is never smaller nor larger: it stays where it is and nothing passes it, so that what lies
// between two is sorted by itself.
void PolygonPass::SortIntersections() {
  const auto isNan = [](const Intersection& entry) { return entry.along != entry.along; };
  const auto isBefore = [](const Intersection& a, const Intersection& b) { return a.along < b.along; };
  auto begin = m_intersections.begin();
  while (begin != m_intersections.end()) {
    const auto end = std::find_if(begin, m_intersections.end(), isNan);
    if (!std::is_sorted(begin, end, isBefore)) std::stable_sort(begin, end, isBefore);
    begin = end == m_intersections.end() ? end : end + 1;
  }
}

// Repairs the pairing at equal coordinates: a proper pair joins an entering and a leaving crossing, and where
// an exact tie has put two of a kind side by side, a swap cures it.
void PolygonPass::CheckIntersectionList() {
  const std::size_t size = m_intersections.size();
  const auto type = [this](std::size_t i) { return PieceAt(m_intersections[i].piece).flag & kCrossing; };
  const auto swapIfTied = [this](std::size_t i) {
    if (m_intersections[i].along == m_intersections[i + 1].along) std::swap(m_intersections[i], m_intersections[i + 1]);
  };
  for (std::size_t i = 0; i + 1 < size; ++i) {
    if (type(i) != type(i + 1)) continue;
    if (i >= 1) swapIfTied(i - 1);
    // Kept: this looks at the list as the swap before left it, and never at the last pair.
    if (i + 2 < size) swapIfTied(i);
  }
  for (std::size_t i = 0; i < size; ++i) PieceAt(m_intersections[i].piece).order = static_cast<int>(i);
}

// --- Walking ---

void PolygonPass::CreateOutputList(std::size_t mostPoints) {
  m_rings.clear();
  m_ringPoints = 0;
  m_mostPoints = mostPoints;
  for (int at = GetNextStart(); at != kNone; at = GetNextStart()) {
    if (!WalkRing(at)) return;
  }
}

// One ring from piece `at`: along the polygon as far as a leaving crossing, over to its partner, on from
// there, until the partner is used or the polygon's stretch ends. False when the walk is over for all.
bool PolygonPass::WalkRing(int at) {
  bool newRing = true;
  while (at != static_cast<int>(m_pieces.size())) {
    if (m_ringPoints > m_mostPoints) return false;
    const Piece& piece = PieceAt(at);
    if (piece.flag >= kPolyStart) return true;
    // Kept: exactly a leaving crossing turns off; one whose polygon begins with it has lost its flag and is
    // passed.
    const bool isLeaving = piece.flag == kLeaving;
    bool used = false;
    const int next = isLeaving ? GetIntersectionPartner(at, used) : at + 1;
    // Kept: a crossing without a partner drops all that would follow.
    if (next == kNone) return false;
    if (used) {
      Append(&piece.crossing, &piece.crossing + 1, false);
      const Point& partner = PieceAt(next).crossing;
      Append(&partner, &partner + 1, false);
      return true;
    }
    if (piece.order != kNone) {
      Append(&piece.crossing, &piece.crossing + 1, newRing);
      newRing = false;
    }
    if (!isLeaving && piece.begin != nullptr) {
      Append(piece.begin, piece.end, newRing);
      newRing = false;
    }
    at = next;
  }
  return true;
}

void PolygonPass::Append(const Point* begin, const Point* end, bool newRing) {
  m_rings.push_back(PolygonRun{begin, end, newRing});
  m_ringPoints += static_cast<std::size_t>(end - begin);
}

int PolygonPass::GetNextStart() {
  const int start = GetNextPolyStart();
  return start != kNone ? start : GetNextSection();
}

// The first polygon that was not walked yet.
int PolygonPass::GetNextPolyStart() {
  if (m_nextPolyStart == m_polyStarts.size()) return kNone;
  const int at = m_polyStarts[m_nextPolyStart++];
  Piece& piece = PieceAt(at);
  if (piece.order != kNone) IntersectionAt(piece.order).isUsed = true;
  // Kept: the whole flag goes, so that the walk does not stop on its own start; a crossing is none from here
  // on.
  piece.flag = kPlain;
  return at;
}

// The first pair of which both crossings are unused: its first when that one enters, otherwise its second.
// Pairs before it stay used, so that the search goes on where it stood.
int PolygonPass::GetNextSection() {
  for (; m_nextSection + 1 < m_intersections.size(); m_nextSection += 2) {
    Intersection& first = m_intersections[m_nextSection];
    Intersection& second = m_intersections[m_nextSection + 1];
    if (first.isUsed || second.isUsed) continue;
    Intersection& chosen = (PieceAt(first.piece).flag & kCrossing) == kEntering ? first : second;
    chosen.isUsed = true;
    return chosen.piece;
  }
  return kNone;
}

// The piece of the crossing that `piece` is paired with, both being used from now on; `used` tells whether
// the partner was used before. kNone, with `used` untouched, for the last crossing of an odd number.
int PolygonPass::GetIntersectionPartner(int piece, bool& used) {
  const int order = PieceAt(piece).order;
  const int partnerOrder = order ^ 1;
  IntersectionAt(order).isUsed = true;
  if (partnerOrder == static_cast<int>(m_intersections.size())) return kNone;
  Intersection& partner = IntersectionAt(partnerOrder);
  used = partner.isUsed;
  partner.isUsed = true;
  return partner.piece;
}

}  // namespace zelbase::detail
