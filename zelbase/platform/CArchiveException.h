// The failure of taking an archive apart, as CArchive throws it. Neighbour: CFileException.h, the failure of the file below.
#pragma once

#include <exception>

#include "zelbase/platform/ZelBaseApi.h"

// Thrown by value; catch it by constant reference.
class ZELBASE_API CArchiveException : public std::exception {
 public:
  // Why, by the framework's numbers.
  enum Cause : int {
    none = 0,
    genericException = 1,
    readOnly = 2,   // writing to a loading archive
    endOfFile = 3,  // the archive ends before what it announces
    writeOnly = 4,  // reading from a storing archive
    badIndex = 5,
    badClass = 6,
    badSchema = 7
  };

  explicit CArchiveException(int cause = none) : m_cause(cause) {}

  // A constant text, the same for every cause.
  const char* what() const noexcept override;

  int m_cause;  // a Cause
};
