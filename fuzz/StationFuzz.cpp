// Any bytes as a station file, beside a plain reading of its first line. The file lies in memory and comes in pieces of a size
// that its first byte chooses.

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/geometry/Station.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

// The number that `line` begins with, and the line from behind the next comma on.
bool TakeItem(std::istringstream& line, double& value) {
  std::string item;
  std::getline(line, item, ',');
  return zelbase::detail::ScanDouble(item, value) != 0;
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  MemoryFiles memory(size == 0 ? 1 : std::size_t{1} + data[0]);
  memory.files["station"] = bytes;
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
}
