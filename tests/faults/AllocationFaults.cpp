#include "tests/faults/AllocationFaults.h"

#include <cstdlib>
#include <new>

namespace {

struct Watch {
  bool on = false;
  bool forEver = false;
  unsigned long long count = 0;
  unsigned long long failAt = 0;
  unsigned long long faults = 0;
};

thread_local Watch t_watch;
thread_local long long t_held = 0;

bool IsRefused() noexcept {
  Watch& watch = t_watch;
  if (!watch.on) return false;
  ++watch.count;
  if (watch.failAt == 0) return false;
  if (watch.forEver ? watch.count < watch.failAt : watch.count != watch.failAt) return false;
  ++watch.faults;
  return true;
}

void* Get(std::size_t size) noexcept {
  void* const memory = IsRefused() ? nullptr : std::malloc(size != 0 ? size : 1);
  if (memory != nullptr) ++t_held;
  return memory;
}

void* GetOrThrow(std::size_t size) {
  void* const memory = Get(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* GetAligned(std::size_t size, std::align_val_t alignment) {
  const auto step = static_cast<std::size_t>(alignment);
  void* const memory = IsRefused() ? nullptr : std::aligned_alloc(step, (size + step - 1) / step * step);
  if (memory == nullptr) throw std::bad_alloc();
  ++t_held;
  return memory;
}

void GiveBack(void* memory) noexcept {
  if (memory != nullptr) --t_held;
  std::free(memory);
}

}  // namespace

AllocationFaults::AllocationFaults() {
  t_watch = Watch();
  t_watch.on = true;
}

AllocationFaults::~AllocationFaults() { t_watch.on = false; }

void AllocationFaults::FailAt(unsigned long long n, bool forEver) {
  t_watch.failAt = n != 0 ? t_watch.count + n : 0;
  t_watch.forEver = forEver;
}

unsigned long long AllocationFaults::Count() const { return t_watch.count; }

unsigned long long AllocationFaults::FaultsGiven() const { return t_watch.faults; }

long long AllocationFaults::Held() { return t_held; }

void* operator new(std::size_t size) { return GetOrThrow(size); }
void* operator new[](std::size_t size) { return GetOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Get(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Get(size); }
void* operator new(std::size_t size, std::align_val_t alignment) { return GetAligned(size, alignment); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return GetAligned(size, alignment); }
void operator delete(void* memory) noexcept { GiveBack(memory); }
void operator delete[](void* memory) noexcept { GiveBack(memory); }
void operator delete(void* memory, std::size_t) noexcept { GiveBack(memory); }
void operator delete[](void* memory, std::size_t) noexcept { GiveBack(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { GiveBack(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { GiveBack(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { GiveBack(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { GiveBack(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { GiveBack(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { GiveBack(memory); }
