// The generators of a ColorTable. Each builds its run first, and the run goes into the table in one pass.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zelbase/colour/ColorTable.h"

namespace {

// The colours of the ready schemes.
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kRed = 0x0000FF;
constexpr COLORREF kBlue = 0xFF0000;

// Dredge bands reach this far beyond the limits.
constexpr double kDredgeBand = 2.0;

// Nothing is asked of a run with this step and these ends.
bool IsDegenerate(double min, double max, double step) { return step == 0 || max == min; }

// The n of a run, which then has n - `spare` entries; 0 when it is below 3, not a number or makes too many entries.
int RunLength(double min, double max, double step, int spare) {
  const double n = std::ceil((max - min) / step) + 2;
  return n >= 3 && n - spare <= ColorTable::MOST_RUN_ENTRIES ? static_cast<int>(n) : 0;
}

// The step of the forms with a count.
// Kept: the number of entries comes from this step as it is rounded, so that some counts give one entry more.
double StepOf(double min, double max, int count) { return (max - min) / (std::max(count, 3) - 2); }

// from + k * (to - from) / parts for each channel, truncated.
COLORREF Between(COLORREF from, COLORREF to, int k, int parts) {
  COLORREF color = 0;
  for (unsigned int shift = 0; shift <= 16; shift += 8) {
    const double first = from >> shift & 0xFF;
    const double last = to >> shift & 0xFF;
    color |= (static_cast<COLORREF>(first + k * (last - first) / parts) & 0xFF) << shift;
  }
  return color;
}

struct Hsv {
  double h;
  double s;
  double v;
};

Hsv ToHsv(COLORREF color) {
  Hsv hsv{};
  ColorTable::RGBtoHSV(color, hsv.h, hsv.s, hsv.v);
  return hsv;
}

// From one hue to the other: the short way when they are close, otherwise the long way.
double HueDistance(double from, double to) {
  const double d = to - from;
  const double a = std::fabs(d);
  if (a <= 25 || a >= 335) {
    if (d > 180) return d - 360;
    return d < -180 ? d + 360 : d;
  }
  // Kept: the long way shows more colours. Half the circle stays as it is.
  if (d > 0 && d < 180) return d - 360;
  return d < 0 && d > -180 ? d + 360 : d;
}

double OnCircle(double h) {
  if (h >= 360) h -= 360;
  return h < 0 ? h + 360 : h;
}

// Whether a band makes entries in steps; a count beyond the bound makes none.
bool IsWithinBound(unsigned int numColors) { return numColors <= ColorTable::MOST_RUN_ENTRIES; }

}  // namespace

// --- Runs ----------------------------------------------------------------------------------------------------------

COLORREF ColorTable::NiceColor(double h, double s, double v) {
  NiceRainbowCorrection(h, s, v);
  return HSVtoRGB(h, s, v);
}

ColorTable::Run ColorTable::HsvRun(double min, double max, double step, COLORREF low, COLORREF high) {
  Run run;
  const int m = RunLength(min, max, step, 1) - 1;
  Hsv from = ToHsv(low);
  Hsv to = ToHsv(high);
  if (from.h == -1) from.h = to.h;
  if (to.h == -1) to.h = from.h;
  const double d = HueDistance(from.h, to.h);
  for (int i = 1; i <= m; ++i) {
    const double h = OnCircle(from.h + i * d / m);
    const double s = from.s + i * (to.s - from.s) / m;
    const double v = from.v + i * (to.v - from.v) / m;
    run.push_back({(i - 1) * step + min, NiceColor(h, s, v)});
  }
  return run;
}

ColorTable::Run ColorTable::RgbRun(double min, double max, double step, COLORREF low, COLORREF high) {
  Run run;
  const int m = RunLength(min, max, step, 1) - 1;
  for (int i = 1; i <= m; ++i) run.push_back({(i - 1) * step + min, Between(low, high, i, m)});
  return run;
}

ColorTable::Run ColorTable::Rgb3Run(double min, double max, double step, COLORREF low, COLORREF mid, COLORREF high) {
  Run run;
  const int n = RunLength(min, max, step, 2);
  // Kept: one entry less than the two-colour forms, so that the last value is a step earlier.
  const int a = n / 2 - 1;
  const int b = n - n / 2 - 1;
  for (int i = 1; i <= a; ++i) run.push_back({(i - 1) * step + min, Between(low, mid, i, a)});
  for (int j = 1; j <= b; ++j) run.push_back({(a + j - 1) * step + min, Between(mid, high, j, b)});
  return run;
}

