#include "SettingsFile.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>

#include "zelbase/platform/CFile.h"
#include "zelbase/platform/CFileException.h"

namespace zel {

int Fail(const std::string& message) {
  std::cerr << "zel: " << message << '\n';
  return kFoundWrong;
}

std::string ToSuitePath(std::string path) {
  if (path.size() > 1) std::replace(path.begin() + 1, path.end(), '/', '\\');
  return path;
}

std::string ToShownPath(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

bool SettingsFile::Open(const std::string& name, std::string& reason) {
  path = name;
  try {
    if (!store.FileOpen(ToSuitePath(name), CFile::modeRead | CFile::shareDenyNone)) {
      reason = "cannot open \"" + name + "\"";
      return false;
    }
  } catch (const CFileException&) {
    reason = "cannot read \"" + name + "\"";
    return false;
  }
  encoding = DetectEncoding(ReadBytes(name));
  return true;
}

std::vector<std::string> SectionNames(const FileObject& store) {
  std::vector<std::string> names;
  FobjSection cursor;
  std::string name;
  for (bool more = store.GetFirstSectionEntry(cursor, name); more; more = store.GetNextSectionEntry(cursor, name)) {
    names.push_back(name);
  }
  // Enumeration passes over this one, but it stands in the file.
  if (store.HasSection(FileObject::CHECKSUM_SECTION)) names.push_back(FileObject::CHECKSUM_SECTION);
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<SettingsItem> Items(const FileObject& store, const std::string& section) {
  std::vector<SettingsItem> items;
  FobjSection cursor;
  SettingsItem item;
  for (bool more = store.GetFirstMapEntry(cursor, section, item.key, item.value); more;
       more = store.GetNextMapEntry(cursor, item.key, item.value)) {
    items.push_back(item);
  }
  std::sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
  return items;
}

}  // namespace zel
