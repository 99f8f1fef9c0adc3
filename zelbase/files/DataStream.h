// A seekable stream of bytes with 64-bit positions, whatever it is made of, and a lock by which threads share it.
// Neighbours: FileStream.h, ordinary files, buffered; HugeFileStream.h, files of any size and
// on network shares.
#pragma once

#include "zelbase/concurrency/Locker.h"
#include "zelbase/platform/ZelBaseApi.h"

// Nothing in here, or in the classes derived from it, takes the lock by itself: a caller brackets what belongs together.
//
//   stream.Lock();
//   const bool whole = stream.Seek(position, 0) && stream.Read(&record, sizeof(record));
//   stream.Unlock();
//
// Without the lock one thread at a time. A copy has a lock of its own, free whatever the source's state; streams are not to
// be copied in use.
class ZELBASE_API DataStream {
 public:
  DataStream() = default;
  DataStream(const DataStream&) = default;
  DataStream& operator=(const DataStream&) = default;
  virtual ~DataStream() = default;

  // Forces what was written out.
  virtual bool Sync() = 0;

  // True only when exactly `size` bytes went through. On false a part of them may have, and the position has moved by it.
  virtual bool Read(void* buffer, unsigned int size) = 0;
  virtual bool Write(const void* buffer, unsigned int size) = 0;

  // Moves to `offset` bytes from the start (origin 0), the current position (1) or the end (2). A position behind the end is
  // allowed.
  virtual bool Seek(long long offset, int origin) = 0;

  // Bytes from the start; -1 when it cannot be told.
  virtual long long Position() = 0;

  // Cuts or extends (with zero bytes) to `size` bytes.
  virtual bool SetSize(long long size) = 0;

  // Waits until the calling thread holds the stream's lock; always true. The same thread may lock again and unlocks as often.
  bool Lock() { return m_lock.Lock(); }
  void Unlock() { m_lock.Unlock(); }

 protected:
  Locker m_lock;
};
