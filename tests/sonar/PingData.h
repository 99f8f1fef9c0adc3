// Pings for tests: arrays that a view can look at, the names of all fields, and a second, plain search for the nadir beam.
#pragma once

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "zelbase/sonar/PingStruct.h"

// Arrays of a ping, and a view of them. The view shares them: it must not outlive this. Not copyable.
struct PingData {
  explicit PingData(int beams, int samples = 0)
      : x(Size(beams)),
        y(Size(beams)),
        z(Size(beams)),
        range(Size(beams), 1.0f),
        flags(Size(beams), 4),
        words(13, std::vector<unsigned int>(Size(beams))),
        shorts(2, std::vector<unsigned short>(Size(beams))),
        bytes(Size(beams)),
        sampleWords(4, std::vector<unsigned int>(Size(samples))) {
    view.numBeams = beams;
    view.numSamples = samples;
    view.beamX = x.data();
    view.beamY = y.data();
    view.beamZ = z.data();
    view.beamFlags = flags.data();
    view.beamRange = range.data();
    unsigned int** const wordPointers[] = {&view.beamWord0,  &view.beamWord1,  &view.beamWord2, &view.beamWord3, &view.beamWord4,
                                           &view.beamWord5,  &view.beamWord6,  &view.beamWord7, &view.beamWord8, &view.beamWord9,
                                           &view.beamWord10, &view.beamWord11, &view.beamWord12};
    for (std::size_t i = 0; i < words.size(); ++i) *wordPointers[i] = words[i].data();
    unsigned int** const samplePointers[] = {&view.sampleWord0, &view.sampleWord1, &view.sampleWord2, &view.sampleWord3};
    for (std::size_t i = 0; i < sampleWords.size(); ++i) *samplePointers[i] = sampleWords[i].data();
    view.beamShort0 = shorts[0].data();
    view.beamShort1 = shorts[1].data();
    view.beamByte0 = bytes.data();
  }
  PingData(const PingData&) = delete;
  PingData& operator=(const PingData&) = delete;

  // A flat bottom: beams of equal angles from -60 to 60 degrees.
  void FillFan(float depth) {
    for (std::size_t i = 0; i < x.size(); ++i) {
      const double share = x.size() > 1 ? static_cast<double>(i) / static_cast<double>(x.size() - 1) : 0.5;
      x[i] = static_cast<float>(depth * std::tan((share - 0.5) * 120 / 57.29577951308232));
      z[i] = -depth;
    }
  }

  // Every element of every array another number.
  void FillAll(unsigned int seed) {
    std::mt19937 random(seed);
    for (auto* list : {&x, &y, &z, &range}) {
      for (float& value : *list) value = static_cast<float>(random() % 100000) / 7;
    }
    for (int& value : flags) value = static_cast<int>(random());
    for (auto& list : words) {
      for (unsigned int& value : list) value = static_cast<unsigned int>(random());
    }
    for (auto& list : sampleWords) {
      for (unsigned int& value : list) value = static_cast<unsigned int>(random());
    }
    for (auto& list : shorts) {
      for (unsigned short& value : list) value = static_cast<unsigned short>(random());
    }
    for (unsigned char& value : bytes) value = static_cast<unsigned char>(random());
  }

  static std::size_t Size(int count) { return static_cast<std::size_t>(std::max(count, 0)); }

  std::vector<float> x, y, z, range;
  std::vector<int> flags;
  std::vector<std::vector<unsigned int>> words;
  std::vector<std::vector<unsigned short>> shorts;
  std::vector<unsigned char> bytes;
  std::vector<std::vector<unsigned int>> sampleWords;
  PingStruct view;
};

// Calls take(field) with each scalar of a ping, in order.
template <class Ping, class Take>
void ForEachScalar(Ping& p, Take take) {
  take(p.headerWord0), take(p.numBeams), take(p.headerWord2), take(p.numSamples);
  take(p.headerDouble0), take(p.headerDouble1), take(p.headerDouble2), take(p.nadirDepth), take(p.nadirBeam);
  take(p.headerDouble4), take(p.headerDouble5), take(p.headerDouble6), take(p.headerDouble7), take(p.headerDouble8);
  take(p.headerDouble9), take(p.headerDouble10), take(p.headerDouble11), take(p.pingFlags);
  take(p.headerShort0), take(p.headerShort1), take(p.headerWord3), take(p.headerWord4), take(p.headerWord5);
  take(p.headerWord6), take(p.headerFloat0), take(p.headerWord7), take(p.headerFloat1), take(p.headerWord8);
  take(p.headerByte0), take(p.headerByte1), take(p.headerDouble12), take(p.headerDouble13), take(p.headerDouble14);
  take(p.headerWord9), take(p.headerFloat2), take(p.headerFloat3), take(p.headerFloat4), take(p.headerDouble15);
  take(p.headerWord10), take(p.hasShortArray), take(p.headerWord11);
}

