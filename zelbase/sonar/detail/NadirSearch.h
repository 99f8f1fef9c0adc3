// The search for the beam below the sonar, for both forms of a ping. Internal to the library; PingStruct::CompNadirBeam says
// what it finds.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>

namespace zelbase::detail {

// One sounding of the window that the median is taken of.
struct NadirSounding {
  float z = 0.0f;
  int beam = 0;

  // By depth, then by beam. A depth that is no number comes behind all others: the order must be total for a sort.
  bool operator<(const NadirSounding& other) const {
    if (std::isnan(z) || std::isnan(other.z)) {
      if (std::isnan(z) != std::isnan(other.z)) return std::isnan(other.z);
      return beam < other.beam;
    }
    return z != other.z ? z < other.z : beam < other.beam;
  }
};

// Ping is PingStruct or PingStructRW. Beams are looked at below EndOfBeams() alone.
template <class Ping>
class NadirSearch {
 public:
  explicit NadirSearch(Ping& ping) : m_ping(ping), m_end(HasCoordinates() ? ping.EndOfBeams() : 0) {}

  // Fills in nadirBeam and nadirDepth and gives the former.
  int Run() {
    // Kept: a valid beam that is known already is taken as it is, and its depth is not computed.
    if (m_ping.nadirBeam != kNone && m_ping.IsValidBeam(m_ping.nadirBeam)) return m_ping.nadirBeam;
    m_ping.nadirBeam = m_ping.nadirBeam == kNone ? SmallestAngle() : NearestValid(m_ping.nadirBeam);
    if (m_ping.nadirBeam == kNone) {
      m_ping.nadirDepth = 0.0;
      return kNone;
    }
    return TakeMedian(m_ping.nadirBeam);
  }

 private:
  static constexpr int kNone = -1;
  static constexpr int kReach = 5;
  static constexpr float kNoAngle = 999.0f;
  static constexpr double kNoLimit = std::numeric_limits<double>::infinity();

  // Beams up to this squared tangent are ranked by it; beyond (76 degrees) it tells angles too poorly apart.
  static constexpr double kSteepest = 16.0;
  // How far squared tangents lie apart at least when the angles, each rounded as Nadir3D rounds, may not come out the other
  // way round: 5e-5 of a tangent is 8.9e-6 of an angle at kSteepest and more below, where Nadir3D is right to 5e-7.
  static constexpr double kTangentMargin = 1e-4;
  // What lies below is so small that Nadir3D may give 0.
  static constexpr double kTangentFloor = 1e-60;

  bool HasCoordinates() const { return m_ping.beamX != nullptr && m_ping.beamY != nullptr && m_ping.beamZ != nullptr; }

  float Angle(int beam) const { return std::fabs(m_ping.Nadir3D(beam)); }

  // Kept: a beam whose flag word is 0 was never classified and does not take part; elsewhere it does.
  bool IsClassified(int beam) const { return m_ping.IsValidBeam(beam) && m_ping.beamFlags[beam] != 0; }

  // The first of the classified beams with the smallest angle off the vertical.
  int SmallestAngle() const {
    const double limit = TangentLimit();
    float best = kNoAngle;
    int found = kNone;
    for (int beam = 0; beam < m_end; ++beam) {
      if (!IsClassified(beam) || (limit != kNoLimit && !IsWithin(beam, limit))) continue;
      const float angle = Angle(beam);
      if (best > angle) {
        best = angle;
        found = beam;
      }
    }
    return found;
  }

  // The square of the distance from the vertical, as Nadir3D has it below its root.
  float SquaredOffset(int beam) const {
    const float x = m_ping.beamX[beam];
    const float y = m_ping.beamY[beam];
    return x * x + y * y;
  }

  double SquaredDepth(int beam) const {
    const double z = m_ping.beamZ[beam];
    return z * z;
  }

  // A beam with a larger squared tangent than this cannot have the smallest angle, so that the costly arc is taken for a few
  // beams only. kNoLimit when tangents do not tell: none is small, or one is no number, as that of a beam of no length.
  double TangentLimit() const {
    double smallest = kNoLimit;
    for (int beam = 0; beam < m_end; ++beam) {
      if (!IsClassified(beam) || m_ping.beamZ[beam] > 0.0f) continue;
      const double tangent = static_cast<double>(SquaredOffset(beam)) / SquaredDepth(beam);
      if (std::isnan(tangent)) return kNoLimit;
      smallest = std::min(smallest, tangent);
    }
    return smallest > kSteepest ? kNoLimit : smallest * (1.0 + kTangentMargin) + kTangentFloor;
  }

  bool IsWithin(int beam, double limit) const {
    return m_ping.beamZ[beam] < 0.0f && static_cast<double>(SquaredOffset(beam)) <= limit * SquaredDepth(beam);
  }

  // From a beam that is no longer valid, which may lie anywhere, to the better of the nearest ones on either side.
  int NearestValid(int stale) const {
    const int lower = LastValidBelow(std::min(stale, m_end));
    const int upper = FirstValidFrom(std::max(stale, kNone));
    if (lower == kNone || upper == kNone) return std::max(lower, upper);
    return Angle(upper) < Angle(lower) ? upper : lower;
  }

  int LastValidBelow(int end) const {
    for (int beam = std::max(end, 0) - 1; beam >= 0; --beam) {
      if (m_ping.IsValidBeam(beam)) return beam;
    }
    return kNone;
  }

  // `before` is -1 at least, and not the largest number of all unless the walk is over at once.
  int FirstValidFrom(int before) const {
    if (before >= m_end) return kNone;
    for (int beam = before + 1; beam < m_end; ++beam) {
      if (m_ping.IsValidBeam(beam)) return beam;
    }
    return kNone;
  }

  // The median depth around `beam`, and the beam that has it.
  int TakeMedian(int beam) {
    std::array<NadirSounding, 2 * kReach> window;
    const std::size_t count = Collect(beam, window);
    if (count == 0) {
      // Kept: the depth stays as it was.
      return m_ping.nadirBeam = kNone;
    }
    std::sort(window.begin(), window.begin() + static_cast<std::ptrdiff_t>(count));
    const NadirSounding& middle = window[count / 2];
    if (count % 2 != 0) {
      m_ping.nadirDepth = -static_cast<double>(middle.z);
      return m_ping.nadirBeam = middle.beam;
    }
    const NadirSounding& before = window[count / 2 - 1];
    m_ping.nadirDepth = -(static_cast<double>(middle.z) + static_cast<double>(before.z)) * 0.5;
    return m_ping.nadirBeam = std::abs(before.beam - beam) < std::abs(middle.beam - beam) ? before.beam : middle.beam;
  }

  // Kept: five beams below, four above, and never the last beam of the ping.
  std::size_t Collect(int beam, std::array<NadirSounding, 2 * kReach>& window) const {
    const int last = std::min(m_end, m_ping.numBeams - 1);
    std::size_t count = 0;
    for (int i = std::max(beam - kReach, 0); i < last && i - beam < kReach; ++i) {
      if (m_ping.IsValidBeam(i)) window[count++] = {m_ping.beamZ[i], i};
    }
    return count;
  }

  Ping& m_ping;
  const int m_end;
};

// The angle off the vertical, every step in single precision.
inline float AngleOffVertical(float x, float y, float z) {
  const float squareX = x * x;
  const float squareY = y * y;
  return std::atan2(std::sqrt(squareX + squareY), -z);
}

}  // namespace zelbase::detail
