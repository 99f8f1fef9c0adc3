// A second colour table, slow and plain: one row after the other, every search by its words, every entry inserted by itself.
// The tests hold the library's table against it, with the comparisons of ColorTableTestHelp.h; the fuzzer does, too.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/colour/ColorTable.h"

// What a derived class reaches.
class OpenColorTable : public ColorTable {
 public:
  using ColorTable::FindColor;
  using ColorTable::FindName;
  using ColorTable::Hue_2_RGB;
  using ColorTable::NiceRainbowCorrection;
};

// --- Colours -------------------------------------------------------------------------------------------------------

inline unsigned int Rgb(int red, int green, int blue) { return static_cast<unsigned int>(red + 256 * green + 65536 * blue); }

inline int RedOf(unsigned int color) { return static_cast<int>(color % 256); }
inline int GreenOf(unsigned int color) { return static_cast<int>(color / 256 % 256); }
inline int BlueOf(unsigned int color) { return static_cast<int>(color / 65536 % 256); }

// A channel from 0 to 1 as a byte.
inline int SecondByte(double channel) {
  if (std::isnan(channel) || channel < 0) return 0;
  return channel > 1 ? 255 : static_cast<int>(std::trunc(channel * 255));
}

inline unsigned int SecondHsvToRgb(double h, double s, double v) {
  if (s > 1) s = 1;
  if (v > 1) v = 1;
  if (h == -1) return Rgb(SecondByte(v), SecondByte(v), SecondByte(v));
  if (!(h >= 0 && std::floor(h / 60) <= 5)) return 0;
  const int i = static_cast<int>(std::floor(h / 60));
  const double f = h / 60 - i;
  const double p = (1 - s) * v;
  const double q = (1 - f * s) * v;
  const double t = (1 - (1 - f) * s) * v;
  const double red[] = {v, q, p, p, t, v};
  const double green[] = {t, v, v, q, p, p};
  const double blue[] = {p, p, t, v, v, q};
  return Rgb(SecondByte(red[i]), SecondByte(green[i]), SecondByte(blue[i]));
}

inline void SecondRgbToHsv(unsigned int color, double& h, double& s, double& v) {
  const double r = RedOf(color) / 255.0;
  const double g = GreenOf(color) / 255.0;
  const double b = BlueOf(color) / 255.0;
  const double largest = r > g ? (r > b ? r : b) : (g > b ? g : b);
  const double smallest = r < g ? (r < b ? r : b) : (g < b ? g : b);
  v = largest;
  if (largest == smallest) {
    s = 0;
    h = -1;
    return;
  }
  s = (largest - smallest) / largest;
  const double delta = largest - smallest;
  h = r == largest ? (g - b) / delta : g == largest ? (b - r) / delta + 2 : (r - g) / delta + 4;
  h = h * 60;
  if (h < 0) h = h + 360;
}

inline double SecondCorrectedHue(double h) {
  if (h < 0) return h;
  if (h < 240) {
    const double x = h / 240 * 200;
    const auto i = static_cast<std::size_t>(x);
    const double below = ColorTable::m_hueLookup[i];
    const double above = ColorTable::m_hueLookup[i + 1];
    return ((x - static_cast<double>(i)) * (above - below) + below) * 360;
  }
  return ((h - 240) * 0.33299999999999996 / 120.0 + 0.667) * 360;
}

// A channel on its way, truncated.
inline int SecondBetween(int from, int to, int k, int parts) { return static_cast<int>(from + k * static_cast<double>(to - from) / parts); }

inline unsigned int SecondBetween(unsigned int from, unsigned int to, int k, int parts) {
  return Rgb(SecondBetween(RedOf(from), RedOf(to), k, parts), SecondBetween(GreenOf(from), GreenOf(to), k, parts),
             SecondBetween(BlueOf(from), BlueOf(to), k, parts));
}

// --- The table -----------------------------------------------------------------------------------------------------

