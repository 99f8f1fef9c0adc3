#include "LegendPicture.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <vector>

#include "ColourText.h"
#include "TextEdge.h"

namespace zel {
namespace {

constexpr double kMargin = 24.0;
constexpr double kHead = 56.0;
constexpr double kSwatch = 90.0;
constexpr double kMostHeight = 900.0;   // of all swatches
constexpr double kBestRow = 28.0;
constexpr double kTextRow = 18.0;       // the least distance of two labels
constexpr double kFontSize = 14.0;
constexpr double kPixels = 2.0;         // of a PNG for one unit
constexpr double kBandGap = 14.0;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Pen = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

std::string Number(double value, int digits) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::abs(value) < 5e-10 ? 0.0 : value, std::chars_format::general, digits).ptr;
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
    const Surface scratch(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1), cairo_surface_destroy);
    const Pen pen(cairo_create(scratch.get()), cairo_destroy);
    for (const Step& step : m_steps) m_values = std::max(m_values, TextWidth(pen.get(), step.values));
    for (const Step& step : m_steps) m_names = std::max(m_names, TextWidth(pen.get(), step.name));
    m_width = std::max(BandsLeft() + (m_bands.empty() ? 0.0 : 130.0), TextWidth(pen.get(), title, 1.3) + 2 * kMargin);
  }

  double Width() const { return m_width; }
  double Height() const { return m_height; }

  void Draw(cairo_t* pen) const {
    cairo_set_source_rgb(pen, 1, 1, 1);
    cairo_paint(pen);
    Text(pen, kMargin, 34, m_title, 1.3);
    DrawSwatches(pen);
    for (const Band& band : m_bands) DrawBand(pen, band);
  }

 private:
  static void SetFont(cairo_t* pen, double factor) {
    cairo_select_font_face(pen, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, factor > 1 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(pen, kFontSize * factor);
  }

  static double TextWidth(cairo_t* pen, const std::string& text, double factor = 1.0) {
    SetFont(pen, factor);
    cairo_text_extents_t extents;
    cairo_text_extents(pen, text.c_str(), &extents);
    return extents.x_advance;
  }

  static void Text(cairo_t* pen, double x, double y, const std::string& text, double factor = 1.0) {
    SetFont(pen, factor);
    cairo_set_source_rgb(pen, 0.2, 0.25, 0.3);
    cairo_move_to(pen, x, y);
    cairo_show_text(pen, text.c_str());
  }

  double BandsLeft() const {
    return kMargin + kSwatch + 12 + m_values + (m_names > 0 ? 20 + m_names : 0.0) + kBandGap + kMargin;
  }

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
      Text(pen, kMargin + kSwatch + 12, base, step.values);
      Text(pen, kMargin + kSwatch + 12 + m_values + 20, base, step.name);
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
    Text(pen, left + 16, (top + bottom) / 2 + kFontSize * 0.36, band.name);
  }

  std::string m_title;
  std::vector<Step> m_steps;
  std::vector<Band> m_bands;
  double m_row = 0.0, m_width = 0.0, m_height = 0.0, m_values = 0.0, m_names = 0.0;
};

bool SavePng(const Legend& legend, const std::string& path) {
  const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(legend.Width() * kPixels)),
                                                   static_cast<int>(std::ceil(legend.Height() * kPixels))),
                        cairo_surface_destroy);
  const Pen pen(cairo_create(surface.get()), cairo_destroy);
  cairo_scale(pen.get(), kPixels, kPixels);
  legend.Draw(pen.get());
  return cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

bool SaveSvg(const Legend& legend, const std::string& path) {
  const Surface surface(cairo_svg_surface_create(path.c_str(), legend.Width(), legend.Height()), cairo_surface_destroy);
  const Pen pen(cairo_create(surface.get()), cairo_destroy);
  legend.Draw(pen.get());
  cairo_surface_finish(surface.get());
  return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
}

}  // namespace

bool SaveLegend(const ColorTable& table, const std::string& title, const std::string& path, std::string& reason) {
  const Legend legend(table, title);
  const bool saved = path.ends_with(".png") ? SavePng(legend, path) : SaveSvg(legend, path);
  if (!saved) reason = "cannot write \"" + path + "\"";
  return saved;
}

}  // namespace zel