// As InsertEntry of one after the other, in a single pass. Among numbers, a later one of the same value stands in front
// of an earlier one and both in front of what was there. Not a number goes to the very front, and nothing passes it:
// what came earlier stays behind it.
void ColorTable::InsertRun(Run run) {
  const auto isNumber = [](const RunEntry& entry) { return !std::isnan(entry.value); };
  const auto isBelow = [](const RunEntry& a, const RunEntry& b) { return a.value < b.value; };
  std::reverse(run.begin(), run.end());
  auto rest = run.begin();  // what merges with the entries that are there
  for (auto part = run.begin();; part = rest) {
    const auto partEnd = std::find_if_not(part, run.end(), isNumber);
    std::stable_sort(part, partEnd, isBelow);
    if (partEnd == run.end()) break;
    rest = partEnd + 1;
  }

  ColorTable merged;
  const std::size_t most = m_values.size() + run.size();
  merged.m_values.reserve(most);
  merged.m_colors.reserve(most);
  merged.m_locked.reserve(most);
  merged.m_names.reserve(most);  // so that no name is on its way when the memory runs out
  const auto push = [&merged](const RunEntry& entry) { merged.PushEntry(entry.value, entry.color, false, {}); };
  std::for_each(run.begin(), rest, push);
  for (std::size_t i = 0; i < m_values.size(); ++i) {
    for (; rest != run.end() && !(m_values[i] < rest->value); ++rest) push(*rest);
    merged.PushEntry(m_values[i], m_colors[i], m_locked[i], std::move(m_names[i]));
  }
  std::for_each(rest, run.end(), push);
  m_values = std::move(merged.m_values);
  m_colors = std::move(merged.m_colors);
  m_locked = std::move(merged.m_locked);
  m_names = std::move(merged.m_names);
  m_lookup.Forget();
}

// --- Ranges --------------------------------------------------------------------------------------------------------

void ColorTable::ReplaceUnlocked(double min, double max, double step, COLORREF low, COLORREF high, Run run) {
  ClearEntries(false);
  SetLowColor(low);
  if (IsDegenerate(min, max, step)) {
    InsertEntry(min, high, false);
  } else {
    InsertRun(std::move(run));
  }
}

void ColorTable::ReplaceWithin(double min, double max, double step, COLORREF low, Run run) {
  // Kept: nothing at all is done here, whereas SetRange makes an entry.
  if (IsDegenerate(min, max, step)) return;
  // Kept: locked entries go, too.
  std::vector<bool> dropped(m_values.size());
  for (std::size_t i = 0; i < dropped.size(); ++i) dropped[i] = m_values[i] >= min && m_values[i] <= max;
  RemoveEntries(dropped);
  // Kept: as it is, though the entries of a run in HSV are corrected.
  if (m_values.empty() || min <= m_values.front()) SetLowColor(low);
  // Kept: a step of the wrong sign has an empty run, and comes this far all the same.
  InsertRun(std::move(run));
}

void ColorTable::SetRange(double min, double max, double step, COLORREF low, COLORREF high) {
  const Hsv hsv = ToHsv(low);
  // Kept: the low colour is corrected like the entries, so that it is not always `low`.
  ReplaceUnlocked(min, max, step, NiceColor(hsv.h, hsv.s, hsv.v), high, HsvRun(min, max, step, low, high));
}

void ColorTable::SetRange(double min, double max, int count, COLORREF low, COLORREF high) {
  SetRange(min, max, StepOf(min, max, count), low, high);
}

void ColorTable::SetRange(double min, double max, double step, bool a, bool b) {
  if (a) return SetRange(min, max, step, b ? kRed : kBlue, b ? kBlue : kRed);
  return SetRange(min, max, step, b ? kWhite : kBlack, b ? kBlack : kWhite);
}

void ColorTable::SetRange(double min, double max, int count, bool a, bool b) { SetRange(min, max, StepOf(min, max, count), a, b); }

void ColorTable::SetRangeRGB(double min, double max, double step, COLORREF low, COLORREF high) {
  ReplaceUnlocked(min, max, step, low, high, RgbRun(min, max, step, low, high));
}

void ColorTable::SetRangeRGB(double min, double max, int count, COLORREF low, COLORREF high) {
  SetRangeRGB(min, max, StepOf(min, max, count), low, high);
}

void ColorTable::SetRangeRGB3(double min, double max, double step, COLORREF low, COLORREF mid, COLORREF high) {
  ReplaceUnlocked(min, max, step, low, high, Rgb3Run(min, max, step, low, mid, high));
}

void ColorTable::SetRangeRGB3(double min, double max, int count, COLORREF low, COLORREF mid, COLORREF high) {
  SetRangeRGB3(min, max, StepOf(min, max, count), low, mid, high);
}

void ColorTable::AddRange(double min, double max, double step, COLORREF low, COLORREF high, bool rgb) {
  ReplaceWithin(min, max, step, low, rgb ? RgbRun(min, max, step, low, high) : HsvRun(min, max, step, low, high));
}

void ColorTable::AddRange(double min, double max, int count, COLORREF low, COLORREF high, bool rgb) {
  AddRange(min, max, StepOf(min, max, count), low, high, rgb);
}

