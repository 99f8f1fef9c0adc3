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
