#include "tests/support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include "tests/support/BranchCounts.h"

namespace {

constexpr int kLimitMilliseconds = 60000;

struct Ends {
  int first = -1;
  int second = -1;
};

// What is written into `second` comes out of `first`.
Ends MakePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("child process: no pipe");
  return {ends[0], ends[1]};
}

// Both ways; a socket, because writing to one that the other side has closed can be kept from raising a signal.
Ends MakeLine() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw std::runtime_error("child process: no line");
  }
  return {ends[0], ends[1]};
}

// Waits until `descriptor` has something to read or its other end is closed.
bool AwaitInput(int descriptor) {
  struct pollfd request {
    descriptor, POLLIN, 0
  };
  int result = 0;
  do {
    result = ::poll(&request, 1, kLimitMilliseconds);
  } while (result < 0 && errno == EINTR);
  return result > 0;
}

void CloseOnce(int& descriptor) {
  if (descriptor >= 0) ::close(descriptor);
  descriptor = -1;
}

// Reads once; closes at the end.
void ReadSome(int& descriptor, std::string& text) {
  std::array<char, 4096> buffer{};
  const ssize_t size = ::read(descriptor, buffer.data(), buffer.size());
  if (size > 0) text.append(buffer.data(), static_cast<std::size_t>(size));
  if (size == 0 || (size < 0 && errno != EINTR && errno != EAGAIN)) CloseOnce(descriptor);
}

int RunBody(const std::function<int(ChildProcess::Turns&)>& body, ChildProcess::Turns& turns) {
  try {
    return body(turns);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "exception in the child: %s\n", failure.what());
  } catch (...) {
    std::fprintf(stderr, "exception in the child\n");
  }
  return 125;
}

[[noreturn]] void End(int code, ChildProcess::Ending ending) {
  if (ending == ChildProcess::Ending::Full) std::exit(code);
  std::fflush(nullptr);
  WriteBranchCounts();
  ::_exit(code);
}

}  // namespace

bool ChildProcess::Turns::Tell() {
  const char turn = 't';
  return ::send(m_line, &turn, 1, MSG_NOSIGNAL) == 1;
}

bool ChildProcess::Turns::Await() {
  char turn = 0;
  return AwaitInput(m_line) && ::read(m_line, &turn, 1) == 1;
}

ChildProcess::ChildProcess(const std::function<int(Turns&)>& body, Ending ending) { Start(body, ending); }

ChildProcess::ChildProcess(const std::function<int()>& body, Ending ending) {
  Start([&body](Turns&) { return body(); }, ending);
}

void ChildProcess::Start(const std::function<int(Turns&)>& body, Ending ending) {
  const Ends line = MakeLine();
  const Ends output = MakePipe();
  const Ends error = MakePipe();
  std::fflush(nullptr);
  m_id = ::fork();
  if (m_id < 0) throw std::runtime_error("child process: no process");
  if (m_id == 0) {
    ::dup2(output.second, STDOUT_FILENO);
    ::dup2(error.second, STDERR_FILENO);
    for (const int descriptor : {line.first, output.first, output.second, error.first, error.second}) {
      ::close(descriptor);
    }
    Turns turns(line.second);
    BeginBranchCountsOfChild();
    End(RunBody(body, turns), ending);
  }
  for (const int descriptor : {line.second, output.second, error.second}) ::close(descriptor);
  m_line = line.first;
  m_outputPipe = output.first;
  m_errorPipe = error.first;
}

ChildProcess::~ChildProcess() {
  if (!m_ended) {
    ::kill(m_id, SIGKILL);
    Wait();
  }
}

bool ChildProcess::Tell() { return Turns(m_line).Tell(); }

bool ChildProcess::Await() { return Turns(m_line).Await(); }

// Reads what the child says until it has closed both pipes; kills it after a minute without a word.
void ChildProcess::Collect() {
  while (m_outputPipe >= 0 || m_errorPipe >= 0) {
    std::array<struct pollfd, 2> requests = {{{m_outputPipe, POLLIN, 0}, {m_errorPipe, POLLIN, 0}}};
    const int result = ::poll(requests.data(), requests.size(), kLimitMilliseconds);
    if (result < 0 && errno == EINTR) continue;
    if (result <= 0) {
      ::kill(m_id, SIGKILL);
      break;
    }
    if (requests[0].revents != 0) ReadSome(m_outputPipe, m_output);
    if (requests[1].revents != 0) ReadSome(m_errorPipe, m_error);
  }
}

int ChildProcess::Wait() {
  if (!m_ended) {
    Collect();
    while (::waitpid(m_id, &m_status, 0) < 0 && errno == EINTR) {
    }
    m_ended = true;
    for (int* const descriptor : {&m_line, &m_outputPipe, &m_errorPipe}) CloseOnce(*descriptor);
  }
  return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -WTERMSIG(m_status);
}
