// A lock for many readers or one writer, which a writer may turn into a read lock. Neighbours: Locker.h for one thread at a
// time, which may lock again; RecursionLock.h against re-entry on one thread.
#pragma once

#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/LockOrder.h"

// What always holds:
//   (1) A writer is inside alone; readers are inside together.
//   (2) A writer who waits stops new readers, and waits only for those inside. Of several who wait at its end, readers
//       and writers alike, any may be the next.
//   (3) ChangeWriteToRead lets no other writer in between.
//   (4) An unlock without a lock of its kind is ignored; the lock stays in working order.
//
// | inside               | a reader comes | a writer comes | UnlockRead       | UnlockWrite | ChangeWriteToRead |
// |----------------------|----------------|----------------|------------------|-------------|-------------------|
// | nobody               | enters         | enters         | ignored          | ignored     | ignored           |
// | readers              | enters         | waits for them | one less         | ignored     | ignored           |
// | readers, writer waits| waits          | waits          | the last lets    | ignored     | ignored           |
// |                      |                |                | the writer in    |             |                   |
// | a writer             | waits          | waits          | ignored          | nobody      | one reader        |
//
// It does not know which threads are inside: a lock may be given back on another thread than the one that took it. So a
// thread that locks again waits for itself: for writing while it reads or writes, for reading while it writes, and for
// reading while it reads when a writer has come between.
//
// Debug and sanitized builds tell of locks that are taken in two orders (LockOrder.h of platform/detail).
//
// It holds plain atomics only: usable as a constant-initialised static that is never destroyed. May be destroyed as soon as
// nobody is inside or waits. Up to 2^30 - 1 readers. Not copyable.
class ZELBASE_CAPABILITY("lock") ZELBASE_API ReadWriteLocker {
 public:
  constexpr ReadWriteLocker() noexcept { zelbase::detail::NoteLockBegins(this); }
  ReadWriteLocker(const ReadWriteLocker&) = delete;
  ReadWriteLocker& operator=(const ReadWriteLocker&) = delete;

  // Waits until the caller reads. Always true.
  bool LockRead() const noexcept ZELBASE_ACQUIRE_SHARED() {
    zelbase::detail::NoteLockWanted(this);
    unsigned int state = 0;
    if (!m_state.compare_exchange_strong(state, kReader, std::memory_order_acquire, std::memory_order_relaxed)) {
      LockReadSlowly();
    }
    zelbase::detail::NoteLockHeld(this);
    return true;
  }
  void UnlockRead() const noexcept ZELBASE_RELEASE_SHARED() {
    unsigned int state = kReader;
    do {
      if (state < kReader) return;
    } while (!m_state.compare_exchange_weak(state, state - kReader, std::memory_order_seq_cst, std::memory_order_relaxed));
    zelbase::detail::NoteLockGivenBack(this);
    if (((state - kReader) & ~kWaiting) == kWriter) WakeAll();
  }

  // Waits until the caller writes. Always true.
  bool LockWrite() noexcept ZELBASE_ACQUIRE() {
    zelbase::detail::NoteLockWanted(this);
    unsigned int nobody = 0;
    if (!m_state.compare_exchange_strong(nobody, kWriter, std::memory_order_acquire, std::memory_order_relaxed)) {
      LockWriteSlowly();
    }
    zelbase::detail::NoteLockHeld(this);
    return true;
  }
  void UnlockWrite() noexcept ZELBASE_RELEASE() {
    if (EndWriting(0)) zelbase::detail::NoteLockGivenBack(this);
  }

  // The writer goes on as a reader, and gives back by UnlockRead.
  void ChangeWriteToRead() noexcept ZELBASE_RELEASE() ZELBASE_ACQUIRE_SHARED() { EndWriting(kReader); }

  // On a constant object these read, on any other they write.
  bool Lock() const noexcept ZELBASE_ACQUIRE_SHARED() { return LockRead(); }
  void Unlock() const noexcept ZELBASE_RELEASE_SHARED() { UnlockRead(); }
  bool Lock() noexcept ZELBASE_ACQUIRE() { return LockWrite(); }
  void Unlock() noexcept ZELBASE_RELEASE() { UnlockWrite(); }

 private:
  friend struct ReadWriteLockerPeer;  // a test's look at who waits

  // The whole lock is one word. A writer sets its bit when it comes and writes once no reader is counted beside it. Each
  // operation first tries the exchange for the likeliest word, without a look at it: a load that follows at the heels of
  // the former exchange costs half as much as the exchange itself.
  static constexpr unsigned int kWriter = 1;   // a writer writes, or waits for the readers inside
  static constexpr unsigned int kWaiting = 2;  // somebody may be asleep until the writer has gone
  static constexpr unsigned int kReader = 4;   // one reader inside; the count is the rest of the word

  // False when nobody writes.
  bool EndWriting(unsigned int left) noexcept {
    unsigned int state = kWriter;
    do {
      if ((state & ~kWaiting) != kWriter) return false;
    } while (!m_state.compare_exchange_weak(state, left, std::memory_order_seq_cst, std::memory_order_relaxed));
    if ((state & kWaiting) != 0) WakeAll();
    return true;
  }

  void LockReadSlowly() const noexcept;
  void LockWriteSlowly() noexcept;
  unsigned int AwaitNoWriter() const noexcept;
  void WakeAll() const noexcept;

  mutable zelbase::detail::Atomic<unsigned int> m_state{0};
};
