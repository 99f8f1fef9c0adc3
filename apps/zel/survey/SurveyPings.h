// Pings of a multibeam sonar from a text file, a line for each ping and for each of its beams. Neighbours:
// zelbase/sonar/PingStructRW.h, what a ping is read into; SurveySoundings.h, which takes the good beams; docs/formats.md.
#pragma once

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "FieldText.h"
#include "LineFaults.h"
#include "zelbase/sonar/PingStructRW.h"

namespace zel {

//   ping TIME X Y HEADING [FLAGS]
//   beam ACROSS ALONG DEPTH [FLAGS [RANGE]]
//
// TIME is a moment in UTC, "2026-05-12T08:00:00.5Z", or milliseconds since 1970; X and Y metres in the grid; HEADING degrees from
// grid north. A beam belongs to the ping before it: metres to starboard, forward and down from the sonar, which is at the water's
// level. FLAGS are those of Multibeam.h: a number, or names of filters with "+" between them, "MAN+DEP"; of a ping a number alone.
// A RANGE of 0 says that nothing was measured; without one it is the slant distance. "#" begins a comment.
struct SurveyPing {
  double time = 0.0;  // milliseconds since 1970, never 0
  double x = 0.0, y = 0.0;
  double heading = 0.0;  // degrees
  PingStructRW ping;     // beamX to starboard, beamY forward, beamZ negative down
};

class SurveyPingFile {
 public:
  static constexpr std::size_t kMostBeams = 4096;

  // Ask IsOpen.
  explicit SurveyPingFile(const std::string& path) : m_stream(path, std::ios::binary) { PassMark(m_stream); }

  bool IsOpen() const { return m_stream.is_open(); }

  // The next ping with all its beams. False at the end.
  bool Next(SurveyPing& ping);

  // Lines that do not read, so far.
  const LineFaults& Faults() const { return m_faults; }

 private:
  struct Beam {
    float x, y, z, range;
    int flags;
  };

  bool ReadLine();
  bool TakeHead(std::string_view rest);
  bool TakeBeam(std::string_view rest);
  void Deliver(SurveyPing& ping);

  std::ifstream m_stream;
  LineFaults m_faults;
  std::string m_line;
  SurveyPing m_head;  // of the ping that comes next
  bool m_hasHead = false;
  std::vector<Beam> m_beams;
};

}  // namespace zel
