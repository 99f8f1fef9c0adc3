// A named reference position, read from a file of one line. Neighbours: Point.h for the position alone; StatusPoint.h and
// TimePoint.h for positions with a status or a time.
#pragma once

#include <string>

#include "zelbase/geometry/Point.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value from which others may derive: it is destroyed through its base. Copies are independent. One thread at a time.
//
//   Station station;
//   if (!station.ReadFile("C:\\Harbour\\quay.txt")) ...    // one line: 1234.5, 6789.0, 2.25
class ZELBASE_API Station {
 public:
  Station() = default;
  Station(const Station& other) = default;
  Station& operator=(const Station& other) = default;
  virtual ~Station() = default;

  // Takes the position, which is valid then.
  void SetStationPos(const Point& point) {
    position = point;
    valid = true;
  }

  // Hands the position out in any case, and gives whether it is valid.
  bool GetStationPos(Point& point) const {
    point = position;
    return valid;
  }

  // Reads x, y and z, in metres, from the first line of the file: numbers separated by commas, with any white space before
  // and anything behind each. What cannot be read is 0. True when z was read; false when it was not, or the file does not
  // open.
  //
  // The position is what was read, and is valid: also after a false, as (0, 0, 0) when nothing was. Nothing is reported. A
  // line may be of any length; no more of it is read than the three numbers.
  bool ReadFile(const std::string& fileName);

  // The texts are the business of the modules that fill them.
  Point position;
  std::string text0;
  std::string text1;
  bool valid = false;
};
