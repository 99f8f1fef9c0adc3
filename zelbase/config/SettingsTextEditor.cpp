#include "zelbase/config/SettingsTextEditor.h"

#include <algorithm>
#include <utility>

#include "zelbase/config/FileObject.h"
#include "zelbase/config/detail/ReplacingFile.h"
#include "zelbase/config/detail/SettingsMap.h"
#include "zelbase/config/detail/SettingsSyntax.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/detail/IntendedWraps.h"

using zelbase::detail::IsSpace;
using zelbase::detail::ItemMap;
using zelbase::detail::ReplacingFile;
using zelbase::detail::ScanSettingsLine;
using zelbase::detail::SettingsLine;
using zelbase::detail::SettingsLineKind;
using zelbase::detail::TableWalk;
using zelbase::detail::TakeSettingsLine;

// One line of the text; its views lie in the text.
struct SettingsTextEditor::Line {
  std::size_t begin = 0;
  std::size_t end = 0;   // without the line end
  std::size_t next = 0;  // with it
  bool inSection = false;
  std::string_view section;
  SettingsLine parts;

  bool IsHead() const { return parts.kind == SettingsLineKind::Section; }
  bool IsHeadOf(std::string_view name) const { return IsHead() && section == name; }
  bool IsItemOf(std::string_view name) const { return inSection && parts.kind == SettingsLineKind::Item && section == name; }
  bool IsItem(std::string_view name, std::string_view key) const { return IsItemOf(name) && parts.name == key; }
};

// `removed` bytes from `at` on give way to `added`.
struct SettingsTextEditor::Edit {
  std::size_t at = 0;
  std::size_t removed = 0;
  std::string added;
};

namespace {

constexpr std::size_t kNowhere = std::string::npos;
constexpr unsigned int kReadBlock = 65536;

// The last element for which `test` holds, or kNowhere.
template <class Lines, class Test>
ZELBASE_WRAPS std::size_t FindLast(const Lines& lines, Test test) {
  const auto found = std::find_if(lines.rbegin(), lines.rend(), test);
  return static_cast<std::size_t>(lines.rend() - found) - 1;
}

bool IsBlankOrTab(char c) { return c == ' ' || c == '\t'; }

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string ItemText(std::string_view key, std::string_view value) {
  // In column 1 a ";" would make a comment of the line.
  std::string line(key.starts_with(';') ? " " : "");
  line.append(key).append(" = ");
  return line.append(value);
}

// All items of the map as lines.
std::vector<std::string> ItemTexts(const ItemMap& items) {
  std::vector<std::string> texts;
  TableWalk walk = items.Begin();
  std::string_view key;
  std::string_view value;
  while (items.Next(walk, key, value)) texts.push_back(ItemText(key, value));
  return texts;
}

}  // namespace

SettingsTextEditor::SettingsTextEditor(std::string text) : m_text(std::move(text)) {}

const std::string& SettingsTextEditor::Text() const { return m_text; }

void SettingsTextEditor::SetText(std::string text) {
  m_text = std::move(text);
  m_reason.clear();
}

const std::string& SettingsTextEditor::Reason() const { return m_reason; }

SettingsTextEditor::Lines SettingsTextEditor::ParseLines() const {
  Lines lines;
  std::string_view left = m_text;
  std::string_view content;
  bool inSection = false;
  std::string_view section;
  while (TakeSettingsLine(left, content)) {
    Line line;
    line.begin = static_cast<std::size_t>(content.data() - m_text.data());
    line.end = line.begin + content.size();
    line.next = m_text.size() - left.size();
    line.parts = ScanSettingsLine(content);
    if (line.IsHead()) {
      inSection = true;
      section = line.parts.name;
    }
    line.inSection = inSection;
    line.section = section;
    lines.push_back(line);
  }
  return lines;
}

bool SettingsTextEditor::Fail(const std::string& reason) {
  m_reason = reason;
  return false;
}

bool SettingsTextEditor::Apply(Edits edits) {
  std::stable_sort(edits.begin(), edits.end(),
                   [](const Edit& a, const Edit& b) { return a.at != b.at ? a.at < b.at : a.removed < b.removed; });
  std::string text;
  std::size_t done = 0;
  for (const Edit& edit : edits) {
    text.append(m_text, done, edit.at - done).append(edit.added);
    done = edit.at + edit.removed;
  }
  text.append(m_text, done);
  m_text.swap(text);
  m_reason.clear();
  return true;
}

