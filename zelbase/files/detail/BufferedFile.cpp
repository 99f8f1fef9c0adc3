#include "zelbase/files/detail/BufferedFile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zelbase::detail {

std::shared_ptr<BufferedFile> BufferedFile::Open(const char* name, FileRights access, FileDisposition disposition) {
  FileOpenRequest request;
  request.path = name != nullptr ? name : "";
  request.access = access;
  request.disposition = disposition;
  FileResult result = FileResult::IoFailed;
  std::unique_ptr<PlatformFile> file = PlatformService<PlatformFiles>::Current().Open(request, result);
  if (file == nullptr) return nullptr;
  return std::make_shared<BufferedFile>(std::move(file), access);
}

BufferedFile::BufferedFile(std::unique_ptr<PlatformFile> file, FileRights access) : m_file(std::move(file)), m_access(access) {}

BufferedFile::~BufferedFile() { Close(); }

void BufferedFile::Close() {
  if (m_file == nullptr) return;
  Flush();
  m_file.reset();
}

std::size_t BufferedFile::TakeUnread(char* target, std::size_t size) {
  const std::size_t part = std::min(size, Unread());
  std::memcpy(target, m_buffer.data() + m_begin, part);
  m_begin += part;
  return part;
}

// What is larger than the buffer goes past it.
bool BufferedFile::Read(char* target, std::size_t size) {
  if (!Includes(m_access, FileRights::Read) || !Flush()) return false;
  std::size_t taken = TakeUnread(target, size);
  FileResult result = FileResult::Ok;
  while (taken < size && result == FileResult::Ok) {
    std::size_t done = 0;
    if (size - taken >= m_buffer.size()) {
      result = m_file->Read(target + taken, size - taken, done);
      taken += done;
    } else {
      result = m_file->Read(m_buffer.data(), m_buffer.size(), done);
      m_begin = 0;
      m_end = done;
      taken += TakeUnread(target + taken, size - taken);
    }
    if (done == 0) break;
  }
  return taken == size;
}

// The system's file stands behind what was read ahead; writing goes where the reader is.
bool BufferedFile::DropUnread() {
  long long position = 0;
  if (Unread() != 0 && m_file->Seek(-static_cast<long long>(Unread()), 1, position) != FileResult::Ok) return false;
  m_begin = 0;
  m_end = 0;
  return true;
}

bool BufferedFile::WriteThrough(const char* source, std::size_t size, std::size_t& done) {
  return m_file->Write(source, size, done) == FileResult::Ok && done == size;
}

bool BufferedFile::Write(const char* source, std::size_t size) {
  if (!Includes(m_access, FileRights::Write) || !DropUnread()) return false;
  if (size > m_buffer.size() - m_pending && !Flush()) return false;
  std::size_t done = 0;
  if (size >= m_buffer.size()) return WriteThrough(source, size, done);
  std::memcpy(m_buffer.data() + m_pending, source, size);
  m_pending += size;
  return true;
}

bool BufferedFile::Flush() {
  if (m_pending == 0) return true;
  std::size_t done = 0;
  const bool out = WriteThrough(m_buffer.data(), m_pending, done);
  m_pending -= done;
  std::memmove(m_buffer.data(), m_buffer.data() + done, m_pending);
  return out;
}

bool BufferedFile::Commit() { return Flush() && m_file->Flush() == FileResult::Ok; }

bool BufferedFile::Seek(long long offset, int origin) {
  if (!Flush()) return false;
  const long long ahead = origin == 1 ? static_cast<long long>(Unread()) : 0;
  long long position = 0;
  if (m_file->Seek(offset - ahead, origin, position) != FileResult::Ok) return false;
  m_begin = 0;
  m_end = 0;
  return true;
}

long long BufferedFile::Position() {
  long long position = 0;
  if (m_file->Seek(0, 1, position) != FileResult::Ok) return -1;
  return position - static_cast<long long>(Unread()) + static_cast<long long>(m_pending);
}

}  // namespace zelbase::detail
