// What a test asks of, or does to, the process it runs in. Limits and rights cannot be taken back: set them in a
// ChildProcess (ChildProcess.h).
#pragma once

#include <string>

// Descriptors that this process has open, and those of them that a program it starts would inherit.
int CountOpenDescriptors();
int CountInheritableDescriptors();

// Whether this process has a child, running or ended, that it has not yet waited for.
bool HasChildren();

// The system's number of the calling thread; and comes back when the thread of that number, of this process, waits for something.
int ThisThread();
void AwaitWaiting(int thread);

// No file grows beyond `bytes` from now on; an attempt fails instead of ending the process.
void LimitFileSize(unsigned long long bytes);

// No descriptor from `count` up is given out from now on.
void LimitDescriptors(unsigned int count);

// Gives up the superuser's rights, when the process has them, so that permissions count. False when that fails.
bool BecomeOrdinaryUser();

// Sets an environment variable for a scope and restores the former state at its end; a null value removes it.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const char* value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  std::string m_name;
  std::string m_former;
  bool m_wasSet = false;
};
