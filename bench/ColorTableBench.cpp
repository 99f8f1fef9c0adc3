// Colours of numbers: the colour table against a search of the standard library, and a raster's rows against
// the colour relief of GDAL, on one thread.

#include <cpl_vsi.h>
#include <gdal.h>
#include <gdal_utils.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/colour/ColorTable.h"

namespace {

constexpr int kNumEntries = 64;
constexpr std::size_t kNumValues = 1 << 20;

// --- Tables and values
// ---------------------------------------------------------------------------------------------

ColorTable TableOf(const std::vector<double>& values) {
  ColorTable table;
  std::mt19937_64 random(1);
  for (const double value : values) table.AddEntry(value, static_cast<unsigned int>(random() & 0xFFFFFF), false, "");
  return table;
}

std::vector<double> UnevenValues() {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> gap(0.05, 2.0);
  std::vector<double> values;
  for (double value = -40; values.size() < kNumEntries; value += gap(random)) values.push_back(value);
  return values;
}

std::vector<double> EvenValues() {
  std::vector<double> values;
  for (int i = 0; i < kNumEntries; ++i) values.push_back(-40.0 + i);
  return values;
}

std::vector<double> LogarithmicValues() {
  std::vector<double> values;
  for (int i = 0; i < kNumEntries; ++i) values.push_back(std::pow(10.0, i / 10.0));
  return values;
}

std::vector<double> RandomBetween(double first, double last, std::size_t count) {
  std::mt19937_64 random(3);
  const double margin = (last - first) / 50;
  std::uniform_real_distribution<double> number(first - margin, last + margin);
  std::vector<double> values(count);
  for (double& value : values) value = number(random);
  return values;
}

// A sea floor: neighbours are alike.
std::vector<double> SmoothBetween(double first, double last, std::size_t width, std::size_t height) {
  std::vector<double> values(width * height);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double x = static_cast<double>(i % width);
    const double y = static_cast<double>(i / width);
    const double wave = std::sin(x * 0.011) * std::cos(y * 0.007) + 0.05 * std::sin(x * 0.31) * std::sin(y * 0.23);
    values[i] = first + (last - first) * (0.5 + 0.47 * wave);
  }
  return values;
}

// --- Against a search
// ----------------------------------------------------------------------------------------------

// The step by a search of the standard library. It differs at the entries themselves.
struct Search {
  std::vector<double> values;
  std::vector<unsigned int> colors;  // the low colour first

  explicit Search(const ColorTable& table) : colors{table.LowColor()} {
    for (int i = 0; i < table.NumEntries(); ++i) {
      values.push_back(table.EntryValue(i));
      colors.push_back(table.EntryColor(i));
    }
  }
  unsigned int Color(double value) const {
    return colors[static_cast<std::size_t>(std::upper_bound(values.begin(), values.end(), value) - values.begin())];
  }
};

bool SameColors(const ColorTable& table, const Search& search, const std::vector<double>& values) {
  std::vector<unsigned int> row(values.size());
  table.GetColors(values, row);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const bool isEntry = std::binary_search(search.values.begin(), search.values.end(), values[i]);
    if (table.GetColor(values[i]) != row[i] || (!isEntry && search.Color(values[i]) != row[i])) return false;
  }
  return true;
}

// Both sides fill a row of colours.
bool AgainstSearch(Comparison& rows, const std::string& name, const ColorTable& table, const std::vector<double>& values, double bar) {
  const Search search(table);
  if (!SameColors(table, search, values)) return false;
  std::vector<unsigned int> colors(values.size());
  const auto byPeer = [&] {
    for (std::size_t i = 0; i < values.size(); ++i) colors[i] = search.Color(values[i]);
    Keep(colors.front());
  };
  const double units = static_cast<double>(values.size());
  rows.Row(
      "GetColor, " + name, units, "v", bar,
      [&] {
        for (std::size_t i = 0; i < values.size(); ++i) colors[i] = table.GetColor(values[i]);
        Keep(colors.front());
      },
      byPeer);
  rows.Row(
      "GetColors, " + name, units, "v", bar,
      [&] {
        table.GetColors(values, colors);
        Keep(colors.front());
      },
      byPeer);
  return true;
}

// --- Against a colour relief
// ---------------------------------------------------------------------------------------

constexpr int kWidth = 2048;
constexpr int kHeight = 1024;

int HeightOf(const std::vector<double>& values) { return static_cast<int>(values.size() / kWidth); }
constexpr const char* kReliefFile = "/vsimem/relief.txt";

// GDAL's own form of the table. It takes the nearest entry and not the one below, which costs it the same.
void WriteReliefFile(const ColorTable& table) {
  std::string text;
  for (int i = 0; i < table.NumEntries(); ++i) {
    const unsigned int color = table.EntryColor(i);
    char line[100];
    std::snprintf(line, sizeof line, "%.17g %u %u %u\n", table.EntryValue(i), color & 0xFF, color >> 8 & 0xFF, color >> 16);
    text += line;
  }
  VSILFILE* const file = VSIFOpenL(kReliefFile, "wb");
  VSIFWriteL(text.data(), 1, text.size(), file);
  VSIFCloseL(file);
}

