// The primitives of zelbase/concurrency for a test that decides which thread goes next: each operation on an atomic is a step of
// a schedule. Neighbours: Scheduler.h, who has the turn; zelbase/concurrency/detail/Primitives.h, whose place this header takes.
//
// On threads that are not of a schedule they are what the standard library's are.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>

#include "tests/support/Scheduler.h"

namespace zelbase::detail {

template <class T>
class Atomic {
 public:
  constexpr Atomic() noexcept = default;
  constexpr Atomic(T value) noexcept : m_value(value) {}
  Atomic(const Atomic&) = delete;
  Atomic& operator=(const Atomic&) = delete;

  T load(std::memory_order = std::memory_order_seq_cst) const noexcept {
    Scheduler::Step("load", this);
    return m_value.load();
  }
  void store(T value, std::memory_order = std::memory_order_seq_cst) noexcept {
    Scheduler::Step("store", this);
    m_value.store(value);
  }
  T exchange(T value, std::memory_order = std::memory_order_seq_cst) noexcept {
    Scheduler::Step("exchange", this);
    return m_value.exchange(value);
  }
  bool compare_exchange_strong(T& expected, T value, std::memory_order = std::memory_order_seq_cst,
                               std::memory_order = std::memory_order_seq_cst) noexcept {
    Scheduler::Step("compare and exchange", this);
    return m_value.compare_exchange_strong(expected, value);
  }
  bool compare_exchange_weak(T& expected, T value, std::memory_order = std::memory_order_seq_cst,
                             std::memory_order = std::memory_order_seq_cst) noexcept {
    return compare_exchange_strong(expected, value);
  }
  T fetch_add(T value, std::memory_order = std::memory_order_seq_cst) noexcept {
    Scheduler::Step("add", this);
    return m_value.fetch_add(value);
  }
  T fetch_sub(T value, std::memory_order = std::memory_order_seq_cst) noexcept {
    Scheduler::Step("subtract", this);
    return m_value.fetch_sub(value);
  }

  operator T() const noexcept { return load(); }
  T operator=(T value) noexcept {
    store(value);
    return value;
  }

  // The look and the sleep are one: nobody comes between.
  void wait(T former, std::memory_order = std::memory_order_seq_cst) const noexcept {
    if (!Scheduler::IsInside()) {
      m_value.wait(former);
      return;
    }
    Scheduler::Step("wait", this);
    while (m_value.load() == former) Scheduler::Sleep(this);
  }
  void notify_one() noexcept {
    Scheduler::Step("wake one", this);
    Scheduler::WakeOne(this);
    m_value.notify_one();
  }
  void notify_all() noexcept {
    Scheduler::Step("wake all", this);
    Scheduler::WakeAll(this);
    m_value.notify_all();
  }

 private:
  std::atomic<T> m_value{};
};

// Goes on by 50 microseconds with each look.
struct PatienceClock {
  using duration = std::chrono::microseconds;
  using rep = duration::rep;
  using period = duration::period;
  using time_point = std::chrono::time_point<PatienceClock>;
  static constexpr bool is_steady = true;

  static time_point now() noexcept {
    static constinit std::atomic<rep> looks{0};
    return time_point(duration(50 * looks.fetch_add(1)));
  }
};

inline void GiveWay() noexcept { Scheduler::Step("give way", nullptr); }

// Looking once more shows nothing new that another schedule does not show.
constexpr int Looks(int count) noexcept { return std::min(count, 1); }

}  // namespace zelbase::detail
