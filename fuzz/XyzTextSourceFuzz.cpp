// Any bytes as a text of positions, beside a reader that goes character by character. The first byte chooses the options and how
// much a read gives at most; the file lies in memory.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/xyz/XyzTextSource.h"
#include "tests/adapters/LiteralXyzReader.h"
#include "zelbase/data/XyzImporter.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

void Require(bool condition, const char* what) {
  if (condition) return;
  std::cerr << "not so: " << what << '\n';
  std::abort();
}

// One file under every name, to be read.
class OneFile : public PlatformFiles {
 public:
  OneFile(std::string text, std::size_t readLimit) : m_text(std::move(text)), m_readLimit(readLimit) {}

  std::unique_ptr<PlatformFile> Open(const FileOpenRequest&, FileResult& result) override {
    result = FileResult::Ok;
    return std::make_unique<File>(m_text, m_readLimit);
  }
  FileResult Replace(const std::string&, const std::string&) override { return FileResult::AccessDenied; }
  FileResult Remove(const std::string&) override { return FileResult::AccessDenied; }
  std::string FollowLinks(const std::string& path) override { return path; }
  bool IsRegularFile(const std::string&) override { return true; }

 private:
  class File : public PlatformFile {
   public:
    File(const std::string& text, std::size_t readLimit) : m_text(text), m_readLimit(readLimit) {}

    FileResult Read(void* buffer, std::size_t size, std::size_t& done) override {
      done = std::min({size, m_readLimit, m_text.size() - m_position});
      if (done != 0) std::memcpy(buffer, m_text.data() + m_position, done);
      m_position += done;
      return FileResult::Ok;
    }
    FileResult Write(const void*, std::size_t, std::size_t&) override { return FileResult::AccessDenied; }
    FileResult Seek(long long offset, int origin, long long& position) override {
      Require(origin == 0 && offset >= 0 && static_cast<std::size_t>(offset) <= m_text.size(), "a seek within the file");
      position = offset;
      m_position = static_cast<std::size_t>(offset);
      return FileResult::Ok;
    }
    FileResult Flush() override { return FileResult::Ok; }
    FileResult GetSize(long long& size) override {
      size = static_cast<long long>(m_text.size());
      return FileResult::Ok;
    }
    FileResult SetEnd() override { return FileResult::AccessDenied; }
    FileResult GetTimes(FileTimes&) override { return FileResult::AccessDenied; }
    FileResult CopyModeFrom(const std::string&) override { return FileResult::AccessDenied; }

   private:
    const std::string& m_text;
    std::size_t m_readLimit;
    std::size_t m_position = 0;
  };

  std::string m_text;
  std::size_t m_readLimit;
};

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

bool Same(const TimePoint& a, const TimePoint& b) {
  return SameBits(a.position.x, b.position.x) && SameBits(a.position.y, b.position.y) &&
         SameBits(a.position.z, b.position.z) && SameBits(a.time, b.time);
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t limit = data[0] / 2;
  OneFile file(std::string(reinterpret_cast<const char*>(data) + 1, size - 1), limit == 0 ? SIZE_MAX : limit);
  const PlatformOverride<PlatformFiles> guard(file);
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
  return 0;
}
