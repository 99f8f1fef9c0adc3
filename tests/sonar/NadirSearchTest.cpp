// The quick search against the plain one, on pings of every kind and in both forms of a ping.

#include "zelbase/sonar/detail/NadirSearch.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "tests/sonar/PingData.h"
#include "zelbase/sonar/PingStruct.h"
#include "zelbase/sonar/PingStructRW.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

class RandomPings {
 public:
  std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(m_random() % bound); }

  float Everyday(float span) { return span * (static_cast<float>(Below(20001)) / 10000.0f - 1.0f); }

  // Any bits, the special numbers, the smallest and the largest.
  float Hostile() {
    const float special[] = {0.0f,    -0.0f,   kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN(),
                             1e-45f,  -1e-45f, 3e38f,     -3e38f,     1e-20f,
                             -1e-20f, 1e20f,   -1e20f,    -10.0f,     1.0f};
    if (Below(3) == 0) return std::bit_cast<float>(static_cast<std::uint32_t>(m_random()));
    return special[Below(15)];
  }

  int Flags() {
    const int special[] = {0, 1, 4, 255, 256, 0x10000, INT_MIN, INT_MIN + 0x100, -1, 0x7FFFFFFF};
    return Below(2) == 0 ? 4 : special[Below(10)];
  }

  float Range() {
    const float special[] = {0.0f, -0.0f, 1.0f, std::numeric_limits<float>::quiet_NaN()};
    return Below(3) == 0 ? special[Below(4)] : 1.0f;
  }

  int Before(int beams) {
    const int special[] = {INT_MIN, INT_MIN + 5, -2, INT_MAX, INT_MAX - 5, beams, beams - 1};
    if (Below(2) == 0) return -1;
    return Below(2) == 0 ? special[Below(7)] : static_cast<int>(Below(static_cast<std::uint32_t>(beams) + 1));
  }

  void Fill(PingData& data, int kind) {
    const float depth = 1.0f + static_cast<float>(Below(1000));
    for (std::size_t i = 0; i < data.x.size(); ++i) {
      data.flags[i] = Flags();
      data.range[i] = Range();
      FillBeam(data, i, kind, depth);
    }
    data.view.nadirBeam = Before(data.view.numBeams);
    data.view.nadirDepth = 77.0;
    data.view.pingFlags = Below(20) == 0 ? 0x10000 : Below(3);
    if (Below(10) == 0) data.view.beamRange = nullptr;
    if (Below(40) == 0) data.view.beamZ = nullptr;
    if (Below(40) == 0) data.view.beamFlags = nullptr;
  }

  static constexpr int kKinds = 8;

 private:
  void FillBeam(PingData& data, std::size_t i, int kind, float depth) {
    switch (kind) {
      case 0:  // a bottom
        data.x[i] = Everyday(2 * depth);
        data.y[i] = Everyday(depth / 10);
        data.z[i] = -depth + Everyday(depth / 20);
        break;
      case 1:  // any numbers
        data.x[i] = Hostile();
        data.y[i] = Hostile();
        data.z[i] = Hostile();
        break;
      case 2:  // a bottom with a few of those
        data.x[i] = Below(8) == 0 ? Hostile() : Everyday(depth);
        data.y[i] = Everyday(depth);
        data.z[i] = Below(8) == 0 ? Hostile() : -depth;
        break;
      case 3:  // angles that differ in their last digits, or not at all
        data.x[i] = depth * (1.0f + static_cast<float>(Below(4)) * 6e-8f);
        data.y[i] = depth * static_cast<float>(Below(3)) * 1e-8f;
        data.z[i] = -depth * (1.0f + static_cast<float>(Below(4)) * 6e-8f);
        break;
      case 4:  // the same near the vertical, and far below what a float can tell from 0
        data.x[i] = std::ldexp(1.0f + static_cast<float>(Below(3)) * 1.2e-7f, -static_cast<int>(Below(4)) * 40);
        data.z[i] = -std::ldexp(1.0f, static_cast<int>(Below(4)) * 40);
        break;
      case 5:  // the same near and beyond the horizontal, around the tangent of 4 too
        data.x[i] = depth * (Below(2) == 0 ? 4.0f : 1e4f) * (1.0f + static_cast<float>(Below(5)) * 1e-5f);
        data.z[i] = Below(6) == 0 ? depth : -depth;
        break;
      case 6:  // a bottom off to one side, with beams of no length and of an endless one
        data.x[i] = Below(12) == 0 ? 3e38f : Below(12) == 0 ? 0.0f : 1.5f * depth + Everyday(depth / 4);
        data.z[i] = data.x[i] == 3e38f ? -kInfinity : data.x[i] == 0.0f ? (Below(2) == 0 ? 0.0f : -0.0f) : -depth;
        break;
      default:  // all above the sonar, or at its height
        data.x[i] = Everyday(depth);
        data.z[i] = Below(3) == 0 ? 0.0f : std::fabs(Everyday(depth));
        break;
    }
  }

  std::mt19937 m_random{20250611};
};

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