class SecondColorTable {
 public:
  struct Row {
    double value;
    unsigned int color;
    bool locked;
    std::string name;
  };

  struct Band {
    unsigned int min;
    unsigned int max;
    unsigned int number;
  };

  std::vector<Row> rows;
  unsigned int low = 0;
  std::string lowName;
  Band under{0xC0C0C0, 0x808080, 5};
  Band tolerance{0x00FFFF, 0x00FF00, 5};
  Band over{0x0000C8, 0x0000FF, 5};
  double underLimit = 0.5;
  double overLimit = -0.5;

  SecondColorTable() = default;

  // What `table` shows of itself.
  explicit SecondColorTable(const ColorTable& table) : low(table.LowColor()), lowName(table.LowColorName()) {
    for (int i = 0; i < table.NumEntries(); ++i) {
      rows.push_back({table.EntryValue(i), table.EntryColor(i), table.EntryLocked(i), table.EntryName(i)});
    }
    table.GetUnderDredgeColorRange(under.min, under.max, under.number);
    table.GetInTolColorRange(tolerance.min, tolerance.max, tolerance.number);
    table.GetOverDredgeColorRange(over.min, over.max, over.number);
    table.GetUnderDredgeLimit(underLimit);
    table.GetOverDredgeLimit(overLimit);
  }

  // --- Entries

  void Insert(double value, unsigned int color, bool locked = false) {
    auto at = rows.begin();
    while (at != rows.end() && at->value < value) ++at;
    rows.insert(at, Row{value, color, locked, ""});
  }

  void Clear(bool all) {
    low = 0;
    for (int i = Count() - 1; i >= 0; --i) {
      if (all || !At(i).locked) rows.erase(rows.begin() + i);
    }
  }

  // --- Look-up

  unsigned int FindColor(double value, int from, int to) const {
    for (int step = 0; to >= 0 && step < 4 * Count() + 100; ++step) {
      if (At(to).value <= value) return At(to).color;
      const int mid = from + (to - from) / 2;
      if (At(mid).value >= value) {
        to = mid - 1;
      } else {
        from = mid;
        to = to - 1;
      }
    }
    return low;
  }

  std::string FindName(double value, int from, int to, int depth = 0) const {
    if (to < 0 || depth > 4 * Count() + 100) return lowName;
    if (value >= At(to).value) return At(to).name;
    const int mid = from + (to - from) / 2;
    return value < At(mid).value ? FindName(value, from, mid - 1, depth + 1) : FindName(value, mid, to - 1, depth + 1);
  }

  unsigned int Color(double value) const {
    const int n = Count();
    if (n == 0 || value < rows.front().value) return low;
    if (n == 1) return rows.back().color;
    const double span = rows.back().value - rows.front().value;
    const double g = span == 0 ? 0 : (value - rows.front().value) * (n - 1) / span;
    if (std::isnan(g) || g < 0) return low;
    if (g >= n - 1) return rows.back().color;
    const int i = static_cast<int>(g);
    if (value >= At(i + 1).value) return FindColor(value, i + 1, n - 1);
    return FindColor(value, 0, i);
  }

  std::string Name(double value) const {
    const int n = Count();
    if (n == 0 || value < rows.front().value) return lowName;
    if (n == 1) return rows.back().name;
    const double g = (value - rows.front().value) * (n - 1) / (rows.back().value - rows.front().value);
    if (std::isnan(g) || g < 0) return lowName;
    if (g >= n - 1) return rows.back().name;
    const int i = static_cast<int>(g);
    if (value >= At(i + 1).value) return FindName(value, i + 1, n - 1);
    return FindName(value, 0, i);
  }

  // --- Generation

  void SetRange(double min, double max, double step, unsigned int from, unsigned int to) {
    Clear(false);
    double h = 0;
    double s = 0;
    double v = 0;
    SecondRgbToHsv(from, h, s, v);
    low = SecondHsvToRgb(SecondCorrectedHue(h), s, v);
    if (step == 0 || max == min) return Insert(min, to);
    InsertHsv(min, step, Length(min, max, step), from, to);
  }

