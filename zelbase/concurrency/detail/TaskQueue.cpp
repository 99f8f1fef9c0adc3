#include "zelbase/concurrency/detail/TaskQueue.h"

#include <chrono>
#include <utility>

#include "zelbase/concurrency/detail/Spin.h"
#include "zelbase/platform/LockGuard.h"

// Why no task is left lying while a worker sleeps. A worker goes to sleep under the lock of the back, having seen there that
// the queue is empty and open; so the next push finds it among the sleepers. That push leaves it asleep only when there are
// as many workers on the look-out as tasks, its own included. A worker on the look-out takes itself off that list before it
// takes a task, and looks once more under the lock before it sleeps: so each of those counted is good for one more task.

namespace zelbase::detail {

namespace {

// A worker without a task takes a few close looks, for a microsecond or two, and then sleeps: waking it takes some thirty
// microseconds. One worker at a time, the first to be idle, looks for longer before it does.
constexpr int kCloseLooks = 50;
constexpr std::chrono::microseconds kPatience(80);

}  // namespace

TaskQueue::TaskQueue() : m_first(std::make_unique<Block>()), m_last(m_first.get()) {}

TaskQueue::~TaskQueue() {
  Close();  // tasks that dispatch as they are destroyed are refused; and whoever still leaves Push has left its lock
  std::unique_ptr<Block> chain;
  {
    const LockGuard guard(m_front);
    chain = std::move(m_first);
    m_seen = m_pushed.load(std::memory_order_relaxed);
    m_taken.store(m_seen, std::memory_order_release);
  }
  DestroyChain(std::move(chain));
  delete m_spare.load(std::memory_order_relaxed);
}

bool TaskQueue::Push(Task& task) {
  const LockGuard guard(m_back);
  if (m_closed.load(std::memory_order_relaxed)) return false;
  if (m_lastUsed == kBlockTasks) {
    m_last->next = TakeBlock();
    m_last = m_last->next.get();
    m_lastUsed = 0;
  }
  m_last->tasks[m_lastUsed++].swap(task);
  m_pushed.store(m_pushed.load(std::memory_order_relaxed) + 1, std::memory_order_release);
  if (m_sleepers > 0) WakeOneIfNeeded();
  return true;
}

bool TaskQueue::Pop(Task& task) {
  for (;;) {
    const bool closed = IsClosed();  // asked first: once it is, nothing comes behind an empty queue
    if (TryPop(task)) return true;   // Kept: also from a closed queue, which is drained
    if (closed) return false;
    AwaitTaskOrClose();
  }
}

bool TaskQueue::TryPop(Task& task) {
  std::unique_ptr<Block> emptied;
  {
    const LockGuard guard(m_front);
    const std::size_t taken = m_taken.load(std::memory_order_relaxed);
    if (taken == m_seen) m_seen = m_pushed.load(std::memory_order_acquire);
    if (taken == m_seen) return false;
    if (m_firstUsed == kBlockTasks) {
      emptied = std::move(m_first);
      m_first = std::move(emptied->next);
      m_firstUsed = 0;
    }
    task.swap(m_first->tasks[m_firstUsed++]);
    m_taken.store(taken + 1, std::memory_order_release);
  }
  if (emptied) GiveBlock(std::move(emptied));
  return true;
}

void TaskQueue::Close() {
  const LockGuard guard(m_back);
  m_closed.store(true, std::memory_order_release);
  m_lookers.fetch_add(m_sleepers);
  m_wakeUps.fetch_add(static_cast<unsigned int>(m_sleepers));
  m_sleepers = 0;
  m_wakeUps.notify_all();
}

void TaskQueue::Clear() {
  std::unique_ptr<Block> chain = TakeBlock();
  {
    const LockGuard front(m_front);
    const LockGuard back(m_back);
    m_first.swap(chain);
    m_last = m_first.get();
    m_firstUsed = m_lastUsed = 0;
    m_seen = m_pushed.load(std::memory_order_relaxed);
    m_taken.store(m_seen, std::memory_order_release);
  }
  DestroyChain(std::move(chain));
}

std::size_t TaskQueue::Size() const {
  const LockGuard front(m_front);
  const LockGuard back(m_back);
  return m_pushed.load(std::memory_order_relaxed) - m_taken.load(std::memory_order_relaxed);
}

// One block is kept at hand, so that a queue that is filled and emptied in turns asks for no memory.
std::unique_ptr<TaskQueue::Block> TaskQueue::TakeBlock() {
  std::unique_ptr<Block> spare(m_spare.exchange(nullptr, std::memory_order_acquire));
  return spare ? std::move(spare) : std::make_unique<Block>();
}

void TaskQueue::GiveBlock(std::unique_ptr<Block> block) noexcept { delete m_spare.exchange(block.release(), std::memory_order_acq_rel); }

// Block by block: a long chain does not decide the depth of the stack.
void TaskQueue::DestroyChain(std::unique_ptr<Block> chain) {
  while (chain) chain = std::move(chain->next);
}

void TaskQueue::WakeOneIfNeeded() {
  const std::size_t waiting = m_pushed.load(std::memory_order_relaxed) - m_taken.load(std::memory_order_acquire);
  if (waiting <= m_lookers.load()) return;
  --m_sleepers;
  m_lookers.fetch_add(1);  // on behalf of the worker, which may take a while to wake
  m_wakeUps.fetch_add(1);
  m_wakeUps.notify_one();
}

void TaskQueue::AwaitTaskOrClose() {
  const bool alone = m_lookers.fetch_add(1) == 0;
  const bool found = LookClosely() || (alone && LookPatiently());
  m_lookers.fetch_sub(1);
  if (!found && LieDown()) Sleep();
}

bool TaskQueue::LookClosely() const noexcept {
  for (Spin spin(kCloseLooks, 0); spin.Again();) {
    if (HasNews()) return true;
  }
  return false;
}

bool TaskQueue::LookPatiently() const noexcept {
  const auto end = PatienceClock::now() + kPatience;
  while (PatienceClock::now() < end) {
    if (HasNews()) return true;
    GiveWay();
  }
  return false;
}

bool TaskQueue::LieDown() {
  const LockGuard guard(m_back);
  if (HasNews()) return false;
  ++m_sleepers;
  return true;
}

// Whoever wakes a worker counts it among those on the look-out.
void TaskQueue::Sleep() {
  unsigned int wakeUps = m_wakeUps.load();
  while (wakeUps == 0 || !m_wakeUps.compare_exchange_weak(wakeUps, wakeUps - 1)) {
    if (wakeUps != 0) continue;
    m_wakeUps.wait(0);
    wakeUps = m_wakeUps.load();
  }
  m_lookers.fetch_sub(1);
}

bool TaskQueue::HasNews() const noexcept {
  return IsClosed() || m_taken.load(std::memory_order_acquire) != m_pushed.load(std::memory_order_acquire);
}

}  // namespace zelbase::detail
