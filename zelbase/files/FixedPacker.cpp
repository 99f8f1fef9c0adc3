#include "zelbase/files/FixedPacker.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "zelbase/frame/detail/Characters.h"

namespace {

constexpr std::size_t kLongestLine = 16777216;

}  // namespace

FixedPacker::FixedPacker() = default;

FixedPacker::FixedPacker(const FixedPacker& other) = default;

FixedPacker& FixedPacker::operator=(const FixedPacker& other) = default;

FixedPacker::~FixedPacker() = default;

void FixedPacker::LoadString(const std::string& text) { m_line = text; }

const std::string& FixedPacker::GetString() const { return m_line; }

bool FixedPacker::SetItem(int position, int width, const std::string& text) {
  if (position < 0 || width < 0) return true;
  const std::size_t begin = static_cast<std::size_t>(position);
  const std::size_t end = begin + static_cast<std::size_t>(width);
  // A copy, since `text` may be the line itself.
  const std::string item = text.substr(0, end - begin);
  // Kept: also when the field ends exactly at the end; what a short text does not reach stays.
  if (m_line.size() >= end) {
    m_line.replace(begin, item.size(), item);
    return true;
  }
  if (begin + item.size() > kLongestLine) return true;
  // Kept: fills up to the field, or cuts off from there on, and never fills up behind a short text.
  m_line.resize(begin, ' ');
  m_line += item;
  return true;
}

bool FixedPacker::SetLabeledItem(int position, int width, std::string label, std::string value) {
  if (position < 0 || width < 0) return true;
  const std::size_t begin = static_cast<std::size_t>(position);
  const std::size_t size = static_cast<std::size_t>(width);
  const std::size_t end = begin + size;
  if (m_line.size() < end) {
    if (end > kLongestLine) return true;
    m_line.resize(end, ' ');
  }
  // Kept: the label clears the whole field.
  label.resize(size, ' ');
  m_line.replace(begin, size, label);
  std::string_view shown = zelbase::detail::Trim(value);
  // Kept: a long value reaches out to the left, over what stands before the field.
  shown.remove_prefix(shown.size() - std::min(shown.size(), end));
  m_line.replace(end - shown.size(), shown.size(), shown);
  return true;
}
