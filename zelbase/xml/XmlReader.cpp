#include "zelbase/xml/XmlReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <limits>
#include <map>
#include <memory>

#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kLongestNames = std::size_t{64} << 20;  // of all attributes of a tag, in bytes
constexpr std::size_t kFewAttributes = 16;                    // up to this many are compared each with each

// Kept: these four only; form feed, vertical tab and zero are ordinary characters.
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

const char* FindByte(const char* begin, const char* end, char c) {
  if (begin == end) return nullptr;
  return static_cast<const char*>(std::memchr(begin, c, static_cast<std::size_t>(end - begin)));
}

const char* SkipBlanks(const char* at, const char* end) {
  while (at != end && IsBlank(*at)) ++at;
  return at;
}

constexpr std::array<bool, 256> MakePlain() {
  std::array<bool, 256> plain{};
  plain.fill(true);
  for (const char c : {' ', '\t', '\r', '\n', '<', '>', '/', '=', '"', '?', '!'}) plain[static_cast<unsigned char>(c)] = false;
  return plain;
}

// The characters of a name that no rule gives a meaning to.
constexpr std::array<bool, 256> kPlain = MakePlain();

const char* SkipPlain(const char* at, const char* end) {
  while (at != end && kPlain[static_cast<unsigned char>(*at)]) ++at;
  return at;
}

std::string_view Between(const char* begin, const char* end) { return {begin, static_cast<std::size_t>(end - begin)}; }

// The character that a reference stands for; 0 for an unknown one. Kept: names in lower case only.
char ReferenceCharacter(std::string_view name) {
  if (name == "quot") return '"';
  if (name == "amp") return '&';
  if (name == "apos") return '\'';
  if (name == "lt") return '<';
  if (name == "gt") return '>';
  return 0;
}

// Appends `text` with its references replaced. kNone, or the place of the first unknown one; `target` then holds the front.
std::size_t ReplaceEntityRefs(std::string_view text, std::string& target) {
  std::size_t copied = 0;
  for (std::size_t at = text.find('&'); at != kNone; at = text.find('&', copied)) {
    const std::size_t end = text.find(';', at);
    const char c = end == kNone ? char{0} : ReferenceCharacter(text.substr(at + 1, end - at - 1));
    if (c == 0) return at;
    target.append(text, copied, at - copied);
    target += c;
    copied = end + 1;  // Kept: what a reference gave is not looked at again
  }
  target.append(text, copied);
  return kNone;
}

std::string_view GetTagName(std::string_view tag) {
  if (tag.front() == '/') tag.remove_prefix(1);
  std::size_t length = 0;
  while (length < tag.size() && tag[length] != '/' && !IsBlank(tag[length])) ++length;
  return tag.substr(0, length);
}

// A slow connection gives less than asked for. False for a file that fails, or has become shorter.
bool ReadAll(PlatformFile& file, char* data, std::size_t length) {
  std::size_t done = 0;
  for (; length > 0; data += done, length -= done) {
    if (file.Read(data, length, done) != FileResult::Ok || done == 0) return false;
  }
  return true;
}

// Of names that are not empty; tells most of them apart without a call.
bool IsSameName(std::string_view a, std::string_view b) { return a.size() == b.size() && a[0] == b[0] && a == b; }

// By length first: names that run into each other have the same front, and would be long to compare.
struct ShorterFirst {
  bool operator()(std::string_view a, std::string_view b) const { return a.size() != b.size() ? a.size() < b.size() : a < b; }
};

}  // namespace