// Calls take(array, isOfSamples) with each array's pointer, in order.
template <class Ping, class Take>
void ForEachArray(Ping& p, Take take) {
  take(p.beamX, false), take(p.beamY, false), take(p.beamZ, false), take(p.beamWord0, false), take(p.beamFlags, false);
  take(p.beamShort0, false), take(p.beamRange, false), take(p.beamWord1, false), take(p.beamWord2, false);
  take(p.beamWord3, false), take(p.sampleWord0, true), take(p.sampleWord1, true), take(p.sampleWord2, true);
  take(p.sampleWord3, true), take(p.beamWord4, false), take(p.beamWord5, false), take(p.beamWord6, false);
  take(p.beamWord7, false), take(p.beamWord8, false), take(p.beamWord9, false), take(p.beamWord10, false);
  take(p.beamWord11, false), take(p.beamWord12, false), take(p.beamShort1, false), take(p.beamByte0, false);
}

// The nadir search step by step, beam by beam, without any saving.
class PlainNadirSearch {
 public:
  explicit PlainNadirSearch(const PingStruct& ping) : beam(ping.nadirBeam), depth(ping.nadirDepth), m_ping(ping) { Run(); }

  int beam;
  double depth;

 private:
  bool IsValid(long long i) const {
    if (i < 0 || i >= m_ping.numBeams || m_ping.beamFlags == nullptr) return false;
    if (m_ping.beamRange != nullptr && m_ping.beamRange[i] == 0) return false;
    return (m_ping.pingFlags >> 16) % 2 == 0 && m_ping.beamFlags[i] <= 255;
  }

  float Angle(int i) const {
    const volatile float xx = m_ping.beamX[i] * m_ping.beamX[i];
    const volatile float yy = m_ping.beamY[i] * m_ping.beamY[i];
    const volatile float sum = xx + yy;
    const float h = std::sqrt(static_cast<float>(sum));
    return std::fabs(std::atan2(h, -m_ping.beamZ[i]));
  }

  void Run() {
    if (beam != -1 && IsValid(beam)) return;
    const bool blind = m_ping.beamX == nullptr || m_ping.beamY == nullptr || m_ping.beamZ == nullptr;
    const int begin = blind ? -1 : beam == -1 ? Best() : Nearest();
    beam = begin;
    if (begin == -1) {
      depth = 0;
      return;
    }
    Median(begin);
  }

  int Best() const {
    float best = 999.0f;
    int found = -1;
    for (int i = 0; i < m_ping.numBeams; ++i) {
      if (!IsValid(i) || m_ping.beamFlags[i] == 0) continue;
      const float a = Angle(i);
      if (!(best > a)) continue;
      best = a;
      found = i;
    }
    return found;
  }

  int Nearest() const {
    int lower = -1;
    int upper = -1;
    for (int i = 0; i < m_ping.numBeams; ++i) {
      if (!IsValid(i)) continue;
      if (i < beam) lower = i;
      if (i > beam && upper == -1) upper = i;
    }
    if (lower == -1) return upper;
    if (upper == -1) return lower;
    return Angle(upper) < Angle(lower) ? upper : lower;
  }

  void Median(long long begin) {
    std::vector<std::pair<float, int>> numbers;
    std::vector<std::pair<float, int>> others;
    for (long long i = begin - 5; i < begin + 5; ++i) {
      if (i < 0 || i >= m_ping.numBeams - 1LL || !IsValid(i)) continue;
      const float z = m_ping.beamZ[i];
      (z == z ? numbers : others).emplace_back(z, static_cast<int>(i));
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.insert(numbers.end(), others.begin(), others.end());
    if (numbers.empty()) {
      beam = -1;
      return;
    }
    const std::size_t m = numbers.size() / 2;
    if (numbers.size() % 2 == 1) {
      depth = -numbers[m].first;
      beam = numbers[m].second;
      return;
    }
    depth = -(double{numbers[m].first} + double{numbers[m - 1].first}) * 0.5;
    const long long toUpper = std::llabs(numbers[m].second - begin);
    const long long toLower = std::llabs(numbers[m - 1].second - begin);
    beam = toUpper <= toLower ? numbers[m].second : numbers[m - 1].second;
  }

  const PingStruct& m_ping;
};
