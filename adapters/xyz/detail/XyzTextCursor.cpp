#include "adapters/xyz/detail/XyzTextCursor.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/platform/PlatformFiles.h"

namespace zelbase::detail {
namespace {

constexpr std::string_view kMarkOfUtf8 = "\xEF\xBB\xBF";

// A short file does not pay for a long buffer.
std::size_t BufferBytesFor(long long fileSize) {
  const auto text = static_cast<std::size_t>(std::clamp<long long>(fileSize, 0, XyzTextCursor::kBufferBytes));
  return text + 1 + kPlainXyzBytes;
}

}  // namespace

XyzTextCursor::XyzTextCursor(PlatformFile& file, long long size, const XyzTextOptions& options)
    : m_file(file), m_size(size), m_options(options), m_buffer(BufferBytesFor(size)) {
  Rewind();
}

void XyzTextCursor::Rewind() {
  m_dataEnd = m_buffer.data();
  m_at = m_linesEnd = m_dataEnd;
  m_bufferEnd = 0;
  m_isInLongLine = false;
  m_result = FileResult::Ok;
  m_summary = XyzTextSummary();
}

// Any line, with care; true when it is a point.
bool XyzTextCursor::ReadLine(TimePoint& point) {
  const auto* const end = static_cast<const char*>(std::memchr(m_at, '\n', static_cast<std::size_t>(m_linesEnd - m_at)));
  const std::string_view line(m_at, static_cast<std::size_t>(end - m_at));
  m_at = end + 1;
  ++m_summary.lines;
  const XyzLineKind kind = ReadXyzLine(line, m_options.positionOnly, point);
  if (kind == XyzLineKind::Nothing) return false;
  if (kind == XyzLineKind::Point || kind == XyzLineKind::Timed) {
    CountPoint(point.position, kind == XyzLineKind::Timed);
    return true;
  }
  const bool isFirst = m_summary.points == 0 && m_summary.brokenLines == 0 && !m_summary.hasNames;
  if (kind == XyzLineKind::Names && isFirst) {
    m_summary.hasNames = true;
  } else {
    CountBroken(m_summary.problems.size() < m_options.keptProblems ? WhyXyzLineIsBroken(line, m_options.positionOnly) : std::string());
  }
  return false;
}

// The line counted last.
void XyzTextCursor::CountBroken(std::string reason) {
  ++m_summary.brokenLines;
  if (m_summary.problems.size() < m_options.keptProblems) {
    m_summary.problems.push_back({m_summary.lines, std::move(reason)});
  }
}

// Reads on until there is a whole line. False at the end of the file.
bool XyzTextCursor::FillBuffer() {
  while (m_at == m_linesEnd) {
    if (m_result != FileResult::Ok || m_bufferEnd >= m_size) return false;
    if (!ReadOn()) return false;
    FindLines();
  }
  return true;
}

// The front of a line that is not whole yet goes to the front of the buffer, and what follows in the file goes behind it.
bool XyzTextCursor::ReadOn() {
  const auto rest = static_cast<std::size_t>(m_dataEnd - m_at);
  char* const front = m_buffer.data();
  if (rest > 0) std::memmove(front, m_at, rest);
  const std::size_t wanted = std::min(kBufferBytes - rest, static_cast<std::size_t>(m_size - m_bufferEnd));
  m_dataEnd = front + rest;
  m_at = m_linesEnd = front;
  long long position = 0;
  m_result = m_file.Seek(m_bufferEnd, 0, position);
  for (std::size_t read = 0; read < wanted && m_result == FileResult::Ok;) {
    std::size_t done = 0;
    m_result = m_file.Read(m_dataEnd, wanted - read, done);
    if (m_result == FileResult::Ok && done == 0) m_result = FileResult::IoFailed;  // shorter than it was
    m_dataEnd += done;
    m_bufferEnd += static_cast<long long>(done);
    read += done;
  }
  // What came before a failure is whole lines but for the last, which nobody knows the end of.
  return m_result == FileResult::Ok || m_dataEnd != front + rest;
}

// Whether the buffer is the beginning of the file, and begins with the mark of UTF-8.
bool XyzTextCursor::BeginsWithMark() const {
  const std::ptrdiff_t size = m_dataEnd - m_buffer.data();
  return m_bufferEnd == size && std::string_view(m_buffer.data(), static_cast<std::size_t>(size)).starts_with(kMarkOfUtf8);
}

void XyzTextCursor::FindLines() {
  if (BeginsWithMark()) m_at += kMarkOfUtf8.size();
  if (m_bufferEnd >= m_size && m_dataEnd[-1] != '\n') {
    *m_dataEnd++ = '\n';
    ++m_bufferEnd;
  }
  if (m_isInLongLine) DropLongLine();
  const std::string_view data(m_at, static_cast<std::size_t>(m_dataEnd - m_at));
  const std::size_t last = data.rfind('\n');
  m_linesEnd = last == std::string_view::npos ? m_at : m_at + last + 1;
  if (m_linesEnd != m_at || data.size() < kBufferBytes) return;

  // Not one end of a line in all of the buffer.
  ++m_summary.lines;
  if (!TrimLeft(data).starts_with('#')) CountBroken("the line is too long");
  m_isInLongLine = true;
  m_at = m_linesEnd = m_dataEnd;
}

// Up to its end, or all that there is.
void XyzTextCursor::DropLongLine() {
  const std::string_view data(m_at, static_cast<std::size_t>(m_dataEnd - m_at));
  const std::size_t end = data.find('\n');
  m_isInLongLine = end == std::string_view::npos;
  m_at = m_isInLongLine ? m_dataEnd : m_at + end + 1;
}

}  // namespace zelbase::detail
