// The settings store: a text file of named sections, each a set of keys and values, held in memory. Neighbours:
// FobjSection.h, the cursor that walks over it; FileSection.h, a store of a single section; SettingsReport.h, which tells
// what a file loses when it is read; SettingsDifference.h, which lists for people what separates two stores;
// SettingsTextEditor.h, which changes a person's file and keeps its comments.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "zelbase/config/FobjSection.h"
#include "zelbase/config/detail/SettingsSyntax.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;
class CFile;

// What GetErrorStatus answers. 3 is not used.
inline constexpr int FOBJ_OK = 0;
inline constexpr int FOBJ_WRITE_FAILED = 1;  // a file exception during Write
inline constexpr int FOBJ_NO_SECTIONS = 2;   // a text without a section head; nothing to delete or rename from
inline constexpr int FOBJ_SECTION_NOT_FOUND = 4;
inline constexpr int FOBJ_KEY_NOT_FOUND = 5;
inline constexpr int FOBJ_BAD_VALUE = 6;         // a typed GetItem whose text does not parse
inline constexpr int FOBJ_ITEM_NOT_DELETED = 7;  // DeleteItem of a key that is not there
inline constexpr int FOBJ_NO_FILE_NAME = 8;
inline constexpr int FOBJ_OPEN_FAILED = 9;

// One settings text. Section names and keys are case-sensitive and occur once; texts are 8-bit characters (Windows-1252).
//
//   FileObject settings;
//   if (!settings.FileOpen("C:\\data\\zelcore.ini", CFile::modeRead | CFile::shareDenyWrite)) return false;
//   double draught = 0.0;
//   settings.GetItem("Vessel", "Draught", draught);
//   settings.SetItem("Vessel", "Draught", 2.5, true);    // stored as "2.5"
//   settings.FileSaveReplacing("");
//
// The text, read a line at a time (LF or CR LF; a last line without an end counts):
//   (1) ";" in column 1 makes the line a comment. Further right it is an ordinary character, so that " ; x = 1" is an item
//       with the key "; x", which is written back as "; x = 1" and lost by the next reading.
//   (2) "//" cuts the line, wherever it stands: "path = a//b" has the value "a", and "[http://x]" is a section head
//       without "]".
//   (3) "[Name]" begins a section; the last "]" counts, what stands behind it does not; without "]" the name is empty. A
//       section that occurs twice is one section.
//   (4) "key = value", parted at the first "=", both trimmed. The last one wins. "=5" and lines without "=" are dropped
//       without a word. A value may be empty; there is no quoting, no escape and no continuation line.
//   (5) All lines before the first head are kept as they are (GetExtraInfo). Inside sections comments and blank lines
//       are dropped, and are gone after the next save.
// Written, each section is its head, a line "key = value" for each item and an empty line, all ended by CR LF. Sections and
// items come in an order that is stable while nothing changes, and on which nothing may depend.
//
// SetItem stores any bytes. A line end, "//", or white space at the ends of a key or value is written as it is and does
// not read back; a zero byte, a lone CR or a byte order mark is text like any other.
//
// Failure: false, and a status for GetErrorStatus. Only GetItem under ThrowExceptions throws (a std::string), and
// reading lets a CFileException of the file pass. A file that does not open, or cannot be written, is also entered into
// the global error list, under the context of SetErrorContext.
//
// The store does not know whether it differs from its file, and nothing saves on destruction. Memory is proportional to the
// size of the text. Look-ups are hash look-ups; the hash is seeded anew in each process, so that a file with keys
// chosen to fall together cannot be prepared.
//
// Threads: one object belongs to one thread at a time; the status makes even constant operations writers. Only Peek, HasKey,
// HasSection and GetNumItems write nothing: several threads may call them at once while nobody changes the object.
class ZELBASE_API FileObject {
 public:
  // The section that holds checksums: enumeration passes over it, and so a copy does not have it. All else treats it as
  // any other section.
  inline static const std::string CHECKSUM_SECTION{zelbase::detail::kChecksumSection};

  // Empty, not open, reporting under the global error list's default context.
  FileObject();

  virtual ~FileObject();

  // A copy has all but the section "Checksum": the items, lines, file name, flags, status and context. Open walks over the
  // target end. Assigning an object to itself empties it. Without memory (std::bad_alloc) the target stays as it was.
  FileObject(const FileObject& other);
  FileObject& operator=(const FileObject& other);

