#include "tests/support/ThisProcess.h"

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

namespace {

// The numbers of all open descriptors but the look-up's own, which is closed again when they are counted.
std::vector<int> OpenDescriptors() {
  std::vector<int> open;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    open.push_back(std::stoi(entry.path().filename().string()));
  }
  std::erase_if(open, [](int descriptor) { return ::fcntl(descriptor, F_GETFD) < 0; });
  return open;
}

void SetLimit(decltype(RLIMIT_NOFILE) resource, unsigned long long value) {
  struct rlimit limit {};
  ::getrlimit(resource, &limit);
  limit.rlim_cur = static_cast<rlim_t>(value);  // the hard limit stays, so that a later call may raise it again
  ::setrlimit(resource, &limit);
}

}  // namespace

int CountOpenDescriptors() { return static_cast<int>(OpenDescriptors().size()); }

int CountInheritableDescriptors() {
  int count = 0;
  for (const int descriptor : OpenDescriptors()) {
    if ((::fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0) ++count;
  }
  return count;
}

bool HasChildren() {
  siginfo_t ignored{};
  return ::waitid(P_ALL, 0, &ignored, WEXITED | WNOHANG | WNOWAIT) == 0;
}

int ThisThread() { return ::gettid(); }

void AwaitWaiting(int thread) {
  const std::string name = "/proc/self/task/" + std::to_string(thread) + "/stat";
  for (;;) {
    std::ifstream stream(name);
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::size_t end = text.rfind(')');
    if (end != std::string::npos && text.substr(end + 2, 1) == "S") return;
    std::this_thread::yield();
  }
}

void LimitFileSize(unsigned long long bytes) {
  ::signal(SIGXFSZ, SIG_IGN);
  SetLimit(RLIMIT_FSIZE, bytes);
}

void LimitDescriptors(unsigned int count) { SetLimit(RLIMIT_NOFILE, count); }

bool BecomeOrdinaryUser() {
  constexpr unsigned int kNobody = 65534;
  if (::geteuid() != 0) return true;
  return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
}

EnvironmentVariable::EnvironmentVariable(const char* name, const char* value) : m_name(name) {
  if (const char* const former = ::getenv(name)) {
    m_former = former;
    m_wasSet = true;
  }
  value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
}

EnvironmentVariable::~EnvironmentVariable() { m_wasSet ? ::setenv(m_name.c_str(), m_former.c_str(), 1) : ::unsetenv(m_name.c_str()); }
