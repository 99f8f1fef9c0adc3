#include "survey/ChartLegend.h"

#include <algorithm>
#include <cmath>

#include "TextEdge.h"
#include "zelbase/frame/NumberFormat.h"

namespace zel {
namespace {

constexpr std::size_t kMany = 18;  // steps, beyond which only those in use are shown
constexpr double kBestRow = 5.4;
constexpr double kTextRow = 3.1;  // the least distance of two texts
constexpr TextStyle kValue{2.7};
constexpr TextStyle kName{2.6, inks::kFaint};

bool IsUsed(const LegendStep& step, double minimum, double maximum) {
  return (step.isLowest || step.low <= maximum) && (step.isHighest || step.high >= minimum);
}

void KeepUsed(std::vector<LegendStep>& steps, double minimum, double maximum) {
  const auto isUsed = [=](const LegendStep& step) { return IsUsed(step, minimum, maximum); };
  const auto first = std::ranges::find_if(steps, isUsed);
  if (first == steps.end()) return;
  auto last = steps.end() - 1;
  while (last != first && !isUsed(*last)) --last;
  const auto from = first == steps.begin() ? first : first - 1;
  const auto end = last + 1 == steps.end() ? steps.end() : last + 2;
  steps = std::vector<LegendStep>(from, end);
}

// The fewest decimals, up to two, that show all values as they are; `roughDecimals` where two do not.
int DecimalsFor(const std::vector<LegendStep>& steps, const LegendForm& form) {
  constexpr int kMost = 2;
  int decimals = 0;
  for (const LegendStep& step : steps) {
    if (step.isLowest) continue;
    const double value = form.shown(step.low);
    while (decimals <= kMost) {
      const double scaled = value * std::pow(10.0, decimals);
      if (std::abs(scaled - std::round(scaled)) < 1e-6 * std::max(1.0, std::abs(scaled))) break;
      ++decimals;
    }
  }
  return decimals <= kMost ? decimals : form.roughDecimals;
}

void DrawSwatches(const SheetPen& pen, const std::vector<LegendStep>& steps, const LegendForm& form, double row) {
  constexpr double kOverlap = 0.02;  // no seams between neighbours
  for (std::size_t i = 0; i < steps.size(); ++i) {
    pen.Fill(form.x, form.y + row * static_cast<double>(i), form.swatchWidth, row + (i + 1 < steps.size() ? kOverlap : 0.0),
             Ink::Of(steps[i].color));
  }
  pen.Box(form.x, form.y, form.swatchWidth, row * static_cast<double>(steps.size()), 0.2, inks::kText);
}

// The values between the swatches, at the side of a short rule each.
void DrawValues(const SheetPen& pen, const std::vector<LegendStep>& steps, const LegendForm& form, double row) {
  const int decimals = DecimalsFor(steps, form);
  const auto every = static_cast<std::size_t>(std::max(1.0, std::ceil(kTextRow / row)));
  const double left = form.x + form.swatchWidth;
  for (std::size_t i = 1; i < steps.size(); ++i) {
    const double y = form.y + row * static_cast<double>(i);
    if (i % every != 0) continue;
    const double value = form.lowestFirst ? steps[i].low : steps[i - 1].low;
    pen.Rule(left, y, left + 1.2, y, 0.2, inks::kText);
    pen.Text(left + 2.0, y + 0.36 * kValue.size, FormatDouble(form.shown(value) + 0.0, decimals), kValue);
  }
}

void DrawNames(const SheetPen& pen, const std::vector<LegendStep>& steps, const LegendForm& form, double row) {
  if (row < kTextRow) return;
  constexpr double kIndent = 12.0;
  const double left = form.x + form.swatchWidth + kIndent;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const double y = form.y + row * (static_cast<double>(i) + 0.5);
    pen.Text(left, y + 0.36 * kName.size, pen.Fit(steps[i].name, kName, form.width - form.swatchWidth - kIndent), kName);
  }
}

}  // namespace

std::vector<LegendStep> LegendSteps(const ColorTable& table, double minimum, double maximum) {
  std::vector<LegendStep> steps(1);
  steps.front().color = table.LowColor();
  steps.front().isLowest = true;
  steps.front().name = ToTerminal(table.LowColorName(), Encoding::Windows1252);
  for (int i = 0; i < table.NumEntries(); ++i) {
    LegendStep step;
    step.color = table.EntryColor(i);
    step.low = steps.back().high = table.EntryValue(i);
    step.name = ToTerminal(table.EntryName(i), Encoding::Windows1252);
    steps.push_back(step);
  }
  steps.back().isHighest = true;
  if (steps.size() > kMany) KeepUsed(steps, minimum, maximum);
  return steps;
}

double DrawLegend(const SheetPen& pen, std::vector<LegendStep> steps, const LegendForm& form) {
  if (steps.empty()) return 0.0;
  if (!form.lowestFirst) std::ranges::reverse(steps);
  const double row = std::min(kBestRow, form.mostHeight / static_cast<double>(steps.size()));
  DrawSwatches(pen, steps, form, row);
  DrawValues(pen, steps, form, row);
  DrawNames(pen, steps, form, row);
  return row * static_cast<double>(steps.size());
}

}  // namespace zel
