#include "tests/support/RunningProgram.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

RunningProgram::RunningProgram(const std::string& path) {
  std::filesystem::copy_file("/bin/sleep", path);
  int started[2];
  if (pipe2(started, O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
  m_id = fork();
  if (m_id == 0) {
    execl(path.c_str(), path.c_str(), "3600", nullptr);
    const char failed = 1;
    if (write(started[1], &failed, 1) != 1) _exit(126);
    _exit(127);
  }
  close(started[1]);
  // The line closes by itself when the new program takes over.
  char failed = 0;
  const bool runs = m_id > 0 && read(started[0], &failed, 1) == 0;
  close(started[0]);
  if (!runs) throw std::runtime_error("cannot run " + path);
}

RunningProgram::~RunningProgram() {
  kill(m_id, SIGKILL);
  waitpid(m_id, nullptr, 0);
}

void RunningProgram::EndWithoutFetching() {
  kill(m_id, SIGKILL);
  siginfo_t info;
  waitid(P_PID, static_cast<id_t>(m_id), &info, WEXITED | WNOWAIT);
}

int NicenessOfThread() { return getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())); }
int NicenessOfProcess() { return getpriority(PRIO_PROCESS, static_cast<id_t>(getpid())); }
