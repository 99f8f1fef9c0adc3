// Code that runs in a child process: for what only a second process shows, and for what a process may do only once (its
// exit, its limits, its environment). Neighbours: TemporaryFolder.h;
// ThisProcess.h for what the child does to itself.
#pragma once

#include <functional>
#include <string>

#include "tests/support/ThisProcess.h"

// A forked child that runs one function, with a line in both directions for taking turns:
//
//   ChildProcess child([&](ChildProcess::Turns& turns) {
//     ... open the file ...
//     turns.Tell();   // "it is open"
//     turns.Await();  // until the parent is done
//     return 0;
//   });
//   child.Await();
//   ... look at the file from here ...
//   child.Tell();
//   EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
//
// The child has the calling thread only. No wait is longer than a minute: then a turn is false, and the child is killed.
// Not copyable.
class ChildProcess {
 public:
  // How the child ends after its function.
  enum class Ending {
    Quick,  // at once: no destructors of statics, no checks for leaks
    Full    // by exit, with the destructors of statics and, under the leak sanitizer, its check
  };

  class Turns {
   public:
    explicit Turns(int line) : m_line(line) {}
    bool Tell();
    bool Await();

   private:
    int m_line;
  };

  // Starts the child; the function's result is its exit code, an exception 125. Throws std::runtime_error when the system
  // refuses.
  explicit ChildProcess(const std::function<int(Turns&)>& body, Ending ending = Ending::Quick);
  // For a child without turns.
  explicit ChildProcess(const std::function<int()>& body, Ending ending = Ending::Quick);
  // Kills the child if it still runs.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  bool Tell();
  bool Await();

  // Waits for the end: the exit code, or minus the signal that ended it.
  int Wait();

  // What the child wrote to standard output and standard error; complete after Wait.
  const std::string& OutputText() const { return m_output; }
  const std::string& ErrorText() const { return m_error; }

  int Id() const { return m_id; }

 private:
  void Start(const std::function<int(Turns&)>& body, Ending ending);
  void Collect();

  int m_id = -1;
  int m_status = 0;
  bool m_ended = false;
  int m_line = -1;  // a socket for the turns
  int m_outputPipe = -1;
  int m_errorPipe = -1;
  std::string m_output;
  std::string m_error;
};
