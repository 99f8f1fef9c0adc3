// The whole of a tide file in rows, with what a person asks of it.
#pragma once

#include <string>
#include <vector>

namespace zel {

struct TideRow {
  double time;    // milliseconds since 1970, UTC
  double height;  // metres
};

struct TideSeries {
  std::vector<TideRow> rows;  // in ascending time

  // False, with a reason a person can read, when the file cannot be opened.
  bool Open(const std::string& path, std::string& reason);

  // The middle of the steps from value to value, in milliseconds; 0 for fewer than two.
  double UsualStep() const;

  // Indexes of the rows with more than `longest` milliseconds in front of them.
  std::vector<std::size_t> Gaps(double longest) const;

  // The step beyond which a person would speak of a gap.
  double UsualGap() const { return UsualStep() * 1.5; }
};

}  // namespace zel
