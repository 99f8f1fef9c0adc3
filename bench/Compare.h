// What every comparison with a peer is measured and printed with: ours and the peer alternately in one
// process, the best of several batches each. For the benchmarks of this folder only.
//
//   Comparison table("checksums");
//   table.Row("CRC-32, 1 kB", 1024, "B", 0.9, [&] { Keep(ours(data)); }, [&] { Keep(theirs(data)); },
//             [&] { ReadOnce(data); });  // the limit: what the machine needs for the least that anybody must
//             do
//   return table.Finish();               // 0 when every row met its bar
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <type_traits>

// Makes the compiler believe that `value` is used.
template <class T>
void Keep(const T& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

// The limits of what must see all of its input: reads every byte, as fast as this machine does.
inline void ReadOnce(const void* data, std::size_t size) {
  const auto* const bytes = static_cast<const unsigned char*>(data);
  std::uint64_t sums[8] = {};
  std::size_t at = 0;
  for (; at + sizeof sums <= size; at += sizeof sums) {
    std::uint64_t words[8];
    std::memcpy(words, bytes + at, sizeof words);
    for (int i = 0; i < 8; ++i) sums[i] += words[i];
  }
  for (; at < size; ++at) sums[0] += bytes[at];
  for (const std::uint64_t sum : sums) Keep(sum);
}
template <class Row>
void ReadOnce(const Row& row) {
  ReadOnce(row.data(), row.size() * sizeof(*row.data()));
}

// And of what must write all of its output: fills the row with a byte.
template <class Row>
void WriteOnce(Row& row) {
  std::memset(static_cast<void*>(row.data()), 1, row.size() * sizeof(*row.data()));
  Keep(row.data());
}

// "1,000", "100,000", ...
inline std::string Grouped(std::size_t count) {
  std::string text = std::to_string(count);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

// Measures a subject at each of its sizes; `compare` tells of one whether it met its bars. The exit code of the program.
inline int AtEachSize(std::initializer_list<int> sizes, bool (*compare)(int size)) {
  bool allMet = true;
  for (const int size : sizes) allMet = compare(size) && allMet;
  return allMet ? 0 : 1;
}

class Comparison {
 public:
  static constexpr double kNoBar = 0.0;
  // The bar of one size of several; the others are there to show the growth.
  static constexpr double BarAt(bool isThisSize, double bar) { return isThisSize ? bar : kNoBar; }

  // `rounds` batches of at least `batchSeconds` are run on either side of each row, in turns.
  explicit Comparison(const char* title, int rounds = 5, double batchSeconds = 0.02) : m_rounds(rounds), m_batchSeconds(batchSeconds) {
    std::printf("%s\n%-44s %14s %14s %8s %6s %13s\n", title, "what", "ours", "peer", "ratio", "bar", "limit");
  }

  // One call of `ours` or `peer` does `units` of work (bytes, look-ups, ...). Prints nanoseconds a unit and
  // ratio = speed of ours / speed of the peer; "ok" when it is at least `bar`. kNoBar: the ratio is for
  // information and decides nothing. Gives the ratio.
  template <class Ours, class Peer>
  double Row(const std::string& what, double units, const char* unit, double bar, Ours ours, Peer peer) {
    return Row(what, units, unit, bar, ours, peer, NoLimit{});
  }

  // And beside them a `limit`: the same work without the thinking, a bare reading of the input, say. What
  // stands in that column is what no program could go below.
  template <class Ours, class Peer, class Limit>
  double Row(const std::string& what, double units, const char* unit, double bar, Ours ours, Peer peer, Limit limit) {
    Side<Ours> ourSide(ours, m_batchSeconds);
    Side<Peer> peerSide(peer, m_batchSeconds);
    Side<Limit> limitSide(limit, m_batchSeconds);
    for (int round = 0; round < m_rounds; ++round) {
      ourSide.Measure();
      peerSide.Measure();
      limitSide.Measure();
    }
    const double ratio = peerSide.best / ourSide.best;
    const bool met = ratio >= bar;
    m_allMet = m_allMet && met;
    std::printf("%-44s %11.4g/%-2s %11.4g/%-2s %8.2f", what.c_str(), ourSide.best / units * 1e9, unit, peerSide.best / units * 1e9, unit,
                ratio);
    bar == kNoBar ? std::printf(" %6s", "") : std::printf(" %6.2f", bar);
    if constexpr (!std::is_same_v<Limit, NoLimit>) std::printf(" %13.4g", limitSide.best / units * 1e9);
    if (bar != kNoBar) std::printf("  %s", met ? "ok" : "short");
    std::printf("\n");
    std::fflush(stdout);
    return ratio;
  }

  // Closes the table. The exit code of the program: 0 when every row met its bar, 1 otherwise.
  int Finish() const {
    std::printf(
        "ns a unit; ratio = our speed / the peer's; best of %d, alternating; limit = the least that the "
        "machine needs\n",
        m_rounds);
    return m_allMet ? 0 : 1;
  }

 private:
  using Clock = std::chrono::steady_clock;

  struct NoLimit {
    void operator()() const {}
  };

  // What is measured in one column of a row.
  template <class Work>
  class Side {
   public:
    double best = 1e300;  // seconds a call

    // Finds enough calls to fill a batch, by doubling; also warms caches up.
    Side(Work& work, double batchSeconds) : m_work(work) {
      if constexpr (std::is_same_v<Work, NoLimit>) return;
      while (SecondsACall() * static_cast<double>(m_calls) < batchSeconds) m_calls *= 2;
    }

    void Measure() {
      if constexpr (std::is_same_v<Work, NoLimit>) return;
      best = std::min(best, SecondsACall());
    }

   private:
    double SecondsACall() {
      const auto start = Clock::now();
      for (std::size_t i = 0; i < m_calls; ++i) m_work();
      return std::chrono::duration<double>(Clock::now() - start).count() / static_cast<double>(m_calls);
    }

    Work& m_work;
    std::size_t m_calls = 1;
  };

  int m_rounds;
  double m_batchSeconds;
  bool m_allMet = true;
};
