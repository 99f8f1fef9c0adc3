#include "zelbase/config/SettingsReport.h"

#include <algorithm>
#include <utility>

#include "zelbase/config/detail/OrderedTable.h"
#include "zelbase/config/detail/SettingsSyntax.h"
#include "zelbase/config/detail/TextHash.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CFile.h"

using zelbase::detail::HashText;
using zelbase::detail::IsSpace;
using zelbase::detail::OrderedTable;
using zelbase::detail::ScanSettingsLine;
using zelbase::detail::SettingsLine;
using zelbase::detail::SettingsLineKind;
using zelbase::detail::TableEntry;
using Kind = SettingsFindingKind;
using Severity = SettingsSeverity;

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string Clip(std::string_view text) {
  if (text.size() <= SettingsReport::MOST_TEXT) return std::string(text);
  return std::string(text.substr(0, SettingsReport::MOST_TEXT - 3)) + "...";
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The length of the well-formed UTF-8 sequence of two to four bytes at the front, or 0. The first byte is 0xC2 or more.
std::size_t Utf8Length(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = first <= 0xDF ? 2 : first <= 0xEF ? 3 : first <= 0xF4 ? 4 : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsContinuation(text[i])) return 0;
  }
  return length;
}

// What bytes a line holds that are not plain text.
struct ByteKinds {
  bool zero = false;
  bool control = false;
  bool carriageReturn = false;
  bool utf8 = false;
};

ByteKinds LookAtBytes(std::string_view line) {
  ByteKinds found;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const auto byte = static_cast<unsigned char>(line[i]);
    found.zero |= byte == 0;
    found.carriageReturn |= byte == '\r';
    found.control |= (byte != 0 && byte < 32 && !IsSpace(line[i])) || byte == 127;
    if (byte >= 0xC2 && !found.utf8) found.utf8 = Utf8Length(line.substr(i)) != 0;
  }
  return found;
}

void AppendPrintable(std::string& message, std::string_view text) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 32 && byte != 127) {
      message += c;
      continue;
    }
    message += "\\x";
    zelbase::detail::AppendHex(message, byte, 2);
  }
}

// Words of Message: "%t" stands for the text, "%k" for the key, "%s" for the section, "%r" for the other line.
const char* Wording(const SettingsFinding& finding) {
  switch (finding.kind) {
    case Kind::NoSeparator: return "dropped, there is no \"=\": \"%t\"";
    case Kind::NoKey: return "dropped, nothing stands before \"=\": \"%t\"";
    case Kind::KeyRepeated:
      return finding.severity == Severity::Note ? "\"%k\" of [%s] stands here and again with the same value; line %r wins"
                                                : "\"%k\" of [%s] is given again, line %r wins; lost here: \"%t\"";
    case Kind::SectionRepeated: return "[%s] began in line %r already, both become one section";
    case Kind::ValueCut: return "the value of \"%k\" is cut at \"//\"; not read: \"%t\"";
    case Kind::HeadCut: return "the section head is cut at \"//\"; not read: \"%t\"";
    case Kind::HeadNotClosed: return "a section head without \"]\" is the section with no name: \"%t\"";
    case Kind::HeadTrailingText: return "text behind the head of [%s] is not read: \"%t\"";
    case Kind::SemicolonKey: return "the key begins with \";\"; the next save turns the line into a comment: \"%k\"";
    case Kind::CommentInSection: return "this comment is gone after a save by the store: \"%t\"";
    case Kind::EmptyValue: return "\"%k\" of [%s] has no value and counts as absent where that is asked";
    case Kind::TextBeforeSections:
      return finding.severity == Severity::Note ? "text before the first section is kept: \"%t\""
                                                : "an item before the first section is kept, but not read: \"%t\"";
    case Kind::NoSections: return "there is no section at all";
    case Kind::ByteOrderMark:
      return finding.severity == Severity::Loss ? "the text is UTF-16, which cannot be read"
                                                : "the text begins with a byte order mark, which counts as text";
    case Kind::ZeroByte: return "zero byte in \"%t\"";
    case Kind::ControlByte: return "control character in \"%t\"";
    case Kind::LoneCarriageReturn: return "a carriage return alone ends no line: \"%t\"";
    case Kind::Utf8Text: return "this is UTF-8, and will be shown as Windows-1252: \"%t\"";
  }
  return "%t";
}

}  // namespace

// Takes one line after the other and keeps what it must remember of them.
class SettingsReport::Builder {
 public:
  explicit Builder(SettingsReport& report) : m_report(report) {}

  void TakeLine(std::string_view line);
  void Finish();

 private:
  struct Section : TableEntry {
    std::string name;
    long long firstLine = 0;
  };
  struct Item : TableEntry {
    std::string key;
    std::string value;
    std::uint64_t section = 0;
    long long lastLine = 0;
  };

