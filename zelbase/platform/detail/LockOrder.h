// Notes in which order threads take locks, and tells when two orders contradict each other: then some day two threads may
// wait for each other for good, even if none has so far. Neighbours: Mutex.h, and Locker.h, ReadWriteLocker.h and ShortLock.h
// of concurrency, which say here what they do.
//
// They say it where ZELBASE_LOCK_ORDER is 1: in debug builds of the library and under a sanitizer, unless its CMake option of that
// name decides otherwise. The library's own build settles it for its users, whatever NDEBUG is to them, since locks are partly
// inline. Where it is 0 the functions at the end of this file are empty, and a lock is as fast as if they were not called.
#pragma once

#include <cstddef>
#include <type_traits>

#include "zelbase/platform/ZelBaseApi.h"

#ifndef ZELBASE_LOCK_ORDER
#define ZELBASE_LOCK_ORDER 0
#endif

namespace zelbase::detail {

// An order is "B was wanted while A was held", for two lock objects. When a new one closes a circle, one line goes to
// standard error, or the hook is called, once for that order; nothing else changes: the thread goes on and takes its lock.
// A lock taken without waiting (a TryLock) closes no circle by itself, and neither does a lock that its thread holds already.
//
// Locks are told apart by their address. One that begins its life where another was before has no past; but one that is
// constant-initialised, or made in memory where a lock lay that ended while it was held, may inherit an order. A lock that is
// given back on another thread than took it, as ReadWriteLocker allows, is not followed from then on.
//
// Bounds: 32 locks held by a thread, 4096 orders, 64 locks that are not followed. What is beyond is not noted, the orders
// start afresh, and the lock that was given back elsewhere longest ago is followed again. It asks for no memory,
// and a thread that finds another at it does not wait: the order will be seen again.
class ZELBASE_API LockOrder {
 public:
  // Called when a circle is closed: the lock that is held and the one that is wanted.
  using Hook = void (*)(const void* held, const void* wanted);

  // At the beginning of a lock's life.
  static void Begins(const void* lock) noexcept;

  // Before the calling thread may have to wait for it; when it has it; when it gives it back.
  static void Wants(const void* lock) noexcept;
  static void Has(const void* lock) noexcept;
  static void GivesBack(const void* lock) noexcept;

  // Circles told on standard error since the beginning of the process.
  static std::size_t Circles() noexcept;

  // The hook in place of the line on standard error; null for the line. Gives the former one.
  static Hook SetHook(Hook hook) noexcept;
};

// What the locks call. The first is for their constructors, which the compiler may run, too: such a lock has no past.
#if ZELBASE_LOCK_ORDER

inline namespace with_order {

constexpr void NoteLockBegins(const void* lock) noexcept {
  if (!std::is_constant_evaluated()) LockOrder::Begins(lock);
}
inline void NoteLockWanted(const void* lock) noexcept { LockOrder::Wants(lock); }
inline void NoteLockHeld(const void* lock) noexcept { LockOrder::Has(lock); }
inline void NoteLockGivenBack(const void* lock) noexcept { LockOrder::GivesBack(lock); }

}  // namespace with_order

#else

inline namespace without_order {

constexpr void NoteLockBegins(const void*) noexcept {}
constexpr void NoteLockWanted(const void*) noexcept {}
constexpr void NoteLockHeld(const void*) noexcept {}
constexpr void NoteLockGivenBack(const void*) noexcept {}

}  // namespace without_order

#endif

}  // namespace zelbase::detail
