// The conversions of the unit table after the first use, against the same arithmetic on a plain array of rows
// behind a function call. The nanoseconds a value are the number to look at: a few.

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/units/CZelUnitCnv.h"

namespace {

constexpr std::size_t kBarSize = 4096;

struct PlainRow {
  double conversionFactor = 1.0;
  double offset = 0.0;
};

using Rows = std::array<PlainRow, 24>;
using PlainFunction = double (*)(const Rows& rows, int kind, double value);

double PlainConvert(const Rows& rows, int kind, double value) {
  if (kind < 0 || kind >= 24) return value;
  const PlainRow& row = rows[static_cast<std::size_t>(kind)];
  return row.conversionFactor * value + row.offset;
}

double PlainConvertFrom(const Rows& rows, int kind, double value) {
  if (kind < 0 || kind >= 24) return value;
  const PlainRow& row = rows[static_cast<std::size_t>(kind)];
  return (value - row.offset) / row.conversionFactor;
}

// Called as a function of a library is: the compiler must not know which it is, and so neither merge it into
// the loop nor look at what it leaves in registers.
PlainFunction volatile plainConvert = &PlainConvert;
PlainFunction volatile plainConvertFrom = &PlainConvertFrom;

struct Work {
  int kind;
  double value;
};

std::vector<Work> RandomWork(std::size_t size) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> number(-1000.0, 1000.0);
  std::vector<Work> work(size);
  for (Work& item : work) item = {static_cast<int>(random() % 24), number(random)};
  return work;
}

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

// A comparison of different answers would mean nothing.
bool SameAnswers(const CZelUnitCnv& units, const Rows& rows, const std::vector<Work>& work) {
  for (const Work& item : work) {
    if (!SameBits(units.ConvertUnit(item.kind, item.value), PlainConvert(rows, item.kind, item.value)) ||
        !SameBits(units.ConvertFromUnit(item.kind, item.value), PlainConvertFrom(rows, item.kind, item.value))) {
      return false;
    }
  }
  return true;
}

// Converts all values, as a display does that fills its columns.
template <class Convert>
void Fill(std::vector<double>& column, const std::vector<Work>& work, Convert convert) {
  for (std::size_t i = 0; i < work.size(); ++i) column[i] = convert(work[i].kind, work[i].value);
  Keep(column.front());
}

template <class Convert>
void FillWithDepths(std::vector<double>& column, const std::vector<Work>& work, Convert convert) {
  for (std::size_t i = 0; i < work.size(); ++i) column[i] = convert(CZelUnitCnv::Depth, work[i].value);
  Keep(column.front());
}

}  // namespace

int main() {
  CZelUnitCnv units;
  Rows rows;
  for (int kind = 2; kind < 24; ++kind) {
    const double factor = 0.25 + kind;
    units.SetUnit(kind, factor, kind * 0.5, "m", "k", "d");
    const double power = kind == CZelUnitCnv::Volume || kind == CZelUnitCnv::Density || kind == CZelUnitCnv::Delivery ? 3.0
                         : kind == CZelUnitCnv::Area                                                                  ? 2.0
                                                                                                                      : 1.0;
    rows[static_cast<std::size_t>(kind)] = {power == 1.0 ? 1.0 / factor : std::pow(1.0 / factor, power), kind * 0.5};
  }
  const PlainFunction convert = plainConvert;
  const PlainFunction convertFrom = plainConvertFrom;
  const auto ours = [&units](int kind, double value) { return units.ConvertUnit(kind, value); };
  const auto theirs = [&](int kind, double value) { return convert(rows, kind, value); };
  const auto oursFrom = [&units](int kind, double value) { return units.ConvertFromUnit(kind, value); };
  const auto theirsFrom = [&](int kind, double value) { return convertFrom(rows, kind, value); };
  Comparison table("conversion of units (peer: the same arithmetic on a plain array, called)");
  for (const std::size_t size : {std::size_t{64}, kBarSize, std::size_t{1000000}}) {
    const std::vector<Work> work = RandomWork(size);
    if (!SameAnswers(units, rows, work)) {
      std::fprintf(stderr, "the answers differ\n");
      return 1;
    }
    const auto count = static_cast<double>(size);
    const double bar = Comparison::BarAt(size == kBarSize, 0.8);
    std::vector<double> column(size);
    const std::string of = ", " + Grouped(size);
    const auto limit = [&] {
      ReadOnce(work);
      WriteOnce(column);
    };
    table.Row(
        "ConvertUnit, any kind" + of, count, "v", bar, [&] { Fill(column, work, ours); }, [&] { Fill(column, work, theirs); }, limit);
    table.Row(
        "ConvertUnit, depths" + of, count, "v", bar, [&] { FillWithDepths(column, work, ours); },
        [&] { FillWithDepths(column, work, theirs); }, limit);
    table.Row(
        "ConvertFromUnit, any kind" + of, count, "v", bar, [&] { Fill(column, work, oursFrom); }, [&] { Fill(column, work, theirsFrom); },
        limit);
  }
  return table.Finish();
}
