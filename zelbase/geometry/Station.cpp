#include "zelbase/geometry/Station.h"

#include <array>
#include <memory>
#include <string_view>

#include "zelbase/frame/CZelString.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

constexpr std::size_t kBlockSize = 4096;
constexpr int kItems = 3;

// Takes characters up to the end of the line or of the last item that counts. False when there is more to come.
bool TakeCharacters(std::string_view block, std::string& line, int& commas) {
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (block[i] == ',') ++commas;
    if (block[i] != '\n' && commas < kItems) continue;
    line.append(block.substr(0, i));
    return true;
  }
  line.append(block);
  return false;
}

// The front of the first line that holds the items; empty when the file does not open or cannot be read. A return before the
// line's end stays: no number minds white space.
std::string ReadItems(const std::string& fileName) {
  FileOpenRequest request;
  request.path = fileName;
  FileResult result = FileResult::Ok;
  const std::unique_ptr<PlatformFile> file = PlatformService<PlatformFiles>::Current().Open(request, result);
  if (file == nullptr) return {};
  std::array<char, kBlockSize> block;
  std::string line;
  int commas = 0;
  for (;;) {
    std::size_t done = 0;
    if (file->Read(block.data(), block.size(), done) != FileResult::Ok) return {};
    if (done == 0 || TakeCharacters(std::string_view(block.data(), done), line, commas)) return line;
  }
}

}  // namespace

bool Station::ReadFile(const std::string& fileName) {
  const CZelString items(ReadItems(fileName), ',', false);
  Point read;
  items.GetItem(0, read.x);
  items.GetItem(1, read.y);
  // Kept: the last item alone decides the answer.
  const bool complete = items.GetItem(2, read.z);
  // Kept: valid in any case, so that a missing file gives a valid (0, 0, 0).
  SetStationPos(read);
  return complete;
}
