// What a reader of a text of positions has met: lines, points, their extents, and the lines it could not read. Neighbour:
// XyzTextSource.h, the reader.
#pragma once

#include <string>
#include <vector>

#include "zelbase/geometry/Point.h"

// A line that was skipped, counted from 1, and why, in words for a person: "y is not a number: abc".
struct XyzLineProblem {
  long long line = 0;
  std::string reason;
};

struct XyzTextSummary {
  long long lines = 0;  // all, blank ones and comments included
  long long points = 0;
  long long timedPoints = 0;  // those that had a time of their own
  long long brokenLines = 0;
  bool hasNames = false;  // the names of the columns stand before the first point
  Point minimum;          // of x, y and z over all points; zeros when there is none
  Point maximum;
  std::vector<XyzLineProblem> problems;  // the first of the broken lines, in order
};
