#include "zelbase/platform/CArchive.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "zelbase/platform/CArchiveException.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr int kDefaultSize = 4096;
constexpr int kLargestSize = 16777216;

constexpr std::size_t kShortCount = 2;
constexpr std::size_t kLongCount = 4;
constexpr unsigned int kCountIsLong = 0xFFFF;

std::size_t BufferSize(int wanted) { return static_cast<std::size_t>(wanted < 1 || wanted > kLargestSize ? kDefaultSize : wanted); }

}  // namespace

CArchive::CArchive(CFile* file, unsigned int mode, int bufferSize)
    : m_file(file),
      m_loading((mode & load) != 0),
      m_size(BufferSize(bufferSize)),
      m_buffer(std::make_unique_for_overwrite<char[]>(m_size)) {}

CArchive::~CArchive() {
  try {
    Close();
  } catch (...) {
    // A destructor has nobody to tell; see the header.
  }
}

bool CArchive::ReadString(std::string& line) {
  if (!m_loading) return false;
  std::string_view view;
  const bool read = ReadLine(view);
  line.assign(view);
  return read;
}

bool CArchive::ReadLine(std::string_view& line) {
  if (!m_loading) return false;
  if (m_lineDelivered) {
    m_line.clear();
    m_lineDelivered = false;
  }
  for (;;) {
    const char* const start = m_buffer.get() + m_begin;
    const std::size_t size = m_end - m_begin;
    const void* const found = size == 0 ? nullptr : std::memchr(start, '\n', size);
    if (found != nullptr) {
      const std::size_t length = static_cast<std::size_t>(static_cast<const char*>(found) - start);
      m_begin += length + 1;
      line = TakeLine({start, length});
      if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
      return true;
    }
    m_line.append(start, size);
    m_begin = m_end;
    if (FillBuffer()) continue;
    if (m_line.empty()) return false;
    line = TakeLine({});
    return true;
  }
}

// Joins the end of a line with what earlier blocks held of it.
std::string_view CArchive::TakeLine(std::string_view line) {
  if (m_line.empty()) return line;
  m_line.append(line);
  m_lineDelivered = true;
  return m_line;
}

// False at the end of the file. A subclass that claims more than it was asked for is not believed.
bool CArchive::FillBuffer() {
  if (m_file == nullptr) return false;
  m_begin = m_end = 0;
  m_end = std::min<std::size_t>(m_file->Read(m_buffer.get(), static_cast<unsigned int>(m_size)), m_size);
  return m_end != 0;
}

std::size_t CArchive::Read(void* buffer, std::size_t size) {
  if (!m_loading || buffer == nullptr) return 0;
  if (m_lineDelivered) {
    m_line.clear();
    m_lineDelivered = false;
  }
  std::size_t taken = 0;
  while (taken < size) {
    const std::size_t part = TakeBytes(static_cast<char*>(buffer) + taken, size - taken);
    if (part == 0 && !FillBuffer()) break;
    taken += part;
  }
  return taken;
}

// What is at hand without asking the file: first of a line that a failure has broken off, then of the buffer.
std::size_t CArchive::TakeBytes(char* buffer, std::size_t size) {
  if (!m_line.empty()) {
    const std::size_t part = m_line.copy(buffer, size);
    m_line.erase(0, part);
    return part;
  }
  const std::size_t part = std::min(size, m_end - m_begin);
  if (part > 0) std::memcpy(buffer, m_buffer.get() + m_begin, part);
  m_begin += part;
  return part;
}

ZELBASE_WRAPS unsigned int CArchive::ReadWord(std::size_t size) {
  unsigned char bytes[kLongCount] = {};
  if (Read(bytes, size) != size) throw CArchiveException(CArchiveException::endOfFile);
  unsigned int word = 0;
  for (std::size_t i = size; i-- > 0;) word = word << 8 | bytes[i];
  return word;
}

std::size_t CArchive::ReadCount() {
  const unsigned int count = ReadWord(kShortCount);
  return count == kCountIsLong ? ReadWord(kLongCount) : count;
}

void CArchive::WriteWord(unsigned int word, std::size_t size) {
  char bytes[kLongCount];
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(word >> (8 * i) & 0xFF);
  Write(bytes, size);
}

void CArchive::WriteCount(std::size_t count) {
  if (count < kCountIsLong) return WriteWord(static_cast<unsigned int>(count), kShortCount);
  WriteWord(kCountIsLong, kShortCount);
  WriteWord(static_cast<unsigned int>(count & 0xFFFFFFFF), kLongCount);
}

void CArchive::Write(const void* buffer, std::size_t size) {
  WriteString(buffer != nullptr ? std::string_view(static_cast<const char*>(buffer), size) : std::string_view());
}

void CArchive::RequireStoring() const {
  if (m_failure.has_value()) throw CFileException(*m_failure);
  if (m_loading || m_file == nullptr) throw CFileException(FileResult::InvalidHandle, std::string());
}

void CArchive::WriteString(const char* text) { WriteString(text != nullptr ? std::string_view(text) : std::string_view()); }

void CArchive::WriteString(std::string_view text) {
  RequireStoring();
  while (!text.empty()) {
    // Whole blocks go out from where they are.
    if (m_end == 0 && text.size() >= m_size) {
      PutOut(text.data(), m_size);
      text.remove_prefix(m_size);
      continue;
    }
    const std::size_t part = std::min(text.size(), m_size - m_end);
    std::memcpy(m_buffer.get() + m_end, text.data(), part);
    m_end += part;
    text.remove_prefix(part);
    if (m_end == m_size) Flush();
  }
}

void CArchive::Flush() {
  if (m_loading || m_file == nullptr) return;
  RequireStoring();
  PutOut(m_buffer.get(), std::exchange(m_end, 0));
}

void CArchive::PutOut(const char* data, std::size_t size) {
  if (size == 0) return;
  try {
    m_file->Write(data, static_cast<unsigned int>(size));
  } catch (const CFileException& failure) {
    m_failure = failure;
    throw;
  } catch (...) {
    m_failure = CFileException(CFileException::genericException);
    throw;
  }
}

void CArchive::Close() {
  struct Detach {
    CFile*& file;
    ~Detach() { file = nullptr; }
  } detach{m_file};
  Flush();
}
