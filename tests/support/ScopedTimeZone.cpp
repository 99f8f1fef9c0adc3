#include "tests/support/ScopedTimeZone.h"

#include <stdlib.h>
#include <time.h>

ScopedTimeZone::ScopedTimeZone(const std::string& zone) {
  if (const char* const former = getenv("TZ")) m_former = former;
  setenv("TZ", zone.c_str(), 1);
  tzset();
}

ScopedTimeZone::~ScopedTimeZone() {
  if (m_former) {
    setenv("TZ", m_former->c_str(), 1);
  } else {
    unsetenv("TZ");
  }
  tzset();
}