void ColorTable::AddRange3(double min, double max, double step, COLORREF low, COLORREF mid, COLORREF high) {
  ReplaceWithin(min, max, step, low, Rgb3Run(min, max, step, low, mid, high));
}

void ColorTable::AddRange3(double min, double max, int count, COLORREF low, COLORREF mid, COLORREF high) {
  AddRange3(min, max, StepOf(min, max, count), low, mid, high);
}

void ColorTable::SetLogRange(double maximum, int count, bool rainbow) {
  Clear();
  const double logarithm = std::log10(maximum);
  const double step = logarithm / (static_cast<double>(count) - 2);
  SetRange(0.0, logarithm, step, rainbow ? kBlue : kBlack, rainbow ? kRed : kWhite);
  for (double& value : m_values) value = std::pow(10.0, value);
  m_lookup.Forget();
}

// --- Colours for files ---------------------------------------------------------------------------------------------

void ColorTable::MakeFileColors(int count, COLORREF first, COLORREF last) {
  Clear();
  if (count < 2) {
    SetLowColor(first);  // Kept: uncorrected, whereas further files take it corrected
    return;
  }
  const int numDifferent = std::clamp(count, 3, 12);
  SetRange(2.0, static_cast<double>(numDifferent), 1.0, first, last);
  AppendFileColors(std::min(count - 1, MOST_RUN_ENTRIES));
  // Kept: two files have the first of three files' two entries, not the colour `last`.
  if (count == 2) RemoveEntry(1);
}

// File 13 takes the low colour, and each further one the colour of the entry 11 places before.
void ColorTable::AppendFileColors(int numEntries) {
  constexpr int kPeriod = 11;
  while (NumEntries() < numEntries) {
    const int i = NumEntries();
    // Kept: the first time round it is the low colour's turn, so that the colour of file 2 never comes again.
    const COLORREF color = i == kPeriod ? m_lowColor : m_colors[Place(i - kPeriod)];
    AddEntry(m_values.back() + 1, color, false, {});
  }
}

// --- Dredge differences --------------------------------------------------------------------------------------------

void ColorTable::GenerateDredgeDiffColorTable() {
  PutLimitsInOrder();
  ClearEntries(true);
  SetLowColor(m_underDredge.minColor);
  Run run;
  AppendUnderDredgeBand(run);
  if (m_underDredgeLimit != m_overDredgeLimit) AppendToleranceBand(run);
  AppendOverDredgeBand(run);
  InsertRun(std::move(run));
}

// Kept: the fields themselves are put right.
void ColorTable::PutLimitsInOrder() {
  if (m_overDredgeLimit > 0) m_overDredgeLimit = -m_overDredgeLimit;
  if (m_overDredgeLimit > m_underDredgeLimit) std::swap(m_overDredgeLimit, m_underDredgeLimit);
}

COLORREF ColorTable::DredgeBand::Color(int k) const { return Between(minColor, maxColor, k, static_cast<int>(numColors) - 1); }

void ColorTable::AppendUnderDredgeBand(Run& run) const {
  if (m_underDredge.numColors < 2) {
    run.push_back({m_underDredgeLimit, m_underDredge.minColor});
    return;
  }
  if (!IsWithinBound(m_underDredge.numColors)) return;
  const int number = static_cast<int>(m_underDredge.numColors);
  const double step = kDredgeBand / (number - 1);
  for (int k = 0; k < number; ++k) run.push_back({m_underDredgeLimit + k * step, m_underDredge.Color(k)});
}

void ColorTable::AppendToleranceBand(Run& run) const {
  if (m_inTolerance.numColors < 3) {
    // Kept: two colours part at 0.0, whatever the limits are.
    const bool isTwo = m_inTolerance.numColors == 2;
    if (isTwo) run.push_back({0.0, m_inTolerance.maxColor});
    run.push_back({m_overDredgeLimit, isTwo ? m_inTolerance.minColor : m_inTolerance.maxColor});
    return;
  }
  if (!IsWithinBound(m_inTolerance.numColors)) return;
  const int number = static_cast<int>(m_inTolerance.numColors);
  const double step = (m_underDredgeLimit - m_overDredgeLimit) / number;
  for (int k = 0; k < number; ++k) run.push_back({m_overDredgeLimit + k * step, m_inTolerance.Color(k)});
}

void ColorTable::AppendOverDredgeBand(Run& run) {
  if (m_overDredge.numColors < 2) {
    SetLowColor(m_overDredge.maxColor);
    return;
  }
  SetLowColor(m_overDredge.minColor);
  if (!IsWithinBound(m_overDredge.numColors)) return;
  const int number = static_cast<int>(m_overDredge.numColors);
  const double step = kDredgeBand / (number - 1);
  // Kept: from 1, since colour 0 is the low colour; the band on the other side begins with 0.
  for (int k = 1; k < number; ++k) {
    run.push_back({m_overDredgeLimit - kDredgeBand + (k - 1) * step, m_overDredge.Color(k)});
  }
}
