#include "zelbase/frame/FormatString.h"

#include <algorithm>
#include <cstddef>

#include "zelbase/frame/detail/TextItems.h"

FormatString::FormatString(const std::string& text, char separator) : m_separator(separator) {
  // Kept: neither trimmed nor joined at runs of blanks; the columns of a log line are taken as they stand.
  std::size_t from = 0;
  for (std::size_t at = text.find(separator); at != text.npos; at = text.find(separator, from)) {
    m_items.push_back(text.substr(from, at - from));
    from = at + 1;
  }
  // Kept: one empty last piece is no item, so that a line which ends in its separator has no column too many.
  if (from < text.size()) m_items.push_back(text.substr(from));
}

std::string& FormatString::operator[](int index) {
  return Names(index) ? m_items[static_cast<std::size_t>(index)] : zelbase::detail::NoItem();
}

const std::string& FormatString::operator[](int index) const {
  return Names(index) ? m_items[static_cast<std::size_t>(index)] : zelbase::detail::NoItem();
}

std::string FormatString::String() const { return zelbase::detail::JoinItems(m_items, m_separator); }

std::string FormatString::Left(int count) const { return zelbase::detail::LeftItems(m_items, m_separator, count); }

std::string FormatString::Right(int count) const { return zelbase::detail::RightItems(m_items, m_separator, count); }

bool FormatString::HasSubString(const std::string& text) const {
  // Kept: whole items only, against the name; columns are looked up with it.
  return zelbase::detail::FindItem(m_items, text) >= 0;
}

void FormatString::Insert(int index, const std::string& text) {
  if (index < 0 || index > Size()) return;
  m_items.insert(m_items.begin() + index, text);
}

void FormatString::Erase(int first, int last) {
  if (!Names(first) || last <= first) return;
  // Kept: the second argument is an index, where CZelString takes a count.
  m_items.erase(m_items.begin() + first, m_items.begin() + std::min(last, Size()));
}

FormatString FormatString::operator+(const std::string& text) const {
  FormatString sum = *this;
  sum += text;
  return sum;
}

FormatString& FormatString::operator+=(const std::string& text) {
  m_items.push_back(text);
  return *this;
}
