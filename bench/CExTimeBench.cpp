// What "now" costs beside the system's bare monotonic clock, which it is made from, at 1, 2 and 4 threads. At
// more than one thread all of them ask for the time without a pause, which no program does: it is the most
// that the lock can cost, and has no bar.

#include <time.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/time/CExTime.h"

namespace {

constexpr int kCallsAThread = 50000;

double Bare() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

template <class Work>
void OnThreads(int count, Work work) {
  const auto batch = [&] {
    for (int i = 0; i < kCallsAThread; ++i) Keep(work());
  };
  std::vector<std::thread> others;
  for (int i = 1; i < count; ++i) others.emplace_back(batch);
  batch();
  for (std::thread& other : others) other.join();
}

}  // namespace

int main() {
  const CExTime time;
  const WallClockReading wall = PlatformClock::System().WallClock();
  if (!(std::fabs(time.GetCurTime() - static_cast<double>(wall.seconds) * 1000.0) < 60e3)) {
    std::fprintf(stderr, "the time is not that of the wall clock\n");
    return 1;
  }
  Comparison table("now (peer: clock_gettime of the monotonic clock); one unit is a call on each thread");
  for (const int threads : {1, 2, 4}) {
    const std::string name = std::to_string(threads) + (threads == 1 ? " thread" : " threads");
    const double bar = threads == 1 ? 0.5 : Comparison::kNoBar;
    table.Row(
        "GetCurTime, " + name, kCallsAThread, "call", bar, [&] { OnThreads(threads, [&] { return time.GetCurTime(); }); },
        [&] { OnThreads(threads, [] { return Bare(); }); });
  }
  table.Row(
      "the lock alone, 1 thread : clock_gettime", kCallsAThread, "call", Comparison::kNoBar,
      [&] { OnThreads(1, [&] { return time.GetWinTime(0.0); }); }, [&] { OnThreads(1, [] { return Bare(); }); });
  return table.Finish();
}
