// What a settings text loses when a FileObject reads it, line by line: for whoever wants to know before trusting a file.
// FileObject.h is the store itself, which drops and merges without a word; SettingsTextEditor.h changes a text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

// How much a finding matters.
enum class SettingsSeverity : int {
  Note = 0,     // as somebody may have meant it; gone after the next save, or merely unusual
  Warning = 1,  // probably not understood as it was meant
  Loss = 2,     // a text that the store does not give back
};

enum class SettingsFindingKind : int {
  NoSeparator = 0,          // Loss: no "=" in a line inside a section, which is dropped
  NoKey = 1,                // Loss: "=" comes first, the line is dropped
  KeyRepeated = 2,          // Loss: a later line has the same key and another value; Note: the same value
  SectionRepeated = 3,      // Warning: the section had begun before; both are one
  ValueCut = 4,             // Loss: "//" in the middle of a value, such as a URL; Warning: "//" behind a blank
  HeadCut = 5,              // Loss: "//" inside a section head
  HeadNotClosed = 6,        // Loss: a head without "]" is the section with no name
  HeadTrailingText = 7,     // Warning: text behind the last "]" of a head
  SemicolonKey = 8,         // Loss: a key that begins with ";", a comment after the next save
  CommentInSection = 9,     // Note: dropped, and so gone after the next save
  EmptyValue = 10,          // Note: HasKey says that such a key is not there
  TextBeforeSections = 11,  // Note: kept as it is, and not understood as an item; Warning when it looks like one
  NoSections = 12,          // Warning: the whole text has no section head
  ByteOrderMark = 13,       // Warning: it is text to the store; a head behind it is none. Loss: UTF-16
  ZeroByte = 14,            // Warning
  ControlByte = 15,         // Warning: a byte below 32 that is no white space, or 127
  LoneCarriageReturn = 16,  // Warning: CR without LF ends no line
  Utf8Text = 17,            // Warning: bytes that are UTF-8; the store has Windows-1252
};

struct SettingsFinding {
  long long line = 0;         // from 1; 0 for the text as a whole
  long long relatedLine = 0;  // KeyRepeated: the line that wins. SectionRepeated: where the section began first. Else 0
  SettingsFindingKind kind = SettingsFindingKind::NoSeparator;
  SettingsSeverity severity = SettingsSeverity::Note;
  std::string section;  // in which the line stands; empty before the first head
  std::string key;      // when the line has one
  std::string text;     // what is lost or stands out; at most MOST_TEXT bytes, as are section and key
};

// The findings of one text.
//
//   SettingsReport report;
//   if (!report.ReadFile(name)) return false;
//   for (const SettingsFinding& finding : report.Findings())
//     std::cout << finding.line << ": " << SettingsReport::Message(finding) << '\n';
//
// Any bytes may be given. Memory is at most proportional to the text. A comment on a line that also has an item ("k = 1 // m")
// is a ValueCut; comments in Comment lines get no findings about their bytes above Note. Copies share nothing; one
// thread at a time.
class ZELBASE_API SettingsReport {
 public:
  static constexpr int MOST_FINDINGS = 10000;  // those met later are counted, and not kept
  static constexpr int MOST_TEXT = 120;        // bytes

  // Looks through a file as FileObject::FileOpen would read it. False, and an empty report, when it cannot be opened or
  // read; nothing enters the error list, nothing throws.
  bool ReadFile(const std::string& fileName);

  // The same for a text in memory.
  void ReadText(std::string_view text);

  // In the order of the lines.
  const std::vector<SettingsFinding>& Findings() const;

  // All of that severity, those that were not kept included.
  long long NumFindings(SettingsSeverity severity) const;

  // Lines of the text; distinct sections, the checksum included; and items as the store has them.
  long long NumLines() const;
  long long NumSections() const;
  long long NumItems() const;

  // A sentence for people, without the line number. Bytes that do not print are shown as "\xNN".
  static std::string Message(const SettingsFinding& finding);

 private:
  class Builder;

  std::vector<SettingsFinding> m_findings;
  long long m_counts[3] = {};
  long long m_lines = 0;
  long long m_sections = 0;
  long long m_items = 0;
};
