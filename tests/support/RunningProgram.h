// Another program that runs beside the test, for what looks at the computer's processes. Neighbour: ChildProcess.h, a child
// that runs the test's own code.
#pragma once

#include <string>

// Runs `sleep` from a copy of its file named `path` (this system's form), started when the constructor returns and killed
// at the end of the scope. Throws std::runtime_error when it cannot. Not copyable.
class RunningProgram {
 public:
  explicit RunningProgram(const std::string& path);
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  // Ends the program, and leaves it as the system keeps one whose end nobody has asked for.
  void EndWithoutFetching();

 private:
  int m_id = -1;
};

// How nice the calling thread is, -20 (first served) to 19, and the process as a whole.
int NicenessOfThread();
int NicenessOfProcess();