  void SetRangeRgb(double min, double max, double step, unsigned int from, unsigned int to) {
    Clear(false);
    low = from;
    if (step == 0 || max == min) return Insert(min, to);
    InsertRgb(min, step, Length(min, max, step), from, to);
  }

  void SetRangeRgb3(double min, double max, double step, unsigned int from, unsigned int mid, unsigned int to) {
    Clear(false);
    low = from;
    if (step == 0 || max == min) return Insert(min, to);
    InsertRgb3(min, step, Length(min, max, step), from, mid, to);
  }

  void AddRange(double min, double max, double step, unsigned int from, unsigned int to, bool rgb) {
    if (!Open(min, max, step, from)) return;
    if (rgb) {
      InsertRgb(min, step, Length(min, max, step), from, to);
    } else {
      InsertHsv(min, step, Length(min, max, step), from, to);
    }
  }

  void AddRange3(double min, double max, double step, unsigned int from, unsigned int mid, unsigned int to) {
    if (Open(min, max, step, from)) InsertRgb3(min, step, Length(min, max, step), from, mid, to);
  }

  void SetLogRange(double maximum, int count, bool rainbow) {
    Clear(true);
    lowName = "";
    const double top = std::log10(maximum);
    const double step = top / (count - 2.0);
    if (rainbow) {
      SetRange(0.0, top, step, 0xFF0000, 0x0000FF);
    } else {
      SetRange(0.0, top, step, 0x000000, 0xFFFFFF);
    }
    for (Row& row : rows) row.value = std::pow(10.0, row.value);
  }

  void MakeFileColors(int count, unsigned int first, unsigned int last) {
    Clear(true);
    lowName = "";
    if (count < 2) {
      low = first;
      return;
    }
    const int k = count < 3 ? 3 : count > 12 ? 12 : count;
    SetRange(2.0, k, 1.0, first, last);
    if (k < count) {
      rows.push_back({rows.back().value + 1, low, false, ""});
      while (Count() < count - 1) {
        const double value = rows.back().value + 1;
        unsigned int color = 0;
        for (const Row& row : rows) {
          if (row.value == value - 11) color = row.color;
        }
        rows.push_back({value, color, false, ""});
      }
    }
    while (Count() > count - 1) rows.pop_back();
  }

  void GenerateDredgeDiff() {
    if (overLimit > 0) overLimit = -overLimit;
    if (overLimit > underLimit) std::swap(overLimit, underLimit);
    Clear(true);
    low = under.min;
    if (under.number >= 2) {
      const int n = static_cast<int>(under.number);
      for (int k = 0; k < n; ++k) Insert(underLimit + k * (2.0 / (n - 1)), SecondBetween(under.min, under.max, k, n - 1));
    } else {
      Insert(underLimit, under.min);
    }
    if (underLimit != overLimit) InsertTolerance();
    if (over.number < 2) {
      low = over.max;
      return;
    }
    low = over.min;
    const int n = static_cast<int>(over.number);
    for (int k = 1; k < n; ++k) {
      Insert(overLimit - 2.0 + (k - 1) * (2.0 / (n - 1)), SecondBetween(over.min, over.max, k, n - 1));
    }
  }

 private:
  int Count() const { return static_cast<int>(rows.size()); }
  const Row& At(int i) const { return rows.at(static_cast<std::size_t>(i)); }

  static double Length(double min, double max, double step) { return std::ceil((max - min) / step) + 2; }

  // A run of these many entries is made.
  static bool IsMade(double n, double numEntries) { return n >= 3 && numEntries <= 65536; }

  bool Open(double min, double max, double step, unsigned int from) {
    if (step == 0 || max == min) return false;
    for (int i = Count() - 1; i >= 0; --i) {
      if (min <= At(i).value && At(i).value <= max) rows.erase(rows.begin() + i);
    }
    if (rows.empty() || min <= rows.front().value) low = from;
    return true;
  }

