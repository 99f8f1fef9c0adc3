// A text file of coordinates, as people write them: a point a line, "x y" or "x y z", parted by blanks, tabs, commas or
// semicolons. An empty line ends a run of points; "#" begins a comment.
#pragma once

#include <string>
#include <vector>

#include "LineFaults.h"
#include "zelbase/geometry/Point.h"

namespace zel {

struct PointFile {
  std::vector<std::vector<Point>> runs;  // none of them empty

  // False, with a reason a person can read, when the file cannot be read or a line is no point.
  bool Open(const std::string& path, std::string& reason);

  // Passes over lines that are no points, and tells of them. False when the file cannot be read.
  bool Read(const std::string& path, LineFaults& faults);
};

}  // namespace zel
