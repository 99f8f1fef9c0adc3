#include "zelbase/errors/FileError.h"

#include "zelbase/config/CRCChecksum.h"
#include "zelbase/errors/detail/ErrorTexts.h"
#include "zelbase/errors/detail/FillText.h"

using zelbase::detail::TextOf;

namespace {

// Kept: two sections that differ by a blank; the files of wordings in the field have both.
constexpr const char* kTypeSection = "FileError";
constexpr const char* kFormatSection = "File Error";

std::string TextFor(FileError::CODE code) {
  switch (code) {
    case FileError::Open: return TextOf(kFormatSection, "Open", 12035);
    case FileError::Read: return TextOf(kFormatSection, "Read", 12036);
    case FileError::Write: return TextOf(kFormatSection, "Write", 12037);
  }
  return std::string();
}

}  // namespace

FileError::FileError(const std::string& fileName, CODE code) : m_fileName(fileName), m_code(code) {}

FileError& FileError::operator=(const FileError& other) {
  m_fileName = other.m_fileName;
  m_code = other.m_code;
  Error::operator=(other);  // last: `other` may be among the causes that go
  return *this;
}

const std::string FileError::Type() const { return TextOf(kTypeSection, "Type", "File IO Error"); }

const std::string FileError::Format() const {
  return zelbase::detail::FillText(TextFor(m_code), {zelbase::detail::NameAfterFolders(m_fileName)});
}

unsigned int FileError::Signature() const {
  CRCChecksum sum;
  sum += m_fileName;
  sum += static_cast<int>(m_code);
  return sum.Value();
}