  void Add(Kind kind, Severity severity, std::string_view text, std::string_view key = {});
  void AddAt(long long line, std::uint64_t item, Kind kind, Severity severity, std::string_view text, std::string_view key);
  void TakeHead(const SettingsLine& parts);
  void TakeItem(const SettingsLine& parts);
  void TakeOther(const SettingsLine& parts, std::string_view line);
  void TakeText(const SettingsLine& parts, std::string_view line);
  void TakeBytes(const SettingsLine& parts, std::string_view line);
  void CountRepeat(const SettingsLine& parts);

  SettingsReport& m_report;
  OrderedTable<Section> m_sections;
  OrderedTable<Item> m_items;
  std::vector<std::uint64_t> m_itemOfFinding;  // beside m_findings; 0 for none
  std::uint64_t m_section = 0;                 // number of the section that the reader is in; 0 before the first
  std::string m_sectionName;
};

void SettingsReport::Builder::Add(Kind kind, Severity severity, std::string_view text, std::string_view key) {
  AddAt(m_report.m_lines, 0, kind, severity, text, key);
}

void SettingsReport::Builder::AddAt(long long line, std::uint64_t item, Kind kind, Severity severity, std::string_view text,
                                    std::string_view key) {
  ++m_report.m_counts[static_cast<int>(severity)];
  if (m_report.m_findings.size() >= MOST_FINDINGS) return;
  m_report.m_findings.push_back({line, 0, kind, severity, Clip(m_sectionName), Clip(key), Clip(text)});
  m_itemOfFinding.push_back(item);
}

void SettingsReport::Builder::TakeLine(std::string_view line) {
  ++m_report.m_lines;
  const SettingsLine parts = ScanSettingsLine(line);
  if (parts.kind == SettingsLineKind::Section) {
    TakeHead(parts);
  } else if (m_section == 0) {
    TakeText(parts, line);
  } else if (parts.kind == SettingsLineKind::Item) {
    TakeItem(parts);
  } else {
    TakeOther(parts, line);
  }
  TakeBytes(parts, line);
}

void SettingsReport::Builder::TakeHead(const SettingsLine& parts) {
  const std::uint32_t hash = HashText(parts.name);
  Section* section = m_sections.Find(hash, [&](const Section& known) { return known.name == parts.name; });
  const bool repeated = section != nullptr;
  if (!repeated) {
    section = &m_sections.Append(hash);
    section->name = parts.name;
    section->firstLine = m_report.m_lines;
  }
  m_section = section->number;
  m_sectionName = parts.name;
  if (repeated) {
    const std::size_t before = m_report.m_findings.size();
    Add(Kind::SectionRepeated, Severity::Warning, {});
    if (m_report.m_findings.size() != before) m_report.m_findings.back().relatedLine = section->firstLine;
  }
  if (!parts.closed) {
    Add(parts.cut.empty() ? Kind::HeadNotClosed : Kind::HeadCut, Severity::Loss, parts.cut.empty() ? parts.content : parts.cut);
    return;
  }
  // "[", the name with its blanks, "]".
  const std::string_view behind = zelbase::detail::Trim(parts.content.substr(parts.value.size() + 2));
  if (!behind.empty()) Add(Kind::HeadTrailingText, Severity::Warning, behind);
}

void SettingsReport::Builder::TakeItem(const SettingsLine& parts) {
  CountRepeat(parts);
  if (parts.name.front() == ';') Add(Kind::SemicolonKey, Severity::Loss, parts.content, parts.name);
  if (!parts.cut.empty()) {
    // Behind a blank it looks like a comment that was meant as one.
    const bool meant = IsSpace(parts.content.back()) || parts.value.empty();
    Add(Kind::ValueCut, meant ? Severity::Warning : Severity::Loss, parts.cut, parts.name);
  }
  if (parts.value.empty()) Add(Kind::EmptyValue, Severity::Note, {}, parts.name);
}

void SettingsReport::Builder::CountRepeat(const SettingsLine& parts) {
  const std::uint32_t hash = HashText(parts.name) ^ static_cast<std::uint32_t>(m_section * 0x9E3779B1U);
  Item* const known = m_items.Find(hash, [&](const Item& item) { return item.section == m_section && item.key == parts.name; });
  if (known == nullptr) {
    Item& added = m_items.Append(hash);
    added.key = parts.name;
    added.value = parts.value;
    added.section = m_section;
    added.lastLine = m_report.m_lines;
    return;
  }
  const Severity severity = known->value == parts.value ? Severity::Note : Severity::Loss;
  AddAt(known->lastLine, known->number, Kind::KeyRepeated, severity, known->value, parts.name);
  known->value = parts.value;
  known->lastLine = m_report.m_lines;
}

