// What a fuzz target demands. Neighbour: MemoryFiles.h, files for a target that reads some.
#pragma once

#include <cstdlib>
#include <iostream>

// Ends the process where `condition` does not hold, so that the input is kept; `what` says which demand it was.
inline void Require(bool condition, const char* what) {
  if (condition) return;
  std::cerr << "not so: " << what << '\n';
  std::abort();
}
