// Cuts the loops out of a profile that turns back on itself. Internal to the library. Neighbour: ProfileOffset.h makes the
// profiles that have such loops.
#pragma once

#include <cstddef>
#include <vector>

#include "zelbase/geometry/ProfilePoint.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Folds of up to so many points are searched pair by pair.
inline constexpr std::size_t kNarrowFold = 24;

// Walks along `line`. A fold is a stretch on which the chainage falls, by more than Epsilon(100 times the last chainage) a
// point; it begins at M, the last point before, and is over at N, its lowest point. For each fold the outermost crossing of
// the profile with itself is sought between P, the last point at or before M that is not beyond N, and Q, the first point at
// or after N that reaches M. Where there is one, it takes the place of the points between, and the walk goes on from it;
// where there is none, the fold stays. A fold still open at the last point stays too. Fewer than 4 points stay as they are.
//
// Flags play no part: where two sections overlap, they are joined.
//
// Folds of more than `narrow` points are searched by an index that is kept over the whole walk, so that no pair of segments is
// tried twice and none that is far apart; the result is the same. n log n, but on lines that swing to and fro ever wider.
ZELBASE_API void CutFolds(std::vector<ProfilePoint>& line, std::size_t narrow = kNarrowFold);

}  // namespace zelbase::detail
