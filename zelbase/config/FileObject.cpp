// Sections, enumeration and value semantics. FileObjectItems.cpp has the items, FileObjectFiles.cpp reading and writing.
#include "zelbase/config/FileObject.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "zelbase/errors/GlobalErrorList.h"

using zelbase::detail::ItemMap;
using zelbase::detail::kChecksumSection;
using zelbase::detail::SectionMap;
using zelbase::detail::TableWalk;

namespace {

int ToCount(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, std::numeric_limits<int>::max())); }

// A walk that stands at the end, whatever is added.
constexpr TableWalk kEnded{std::numeric_limits<std::uint64_t>::max(), 0, 0};

}  // namespace

FileObject::FileObject() : m_sections(std::make_unique<SectionMap>()), m_errorContext(GlobalErrorList::Get().DefaultContext()) {}

FileObject::~FileObject() = default;

FileObject::FileObject(const FileObject& other) : m_sections(std::make_unique<SectionMap>()) { *this = other; }

// All that may run out of memory comes first, so that the target is assigned whole or stays as it was.
FileObject& FileObject::operator=(const FileObject& other) {
  // Kept: an object assigned to itself ends empty; callers use that.
  if (this == &other) {
    MakeEmpty();
    return *this;
  }
  auto sections = std::make_unique<SectionMap>();
  TableWalk walk = other.m_sections->Begin();
  while (const SectionMap::Section* const section = other.m_sections->Next(walk)) {
    // Kept: the copy has no checksum, since it belongs to the file and not to what is copied from it.
    if (section->name != kChecksumSection) sections->Add(section->name).items->Merge(*section->items);
  }
  std::string fileName = other.m_fileName;
  std::string errorContext = other.m_errorContext;
  std::vector<std::string> extraInfo = other.m_extraInfo;
  MakeEmpty();
  m_throwExceptions = other.m_throwExceptions;
  m_read = other.m_read;
  m_fileName.swap(fileName);
  m_extraInfo.swap(extraInfo);
  m_errorStatus = other.m_errorStatus;
  m_errorContext.swap(errorContext);
  m_sectionGeneration = other.m_sectionGeneration;
  m_sections.swap(sections);
  return *this;
}

int FileObject::GetErrorStatus() const { return m_errorStatus; }

void FileObject::SetErrorStatus(int status) const { m_errorStatus = status; }

void FileObject::MakeEmpty() {
  m_extraInfo.clear();
  m_sections->Clear();
  SetErrorStatus(FOBJ_OK);
}

bool FileObject::FileInitialised() const { return m_read; }

void FileObject::SetReadStatus(bool read) { m_read = read; }

std::string FileObject::GetFileName() const { return m_fileName; }

void FileObject::SetFileName(const std::string& fileName) { m_fileName = fileName; }

std::string FileObject::GetFileTitle() const {
  std::string title = m_fileName;
  // Kept: the last "." cuts even when it belongs to a folder, so "C:\a.b\file" gives "a"; titles in use come from this.
  const std::size_t dot = title.rfind('.');
  if (dot != std::string::npos && dot >= 1) title.erase(dot);
  for (const char separator : {'\\', ':'}) {
    const std::size_t last = title.rfind(separator);
    if (last != std::string::npos) title.erase(0, last + 1);
  }
  return title;
}

const std::vector<std::string>& FileObject::GetExtraInfo() const { return m_extraInfo; }

void FileObject::ThrowExceptions(bool throwExceptions) { m_throwExceptions = throwExceptions; }

bool FileObject::ThrowExceptions() const { return m_throwExceptions; }

void FileObject::SetErrorContext(const std::string& context) { m_errorContext = context; }

bool FileObject::ReportError(const std::string&) const { return false; }

bool FileObject::ReportError(const std::string&, const std::string&) const { return false; }

void FileObject::SelectForCursor(FobjSection& cursor, const SectionMap::Section& section) const {
  cursor.m_selection = m_sections->Select(section);
  cursor.m_items = section.items->Begin();
  cursor.m_name = section.name;
}

bool FileObject::CreateSection(FobjSection& cursor, std::string name, bool replace) {
  SetErrorStatus(FOBJ_OK);
  SectionMap::Section* section = m_sections->Find(name);
  if (section == nullptr) {
    section = &m_sections->Add(name);
  } else if (replace) {
    m_sections->ReplaceItems(*section);
  }
  // Kept: the cursor's IsValid stays as it was; it tells of GetFirstMapEntry only.
  SelectForCursor(cursor, *section);
  return true;
}

bool FileObject::CreateSection(std::string name, bool replace) {
  FobjSection cursor;
  return CreateSection(cursor, std::move(name), replace);
}

bool FileObject::SetSection(FobjSection& cursor, std::string name) { return CreateSection(cursor, std::move(name), false); }

bool FileObject::SelectSectionNT(FobjSection& cursor, const std::string& name) const {
  const SectionMap::Section* const section = m_sections->Find(name);
  if (section == nullptr) {
    cursor.ForgetSection();
    return false;
  }
  SelectForCursor(cursor, *section);
  cursor.m_valid = true;
  return true;
}

