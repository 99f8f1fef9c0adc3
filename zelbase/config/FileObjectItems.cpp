// The items of a FileObject: look-up, and the typed forms at the edge.
#include <algorithm>
#include <utility>

#include "zelbase/config/FileObject.h"
#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/errors/detail/FillText.h"
#include "zelbase/frame/NumericHelpers.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/detail/IntendedWraps.h"

using zelbase::detail::ItemMap;
using zelbase::detail::SectionMap;

namespace {

constexpr int kMostDecimals = 16;

bool IsHexadecimal(std::string_view text) {
  // Kept: "0x" counts wherever it stands, so "10 0x" is 16.
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i - 1] == '0' && (text[i] == 'x' || text[i] == 'X')) return true;
  }
  return false;
}

// "%u", or "%x" for a hexadecimal text; always 32 bits.
bool ParseUnsigned(std::string_view text, unsigned int& value) {
  unsigned int decimal = 0;
  const std::size_t taken = zelbase::detail::ScanUnsigned(text, decimal);
  // A number that fills its text leaves no place for an "x", so that most texts are looked at once.
  if (taken != text.size() && IsHexadecimal(text)) return zelbase::detail::ScanHex(text, value) != 0;
  if (taken == 0) return false;
  value = decimal;
  return true;
}

// "%d", or "%x": the same bits.
bool ParseInt(std::string_view text, int& value) {
  unsigned int bits = 0;
  if (!ParseUnsigned(text, bits)) return false;
  value = static_cast<int>(bits);
  return true;
}

// "%d, %d, %d": a comma follows its number at once, white space may follow the comma.
ZELBASE_WRAPS bool ParseColour(std::string_view text, unsigned int& colour) {
  unsigned int sum = 0;
  for (unsigned int shift = 0; shift <= 16; shift += 8) {
    if (shift != 0) {
      if (text.empty() || text.front() != ',') return false;
      text.remove_prefix(1);
    }
    int part = 0;
    const std::size_t taken = zelbase::detail::ScanInt(text, part);
    if (taken == 0) return false;
    text.remove_prefix(taken);
    // Kept: added unmasked, so that "300, 0, 0" is 300; in 32 bits, where a colour lives.
    sum += static_cast<unsigned int>(part) << shift;
  }
  colour = sum;
  return true;
}

}  // namespace

bool FileObject::SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) {
  SetErrorStatus(FOBJ_OK);
  ItemMap* items = m_sections->FindItems(section);
  if (items == nullptr) {
    if (!createSection) {
      SetErrorStatus(FOBJ_SECTION_NOT_FOUND);
      return false;
    }
    items = m_sections->Add(section).items.get();
  }
  items->Set(key, value);
  return true;
}

