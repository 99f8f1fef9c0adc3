// Stands in for libFuzzer's main, so that the ordinary tests put a target to work. Neighbour: Target.cpp, the door of a target.
//
//   NameFuzz FOLDER...                  gives every file of the folders to the target once: the corpus, and every input that once failed
//   NameFuzz --broken BYTES FOLDER...   gives it every file whole, cut short after each of its bytes, and with each of its bytes turned
//                                       to each of BYTES (hexadecimal, "00,ff,3d") and with its lowest bit turned over
//
// A demand that is not met ends the process; which input it was is said then.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string underway;
std::size_t count = 0;

extern "C" void TellInput(int) { std::fprintf(stderr, "the input: %s\n", underway.c_str()); }

// An exact copy on the heap, so that the address sanitizer sees a read behind the end.
void Give(const Bytes& bytes, const std::string& name) {
  underway = name;
  const Bytes exact(bytes);
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
  ++count;
}

void GiveBroken(const Bytes& whole, const std::string& name, const Bytes& values) {
  Bytes broken = whole;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    const std::string place = std::to_string(at);
    Give(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(at)), name + " cut to " + place + " bytes");
    Bytes turned = values;
    turned.push_back(whole[at] ^ 1U);
    for (const std::uint8_t value : turned) {
      if (value == whole[at]) continue;
      broken[at] = value;
      Give(broken, name + " with byte " + place + " turned to " + std::to_string(value));
    }
    broken[at] = whole[at];
  }
}

Bytes FromHexadecimal(const std::string& text) {
  Bytes values;
  std::istringstream stream(text);
  for (std::string item; std::getline(stream, item, ',');) values.push_back(static_cast<std::uint8_t>(std::stoul(item, nullptr, 16)));
  return values;
}

// In the order of their names, so that each run is the same.
std::vector<std::filesystem::path> FilesOf(const char* folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGABRT, TellInput);
  const bool breaks = argc > 2 && std::string(argv[1]) == "--broken";
  const Bytes values = breaks ? FromHexadecimal(argv[2]) : Bytes();
  for (int i = breaks ? 3 : 1; i < argc; ++i) {
    for (const std::filesystem::path& path : FilesOf(argv[i])) {
      std::ifstream stream(path, std::ios::binary);
      const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
      Give(bytes, path.string());
      if (breaks) GiveBroken(bytes, path.string(), values);
    }
  }
  std::printf("%zu inputs given\n", count);
  return count == 0 ? 1 : 0;
}
