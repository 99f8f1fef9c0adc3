#include "tests/support/ProcessUse.h"

#include <malloc.h>

#include <cstddef>
#include <fstream>
#include <string>

#include "tests/support/ThisProcess.h"

// There under a sanitizer only, which has an allocator of its own.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

std::size_t AllocatedBytes() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) return __sanitizer_get_current_allocated_bytes();
  const auto use = ::mallinfo2();
  return use.uordblks + use.hblkhd;
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
