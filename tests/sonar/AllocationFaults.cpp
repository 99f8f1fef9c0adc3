#include "tests/sonar/AllocationFaults.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool t_watching = false;
thread_local unsigned long long t_count = 0;
thread_local unsigned long long t_failAt = 0;

bool IsRefused() {
  if (!t_watching) return false;
  ++t_count;
  return t_failAt != 0 && t_count == t_failAt;
}

void* Allocate(std::size_t size) {
  void* const memory = IsRefused() ? nullptr : std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

AllocationFaults::AllocationFaults() {
  t_watching = true;
  t_count = 0;
  t_failAt = 0;
}

AllocationFaults::~AllocationFaults() { t_watching = false; }

void AllocationFaults::FailAt(unsigned long long n) { t_failAt = n != 0 ? t_count + n : 0; }

unsigned long long AllocationFaults::Count() const { return t_count; }

// The forms that every other one goes through.
void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
