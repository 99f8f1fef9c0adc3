// Any bytes as a text of positions, beside a reader that goes character by character. The first byte chooses the options and how
// much a read gives at most; the file lies in memory.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "adapters/xyz/XyzTextSource.h"
#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/adapters/LiteralXyzReader.h"
#include "zelbase/data/XyzImporter.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

bool Same(const TimePoint& a, const TimePoint& b) {
  return SameBits(a.position.x, b.position.x) && SameBits(a.position.y, b.position.y) && SameBits(a.position.z, b.position.z) &&
         SameBits(a.time, b.time);
}

class Collector : public XyzImporter {
 public:
  using XyzImporter::XyzImporter;
  std::vector<TimePoint> points;

 protected:
  bool AddPoint(const TimePoint& point) override {
    points.push_back(point);
    return true;
  }
};

void CheckSummary(const XyzTextSummary& summary, const LiteralXyz& literal) {
  Require(summary.lines == literal.lines, "the lines");
  Require(summary.points == static_cast<long long>(literal.points.size()), "the points");
  Require(summary.timedPoints == literal.timedPoints, "the points with a time");
  Require(summary.hasNames == literal.hasNames, "the names");
  Require(summary.brokenLines == static_cast<long long>(literal.brokenLines.size()), "the broken lines");
  for (std::size_t i = 0; i < summary.problems.size(); ++i) {
    Require(summary.problems[i].line == literal.brokenLines[i], "the number of a broken line");
    Require(!summary.problems[i].reason.empty(), "the reason of a broken line");
  }
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return;
  const std::size_t limit = data[0] / 2;
  MemoryFiles memory(limit == 0 ? SIZE_MAX : limit);
  memory.files["any"].assign(reinterpret_cast<const char*>(data) + 1, size - 1);
  const PlatformOverride<PlatformFiles> guard(memory);
  XyzTextOptions options;
  options.positionOnly = data[0] % 2 != 0;
  const LiteralXyz literal = ReadLiteralXyz(std::string(reinterpret_cast<const char*>(data) + 1, size - 1), options.positionOnly);

  XyzTextSource source("any", options);
  Require(source.IsOpen(), "the opening");
  Require(source.Whole() != nullptr, "the pass");
  CheckSummary(*source.Whole(), literal);
  Collector import(&source, false);
  Require(import.Process(), "the import");
  CheckSummary(source.SoFar(), literal);
  Require(source.GetPosition() == 1.0, "the position");
  Require(std::equal(import.points.begin(), import.points.end(), literal.points.begin(), literal.points.end(), Same),
          "the points themselves");

  Point minimum, maximum, plainMinimum, plainMaximum;
  const bool any = source.GetExtents(minimum, maximum);
  Require(any == source.XYZDataSource::GetExtents(plainMinimum, plainMaximum), "the extents");
  Require(!any || (minimum == plainMinimum && maximum == plainMaximum), "the extents themselves");
}
