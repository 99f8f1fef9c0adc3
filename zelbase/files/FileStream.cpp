#include "zelbase/files/FileStream.h"

#include <limits>

#include "zelbase/files/detail/BufferedFile.h"

namespace {

FileRights AccessFor(bool create, bool simple) {
  if (!simple) return FileRights::ReadWrite;
  return create ? FileRights::Write : FileRights::Read;
}

bool FitsInt(long long value) { return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max(); }

}  // namespace

FileStream::FileStream() = default;

FileStream::FileStream(const char* name, bool create, bool simple) { FileStream::Open(name, create, simple); }

FileStream::FileStream(const FileStream&) = default;

FileStream& FileStream::operator=(const FileStream&) = default;

FileStream::~FileStream() = default;

bool FileStream::Open(const char* name, bool create, bool simple) {
  Close();
  m_commits = !simple;
  m_stream = BufferedFile::Open(name, AccessFor(create, simple), create ? FileDisposition::CreateAlways : FileDisposition::OpenExisting);
  return m_stream != nullptr;
}

void FileStream::Close() {
  // Kept: the pointer stays, and IsOpen with it.
  if (m_stream != nullptr) m_stream->Close();
}

bool FileStream::IsOpen() const { return m_stream != nullptr; }

FileStream::BufferedFile* FileStream::Usable() const { return m_stream != nullptr && m_stream->IsOpen() ? m_stream.get() : nullptr; }

bool FileStream::Sync() {
  BufferedFile* const stream = Usable();
  if (stream == nullptr) return false;
  return m_commits ? stream->Commit() : stream->Flush();
}

bool FileStream::Read(void* buffer, unsigned int size) {
  BufferedFile* const stream = Usable();
  if (stream == nullptr || (buffer == nullptr && size != 0)) return false;
  return size == 0 || stream->Read(static_cast<char*>(buffer), size);
}

bool FileStream::Write(const void* buffer, unsigned int size) {
  BufferedFile* const stream = Usable();
  if (stream == nullptr || (buffer == nullptr && size != 0)) return false;
  return size == 0 || stream->Write(static_cast<const char*>(buffer), size);
}

bool FileStream::Seek(long long offset, int origin) {
  BufferedFile* const stream = Usable();
  if (stream == nullptr || !FitsInt(offset) || origin < 0 || origin > 2) return false;
  return stream->Seek(offset, origin);
}

long long FileStream::Position() {
  BufferedFile* const stream = Usable();
  if (stream == nullptr) return -1;
  const long long position = stream->Position();
  return FitsInt(position) ? position : -1;
}

bool FileStream::SetSize(long long) {
  // Kept: refused whatever the stream's state.
  return false;
}
