// What this process holds of the system: for tests that something done a thousand times leaves nothing behind. Neighbour:
// ThisProcess.h.
#pragma once

#include <cstddef>

struct ProcessUse {
  int descriptors = 0;
  int mappings = 0;           // rows of the system's table of this process's memory
  std::size_t allocated = 0;  // bytes asked for and not given back, the system's libraries' too
};

// So many mappings a heap may gain in a thousand rounds of whatever; rounds that left one each would be more.
inline constexpr int kMappingsOfTheHeap = 100;

// As it is now. Nothing else may run in the process.
ProcessUse UseOfThisProcess();

// Whether a file whose path ends so is mapped into this process.
bool IsMapped(const char* pathEnding);
