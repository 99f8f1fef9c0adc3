// A file in memory, whose bytes end as a block for the clipboard or come from one. Neighbours: CFile.h, whose operations it
// has; HGLOBAL.h, the block.
#pragma once

#include <cstddef>
#include <string>

#include "zelbase/platform/CFile.h"
#include "zelbase/platform/HGLOBAL.h"
#include "zelbase/platform/ZelBaseApi.h"

// Open from the beginning, for reading and writing, until Close; nothing can be opened by name. It grows as it is written;
// bytes between its end and a position behind it are 0 once something is written there.
//
//   CSharedFile file;
//   CArchive archive(&file, CArchive::store);
//   ...
//   archive.Close();
//   HGLOBAL block = file.Detach();
//
// Failure: as CFile, a CFileException; a file that is closed or detached is InvalidHandle, a position beyond 2147483647 on writing
// is DiskFull. Not copyable. One thread at a time.
class ZELBASE_API CSharedFile : public CFile {
 public:
  // `growBytes` is how much room a growing file takes at least.
  explicit CSharedFile(unsigned int growBytes = 4096);
  // Begins with a copy of the block's bytes, at position 0; null is an empty block.
  explicit CSharedFile(const HGLOBAL& block);
  ~CSharedFile() override;

  // The bytes written, of exactly their length; the file is closed then. Null when it was closed before.
  HGLOBAL Detach();

  using CFile::Open;
  // False; as CFile tells it.
  bool Open(const char* fileName, unsigned int openFlags, CFileException* error = nullptr) override;

  unsigned int Read(void* buffer, unsigned int count) override;
  void Write(const void* buffer, unsigned int count) override;
  unsigned long long Seek(long long offset, unsigned int from) override;
  unsigned long long GetPosition() const override;
  unsigned long long GetLength() const override;
  void SetLength(unsigned long long length) override;
  void Flush() override;
  void Close() override;
  void Abort() override;

 private:
  void RequireOpen() const;
  void RequireRoom(unsigned long long length) const;

  bool m_open = true;
  std::size_t m_growBytes;
  std::string m_bytes;
  unsigned long long m_position = 0;
};