// A raster of one band in memory, of the doubles that ours reads, too.
class Raster {
 public:
  explicit Raster(std::vector<double> values)
      : m_dataset(GDALCreate(GDALGetDriverByName("MEM"), "", kWidth, HeightOf(values), 1, GDT_Float64, nullptr)) {
    const CPLErr result = GDALRasterIO(GDALGetRasterBand(m_dataset, 1), GF_Write, 0, 0, kWidth, HeightOf(values), values.data(), kWidth,
                                       HeightOf(values), GDT_Float64, 0, 0);
    m_isValid = result == CE_None;
  }
  ~Raster() { GDALClose(m_dataset); }
  Raster(const Raster&) = delete;
  Raster& operator=(const Raster&) = delete;

  bool IsValid() const { return m_isValid; }

  // Three bands of bytes in memory.
  bool Relief() const {
    const char* arguments[] = {"-of", "MEM", "-q", "-nearest_color_entry", nullptr};
    GDALDEMProcessingOptions* const options = GDALDEMProcessingOptionsNew(const_cast<char**>(arguments), nullptr);
    const GDALDatasetH result = GDALDEMProcessing("", m_dataset, "color-relief", kReliefFile, options, nullptr);
    GDALDEMProcessingOptionsFree(options);
    const bool isDone = result != nullptr && GDALGetRasterCount(result) == 3;
    if (result != nullptr) GDALClose(result);
    return isDone;
  }

 private:
  GDALDatasetH m_dataset;
  bool m_isValid = false;
};

// The same work as the peer's: three new bands of bytes, a row at a time.
std::unique_ptr<unsigned char[]> Relief(const ColorTable& table, const std::vector<double>& values) {
  auto bands = std::make_unique_for_overwrite<unsigned char[]>(values.size() * 3);
  std::vector<unsigned int> colors(kWidth);
  for (std::size_t first = 0; first < values.size(); first += kWidth) {
    table.GetColors(std::span(values).subspan(first, kWidth), colors);
    unsigned char* const red = bands.get() + first;
    unsigned char* const green = red + values.size();
    unsigned char* const blue = green + values.size();
    for (std::size_t i = 0; i < kWidth; ++i) red[i] = static_cast<unsigned char>(colors[i]);
    for (std::size_t i = 0; i < kWidth; ++i) green[i] = static_cast<unsigned char>(colors[i] >> 8);
    for (std::size_t i = 0; i < kWidth; ++i) blue[i] = static_cast<unsigned char>(colors[i] >> 16);
  }
  return bands;
}

// `bar` is that of the whole work; the colours by themselves, against the peer's whole work, have one of 5.
bool AgainstRelief(Comparison& rows, const std::string& name, const ColorTable& table, const std::vector<double>& values, double bar) {
  WriteReliefFile(table);
  const Raster raster(values);
  if (!raster.IsValid() || !raster.Relief()) return false;
  const auto byPeer = [&] { Keep(raster.Relief()); };
  const double units = static_cast<double>(values.size());
  std::vector<unsigned char> bands(values.size() * 3);
  rows.Row(
      "raster in three bands, " + name, units, "px", bar, [&] { Keep(Relief(table, values)[0]); }, byPeer,
      [&] {
        ReadOnce(values);
        WriteOnce(bands);
      });
  std::vector<unsigned int> colors(values.size());
  rows.Row(
      "its colours alone, " + name, units, "px", 5.0,
      [&] {
        table.GetColors(values, colors);
        Keep(colors.front());
      },
      byPeer);
  return true;
}

}  // namespace

int main() {
  GDALAllRegister();
  const ColorTable uneven = TableOf(UnevenValues());
  const ColorTable even = TableOf(EvenValues());
  const ColorTable logarithmic = TableOf(LogarithmicValues());
  const double top = uneven.EntryValue(kNumEntries - 1);
  Comparison rows(
      "colour of a number in 64 entries, against std::upper_bound; relief of a raster, against GDAL "
      "(nearest)");
  const bool isSame =
      AgainstSearch(rows, "uneven, random, 1,000", uneven, RandomBetween(-40, top, 1000), 1.0) &&
      AgainstSearch(rows, "uneven, random, 30,000", uneven, RandomBetween(-40, top, 30000), 1.0) &&
      AgainstSearch(rows, "uneven, random", uneven, RandomBetween(-40, top, kNumValues), 1.0) &&
      AgainstSearch(rows, "uneven, smooth", uneven, SmoothBetween(-40, top, 1024, 1024), 1.0) &&
      AgainstSearch(rows, "even, random", even, RandomBetween(-40, 23, kNumValues), 3.0) &&
      AgainstSearch(rows, "even, smooth", even, SmoothBetween(-40, 23, 1024, 1024), 1.0) &&
      AgainstSearch(rows, "logarithmic, random", logarithmic, RandomBetween(1, 2e6, kNumValues), 1.0) &&
      AgainstRelief(rows, "random, 16 rows", uneven, RandomBetween(-40, top, std::size_t{kWidth} * 16), Comparison::kNoBar) &&
      AgainstRelief(rows, "random, 128 rows", uneven, RandomBetween(-40, top, std::size_t{kWidth} * 128), Comparison::kNoBar) &&
      AgainstRelief(rows, "random", uneven, RandomBetween(-40, top, std::size_t{kWidth} * kHeight), 5.0) &&
      AgainstRelief(rows, "smooth", uneven, SmoothBetween(-40, top, kWidth, kHeight), 5.0) &&
      AgainstRelief(rows, "logarithmic", logarithmic, SmoothBetween(1, 2e6, kWidth, kHeight), Comparison::kNoBar);
  if (!isSame) {
    std::puts("the answers differ");
    return 1;
  }
  return rows.Finish();
}
