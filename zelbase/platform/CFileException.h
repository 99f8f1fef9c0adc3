// The failure of a file operation, as CFile and CArchive throw it. Neighbour: FileResult.h, the numbers behind it.
#pragma once

#include <exception>
#include <string>

#include "zelbase/platform/FileResult.h"
#include "zelbase/platform/ZelBaseApi.h"

// Thrown by value; catch it by constant reference. CFile::Open fills one in instead of throwing.
class ZELBASE_API CFileException : public std::exception {
 public:
  // Why, in the framework's coarse terms.
  enum Cause : int {
    none = 0,
    genericException = 1,
    fileNotFound = 2,
    badPath = 3,
    tooManyOpenFiles = 4,
    accessDenied = 5,
    invalidFile = 6,
    removeCurrentDir = 7,
    directoryFull = 8,
    badSeek = 9,
    hardIO = 10,
    sharingViolation = 11,
    lockViolation = 12,
    diskFull = 13,
    endOfFile = 14
  };

  // A null name is an empty one.
  explicit CFileException(int cause = none, int osError = -1, const char* fileName = nullptr);

  // The failure that `result` tells; `fileName` as the caller gave it.
  CFileException(FileResult result, const std::string& fileName);

  // A constant text, the same for every cause.
  const char* what() const noexcept override;

  // The cause that a FileResult number means; genericException for a number without one.
  static int OsErrorToException(int osError);

  int m_cause = none;         // a Cause
  int m_lOsError = -1;        // the FileResult number, -1 when there is none
  std::string m_strFileName;  // the file's name, empty when there is none
};
