#include "zelbase/files/FileInfo.h"

#include "zelbase/platform/PlatformFiles.h"

FileInfo::FileInfo(const std::string& path) : FileName(path) { Ask(); }

FileInfo::FileInfo(const char* path) : FileName(path) { Ask(); }

FileInfo::FileInfo(const FileName& name) : FileName(name) { Ask(); }

void FileInfo::Ask() {
  constexpr unsigned int kReadOnly = 1;
  constexpr unsigned int kFolder = 16;
  constexpr unsigned int kNormal = 128;
  FileStatus status;
  if (PlatformService<PlatformFiles>::Current().GetStatus(**this, status) != FileResult::Ok) return;
  m_attributes = (status.isFolder ? kFolder : 0u) | (status.isWritable ? 0u : kReadOnly);
  if (m_attributes == 0) m_attributes = kNormal;
  m_stat = status.record;
}

const struct stat& FileInfo::Stat() const { return m_stat != nullptr ? *m_stat : FileStatus::NoRecord(); }
