#include "tests/numerics/CountedAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> g_allocations{0};

void* Counted(std::size_t size) noexcept {
  ++g_allocations;
  return std::malloc(size > 0 ? size : 1);
}

void* CountedOrThrow(std::size_t size) {
  void* const memory = Counted(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* CountedAligned(std::size_t size, std::align_val_t alignment) {
  ++g_allocations;
  const auto step = static_cast<std::size_t>(alignment);
  void* const memory = std::aligned_alloc(step, (size + step - 1) / step * step);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

long CountedAllocations() { return g_allocations; }

void* operator new(std::size_t size) { return CountedOrThrow(size); }

void* operator new[](std::size_t size) { return CountedOrThrow(size); }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Counted(size); }

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Counted(size); }

void* operator new(std::size_t size, std::align_val_t alignment) { return CountedAligned(size, alignment); }

void* operator new[](std::size_t size, std::align_val_t alignment) { return CountedAligned(size, alignment); }

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete[](void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }

void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }

void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
