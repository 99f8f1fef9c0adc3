// The check of a whole file, four bytes a byte, from the page cache: the peer adds each byte by the int
// overload of the checksum. The check is to take at least 1 GB of file a second.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/config/CRCChecksum.h"
#include "zelbase/files/HugeFileStream.h"

namespace {

constexpr double kBarGigabytesASecond = 1.0;
constexpr std::size_t kMega = 1024 * 1024;
constexpr std::size_t kMostMegabytes = 256;

using Bytes = std::vector<unsigned char>;

Bytes RandomBytes(std::size_t size) {
  std::mt19937_64 random(1);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() >> 32);
  return bytes;
}

// A file of the benchmark's own, gone at its end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const Bytes& bytes) : m_path((std::filesystem::temp_directory_path() / "zelbase-HugeFileStreamBench").string()) {
    HugeFileStream stream(m_path.c_str(), true, true);
    m_good = stream.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
  }
  ~TemporaryFile() { std::filesystem::remove(m_path); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool IsGood() const { return m_good; }
  const char* Path() const { return m_path.c_str(); }

 private:
  std::string m_path;
  bool m_good = false;
};

unsigned int Ours(HugeFileStream& stream) {
  unsigned int crc = 0;
  stream.Seek(0, 0);
  stream.GetFileCrc32(crc);
  return crc;
}

// What a caller would write.
unsigned int ByteByByte(HugeFileStream& stream, std::size_t size) {
  CRCChecksum sum;
  stream.Seek(0, 0);
  char block[4096];
  for (std::size_t done = 0; done < size; done += sizeof(block)) {
    stream.Read(block, sizeof(block));
    for (const char character : block) sum += static_cast<int>(static_cast<signed char>(character));
  }
  return sum.Value();
}

double BestGigabytesASecond(HugeFileStream& stream, std::size_t size) {
  double best = 0.0;
  for (int round = 0; round < 7; ++round) {
    const auto start = std::chrono::steady_clock::now();
    Keep(Ours(stream));
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    best = std::max(best, static_cast<double>(size) / seconds / 1e9);
  }
  return best;
}

bool Compare(Comparison& table, std::size_t megabytes) {
  const Bytes bytes = RandomBytes(megabytes * kMega);
  const TemporaryFile file(bytes);
  HugeFileStream stream(file.Path(), false, false);
  if (!file.IsGood() || Ours(stream) != ByteByByte(stream, bytes.size())) {
    std::fprintf(stderr, "no file, or the answers differ\n");
    return false;
  }
  table.Row(
      std::to_string(megabytes) + " MB from the page cache", static_cast<double>(bytes.size()), "B", 1.0, [&] { Keep(Ours(stream)); },
      [&] { Keep(ByteByByte(stream, bytes.size())); }, [&] { ReadOnce(bytes); });
  if (megabytes < kMostMegabytes) return true;
  const double speed = BestGigabytesASecond(stream, bytes.size());
  const bool met = speed >= kBarGigabytesASecond;
  std::printf("GB of file a second, best of 7: %.2f (bar %.2f) %s\n", speed, kBarGigabytesASecond, met ? "ok" : "short");
  return met;
}

}  // namespace

int main() {
  Comparison table("check of a whole file (peer: the int overload, byte by byte)", 3);
  bool allMet = true;
  for (const std::size_t megabytes : {std::size_t{1}, std::size_t{16}, kMostMegabytes}) allMet = Compare(table, megabytes) && allMet;
  return table.Finish() == 0 && allMet ? 0 : 1;
}
