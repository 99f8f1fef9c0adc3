#include "zelbase/data/detail/EntryArchive.h"

#include <algorithm>
#include <string_view>

#include "zelbase/platform/CArchiveException.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace zelbase::detail {
namespace {

constexpr std::size_t kLongestText = 0xFFFFFFFF;
constexpr std::size_t kLongestWord = 8;
constexpr std::size_t kTextBlock = 4096;

std::string_view Travelling(const std::string& text) { return std::string_view(text).substr(0, kLongestText); }

void ReadAll(CArchive& archive, void* target, std::size_t size) {
  if (archive.Read(target, size) != size) throw CArchiveException(CArchiveException::endOfFile);
}

}  // namespace

ZELBASE_WRAPS void EntryWriter::Skip(std::size_t size) {
  while (size-- > 0) Word(0, 1);
}

void EntryWriter::Value(bool value) { Word(value ? 1 : 0, 1); }

void EntryWriter::Text(const std::string& text) { Word(Travelling(text).size(), 4); }

void EntryWriter::Word(unsigned long long word, std::size_t size) {
  char bytes[kLongestWord];
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(word >> (8 * i) & 0xFF);
  m_archive.Write(bytes, size);
}

void TextWriter::Text(const std::string& text) { m_archive.WriteString(Travelling(text)); }

ZELBASE_WRAPS void EntryReader::Skip(std::size_t size) {
  while (size-- > 0) Word(1);
}

void EntryReader::Text(std::string&) { m_lengths.push_back(static_cast<unsigned int>(Word(4))); }

ZELBASE_WRAPS unsigned long long EntryReader::Word(std::size_t size) {
  unsigned char bytes[kLongestWord] = {};
  ReadAll(m_archive, bytes, size);
  unsigned long long word = 0;
  for (std::size_t i = size; i-- > 0;) word = word << 8 | bytes[i];
  return word;
}

void TextReader::Text(std::string& text) {
  text.clear();
  for (std::size_t left = *m_next++; left > 0;) {
    const std::size_t before = text.size();
    const std::size_t part = std::min(left, std::max(before, kTextBlock));
    text.resize(before + part);
    ReadAll(m_archive, text.data() + before, part);
    left -= part;
  }
}

}  // namespace zelbase::detail