bool XmlReader::ReadFile(const char* path) {
  const std::string name(path == nullptr ? "" : path);  // before the target goes: it may lie there
  m_root.Clear();
  if (path == nullptr) return Report(XmlFault::CannotOpen, nullptr);
  FileResult result = FileResult::Ok;
  const auto file = PlatformService<PlatformFiles>::Current().Open({.path = name}, result);
  if (file == nullptr) return Report(XmlFault::CannotOpen, nullptr);
  long long size = 0;
  if (file->GetSize(size) != FileResult::Ok || size < 0) return Report(XmlFault::CannotRead, nullptr);
  if (size > std::numeric_limits<unsigned int>::max()) return Report(XmlFault::TooLarge, nullptr);
  const auto length = static_cast<std::size_t>(size);
  const auto data = std::make_unique_for_overwrite<char[]>(length);
  if (!ReadAll(*file, data.get(), length)) return Report(XmlFault::CannotRead, nullptr);
  return ReadData(data.get(), static_cast<unsigned int>(length));
}

bool XmlReader::ReadData(const char* data, unsigned int length) {
  m_root.Clear();
  if (data == nullptr && length > 0) return Report(XmlFault::CannotRead, nullptr);
  m_report = XmlReport{};
  Forget();
  m_begin = data;
  m_cursor = data;
  m_end = data + length;
  // Whatever is half read goes, also when there is no memory for the rest.
  struct Leave {
    XmlReader& reader;
    bool complete = false;
    ~Leave() {
      reader.Forget();
      if (!complete) reader.m_root.Clear();
    }
  } leave{*this};
  for (std::string_view tag; FindNextTag();) {
    if (TakePlainTag()) continue;
    if (!CutTag(tag)) break;
    if (!ParseTag(tag)) return false;
  }
  NoteTheEnd();
  while (!m_open.empty()) CloseInnermost();
  leave.complete = true;
  return true;  // Kept: also when the text ended in the middle, or its reading did
}

void XmlReader::Forget() {
  m_elements = {};
  m_open = {};
  m_found = {};
}

void XmlReader::NoteTheEnd() {
  if (m_report.fault != XmlFault::None) return;
  if (!m_root.HasName()) {
    Report(XmlFault::NoElement, m_end);
  } else if (!m_open.empty()) {
    Report(XmlFault::ElementsLeftOpen, m_end);
  }
}

// Always false. `place` lies in the text that is read; null for none.
ZELBASE_WRAPS bool XmlReader::Report(XmlFault fault, const char* place) {
  m_report = XmlReport{fault, 0, 0};
  if (place == nullptr) return false;
  const std::string_view before = Between(m_begin, place);
  m_report.line = static_cast<unsigned int>(1 + std::count(before.begin(), before.end(), '\n'));
  m_report.column = static_cast<unsigned int>(before.size() - (before.rfind('\n') + 1) + 1);
  return false;
}

// Hands the text before the next tag to the innermost open element, and goes behind the tag's "<". False at the end of the
// reading.
bool XmlReader::FindNextTag() {
  const char* open = SkipBlanks(m_cursor, m_end);
  if (open == m_end) return false;
  if (*open != '<') {
    open = FindByte(open, m_end, '<');
    if (open == nullptr) return false;  // Kept: text behind the last tag is dropped
    if (!TakeText(Between(m_cursor, open))) return false;
  }
  m_cursor = open + 1;
  return true;
}

// `text` is not all white space. False for an unknown reference.
bool XmlReader::TakeText(std::string_view text) {
  std::string replaced;
  const bool references = text.find('&') != kNone;
  if (references) {
    const std::size_t fault = ReplaceEntityRefs(text, replaced);
    // Kept: outside the root as well
    if (fault != kNone) return Report(XmlFault::UnknownTextReference, text.data() + fault);
  }
  if (m_open.empty()) return true;
  const bool first = Innermost().m_text.empty() && m_elements.size() == m_open.back();
  std::string& target = first ? Innermost().m_text : m_elements.emplace_back().m_text;
  if (references) {
    target = std::move(replaced);
  } else {
    target.assign(text);
  }
  return true;
}

