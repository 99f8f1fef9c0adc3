// A point in single precision with a status. Neighbours: FloatPoint.h, from which it has position and
// arithmetic; the meaning of the status lies with its users.
#pragma once

#include <string>

#include "zelbase/geometry/FloatPoint.h"
#include "zelbase/platform/ZelBaseApi.h"

// A plain value of a position and 32 bits. The comparison is that of FloatPoint: it does not look at the
// status.
class ZELBASE_API StatusPoint : public FloatPoint {
 public:
  constexpr StatusPoint() = default;
  constexpr StatusPoint(const FloatPoint& point, unsigned int statusValue) : FloatPoint(point), status(statusValue) {}

  // "point: %f, %f, %f, status: %u", whatever the locale.
  std::string ToString() const;

  unsigned int status = 0;
};
