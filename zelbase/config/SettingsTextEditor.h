// Changes single keys and sections in the text of a settings file and leaves every other byte as it was: comments, blank
// lines, order, line ends. FileObject.h is the store, whose save drops all that; SettingsReport.h tells what it drops.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

class FileObject;

// The text of one settings file, as bytes.
//
//   SettingsTextEditor editor;
//   if (!editor.FileOpen(name) || !editor.SetItem("Vessel", "Draught", "2.5", true) || !editor.FileSaveReplacing(""))
//     std::cerr << editor.Reason() << '\n';
//
// (1) The text after a change, read by a FileObject, gives exactly what the FileObject read from the text before has after
//     the same change, extra lines included. Where a key or a section occurs several times in the text, that takes care of
//     all of them.
// (2) A change that fails leaves the text as it is, returns false and says why in Reason.
// (3) What would not read back is refused: a key, value or section name with a line end, "//" or white space at its ends;
//     a key that is empty, holds "=" or begins with "[" or ";". (A key that is in the text already may be given whatever it
//     begins with.)
// (4) New lines take the line end of the line before them, and an item the indentation and the blanks around "=" of the item
//     before it; CR LF and " = " when there is none. A text that does not end in a line end keeps that habit when an item is
//     added to it.
//
// Values are texts here, and Windows-1252 or UTF-8 is the caller's business: bytes stay bytes. Each operation looks
// through the text once. Copies are independent; one thread at a time.
class ZELBASE_API SettingsTextEditor {
 public:
  SettingsTextEditor() = default;
  explicit SettingsTextEditor(std::string text);

  const std::string& Text() const;
  void SetText(std::string text);

  // Why the last operation returned false, in a sentence for people; empty after success.
  const std::string& Reason() const;

  // --- Changes -----------------------------------------------------------------------------------------------------

  // Changes the value where it stands, keeping a "//" comment behind it, or adds the item behind the last one of the
  // section. A missing section is added at the end when `createSection` is true; otherwise that fails.
  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection);

  // Removes every line of that key. With `deleteEmptySection`, a section that loses its last item goes too.
  bool DeleteItem(const std::string& section, const std::string& key, bool deleteEmptySection);

  // The item keeps its place and value; one that had the new name goes.
  bool RenameItem(const std::string& section, const std::string& oldKey, const std::string& newKey);

  // Adds an empty section at the end; nothing when it is there already.
  bool CreateSection(const std::string& name);

  // Removes head, items, comments and blank lines of the section, wherever it occurs. Comment lines right above the next
  // section's head belong to that one and stay; if they would then stand before the first head, where they count as
  // extra lines, they move right below that head.
  bool DeleteSection(const std::string& name);

  // The heads get the new name. A section that had it before is deleted, as by DeleteSection.
  bool RenameSection(const std::string& oldName, const std::string& newName);

  // `section` has exactly the items of `sourceSection` afterwards; it is added at the end when missing. Comments are not
  // copied, and those of `section` stay. A section onto itself is refused (a FileObject would empty it).
  bool CopySection(const std::string& section, const std::string& sourceSection);

  // The same from a section of another store. An item that would not read back refuses the whole copy.
  bool CopySection(const std::string& section, const FileObject& source, const std::string& sourceSection);

  // --- Files -------------------------------------------------------------------------------------------------------

  // Reads all bytes of the file. On failure text and name stay; nothing enters the error list and nothing throws.
  bool FileOpen(const std::string& fileName);

  // Writes beside the target and renames over it, as FileObject::FileSaveReplacing; an empty name means the file that was
  // opened. A failure is entered into the global error list as a FileError for that name (Open: it cannot be written
  // at all; Write: writing failed); the target then has its old text.
  bool FileSaveReplacing(const std::string& fileName);

 private:
  struct Line;
  struct Edit;
  using Lines = std::vector<Line>;
  using Edits = std::vector<Edit>;

  Lines ParseLines() const;
  bool Fail(const std::string& reason);
  bool Apply(Edits edits);
  bool RefuseText(const char* what, std::string_view text);
  bool RefuseNewKey(std::string_view key);
  bool ReplaceItems(const Lines& lines, const std::string& section, const std::vector<std::string>& items);

  Edit ChangeValue(const Line& line, std::string_view value) const;
  Edit ChangeHead(const Line& line, std::string_view name) const;
  Edit InsertBehind(const Lines& lines, std::size_t index, const std::vector<std::string>& added) const;
  Edit AppendSection(const Lines& lines, const std::string& name, const std::vector<std::string>& items) const;
  void RemoveSection(const Lines& lines, std::string_view name, Edits& edits) const;
  std::string LineEndAt(const Lines& lines, std::size_t index) const;

  std::string m_text;
  std::string m_fileName;
  std::string m_reason;
};
