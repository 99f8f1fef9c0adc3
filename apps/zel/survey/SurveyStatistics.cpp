#include "survey/SurveyStatistics.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zel {
namespace {

using Values = std::vector<double>;

// Brings the percentiles to their places, front to back; what lies before a place is not looked at again. Between two neighbours a
// percentile is interpolated.
class Percentiles {
 public:
  explicit Percentiles(Values& values) : m_values(values), m_done(values.begin()) {}

  double At(double part) {
    const double place = part * static_cast<double>(m_values.size() - 1);
    const auto index = static_cast<std::ptrdiff_t>(place);
    const double lower = Settle(m_values.begin() + index);
    if (place == static_cast<double>(index)) return lower;
    return lower + (place - static_cast<double>(index)) * (*std::min_element(m_done, m_values.end()) - lower);
  }

 private:
  double Settle(Values::iterator place) {
    if (place >= m_done) {
      std::nth_element(m_done, place, m_values.end());
      m_done = place + 1;
    }
    return *place;
  }

  Values& m_values;
  Values::iterator m_done;  // what lies before is settled
};

}  // namespace

SurveyStatistics StatisticsOf(std::vector<double>& values) {
  SurveyStatistics statistics;
  if (values.empty()) return statistics;
  statistics.count = static_cast<long long>(values.size());
  const auto count = static_cast<double>(values.size());
  double sum = 0.0, squares = 0.0;
  for (const double value : values) sum += value;
  statistics.mean = sum / count;
  for (const double value : values) squares += (value - statistics.mean) * (value - statistics.mean);
  statistics.deviation = std::sqrt(squares / count);
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  statistics.minimum = *low;
  statistics.maximum = *high;
  Percentiles percentiles(values);
  statistics.p05 = percentiles.At(0.05);
  statistics.p25 = percentiles.At(0.25);
  statistics.p50 = percentiles.At(0.50);
  statistics.p75 = percentiles.At(0.75);
  statistics.p95 = percentiles.At(0.95);
  return statistics;
}

}  // namespace zel
