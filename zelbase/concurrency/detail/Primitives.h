// What the locks and queues of this folder are made of: atomics that a thread can wait at, and the ways to let others go
// first. Neighbours: Spin.h, which looks again a few times; Locker.h, ReadWriteLocker.h and ShortLock.h, made of these.
//
// They are the standard library's. A test that wants to decide itself which thread goes next compiles this folder once more
// with ZELBASE_PRIMITIVES set to a header with the same four names (tests/support/ScheduledPrimitives.h).
#pragma once

#ifdef ZELBASE_PRIMITIVES
#include ZELBASE_PRIMITIVES
#else

#include <atomic>
#include <chrono>
#include <thread>

namespace zelbase::detail {

template <class T>
using Atomic = std::atomic<T>;

// Tells how long a thread has looked for work.
using PatienceClock = std::chrono::steady_clock;

// Lets other threads run.
inline void GiveWay() noexcept { std::this_thread::yield(); }

// How often to look, of `count` times that pay on a processor.
constexpr int Looks(int count) noexcept { return count; }

}  // namespace zelbase::detail

#endif
