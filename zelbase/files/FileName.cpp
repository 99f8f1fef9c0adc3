#include "zelbase/files/FileName.h"

#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr char kSeparator = '\\';

bool EndsInSeparator(const std::string& text) { return !text.empty() && text.back() == kSeparator; }

// Where the root of `path` ends, its separator included; npos when the root is the whole text and lacks a separator; 0
// without a root.
std::size_t RootLength(const std::string& path) {
  constexpr std::size_t kToTheEnd = std::string::npos;
  if (path.starts_with("\\\\")) {
    const std::size_t end = path.find(kSeparator, 2);
    return end == std::string::npos ? kToTheEnd : end + 1;
  }
  if (path.size() < 2 || path[1] != ':') return 0;
  if (path.size() == 2) return kToTheEnd;
  return path[2] == kSeparator ? 3 : 0;
}

}  // namespace

FileName& FileName::Set(const std::string& path) {
  std::string rest = path;  // may be a part of this object
  Clear();
  if (TakeRoot(rest) && TakePath(rest)) TakeName(rest);
  return *this;
}

FileName& FileName::Set(const char* path) { return Set(std::string(path != nullptr ? path : "")); }

// Takes the root off the front of `rest`; false when nothing is left to do.
bool FileName::TakeRoot(std::string& rest) {
  if (rest == "\\\\") return false;
  const std::size_t length = RootLength(rest);
  if (length == 0) return true;
  m_root = rest.substr(0, length);
  rest.erase(0, length);
  if (length == std::string::npos) m_root += kSeparator;
  return !rest.empty();
}

// The same for the directories.
bool FileName::TakePath(std::string& rest) {
  const std::size_t last = rest.rfind(kSeparator);
  if (last == std::string::npos) return true;
  CD(rest.substr(0, last + 1));
  rest.erase(0, last + 1);
  return !rest.empty();
}

// Kept: without a dot the extension stays as it was.
void FileName::TakeName(const std::string& rest) {
  const std::size_t dot = rest.rfind('.');
  m_name = rest.substr(0, dot);
  if (dot != std::string::npos) m_extension = rest.substr(dot);
}

void FileName::Clear() { *this = FileName(); }

bool FileName::IsEmpty() const { return m_root.empty() && m_path.empty() && m_name.empty() && m_extension.empty(); }

bool FileName::operator==(const FileName& other) const {
  return m_root == other.m_root && m_path == other.m_path && m_name == other.m_name && m_extension == other.m_extension;
}

const std::string& FileName::operator*() const {
  if (m_full.empty() && !IsEmpty()) m_full = m_root + m_path + m_name + m_extension;
  return m_full;
}

const std::string FileName::Root(bool withSeparator) const {
  if (withSeparator || m_root.empty()) return m_root;
  return m_root.substr(0, m_root.size() - 1);
}

const std::string FileName::Path(bool withFinalSeparator, bool withRoot) const {
  std::string path = withRoot ? m_root + m_path : m_path;
  if (!withFinalSeparator && !m_path.empty()) path.pop_back();
  return path;
}

const std::string FileName::Name(bool withExtension) const { return withExtension ? m_name + m_extension : m_name; }

const std::string FileName::Extension(bool withDot) const { return withDot || m_extension.empty() ? m_extension : m_extension.substr(1); }

void FileName::SetRoot(const std::string& root) {
  std::string text = root;
  if (!text.empty() && !EndsInSeparator(text)) text += kSeparator;
  m_root = text;
  m_full.clear();
}

void FileName::SetPath(const std::string& path) {
  std::string rest = path;
  m_full.clear();
  m_path.clear();
  if (!TakeRoot(rest) || rest.empty()) return;
  if (!EndsInSeparator(rest)) rest += kSeparator;
  m_path = rest;
}

void FileName::SetName(const std::string& name, bool nameHoldsExtension) {
  const std::string text = name;
  m_full.clear();
  if (nameHoldsExtension) {
    TakeName(text);
  } else {
    m_name = text;
  }
}

void FileName::SetExtension(const std::string& extension) {
  std::string text = extension;
  if (!text.empty() && text.front() != '.') text.insert(0, 1, '.');
  m_extension = text;
  m_full.clear();
}

void FileName::CD(const std::string& relative) {
  const std::string text = relative;
  m_full.clear();
  std::size_t begin = 0;
  for (std::size_t end = text.find(kSeparator); end != std::string::npos; end = text.find(kSeparator, begin)) {
    ChangePath(text.substr(begin, end - begin));
    begin = end + 1;
  }
  if (begin < text.size()) ChangePath(text.substr(begin));
}

ZELBASE_WRAPS void FileName::ChangePath(const std::string& element) {
  if (element.empty()) {
    m_path.clear();  // Kept: a double separator throws away what stood before it
  } else if (element != ".." || m_path.empty()) {
    m_path += element;
  } else {
    m_path.pop_back();
    m_path.erase(m_path.rfind(kSeparator) + 1);
  }
  // Kept: behind ".." out of a deeper directory this is a second separator.
  if (!m_path.empty()) m_path += kSeparator;
}

bool FileName::IsValidName(const std::string& name) {
  // Kept: the separators and ":" pass, which AllValidFileSystemChars refuses, and the comma does not.
  return name.find_first_of(",|?*\"><") == std::string::npos;
}
