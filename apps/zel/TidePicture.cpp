#include "TidePicture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "CairoPicture.h"
#include "UtcText.h"
#include "survey/ChartSteps.h"

namespace zel {
namespace {

constexpr double kWidth = 1200.0, kHeight = 480.0;
constexpr double kLeft = 64.0, kRight = 24.0, kTop = 60.0, kBottom = 64.0;
constexpr double kHour = 3600000.0, kDay = 24 * kHour;
constexpr double kMostLabels = 16.0;

// A step of whole hours or days, so that labels do not crowd.
double TimeStep(double range) {
  for (const double hours : {1.0, 2.0, 3.0, 6.0, 12.0}) {
    if (range / (hours * kHour) <= kMostLabels) return hours * kHour;
  }
  for (const double days : {1.0, 2.0, 7.0, 14.0, 28.0, 91.0}) {
    if (range / (days * kDay) <= kMostLabels) return days * kDay;
  }
  return std::ceil(range / kMostLabels / (365 * kDay)) * 365 * kDay;
}

class Curve {
 public:
  Curve(const TideSeries& series, double longestStep, const std::string& title)
      : m_series(series), m_longestStep(longestStep), m_title(title) {
    if (series.rows.empty()) return;
    m_from = series.rows.front().time;
    m_to = std::max(series.rows.back().time, m_from + kHour);
    const auto [low, high] =
        std::minmax_element(series.rows.begin(), series.rows.end(), [](const TideRow& a, const TideRow& b) { return a.height < b.height; });
    m_step = NiceStep(std::max(high->height - low->height, 0.01), 7);
    m_low = std::floor(low->height / m_step) * m_step;
    m_high = std::max(std::ceil(high->height / m_step) * m_step, m_low + m_step);
  }

  void Draw(cairo_t* pen) const {
    DrawText(pen, kLeft, 36, m_title, 1.3);
    DrawHeights(pen);
    DrawTimes(pen);
    DrawGaps(pen);
    DrawCurve(pen);
  }

 private:
  double X(double time) const { return kLeft + (time - m_from) / (m_to - m_from) * (kWidth - kLeft - kRight); }
  double Y(double height) const { return kHeight - kBottom - (height - m_low) / (m_high - m_low) * (kHeight - kTop - kBottom); }

  static void Stroke(cairo_t* pen, double x1, double y1, double x2, double y2) {
    cairo_set_source_rgb(pen, 0.86, 0.89, 0.92);
    cairo_set_line_width(pen, 1);
    cairo_move_to(pen, x1, y1);
    cairo_line_to(pen, x2, y2);
    cairo_stroke(pen);
  }

  void DrawHeights(cairo_t* pen) const {
    const int decimals = DecimalsOf(m_step);
    const int lines = static_cast<int>(std::lround((m_high - m_low) / m_step));
    for (int i = 0; i <= lines; ++i) {
      const double height = m_low + i * m_step;
      char text[40];
      std::snprintf(text, sizeof text, "%.*f m", decimals, std::abs(height) < m_step / 2 ? 0.0 : height);
      Stroke(pen, kLeft, Y(height), kWidth - kRight, Y(height));
      DrawText(pen, kLeft - 8 - TextWidth(text), Y(height) + kFontSize * 0.36, text);
    }
  }

  void DrawTimes(cairo_t* pen) const {
    const double step = TimeStep(m_to - m_from);
    for (double time = std::ceil(m_from / step) * step; time <= m_to; time += step) {
      const std::string moment = UtcText(time);
      const std::string text = step < kDay ? moment.substr(11, 5) : moment.substr(5, 5);
      Stroke(pen, X(time), kTop, X(time), kHeight - kBottom);
      DrawText(pen, X(time) - TextWidth(text) / 2, kHeight - kBottom + 20, text);
    }
    const std::string span = UtcText(m_from).substr(0, 16) + " to " + UtcText(m_to).substr(0, 16) + " UTC";
    DrawText(pen, kWidth - kRight - TextWidth(span), kHeight - 16, span);
  }

  void DrawGaps(cairo_t* pen) const {
    for (const std::size_t i : m_series.Gaps(m_longestStep)) {
      const double from = X(m_series.rows[i - 1].time), to = X(m_series.rows[i].time);
      cairo_rectangle(pen, from, kTop, std::max(to - from, 1.0), kHeight - kTop - kBottom);
      cairo_set_source_rgba(pen, 0.75, 0.22, 0.17, 0.14);
      cairo_fill(pen);
    }
  }

  void DrawCurve(cairo_t* pen) const {
    for (std::size_t i = 0; i < m_series.rows.size(); ++i) {
      const TideRow& row = m_series.rows[i];
      const bool broken = i == 0 || row.time - m_series.rows[i - 1].time > m_longestStep;
      if (broken) cairo_move_to(pen, X(row.time), Y(row.height));
      else cairo_line_to(pen, X(row.time), Y(row.height));
    }
    cairo_set_source_rgb(pen, 0.12, 0.37, 0.6);
    cairo_set_line_width(pen, 1.5);
    cairo_set_line_join(pen, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(pen, CAIRO_LINE_CAP_ROUND);
    cairo_stroke(pen);
  }

  const TideSeries& m_series;
  double m_longestStep;
  std::string m_title;
  double m_from = 0.0, m_to = kDay, m_low = 0.0, m_high = 1.0, m_step = 0.5;
};

}  // namespace

bool SaveTidePicture(const TideSeries& series, double longestStep, const std::string& title, const std::string& path) {
  const Curve curve(series, longestStep, title);
  return SaveCairoPicture(path, kWidth, kHeight, [&curve](cairo_t* pen) { curve.Draw(pen); });
}

}  // namespace zel
