// Lines of a text file that do not read: all are counted, the first of them kept. Neighbours: PointFile.h, TrackFile.h and
// survey/SurveyPings.h, whose readers go on behind such a line.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "TextEdge.h"

namespace zel {

struct LineFaults {
  static constexpr std::size_t kMost = 10;

  struct Fault {
    long long line;
    std::string text;  // `not a point: "..."`
  };
  std::vector<Fault> kept;
  long long lines = 0;  // read so far, good ones too
  long long count = 0;

  // Of the line that was read last; `what` says what it is not.
  void Add(const char* what, std::string_view line) {
    constexpr std::size_t shown = 80;
    if (++count > static_cast<long long>(kMost)) return;
    const std::string_view front = line.substr(0, std::min(line.size(), shown));
    kept.push_back({lines, std::string("not ") + what + ": \"" + ToTerminal(front, DetectEncoding(front)) + "\""});
  }

  // Why a file that must be without a fault is refused; empty when it is not. `what` says what it is to hold.
  std::string Refusal(const std::string& path, bool opened, bool empty, const char* what) const {
    if (!opened) return "cannot open \"" + path + "\"";
    if (count > 0) return path + ":" + std::to_string(kept.front().line) + ": " + kept.front().text;
    return empty ? "\"" + path + "\" has no " + what : std::string();
  }
};

}  // namespace zel
