// A tide series as text: a date, a time and a height a line, in the layouts that gauges and harbour offices write.
#pragma once

#include <string>
#include <vector>

namespace zel {

struct TideText {
  // The order of day (D), month (M) and year (Y), and of hours (H), minutes (M) and seconds (S): one each of TideDateFormats and
  // TideTimeFormats.
  std::string dateFormat = "YMD";
  std::string timeFormat = "HM";

  struct Row {
    double time;    // milliseconds since 1970, UTC
    double height;  // metres
  };
  std::vector<Row> rows;

  struct Fault {
    long long line;
    std::string text;
  };
  std::vector<Fault> faults;  // lines that are none

  // Fields are parted by any of TideSeparators and by tabs and semicolons; "#" begins a comment. False, with a reason a person can
  // read, when the file cannot be read.
  bool Open(const std::string& path, std::string& reason);

 private:
  bool ReadRow(std::string_view line, Row& row) const;
};

}  // namespace zel
