// Memory that runs out on request, and a count of what was asked for. Neighbour: zelbase/platform/FaultInjectionFiles.h,
// the same for files.
#pragma once

#include <cstddef>

// Counts what the calling thread asks of operator new in its scope, and refuses with std::bad_alloc what it is told to. Only
// one at a time in a thread.
//
//   AllocationFaults memory;
//   memory.FailAt(1);
//   EXPECT_THROW(owner = ping, std::bad_alloc);
class AllocationFaults {
 public:
  AllocationFaults();
  ~AllocationFaults();
  AllocationFaults(const AllocationFaults&) = delete;
  AllocationFaults& operator=(const AllocationFaults&) = delete;

  // The `n`-th request from now on, counted from 1, is refused; 0 withdraws that.
  void FailAt(unsigned long long n);

  // Requests since the beginning, the refused ones included.
  unsigned long long Count() const;
};
