#include "zelbase/platform/CSharedFile.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t kLongest = 2147483647;
constexpr std::size_t kLargestGrowth = 16777216;

}  // namespace

CSharedFile::CSharedFile(unsigned int growBytes) : m_growBytes(std::min<std::size_t>(growBytes, kLargestGrowth)) {}

CSharedFile::CSharedFile(const HGLOBAL& block) : CSharedFile() {
  if (block != nullptr) m_bytes = *block;
}

CSharedFile::~CSharedFile() = default;

void CSharedFile::RequireOpen() const {
  if (!m_open) throw CFileException(FileResult::InvalidHandle, std::string());
}

void CSharedFile::RequireRoom(unsigned long long length) const {
  if (length > kLongest) throw CFileException(FileResult::DiskFull, std::string());
}

HGLOBAL CSharedFile::Detach() {
  if (!m_open) return nullptr;
  HGLOBAL block = std::make_shared<const std::string>(m_bytes);
  Close();
  return block;
}

bool CSharedFile::Open(const char* fileName, unsigned int, CFileException* error) {
  const std::string name = fileName != nullptr ? fileName : "";
  if (error != nullptr) *error = CFileException(FileResult::NotFound, name);
  return false;
}

unsigned int CSharedFile::Read(void* buffer, unsigned int count) {
  RequireOpen();
  if (buffer == nullptr || m_position >= m_bytes.size()) return 0;
  const std::size_t taken = m_bytes.copy(static_cast<char*>(buffer), count, static_cast<std::size_t>(m_position));
  m_position += taken;
  return static_cast<unsigned int>(taken);
}

void CSharedFile::Write(const void* buffer, unsigned int count) {
  RequireOpen();
  if (buffer == nullptr || count == 0) return;
  // The position is at most the largest signed number, so that the sum does not wrap.
  const unsigned long long behind = m_position + count;
  RequireRoom(behind);
  const std::size_t size = static_cast<std::size_t>(behind);
  if (size > m_bytes.capacity()) m_bytes.reserve(std::max(size, m_bytes.size() + m_growBytes));
  if (size > m_bytes.size()) m_bytes.resize(size);
  std::memcpy(m_bytes.data() + m_position, buffer, count);
  m_position = behind;
}

unsigned long long CSharedFile::Seek(long long offset, unsigned int from) {
  RequireOpen();
  constexpr long long kLargest = std::numeric_limits<long long>::max();
  long long base = 0;
  if (from == current) base = static_cast<long long>(m_position);
  if (from == end) base = static_cast<long long>(m_bytes.size());
  if (from > end || (offset > 0 && base > kLargest - offset) || base + offset < 0) {
    throw CFileException(CFileException::badSeek, static_cast<int>(FileResult::InvalidParameter));
  }
  return m_position = static_cast<unsigned long long>(base + offset);
}

unsigned long long CSharedFile::GetPosition() const {
  RequireOpen();
  return m_position;
}

unsigned long long CSharedFile::GetLength() const {
  RequireOpen();
  return m_bytes.size();
}

void CSharedFile::SetLength(unsigned long long length) {
  RequireOpen();
  RequireRoom(length);
  m_bytes.resize(static_cast<std::size_t>(length));
  m_position = length;
}

void CSharedFile::Flush() { RequireOpen(); }

void CSharedFile::Close() {
  m_open = false;
  m_bytes = std::string();
  m_position = 0;
}

void CSharedFile::Abort() { Close(); }
