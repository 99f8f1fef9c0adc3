// Memory that runs out on request, and counts of what was asked for and what is still held. Neighbours: SystemCallFaults.h,
// the same for the system's calls; zelbase/platform/FaultInjectionFiles.h, for files.
#pragma once

// Counts what the calling thread asks of operator new, and refuses with std::bad_alloc (or null, in the forms that do not
// throw) what it is told to, while one of these is in scope. Only one at a time in a thread. The test program of this folder
// has an operator new and an operator delete of its own for it.
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

  // The `n`-th request from now on, counted from 1, is refused; with `forEver` every later one, too. 0 withdraws that.
  void FailAt(unsigned long long n, bool forEver = false);

  // Requests since the beginning, the refused ones included, and the refused ones alone.
  unsigned long long Count() const;
  unsigned long long FaultsGiven() const;

  // Blocks that the calling thread has got more than given back since it began, with an object of this class or without.
  static long long Held();
};
