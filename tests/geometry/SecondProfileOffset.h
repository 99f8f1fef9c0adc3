// The offset of a profile told a second time, plainly: a linked list, every pair of a fold, no boxes. The library's is held
// against it.
#pragma once

#include <cmath>
#include <iterator>
#include <list>
#include <vector>

#include "zelbase/frame/NumericHelpers.h"
#include "zelbase/geometry/Angles.h"
#include "zelbase/geometry/Intersect.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/Polar.h"
#include "zelbase/geometry/ProfilePoint.h"

// How often each way was gone.
struct OffsetTally {
  long segments = 0;
  long gaps = 0;       // to flagged points
  long fullArcs = 0;   // of more than one step
  long shortArcs = 0;  // under one step
  long straightJoints = 0;
  long folds = 0;
  long cuts = 0;
  long cutsByFirst = 0;  // x and y from the earlier segment
  long cutsBack = 0;     // the walk went on from before the end of the fold
  long cutsAhead = 0;    // the walk went on from behind it
  long foldsKept = 0;
  long openFolds = 0;
  long flagsLost = 0;
};

inline void SecondCutFolds(std::list<ProfilePoint>& work, OffsetTally& tally) {
  if (work.size() <= 3) return;
  const double e = Epsilon(work.back().distance * 100.0);
  using At = std::list<ProfilePoint>::iterator;
  bool inBack = false;
  At m;
  At it = std::next(work.begin());
  double lastDist = work.front().distance;
  while (it != work.end()) {
    if (lastDist - it->distance > e) {
      if (!inBack) m = std::prev(it);
      inBack = true;
    } else if (inBack) {
      inBack = false;
      const At n = std::prev(it);
      ++tally.folds;
      At p = m;
      while (n->distance < p->distance && p != work.begin()) --p;
      At q = n;
      while (q != work.end() && q->distance < m->distance) ++q;
      if (q == work.end()) --q;
      bool found = false;
      for (At i = std::next(p); i != q && !found; ++i) {
        for (At j = std::prev(q); j != i; --j) {
          const At l1 = std::prev(i);
          const At l2 = std::next(j);
          Point c;
          long flags = 0;
          const bool crosses = Intersect(Line(Point(l1->distance, l1->z, 0), Point(i->distance, i->z, 0)),
                                         Line(Point(j->distance, j->z, 0), Point(l2->distance, l2->z, 0)), c, flags);
          if (!crosses || flags != 3) continue;
          ProfilePoint created;
          created.distance = c.x;
          created.z = c.y;
          if (std::fabs(c.y - l1->z) <= std::fabs(l2->z - j->z)) {
            const double t = (c.y - j->z) / (l2->z - j->z);
            created.x = j->x + (l2->x - j->x) * t;
            created.y = j->y + (l2->y - j->y) * t;
          } else {
            const double t = (c.y - l1->z) / (i->z - l1->z);
            created.x = l1->x + (i->x - l1->x) * t;
            created.y = l1->y + (i->y - l1->y) * t;
            ++tally.cutsByFirst;
          }
          ++tally.cuts;
          bool sawCurrent = false;
          for (At erased = i; erased != l2; ++erased) {
            if (erased->sectionStart) ++tally.flagsLost;
            if (erased == it) sawCurrent = true;
          }
          if (!sawCurrent) {
            bool isAhead = false;
            for (At after = it; after != work.end(); ++after) isAhead = isAhead || after == i;
            ++(isAhead ? tally.cutsAhead : tally.cutsBack);
          }
          work.erase(i, l2);
          it = work.insert(l2, created);
          found = true;
          break;
        }
        if (found) break;
      }
      if (!found) ++tally.foldsKept;
    }
    lastDist = it->distance;
    ++it;
  }
  if (inBack) ++tally.openFolds;
}

// Offset is not 0.
inline std::vector<ProfilePoint> SecondOffset(const std::vector<ProfilePoint>& source, double zShift, double offset, OffsetTally& tally) {
  const double tolerance = 0.1;
  std::list<ProfilePoint> work;
  if (source.empty()) return {};
  const auto moved = [](const ProfilePoint& a, double ux, double uy, double normal, double by, bool flag) {
    double offD = 0;
    double offZ = 0;
    PolarToXY(normal, by, offD, offZ);
    return ProfilePoint(a.x - uy * offD, a.y + ux * offD, a.z + offZ, a.distance + offD, flag);
  };
  ProfilePoint cur = source[0];
  cur.z = cur.z + zShift;
  bool havePrev = false;
  double prevNormal = 0;
  for (std::size_t i = 1; i < source.size(); ++i) {
    const ProfilePoint a = cur;
    cur = source[i];
    cur.z = cur.z + zShift;
    if (cur.sectionStart) {
      havePrev = false;
      ++tally.gaps;
      continue;
    }
    ++tally.segments;
    const double dx = cur.x - a.x;
    const double dy = cur.y - a.y;
    const double len = std::sqrt(dx * dx + dy * dy);
    const double ux = len > 0 ? dy / len : 0;
    const double uy = len > 0 ? -dx / len : 1;
    double bearing = 0;
    double ignored = 0;
    XYToPolar(cur.distance - a.distance, cur.z - a.z, bearing, ignored);
    const double normal = TrimAngle(bearing - 90.0);
    const double r = std::fabs(offset);
    if (havePrev && r > tolerance) {
      const double turn = modgeo(normal - prevNormal);
      double step = std::acos((r - tolerance) / (r + tolerance));
      double radius = r;
      const bool isShort = std::fabs(turn * D_TO_R) < step;
      if (isShort) {
        step = std::fabs(turn * D_TO_R);
      } else {
        const double c = std::cos(step * 0.5);
        radius = r + (1 - c) * r / (1 + c);
      }
      const double stepDeg = step / D_TO_R;
      if (std::fabs(turn + turn) <= stepDeg) {
        ++tally.straightJoints;
      } else {
        ++(isShort ? tally.shortArcs : tally.fullArcs);
        double counted = 1.0 + std::fabs(turn / stepDeg);
        if (counted > 4096) counted = 4096;
        const int n = counted == counted ? static_cast<int>(counted) : 0;
        const double angleStep = turn / n;
        double angle = prevNormal + angleStep * 0.5;
        for (int k = 0; k < n; ++k) {
          work.push_back(moved(a, ux, uy, angle, offset < 0 ? -radius : radius, false));
          angle += angleStep;
        }
      }
    }
    work.push_back(moved(a, ux, uy, normal, offset, a.sectionStart));
    work.push_back(moved(cur, ux, uy, normal, offset, cur.sectionStart));
    prevNormal = normal;
    havePrev = true;
  }
  SecondCutFolds(work, tally);
  return {work.begin(), work.end()};
}
