// Takes records of fixed size with strings in them to an archive and back: count, entries, then the bytes of all strings. Internal
// to the library; DataImage.h tells what an entry holds, docs/data-identifiers.md shows the bytes.
#pragma once

#include <bit>
#include <cstddef>
#include <string>
#include <vector>

#include "zelbase/platform/CArchive.h"

namespace zelbase::detail {

// An entry is described once, by calls in the order of its bytes, and the description serves four purposes, one class each: writing
// and reading the entries, and then their strings. All numbers are little-endian.

class EntryWriter {
 public:
  explicit EntryWriter(CArchive& archive) : m_archive(archive) {}

  // Bytes that mean nothing.
  void Skip(std::size_t size);
  void Value(bool value);
  void Value(unsigned char value) { Word(value, 1); }
  void Value(unsigned short value) { Word(value, 2); }
  void Value(unsigned int value) { Word(value, 4); }
  void Value(int value) { Word(static_cast<unsigned int>(value), 4); }
  void Value(double value) { Word(std::bit_cast<unsigned long long>(value), 8); }
  // The 4 bytes of its length.
  void Text(const std::string& text);

 private:
  void Word(unsigned long long word, std::size_t size);

  CArchive& m_archive;
};

// Of a string longer than 4294967295 bytes the front of that length travels.
class TextWriter {
 public:
  explicit TextWriter(CArchive& archive) : m_archive(archive) {}

  void Skip(std::size_t) {}
  template <class Number>
  void Value(Number) {}
  void Text(const std::string& text);

 private:
  CArchive& m_archive;
};

// Throws CArchiveException, endOfFile, when the archive ends within an entry.
class EntryReader {
 public:
  explicit EntryReader(CArchive& archive) : m_archive(archive) {}

  void Skip(std::size_t size);
  // Any byte but 0 is true.
  void Value(bool& value) { value = Word(1) != 0; }
  void Value(unsigned char& value) { value = static_cast<unsigned char>(Word(1)); }
  void Value(unsigned short& value) { value = static_cast<unsigned short>(Word(2)); }
  void Value(unsigned int& value) { value = static_cast<unsigned int>(Word(4)); }
  void Value(int& value) { value = static_cast<int>(static_cast<unsigned int>(Word(4))); }
  void Value(double& value) { value = std::bit_cast<double>(Word(8)); }
  void Text(std::string& text);

  // The lengths of all strings met, in order.
  const std::vector<unsigned int>& Lengths() const { return m_lengths; }

 private:
  unsigned long long Word(std::size_t size);

  CArchive& m_archive;
  std::vector<unsigned int> m_lengths;
};

// The same, in the bytes of a string. Never asks for more memory than twice what the archive has given.
class TextReader {
 public:
  TextReader(CArchive& archive, const std::vector<unsigned int>& lengths) : m_archive(archive), m_next(lengths.begin()) {}

  void Skip(std::size_t) {}
  template <class Number>
  void Value(Number&) {}
  void Text(std::string& text);

 private:
  CArchive& m_archive;
  std::vector<unsigned int>::const_iterator m_next;
};

// Count, entries, strings. `describe` is called as describe(writer, entry) for each entry, twice.
template <class Entries, class Describe>
void StoreEntries(CArchive& archive, const Entries& entries, const Describe& describe) {
  archive.WriteCount(entries.size());
  EntryWriter writer(archive);
  for (const auto& entry : entries) describe(writer, entry);
  TextWriter texts(archive);
  for (const auto& entry : entries) describe(texts, entry);
}

// What StoreEntries wrote. Nothing is reserved by the count, which may be anything: an archive that ends before what it announces
// throws CArchiveException, endOfFile.
template <class Entry, class Describe>
std::vector<Entry> LoadEntries(CArchive& archive, const Describe& describe) {
  std::vector<Entry> entries;
  EntryReader reader(archive);
  for (std::size_t left = archive.ReadCount(); left > 0; --left) describe(reader, entries.emplace_back());
  TextReader texts(archive, reader.Lengths());
  for (Entry& entry : entries) describe(texts, entry);
  return entries;
}

}  // namespace zelbase::detail
