// A FileObject as text: reading, writing, files.
#include <utility>

#include "zelbase/config/FileObject.h"
#include "zelbase/config/detail/ReplacingFile.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CFile.h"

using zelbase::detail::ItemMap;
using zelbase::detail::ReplacingFile;
using zelbase::detail::ScanSettingsLine;
using zelbase::detail::SectionMap;
using zelbase::detail::SettingsLine;
using zelbase::detail::SettingsLineKind;
using zelbase::detail::TableWalk;

namespace {

constexpr int kBufferSize = 4096;

}  // namespace

bool FileObject::AfterFileOpen() { return true; }

bool FileObject::FailOpening(const std::string& fileName) const {
  SetErrorStatus(FOBJ_OPEN_FAILED);
  FileError(fileName, FileError::Open).Report(m_errorContext);
  return false;
}

bool FileObject::FailWriting() const {
  SetErrorStatus(FOBJ_WRITE_FAILED);
  // Kept: the object's own file name, whatever file was written; error lists are keyed by it.
  FileError(m_fileName, FileError::Write).Report(m_errorContext);
  return false;
}

bool FileObject::FileOpen(std::string fileName, unsigned int openFlags) {
  // Kept: the object and its name are gone even when the open fails.
  MakeEmpty();
  m_read = false;
  m_fileName.clear();
  if (fileName.empty()) {
    SetErrorStatus(FOBJ_NO_FILE_NAME);
    return false;
  }
  CFile file;
  if (!file.Open(fileName, openFlags, nullptr)) return FailOpening(fileName);
  if ((openFlags & CFile::modeCreate) == 0) return FileOpen(file, std::move(fileName));
  m_fileName = std::move(fileName);
  return FinishOpening();
}

bool FileObject::FileOpen(CFile& file, std::string fileName) {
  MakeEmpty();
  m_read = false;
  m_fileName = std::move(fileName);
  CArchive archive(&file, CArchive::load, kBufferSize);
  // Kept: the result is dropped on purpose; a file without any section opens, with status 2.
  static_cast<void>(Read(archive));
  return FinishOpening();
}

bool FileObject::FinishOpening() {
  if (!AfterFileOpen()) return false;
  m_read = true;
  return true;
}

void FileObject::FileClose() {
  MakeEmpty();
  m_read = false;
  m_fileName.clear();
}

bool FileObject::Read(CArchive& archive) {
  MakeEmpty();
  if (ReadLines(archive)) return true;
  SetErrorStatus(FOBJ_NO_SECTIONS);
  return false;
}

// True when there was a section head.
bool FileObject::ReadLines(CArchive& archive) {
  ItemMap* items = nullptr;
  std::string_view line;
  while (archive.ReadLine(line)) {
    const SettingsLine parts = ScanSettingsLine(line);
    if (parts.kind == SettingsLineKind::Section) {
      const SectionMap::Section* const known = m_sections->Find(parts.name);
      items = known != nullptr ? known->items.get() : m_sections->Add(parts.name).items.get();
    } else if (items == nullptr) {
      m_extraInfo.emplace_back(line);
    } else if (parts.kind == SettingsLineKind::Item) {
      items->Set(parts.name, parts.value);
    }
  }
  return items != nullptr;
}

bool FileObject::Write(CArchive& archive) const {
  SetErrorStatus(FOBJ_OK);
  try {
    WriteLines(archive);
    archive.Flush();
  } catch (const CFileException&) {
    return FailWriting();
  }
  return true;
}

void FileObject::WriteLines(CArchive& archive) const {
  std::string text;
  const auto putOut = [&] {
    archive.WriteString(text);
    text.clear();
  };
  for (const std::string& line : m_extraInfo) {
    text.append(line).append("\r\n");
    putOut();
  }
  TableWalk sections = m_sections->Begin();
  while (const SectionMap::Section* const section = m_sections->Next(sections)) {
    text.append("[").append(section->name).append("]\r\n");
    putOut();
    TableWalk items = section->items->Begin();
    std::string_view key;
    std::string_view value;
    while (section->items->Next(items, key, value)) {
      text.append(key).append(" = ").append(value).append("\r\n");
      putOut();
    }
    archive.WriteString("\r\n");
  }
}

bool FileObject::FileSave(std::string fileName, unsigned int openFlags) const {
  SetErrorStatus(FOBJ_OK);
  if (fileName.empty()) fileName = m_fileName;
  if (fileName.empty()) {
    SetErrorStatus(FOBJ_NO_FILE_NAME);
    return false;
  }
  CFile file;
  if (!file.Open(fileName, openFlags, nullptr)) return FailOpening(fileName);
  return FileSave(file);
}

bool FileObject::FileSave(CFile& file) const {
  SetErrorStatus(FOBJ_OK);
  CArchive archive(&file, CArchive::store, kBufferSize);
  return Write(archive);
}

bool FileObject::FileSaveReplacing(std::string fileName) const {
  SetErrorStatus(FOBJ_OK);
  if (fileName.empty()) fileName = m_fileName;
  if (fileName.empty()) {
    SetErrorStatus(FOBJ_NO_FILE_NAME);
    return false;
  }
  ReplacingFile file;
  if (!file.Begin(fileName)) return FailOpening(fileName);
  if (!FileSave(file)) return false;
  return file.Commit() ? true : FailWriting();
}
