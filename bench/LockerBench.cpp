// The locks against the standard library's: Locker and std::recursive_mutex, ReadWriteLocker and
// std::shared_mutex, by one thread and by two that want the same lock. The second thread is there all the
// time, as in every program of the suite: in a process of one thread the C library's mutex leaves its atomic
// operations out. ReadWriteLocker is to be no slower than std::shared_mutex alone, and between two threads of
// which nine steps in ten read; the other rows are for information.

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <thread>

#include "bench/Compare.h"
#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/ReadWriteLocker.h"

namespace {

constexpr std::size_t kAlone = 1000;
constexpr std::size_t kTogether = 1000000;
constexpr double kNoBar = Comparison::kNoBar;
constexpr double kBar = 1.0;
constexpr std::size_t kWriteEveryOfBar = 10;

// The two locks of a pair under the same names.
struct OurShared {
  void LockRead() { lock.LockRead(); }
  void UnlockRead() { lock.UnlockRead(); }
  void LockWrite() { lock.LockWrite(); }
  void UnlockWrite() { lock.UnlockWrite(); }
  ReadWriteLocker lock;
};
struct PeerShared {
  void LockRead() { lock.lock_shared(); }
  void UnlockRead() { lock.unlock_shared(); }
  void LockWrite() { lock.lock(); }
  void UnlockWrite() { lock.unlock(); }
  std::shared_mutex lock;
};

template <class Lock>
void LockNested(Lock& lock) {
  for (std::size_t i = 0; i < kAlone; ++i) {
    lock.lock();
    lock.lock();
    lock.unlock();
    lock.unlock();
  }
}

template <class Lock>
void LockAlone(Lock& lock) {
  for (std::size_t i = 0; i < kAlone; ++i) {
    lock.lock();
    lock.unlock();
  }
}

template <class Lock>
void ReadAlone(Lock& lock) {
  for (std::size_t i = 0; i < kAlone; ++i) {
    lock.LockRead();
    lock.UnlockRead();
  }
}

template <class Lock>
void WriteAlone(Lock& lock) {
  for (std::size_t i = 0; i < kAlone; ++i) {
    lock.LockWrite();
    lock.UnlockWrite();
  }
}

// A thread that takes part when it is asked to, and spins meanwhile only at the start.
class Partner {
 public:
  Partner() : m_thread([this] { Serve(); }) {}
  ~Partner() {
    Call(nullptr);
    m_thread.join();
  }
  Partner(const Partner&) = delete;
  Partner& operator=(const Partner&) = delete;

  // Both threads do `step(i)` for i from 0, beginning together.
  template <class Step>
  void Together(Step step) {
    const std::function<void()> steps = [&] {
      for (std::size_t i = 0; i < kTogether; ++i) step(i);
    };
    m_ready = false;
    Call(&steps);
    while (!m_ready) {
    }
    steps();
    m_job.wait(&steps);
  }

 private:
  void Call(const std::function<void()>* steps) {
    m_job = steps;
    m_called.store(m_called + 1);
    m_called.notify_one();
  }

  void Serve() {
    for (unsigned int served = 0;; ++served) {
      m_called.wait(served);
      const std::function<void()>* const steps = m_job;
      if (steps == nullptr) return;
      m_ready = true;
      (*steps)();
      m_job = nullptr;
      m_job.notify_one();
    }
  }

  std::atomic<const std::function<void()>*> m_job{nullptr};
  std::atomic<unsigned int> m_called{0};
  std::atomic<bool> m_ready{false};
  std::thread m_thread;
};

template <class Lock>
void LockTogether(Partner& partner, Lock& lock, long long& value) {
  partner.Together([&](std::size_t) {
    const std::lock_guard<Lock> guard(lock);
    ++value;
  });
}

// Every `writeEvery`-th step writes; 0: none does.
template <class Lock>
void ShareTogether(Partner& partner, Lock& lock, long long& value, std::size_t writeEvery) {
  partner.Together([&](std::size_t i) {
    if (writeEvery != 0 && i % writeEvery == 0) {
      lock.LockWrite();
      ++value;
      lock.UnlockWrite();
    } else {
      lock.LockRead();
      Keep(value);
      lock.UnlockRead();
    }
  });
}

}  // namespace

int main() {
  Comparison table("locks (peers: std::recursive_mutex, std::shared_mutex)");
  Partner partner;
  long long value = 0;

  Locker locker;
  std::recursive_mutex mutex;
  table.Row(
      "Locker, lock and unlock", kAlone, "op", kNoBar, [&] { LockAlone(locker); }, [&] { LockAlone(mutex); });
  table.Row(
      "Locker, once more inside", kAlone, "op", kNoBar, [&] { LockNested(locker); }, [&] { LockNested(mutex); });
  table.Row(
      "Locker, 2 threads", 2 * kTogether, "op", kNoBar, [&] { LockTogether(partner, locker, value); },
      [&] { LockTogether(partner, mutex, value); });

  OurShared ours;
  PeerShared peer;
  table.Row(
      "ReadWriteLocker, read", kAlone, "op", kBar, [&] { ReadAlone(ours); }, [&] { ReadAlone(peer); });
  table.Row(
      "ReadWriteLocker, write", kAlone, "op", kBar, [&] { WriteAlone(ours); }, [&] { WriteAlone(peer); });
  for (const std::size_t writeEvery : {std::size_t{0}, std::size_t{100}, kWriteEveryOfBar, std::size_t{2}}) {
    const std::string what = writeEvery == 0 ? "reads alone" : "1 write in " + std::to_string(writeEvery);
    const double bar = writeEvery == kWriteEveryOfBar ? kBar : kNoBar;
    table.Row(
        "ReadWriteLocker, 2 threads, " + what, 2 * kTogether, "op", bar, [&] { ShareTogether(partner, ours, value, writeEvery); },
        [&] { ShareTogether(partner, peer, value, writeEvery); });
  }
  Keep(value);
  return table.Finish();
}