bool SettingsTextEditor::RefuseText(const char* what, std::string_view text) {
  const std::string named = std::string(what) + ' ' + Quoted(text);
  if (text.find('\n') != kNowhere) return !Fail(named + " would not read back: it holds a line end");
  if (text.find("//") != kNowhere) return !Fail(named + " would not read back: \"//\" begins a comment");
  if (!text.empty() && (IsSpace(text.front()) || IsSpace(text.back()))) {
    return !Fail(named + " would not read back: it begins or ends with white space");
  }
  return false;
}

bool SettingsTextEditor::RefuseNewKey(std::string_view key) {
  if (key.empty()) return !Fail("an empty key would not read back");
  if (RefuseText("the key", key)) return true;
  if (key.find('=') != kNowhere) return !Fail("the key " + Quoted(key) + " would not read back: it holds \"=\"");
  if (key.front() == '[' || key.front() == ';') {
    return !Fail("the key " + Quoted(key) + " would not read back: it begins with \"[\" or \";\"");
  }
  return false;
}

SettingsTextEditor::Edit SettingsTextEditor::ChangeValue(const Line& line, std::string_view value) const {
  const SettingsLine& parts = line.parts;
  Edit edit{static_cast<std::size_t>(parts.value.data() - m_text.data()), parts.value.size(), std::string(value)};
  if (parts.value.empty()) {
    // Only white space may stand behind "=": keep one blank of it in front of the value.
    const std::size_t separator = m_text.find('=', static_cast<std::size_t>(parts.name.data() - m_text.data()));
    const std::size_t contentEnd = static_cast<std::size_t>(parts.content.data() - m_text.data()) + parts.content.size();
    edit.at = std::min(separator + 2, contentEnd);
    if (edit.at == separator + 1 && IsSpace(m_text[separator - 1])) edit.added.insert(0, 1, ' ');
  }
  // A value that comes to stand right before a comment must not lend it a "/".
  const std::size_t behind = edit.at + edit.removed;
  const bool touches = behind < line.end && m_text[behind] == '/';
  if (touches && (edit.added.ends_with('/') || (parts.value.empty() && !value.empty()))) edit.added += ' ';
  return edit;
}

SettingsTextEditor::Edit SettingsTextEditor::ChangeHead(const Line& line, std::string_view name) const {
  const SettingsLine& parts = line.parts;
  const std::string_view old = parts.closed ? parts.name : zelbase::detail::TrimRight(parts.value);
  std::string added(name);
  if (!parts.closed) added += ']';
  return {static_cast<std::size_t>(old.data() - m_text.data()), old.size(), std::move(added)};
}

// The line end that a line put behind that one gets.
std::string SettingsTextEditor::LineEndAt(const Lines& lines, std::size_t index) const {
  const auto endOf = [this](const Line& line) { return m_text.substr(line.end, line.next - line.end); };
  if (index < lines.size() && lines[index].next != lines[index].end) return endOf(lines[index]);
  // A CR at the very end of the text is text: an LF alone would make it part of a line end.
  if (m_text.ends_with('\r')) return "\r\n";
  return !lines.empty() && lines.front().next != lines.front().end ? endOf(lines.front()) : "\r\n";
}

SettingsTextEditor::Edit SettingsTextEditor::InsertBehind(const Lines& lines, std::size_t index,
                                                          const std::vector<std::string>& added) const {
  const std::string lineEnd = LineEndAt(lines, index);
  const bool ended = lines[index].next != lines[index].end;
  Edit edit{lines[index].next, 0, {}};
  for (const std::string& line : added) {
    edit.added += ended ? line + lineEnd : lineEnd + line;
  }
  return edit;
}

ZELBASE_WRAPS SettingsTextEditor::Edit SettingsTextEditor::AppendSection(const Lines& lines, const std::string& name,
                                                                         const std::vector<std::string>& items) const {
  const std::string lineEnd = LineEndAt(lines, lines.size() - 1);
  Edit edit{m_text.size(), 0, {}};
  if (!lines.empty()) {
    if (lines.back().next == lines.back().end) edit.added += lineEnd;
    // Before the first head a blank line would be one more extra line.
    if (lines.back().inSection && lines.back().parts.kind != SettingsLineKind::Blank) edit.added += lineEnd;
  }
  edit.added += '[' + name + ']' + lineEnd;
  for (const std::string& item : items) edit.added += item + lineEnd;
  return edit;
}

