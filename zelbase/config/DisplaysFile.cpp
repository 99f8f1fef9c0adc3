#include "zelbase/config/DisplaysFile.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "zelbase/frame/KeyTables.h"
#include "zelbase/platform/CFile.h"

namespace {

constexpr int kNoError = 0;
constexpr int kNotOpened = 1;
constexpr int kUnknownSection = 2;

bool IsViewType(const std::string& name) {
  return std::find(std::begin(viewTypeKeys), std::end(viewTypeKeys), name) != std::end(viewTypeKeys);
}

}  // namespace

DisplaysFile::DisplaysFile() = default;

DisplaysFile::~DisplaysFile() = default;

DisplaysFile::DisplaysFile(const DisplaysFile& other) = default;

DisplaysFile& DisplaysFile::operator=(const DisplaysFile& other) = default;

bool DisplaysFile::ReadFromDisk(const std::string& fileName) {
  // Kept: neither code nor name is reset here, so that an error stays until somebody has fetched it.
  if (!FileOpen(fileName, CFile::modeRead | CFile::shareDenyWrite)) {
    // Kept: the code only; a name that was not fetched stays beside it.
    m_errorCode = kNotOpened;
    return false;
  }
  FobjSection cursor;
  std::string section;
  for (bool more = GetFirstSectionEntry(cursor, section); more; more = GetNextSectionEntry(cursor, section)) {
    if (IsViewType(section)) continue;
    m_errorCode = kUnknownSection;
    m_errorName = section;
  }
  // Kept: a file without any section is a good one.
  return m_errorCode == kNoError;
}

bool DisplaysFile::IsPresent(const std::string& section) const {
  // Kept: a checksum is no display and never present, as in a walk over the sections.
  return section != CHECKSUM_SECTION && HasSection(section);
}

bool DisplaysFile::IsPresent(const std::string& section, const std::string& key) const {
  // Kept: an empty value counts, unlike in HasKey, and the checksum's keys can be present though it is not.
  std::string_view value;
  return Peek(section, key, value);
}

void DisplaysFile::GetError(ERRINFO& info) {
  info.code = m_errorCode;
  info.name = m_errorName;
  m_errorCode = kNoError;
  m_errorName.clear();
}
