#include "zelbase/frame/ByteSize.h"

#include "zelbase/frame/detail/NumberText.h"

namespace {

struct Unit {
  double bytes;
  const char* name;
};

Unit UnitFor(unsigned long long size) {
  if (size < 0x100000) return {1024.0, " KB"};
  if (size < 0x40000000) return {1048576.0, " MB"};
  return {1073741824.0, " GB"};
}

}  // namespace

void FormatByteSize(unsigned long long size, std::string& text) {
  const Unit unit = UnitFor(size);
  const double count = static_cast<double>(size) / unit.bytes;
  text.clear();
  // Kept: decided before rounding, so that "10.0 KB" exists; the displays show it so.
  zelbase::detail::AppendFixed(text, count, count < 10 && count != 0 ? 1 : 0);
  text += unit.name;
}

void FormatByteSizeperSec(unsigned long long size, std::string& text) {
  FormatByteSize(size, text);
  text += "/s";
}
