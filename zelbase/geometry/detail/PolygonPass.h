// One pass of the polygon clipper: polygons against one side of a page, and the rings that are left of them.
// Internal to the library; PolyClipper.h says what it is for and strings four of them together.
#pragma once

#include <cstddef>
#include <vector>

#include "zelbase/geometry/Point.h"

namespace zelbase::detail {

// The side is the vertical line x = limit (clipOnX) or the horizontal line y = limit. Inside is coordinate <=
// limit (keepBelow) or coordinate >= limit.
struct PolygonSide {
  double limit;
  bool clipOnX;
  bool keepBelow;
};

// A stretch of one or more points that lie one after the other in memory, owned elsewhere. Polygons, and
// rings, are lists of runs: what stays as it was is passed on from side to side without being copied.
struct PolygonRun {
  const Point* begin;
  const Point* end;
  bool newRing;  // a polygon begins here
};

// The machine of a pass. It owns the crossings that it finds, and keeps the memory of its lists from one use
// to the next.
//
// First the polygons are added, run by run, which gives the work list: the points inside and the crossings,
// in pieces. Then the crossings are sorted along the side and paired. Then the walk puts the pieces together
// to rings.
class PolygonPass {
 public:
  // The rings that are left of `polygons`: `polygons` itself when nothing is cut, otherwise a list of this
  // object; it is good until the next call, and as long as what `polygons` points to. The first run begins a
  // polygon whatever it says. The walk ends, dropping the rest, once it has given more than `mostPoints`.
  const std::vector<PolygonRun>& Clip(const std::vector<PolygonRun>& polygons, const PolygonSide& side, std::size_t mostPoints);

 private:
  enum class Where { kNowhere, kInside, kOutside };

  static constexpr int kPlain = 0;
  static constexpr int kEntering = 1;
  static constexpr int kLeaving = 2;
  static constexpr int kCrossing = 3;  // either bit
  static constexpr int kPolyStart = 4;
  static constexpr int kNone = -1;

  // Part of the work list: a crossing, when it has one, and then the points [begin, end).
  struct Piece {
    Point crossing;
    const Point* begin;
    const Point* end;
    int flag;   // of its first point: kPlain, kEntering or kLeaving, plus kPolyStart when it is the first
                // stored of a polygon
    int order;  // of the crossing along the side, an index into m_intersections; kNone: there is no crossing
  };
  struct Intersection {
    double along;
    int piece;
    bool isUsed;
  };

  // Adding
  void InitPoly(const PolygonSide& side);
  void AddPolygons(const std::vector<PolygonRun>& polygons);
  template <bool kOnX, bool kBelow>
  void AddRuns(const std::vector<PolygonRun>& polygons);
  template <bool kOnX, bool kBelow>
  const Point* AddPoints(const Point* point, const Point* end);
  template <bool kOnX>
  void AddCrossing(const Point& point, int type);
  void StorePoints(const Point* begin, const Point* end);
  void StoreIntersection(const Point& point, double along, int type);
  int TakePolyStart();

  // Pairing
  void SortIntersections();
  void CheckIntersectionList();

  // Walking
  void CreateOutputList(std::size_t mostPoints);
  bool WalkRing(int at);
  void Append(const Point* begin, const Point* end, bool newRing);
  int GetNextStart();
  int GetNextPolyStart();
  int GetNextSection();
  int GetIntersectionPartner(int piece, bool& used);

  Piece& PieceAt(int piece) { return m_pieces[static_cast<std::size_t>(piece)]; }
  Intersection& IntersectionAt(int order) { return m_intersections[static_cast<std::size_t>(order)]; }

  PolygonSide m_side{};
  const Point* m_lastPoint = nullptr;  // null: the polygon has no point yet
  Where m_lastWhere = Where::kNowhere;
  bool m_polyStartPending = false;
  std::size_t m_added = 0;
  std::size_t m_stored = 0;
  std::vector<Piece> m_pieces;
  std::vector<int> m_polyStarts;
  std::vector<Intersection> m_intersections;
  std::size_t m_nextPolyStart = 0;
  std::size_t m_nextSection = 0;
  std::vector<PolygonRun> m_rings;
  std::size_t m_ringPoints = 0;
  std::size_t m_mostPoints = 0;
};

}  // namespace zelbase::detail
