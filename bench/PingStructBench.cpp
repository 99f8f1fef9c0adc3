// A ping's nadir beam against a plain search that takes the arc of every beam and std::nth_element for the
// median, and copying a ping against memcpy of its arrays. Beside the ratios: the bar of 5 microseconds for a
// search over 512 beams, and that a copy allocates nothing once the capacity stands.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <random>
#include <utility>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/sonar/PingStruct.h"
#include "zelbase/sonar/PingStructRW.h"

namespace {

constexpr int kBarBeams = 512;
constexpr int kSamples = 2048;
constexpr double kMostNanoseconds = 5000.0;
constexpr double kBar = 1.0;

std::size_t g_allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++g_allocations;
  if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

// A bottom with waves under a swath of 130 degrees; one beam in twenty is rejected.
PingStructRW MakePing(int beams) {
  PingStruct view;
  view.numBeams = beams;
  view.numSamples = kSamples;
  view.hasShortArray = 1;
  PingStructRW ping;
  ping = view;
  std::mt19937 random(512);
  const float half = static_cast<float>(beams) / 2.0f;
  for (int i = 0; i < beams; ++i) {
    const float angle = (static_cast<float>(i) - half + 0.7f) / half * 1.134f;
    const float depth = 40.0f + std::sin(static_cast<float>(i) / 30.0f) + static_cast<float>(random() % 100) / 500.0f;
    ping.beamX[i] = depth * std::tan(angle);
    ping.beamY[i] = static_cast<float>(random() % 100) / 300.0f;
    ping.beamZ[i] = -depth;
    ping.beamRange[i] = depth / std::cos(angle);
    ping.beamFlags[i] = random() % 20 == 0 ? 0x400 : 0x7;
  }
  return ping;
}

// The same answer for a ping like this one.
std::pair<int, double> PlainNadir(const PingStructRW& ping) {
  float best = 999.0f;
  int nadir = -1;
  for (int i = 0; i < ping.numBeams; ++i) {
    if (ping.beamRange[i] == 0.0f || ping.beamFlags[i] >= 256 || ping.beamFlags[i] == 0) continue;
    const float h = std::sqrt(ping.beamX[i] * ping.beamX[i] + ping.beamY[i] * ping.beamY[i]);
    const float angle = std::fabs(std::atan2(h, -ping.beamZ[i]));
    if (angle < best) {
      best = angle;
      nadir = i;
    }
  }
  std::vector<std::pair<float, int>> window;
  for (int i = std::max(nadir - 5, 0); i < std::min(nadir + 5, ping.numBeams - 1); ++i) {
    if (ping.beamRange[i] != 0.0f && ping.beamFlags[i] < 256) window.emplace_back(ping.beamZ[i], i);
  }
  const auto middle = window.begin() + static_cast<std::ptrdiff_t>(window.size() / 2);
  std::nth_element(window.begin(), middle, window.end());
  if (window.size() % 2 != 0) return {middle->second, -static_cast<double>(middle->first)};
  const auto before = std::max_element(window.begin(), middle);
  const int beam = std::abs(before->second - nadir) < std::abs(middle->second - nadir) ? before->second : middle->second;
  return {beam, -(static_cast<double>(middle->first) + static_cast<double>(before->first)) * 0.5};
}

// Plain arrays of the same widths and lengths.
struct Arrays {
  explicit Arrays(std::size_t count) : beams(18 * count), shorts(2 * count), bytes(count), samples(4 * kSamples) {}
  std::vector<unsigned int> beams;
  std::vector<unsigned short> shorts;
  std::vector<unsigned char> bytes;
  std::vector<unsigned int> samples;
};

template <class Element>
void CopyPart(std::vector<Element>& to, const std::vector<Element>& from, std::size_t parts) {
  const std::size_t size = from.size() / parts;
  for (std::size_t i = 0; i < parts; ++i) std::memcpy(to.data() + i * size, from.data() + i * size, size * sizeof(Element));
}

void CopyArrays(Arrays& to, const Arrays& from) {
  CopyPart(to.beams, from.beams, 18);
  CopyPart(to.shorts, from.shorts, 2);
  CopyPart(to.bytes, from.bytes, 1);
  CopyPart(to.samples, from.samples, 4);
}

template <class Work>
double BestNanoseconds(Work work) {
  using Clock = std::chrono::steady_clock;
  constexpr int kCalls = 1000;
  double best = 1e300;
  for (int round = 0; round < 20; ++round) {
    const auto start = Clock::now();
    for (int i = 0; i < kCalls; ++i) work();
    best = std::min(best, std::chrono::duration<double, std::nano>(Clock::now() - start).count() / kCalls);
  }
  return best;
}

bool Compare(Comparison& table, int beams) {
  PingStructRW ping = MakePing(beams);
  const std::string of = ", " + Grouped(static_cast<std::size_t>(beams)) + " beams";
  const auto nadir = [&] {
    ping.nadirBeam = -1;
    Keep(ping.CompNadirBeam());
  };
  const auto plain = [&] { Keep(PlainNadir(ping)); };
  table.Row("CompNadirBeam, arcs and nth_element" + of, 1, "op", Comparison::BarAt(beams == kBarBeams, kBar), nadir, plain);
  const double search = BestNanoseconds(nadir);
  nadir();
  const std::pair<int, double> answer = PlainNadir(ping);
  const bool agree = answer == std::pair<int, double>(ping.nadirBeam, ping.nadirDepth);

  PingStructRW copy;
  copy = ping;
  const std::size_t before = g_allocations;
  for (int i = 0; i < 1000; ++i) copy = ping;
  const std::size_t allocations = g_allocations - before;
  const Arrays from(static_cast<std::size_t>(beams));
  Arrays to(static_cast<std::size_t>(beams));
  table.Row(
      "copy, memcpy of the arrays" + of, 1, "op", Comparison::BarAt(beams == kBarBeams, 0.8),
      [&] {
        copy = ping;
        Keep(copy.beamX[0]);
      },
      [&] {
        CopyArrays(to, from);
        Keep(to.beams[0]);
      });
  std::printf(
      "search over %d beams: %.0f ns (at most %.0f for %d); answers agree: %s; allocations in 1000 copies: "
      "%zu\n",
      beams, search, kMostNanoseconds, kBarBeams, agree ? "yes" : "no", allocations);
  return (beams > kBarBeams || search <= kMostNanoseconds) && agree && allocations == 0;
}

}  // namespace

int main() {
  Comparison table("pings of 2,048 samples");
  bool allMet = true;
  for (const int beams : {128, kBarBeams, 2048}) allMet = Compare(table, beams) && allMet;
  return table.Finish() == 0 && allMet ? 0 : 1;
}
