// An ordinary file as a buffered stream, after the file calls of the C run time. Neighbours: HugeFileStream.h, for files
// beyond 2 GB and on network shares; DataStream.h, the interface.
#pragma once

#include <memory>

#include "zelbase/files/DataStream.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {
class BufferedFile;
}

// What Open asks for:
//
//   create  simple   the file                    the stream
//   true    true     made anew                   writes
//   true    false    made anew                   reads and writes; Sync reaches the device
//   false   true     must exist                  reads
//   false   false    must exist                  reads and writes; Sync reaches the device
//
// Reading and writing may follow each other in any order. Positions go to 2147483647: Seek refuses an offset outside the
// signed 32-bit range, and Position answers -1 for what lies beyond. SetSize is always false.
//
// Open denies nobody anything, but fails where another opener denies what it needs. Only regular files open; the name may be
// of any length and is taken with exactly its case.
//
// States:
//                           a new object, or Open failed   open              after Close
//   IsOpen                  false                          true              true
//   Sync, Read, Write, Seek false                          as DataStream.h   false
//   Position                -1                             as DataStream.h   -1
// Kept: IsOpen stays true after Close; callers have long gone by it.
//
// A copy is a second name of the same stream: closing either closes both. The last one gone closes it, too. What the buffer
// still holds is written at Close or at the end, without a word if that fails: Sync first to know. One thread at a time, or
// between Lock and Unlock.
class ZELBASE_API FileStream : public DataStream {
 public:
  FileStream();
  // Opens; ask IsOpen.
  FileStream(const char* name, bool create, bool simple);
  FileStream(const FileStream&);
  FileStream& operator=(const FileStream&);
  ~FileStream() override;

  // Closes what is open and opens `name`; null is no name. True when a stream was got.
  bool Open(const char* name, bool create, bool simple);

  void Close();

  bool IsOpen() const;

  // True when the buffer went out: to the system, and in the two read-write forms to the device.
  bool Sync() override;

  // False for null and a size other than 0.
  bool Read(void* buffer, unsigned int size) override;
  bool Write(const void* buffer, unsigned int size) override;

  bool Seek(long long offset, int origin) override;
  long long Position() override;

  // Kept: false for an open stream, too; these file calls cannot change a size.
  bool SetSize(long long size) override;

 private:
  using BufferedFile = zelbase::detail::BufferedFile;

  // The open stream; null without one.
  BufferedFile* Usable() const;

  std::shared_ptr<BufferedFile> m_stream;  // null when not open, there after Close
  bool m_commits = false;                  // Sync goes on to the device
};
