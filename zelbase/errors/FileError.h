// A file could not be opened, read or written. Neighbour: FileObjectError.h, for what is missing inside a settings file.
#pragma once

#include <string>

#include "zelbase/errors/Error.h"

// Says which file and what was tried. Copies as Error.h says.
class ZELBASE_API FileError : public Error {
 public:
  enum CODE : int { Open = 0, Read = 1, Write = 2 };

  // Any name and any code are taken.
  FileError(const std::string& fileName, CODE code);
  FileError(const FileError& other) = default;
  FileError& operator=(const FileError& other);

  // Wording "Type" of section "FileError"; otherwise "File IO Error".
  const std::string Type() const override;

  // Wording "Open", "Read" or "Write" of section "File Error" (with a blank), otherwise a built-in text; filled in with the
  // name after its last "\". An unknown code gives an empty text.
  const std::string Format() const override;

  // The file name in full.
  const std::string Details() const override { return m_fileName; }

  Error* Copy() const override { return new FileError(*this); }

  // Over file name and code.
  unsigned int Signature() const override;

 private:
  std::string m_fileName;
  CODE m_code;
};