bool Same(double a, double b) { return SameBits(a, b) || (std::isnan(a) && std::isnan(b)); }

class NadirSearchKinds : public testing::TestWithParam<int> {};

TEST_P(NadirSearchKinds, FindsWhatThePlainSearchFinds) {
  RandomPings random;
  int found = 0;
  for (int round = 0; round < 20000; ++round) {
    const int beams = static_cast<int>(random.Below(round % 100 == 0 ? 600 : 24));
    PingData data(beams);
    random.Fill(data, GetParam());
    const PlainNadirSearch expected(data.view);
    PingStruct ping(data.view);
    ASSERT_EQ(ping.CompNadirBeam(), expected.beam) << "round " << round;
    ASSERT_TRUE(Same(ping.nadirDepth, expected.depth)) << "round " << round;
    ASSERT_EQ(ping.nadirBeam, expected.beam);
    found += expected.beam != -1 ? 1 : 0;
  }
  EXPECT_GT(found, 2000);
}

// An owner has zeros, or nothing, where the view has null: only pings with all arrays compare.
TEST_P(NadirSearchKinds, TheOwnerFindsTheSame) {
  RandomPings random;
  PingStructRW owner;
  for (int round = 0; round < 5000; ++round) {
    PingData data(static_cast<int>(random.Below(24)));
    random.Fill(data, GetParam());
    if (data.view.beamRange == nullptr || data.view.beamZ == nullptr || data.view.beamFlags == nullptr) continue;
    const PlainNadirSearch expected(data.view);
    owner = data.view;
    ASSERT_EQ(owner.CompNadirBeam(), expected.beam) << "round " << round;
    ASSERT_TRUE(Same(owner.nadirDepth, expected.depth)) << "round " << round;
  }
}

INSTANTIATE_TEST_SUITE_P(AllKinds, NadirSearchKinds, testing::Range(0, RandomPings::kKinds));

// The angle of the beam that the search begins at, against the formula in double precision.
TEST(AngleOffVertical, IsTheAngleBetweenTheBeamAndTheVertical) {
  RandomPings random;
  for (int round = 0; round < 20000; ++round) {
    const float x = random.Everyday(100);
    const float y = random.Everyday(100);
    const float z = random.Everyday(100);
    if (z == 0.0f) continue;
    const double exact = std::atan2(std::hypot(static_cast<double>(x), static_cast<double>(y)), -static_cast<double>(z));
    EXPECT_NEAR(static_cast<double>(zelbase::detail::AngleOffVertical(x, y, z)), exact, 1e-6);
  }
}

TEST(AngleOffVertical, RoundsTheSquaresBeforeTheirSum) {
  // 1 + 2^-12 squared is 1 + 2^-11 + 2^-24, which rounds to 1 + 2^-11; fused with the other square it would not.
  const float x = 1.0f + std::ldexp(1.0f, -12);
  const float y = std::ldexp(1.0f, -12);
  const float sum = 1.0f + std::ldexp(1.0f, -11);
  EXPECT_EQ(zelbase::detail::AngleOffVertical(x, y, -1.0f), std::atan2(std::sqrt(sum), 1.0f));
}

}  // namespace