  // --- Items -------------------------------------------------------------------------------------------------------
  //
  // `createSection` says what happens when the section does not exist: true creates it, false fails with status 4 and
  // changes nothing. The key is always created or overwritten. All forms end in the first, which a subclass may override.
  virtual bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection = true);

  // The last error, 0 for none. Operations that can set one store 0 first.
  virtual int GetErrorStatus() const;

  // Carries a difference over to this object; told at "Comparison and difference" below. It stands here because the order of
  // the virtual operations is part of the interface.
  virtual bool ApplyDifference(const FileObject& difference);

  // A null `value` is an empty one.
  bool SetItem(const std::string& section, const std::string& key, const char* value, bool createSection = true);
  bool SetItem(const std::string& section, const std::string& key, int value, bool createSection = true);
  bool SetItem(const std::string& section, const std::string& key, unsigned int value, bool createSection = true);
  bool SetItem(const std::string& section, const std::string& key, long value, bool createSection = true);

  // A colour, red in the low byte, written "red, green, blue" from its bits 0 to 23. Never pass a size here: on this system
  // std::size_t is unsigned long, too.
  bool SetItem(const std::string& section, const std::string& key, unsigned long value, bool createSection = true);

  // Written "1" or "0".
  bool SetItem(const std::string& section, const std::string& key, bool value, bool createSection = true);

  // Written with the least number of decimals that shows the value to within a hundred units of rounding, at most 16: 0.5
  // is "0.5", 1234.0 is "1234", and 1e-20 is "0.0000000000000000", which loses it. A value that is not finite is
  // "nan", "inf" or "-inf" and does not read back (status 6). A float goes through double.
  bool SetItem(const std::string& section, const std::string& key, double value, bool createSection = true);
  bool SetItem(const std::string& section, const std::string& key, long long value, bool createSection = true);
  bool SetItem(const std::string& section, const std::string& key, unsigned long long value, bool createSection = true);

  // Status 4: no such section; 5: no such key; 6: the text does not begin with a number as asked for. Then `value` is
  // untouched, and the result false. With ThrowExceptions set, the same failures throw a std::string for people, status 0.
  //
  // Only the front of the text has to parse: "12abc" is 12. A number beyond its type is taken modulo 2^32 or 2^64.
  bool GetItem(const std::string& section, const std::string& key, std::string& value) const;

  // int, unsigned int, long: hexadecimal when the text holds "0x" or "0X" anywhere, so that "10 0x" is 16. A long has
  // the 32-bit value, its sign extended: files are shared with computers where it has 32 bits.
  bool GetItem(const std::string& section, const std::string& key, int& value) const;
  bool GetItem(const std::string& section, const std::string& key, unsigned int& value) const;
  bool GetItem(const std::string& section, const std::string& key, long& value) const;

  // A colour, "red, green, blue": each comma must follow its number at once. The parts are added up unmasked, in 32 bits:
  // "300, 0, 0" is 300.
  bool GetItem(const std::string& section, const std::string& key, unsigned long& value) const;

  // Decimal, true when not zero; "0x1" is false.
  bool GetItem(const std::string& section, const std::string& key, bool& value) const;
  bool GetItem(const std::string& section, const std::string& key, double& value) const;
  bool GetItem(const std::string& section, const std::string& key, float& value) const;

  // Decimal only.
  bool GetItem(const std::string& section, const std::string& key, long long& value) const;
  bool GetItem(const std::string& section, const std::string& key, unsigned long long& value) const;

  // Status 4: no such section, 7: no such key. With `deleteEmptySection`, a section that loses its last item goes too, as
  // by DeleteSection.
  bool DeleteItem(const std::string& section, const std::string& key, bool deleteEmptySection);

  // True when the key is there and its value is not empty: an empty value counts as absent here, whereas GetItem finds it.
  bool HasKey(const std::string& section, const std::string& key) const;

  // The text of an item, an empty one too, with neither a status nor an exception. False, `value` untouched, when there is
  // none. The view holds until the object is changed.
  bool Peek(const std::string& section, const std::string& key, std::string_view& value) const;

  // 0 for a missing section.
  int GetNumItems(std::string section) const;

  // --- Sections ----------------------------------------------------------------------------------------------------

  // Makes the section, or, when it exists: with `replace` empties it by putting a new one in its place, otherwise takes it
  // as it is. The cursor then has it selected, at its first item; IsValid is not touched. Always true.
  bool CreateSection(FobjSection& cursor, std::string name, bool replace);
  bool CreateSection(std::string name, bool replace);

  // Status 2: there is no section at all; 4: none of that name. The walk of `cursor` over the sections goes on, every other
  // walk over the sections starts again. When `cursor` had the section selected it selects the first other one. It has no
  // place among items afterwards, so that its walk over them ends, even one in another section.
  bool DeleteSection(FobjSection& cursor, std::string name);
  bool DeleteSection(std::string name);

  // A section that already has the new name is replaced, not merged; renaming to the same name changes nothing. Status 2
  // and 4 as in DeleteSection. Walks go on.
  bool RenameSection(std::string oldName, std::string newName);

  // Writes the items of the section of that name in `source` over those here; others stay. False when `source` has no such
  // section: then nothing is touched. Without memory (std::bad_alloc), neither in this form nor in the next.
  bool CopySection(const std::string& section, const FileObject& source);

  // The section here is emptied first, so that it ends with exactly the items of `sourceSection`. Copying a section of one
  // object onto itself empties it.
  bool CopySection(const std::string& section, const FileObject& source, const std::string& sourceSection);

  bool HasSection(const std::string& name) const;
  int GetNumSections() const;

  // --- Enumeration -------------------------------------------------------------------------------------------------
  //
  //   FobjSection cursor;
  //   std::string name;
  //   for (bool found = settings.GetFirstSectionEntry(cursor, name); found;
  //        found = settings.GetNextSectionEntry(cursor, name)) { ... }
  //
  // What was there at the beginning and still is comes exactly once; FobjSection.h says what changes do to a walk. At the
  // end: false, and the texts are empty. None of these touches the status.

  // All sections but "Checksum".
  bool GetFirstSectionEntry(FobjSection& cursor, std::string& name) const;
  bool GetNextSectionEntry(FobjSection& cursor, std::string& name) const;

  // Selects the section first. A missing one gives false and a cursor without selection, whose walk over sections goes
  // on; an empty one gives false and IsValid().
  bool GetFirstMapEntry(FobjSection& cursor, std::string section, std::string& key, std::string& value) const;
  bool GetNextMapEntry(FobjSection& cursor, std::string& key, std::string& value) const;

  // --- Comparison and difference -----------------------------------------------------------------------------------
  //
  //   FileObject difference;
  //   newer.GetDifference(older, difference);
  //   if (newer.HasDifferences(difference)) customised.ApplyDifference(difference);
  //
  // A difference is a store like any other: it may be saved, edited and read again. For a section A it holds
  //   "A"         every item of the newer A, for people; applying passes over it
  //   "add.A"     key and new value of each item that only the newer A has
  //   "change.A"  key and new value of each item whose value differs
  //   "remove.A"  key and old value of each item that only the older A has
  // and the last three only where they have an item. Applied, the name of a section is split at its first and its second "."
  // and the parts are trimmed, so that "add.My.Section" goes to "My", "add." to the section with no name, and " add .A"
  // to "A"; a section "add.X" of a compared file becomes an operation.
  //
  // What does not travel: sections without items, the extra lines, and the section "Checksum", on either side. Without
  // those, without names with a "." or white space at their ends, and without "@tr." keys, the older file to which the
  // difference is applied equals the newer one.
  //
  // Items are looked up without throwing, whatever ThrowExceptions says, and no status of a constant operand is touched.
  // A walk over an object that is changed on the way ("itself" below) is a walk over what it held at the beginning.

  // Equal: as many extra lines, all but the last of them the same; as many sections, "Checksum" counted; and each section of
  // this object but "Checksum" is there, with the same keys and values. File names, flags and statuses do not count.
  // Not symmetric: a store with "Checksum" in place of one more section equals the other, which does not equal it.
  bool operator==(const FileObject& other) const;
  bool operator!=(const FileObject& other) const;

  // Writes what leads from `older` to this object into `difference`, which is not emptied first, and gives it this object's
  // file name. `difference` may be this object or `older`. Always true. The items of "add.", "change." and "remove."
  // are written by SetItem, which is the only thing that touches the status of `difference`, besides the making of a
  // section.
  //
  // A changed item whose key begins with "@tr." is passed over when the new value's front, up to the first comma, is a
  // decimal number with the bit 0x2000: such a value changes by itself. A new or a gone one is not.
  bool GetDifference(const FileObject& older, FileObject& difference) const;

  // ApplyDifference, declared above: the items of "add." and "change." sections are written by SetItem, whether they were
  // there or not, and those of "remove." sections deleted by DeleteItem, where a section that loses its last item goes.
  // Sections with any other name, the plain ones too, are passed over. The first call that fails, such as deleting what is
  // not there (status 4 or 7), ends it with false, and what was done so far stays. The status is that of the last call.
  // Applying an object to itself is allowed.

  // Whether `difference` has any item in an "add.", "change." or "remove." section; even an empty difference has the
  // plain ones. The object that is asked plays no part.
  bool HasDifferences(const FileObject& difference);

  // --- Files -------------------------------------------------------------------------------------------------------

  // Empties the object and its file name, then opens `fileName` with flags of CFile and reads it. Status 8: the name is
  // empty (not entered into the error list); 9: it does not open. With CFile::modeCreate the file is cut and nothing is
  // read. A file without any section opens: true, status 2, all its lines in GetExtraInfo.
  //
  // Throws the CFileException of a read that fails midway: what was read so far stays, FileInitialised is false.
  bool FileOpen(std::string fileName, unsigned int openFlags);

  // The same from a file that is open; `fileName` becomes the object's file name. The file stays open.
  bool FileOpen(CFile& file, std::string fileName);

  // Opens `fileName`, or the object's own file when it is empty, with flags of CFile, and writes. Only CFile::modeCreate
  // cuts what was there. The object's file name stays. Status 8: no name at all; 9: it does not open; 1: writing
  // failed, reported with the object's own file name, whatever file was written.
  //
  // A power cut in the middle leaves half a file: FileSaveReplacing does not.
  bool FileSave(std::string fileName, unsigned int openFlags) const;
  bool FileSave(CFile& file) const;

  // Writes beside the target, flushes to the device and renames over it, so that whatever happens the target holds the
  // old text or the new one whole. Follows a link, keeps the target's permissions, and leaves nothing behind on failure
  // where that can be removed. Other hard links to the target keep the old text. A target that may not be written fails with
  // status 9 and stays. Names, statuses and reports as FileSave.
  bool FileSaveReplacing(std::string fileName) const;

  // The text form through an archive. Read empties the object first; false with status 2 for a text without a section
  // head. Write flushes the archive; status 1 when the file throws.
  bool Read(CArchive& archive);
  bool Write(CArchive& archive) const;

  // MakeEmpty, and forgets the file name; FileInitialised is false then.
  void FileClose();

  // Drops all sections and extra lines; status 0. The file name and FileInitialised stay.
  void MakeEmpty();

  // True when the object stands for a file that was opened.
  bool FileInitialised() const;

  std::string GetFileName() const;
  void SetFileName(const std::string& fileName);

  // The file name without folder and ending. Only "\" and ":" part folders, and the last "." cuts even when it stands in a
  // folder's name: "C:\a.b\file" gives "a".
  std::string GetFileTitle() const;

  // The lines that stood before the first section head, as they were.
  const std::vector<std::string>& GetExtraInfo() const;

  // Whether a failed GetItem throws. Off at first.
  void ThrowExceptions(bool throwExceptions);
  bool ThrowExceptions() const;

  // The context under which this object reports into the global error list.
  void SetErrorContext(const std::string& context);

 protected:
  // Stores the status, though the object is constant.
  virtual void SetErrorStatus(int status) const;

  // For a subclass to digest what was read. Its answer is FileOpen's; true sets FileInitialised, false leaves it as it is
  // then, which is false unless the subclass has called SetReadStatus.
  virtual bool AfterFileOpen();

  // Selects the section, made when missing.
  bool SetSection(FobjSection& cursor, std::string name);

  // Selects the section, at its first item, without touching the status. A missing one gives false and a cursor without
  // selection.
  bool SelectSectionNT(FobjSection& cursor, const std::string& name) const;

  // True when both have the section and the same keys have the same values there. Neither throws nor touches a status.
  bool HasEqualItems(const std::string& section, const FileObject& other) const;

  void SetReadStatus(bool read);

  // Do nothing and return false; for subclasses.
  bool ReportError(const std::string& message) const;
  bool ReportError(const std::string& message, const std::string& detail) const;

 private:
  bool FindItem(const std::string& section, const std::string& key, std::string_view& value) const;
  bool FailItem(int status, const std::string& section, const std::string& key) const;
  template <class Parse>
  bool GetParsed(const std::string& section, const std::string& key, Parse parse) const;
  void SelectForCursor(FobjSection& cursor, const zelbase::detail::SectionMap::Section& section) const;
  void BeginSectionWalk(FobjSection& cursor) const;
  bool FinishOpening();
  bool ReadLines(CArchive& archive);
  void WriteLines(CArchive& archive) const;
  bool FailOpening(const std::string& fileName) const;
  bool FailWriting() const;

  bool m_throwExceptions = false;
  bool m_read = false;
  std::string m_fileName;
  std::unique_ptr<zelbase::detail::SectionMap> m_sections;
  std::vector<std::string> m_extraInfo;
  mutable int m_errorStatus = FOBJ_OK;
  std::string m_errorContext;
  unsigned int m_sectionGeneration = 0;  // removals of sections, so that open walks notice them
};
