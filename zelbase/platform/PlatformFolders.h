// The well-known folders of the computer. Neighbours: PlatformModules.h for where programs and libraries lie; FixedFolders.h,
// the stand-in with folders of its own.
#pragma once

#include <string>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

// Names come in the "\" form ("/tmp\x" for an absolute path of this system), without a final "\".
class ZELBASE_API PlatformFolders {
 public:
  virtual ~PlatformFolders() = default;

  // The folder for data common to all users: the environment variable ZELBASE_COMMON_DATA when it is set and not empty,
  // otherwise the system's. False, `folder` untouched, when there is none. The folder is not created.
  virtual bool CommonData(std::string& folder) = 0;

  // The current folder. False when it has gone.
  virtual bool Current(std::string& folder) = 0;

  // Bytes that the caller may still write on the disk of `path`. False when that cannot be told.
  virtual bool FreeSpace(const std::string& path, unsigned long long& bytes) = 0;

  // This system's folders; never destroyed.
  static PlatformFolders& System();
};
