#include "LegendPicture.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "CairoPicture.h"
#include "ColourText.h"
#include "TextEdge.h"

namespace zel {
namespace {

constexpr double kMargin = 24.0;
constexpr double kHead = 56.0;
constexpr double kSwatch = 90.0;
constexpr double kMostHeight = 900.0;  // of all swatches
constexpr double kBestRow = 28.0;
constexpr double kTextRow = 18.0;  // the least distance of two labels
constexpr double kBandNames = 130.0;
constexpr double kBandGap = 14.0;

std::string Number(double value, int digits) {
  char buffer[40];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, std::abs(value) < 5e-10 ? 0.0 : value, std::chars_format::general, digits).ptr;
  return std::string(buffer, end);
}

// The values of the entries in the fewest digits, 3 or more, that tell each from the next.
std::vector<std::string> ValuesOf(const ColorTable& table) {
  constexpr int kFewest = 3, kMost = 12;
  std::vector<std::string> values;
  for (int digits = kFewest; digits <= kMost; ++digits) {
    values.clear();
    for (int i = 0; i < table.NumEntries(); ++i) values.push_back(Number(table.EntryValue(i), digits));
    if (std::adjacent_find(values.begin(), values.end()) == values.end()) break;
  }
  return values;
}

// A step of the legend: what lies from one entry to the next.
struct Step {
  COLORREF color;
  std::string values;
  std::string name;
};

std::string Shown(const std::string& text) { return ToTerminal(text, Encoding::Windows1252); }

// From the lowest up.
std::vector<Step> StepsOf(const ColorTable& table) {
  const std::vector<std::string> values = ValuesOf(table);
  std::vector<Step> steps;
  steps.push_back({table.LowColor(), values.empty() ? "all values" : "below " + values.front(), Shown(table.LowColorName())});
  for (std::size_t i = 0; i < values.size(); ++i) {
    const int entry = static_cast<int>(i);
    steps.push_back({table.EntryColor(entry), i + 1 < values.size() ? values[i] + " to " + values[i + 1] : values[i] + " and above",
                     Shown(table.EntryName(entry))});
  }
  return steps;
}

// A stretch of steps with a name of its own at the side.
struct Band {
  std::size_t first, end;  // steps, from the lowest up
  const char* name;
};

// The three bands of a dredge table, by the limits in force.
std::vector<Band> BandsOf(const ColorTable& table) {
  if (!table.HasDredgeDiffSection()) return {};
  double under = 0.0, over = 0.0;
  table.GetUnderDredgeLimit(under);
  table.GetOverDredgeLimit(over);
  const auto stepsBelow = [&table](double limit) {
    std::size_t steps = 1;
    for (int i = 0; i < table.NumEntries() && table.EntryValue(i) < limit; ++i) ++steps;
    return steps;
  };
  const std::size_t all = static_cast<std::size_t>(table.NumEntries()) + 1;
  const std::size_t tolerance = stepsBelow(over), above = stepsBelow(under);
  return {{0, tolerance, "over dredged"}, {tolerance, above, "in tolerance"}, {above, all, "under dredged"}};
}

class Legend {
 public:
  Legend(const ColorTable& table, const std::string& title) : m_title(title), m_steps(StepsOf(table)), m_bands(BandsOf(table)) {
    const double count = static_cast<double>(m_steps.size());
    m_row = std::min(kBestRow, kMostHeight / count);
    m_height = kHead + m_row * count + kMargin;
    for (const Step& step : m_steps) m_values = std::max(m_values, TextWidth(step.values));
    for (const Step& step : m_steps) m_names = std::max(m_names, TextWidth(step.name));
    m_width = std::max(BandsLeft() + (m_bands.empty() ? 0.0 : kBandNames), TextWidth(title, 1.3) + 2 * kMargin);
  }

  double Width() const { return m_width; }
  double Height() const { return m_height; }

  void Draw(cairo_t* pen) const {
    DrawText(pen, kMargin, 34, m_title, 1.3);
    DrawSwatches(pen);
    for (const Band& band : m_bands) DrawBand(pen, band);
  }

 private:
  double BandsLeft() const { return kMargin + kSwatch + 12 + m_values + (m_names > 0 ? 20 + m_names : 0.0) + kBandGap + kMargin; }

  // The upper edge of a step; the highest is on top.
  double TopOf(std::size_t index) const { return kHead + m_row * static_cast<double>(m_steps.size() - 1 - index); }

  void DrawSwatches(cairo_t* pen) const {
    const auto every = static_cast<std::size_t>(std::ceil(kTextRow / m_row));
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
      const Step& step = m_steps[i];
      cairo_rectangle(pen, kMargin, TopOf(i), kSwatch, m_row);
      cairo_set_antialias(pen, CAIRO_ANTIALIAS_NONE);  // no seams between swatches
      cairo_set_source_rgb(pen, RedOf(step.color) / 255.0, GreenOf(step.color) / 255.0, BlueOf(step.color) / 255.0);
      cairo_fill(pen);
      cairo_set_antialias(pen, CAIRO_ANTIALIAS_DEFAULT);
      if (i % every != 0) continue;
      const double base = TopOf(i) + m_row / 2 + kFontSize * 0.36;
      DrawText(pen, kMargin + kSwatch + 12, base, step.values);
      DrawText(pen, kMargin + kSwatch + 12 + m_values + 20, base, step.name);
    }
    cairo_rectangle(pen, kMargin, kHead, kSwatch, m_row * static_cast<double>(m_steps.size()));
    cairo_set_source_rgb(pen, 0.5, 0.55, 0.6);
    cairo_set_line_width(pen, 1);
    cairo_stroke(pen);
  }

  void DrawBand(cairo_t* pen, const Band& band) const {
    if (band.first >= band.end) return;
    const double left = BandsLeft() - kMargin, top = TopOf(band.end - 1) + 3, bottom = TopOf(band.first) + m_row - 3;
    cairo_move_to(pen, left, top);
    cairo_rel_line_to(pen, 7, 0);
    cairo_line_to(pen, left + 7, bottom);
    cairo_rel_line_to(pen, -7, 0);
    cairo_set_source_rgb(pen, 0.4, 0.45, 0.5);
    cairo_set_line_width(pen, 1.5);
    cairo_stroke(pen);
    DrawText(pen, left + 16, (top + bottom) / 2 + kFontSize * 0.36, band.name);
  }

  std::string m_title;
  std::vector<Step> m_steps;
  std::vector<Band> m_bands;
  double m_row = 0.0, m_width = 0.0, m_height = 0.0, m_values = 0.0, m_names = 0.0;
};

}  // namespace

bool SaveLegend(const ColorTable& table, const std::string& title, const std::string& path, std::string& reason) {
  const Legend legend(table, title);
  const bool saved = SaveCairoPicture(path, legend.Width(), legend.Height(), [&legend](cairo_t* pen) { legend.Draw(pen); });
  if (!saved) reason = "cannot write \"" + path + "\"";
  return saved;
}

}  // namespace zel
