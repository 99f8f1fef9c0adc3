// Any bytes as a station file, beside a plain reading of its first line. The file lies in memory and comes in pieces of a size
// that its first byte chooses.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/geometry/Station.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

void Require(bool condition, const char* what) {
  if (condition) return;
  std::cerr << "not so: " << what << '\n';
  std::abort();
}

// One file, whatever its name.
class MemoryFiles : public PlatformFiles {
 public:
  MemoryFiles(std::string content, std::size_t piece) : m_content(std::move(content)), m_piece(piece) {}

  std::unique_ptr<PlatformFile> Open(const FileOpenRequest&, FileResult& result) override {
    result = FileResult::Ok;
    return std::make_unique<File>(m_content, m_piece);
  }
  FileResult Replace(const std::string&, const std::string&) override { return FileResult::AccessDenied; }
  FileResult Remove(const std::string&) override { return FileResult::AccessDenied; }
  std::string FollowLinks(const std::string& path) override { return path; }
  bool IsRegularFile(const std::string&) override { return true; }

 private:
  class File : public PlatformFile {
   public:
    File(const std::string& content, std::size_t piece) : m_content(content), m_piece(piece) {}

    FileResult Read(void* buffer, std::size_t size, std::size_t& done) override {
      done = std::min({size, m_piece, m_content.size() - m_position});
      if (done != 0) std::memcpy(buffer, m_content.data() + m_position, done);
      m_position += done;
      return FileResult::Ok;
    }
    FileResult Write(const void*, std::size_t, std::size_t&) override { return FileResult::AccessDenied; }
    FileResult Seek(long long, int, long long&) override { return FileResult::AccessDenied; }
    FileResult Flush() override { return FileResult::Ok; }
    FileResult GetSize(long long&) override { return FileResult::AccessDenied; }
    FileResult SetEnd() override { return FileResult::AccessDenied; }
    FileResult GetTimes(FileTimes&) override { return FileResult::AccessDenied; }
    FileResult CopyModeFrom(const std::string&) override { return FileResult::AccessDenied; }

   private:
    const std::string& m_content;
    std::size_t m_piece;
    std::size_t m_position = 0;
  };

  std::string m_content;
  std::size_t m_piece;
};

// The number that `line` begins with, and the line from behind the next comma on.
bool TakeItem(std::istringstream& line, double& value) {
  std::string item;
  std::getline(line, item, ',');
  return zelbase::detail::ScanDouble(item, value) != 0;
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  MemoryFiles memory(bytes, size == 0 ? 1 : std::size_t{1} + data[0]);
  const PlatformOverride<PlatformFiles> guard(memory);

  std::istringstream content(bytes);
  std::string text;
  std::getline(content, text);
  if (!text.empty() && text.back() == '\r') text.pop_back();
  std::istringstream line(text);
  Point expected;
  TakeItem(line, expected.x);
  TakeItem(line, expected.y);
  const bool complete = TakeItem(line, expected.z);

  Station station;
  station.text0 = "untouched";
  Require(station.ReadFile("station") == complete, "the answer is the third item's");
  Point point(7, 8, 9);
  Require(station.GetStationPos(point), "the position is valid");
  Require(SameBits(point.x, expected.x) && SameBits(point.y, expected.y) && SameBits(point.z, expected.z), "the numbers");
  Require(station.text0 == "untouched", "the texts stay");
  return 0;
}
