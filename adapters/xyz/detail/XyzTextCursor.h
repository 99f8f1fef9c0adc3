// Walks over the lines of an open text of positions, block by block, and keeps count of what it meets. Internal to the reader.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/xyz/XyzTextOptions.h"
#include "adapters/xyz/XyzTextSummary.h"
#include "adapters/xyz/detail/PlainXyzLine.h"
#include "adapters/xyz/detail/XyzLine.h"
#include "zelbase/geometry/TimePoint.h"
#include "zelbase/platform/FileResult.h"

class PlatformFile;

namespace zelbase::detail {

// Several cursors may walk over one file: each seeks before it reads. The file outlives them. One thread at a time for a file and
// all its cursors.
class XyzTextCursor {
 public:
  // The longest line, its end included; also what is read at once.
  static constexpr std::size_t kBufferBytes = 256 * 1024;

  // Reads the first `size` bytes of the file and no more. At its beginning.
  XyzTextCursor(PlatformFile& file, long long size, const XyzTextOptions& options);

  void Rewind();

  // The next point; false at the end, and stays so.
  bool Next(TimePoint& point) {
    do {
      while (m_at != m_linesEnd) {
        bool isTimed = false;
        const char* const next = ReadPlainXyzLine(m_at, point, isTimed);
        if (next == nullptr || (isTimed && m_options.positionOnly)) {
          if (ReadLine(point)) return true;
          continue;
        }
        m_at = next;
        ++m_summary.lines;
        CountPoint(point.position, isTimed);
        return true;
      }
    } while (FillBuffer());
    return false;
  }

  const XyzTextSummary& Summary() const { return m_summary; }

  // Ok until reading fails or finds the file shorter than it was.
  FileResult Result() const { return m_result; }

  // The part of the bytes that lies before the present line.
  double Part() const {
    if (m_size <= 0) return 1.0;
    const long long before = m_bufferEnd - (m_dataEnd - m_at);
    return before >= m_size ? 1.0 : static_cast<double>(before) / static_cast<double>(m_size);
  }

 private:
  void CountPoint(const Point& position, bool isTimed) {
    if (m_summary.points == 0) m_summary.minimum = m_summary.maximum = position;
    ++m_summary.points;
    m_summary.timedPoints += isTimed;
    Widen(m_summary.minimum.x, m_summary.maximum.x, position.x);
    Widen(m_summary.minimum.y, m_summary.maximum.y, position.y);
    Widen(m_summary.minimum.z, m_summary.maximum.z, position.z);
  }
  static void Widen(double& minimum, double& maximum, double value) {
    if (value < minimum) minimum = value;
    if (value > maximum) maximum = value;
  }

  bool ReadLine(TimePoint& point);
  void CountBroken(std::string reason);
  bool FillBuffer();
  bool ReadOn();
  void DropLongLine();
  bool BeginsWithMark() const;
  void FindLines();

  PlatformFile& m_file;
  const long long m_size;
  const XyzTextOptions m_options;
  // As long as the file, at most kBufferBytes; one for the line feed that a last line may lack; and what ReadPlainXyzLine may look at.
  std::vector<char> m_buffer;
  const char* m_at = nullptr;        // the next line
  const char* m_linesEnd = nullptr;  // behind the last line of the buffer that is whole
  char* m_dataEnd = nullptr;
  long long m_bufferEnd = 0;  // where m_dataEnd is in the file
  bool m_isInLongLine = false;
  FileResult m_result = FileResult::Ok;
  XyzTextSummary m_summary;
};

}  // namespace zelbase::detail
