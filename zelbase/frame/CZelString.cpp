#include "zelbase/frame/CZelString.h"

#include <algorithm>

#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/frame/detail/TextItems.h"

using zelbase::detail::NoItem;
using zelbase::detail::ScanDouble;
using zelbase::detail::ScanFloat;
using zelbase::detail::ScanInt;
using zelbase::detail::ScanUnsigned;
using zelbase::detail::ScanUnsignedShort;

namespace {

// As std::string::find, but in time proportional to the sum of both lengths and not to their product, for
// texts that nearly match everywhere (Knuth, Morris, Pratt). `part` is not empty.
std::size_t FindPart(std::string_view text, std::string_view part) {
  // borders[i]: length of the longest proper front of part[0..i] that also ends there.
  std::vector<std::size_t> borders(part.size());
  std::size_t matched = 0;
  const auto step = [&](char c) {
    while (matched > 0 && part[matched] != c) matched = borders[matched - 1];
    if (part[matched] == c) ++matched;
  };
  for (std::size_t i = 1; i < part.size(); ++i) {
    step(part[i]);
    borders[i] = matched;
  }
  matched = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    step(text[i]);
    if (matched == part.size()) return i + 1 - matched;
  }
  return text.npos;
}

}  // namespace

CZelString::CZelString(const std::string& text, char separator, bool trim) : m_separator(separator) { LoadString(text, trim); }

void CZelString::LoadString(const std::string& text, bool trim) {
  m_string = text;
  m_trim = trim;
  SeperateString();
}

void CZelString::LoadString(const char* text, bool trim) { LoadString(std::string(text == nullptr ? "" : text), trim); }

void CZelString::SetSeparator(char separator) {
  m_separator = separator;
  SeperateString();  // Kept: starts from the text last loaded; callers switch separators to read it another
                     // way.
}

void CZelString::SeperateString() {
  m_items.clear();
  if (m_separator == ' ') {
    SeparateAtBlanks();
    return;
  }
  const std::string_view text = m_string;
  std::size_t from = 0;
  for (std::size_t at = text.find(m_separator); at != text.npos; at = text.find(m_separator, from)) {
    AddElement(text.substr(from, at - from));
    from = at + 1;
  }
  AddElement(text.substr(from));
}

// Each run of other characters is an element; blanks alone are an empty text, which has one.
void CZelString::SeparateAtBlanks() {
  const std::string_view text = m_string;
  for (std::size_t from = text.find_first_not_of(' '); from != text.npos;) {
    const std::size_t to = std::min(text.find(' ', from), text.size());
    AddElement(text.substr(from, to - from));
    from = text.find_first_not_of(' ', to);
  }
  if (m_items.empty()) m_items.emplace_back();
}

void CZelString::AddElement(std::string_view text) { m_items.emplace_back(m_trim ? zelbase::detail::Trim(text) : text); }

const std::string* CZelString::Item(int index) const {
  return index >= 0 && index < Size() ? &m_items[static_cast<std::size_t>(index)] : nullptr;
}

std::string& CZelString::operator[](int index) { return Item(index) == nullptr ? NoItem() : m_items[static_cast<std::size_t>(index)]; }

const std::string& CZelString::operator[](int index) const {
  const std::string* const item = Item(index);
  return item == nullptr ? NoItem() : *item;
}

bool CZelString::GetItem(int index, std::string& value) const {
  const std::string* const item = Item(index);
  if (item == nullptr) return false;
  value = *item;
  return true;
}

bool CZelString::GetItem(int index, int& value) const {
  const std::string* const item = Item(index);
  return item != nullptr && ScanInt(*item, value) != 0;
}

bool CZelString::GetItem(int index, bool& value) const {
  int number = 0;
  if (!GetItem(index, number)) return false;
  value = number != 0;
  return true;
}

bool CZelString::GetItem(int index, unsigned int& value) const {
  const std::string* const item = Item(index);
  return item != nullptr && ScanUnsigned(*item, value) != 0;
}

bool CZelString::GetItem(int index, unsigned short& value) const {
  const std::string* const item = Item(index);
  return item != nullptr && ScanUnsignedShort(*item, value) != 0;
}

bool CZelString::GetItem(int index, double& value) const {
  const std::string* const item = Item(index);
  return item != nullptr && ScanDouble(*item, value) != 0;
}

bool CZelString::GetItem(int index, float& value) const {
  const std::string* const item = Item(index);
  return item != nullptr && ScanFloat(*item, value) != 0;
}

bool CZelString::SetItem(int index, const std::string& text) {
  if (index < 0 || index > kLastIndex) return false;
  if (index < Size()) {
    m_items[static_cast<std::size_t>(index)] = text;
    return true;
  }
  // `text` may be an element of this list, and growing moves those.
  std::string copy = text;
  m_items.resize(static_cast<std::size_t>(index) + 1);
  m_items.back() = std::move(copy);
  return true;
}

void CZelString::Set(int index, const char* text) { SetItem(index, text == nullptr ? "" : text); }

void CZelString::AddItem(const std::string& text) { m_items.push_back(text); }

void CZelString::Insert(int index, const std::string& text) {
  if (index < 0 || index > Size()) return;
  m_items.insert(m_items.begin() + index, text);
}

void CZelString::Erase(int first, int count) {
  if (Item(first) == nullptr || count < 1) return;
  const auto from = m_items.begin() + first;
  m_items.erase(from, from + std::min(count, Size() - first));
}

void CZelString::Clear() {
  m_items.clear();
  m_string.clear();
}

CZelString CZelString::operator+(const std::string& text) const {
  CZelString sum = *this;
  sum.AddItem(text);
  return sum;
}

CZelString& CZelString::operator+=(const std::string& text) {
  AddItem(text);
  return *this;
}

std::string CZelString::String() const { return zelbase::detail::JoinItems(m_items, m_separator); }

std::string CZelString::Left(int count) const { return zelbase::detail::LeftItems(m_items, m_separator, count); }

std::string CZelString::Right(int count) const { return zelbase::detail::RightItems(m_items, m_separator, count); }

bool CZelString::HasSubString(const std::string& text) const {
  int index = 0;
  return HasSubString(text, index);
}

bool CZelString::HasSubString(const std::string& text, int& index) const {
  // Kept: whole elements only, against the name; lists of names are searched with it.
  const int found = zelbase::detail::FindItem(m_items, text);
  if (found < 0) return false;
  index = found;
  return true;
}

bool CZelString::GetItemBoundaries(int index, int& first, int& last) const {
  const std::string* const item = Item(index);
  if (item == nullptr) return false;
  std::size_t before = 0;
  for (const std::string* other = m_items.data(); other != item; ++other) before += other->size() + 1;
  first = static_cast<int>(before);
  // Kept: -1 and not first - 1 for an empty element; callers tell emptiness by it.
  last = item->empty() ? -1 : static_cast<int>(before + item->size() - 1);
  return true;
}

int CZelString::GetElementNumber(const char* text, char separator) {
  if (text == nullptr) return -1;
  if (separator != '\0') SetSeparator(separator);
  // Kept: the text as loaded is searched, not the elements; so a trimmed element may not be found.
  const std::string all = m_separator + std::string(m_string.c_str()) + m_separator;
  const std::string part = m_separator + std::string(text) + m_separator;
  const std::size_t place = FindPart(all, part);
  if (place == all.npos) return -1;
  return static_cast<int>(std::count(all.data(), all.data() + place, m_separator));
}