void SettingsReport::Builder::TakeOther(const SettingsLine& parts, std::string_view line) {
  if (parts.kind == SettingsLineKind::Comment) Add(Kind::CommentInSection, Severity::Note, line);
  if (parts.kind == SettingsLineKind::NoSeparator) Add(Kind::NoSeparator, Severity::Loss, line);
  if (parts.kind == SettingsLineKind::NoKey) Add(Kind::NoKey, Severity::Loss, line);
}

void SettingsReport::Builder::TakeText(const SettingsLine& parts, std::string_view line) {
  if (parts.kind == SettingsLineKind::Blank || parts.kind == SettingsLineKind::Comment) return;
  Add(Kind::TextBeforeSections, parts.kind == SettingsLineKind::Item ? Severity::Warning : Severity::Note, line);
}

void SettingsReport::Builder::TakeBytes(const SettingsLine& parts, std::string_view line) {
  if (m_report.m_lines == 1) {
    if (line.starts_with(kUtf8Mark)) Add(Kind::ByteOrderMark, Severity::Warning, line.substr(0, 3));
    if (line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF")) Add(Kind::ByteOrderMark, Severity::Loss, line);
  }
  const ByteKinds found = LookAtBytes(line);
  const Severity severity = parts.kind == SettingsLineKind::Comment ? Severity::Note : Severity::Warning;
  const std::string_view key = parts.kind == SettingsLineKind::Item ? parts.name : std::string_view();
  if (found.zero) Add(Kind::ZeroByte, severity, line, key);
  if (found.control) Add(Kind::ControlByte, severity, line, key);
  if (found.carriageReturn) Add(Kind::LoneCarriageReturn, severity, line, key);
  if (found.utf8) Add(Kind::Utf8Text, severity, line, key);
}

void SettingsReport::Builder::Finish() {
  m_report.m_sections = static_cast<long long>(m_sections.Size());
  m_report.m_items = static_cast<long long>(m_items.Size());
  std::vector<SettingsFinding>& findings = m_report.m_findings;
  for (std::size_t i = 0; i < findings.size(); ++i) {
    if (m_itemOfFinding[i] == 0) continue;
    std::size_t hint = static_cast<std::size_t>(m_itemOfFinding[i]) - 1;
    findings[i].relatedLine = m_items.FindNumber(m_itemOfFinding[i], hint)->lastLine;  // none was ever removed
  }
  std::stable_sort(findings.begin(), findings.end(), [](const SettingsFinding& a, const SettingsFinding& b) { return a.line < b.line; });
  if (m_report.m_sections != 0) return;
  ++m_report.m_counts[static_cast<int>(Severity::Warning)];
  SettingsFinding whole;
  whole.kind = Kind::NoSections;
  whole.severity = Severity::Warning;
  findings.insert(findings.begin(), std::move(whole));
}

bool SettingsReport::ReadFile(const std::string& fileName) {
  *this = SettingsReport();
  try {
    CFile file;
    if (!file.Open(fileName, CFile::modeRead | CFile::shareDenyNone, nullptr)) return false;
    CArchive archive(&file, CArchive::load);
    Builder builder(*this);
    std::string_view line;
    while (archive.ReadLine(line)) builder.TakeLine(line);
    builder.Finish();
  } catch (const CFileException&) {
    *this = SettingsReport();
    return false;
  }
  return true;
}

void SettingsReport::ReadText(std::string_view text) {
  *this = SettingsReport();
  Builder builder(*this);
  std::string_view line;
  while (zelbase::detail::TakeSettingsLine(text, line)) builder.TakeLine(line);
  builder.Finish();
}

const std::vector<SettingsFinding>& SettingsReport::Findings() const { return m_findings; }

long long SettingsReport::NumFindings(SettingsSeverity severity) const {
  const int index = static_cast<int>(severity);
  return index >= 0 && index <= 2 ? m_counts[index] : 0;
}

long long SettingsReport::NumLines() const { return m_lines; }
long long SettingsReport::NumSections() const { return m_sections; }
long long SettingsReport::NumItems() const { return m_items; }

std::string SettingsReport::Message(const SettingsFinding& finding) {
  std::string message;
  for (const char* word = Wording(finding); *word != '\0'; ++word) {
    if (*word != '%') {
      message += *word;
      continue;
    }
    switch (*++word) {
      case 't': AppendPrintable(message, finding.text); break;
      case 'k': AppendPrintable(message, finding.key); break;
      case 's': AppendPrintable(message, finding.section); break;
      default: zelbase::detail::AppendInt(message, finding.relatedLine); break;
    }
  }
  return message;
}
