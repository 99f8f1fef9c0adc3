#include "zelbase/errors/FileObjectError.h"

#include "zelbase/config/CRCChecksum.h"
#include "zelbase/errors/detail/ErrorTexts.h"
#include "zelbase/errors/detail/FillText.h"

using zelbase::detail::FillText;
using zelbase::detail::TextOf;

namespace {

constexpr const char* kSection = "FileObject Error";

}  // namespace

FileObjectError::FileObjectError(const std::string& fileName, const std::string& section, CODE code)
    : FileObjectError(fileName, section, std::string(), code) {}

FileObjectError::FileObjectError(const std::string& fileName, const std::string& section, const std::string& key, CODE code)
    : m_fileName(fileName), m_section(section), m_key(key), m_code(code), m_signature(ComputeSignature()) {}

FileObjectError& FileObjectError::operator=(const FileObjectError& other) {
  m_fileName = other.m_fileName;
  m_section = other.m_section;
  m_key = other.m_key;
  m_code = other.m_code;
  m_signature = other.m_signature;
  Error::operator=(other);  // last: `other` may be among the causes that go
  return *this;
}

const std::string FileObjectError::Type() const { return TextOf(kSection, "Type", "Configuration File Error"); }

const std::string FileObjectError::Format() const {
  const std::string_view name = zelbase::detail::NameAfterFolders(m_fileName);
  switch (m_code) {
    case SectionNotFound: return FillText(TextOf(kSection, "SectionNotFound", 12040), {m_section, name});
    case KeyNotFound: return FillText(TextOf(kSection, "KeyNotFound", 12041), {m_key, m_section, name});
  }
  return std::string();
}

unsigned int FileObjectError::ComputeSignature() const {
  CRCChecksum sum;
  sum += m_fileName;
  sum += m_section;
  sum += m_key;
  sum += static_cast<int>(m_code);
  return sum.Value();
}
