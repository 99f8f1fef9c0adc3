// Values as text against the C library doing the same work: numbers by format, coordinates in the three
// styles and back, on a million random values each. The bytes of both sides are compared first.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/frame/GeographicText.h"
#include "zelbase/frame/NumberFormat.h"

namespace {

constexpr double kBar = 1.0;
constexpr std::size_t kBarCount = 1000000;

std::vector<double> RandomValues(std::size_t count, double reach) {
  std::mt19937_64 random(1);
  std::vector<double> values(count);
  for (double& value : values) value = static_cast<double>(static_cast<std::int64_t>(random())) * 0x1p-63 * reach;
  return values;
}

template <class... Values>
std::string Printed(const char* format, Values... values) {
  char buffer[512];
  return std::string(buffer, static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, format, values...)));
}

// Powers and letters as cheap as ours: what is compared is the printing.
void PrintedGeogs(double value, unsigned int style, int decimals, std::string& text) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
  const double magnitude = std::fabs(value);
  const char letter = value < 0 ? 'W' : 'E';
  const int point = decimals > 0 ? 1 : 0;
  char buffer[128];
  int length = 0;
  if (style == 1) {
    length = std::snprintf(buffer, sizeof buffer, "%0*.*f\xB0%c", 3 + point + decimals, decimals, magnitude, letter);
  } else {
    const double q = kPowers[decimals] * (style == 3 ? 60 : 3600);
    const double t = (std::floor(magnitude * q + 0.5) + 0.01) / q;
    const int d = static_cast<int>(t);
    const double rest = std::fabs(t - d) * 60;
    const int m = static_cast<int>(rest);
    length = style == 3 ? std::snprintf(buffer, sizeof buffer, "%03d\xB0%0*.*f'%c", d, 2 + point + decimals, decimals, rest, letter)
                        : std::snprintf(buffer, sizeof buffer, "%03d\xB0%2.2d'%0*.*f\"%c", d, m, 2 + point + decimals, decimals,
                                        (rest - m) * 60, letter);
  }
  text.assign(buffer, static_cast<std::size_t>(length));
}

bool ScannedGeo(std::string text, double& value) {
  value = 0;
  char hemisphere = 'x';
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    switch (c) {
      case 'e':
      case 'E':
      case 'n':
      case 'N':
      case 's':
      case 'S':
      case 'w':
      case 'W':
        hemisphere = c;
        text.resize(i);
        break;
      default:
        if (c != '.' && (c < '0' || c > '9')) text[i] = ' ';
    }
  }
  double degrees = 0;
  double minutes = 0;
  double seconds = 0;
  if (std::sscanf(text.c_str(), "%lf %lf %lf", &degrees, &minutes, &seconds) < 1) return false;
  value = minutes / 60 + degrees + seconds / 3600;
  if (hemisphere == 's' || hemisphere == 'S' || hemisphere == 'w' || hemisphere == 'W') value = -value;
  return true;
}

bool g_allEqual = true;
bool g_allMet = true;

// One row: `ours` and `peer` make a text of each value.
template <class Ours, class Peer>
void CompareTexts(Comparison& table, const std::string& what, const std::vector<double>& values, Ours ours, Peer peer) {
  std::string a;
  std::string b;
  for (const double value : values) {
    ours(value, a);
    peer(value, b);
    g_allEqual = g_allEqual && a == b;
  }
  table.Row(
      what, static_cast<double>(values.size()), "1", Comparison::BarAt(values.size() == kBarCount, kBar),
      [&] {
        for (const double value : values) {
          ours(value, a);
          Keep(a);
        }
      },
      [&] {
        for (const double value : values) {
          peer(value, b);
          Keep(b);
        }
      });
}