bool FileObject::DeleteSection(FobjSection& cursor, std::string name) {
  SetErrorStatus(FOBJ_OK);
  if (m_sections->Size() == 0) {
    SetErrorStatus(FOBJ_NO_SECTIONS);
    return false;
  }
  SectionMap::Section* const section = m_sections->Find(name);
  if (section == nullptr) {
    SetErrorStatus(FOBJ_SECTION_NOT_FOUND);
    return false;
  }
  const bool wasSelected = m_sections->IsSelected(cursor.m_selection, *section);
  m_sections->Remove(*section);
  TableWalk walk = m_sections->Begin();
  const SectionMap::Section* const first = m_sections->Next(walk);
  if (wasSelected && first != nullptr) SelectForCursor(cursor, *first);
  cursor.m_items = kEnded;
  ++m_sectionGeneration;
  ++cursor.m_generation;
  if (first != nullptr) return true;
  cursor.m_name.clear();
  cursor.m_selection = {};
  cursor.m_sections = kEnded;
  ++m_sectionGeneration;
  ++cursor.m_generation;
  return true;
}

bool FileObject::DeleteSection(std::string name) {
  FobjSection cursor;
  return DeleteSection(cursor, std::move(name));
}

bool FileObject::RenameSection(std::string oldName, std::string newName) {
  SetErrorStatus(FOBJ_OK);
  if (m_sections->Size() == 0) {
    SetErrorStatus(FOBJ_NO_SECTIONS);
    return false;
  }
  if (m_sections->Find(oldName) == nullptr) {
    SetErrorStatus(FOBJ_SECTION_NOT_FOUND);
    return false;
  }
  if (oldName == newName) return true;
  // Kept: the section that had the new name is replaced, not merged, and open walks are not told to start again.
  if (SectionMap::Section* const replaced = m_sections->Find(newName)) m_sections->Remove(*replaced);
  m_sections->Rename(*m_sections->Find(oldName), std::move(newName));
  return true;
}

bool FileObject::CopySection(const std::string& section, const FileObject& source) {
  const ItemMap* const items = source.m_sections->FindItems(section);
  if (items == nullptr) return false;
  const ItemMap* const present = m_sections->FindItems(section);
  ItemMap merged;
  if (present != nullptr) merged = *present;
  if (items != present) merged.Merge(*items);
  CreateSection(section, false);
  *m_sections->FindItems(section) = std::move(merged);
  return true;
}

bool FileObject::CopySection(const std::string& section, const FileObject& source, const std::string& sourceSection) {
  const ItemMap* const items = source.m_sections->FindItems(sourceSection);
  if (items == nullptr) return false;
  ItemMap copy;
  // Kept: a section copied onto itself ends empty.
  if (items != m_sections->FindItems(section)) copy.Merge(*items);
  CreateSection(section, false);
  m_sections->FindItems(section)->Replace(std::move(copy));
  return true;
}

bool FileObject::HasSection(const std::string& name) const { return m_sections->Find(name) != nullptr; }

int FileObject::GetNumSections() const { return ToCount(m_sections->Size()); }

int FileObject::GetNumItems(std::string section) const {
  const ItemMap* const items = m_sections->FindItems(section);
  return items == nullptr ? 0 : ToCount(items->Size());
}

void FileObject::BeginSectionWalk(FobjSection& cursor) const {
  cursor.m_sections = m_sections->Begin();
  cursor.m_sectionEpoch = m_sections->Epoch();
  cursor.m_generation = m_sectionGeneration;
}

bool FileObject::GetFirstSectionEntry(FobjSection& cursor, std::string& name) const {
  BeginSectionWalk(cursor);
  return GetNextSectionEntry(cursor, name);
}

bool FileObject::GetNextSectionEntry(FobjSection& cursor, std::string& name) const {
  name.clear();
  const bool begun = cursor.m_sectionEpoch != 0;
  if (begun && cursor.m_sectionEpoch != m_sections->Epoch()) return false;
  if (cursor.m_generation != m_sectionGeneration) {
    BeginSectionWalk(cursor);
  } else if (!begun) {
    return false;
  }
  const SectionMap::Section* section = m_sections->Next(cursor.m_sections);
  // Kept: the checksum is passed over, so that all that is built on enumeration leaves it out.
  if (section != nullptr && section->name == kChecksumSection) section = m_sections->Next(cursor.m_sections);
  if (section == nullptr) return false;
  name = section->name;
  return true;
}

bool FileObject::GetFirstMapEntry(FobjSection& cursor, std::string section, std::string& key, std::string& value) const {
  key.clear();
  value.clear();
  return SelectSectionNT(cursor, section) && GetNextMapEntry(cursor, key, value);
}

bool FileObject::GetNextMapEntry(FobjSection& cursor, std::string& key, std::string& value) const {
  key.clear();
  value.clear();
  const ItemMap* const items = m_sections->SelectedItems(cursor.m_selection);
  std::string_view nextKey;
  std::string_view nextValue;
  if (items == nullptr || !items->Next(cursor.m_items, nextKey, nextValue)) return false;
  key = nextKey;
  value = nextValue;
  return true;
}
