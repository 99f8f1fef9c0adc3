// An open file with one buffer, for reading ahead and for collecting what is written, as the buffered calls of the C run time
// have it, but on the platform's files. Internal to the library; files/FileStream.h is what callers use.
#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "zelbase/platform/PlatformFiles.h"

namespace zelbase::detail {

// The buffer holds either bytes read ahead or bytes still to be written, never both. Of bytes that the system refuses those
// that did not go out stay in the buffer, so that a later Flush may still save them. Reading and writing may alternate.
// One thread at a time.
class BufferedFile {
 public:
  // Null when the file does not open. It shares with everybody.
  static std::shared_ptr<BufferedFile> Open(const char* name, FileRights access, FileDisposition disposition);

  BufferedFile(std::unique_ptr<PlatformFile> file, FileRights access);
  // Closes.
  ~BufferedFile();
  BufferedFile(const BufferedFile&) = delete;
  BufferedFile& operator=(const BufferedFile&) = delete;

  // Writes out what is left and closes; harmless when closed. Everything else needs an open file.
  void Close();
  bool IsOpen() const { return m_file != nullptr; }

  // True when all `size` bytes went through (into the buffer, when written).
  bool Read(char* target, std::size_t size);
  bool Write(const char* source, std::size_t size);

  // Out to the system; out to the device.
  bool Flush();
  bool Commit();

  // Origins 0, 1, 2. On false the position is as before.
  bool Seek(long long offset, int origin);

  // -1 on failure.
  long long Position();

 private:
  std::size_t Unread() const { return m_end - m_begin; }
  bool DropUnread();
  std::size_t TakeUnread(char* target, std::size_t size);
  bool WriteThrough(const char* source, std::size_t size, std::size_t& done);

  std::unique_ptr<PlatformFile> m_file;
  FileRights m_access;
  std::array<char, 4096> m_buffer;
  std::size_t m_begin = 0;  // of what was read ahead
  std::size_t m_end = 0;
  std::size_t m_pending = 0;  // bytes from the buffer's start that wait to be written
};

}  // namespace zelbase::detail