void CompareReading(Comparison& table, const std::string& what, const std::vector<double>& values, unsigned int style, int decimals) {
  std::vector<std::string> texts(values.size());
  double a = 0;
  double b = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    FormatGeogs(values[i], style, decimals, 11, texts[i], true, true);
    g_allEqual = g_allEqual && StringToGeo(texts[i], a) == ScannedGeo(texts[i], b) && a == b;
  }
  table.Row(
      what, static_cast<double>(values.size()), "1", Comparison::BarAt(values.size() == kBarCount, kBar),
      [&] {
        for (const std::string& text : texts) {
          StringToGeo(text, a);
          Keep(a);
        }
      },
      [&] {
        for (const std::string& text : texts) {
          ScannedGeo(text, b);
          Keep(b);
        }
      });
}

void CompareAll(std::size_t count) {
  const std::vector<double> metres = RandomValues(count, 700'000);
  const std::vector<double> large = RandomValues(count, 1e18);
  const std::vector<double> degrees = RandomValues(count, 180);
  const std::string format = "%+012.3f m";

  const std::string title = "values as text, " + Grouped(count) + " random values (peers: snprintf, sscanf)";
  Comparison table(title.c_str(), 3);
  CompareTexts(
      table, "FormatDouble(v)", metres, [](double v, std::string& t) { t = FormatDouble(v); },
      [](double v, std::string& t) { t = Printed("%f", v); });
  CompareTexts(
      table, "FormatDouble(v, 2)", metres, [](double v, std::string& t) { t = FormatDouble(v, 2); },
      [](double v, std::string& t) { t = Printed("%.*f", 2, v); });
  CompareTexts(
      table, "FormatDouble(v, 14, 3)", metres, [](double v, std::string& t) { t = FormatDouble(v, 14, 3); },
      [](double v, std::string& t) { t = Printed("%*.*f", 14, 3, v); });
  CompareTexts(
      table, "FormatDouble(v, 2), up to 1e18", large, [](double v, std::string& t) { t = FormatDouble(v, 2); },
      [](double v, std::string& t) { t = Printed("%.*f", 2, v); });
  CompareTexts(
      table, "FormatDouble(v, \"%+012.3f m\")", metres, [&](double v, std::string& t) { t = FormatDouble(v, format); },
      [&](double v, std::string& t) { t = Printed(format.c_str(), v); });
  CompareTexts(
      table, "FormatDouble(v, \"%e\")", metres, [](double v, std::string& t) { t = FormatDouble(v, "%e"); },
      [](double v, std::string& t) { t = Printed("%e", v); });
  CompareTexts(
      table, "FormatDouble(v, \"%g\")", metres, [](double v, std::string& t) { t = FormatDouble(v, "%g"); },
      [](double v, std::string& t) { t = Printed("%g", v); });
  CompareTexts(
      table, "FormatInt(v, 8)", metres, [](double v, std::string& t) { t = FormatInt(static_cast<int>(v), 8); },
      [](double v, std::string& t) { t = Printed("%*d", 8, static_cast<int>(v)); });

  const struct {
    unsigned int style;
    int decimals;
    const char* print;
    const char* read;
  } styles[] = {{1, 7, "FormatGeogs, degrees, 7 decimals", "StringToGeo, degrees"},
                {3, 4, "FormatGeogs, minutes, 4 decimals", "StringToGeo, degrees and minutes"},
                {7, 2, "FormatGeogs, seconds, 2 decimals", "StringToGeo, degrees, minutes, seconds"}};
  for (const auto& row : styles) {
    CompareTexts(
        table, row.print, degrees, [&](double v, std::string& t) { FormatGeogs(v, row.style, row.decimals, 11, t, true, true); },
        [&](double v, std::string& t) { PrintedGeogs(v, row.style, row.decimals, t); });
    CompareReading(table, row.read, degrees, row.style, row.decimals);
  }
  g_allMet = table.Finish() == 0 && g_allMet;
}

}  // namespace

int main() {
  for (const std::size_t count : {std::size_t{1000}, std::size_t{30000}, kBarCount}) CompareAll(count);
  if (g_allEqual) return g_allMet ? 0 : 1;
  std::fprintf(stderr, "the answers differ\n");
  return 1;
}
