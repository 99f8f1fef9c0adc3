// Any bytes as a script of fields that are put into a line of columns; a plain row of characters is kept beside it, filled one column
// at a time, and must agree.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "zelbase/files/FixedPacker.h"

namespace {

// Takes the fields off the input.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

  bool Empty() const { return m_at == m_end; }
  int Byte() { return Empty() ? 0 : *m_at++; }

  // Mostly within a short line, now and then behind its end, negative or beyond the longest line.
  int Column() {
    const int value = Byte();
    switch (value) {
      case 251: return -1;
      case 252: return INT32_MIN;
      case 253: return INT32_MAX;
      case 254: return 16777217;
      case 255: return Byte() * 8;
      default: return value % 64;
    }
  }

  std::string Text() {
    std::string text;
    for (int length = Byte() % 32; length > 0 && !Empty(); --length) text += static_cast<char>(Byte());
    return text;
  }

 private:
  const std::uint8_t* m_at;
  const std::uint8_t* m_end;
};

constexpr long long kLongestLine = 16777216;

std::string WithoutWhite(std::string text) {
  const std::string white = " \t\n\v\f\r";
  while (!text.empty() && white.find(text.back()) != white.npos) text.pop_back();
  while (!text.empty() && white.find(text.front()) != white.npos) text.erase(0, 1);
  return text;
}

// Column by column after the rules.
struct Row {
  std::vector<char> columns;

  long long Size() const { return static_cast<long long>(columns.size()); }
  char& At(long long column) { return columns[static_cast<std::size_t>(column)]; }

  void SetItem(long long position, long long width, const std::string& text) {
    if (position < 0 || width < 0) return;
    const long long length = std::min(width, static_cast<long long>(text.size()));
    if (position + width > Size()) {
      if (position + length > kLongestLine) return;
      while (Size() > position) columns.pop_back();
      while (Size() < position + length) columns.push_back(' ');
    }
    for (long long i = 0; i < length; ++i) At(position + i) = text[static_cast<std::size_t>(i)];
  }

  void SetLabeledItem(long long position, long long width, const std::string& label, const std::string& value) {
    if (position < 0 || width < 0 || (position + width > Size() && position + width > kLongestLine)) return;
    while (Size() < position + width) columns.push_back(' ');
    for (long long i = 0; i < width; ++i) {
      At(position + i) = i < static_cast<long long>(label.size()) ? label[static_cast<std::size_t>(i)] : ' ';
    }
    const std::string shown = WithoutWhite(value);
    long long column = position + width;
    for (auto c = shown.rbegin(); c != shown.rend() && column > 0; ++c) At(--column) = *c;
  }
};

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  FixedPacker packer;
  Row row;
  // Longer lines would only ask for memory and time.
  while (!input.Empty() && row.Size() < 4000) {
    const int call = input.Byte();
    const int position = input.Column();
    const int width = input.Column();
    if (call % 4 < 2) {
      const bool own = call % 8 >= 4;
      const std::string text = own ? packer.GetString() : input.Text();
      Require(packer.SetItem(position, width, own ? packer.GetString() : text), "the answer for a field");
      row.SetItem(position, width, text);
    } else if (call % 4 == 2) {
      const std::string label = input.Text();
      const std::string value = input.Text();
      Require(packer.SetLabeledItem(position, width, label, value), "the answer for a field with a label");
      row.SetLabeledItem(position, width, label, value);
    } else {
      const std::string text = input.Text();
      packer.LoadString(text);
      row.columns.assign(text.begin(), text.end());
    }
    Require(packer.GetString() == std::string(row.columns.begin(), row.columns.end()), "the line");
    const FixedPacker copy(packer);
    Require(copy.GetString() == packer.GetString(), "the copy");
  }
}
