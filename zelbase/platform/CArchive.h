// Lines of text, or binary records, through a file: the framework's archive. CFile.h is what it reads from and writes to; a
// subclass of CFile serves as well. CObject.h is what serialises itself to one.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "zelbase/platform/CFile.h"
#include "zelbase/platform/CFileException.h"
#include "zelbase/platform/ZelBaseApi.h"

// A buffer on an open CFile, which stays the caller's and must outlive the archive's work on it. One direction an archive.
//
// Loading: the file is read in blocks of the buffer's size, so that its position runs ahead of the lines delivered.
// A line ends at LF; one CR just before that LF belongs to the line end. A lone CR, zero bytes and a byte order mark are
// text. A last line without LF counts; a final LF makes no further line.
//
// Storing: what is written reaches the file when the buffer is full, at Flush, at Close or in the destructor. After the
// first write that failed nothing more goes out: every later WriteString, Flush and Close throws that failure again.
//
// Failure: what the file throws passes through (CFileException). A null file reads as an empty one and refuses writing. An
// archive that ends before what it announces throws a CArchiveException.
// Not copyable. One thread at a time.
class ZELBASE_API CArchive {
 public:
  enum Mode : unsigned int { store = 0, load = 1 };

  // A `bufferSize` below 1 or above 16777216 is taken as 4096.
  CArchive(CFile* file, unsigned int mode, int bufferSize = 4096);

  // Writes out what is left, as Close does, and swallows a failure: who needs to know calls Close first.
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  bool IsLoading() const noexcept { return m_loading; }
  bool IsStoring() const noexcept { return !m_loading; }
  CFile* GetFile() const noexcept { return m_file; }

  // The next line without its end. False at the end of the file, and `line` is empty; false on a storing archive, `line`
  // untouched. When the file throws, the part of the line read so far is kept for the next call.
  bool ReadString(std::string& line);

  // As ReadString, without a copy when the line lies in the buffer as a whole: `line` is valid until the next call of any
  // operation.
  bool ReadLine(std::string_view& line);

  // Puts out the bytes of `text`, zero bytes too, and no line end. On a loading archive, or one without a file, it throws
  // invalidFile. A null text is an empty one.
  void WriteString(std::string_view text);
  void WriteString(const char* text);

  // Up to `size` bytes, line ends too; the number of them, less than `size` only at the end of the file. 0 on a storing archive and
  // for a null pointer.
  std::size_t Read(void* buffer, std::size_t size);

  // Puts out `size` bytes; fails as WriteString does. Nothing for a null pointer.
  void Write(const void* buffer, std::size_t size);

  // A count of elements: 2 bytes, or 0xFFFF and 4 bytes for a count from 65535 upward, little-endian. Of a larger number the low 32
  // bits are written. ReadCount throws a CArchiveException, endOfFile, when the archive ends within the count.
  std::size_t ReadCount();
  void WriteCount(std::size_t count);

  // Hands the buffer to the file when storing; nothing when loading. The file is not flushed to the device:
  // CFile::Flush does that.
  void Flush();

  // Flush, then lets go of the file, which is not closed; also when Flush throws. A second Close does nothing.
  void Close();

 private:
  bool FillBuffer();
  std::string_view TakeLine(std::string_view line);
  std::size_t TakeBytes(char* buffer, std::size_t size);
  unsigned int ReadWord(std::size_t size);
  void WriteWord(unsigned int word, std::size_t size);
  void RequireStoring() const;
  void PutOut(const char* data, std::size_t size);

  CFile* m_file;
  const bool m_loading;
  const std::size_t m_size;
  const std::unique_ptr<char[]> m_buffer;
  std::size_t m_begin = 0;  // loading: first byte not yet delivered
  std::size_t m_end = 0;    // behind the last byte in the buffer
  std::string m_line;       // loading: a line that runs over the end of a block
  bool m_lineDelivered = false;
  std::optional<CFileException> m_failure;  // storing: the first failed write
};
