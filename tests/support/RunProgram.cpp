#include "tests/support/RunProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace {

struct Pipe {
  std::array<int, 2> ends{-1, -1};
  bool Open() { return pipe2(ends.data(), O_CLOEXEC) == 0; }
  void CloseWriting() { close(ends[1]); }
  void CloseReading() { close(ends[0]); }
};

[[noreturn]] void Execute(const std::string& program, const std::vector<std::string>& arguments, const Pipe& out, const Pipe& err) {
  dup2(open("/dev/null", O_RDONLY), 0);
  dup2(out.ends[1], 1);
  dup2(err.ends[1], 2);
  std::vector<char*> list{const_cast<char*>(program.c_str())};
  for (const auto& argument : arguments) list.push_back(const_cast<char*>(argument.c_str()));
  list.push_back(nullptr);
  execv(program.c_str(), list.data());
  _exit(127);
}

// Appends what is there; false at the end.
bool Drain(int descriptor, std::string& text) {
  std::array<char, 4096> buffer;
  const ssize_t count = read(descriptor, buffer.data(), buffer.size());
  if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
  return count > 0;
}

}  // namespace

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
  ProgramResult result;
  Pipe out, err;
  if (!out.Open() || !err.Open()) return result;
  const pid_t child = fork();
  if (child == 0) Execute(program, arguments, out, err);
  out.CloseWriting();
  err.CloseWriting();
  std::array<pollfd, 2> waiting{pollfd{out.ends[0], POLLIN, 0}, pollfd{err.ends[0], POLLIN, 0}};
  while (waiting[0].fd >= 0 || waiting[1].fd >= 0) {
    if (poll(waiting.data(), waiting.size(), -1) < 0) continue;
    if (waiting[0].revents != 0 && !Drain(out.ends[0], result.output)) waiting[0].fd = -1;
    if (waiting[1].revents != 0 && !Drain(err.ends[0], result.errors)) waiting[1].fd = -1;
  }
  out.CloseReading();
  err.CloseReading();
  int status = 0;
  if (waitpid(child, &status, 0) == child && WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
  return result;
}
