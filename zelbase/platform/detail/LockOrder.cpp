#include "zelbase/platform/detail/LockOrder.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <iostream>
#include <mutex>

#include "zelbase/platform/detail/IntendedWraps.h"

namespace zelbase::detail {

namespace {

constexpr std::size_t kMostHeld = 32;
constexpr std::size_t kMostOrders = 4096;
constexpr std::size_t kMostStrays = 64;
constexpr std::size_t kSlots = 4096;  // a power of two

// What the thread holds, the latest last.
struct Held {
  const void* locks[kMostHeld];
  std::size_t count;

  bool Contains(const void* lock) const { return std::find(locks, locks + count, lock) != locks + count; }
  // Once, however often it is held: the latest.
  ZELBASE_WRAPS bool Remove(const void* lock) {
    for (std::size_t i = count; i-- > 0;) {
      if (locks[i] != lock) continue;
      std::copy(locks + i + 1, locks + count, locks + i);
      --count;
      return true;
    }
    return false;
  }
  template <class Condition>
  void RemoveIf(Condition condition) {
    count = static_cast<std::size_t>(std::remove_if(locks, locks + count, condition) - locks);
  }
};
constinit thread_local Held t_held{};

struct Order {
  const void* held;
  const void* wanted;
};

// All orders of the process. What is looked at without the mutex are atomics without an order of their own, so that the
// recorder does not order for the thread sanitizer what the program leaves unordered.
struct Record {
  std::mutex mutex;
  Order orders[kMostOrders];
  std::size_t count;
  const void* strays[kMostStrays];
  std::size_t strayCount;
  std::atomic<std::uint64_t> known[kSlots];  // orders that are noted, by their mixed addresses; 0: none
  std::atomic<bool> touched[kSlots];         // locks that stand in an order, or are not followed
  std::atomic<std::size_t> circles;
  std::atomic<LockOrder::Hook> hook;
};
constinit Record g_record{};

ZELBASE_WRAPS std::uint64_t Mixed(const void* lock) {
  std::uint64_t bits = reinterpret_cast<std::uintptr_t>(lock);
  bits = (bits ^ (bits >> 31)) * 0x9e3779b97f4a7c15u;
  return bits ^ (bits >> 29);
}

ZELBASE_WRAPS std::uint64_t Mixed(const Order& order) { return (Mixed(order.held) * 3 + Mixed(order.wanted)) | 1u; }

std::atomic<bool>& Touched(const void* lock) { return g_record.touched[Mixed(lock) % kSlots]; }

std::atomic<std::uint64_t>& Known(std::uint64_t mixed) { return g_record.known[(mixed >> 7) % kSlots]; }

void ForgetKnown() {
  for (std::atomic<std::uint64_t>& known : g_record.known) known.store(0, std::memory_order_relaxed);
}

bool IsStray(const void* lock) {
  return std::find(g_record.strays, g_record.strays + g_record.strayCount, lock) != g_record.strays + g_record.strayCount;
}

// Whether `to` is wanted, at last, by whoever holds `from`. With the mutex held.
bool Leads(const void* from, const void* to) {
  static constinit bool seen[kMostOrders];
  static constinit const void* open[kMostOrders + 1];
  std::fill(seen, seen + g_record.count, false);
  std::size_t opened = 0;
  open[opened++] = from;
  while (opened > 0) {
    const void* const lock = open[--opened];
    if (lock == to) return true;
    for (std::size_t i = 0; i < g_record.count; ++i) {
      if (seen[i] || g_record.orders[i].held != lock) continue;
      seen[i] = true;
      open[opened++] = g_record.orders[i].wanted;
    }
  }
  return false;
}

bool IsNoted(const Order& order) {
  return std::any_of(g_record.orders, g_record.orders + g_record.count,
                     [&order](const Order& noted) { return noted.held == order.held && noted.wanted == order.wanted; });
}

// With the mutex held.
void Append(const Order& order) {
  if (g_record.count == kMostOrders) {
    g_record.count = 0;
    ForgetKnown();
  }
  g_record.orders[g_record.count++] = order;
  Touched(order.held).store(true, std::memory_order_relaxed);
  Touched(order.wanted).store(true, std::memory_order_relaxed);
}

void Tell(const Order& order) {
  if (const LockOrder::Hook hook = g_record.hook.load()) {
    hook(order.held, order.wanted);
    return;
  }
  g_record.circles.fetch_add(1);
  std::cerr << "ZelBase: the lock " << order.wanted << " is wanted while the lock " << order.held
            << " is held; another time it was the other way round, so that two threads may come to wait for each other\n";
}

void Note(const Order& order) {
  const std::uint64_t mixed = Mixed(order);
  if (Known(mixed).load(std::memory_order_relaxed) == mixed) return;
  bool circle = false;
  {
    const std::unique_lock<std::mutex> lock(g_record.mutex, std::try_to_lock);
    if (!lock) return;  // Unreached: by chance only, when two threads note a new order at the very same moment
    if (IsStray(order.held)) {
      t_held.RemoveIf(&IsStray);
    } else if (!IsNoted(order) && !IsStray(order.wanted)) {
      circle = Leads(order.wanted, order.held);
      Append(order);
    }
    Known(mixed).store(mixed, std::memory_order_relaxed);
  }
  if (circle) Tell(order);
}

// With the mutex held.
void Forget(const void* lock) {
  Order* const end = std::remove_if(g_record.orders, g_record.orders + g_record.count,
                                    [lock](const Order& order) { return order.held == lock || order.wanted == lock; });
  g_record.count = static_cast<std::size_t>(end - g_record.orders);
  ForgetKnown();
}

}  // namespace

void LockOrder::Begins(const void* lock) noexcept {
  t_held.RemoveIf([lock](const void* held) { return held == lock; });
  if (!Touched(lock).load(std::memory_order_relaxed)) return;
  const std::lock_guard<std::mutex> guard(g_record.mutex);
  Forget(lock);
  const void** const end = std::remove(g_record.strays, g_record.strays + g_record.strayCount, lock);
  g_record.strayCount = static_cast<std::size_t>(end - g_record.strays);
}

void LockOrder::Wants(const void* lock) noexcept {
  if (t_held.count == 0 || t_held.Contains(lock)) return;
  const Held held = t_held;  // noting an order may take a lock off the list
  for (std::size_t i = 0; i < held.count; ++i) Note({held.locks[i], lock});
}

void LockOrder::Has(const void* lock) noexcept {
  if (t_held.count == kMostHeld) {
    const std::lock_guard<std::mutex> guard(g_record.mutex);
    t_held.RemoveIf(&IsStray);
  }
  if (t_held.count < kMostHeld) t_held.locks[t_held.count++] = lock;
}

void LockOrder::GivesBack(const void* lock) noexcept {
  if (t_held.Remove(lock) || t_held.count == kMostHeld) return;
  const std::lock_guard<std::mutex> guard(g_record.mutex);
  if (IsStray(lock)) return;
  if (g_record.strayCount == kMostStrays) {
    std::copy(g_record.strays + 1, g_record.strays + kMostStrays, g_record.strays);
    --g_record.strayCount;
  }
  g_record.strays[g_record.strayCount++] = lock;
  Forget(lock);
  Touched(lock).store(true, std::memory_order_relaxed);
}

std::size_t LockOrder::Circles() noexcept { return g_record.circles.load(); }

LockOrder::Hook LockOrder::SetHook(Hook hook) noexcept { return g_record.hook.exchange(hook); }

}  // namespace zelbase::detail
