#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>
#include <vector>

#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/PlatformHelp.h"
#include "zelbase/platform/posix/Interruptions.h"
#include "zelbase/platform/posix/PosixPaths.h"

namespace {

using zelbase::detail::ToSystemPath;
using zelbase::detail::WithoutInterruption;

constexpr const char* kViewerVariable = "ZELBASE_HELP_VIEWER";

// A program's argument would end there.
bool HasZeroByte(const std::string& text) { return text.find('\0') != std::string::npos; }

std::string FindViewer() {
  const char* const viewer = std::getenv(kViewerVariable);
  if (viewer == nullptr || *viewer != '/') return {};
  return PlatformFiles::System().IsRegularFile(viewer) && ::access(viewer, X_OK) == 0 ? viewer : std::string();
}

// Never destroyed: help may be asked for until the process has ended.
const std::string& Viewer() {
  static const std::string& viewer = *new std::string(FindViewer());
  return viewer;
}

// The child's side. It leaves the program to a child of its own and ends, so that the program belongs to the system and
// nobody has to fetch its end. Writes to `line` when the program does not start. Only what may be called between fork
// and exec in a process with threads.
[[noreturn]] void BecomeProgram(char* const* arguments, int line) {
  const pid_t program = ::fork();
  if (program > 0) ::_exit(0);
  if (program == 0) {
    ::setsid();
    ::execv(arguments[0], arguments);
  }
  const char failed = 1;
  static_cast<void>(!::write(line, &failed, 1));
  ::_exit(1);
}

// True when nothing was written to `line` until its other ends were closed, which a program's start does.
bool ClosesInSilence(int line) {
  char byte = 0;
  return WithoutInterruption([&] { return ::read(line, &byte, 1); }) == 0;
}

bool StartAlone(std::vector<std::string> words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  int line[2];
  if (::pipe2(line, O_CLOEXEC) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) BecomeProgram(arguments.data(), line[1]);
  ::close(line[1]);
  const bool started = child > 0 && ClosesInSilence(line[0]);
  ::close(line[0]);
  if (child > 0) WithoutInterruption([&] { return ::waitpid(child, nullptr, 0); });
  return started;
}

class PosixHelp final : public PlatformHelp {
 public:
  bool Show(const std::string& file, const std::optional<std::string>& topic) override {
    const std::string topicText = topic.value_or(std::string());
    if (Viewer().empty() || HasZeroByte(file) || HasZeroByte(topicText)) return false;
    if (!PlatformFiles::System().IsRegularFile(file)) return false;
    std::vector<std::string> words = {Viewer(), ToSystemPath(file)};
    if (topic) words.push_back(topicText);
    return StartAlone(std::move(words));
  }

  void Beep() override {
    if (::isatty(STDERR_FILENO) == 1) static_cast<void>(!::write(STDERR_FILENO, "\a", 1));
  }
};

}  // namespace

PlatformHelp& PlatformHelp::System() {
  static PlatformHelp& help = *new PosixHelp;
  return help;
}
