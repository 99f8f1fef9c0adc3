// The pool against TBB's task_group, with as many threads of either as the machine has processors: a million
// empty tasks from one thread, dispatched and drained; the way of one task to a worker that has none, from
// its dispatch to its first step, for a worker that has just looked and for one that sleeps. Also, without a
// peer: the processor time that idle workers use, by the clock of the whole process.

#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/task_arena.h>
#include <tbb/task_group.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/concurrency/ThreadPool.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBarTasks = 1000000;
constexpr unsigned int kWorkers = 2;

// The pool is made and ended in the measure: draining means that every task has run.
void RunOurs(int tasks, const std::function<void()>& task) {
  ThreadPool pool(kWorkers);
  for (int i = 0; i < tasks; ++i) pool.Dispatch(task);
  pool.Close();
  pool.Wait();
}

void RunOursHelping(int tasks, const std::function<void()>& task) {
  ThreadPool pool(kWorkers - 1);
  for (int i = 0; i < tasks; ++i) pool.Dispatch(task);
  pool.Close();
  while (pool.ExecuteOneTask()) {
  }
  pool.Wait();
}

void RunPeers(int tasks, tbb::task_group& group, const std::function<void()>& task) {
  for (int i = 0; i < tasks; ++i) group.run(task);
  group.wait();
}

// Median time from a task's dispatch to its first step on a worker, in microseconds. Before each one the
// caller rests for `rest`: awake when that is short, so that nothing else changes, and asleep otherwise.
template <class Dispatch>
double MedianWay(std::chrono::microseconds rest, Dispatch dispatch) {
  const std::size_t rounds = rest < std::chrono::milliseconds(10) ? 200 : 40;
  std::vector<double> ways;
  while (ways.size() < rounds) {
    if (rest >= std::chrono::milliseconds(1)) std::this_thread::sleep_for(rest);
    for (const auto begin = Clock::now(); Clock::now() - begin < rest;) {
    }
    std::atomic<bool> begun{false};
    Clock::time_point arrival;
    const auto start = Clock::now();
    dispatch([&] {
      arrival = Clock::now();
      begun.store(true, std::memory_order_release);
      begun.notify_one();
    });
    begun.wait(false, std::memory_order_acquire);
    ways.push_back(std::chrono::duration<double, std::micro>(arrival - start).count());
  }
  std::nth_element(ways.begin(), ways.begin() + static_cast<std::ptrdiff_t>(rounds / 2), ways.end());
  return ways[rounds / 2];
}

// True when no way was longer than twice the peer's.
bool CompareWays() {
  constexpr double kBar = 0.5;
  constexpr int kRounds = 5;
  std::printf("\nway of a task to an idle worker, best of %d medians, alternating\n%-44s %14s %14s %8s %6s\n", kRounds, "rest before",
              "ours", "peer", "ratio", "bar");
  ThreadPool pool(1);
  tbb::task_arena arena(2, 1);
  bool allMet = true;
  for (const int rest : {0, 20, 50, 200, 2000, 20000}) {
    const std::chrono::microseconds pause(rest);
    double ours = 1e300, peer = 1e300;
    for (int round = 0; round < kRounds; ++round) {
      ours = std::min(ours, MedianWay(pause, [&](const auto& task) { pool.Dispatch(task); }));
      peer = std::min(peer, MedianWay(pause, [&](const auto& task) { arena.enqueue(task); }));
    }
    const bool met = peer / ours >= kBar;
    allMet = allMet && met;
    std::printf("%7d us %34s %11.3g us %11.3g us %8.2f %6.2f  %s\n", rest, "", ours, peer, peer / ours, kBar, met ? "ok" : "short");
  }
  pool.Close();
  pool.Wait();
  return allMet;
}

// Processor time of the process while it sleeps for `seconds`, with `workers` idle threads of a pool, in
// milliseconds.
double IdleMilliseconds(unsigned int workers, double seconds) {
  ThreadPool pool(workers);
  for (unsigned int i = 0; i < workers; ++i) pool.Dispatch([] {});
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const std::clock_t before = std::clock();
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  const double used = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC * 1e3;
  pool.Close();
  pool.Wait();
  return used;
}

}  // namespace

int main() {
  const std::function<void()> task = [] {};
  const tbb::global_control threads(tbb::global_control::max_allowed_parallelism, kWorkers);
  Comparison table("pool (peer: TBB task_group)");
  tbb::task_group group;
  for (const int tasks : {10000, 100000, kBarTasks}) {
    const std::string what = Grouped(static_cast<std::size_t>(tasks)) + " empty tasks, ";
    const auto peers = [&] { RunPeers(tasks, group, task); };
    // Few tasks are a matter of starting the threads, which the peer has already.
    table.Row(
        what + "2 workers", tasks, "tk", tasks == kBarTasks ? 1.0 : Comparison::kNoBar, [&] { RunOurs(tasks, task); }, peers);
    table.Row(
        what + "1 worker and the caller", tasks, "tk", Comparison::kNoBar, [&] { RunOursHelping(tasks, task); }, peers);
  }
  const bool waysMet = CompareWays();
  std::printf("\nprocessor time of 8 idle workers in 2 s: %.3f ms\n", IdleMilliseconds(8, 2.0));
  const int finished = table.Finish();
  return waysMet ? finished : 1;
}
