// The segments of a profile moved at right angles to themselves, with arcs at its corners. Internal to the library.
// Neighbour: ProfileFolds.h cuts out the loops that this leaves at inner corners.
#pragma once

#include <vector>

#include "zelbase/geometry/LineData.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The points of `source`, read by NumDataPoints and DataPoint(int), each `zShift` higher.
ZELBASE_API std::vector<ProfilePoint> LiftedPoints(LineData& source, double zShift);

// For each segment of `line` both its ends, moved by `offset` to the left of travel in the plane of chainage and height;
// before it, where it goes on from another one at an angle, at most 4096 points of an arc around the corner that both share.
// No segment runs to a point with `sectionStart`. The moved ends keep their flag, points of arcs have none.
//
// `tolerance`: the chord error allowed in an arc. abs(offset) not above it gives no arcs, and neither does an arc whose step
// is not a number.
ZELBASE_API std::vector<ProfilePoint> OffsetSegments(const std::vector<ProfilePoint>& line, double offset, double tolerance);

}  // namespace zelbase::detail
