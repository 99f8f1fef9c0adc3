// A terminal without a device, for tests of what opens serial lines.
#pragma once

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

 private:
  int m_descriptor;
  std::string m_path;
};
