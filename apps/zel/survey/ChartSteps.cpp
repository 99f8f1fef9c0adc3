#include "survey/ChartSteps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "zelbase/frame/NumberFormat.h"

namespace zel {
namespace {

// A quotient this little above a whole step still is that step: ranges are differences of rounded numbers.
constexpr double kSlack = 1.0 + 1e-9;

bool IsPositive(double value) { return value > 0.0 && std::isfinite(value); }

double PowerOfTenBelow(double value) { return std::pow(10.0, std::floor(std::log10(value))); }

// The least of `factors` (rising, below 10) times a power of ten that is not below `value`.
double LeastFrom(std::span<const double> factors, double value) {
  const double power = PowerOfTenBelow(value);
  const auto factor = std::ranges::find_if(factors, [&](double each) { return each * power * kSlack >= value; });
  return factor == factors.end() ? 10.0 * power : *factor * power;
}

constexpr std::array<double, 3> kSteps = {1.0, 2.0, 5.0};
constexpr std::array<double, 11> kScales = {1.0, 1.25, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 7.5, 8.0};
constexpr std::array<double, 7> kSixtieths = {1.0, 2.0, 5.0, 10.0, 15.0, 20.0, 30.0};
constexpr std::array<double, 2> kUnits = {1.0 / 3600.0, 1.0 / 60.0};  // of a degree

double LeastOfSixtieths(double least) {
  return *std::ranges::find_if(kSixtieths, [least](double each) { return each * kSlack >= least || each == kSixtieths.back(); });
}

}  // namespace

double NiceStep(double range, double parts) {
  const double least = range / parts;
  return IsPositive(least) ? LeastFrom(kSteps, least) : 1.0;
}

double NiceLength(double most) {
  if (!IsPositive(most)) return 1.0;
  const double power = PowerOfTenBelow(most);
  for (const double factor : {5.0, 2.0}) {
    if (factor * power <= most * kSlack) return factor * power;
  }
  return power;
}

double NiceScale(double least) {
  constexpr double kLargest = 10.0;  // 1 : 10
  return IsPositive(least) ? std::max(LeastFrom(kScales, least), kLargest) : kLargest;
}

double NiceAngleStep(double range, double parts, CoordinateForm form) {
  const double least = range / parts;
  if (!IsPositive(least)) return 1.0;
  const std::span<const double> units = form == CoordinateForm::Seconds   ? std::span(kUnits)
                                        : form == CoordinateForm::Minutes ? std::span(kUnits).subspan(1)
                                                                          : std::span<const double>();
  if (!units.empty() && least * kSlack < units.front() / 2.0) return NiceStep(range / units.front(), parts) * units.front();
  for (const double unit : units) {
    if (least > kSixtieths.back() * unit * kSlack) continue;
    return LeastOfSixtieths(least / unit) * unit;
  }
  return NiceStep(range, parts);
}

int DecimalsOf(double step) {
  constexpr int kMost = 12;
  if (!IsPositive(step)) return 0;
  return std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, kMost);
}

std::vector<double> Multiples(double from, double to, double step, std::size_t most) {
  if (!IsPositive(step) || !std::isfinite(from) || !std::isfinite(to)) return {};
  const double slack = step * 1e-9;
  const double first = std::ceil((from - slack) / step), last = std::floor((to + slack) / step);
  if (!(last - first < static_cast<double>(most)) || last < first) return {};
  std::vector<double> values;
  const auto count = static_cast<std::size_t>(last - first) + 1;
  for (std::size_t i = 0; i < count; ++i) values.push_back((first + static_cast<double>(i)) * step + 0.0);
  return values;
}

std::string Thousands(double value, int decimals) {
  const std::string text = FormatDouble(value, decimals);
  const std::size_t digits = std::min(text.find('.'), text.size());
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isGroup = i > 0 && i < digits && (digits - i) % 3 == 0 && text[i - 1] != '-';
    if (isGroup) result += "\u2009";
    result += text[i];
  }
  return result;
}

}  // namespace zel
