// A section or a key is missing in a settings file. Neighbour: FileError.h, for the file itself.
#pragma once

#include <string>

#include "zelbase/errors/Error.h"

// Says which file, section and key. The signature is worked out once, when the object is made. Copies as Error.h says.
class ZELBASE_API FileObjectError : public Error {
 public:
  enum CODE : int { SectionNotFound = 0, KeyNotFound = 1 };

  // Any names and any code are taken. The first form has an empty key.
  FileObjectError(const std::string& fileName, const std::string& section, CODE code);
  FileObjectError(const std::string& fileName, const std::string& section, const std::string& key, CODE code);
  FileObjectError(const FileObjectError& other) = default;
  FileObjectError& operator=(const FileObjectError& other);

  // Wording "Type" of section "FileObject Error"; otherwise "Configuration File Error".
  const std::string Type() const override;

  // Wording "SectionNotFound" or "KeyNotFound" of section "FileObject Error", otherwise a built-in text. The first is filled
  // in with section and file, the second with key, section and file, where the file is its name after the last "\". An
  // unknown code gives an empty text.
  const std::string Format() const override;

  // The file name in full.
  const std::string Details() const override { return m_fileName; }

  Error* Copy() const override { return new FileObjectError(*this); }

  // Over file name, section, key and code.
  unsigned int Signature() const override { return m_signature; }

 private:
  unsigned int ComputeSignature() const;

  std::string m_fileName;
  std::string m_section;
  std::string m_key;
  CODE m_code;
  unsigned int m_signature;
};
