#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cstdlib>
#include <limits>
#include <memory>
#include <string>

#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/posix/PosixPaths.h"

namespace {

using zelbase::detail::ToInterfacePath;
using zelbase::detail::ToSystemPath;

// Where this system keeps what its programs share and change.
constexpr const char* kCommonData = "/var/lib";

bool IsFolder(const char* path) {
  struct stat status {};
  return ::stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

// The interface's form without a final separator; the root alone stays "/".
std::string HandOut(std::string path) {
  path = ToSystemPath(path);
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return ToInterfacePath(path);
}

class PosixFolders final : public PlatformFolders {
 public:
  bool CommonData(std::string& folder) override {
    const char* const chosen = std::getenv("ZELBASE_COMMON_DATA");
    if (chosen != nullptr && *chosen != '\0') {
      folder = HandOut(chosen);
      return true;
    }
    if (!IsFolder(kCommonData)) return false;
    folder = HandOut(kCommonData);
    return true;
  }

  // A folder that has gone, or lies outside the process's root, has no name that leads to it.
  bool Current(std::string& folder) override {
    const std::unique_ptr<char, void (*)(void*)> path(::getcwd(nullptr, 0), std::free);
    // Unreached: a path that is not absolute, which the C library of this system no longer gives.
    if (path == nullptr || *path != '/') return false;
    folder = HandOut(path.get());
    return true;
  }

  bool FreeSpace(const std::string& path, unsigned long long& bytes) override {
    const std::string name = ToSystemPath(path);
    struct statvfs status {};
    if (name.find('\0') != std::string::npos || ::statvfs(name.c_str(), &status) != 0) return false;
    const unsigned long long blocks = status.f_bavail;
    const unsigned long long size = status.f_frsize;
    constexpr unsigned long long kMost = std::numeric_limits<unsigned long long>::max();
    // Unreached: a size of 0 and more bytes than a number holds, which no mounted file system has.
    bytes = size != 0 && blocks > kMost / size ? kMost : blocks * size;
    return true;
  }
};

}  // namespace

PlatformFolders& PlatformFolders::System() {
  static PlatformFolders& folders = *new PosixFolders;
  return folders;
}
