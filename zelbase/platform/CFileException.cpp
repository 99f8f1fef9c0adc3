#include "zelbase/platform/CFileException.h"

CFileException::CFileException(int cause, int osError, const char* fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName != nullptr ? fileName : "") {}

CFileException::CFileException(FileResult result, const std::string& fileName)
    : m_cause(OsErrorToException(static_cast<int>(result))), m_lOsError(static_cast<int>(result)), m_strFileName(fileName) {}

const char* CFileException::what() const noexcept { return "file operation failed"; }

int CFileException::OsErrorToException(int osError) {
  switch (static_cast<FileResult>(osError)) {
    case FileResult::Ok: return none;
    case FileResult::NotFound: return fileNotFound;
    case FileResult::PathNotFound:
    case FileResult::InvalidName: return badPath;
    case FileResult::TooManyOpenFiles: return tooManyOpenFiles;
    case FileResult::AccessDenied:
    case FileResult::WriteProtected:
    case FileResult::FileExists: return accessDenied;
    case FileResult::InvalidHandle: return invalidFile;
    case FileResult::SharingViolation: return sharingViolation;
    case FileResult::DiskFull: return diskFull;
    case FileResult::IoFailed:
    case FileResult::UnexpectedNetwork:
    case FileResult::NetworkNameDeleted: return hardIO;
    default: return genericException;
  }
}
