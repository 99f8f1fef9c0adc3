// A file of any size as a stream, straight on the operating system's file, that survives a dropped network connection.
// Neighbours: FileStream.h, the buffered one for ordinary files; DataStream.h, the interface; platform/PlatformFiles.h, the
// files underneath.
#pragma once

#include <memory>
#include <string>

#include "zelbase/files/DataStream.h"
#include "zelbase/platform/ZelBaseApi.h"

class PlatformFile;

// What Open asks for, and what others may do meanwhile:
//
//                  readWrite true     readWrite false
//   access         read and write     read
//   others may     read               read and write
//
// So a file has any number of readers and one writer, come in any order, and a second writer is refused. This holds among
// all streams of this process and of others that open their files through this library (PlatformFiles.h). `create` makes the
// file anew; a refused opening has not cut it. Only regular files open; the name may be of any length and is taken with
// exactly its case.
//
// A lost connection (errors 64 and 59, for Seek and Position also 6, the closed stream) is met by opening the file again, at
// most once in 15 seconds:
//
//                         no more than 15 s since the last try    later: one try, which
//                                                                 fails                 works
//   Read                  false                                   false                 false; the next one reads from 0
//   Seek                  true, nothing has moved                 true                  seeks once more, as that goes
//   Position              4294967295                              4294967295            0
//   Write, SetSize, ...   false; they never open the file again
//
// Kept: Seek says true in an outage, so that a replay runs on through it and notices it by Read. Time is the computer's
// millisecond tick, and in its first 15 seconds no try is made. A file opened again stands at position 0: the caller seeks.
//
// Nothing is buffered here: read in blocks. A stream that is not open: Read, Write, SetSize and the Get... are false, Sync is
// true, Seek is true and Position 4294967295 as in an outage.
//
// A copy is a second name of the same open file, position included; the last one closes it. Streams are not to be copied in
// use. One thread at a time, or between Lock and Unlock.
class ZELBASE_API HugeFileStream : public DataStream {
 public:
  HugeFileStream();
  // Opens; ask IsOpen.
  HugeFileStream(const char* name, bool create, bool readWrite);
  HugeFileStream(const HugeFileStream&);
  HugeFileStream& operator=(const HugeFileStream&);
  ~HugeFileStream() override;

  // Closes what is open, also when it then fails, and opens `name`; null is no name.
  bool Open(const char* name, bool create, bool readWrite);

  // Without effect when nothing is open.
  void Close();

  bool IsOpen() const { return m_handle != nullptr; }

  // The name as opened; empty when closed. Valid until the stream changes.
  const char* FileName() const { return m_fileName.c_str(); }

  bool IsReadWrite() const { return m_readWrite; }

  // Opens the same file in the wanted mode and lets go of the old opening, which does not count against it; nobody else gets
  // in between. The position is 0 then. On false nothing has changed; a closed stream gives false.
  bool MakeReadWrite(bool readWrite);

  // Bytes; untouched on false.
  bool GetSize(long long& size);

  // Milliseconds since 1970-01-01 00:00:00 UTC, with a resolution of 100 nanoseconds. On false all three are 0.0.
  bool GetFileTimes(double& created, double& accessed, double& written);

  // The suite's check of a large file: from the present position to the end each byte is taken as a signed character and
  // added to a CRCChecksum as an int, four bytes each.
  // Kept: so it is no CRC-32 of the file, and there is no inversion at the end; stored values were made so. An empty rest
  // gives 0xFFFFFFFF. A failing read counts as the end. The position is the end then. False only when not open.
  bool GetFileCrc32(unsigned int& crc);

  // True at once for a stream that only reads.
  bool Sync() override;

  // Kept: false at the end of the file although the front was read and the position has moved.
  bool Read(void* buffer, unsigned int size) override;
  bool Write(const void* buffer, unsigned int size) override;

  // False for an origin other than 0, 1, 2 and for a position before the start, which moves nothing.
  bool Seek(long long offset, int origin) override;
  long long Position() override;

  // Seeks to `size` and cuts or extends there; the position stays there, also when the cut fails.
  bool SetSize(long long size) override;

 private:
  enum class Sought { Moved, ConnectionLost, Failed };

  Sought SeekOrReOpen(long long offset, int origin, long long& position);
  bool ReOpenWhenDue();
  bool ReOpen();
  bool OpenAnew(bool readWrite);

  unsigned int m_lastReopen = 0;           // tick in milliseconds of the last try
  std::shared_ptr<PlatformFile> m_handle;  // null when not open
  std::string m_fileName;
  bool m_readWrite = false;
};
