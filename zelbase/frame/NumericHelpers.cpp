#include "zelbase/frame/NumericHelpers.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr double kEpsilon = 2.220446049250313e-16;
constexpr double kSecondsPerDay = 86400.0;
constexpr int kMostDecimals = 16;

// 10 to the power of `exponent` by repeated squaring.
double PowerOfTen(unsigned int exponent) {
  double power = 1.0;
  for (double square = 10.0; exponent != 0; exponent >>= 1, square *= square) {
    if ((exponent & 1) != 0) power *= square;
  }
  return power;
}

// Towards zero; 0 for what does not fit.
int Truncated(double value) {
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  if (!(value > kLowest - 1 && value < kHighest + 1)) return 0;
  return static_cast<int>(value);
}

}  // namespace

double Double125(double x) {
  if (x == 0) return 1.0;
  const double p = std::pow(10.0, std::floor(std::log10(std::fabs(x))));
  // Kept: a division, not a comparison with multiples of p; grids drawn with its rounding stay as they are.
  const double m = std::fabs(x / p);
  if (m > 7) return 10 * p;
  if (m > 3) return 5 * p;
  if (m > 1.5) return 2 * p;
  return p;
}

double TimeInterval(double x) {
  struct Row {
    double below;
    double step;
  };
  static constexpr Row kRows[] = {{45, 30},       {90, 60},       {180, 120},     {450, 300},     {1200, 600},
                                  {2700, 1800},   {5400, 3600},   {10800, 7200},  {18000, 14400}, {25200, 21600},
                                  {32400, 28800}, {64800, 43200}, {129600, 86400}};
  if (x <= 15) return Double125(x);
  for (const Row& row : kRows) {
    if (x < row.below) return row.step;
  }
  return Double125(x / kSecondsPerDay) * kSecondsPerDay;
}

int MinuteInterval(int m) {
  if (m == 0 || m >= 60) return 0;
  if (m < 6) return 5;  // Kept: a negative m too; callers step forward by it.
  return std::min((m + 4) / 5 * 5, 55);
}

long RoundDouble(double x) {
  constexpr long kLowest = std::numeric_limits<int>::min();
  constexpr long kHighest = std::numeric_limits<int>::max();
  // Kept: the sum may itself round up; stored values were made with it.
  const double whole = std::floor(x + 0.5);
  if (whole > static_cast<double>(kHighest)) return kHighest;
  if (!(whole >= static_cast<double>(kLowest))) return kLowest;
  return static_cast<long>(whole);
}

ZELBASE_WRAPS double Round(double x, int digits) {
  // The magnitude of the lowest int is no int.
  const auto bits = static_cast<unsigned int>(digits);
  const double power = PowerOfTen(digits < 0 ? 0 - bits : bits);
  const double scale = digits < 0 ? 1.0 / power : power;
  const double y = x * scale;
  // Kept: the scaled value decides, not the decimal text of x; coordinates in files were rounded so.
  return std::trunc(y >= 0 ? y + 0.5 : y - 0.5) / scale;
}

double Epsilon(double x) { return std::fabs(x * kEpsilon); }

int GetDoublePrecision(double x) {
  double v = std::fabs(x);
  for (int i = 0; i < kMostDecimals; ++i) {
    const double e = std::fabs((v * 100) * kEpsilon);
    const double r = v - std::trunc(v);  // exactly fmod(v, 1), at a fraction of its time
    // Written so that NaN ends the search.
    if (!(e < r) || !(r < 1 - e)) return i;
    v *= 10;
  }
  return kMostDecimals;
}

int GetSensiblePrecision(double value, double span, double percent) {
  double t = std::fabs(percent / 100 * span);
  if (t >= 1) return 0;
  int zeros = 0;
  for (; !(t >= 1) && zeros < kMostDecimals; ++zeros) t *= 10;
  return std::min(GetDoublePrecision(value), zeros);
}

double DmsToDeg(int d, int m, double s) {
  const double degrees = std::fabs(static_cast<double>(d)) + (s / 60 + m) / 60;
  return d < 0 ? -degrees : degrees;
}

void DegToDm(double x, int& d, double& m) {
  d = Truncated(x);
  m = std::fabs(x - d) * 60;  // Kept: always positive; the sign is in d alone, and lost when d is 0.
}

void DegToDms(double x, int& d, int& m, double& s) {
  double minutes = 0;
  DegToDm(x, d, minutes);
  m = Truncated(minutes);
  s = (minutes - m) * 60;
}
