// A settings store of a single section, for an object that loads itself from a section of a bigger file and stores itself
// there, without naming the section at each access. Neighbour: FileObject.h, the bigger file.
#pragma once

#include <string>

#include "zelbase/config/FileObject.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/platform/ZelBaseApi.h"

// A FileObject with the name of one of its sections.
//
//   FileSection port;
//   if (!port.GetFromFileObject("Port 1", settings)) port.SetItem("Speed", 9600);
//   port.SetToFileObject(settings);
//
// Until GetFromFileObject or an assignment gives it a name, it is empty and the name is the empty text; SetItem then makes the
// section with the empty name. GetItem, DeleteItem, HasKey and the walk hide the forms of FileObject, which are reached through a
// reference to the base; those of SetItem stand beside its own, so that a class derived from this one may override the one that
// all end in. Statuses and exceptions are those of FileObject.
//
// Copies have name and items, in a section that is made even when the source has none; the file name, extra lines, flags and
// further sections stay behind, and the copy's walk begins anew. Assigning to itself keeps the name and leaves an empty section.
// Without memory (std::bad_alloc) what is assigned to may be left empty.
class ZELBASE_API FileSection : public FileObject {
 public:
  FileSection();
  ~FileSection() override;
  FileSection(const FileSection& other);
  FileSection& operator=(const FileSection& other);

  // Equal: the same name, both have the section, and the same keys have the same values. So two new objects are not equal, nor
  // is a new one equal to its copy, which has made its section. Never throws.
  bool operator==(const FileSection& other) const;
  bool operator!=(const FileSection& other) const;

  int GetErrorStatus() const override;

  // As FileObject::GetItem, in this section.
  bool GetItem(std::string key, std::string& value) const;
  bool GetItem(std::string key, long& value) const;
  bool GetItem(std::string key, int& value) const;
  bool GetItem(std::string key, unsigned int& value) const;
  bool GetItem(std::string key, bool& value) const;
  bool GetItem(std::string key, double& value) const;
  bool GetItem(std::string key, float& value) const;

  // As FileObject::SetItem, by way of its virtual form, with this section, which is made when it is missing. A null text is an
  // empty one.
  using FileObject::SetItem;
  bool SetItem(std::string key, std::string value);
  bool SetItem(std::string key, const char* value);
  bool SetItem(std::string key, long value);
  bool SetItem(std::string key, int value);
  bool SetItem(std::string key, unsigned int value);
  bool SetItem(std::string key, bool value);
  bool SetItem(std::string key, double value);

  bool DeleteItem(std::string key, bool deleteEmptySection);
  bool HasKey(const std::string& key) const;

  // A walk over the items, with a cursor that the object holds.
  bool GetFirstMapEntry(std::string& key, std::string& value);
  bool GetNextMapEntry(std::string& key, std::string& value);

  const std::string& Name() const;

  // Takes the name, empties the object and copies the items of that section; "Checksum" too. False when `source` does not
  // have it: the object is then named and empty.
  bool GetFromFileObject(const std::string& section, const FileObject& source);

  // Writes the items over those of the target's section of this name, which is made when missing; keys that only the target
  // has stay. False when this object has no section yet.
  bool SetToFileObject(FileObject& target) const;

  // The same with a section of that name in both: this object needs it, too.
  bool SetToFileObject(const std::string& section, FileObject& target) const;

 private:
  std::string m_name;
  FobjSection m_cursor;
};

// A section and a whole store: as FileObject compares them, the left one asking. FileSection's own comparison hides that one,
// and without these the language would exchange the two, which is not the same.
inline bool operator==(const FileSection& a, const FileObject& b) { return static_cast<const FileObject&>(a) == b; }
inline bool operator==(const FileObject& a, const FileSection& b) { return a == static_cast<const FileObject&>(b); }
