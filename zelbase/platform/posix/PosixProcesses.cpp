#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <string_view>

#include "zelbase/platform/PlatformProcesses.h"
#include "zelbase/platform/detail/IntendedWraps.h"
#include "zelbase/platform/posix/Interruptions.h"
#include "zelbase/platform/posix/PosixPaths.h"

namespace {

using zelbase::detail::WithoutInterruption;

// The system's list of processes: a folder a process, named by its number.
constexpr const char* kProcesses = "/proc";

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

// Of the name of an entry, which is never empty.
bool IsNumber(std::string_view text) { return text.find_first_not_of("0123456789") == std::string_view::npos; }

std::string ReadSmallFile(const std::string& path) {
  const int file = WithoutInterruption([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC); });
  if (file < 0) return {};
  char buffer[1024];
  const ssize_t length = WithoutInterruption([&] { return read(file, buffer, sizeof(buffer)); });
  close(file);
  return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

// File name of the executable that `exe` links to. A file that was replaced or removed meanwhile is marked by the system.
ZELBASE_WRAPS std::string ExecutableName(const std::string& folder) {
  std::string path = zelbase::detail::LinkText(folder + "/exe");
  constexpr std::string_view kDeleted = " (deleted)";
  if (path.size() > kDeleted.size() && path.ends_with(kDeleted)) path.resize(path.size() - kDeleted.size());
  return path.substr(path.rfind('/') + 1);
}

// The short name that the system keeps, for a process whose executable the caller may not see: "12 (name) S ...", where
// the name may hold anything. Empty for one that has ended and was not fetched by its parent.
std::string ShortName(const std::string& folder) {
  const std::string status = ReadSmallFile(folder + "/stat");
  const std::size_t begin = status.find('(');
  const std::size_t end = status.rfind(')');
  if (begin == std::string::npos || end == std::string::npos || end + 2 >= status.size()) return {};
  const char state = status[end + 2];
  // Unreached: 'X', which a process shows for the moment between its end and its being gone.
  if (state == 'Z' || state == 'X') return {};
  return status.substr(begin + 1, end - begin - 1);
}

class PosixProcesses final : public PlatformProcesses {
 public:
  constexpr PosixProcesses() = default;

  std::vector<std::string> ExecutableNames() override {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, FolderCloser> processes(opendir(kProcesses));
    if (!processes) return names;
    while (const dirent* const entry = readdir(processes.get())) {
      if (!IsNumber(entry->d_name)) continue;
      const std::string folder = std::string(kProcesses) + "/" + entry->d_name;
      std::string name = ExecutableName(folder);
      if (name.empty()) name = ShortName(folder);
      if (!name.empty()) names.push_back(std::move(name));
    }
    return names;
  }

  long long CurrentId() override { return getpid(); }

  unsigned long LogicalProcessors() override {
    const long online = sysconf(_SC_NPROCESSORS_ONLN);
    return online > 0 ? static_cast<unsigned long>(online) : 0;  // Unreached: no answer, which this system always has
  }

  bool HasProcessorRecords() override { return false; }

  int ReadProcessorRecords(ProcessorRecord*, std::size_t& count) override {
    count = 0;
    return PROCESSOR_RECORDS_READ;
  }

  // Systems of this kind are none of those that a record is about.
  bool ReadVersion(VersionRecord, SystemVersion&) override { return false; }
};

// Ready before any code runs and never destroyed.
union ProcessesStorage {
  constexpr ProcessesStorage() : processes() {}
  constexpr ~ProcessesStorage() {}
  PosixProcesses processes;
};
constinit ProcessesStorage g_storage;

}  // namespace

PlatformProcesses& PlatformProcesses::System() { return g_storage.processes; }