void SettingsTextEditor::RemoveSection(const Lines& lines, std::string_view name, Edits& edits) const {
  bool otherHeadBefore = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!lines[i].IsHead()) continue;
    if (lines[i].section != name) {
      otherHeadBefore = true;
      continue;
    }
    std::size_t next = i + 1;
    while (next < lines.size() && !lines[next].IsHead()) ++next;
    std::size_t keep = next;
    if (next < lines.size() && lines[next].section != name) {
      while (lines[keep - 1].parts.kind == SettingsLineKind::Comment) --keep;
    }
    if (keep == next || otherHeadBefore) {
      const std::size_t end = keep < lines.size() ? lines[keep].begin : m_text.size();
      edits.push_back({lines[i].begin, end - lines[i].begin, {}});
      continue;
    }
    std::vector<std::string> comments;
    for (std::size_t at = keep; at < next; ++at) {
      comments.push_back(m_text.substr(lines[at].begin, lines[at].end - lines[at].begin));
    }
    edits.push_back({lines[i].begin, lines[next].begin - lines[i].begin, {}});
    edits.push_back(InsertBehind(lines, next, comments));
  }
}

bool SettingsTextEditor::SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) {
  if (RefuseText("the value", value)) return false;
  const Lines lines = ParseLines();
  // The last line of a key wins.
  const std::size_t known = FindLast(lines, [&](const Line& line) { return line.IsItem(section, key); });
  if (known != kNowhere) return Apply({ChangeValue(lines[known], value)});
  if (RefuseNewKey(key)) return false;
  const std::size_t head = FindLast(lines, [&](const Line& line) { return line.IsHeadOf(section); });
  if (head == kNowhere) {
    if (!createSection) return Fail("there is no section " + Quoted(section));
    if (RefuseText("the section", section)) return false;
    return Apply({AppendSection(lines, section, {ItemText(key, value)})});
  }
  const std::size_t last = FindLast(lines, [&](const Line& line) { return line.IsItemOf(section); });
  if (last == kNowhere) return Apply({InsertBehind(lines, head, {ItemText(key, value)})});
  // As the item before it is written.
  const Line& model = lines[last];
  const std::size_t keyBegin = static_cast<std::size_t>(model.parts.name.data() - m_text.data());
  const std::size_t keyEnd = keyBegin + model.parts.name.size();
  const std::size_t valueBegin = static_cast<std::size_t>(model.parts.value.data() - m_text.data());
  std::string indentation = m_text.substr(model.begin, keyBegin - model.begin);
  std::string separator = model.parts.value.empty() ? " = " : m_text.substr(keyEnd, valueBegin - keyEnd);
  const auto isPlain = [](char c) { return IsBlankOrTab(c) || c == '='; };
  if (!std::all_of(indentation.begin(), indentation.end(), IsBlankOrTab)) indentation.clear();
  if (!std::all_of(separator.begin(), separator.end(), isPlain)) separator = " = ";
  return Apply({InsertBehind(lines, last, {indentation + key + separator + value})});
}

bool SettingsTextEditor::DeleteItem(const std::string& section, const std::string& key, bool deleteEmptySection) {
  const Lines lines = ParseLines();
  Edits edits;
  bool othersStay = false;
  for (const Line& line : lines) {
    if (line.IsItem(section, key)) {
      edits.push_back({line.begin, line.next - line.begin, {}});
    } else {
      othersStay |= line.IsItemOf(section);
    }
  }
  if (edits.empty()) return Fail("there is no key " + Quoted(key) + " in section " + Quoted(section));
  if (!deleteEmptySection || othersStay) return Apply(std::move(edits));
  edits.clear();
  RemoveSection(lines, section, edits);
  return Apply(std::move(edits));
}

bool SettingsTextEditor::RenameItem(const std::string& section, const std::string& oldKey, const std::string& newKey) {
  const Lines lines = ParseLines();
  Edits edits;
  bool found = false;
  for (const Line& line : lines) {
    if (line.IsItem(section, oldKey)) {
      found = true;
      edits.push_back({static_cast<std::size_t>(line.parts.name.data() - m_text.data()), oldKey.size(), newKey});
    } else if (line.IsItem(section, newKey)) {
      edits.push_back({line.begin, line.next - line.begin, {}});
    }
  }
  if (!found) return Fail("there is no key " + Quoted(oldKey) + " in section " + Quoted(section));
  if (oldKey == newKey) return Apply({});
  if (RefuseNewKey(newKey)) return false;
  return Apply(std::move(edits));
}

