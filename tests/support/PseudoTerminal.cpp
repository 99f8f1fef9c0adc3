#include "tests/support/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>

PseudoTerminal::PseudoTerminal() : m_descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  char name[256];
  if (m_descriptor >= 0 && ::grantpt(m_descriptor) == 0 && ::unlockpt(m_descriptor) == 0 &&
      ::ptsname_r(m_descriptor, name, sizeof name) == 0) {
    m_path = name;
    return;
  }
  if (m_descriptor >= 0) ::close(m_descriptor);
  throw std::runtime_error("no pseudo terminal");
}

PseudoTerminal::~PseudoTerminal() { ::close(m_descriptor); }

bool PseudoTerminal::BecomeErrors() const {
  const int node = ::open(m_path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  return node >= 0 && ::dup2(node, STDERR_FILENO) >= 0;
}

std::string PseudoTerminal::Read(std::size_t size) const {
  std::string text(size, '\0');
  const ssize_t count = ::read(m_descriptor, text.data(), size);
  text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return text;
}
