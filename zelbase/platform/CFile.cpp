#include "zelbase/platform/CFile.h"

#include <limits>
#include <utility>

#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

FileRights AccessOf(unsigned int openFlags) {
  const bool creates = (openFlags & CFile::modeCreate) != 0;
  switch (openFlags & 3u) {
    case CFile::modeWrite: return FileRights::Write;
    case CFile::modeReadWrite: return FileRights::ReadWrite;
    default: return creates ? FileRights::ReadWrite : FileRights::Read;
  }
}

FileRights SharingOf(unsigned int openFlags) {
  switch (openFlags & 0x70u) {
    case CFile::shareExclusive: return FileRights::None;
    case CFile::shareDenyWrite: return FileRights::Read;
    case CFile::shareDenyRead: return FileRights::Write;
    default: return FileRights::ReadWrite;
  }
}

FileDisposition DispositionOf(unsigned int openFlags) {
  if ((openFlags & CFile::modeCreate) == 0) return FileDisposition::OpenExisting;
  return (openFlags & CFile::modeNoTruncate) != 0 ? FileDisposition::OpenOrCreate : FileDisposition::CreateAlways;
}

void Fill(CFileException* error, FileResult result, const std::string& fileName) {
  if (error != nullptr) *error = CFileException(result, fileName);
}

}  // namespace

CFile::CFile() = default;

CFile::CFile(const char* fileName, unsigned int openFlags) {
  CFileException error;
  if (!CFile::Open(fileName, openFlags, &error)) throw error;
}

CFile::~CFile() = default;

bool CFile::Open(const char* fileName, unsigned int openFlags, CFileException* error) {
  const std::string name = fileName != nullptr ? fileName : "";
  const FileResult result = OpenThrough(name, openFlags);
  if (result != FileResult::Ok) Fill(error, result, name);
  return result == FileResult::Ok;
}

bool CFile::Open(const std::string& fileName, unsigned int openFlags, CFileException* error) {
  if (fileName.find('\0') == std::string::npos) return Open(fileName.c_str(), openFlags, error);
  Abort();
  Fill(error, FileResult::InvalidName, fileName);
  return false;
}

FileResult CFile::OpenThrough(const std::string& fileName, unsigned int openFlags) {
  m_file.reset();
  m_path.clear();
  if (fileName.empty()) return FileResult::PathNotFound;
  FileOpenRequest request;
  request.path = fileName;
  request.access = AccessOf(openFlags);
  request.sharing = SharingOf(openFlags);
  request.disposition = DispositionOf(openFlags);
  FileResult result = FileResult::IoFailed;
  std::string path = fileName;  // before the file is open, so that it is under this name or not at all
  m_file = PlatformService<PlatformFiles>::Current().Open(request, result);
  if (m_file == nullptr) return result;
  m_path = std::move(path);
  return FileResult::Ok;
}

PlatformFile& CFile::RequireOpen() const {
  if (m_file == nullptr) throw CFileException(FileResult::InvalidHandle, m_path);
  return *m_file;
}

void CFile::ThrowUnlessOk(FileResult result) const {
  if (result != FileResult::Ok) throw CFileException(result, m_path);
}

unsigned int CFile::Read(void* buffer, unsigned int count) {
  PlatformFile& file = RequireOpen();
  if (buffer == nullptr || count == 0) return 0;
  std::size_t done = 0;
  ThrowUnlessOk(file.Read(buffer, count, done));
  return static_cast<unsigned int>(done);
}

void CFile::Write(const void* buffer, unsigned int count) {
  PlatformFile& file = RequireOpen();
  if (buffer == nullptr || count == 0) return;
  std::size_t done = 0;
  ThrowUnlessOk(file.Write(buffer, count, done));
}

unsigned long long CFile::Seek(long long offset, unsigned int from) {
  PlatformFile& file = RequireOpen();
  long long position = 0;
  const FileResult result = from <= end ? file.Seek(offset, static_cast<int>(from), position) : FileResult::InvalidParameter;
  if (result == FileResult::InvalidParameter) {
    throw CFileException(CFileException::badSeek, static_cast<int>(result), m_path.c_str());
  }
  ThrowUnlessOk(result);
  return static_cast<unsigned long long>(position);
}

void CFile::SeekToBegin() { Seek(0, begin); }

unsigned long long CFile::SeekToEnd() { return Seek(0, end); }

unsigned long long CFile::GetPosition() const {
  long long position = 0;
  ThrowUnlessOk(RequireOpen().Seek(0, static_cast<int>(current), position));
  return static_cast<unsigned long long>(position);
}

unsigned long long CFile::GetLength() const {
  long long size = 0;
  ThrowUnlessOk(RequireOpen().GetSize(size));
  return static_cast<unsigned long long>(size);
}

void CFile::SetLength(unsigned long long length) {
  constexpr unsigned long long kLargest = std::numeric_limits<long long>::max();
  Seek(length <= kLargest ? static_cast<long long>(length) : -1, begin);
  ThrowUnlessOk(RequireOpen().SetEnd());
}

void CFile::Flush() { ThrowUnlessOk(RequireOpen().Flush()); }

void CFile::Close() {
  m_file.reset();
  m_path.clear();
}

void CFile::Abort() {
  m_file.reset();
  m_path.clear();
}

std::string CFile::GetFilePath() const { return m_path; }

ZELBASE_WRAPS std::string CFile::GetFileName() const { return m_path.substr(m_path.find_last_of("\\/:") + 1); }
