// The framework's plain file class: open by flags, read, write, seek, close. CArchive.h reads and writes text through it;
// PlatformFiles.h is the layer below, for callers that want result numbers instead of exceptions.
#pragma once

#include <memory>
#include <string>

#include "zelbase/platform/CFileException.h"
#include "zelbase/platform/CObject.h"
#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/ZelBaseApi.h"

// One regular file, closed or open; a folder, a FIFO or a device does not open. It lies where PlatformFiles in force at
// the time of Open has it, and stays there.
//
//   CFile file;
//   if (file.Open(name, CFile::modeRead | CFile::shareDenyWrite)) file.Read(buffer, size);
//
// Failure: Open returns false, every other operation throws a CFileException by value; on a file that is not open it is
// InvalidHandle. The destructor closes and never throws.
//
// Every operation is virtual, so that a subclass may keep its bytes elsewhere (in memory, say) and still be given to a
// CArchive. Not copyable. One thread at a time.
class ZELBASE_API CFile : public CObject {
 public:
  // One of each group, combined with |.
  enum OpenFlags : unsigned int {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,

    shareCompat = 0x0000,     // as shareDenyNone
    shareExclusive = 0x0010,  // others neither read nor write meanwhile
    shareDenyWrite = 0x0020,
    shareDenyRead = 0x0030,
    shareDenyNone = 0x0040,

    modeNoInherit = 0x0080,  // always so: no file is handed to child processes

    // Makes the file when it is missing and cuts it to nothing when it is there, after the sharing check; nothing else
    // cuts a file. Needs the right to read and write also with modeRead, and then gives it.
    modeCreate = 0x1000,
    modeNoTruncate = 0x2000,  // with modeCreate: keeps what is there

    typeText = 0x4000,  // without effect, as typeBinary: bytes are bytes
    typeBinary = 0x8000
  };

  enum SeekPosition : unsigned int { begin = 0, current = 1, end = 2 };

  CFile();
  // Opens, or throws.
  CFile(const char* fileName, unsigned int openFlags);
  ~CFile() override;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  // Closes what is open, then opens `fileName` ("\" or "/" as separator). False on failure, with `error` filled in when it
  // is not null; the object is closed then. A null or empty name fails as badPath.
  virtual bool Open(const char* fileName, unsigned int openFlags, CFileException* error = nullptr);
  // A name with a zero byte in it fails as badPath, instead of opening the file named by its front.
  bool Open(const std::string& fileName, unsigned int openFlags, CFileException* error = nullptr);

  // Reads up to `count` bytes; fewer than that only at the end of the file, 0 behind it.
  virtual unsigned int Read(void* buffer, unsigned int count);

  // Writes all `count` bytes or throws.
  virtual void Write(const void* buffer, unsigned int count);

  // Moves to `offset` bytes from a SeekPosition and returns the new position, counted from the start. A position before
  // the start throws and moves nothing; one behind the end is allowed.
  virtual unsigned long long Seek(long long offset, unsigned int from);
  void SeekToBegin();
  // The new position, which is the length.
  unsigned long long SeekToEnd();

  virtual unsigned long long GetPosition() const;
  virtual unsigned long long GetLength() const;
  // Cuts or extends (with zero bytes) the file and stays at its new end.
  virtual void SetLength(unsigned long long length);

  // Forces what was written out to the device.
  virtual void Flush();

  // Closes; without effect when nothing is open. The names go with it.
  virtual void Close();
  // As Close, and never throws.
  virtual void Abort();

  // The name as given to Open, and the part of it behind the last "\", "/" or ":". Empty when closed.
  virtual std::string GetFilePath() const;
  virtual std::string GetFileName() const;

 private:
  PlatformFile& RequireOpen() const;
  void ThrowUnlessOk(FileResult result) const;
  FileResult OpenThrough(const std::string& fileName, unsigned int openFlags);

  std::unique_ptr<PlatformFile> m_file;
  std::string m_path;
};
