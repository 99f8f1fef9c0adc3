// What the tests of the settings store share: a file in memory, texts in and out, and a plain picture of a store.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/config/FileObject.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CFile.h"

class MemoryFile : public CFile {
 public:
  explicit MemoryFile(std::string text = {}) : m_text(std::move(text)) {}

  unsigned int Read(void* buffer, unsigned int count) override {
    const std::size_t taken = std::min<std::size_t>(count, m_text.size() - m_position);
    if (taken != 0) std::memcpy(buffer, m_text.data() + m_position, taken);
    m_position += taken;
    return static_cast<unsigned int>(taken);
  }

  void Write(const void* buffer, unsigned int count) override { m_text.append(static_cast<const char*>(buffer), count); }

  const std::string& Text() const { return m_text; }

 private:
  std::string m_text;
  std::size_t m_position = 0;
};

inline bool ReadFrom(FileObject& settings, const std::string& text) {
  MemoryFile file(text);
  CArchive archive(&file, CArchive::load);
  return settings.Read(archive);
}

inline std::string WrittenBy(const FileObject& settings) {
  MemoryFile file;
  CArchive archive(&file, CArchive::store);
  return settings.Write(archive) ? file.Text() : "(not written)";
}

using Items = std::map<std::string, std::string>;
using Picture = std::map<std::string, Items>;

// The items of one section, by walking over them.
inline Items ItemsOf(const FileObject& settings, const std::string& section) {
  Items items;
  FobjSection cursor;
  std::string key;
  std::string value;
  for (bool more = settings.GetFirstMapEntry(cursor, section, key, value); more; more = settings.GetNextMapEntry(cursor, key, value)) {
    items[key] = value;
  }
  return items;
}

inline std::vector<std::string> SectionNames(const FileObject& settings) {
  std::vector<std::string> names;
  FobjSection cursor;
  std::string name;
  for (bool more = settings.GetFirstSectionEntry(cursor, name); more; more = settings.GetNextSectionEntry(cursor, name)) {
    names.push_back(name);
  }
  return names;
}

// All sections, the checksum included.
inline Picture PictureOf(const FileObject& settings) {
  Picture picture;
  for (const std::string& name : SectionNames(settings)) picture[name] = ItemsOf(settings, name);
  const std::string& checksum = FileObject::CHECKSUM_SECTION;
  if (settings.HasSection(checksum)) picture[checksum] = ItemsOf(settings, checksum);
  return picture;
}

inline std::string TextOf(const FileObject& settings, const std::string& section, const std::string& key) {
  std::string value = "(none)";
  settings.GetItem(section, key, value);
  return value;
}
