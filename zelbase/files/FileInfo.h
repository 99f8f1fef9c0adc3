// A path with what the file system knew of it at one moment. Neighbours: FileName.h, the path alone; FileHelpers.h, size and
// time in one call; FileFinder.h, for looking through folders.
#pragma once

#include <memory>
#include <string>

#include "zelbase/files/FileName.h"
#include "zelbase/platform/ZelBaseApi.h"

// Asks once, when it is made; assigning another object or constructing anew asks again, changing the name does not. Links are
// followed.
//
//   const FileInfo info("C:\\data\\track.dat");
//   if (info.Attributes() != FileInfo::INVALID_ATTRIBUTES) ... info.Stat().st_size ...
//
// A value; a copy has the same answers without asking. Threads as FileName.
class ZELBASE_API FileInfo : public FileName {
 public:
  // What Attributes() is for a path that does not exist or may not be looked at.
  static constexpr unsigned int INVALID_ATTRIBUTES = 0xFFFFFFFFu;

  FileInfo(const std::string& path);
  FileInfo(const char* path);
  FileInfo(const FileName& name);
  FileInfo(const FileInfo&) = default;
  FileInfo& operator=(const FileInfo&) = default;

  // 16 for a folder, 1 when it may not be written, both together when both hold, 128 when neither.
  unsigned int Attributes() const { return m_attributes; }

  // The system's own record, all zero when the path does not exist. Include the system's header, <sys/stat.h>, to look into it.
  const struct stat& Stat() const;

  // The path itself; beside Name(bool), a part of it.
  using FileName::Name;
  const FileName& Name() const { return *this; }

 private:
  void Ask();

  unsigned int m_attributes = INVALID_ATTRIBUTES;
  std::shared_ptr<const struct stat> m_stat;  // null: nothing was found
};