// The ordinary tag, as it is written by nearly everybody: a name, attributes each with one blank or more before it and nothing
// around its "=", no references. Takes it in one pass and goes behind it; takes nothing, and gives false, for any other.
bool XmlReader::TakePlainTag() {
  if (m_cursor == m_end) return false;
  if (*m_cursor == '/') return TakePlainClosing();
  if (m_open.empty() && m_root.HasName()) return false;
  const char* const nameEnd = SkipPlain(m_cursor, m_end);
  if (nameEnd == m_cursor) return false;
  const char* end = TakePlainAttributes(nameEnd);
  if (end == nullptr) return false;
  const bool open = *end == '>';
  if (!open && (++end == m_end || *end != '>')) return false;
  AddElement(Between(m_cursor, nameEnd), open, false);
  m_cursor = end + 1;
  return true;
}

bool XmlReader::TakePlainClosing() {
  if (m_open.empty()) return false;
  const std::string& name = Innermost().m_name;
  const char* const begin = m_cursor + 1;
  if (static_cast<std::size_t>(m_end - begin) <= name.size() || begin[name.size()] != '>') return false;
  if (Between(begin, begin + name.size()) != name) return false;
  m_cursor = begin + name.size() + 1;
  CloseInnermost();
  return true;
}

// From behind the tag's name or an attribute on. Where "/" or ">" stands behind the last one; null for what is not plain.
const char* XmlReader::TakePlainAttributes(const char* at) {
  std::size_t namesLength = 0;
  for (m_found.clear();;) {
    const char* const name = SkipBlanks(at, m_end);
    if (name == m_end) return nullptr;
    if (*name == '>' || *name == '/') return name;
    const char* const equals = SkipPlain(name, m_end);
    if (name == at || equals == name || m_end - equals < 2 || equals[0] != '=' || equals[1] != '"') return nullptr;
    const char* const value = equals + 2;
    at = value;
    while (at != m_end && *at != '"' && *at != '>' && *at != '&') ++at;
    if (at == m_end || *at != '"') return nullptr;
    namesLength += static_cast<std::size_t>(equals - name);
    if (namesLength > kLongestNames) return nullptr;
    m_found.push_back({Between(name, equals), Between(value, at)});
    ++at;
  }
}

// Any tag: what stands between "<" and the ">" that ends it. False if it does not end.
bool XmlReader::CutTag(std::string_view& tag) {
  const char* close = FindByte(m_cursor, m_end, '>');  // Kept: a ">" within a value as well
  if (close != nullptr && Between(m_cursor, close).starts_with("!--")) {
    // Kept: "!--" and "!---" are no whole comments
    while (close != nullptr && (close - m_cursor < 5 || close[-1] != '-' || close[-2] != '-')) {
      close = FindByte(close + 1, m_end, '>');
    }
  }
  if (close == nullptr) return Report(XmlFault::UnfinishedTag, m_cursor - 1);
  tag = Between(m_cursor, close);
  m_cursor = close + 1;
  return true;
}

bool XmlReader::ParseTag(std::string_view tag) {
  if (tag.empty()) return Report(XmlFault::EmptyTag, tag.data());
  if (tag.front() == '?' || tag.front() == '!') return true;
  const std::string_view name = GetTagName(tag);
  if (name.empty()) return Report(XmlFault::NoTagName, tag.data());
  return tag.front() == '/' ? CloseElement(tag, name) : OpenElement(tag, name);
}

bool XmlReader::OpenElement(std::string_view tag, std::string_view name) {
  if (m_open.empty() && m_root.HasName()) return Report(XmlFault::SecondRoot, tag.data());
  const bool references = tag.find('&') != kNone;
  if (!ParseAttributes(tag, references)) return false;
  AddElement(name, tag.back() != '/', references);  // Kept: the last character alone
  return true;
}

bool XmlReader::CloseElement(std::string_view tag, std::string_view name) {
  if (m_open.empty()) return Report(XmlFault::NothingToClose, tag.data());
  if (Innermost().m_name != name) return Report(XmlFault::WrongClosingName, tag.data());
  CloseInnermost();
  return true;
}

