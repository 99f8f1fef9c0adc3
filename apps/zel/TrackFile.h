// A text file of navigation observations, in the order of their times: fixes, velocities and lines of position.
#pragma once

#include <string>
#include <vector>

#include "LineFaults.h"
#include "zelbase/numerics/LopStruct.h"

namespace zel {

// One line of the file, or several lines of position of one time, which make one fix. Times in seconds; x to the east and y to
// the north in metres; bearings in degrees clockwise from north.
struct Observation {
  enum class Kind { Fix, Velocity, Lines };

  Kind kind = Kind::Fix;
  double time = 0.0;
  double x = 0.0, y = 0.0;                     // a fix's position, or a velocity in metres a second
  double varX = 0.0, varY = 0.0, covXY = 0.0;  // of a fix
  std::vector<LopStruct> lines;                // one to eight
  long long lineNumber = 0;                    // in the file, of the first line
};

// A line is one of these; "#" begins a comment.
//
//   fix TIME X Y SIGMA [SIGMA_Y [CORRELATION]]
//   velocity TIME VX VY
//   range TIME STATION_X STATION_Y METRES SIGMA [CORRECTION]
//   bearing TIME STATION_X STATION_Y DEGREES SIGMA_DEGREES [CORRECTION]
//   near X Y                          where to begin the search when lines of position come first
struct TrackFile {
  std::vector<Observation> observations;  // not empty
  double nearX = 0.0, nearY = 0.0;        // by default the middle of the stations
  bool hasNear = false;

  // False, with a reason a person can read, when the file cannot be read, a line is none of these, or there are none.
  bool Open(const std::string& path, std::string& reason);

  // Passes over lines that are none of these, and tells of them. False when the file cannot be read.
  bool Read(const std::string& path, LineFaults& faults);

 private:
  bool ReadLine(std::string_view line, long long number);
  bool ReadNear(std::string_view rest);
  bool ReadFix(std::string_view rest, Observation& fix);
  bool ReadVelocity(std::string_view rest, Observation& velocity);
  bool ReadLop(std::string_view rest, int type, long long number);
};

}  // namespace zel