bool FileObject::SetItem(const std::string& section, const std::string& key, const char* value, bool createSection) {
  return SetItem(section, key, std::string(value != nullptr ? value : ""), createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, int value, bool createSection) {
  return SetItem(section, key, static_cast<long long>(value), createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, unsigned int value, bool createSection) {
  return SetItem(section, key, static_cast<unsigned long long>(value), createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, long value, bool createSection) {
  return SetItem(section, key, static_cast<long long>(value), createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, unsigned long value, bool createSection) {
  std::string text;
  for (unsigned int shift = 0; shift <= 16; shift += 8) {
    if (shift != 0) text += ", ";
    zelbase::detail::AppendUnsigned(text, (value >> shift) & 0xFF);
  }
  return SetItem(section, key, text, createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, bool value, bool createSection) {
  return SetItem(section, key, std::string(1, value ? '1' : '0'), createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, double value, bool createSection) {
  std::string text;
  // Kept: at most 16 decimals, so that a very small number is stored as zeros.
  zelbase::detail::AppendFixed(text, value, std::min(GetDoublePrecision(value), kMostDecimals));
  return SetItem(section, key, text, createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, long long value, bool createSection) {
  std::string text;
  zelbase::detail::AppendInt(text, value);
  return SetItem(section, key, text, createSection);
}

bool FileObject::SetItem(const std::string& section, const std::string& key, unsigned long long value, bool createSection) {
  std::string text;
  zelbase::detail::AppendUnsigned(text, value);
  return SetItem(section, key, text, createSection);
}

// Stores the status 0, then finds the item or fails as GetItem does.
bool FileObject::FindItem(const std::string& section, const std::string& key, std::string_view& value) const {
  SetErrorStatus(FOBJ_OK);
  const ItemMap* const items = m_sections->FindItems(section);
  if (items == nullptr) return FailItem(FOBJ_SECTION_NOT_FOUND, section, key);
  return items->Find(key, value) || FailItem(FOBJ_KEY_NOT_FOUND, section, key);
}

// Kept: what is thrown is a plain text, and the status is 0 then; callers catch a std::string.
bool FileObject::FailItem(int status, const std::string& section, const std::string& key) const {
  if (m_throwExceptions) {
    throw zelbase::detail::FillText(NumberedText(12038), {section, key, m_fileName.empty() ? NumberedText(12039) : m_fileName});
  }
  SetErrorStatus(status);
  return false;
}

template <class Parse>
bool FileObject::GetParsed(const std::string& section, const std::string& key, Parse parse) const {
  std::string_view text;
  if (!FindItem(section, key, text)) return false;
  return parse(text) || FailItem(FOBJ_BAD_VALUE, section, key);
}

bool FileObject::GetItem(const std::string& section, const std::string& key, std::string& value) const {
  std::string_view text;
  if (!FindItem(section, key, text)) return false;
  value = text;
  return true;
}

bool FileObject::GetItem(const std::string& section, const std::string& key, int& value) const {
  return GetParsed(section, key, [&](std::string_view text) { return ParseInt(text, value); });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, unsigned int& value) const {
  return GetParsed(section, key, [&](std::string_view text) { return ParseUnsigned(text, value); });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, long& value) const {
  return GetParsed(section, key, [&](std::string_view text) {
    int number = 0;
    if (!ParseInt(text, number)) return false;
    value = number;
    return true;
  });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, unsigned long& value) const {
  return GetParsed(section, key, [&](std::string_view text) {
    unsigned int colour = 0;
    if (!ParseColour(text, colour)) return false;
    value = colour;
    return true;
  });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, bool& value) const {
  return GetParsed(section, key, [&](std::string_view text) {
    int number = 0;
    if (zelbase::detail::ScanInt(text, number) == 0) return false;
    value = number != 0;
    return true;
  });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, double& value) const {
  return GetParsed(section, key, [&](std::string_view text) { return zelbase::detail::ScanDouble(text, value) != 0; });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, float& value) const {
  return GetParsed(section, key, [&](std::string_view text) { return zelbase::detail::ScanFloat(text, value) != 0; });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, long long& value) const {
  return GetParsed(section, key, [&](std::string_view text) { return zelbase::detail::ScanInt64(text, value) != 0; });
}

bool FileObject::GetItem(const std::string& section, const std::string& key, unsigned long long& value) const {
  return GetParsed(section, key, [&](std::string_view text) { return zelbase::detail::ScanUnsigned64(text, value) != 0; });
}

bool FileObject::DeleteItem(const std::string& section, const std::string& key, bool deleteEmptySection) {
  SetErrorStatus(FOBJ_OK);
  ItemMap* const items = m_sections->FindItems(section);
  if (items == nullptr) {
    // Kept: 4 on an object without any section, too, where DeleteSection has 2.
    SetErrorStatus(FOBJ_SECTION_NOT_FOUND);
    return false;
  }
  if (!items->Remove(key)) {
    SetErrorStatus(FOBJ_ITEM_NOT_DELETED);
    return false;
  }
  return items->Size() == 0 && deleteEmptySection ? DeleteSection(section) : true;
}

bool FileObject::HasKey(const std::string& section, const std::string& key) const {
  std::string_view value;
  // Kept: an empty value counts as absent here.
  return Peek(section, key, value) && !value.empty();
}

bool FileObject::Peek(const std::string& section, const std::string& key, std::string_view& value) const {
  const ItemMap* const items = m_sections->FindItems(section);
  return items != nullptr && items->Find(key, value);
}

bool FileObject::HasEqualItems(const std::string& section, const FileObject& other) const {
  const ItemMap* const items = m_sections->FindItems(section);
  const ItemMap* const others = other.m_sections->FindItems(section);
  if (items == nullptr || others == nullptr || items->Size() != others->Size()) return false;
  zelbase::detail::TableWalk walk = items->Begin();
  std::string_view key;
  std::string_view value;
  while (items->Next(walk, key, value)) {
    std::string_view found;
    if (!others->Find(key, found) || found != value) return false;
  }
  return true;
}
