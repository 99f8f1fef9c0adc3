#include "tests/support/ProcessUse.h"

#include <malloc.h>

#include <fstream>
#include <string>

#include "tests/support/Effort.h"
#include "tests/support/ThisProcess.h"

#ifdef ZELBASE_TESTS_SANITIZED
#include <sanitizer/allocator_interface.h>
#endif

namespace {

std::size_t AllocatedBytes() {
#ifdef ZELBASE_TESTS_SANITIZED
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto use = ::mallinfo2();
  return use.uordblks + use.hblkhd;
#endif
}

}  // namespace

ProcessUse UseOfThisProcess() {
  ProcessUse use;
  use.allocated = AllocatedBytes();
  use.descriptors = CountOpenDescriptors();
  std::ifstream table("/proc/self/maps");
  for (std::string row; std::getline(table, row);) ++use.mappings;
  return use;
}

bool IsMapped(const char* pathEnding) {
  std::ifstream table("/proc/self/maps");
  for (std::string row; std::getline(table, row);) {
    if (row.ends_with(pathEnding)) return true;
  }
  return false;
}