  void InsertHsv(double min, double step, double length, unsigned int from, unsigned int to) {
    if (!IsMade(length, length - 1)) return;
    const int m = static_cast<int>(length) - 1;
    double h1 = 0, s1 = 0, v1 = 0, h2 = 0, s2 = 0, v2 = 0;
    SecondRgbToHsv(from, h1, s1, v1);
    SecondRgbToHsv(to, h2, s2, v2);
    if (h1 == -1) h1 = h2;
    if (h2 == -1) h2 = h1;
    double d = h2 - h1;
    const bool isShort = std::abs(d) <= 25 || std::abs(d) >= 335;
    if (isShort && d > 180) {
      d -= 360;
    } else if (isShort && d < -180) {
      d += 360;
    } else if (!isShort && d > 0 && d < 180) {
      d -= 360;
    } else if (!isShort && d > -180 && d < 0) {
      d += 360;
    }
    for (int i = 1; i <= m; ++i) {
      double h = h1 + i * d / m;
      if (h >= 360) h -= 360;
      if (h < 0) h += 360;
      Insert((i - 1) * step + min, SecondHsvToRgb(SecondCorrectedHue(h), s1 + i * (s2 - s1) / m, v1 + i * (v2 - v1) / m));
    }
  }

  void InsertRgb(double min, double step, double length, unsigned int from, unsigned int to) {
    if (!IsMade(length, length - 1)) return;
    const int m = static_cast<int>(length) - 1;
    for (int i = 1; i <= m; ++i) Insert((i - 1) * step + min, SecondBetween(from, to, i, m));
  }

  void InsertRgb3(double min, double step, double length, unsigned int from, unsigned int mid, unsigned int to) {
    if (!IsMade(length, length - 2)) return;
    const int n = static_cast<int>(length);
    const int h = n / 2;
    for (int i = 1; i <= h - 1; ++i) Insert((i - 1) * step + min, SecondBetween(from, mid, i, h - 1));
    for (int j = 1; j <= n - h - 1; ++j) Insert((h - 1 + j - 1) * step + min, SecondBetween(mid, to, j, n - h - 1));
  }

  void InsertTolerance() {
    const int n = static_cast<int>(tolerance.number);
    if (n >= 3) {
      const double s = (underLimit - overLimit) / n;
      for (int k = 0; k < n; ++k) Insert(overLimit + k * s, SecondBetween(tolerance.min, tolerance.max, k, n - 1));
    } else if (n == 2) {
      Insert(0.0, tolerance.max);
      Insert(overLimit, tolerance.min);
    } else {
      Insert(overLimit, tolerance.max);
    }
  }
};

// --- Comparison ----------------------------------------------------------------------------------------------------

// The same double to the last bit, the sign of a zero too; any two that are not numbers are the same.
inline bool SameDouble(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

// Values that lie on entries, next to them, between them, outside, and such that are no place at all.
inline std::vector<double> ProbesOf(const ColorTable& table) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  std::vector<double> probes = {-infinity, -1e308, -1, -0.0, 0.0, 1e-310, 1, 1e308, infinity, std::numeric_limits<double>::quiet_NaN()};
  for (int i = 0; i < table.NumEntries(); ++i) {
    const double value = table.EntryValue(i);
    probes.push_back(value);
    probes.push_back(std::nextafter(value, -infinity));
    probes.push_back(std::nextafter(value, infinity));
    probes.push_back(value / 2 + table.EntryValue(i + 1) / 2);
  }
  return probes;
}

// Looks up so often that the table makes its index, if it can.
inline void LookUpOften(const ColorTable& table) {
  const std::vector<double> values(static_cast<std::size_t>(table.NumEntries()) + 2000);
  std::vector<unsigned int> colors(values.size());
  table.GetColors(values, colors);
}
