// The checksums against their peers: the 32-bit one with carry-less multiplication against libdeflate, its
// tables against zlib, the 16-bit one against Boost.

#include <libdeflate.h>
#include <zlib.h>

#include <boost/crc.hpp>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/config/CRCChecksum.h"
#include "zelbase/config/Checksums.h"
#include "zelbase/config/detail/Crc32.h"

namespace {

using Bytes = std::vector<unsigned char>;
using zelbase::detail::Crc32Way;

constexpr std::size_t kKilo = 1024;
constexpr std::size_t kMega = 1024 * kKilo;

Bytes RandomBytes(std::size_t size) {
  std::mt19937_64 random(1);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() >> 32);
  return bytes;
}

unsigned int Ours(const Bytes& bytes) { return CRCChecksum().Add(bytes.data(), bytes.size()).Value(); }

unsigned int OursBy(Crc32Way way, const Bytes& bytes) {
  return zelbase::detail::UpdateCrc32By(way, 0xFFFFFFFFu, bytes.data(), bytes.size());
}

unsigned int Boost16(const Bytes& bytes) {
  boost::crc_optimal<16, 0x1021, 0, 0, true, true> sum;
  sum.process_bytes(bytes.data(), bytes.size());
  return sum.checksum();
}

// A comparison of different answers would mean nothing.
bool SameAnswers(const Bytes& bytes) {
  const auto zlib = static_cast<unsigned int>(crc32_z(0, bytes.data(), bytes.size()));
  return ~Ours(bytes) == libdeflate_crc32(0, bytes.data(), bytes.size()) && ~OursBy(Crc32Way::Portable, bytes) == zlib &&
         Compute16BitCRC(bytes.data(), bytes.data() + bytes.size()) == Boost16(bytes);
}

}  // namespace

int main() {
  Comparison table("checksums (peers: libdeflate, zlib, Boost)");
  for (const std::size_t size : {std::size_t{40}, std::size_t{200}, kKilo, 64 * kKilo, 64 * kMega}) {
    const Bytes bytes = RandomBytes(size);
    if (!SameAnswers(bytes)) {
      std::fprintf(stderr, "the answers differ\n");
      return 1;
    }
    const std::string name = size < kKilo   ? std::to_string(size) + " B"
                             : size < kMega ? std::to_string(size / kKilo) + " kB"
                                            : std::to_string(size / kMega) + " MB";
    const auto units = static_cast<double>(size);
    const auto limit = [&] { ReadOnce(bytes); };
    table.Row(
        "CRC-32 " + name + " : libdeflate", units, "B", size < kKilo ? Comparison::kNoBar : 0.9, [&] { Keep(Ours(bytes)); },
        [&] { Keep(libdeflate_crc32(0, bytes.data(), bytes.size())); }, limit);
    if (zelbase::detail::HasCrc32Way(Crc32Way::Fold128)) {
      table.Row(
          "CRC-32 " + name + ", 128-bit folding : libdeflate", units, "B", Comparison::kNoBar,
          [&] { Keep(OursBy(Crc32Way::Fold128, bytes)); }, [&] { Keep(libdeflate_crc32(0, bytes.data(), bytes.size())); }, limit);
    }
    table.Row(
        "CRC-32 " + name + ", tables : zlib", units, "B", size < kKilo ? Comparison::kNoBar : 0.5,
        [&] { Keep(OursBy(Crc32Way::Portable, bytes)); }, [&] { Keep(crc32_z(0, bytes.data(), bytes.size())); }, limit);
    table.Row(
        "CRC-16 " + name + " : Boost", units, "B", size < kKilo ? Comparison::kNoBar : 5.0,
        [&] { Keep(Compute16BitCRC(bytes.data(), bytes.data() + bytes.size())); }, [&] { Keep(Boost16(bytes)); }, limit);
  }
  return table.Finish();
}
