// The clock and its discipline once more, plainly written, for tests to hold the library's to the last bit: one class for the fit
// of the last 60 comparisons, one for the clock with everything that a pass of the discipline does to it. Neighbour:
// ClockAccess.h, which shows what the library's own clock holds.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

// What one comparison of the discipline gave.
struct Fitted {
  bool publish = false;
  double a0 = -1.0;
  double a1 = -2.0;
  double p0 = -3.0;
};

// The last 60 samples, oldest first where they were overwritten in turn, and the line through them.
class PlainFit {
 public:
  Fitted Add(double raw, double wall) {
    if (m_samples.size() < 60) {
      m_samples.push_back({raw, wall});
    } else {
      m_samples[m_added % 60] = {raw, wall};
    }
    ++m_added;
    Fitted result;
    if (m_samples.size() < 2) return result;
    const int n = static_cast<int>(m_samples.size());
    double meanX = 0, meanY = 0;
    for (const Sample& sample : m_samples) meanX += sample.raw / n;
    for (const Sample& sample : m_samples) meanY += sample.wall / n;
    double sx = 0, sy = 0, sxy = 0, sxx = 0;
    for (const Sample& sample : m_samples) sx += sample.raw - meanX;
    for (const Sample& sample : m_samples) sy += sample.wall - meanY;
    for (const Sample& sample : m_samples) sxy += (sample.raw - meanX) * (sample.wall - meanY);
    for (const Sample& sample : m_samples) sxx += (sample.raw - meanX) * (sample.raw - meanX);
    const double d = n * sxx - sx * sx;
    if (d == 0.0) return result;
    result.publish = true;
    result.a0 = (sxx * sy - sxy * sx) / d + meanY;
    result.a1 = (n * sxy - sx * sy) / d;
    if (result.a1 > 1.1) {
      result.a1 = 1.1;
    } else if (result.a1 < 0.9) {
      result.a1 = 0.9;
    }
    result.p0 = meanX;
    return result;
  }

  // The least-squares line in more digits, and with the sums of the textbook; its value at p0 and its slope.
  void InManyDigits(long double p0, long double& value, long double& slope) const {
    const long double x0 = m_samples[0].raw, y0 = m_samples[0].wall;
    long double n = 0, x = 0, y = 0, xx = 0, xy = 0;
    for (const Sample& sample : m_samples) {
      const long double dx = sample.raw - x0, dy = sample.wall - y0;
      n += 1, x += dx, y += dy, xx += dx * dx, xy += dx * dy;
    }
    slope = (n * xy - x * y) / (n * xx - x * x);
    value = y0 + (y - slope * x) / n + slope * (p0 - x0);
  }

 private:
  struct Sample {
    double raw, wall;
  };
  std::vector<Sample> m_samples;
  std::size_t m_added = 0;
};

// One process's clock. Counter readings and the wall clock are milliseconds, as everywhere.
class PlainClock {
 public:
  // With the base found or given: raw time at counter zero, and the raw time that was seen last.
  PlainClock(double base, double last, bool isMaster) : m_base(base), m_last(last), m_isMaster(isMaster) {}

  // The time value of a counter reading.
  double Time(double counter) {
    constexpr double kCycle = 4294967296.0;
    double raw = m_base + counter;
    if (counter > 0.0) {
      double cycles = 0.0;
      if (m_last - raw > kCycle / 2) cycles = 1.0;
      if (raw - m_last > kCycle / 2) cycles = -1.0;
      if (cycles != 0.0) {
        raw += cycles * kCycle;
        if (m_isMaster) m_base += cycles * kCycle;
      }
      m_last = raw;
    }
    return std::isnan(m_a0) || m_a0 == 0.0 ? raw : m_a0 + (raw - m_p0) * m_a1;
  }

  // One pass of the discipline at this counter reading and wall clock. False when the two are too far apart, which ends it.
  bool Pass(double counter, double wall) {
    const double time = Time(counter);
    if (std::fabs(time - wall) > 1000.0) return false;
    const bool isModel = !std::isnan(m_a0) && !std::isnan(m_a1) && m_a1 != 0.0;
    const Fitted line = m_fit.Add(isModel ? (time - m_a0) / m_a1 + m_p0 : time, wall);
    if (!line.publish) return true;
    m_a0 = line.a0;
    m_a1 = line.a1;
    m_p0 = line.p0;
    return true;
  }

  double Base() const { return m_base; }
  double Last() const { return m_last; }
  double A0() const { return m_a0; }
  double A1() const { return m_a1; }
  double P0() const { return m_p0; }

 private:
  double m_base;
  double m_last;
  bool m_isMaster;
  double m_a0 = 0.0, m_a1 = 0.0, m_p0 = 0.0;
  PlainFit m_fit;
};
