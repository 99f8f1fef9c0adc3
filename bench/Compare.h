// What every comparison with a peer is measured and printed with: ours and the peer alternately in one process, the best
// of several batches each. For the benchmarks of this folder only.
//
//   Comparison table("checksums");
//   table.Row("CRC-32, 1 kB", 1024, "B", 0.9, [&] { Keep(ours(data)); }, [&] { Keep(theirs(data)); });
//   return table.Finish();               // 0 when every row met its bar
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>

// Makes the compiler believe that `value` is used.
template <class T>
void Keep(const T& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

class Comparison {
 public:
  static constexpr double kNoBar = 0.0;

  // `rounds` batches of at least `batchSeconds` are run on either side of each row, in turns.
  explicit Comparison(const char* title, int rounds = 5, double batchSeconds = 0.02)
      : m_rounds(rounds), m_batchSeconds(batchSeconds) {
    std::printf("%s\n%-44s %14s %14s %8s %6s\n", title, "what", "ours", "peer", "ratio", "bar");
  }

  // One call of `ours` or `peer` does `units` of work (bytes, look-ups, ...). Prints nanoseconds a unit and
  // ratio = speed of ours / speed of the peer; "ok" when it is at least `bar`. kNoBar: the ratio is for information and
  // decides nothing. Gives the ratio.
  template <class Ours, class Peer>
  double Row(const std::string& what, double units, const char* unit, double bar, Ours ours, Peer peer) {
    const std::size_t ourCalls = CallsABatch(ours);
    const std::size_t peerCalls = CallsABatch(peer);
    double ourBest = 1e300;
    double peerBest = 1e300;
    for (int round = 0; round < m_rounds; ++round) {
      ourBest = std::min(ourBest, SecondsACall(ours, ourCalls));
      peerBest = std::min(peerBest, SecondsACall(peer, peerCalls));
    }
    const double ratio = peerBest / ourBest;
    const bool met = ratio >= bar;
    m_allMet = m_allMet && met;
    std::printf("%-44s %11.4g/%-2s %11.4g/%-2s %8.2f", what.c_str(), ourBest / units * 1e9, unit, peerBest / units * 1e9,
                unit, ratio);
    if (bar != kNoBar) std::printf(" %6.2f  %s", bar, met ? "ok" : "short");
    std::printf("\n");
    std::fflush(stdout);
    return ratio;
  }

  // Closes the table. The exit code of the program: 0 when every row met its bar, 1 otherwise.
  int Finish() const {
    std::printf("ns a unit; ratio = our speed / the peer's; best of %d, alternating\n", m_rounds);
    return m_allMet ? 0 : 1;
  }

 private:
  using Clock = std::chrono::steady_clock;

  template <class Work>
  static double SecondsACall(Work& work, std::size_t calls) {
    const auto start = Clock::now();
    for (std::size_t i = 0; i < calls; ++i) work();
    return std::chrono::duration<double>(Clock::now() - start).count() / static_cast<double>(calls);
  }

  // Enough calls to fill a batch, found by doubling; also warms caches up.
  template <class Work>
  std::size_t CallsABatch(Work& work) const {
    std::size_t calls = 1;
    while (SecondsACall(work, calls) * static_cast<double>(calls) < m_batchSeconds) calls *= 2;
    return calls;
  }

  int m_rounds;
  double m_batchSeconds;
  bool m_allMet = true;
};
