// Numbers to try a conversion with, the same ones in every run.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

// Doubles of every kind: any bit pattern, everyday numbers, exact halves, denormals, whole numbers, both
// zeros.
class RandomDoubles {
 public:
  double Next() {
    const std::uint64_t bits = m_random();
    switch (m_random() % 8) {
      case 0: return Finite(std::bit_cast<double>(bits & 0x800FFFFFFFFFFFFFu));              // denormal or zero
      case 1: return static_cast<double>(static_cast<std::int64_t>(bits) >> 20) / 4;         // halves, quarters
      case 2: return static_cast<double>(static_cast<std::int64_t>(bits) >> 40) / 1000;      // three decimals
      case 3: return static_cast<double>(static_cast<std::int64_t>(bits));                   // large whole
      case 4: return static_cast<double>(static_cast<std::int64_t>(bits) >> 30) * 9.31e-10;  // everyday
      case 5: return static_cast<double>(static_cast<std::int64_t>(bits) >> 56) / 16;        // short and exact
      default: return Finite(std::bit_cast<double>(bits));
    }
  }
  std::uint64_t Below(std::uint64_t bound) { return m_random() % bound; }

 private:
  static double Finite(double value) { return std::isfinite(value) ? value : -0.0; }
  std::mt19937_64 m_random{20140115};
};
