#include "zelbase/config/FileSection.h"

FileSection::FileSection() = default;

FileSection::~FileSection() = default;

FileSection::FileSection(const FileSection& other) : FileObject() { *this = other; }

// Kept: no test for self-assignment; it leaves the name and an empty section.
FileSection& FileSection::operator=(const FileSection& other) {
  MakeEmpty();
  m_name = other.m_name;
  // The other's cursor walks over the other's items: here it selects nothing.
  m_cursor.SetNoSelection();
  CreateSection(m_name, false);
  CopySection(m_name, other);
  return *this;
}

bool FileSection::operator==(const FileSection& other) const {
  // Kept: without a section nothing is equal, so two new objects are not.
  if (m_name != other.m_name || !HasSection(m_name) || !other.HasSection(m_name)) return false;
  return HasEqualItems(m_name, other);
}

bool FileSection::operator!=(const FileSection& other) const { return !(*this == other); }

int FileSection::GetErrorStatus() const { return FileObject::GetErrorStatus(); }

bool FileSection::GetItem(std::string key, std::string& value) const { return FileObject::GetItem(m_name, key, value); }
bool FileSection::GetItem(std::string key, long& value) const { return FileObject::GetItem(m_name, key, value); }
bool FileSection::GetItem(std::string key, int& value) const { return FileObject::GetItem(m_name, key, value); }
bool FileSection::GetItem(std::string key, unsigned int& value) const { return FileObject::GetItem(m_name, key, value); }
bool FileSection::GetItem(std::string key, bool& value) const { return FileObject::GetItem(m_name, key, value); }
bool FileSection::GetItem(std::string key, double& value) const { return FileObject::GetItem(m_name, key, value); }
bool FileSection::GetItem(std::string key, float& value) const { return FileObject::GetItem(m_name, key, value); }

bool FileSection::SetItem(std::string key, std::string value) { return SetItem(m_name, key, value, true); }
bool FileSection::SetItem(std::string key, const char* value) { return SetItem(m_name, key, value, true); }
bool FileSection::SetItem(std::string key, long value) { return SetItem(m_name, key, value, true); }
bool FileSection::SetItem(std::string key, int value) { return SetItem(m_name, key, value, true); }
bool FileSection::SetItem(std::string key, unsigned int value) { return SetItem(m_name, key, value, true); }
bool FileSection::SetItem(std::string key, bool value) { return SetItem(m_name, key, value, true); }
bool FileSection::SetItem(std::string key, double value) { return SetItem(m_name, key, value, true); }

bool FileSection::DeleteItem(std::string key, bool deleteEmptySection) { return FileObject::DeleteItem(m_name, key, deleteEmptySection); }

bool FileSection::HasKey(const std::string& key) const { return FileObject::HasKey(m_name, key); }

bool FileSection::GetFirstMapEntry(std::string& key, std::string& value) {
  return FileObject::GetFirstMapEntry(m_cursor, m_name, key, value);
}

bool FileSection::GetNextMapEntry(std::string& key, std::string& value) { return FileObject::GetNextMapEntry(m_cursor, key, value); }

const std::string& FileSection::Name() const { return m_name; }

bool FileSection::GetFromFileObject(const std::string& section, const FileObject& source) {
  // Kept: the name is set even when the source does not have the section.
  m_name = section;
  MakeEmpty();
  return CopySection(m_name, source);
}

bool FileSection::SetToFileObject(FileObject& target) const { return target.CopySection(m_name, *this); }

bool FileSection::SetToFileObject(const std::string& section, FileObject& target) const { return target.CopySection(section, *this); }
