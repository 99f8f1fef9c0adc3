// Files as the operating system has them: open with access, sharing and disposition, then read, write, seek. Every byte
// that the library reads or writes goes through here. Neighbours: FaultInjectionFiles.h, which fails on request; CFile.h,
// the plain file class that callers of the settings store know; PlatformFolders.h for names of folders.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "zelbase/platform/FileResult.h"
#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

// Reading and writing, as rights asked for (access) or granted to others (sharing). Values combine with |.
enum class FileRights : unsigned int { None = 0, Read = 1, Write = 2, ReadWrite = 3 };

constexpr FileRights operator|(FileRights a, FileRights b) {
  return static_cast<FileRights>(static_cast<unsigned int>(a) | static_cast<unsigned int>(b));
}
constexpr bool Includes(FileRights rights, FileRights right) {
  return (static_cast<unsigned int>(rights) & static_cast<unsigned int>(right)) == static_cast<unsigned int>(right);
}

enum class FileDisposition : unsigned int {
  OpenExisting,  // must exist
  OpenOrCreate,  // kept as it is when it exists
  CreateAlways,  // cut to nothing when it exists, after the sharing check
  CreateNew,     // must not exist
};

class PlatformFile;

struct FileOpenRequest {
  std::string path;  // "\" or "/" as separator
  FileRights access = FileRights::Read;
  FileRights sharing = FileRights::ReadWrite;  // what others may do meanwhile
  FileDisposition disposition = FileDisposition::OpenExisting;
  bool randomAccess = false;  // hint only
  bool ownerOnly = false;     // a file made by this opening is nobody else's to read

  // An open file of the caller's that this opening is to take the place of: when both are one file, its own claims are no
  // hindrance, and nobody else gets in between. It stays open, with its claims, until the caller closes it.
  PlatformFile* inPlaceOf = nullptr;
};

// Milliseconds since 1970-01-01 00:00:00 UTC.
struct FileTimes {
  double created = 0.0;
  double accessed = 0.0;
  double written = 0.0;
};

// This system's record of a path; include the system's header to look into it.
struct stat;

// What is known of a path, links followed.
struct ZELBASE_API FileStatus {
  bool isFolder = false;
  bool isWritable = false;                    // there is a right to write, and this user has it
  unsigned long long size = 0;                // bytes
  std::shared_ptr<const struct stat> record;  // null: a file service that has none

  // A record that is all zero; never destroyed.
  static const struct stat& NoRecord();
};

struct FolderEntry {
  std::string name;
  bool isFolder = false;  // itself, no link to one
};

// One open file. The destructor closes it. One thread at a time.
class ZELBASE_API PlatformFile {
 public:
  virtual ~PlatformFile() = default;

  // Reads up to `size` bytes; `done` is what came, less than `size` only at the end of the file. `done` is set on
  // failure too.
  virtual FileResult Read(void* buffer, std::size_t size, std::size_t& done) = 0;

  // Writes all of `size` bytes or fails; `done` is what went out.
  virtual FileResult Write(const void* buffer, std::size_t size, std::size_t& done) = 0;

  // Origin 0 from the start, 1 from the current position, 2 from the end. `position` is the new one, untouched on failure.
  virtual FileResult Seek(long long offset, int origin, long long& position) = 0;

  // Forces what was written out to the device.
  virtual FileResult Flush() = 0;

  virtual FileResult GetSize(long long& size) = 0;

  // Cuts or extends the file at the current position.
  virtual FileResult SetEnd() = 0;

  virtual FileResult GetTimes(FileTimes& times) = 0;

  // Takes over permissions (and owner, where the system allows it) of the file at `path`.
  virtual FileResult CopyModeFrom(const std::string& path) = 0;
};

// The file system's side. May be called from any thread.
//
// Sharing holds among all who open files through this interface, in this process and in others, until the file is closed; a
// forked child shares its parent's open files and holds on to them until it, too, has closed them or ended. Programs that
// open files in other ways are not kept away, but one that locks a whole file is heeded. On a file system without locks
// sharing is not checked.
class ZELBASE_API PlatformFiles {
 public:
  virtual ~PlatformFiles() = default;

  // Opens a regular file; a folder, FIFO or device is AccessDenied and is not waited for. Null on failure with `result`
  // set; CreateAlways checks sharing before it cuts the file.
  virtual std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) = 0;

  // Renames `from` over `to` in one step that a power cut leaves done or not done, and makes the folder's entry durable.
  // Both are regular files or links, a link itself being replaced; SharingViolation while another open denies writing to `to`.
  virtual FileResult Replace(const std::string& from, const std::string& to) = 0;

  virtual FileResult Remove(const std::string& path) = 0;

  // The file that `path` stands for when links are followed to their end; `path` itself when it is no link or does not
  // exist.
  virtual std::string FollowLinks(const std::string& path) = 0;

  // True for an existing regular file (links followed).
  virtual bool IsRegularFile(const std::string& path) = 0;

  // What is known of a path; `status` is untouched on failure. This and List are NotFound and PathNotFound in a service
  // that has no folders.
  virtual FileResult GetStatus(const std::string& /*path*/, FileStatus& /*status*/) { return FileResult::NotFound; }

  // Appends what is in `folder` (empty: the current one) in ascending byte order, without "." and "..". On failure, also one
  // midway, nothing is appended. Names that hold a "\" are left out: no path of the interface can mean them.
  virtual FileResult List(const std::string& /*folder*/, std::vector<FolderEntry>& /*entries*/) { return FileResult::PathNotFound; }

  // This system's files; never destroyed.
  static PlatformFiles& System();
};
