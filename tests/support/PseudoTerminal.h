// A terminal without a device, for tests of what opens serial lines.
#pragma once

#include <cstddef>
#include <string>

// Both ends live as long as this. Not copyable.
class PseudoTerminal {
 public:
  // Throws std::runtime_error when the system gives none.
  PseudoTerminal();
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  // Path of the node that opens as a terminal.
  const std::string& Path() const { return m_path; }

  // Makes the terminal this process's standard error; false when that fails.
  bool BecomeErrors() const;

  // What comes out of the terminal at once, `size` bytes at most; waits for the first.
  std::string Read(std::size_t size) const;

 private:
  int m_descriptor;
  std::string m_path;
};
