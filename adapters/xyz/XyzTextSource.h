// Positions from a text file, a point a line: "x y z", or "x y z time". Neighbours: XYZDataSource.h, the interface of such
// sources, and XyzImporter.h, the job that takes all their points, both of the library; XyzTextSummary.h and XyzTextOptions.h.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/xyz/XyzTextOptions.h"
#include "adapters/xyz/XyzTextSummary.h"
#include "zelbase/data/XYZDataSource.h"
#include "zelbase/platform/FileResult.h"

class PlatformFile;

namespace zelbase::detail {
class XyzTextCursor;
}

// A file of any length, in memory that does not depend on it.
//
//   XyzTextSource source("C:\\survey\\harbour.xyz");
//   if (!source.IsOpen()) ...                          // source.Result() tells why
//   DepthImport import(&source, false);                // derived from XyzImporter
//   const bool done = import.Process() && source.Result() == FileResult::Ok;
//   if (source.SoFar().brokenLines > 0) ...            // how many, the first of them and why
//
// A line is
//   - blank, or a comment: "#" begins one anywhere in a line;
//   - the names of the columns: the first line with something in it, when no column of it is a number;
//   - a point: x, y, z in metres and perhaps the time, with blanks, or one comma or semicolon, between the columns. Numbers have
//     a decimal point, and an exponent if they like; "inf", "nan" and what is beyond the range of a double are none. The time is
//     in milliseconds since 1970-01-01 00:00:00 UTC, or a text such as "2026-05-04T10:20:30.5Z", with or without seconds,
//     fraction and zone (UTC without), or the date alone. Without a time it is 0;
//   - or broken: it is skipped and counted, and the first few are kept with their reasons.
// Lines end with LF or CR LF, the last one also with the file. A line longer than 256 KiB is broken, unless it is a comment. A
// mark of UTF-8 at the beginning is passed over.
//
// Only regular files open. What is added to the file after it was opened is not read. A file that has become shorter, or fails
// to be read, ends the points as its end would: ask for Result afterwards.
//
// Unlike the interface's default, extents and number do not disturb the walk: they are known once a walk has reached the end,
// and are otherwise found by a pass beside it. The file is expected to stay as it is meanwhile; Open reads anew.
//
// Not copyable. One thread at a time.
class XyzTextSource : public XYZDataSource {
 public:
  explicit XyzTextSource(const XyzTextOptions& options = XyzTextOptions());
  // Opens; ask IsOpen.
  explicit XyzTextSource(const std::string& fileName, const XyzTextOptions& options = XyzTextOptions());
  ~XyzTextSource() override;
  XyzTextSource(const XyzTextSource&) = delete;
  XyzTextSource& operator=(const XyzTextSource&) = delete;

  // Closes what is open, also when it then fails. "\" or "/" as separator.
  bool Open(const std::string& fileName);
  void Close();
  bool IsOpen() const { return m_file != nullptr; }

  // Why the last opening failed, or the last reading ended before the end of the file; Ok when it did not.
  FileResult Result() const { return m_result; }

  // What the present walk has met: since the last GetFirstPoint. Valid until the source changes.
  const XyzTextSummary& SoFar() const;

  // What the whole file has, found as the extents are. Null when it is not open or could not be read to its end.
  const XyzTextSummary* Whole();

  bool GetFirstPoint(TimePoint& point) override;
  bool GetNextPoint(TimePoint& point) override;

  // At most 2147483647; -1 without a point, and when the file could not be read to its end.
  int GetNumberOfPoints() override;
  bool GetExtents(Point& minimum, Point& maximum) override;

  // Bytes of the lines walked over, as a part of the file's; 1 when there is nothing to read.
  double GetPosition() override;

 private:
  XyzTextOptions m_options;
  FileResult m_result = FileResult::Ok;
  long long m_size = 0;
  std::unique_ptr<PlatformFile> m_file;  // null when not open, as is the cursor
  std::unique_ptr<zelbase::detail::XyzTextCursor> m_cursor;
  std::optional<XyzTextSummary> m_whole;
};