void XmlReader::CloseInnermost() {
  const std::size_t first = m_open.back();
  if (first == 0 && m_elements.capacity() <= 2 * m_elements.size()) {
    m_root.m_elements = std::move(m_elements);
    m_elements.clear();
  } else if (first < m_elements.size()) {
    const auto children = m_elements.begin() + static_cast<std::ptrdiff_t>(first);
    Innermost().m_elements.assign(std::make_move_iterator(children), std::make_move_iterator(m_elements.end()));
    m_elements.erase(children, m_elements.end());
  }
  m_open.pop_back();
}

// From the "=" signs. A name ends at the last character before "=" that is not white space, and begins behind the last white
// space before that; `lastBlank` is the one before `searched`, so that no character is searched for it twice.
bool XmlReader::ParseAttributes(std::string_view tag, bool references) {
  m_found.clear();
  std::size_t searched = 0, lastBlank = kNone, namesLength = 0;
  std::string ignored;
  for (std::size_t equals = tag.find('='); equals != kNone;) {
    std::size_t nameEnd = equals;
    while (nameEnd > 0 && IsBlank(tag[nameEnd - 1])) --nameEnd;
    if (nameEnd == 0) return Report(XmlFault::AttributeWithoutName, tag.data() + equals);
    std::size_t nameBegin = nameEnd - 1;
    while (nameBegin > searched && !IsBlank(tag[nameBegin - 1])) --nameBegin;
    if (nameBegin > searched) lastBlank = nameBegin - 1;
    if (lastBlank == kNone) return Report(XmlFault::AttributeWithoutBlank, tag.data() + equals);
    nameBegin = lastBlank + 1;  // Kept: across an earlier attribute, when no blank is between
    searched = nameEnd;

    const std::size_t opening = tag.find('"', equals + 1);  // Kept: wherever it is; apostrophes are nothing
    const std::size_t closing = opening == kNone ? kNone : tag.find('"', opening + 1);
    if (closing == kNone) return Report(XmlFault::AttributeWithoutQuotes, tag.data() + equals);
    const std::string_view value = tag.substr(opening + 1, closing - opening - 1);
    if (references) {
      ignored.clear();
      const std::size_t fault = ReplaceEntityRefs(value, ignored);
      if (fault != kNone) return Report(XmlFault::UnknownAttributeReference, value.data() + fault);
    }
    namesLength += nameEnd - nameBegin;
    if (namesLength > kLongestNames) return Report(XmlFault::AttributeNamesTooLong, tag.data() + equals);
    m_found.push_back({tag.substr(nameBegin, nameEnd - nameBegin), value});
    equals = tag.find('=', closing + 1);
  }
  return true;
}

// The first of a name keeps its place and gets the last one's value.
void XmlReader::DropRepeatedNames() {
  std::map<std::string_view, std::size_t, ShorterFirst> places;
  const bool few = m_found.size() <= kFewAttributes;
  std::size_t kept = 0;
  for (const Found found : m_found) {
    const auto same = [&](const Found& other) { return IsSameName(other.name, found.name); };
    const auto end = m_found.begin() + static_cast<std::ptrdiff_t>(kept);
    const std::size_t place = few ? static_cast<std::size_t>(std::find_if(m_found.begin(), end, same) - m_found.begin())
                                  : places.emplace(found.name, kept).first->second;
    m_found[place] = {found.name, found.value};
    if (place == kept) ++kept;
  }
  m_found.resize(kept);
}

// With the attributes that were found; `references`: there may be some in their values, all of them known.
void XmlReader::AddElement(std::string_view name, bool open, bool references) {
  XmlElement& element = m_open.empty() ? m_root : m_elements.emplace_back();
  element.m_name.assign(name);
  if (open) m_open.push_back(m_elements.size());
  if (m_found.size() > 1) DropRepeatedNames();
  element.m_attributes.reserve(m_found.size());
  for (const Found& found : m_found) {
    if (references) {
      ReplaceEntityRefs(found.value, element.m_attributes.emplace_back(found.name, std::string_view{}).second);
    } else {
      element.m_attributes.emplace_back(found.name, found.value);
    }
  }
}