bool SettingsTextEditor::CreateSection(const std::string& name) {
  const Lines lines = ParseLines();
  if (FindLast(lines, [&](const Line& line) { return line.IsHeadOf(name); }) != kNowhere) return Apply({});
  if (RefuseText("the section", name)) return false;
  return Apply({AppendSection(lines, name, {})});
}

bool SettingsTextEditor::DeleteSection(const std::string& name) {
  const Lines lines = ParseLines();
  Edits edits;
  RemoveSection(lines, name, edits);
  return edits.empty() ? Fail("there is no section " + Quoted(name)) : Apply(std::move(edits));
}

bool SettingsTextEditor::RenameSection(const std::string& oldName, const std::string& newName) {
  const Lines lines = ParseLines();
  Edits edits;
  for (const Line& line : lines) {
    if (line.IsHeadOf(oldName)) edits.push_back(ChangeHead(line, newName));
  }
  if (edits.empty()) return Fail("there is no section " + Quoted(oldName));
  if (oldName == newName) return Apply({});
  if (RefuseText("the section", newName)) return false;
  RemoveSection(lines, newName, edits);
  return Apply(std::move(edits));
}

bool SettingsTextEditor::CopySection(const std::string& section, const std::string& sourceSection) {
  const Lines lines = ParseLines();
  if (FindLast(lines, [&](const Line& line) { return line.IsHeadOf(sourceSection); }) == kNowhere) {
    return Fail("there is no section " + Quoted(sourceSection));
  }
  if (section == sourceSection) return Fail("the section " + Quoted(section) + " cannot be copied onto itself");
  ItemMap items;
  for (const Line& line : lines) {
    if (line.IsItemOf(sourceSection)) items.Set(line.parts.name, line.parts.value);
  }
  return ReplaceItems(lines, section, ItemTexts(items));
}

bool SettingsTextEditor::CopySection(const std::string& section, const FileObject& source, const std::string& sourceSection) {
  if (!source.HasSection(sourceSection)) return Fail("there is no section " + Quoted(sourceSection));
  std::vector<std::string> items;
  FobjSection cursor;
  std::string key, value;
  for (bool more = source.GetFirstMapEntry(cursor, sourceSection, key, value); more; more = source.GetNextMapEntry(cursor, key, value)) {
    if (RefuseNewKey(key) || RefuseText("the value", value)) return false;
    items.push_back(ItemText(key, value));
  }
  return ReplaceItems(ParseLines(), section, items);
}

// Lets `section` have exactly `items`, each a text "key = value" of another key. It is added when missing.
bool SettingsTextEditor::ReplaceItems(const Lines& lines, const std::string& section, const std::vector<std::string>& items) {
  const std::size_t head = FindLast(lines, [&](const Line& line) { return line.IsHeadOf(section); });
  if (head == kNowhere) {
    if (RefuseText("the section", section)) return false;
    return Apply({AppendSection(lines, section, items)});
  }
  Edits edits;
  for (const Line& line : lines) {
    if (line.IsItemOf(section)) edits.push_back({line.begin, line.next - line.begin, {}});
  }
  edits.push_back(InsertBehind(lines, head, items));
  return Apply(std::move(edits));
}

bool SettingsTextEditor::FileOpen(const std::string& fileName) {
  std::string text;
  std::string name = fileName;  // text and name change together or not at all
  try {
    CFile file;
    if (!file.Open(fileName, CFile::modeRead | CFile::shareDenyNone, nullptr)) {
      return Fail("cannot open " + Quoted(fileName));
    }
    std::string block(kReadBlock, '\0');
    while (const unsigned int count = file.Read(block.data(), kReadBlock)) text.append(block, 0, count);
  } catch (const CFileException&) {
    return Fail("cannot read " + Quoted(fileName));
  }
  m_text.swap(text);
  m_fileName.swap(name);
  m_reason.clear();
  return true;
}

bool SettingsTextEditor::FileSaveReplacing(const std::string& fileName) {
  const std::string name = fileName.empty() ? m_fileName : fileName;
  if (name.empty()) return Fail("there is no file name");
  const std::string context = GlobalErrorList::Get().DefaultContext();
  ReplacingFile file;
  if (!file.Begin(name)) {
    FileError(name, FileError::Open).Report(context);
    return Fail("cannot open " + Quoted(name) + " for writing");
  }
  if (!file.WriteAll(m_text) || !file.Commit()) {
    FileError(name, FileError::Write).Report(context);
    return Fail("cannot write " + Quoted(name));
  }
  m_reason.clear();
  return true;
}
