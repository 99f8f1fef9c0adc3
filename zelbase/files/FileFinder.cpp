#include "zelbase/files/FileFinder.h"

#include <utility>

#include "zelbase/files/detail/NameMask.h"
#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

// Entries of a folder, "." and ".." left out; none when it cannot be read.
std::vector<FolderEntry> EntriesOf(const std::string& folder) {
  std::vector<FolderEntry> entries;
  PlatformService<PlatformFiles>::Current().List(folder, entries);
  return entries;
}

}  // namespace

int FileFinder::FindFiles(const std::string& directory, const std::string& mask, bool recursive) {
  std::string folder = directory;  // may be a part of one of our own
  m_mask = mask;
  m_files.clear();
  if (!folder.empty() && folder.back() != '\\') folder += '\\';
  // Kept: m_directories goes on from the search before.
  if (recursive) {
    AddFolders(folder);
  } else {
    m_directories.push_back(folder);
  }
  for (const std::string& searched : m_directories) AddMatches(searched);
  return NumFiles();
}

// Depth first, by a list: a tree may be deeper than the stack.
void FileFinder::AddFolders(const std::string& directory) {
  std::vector<std::string> waiting = {directory};
  while (!waiting.empty()) {
    std::string folder = std::move(waiting.back());
    waiting.pop_back();
    const std::vector<FolderEntry> entries = EntriesOf(folder);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
      if (entry->isFolder) waiting.push_back(folder + entry->name + '\\');
    }
    m_directories.push_back(std::move(folder));
  }
}

ZELBASE_WRAPS void FileFinder::AddMatches(const std::string& directory) {
  const std::string pattern = directory + m_mask;
  const std::size_t begin = pattern.find_last_of("\\/") + 1;
  const std::string mask = pattern.substr(begin);
  const std::string folder = pattern.substr(0, begin);
  std::vector<FolderEntry> entries = {{".", true}, {"..", true}};
  if (PlatformService<PlatformFiles>::Current().List(folder, entries) != FileResult::Ok) return;
  for (const FolderEntry& entry : entries) {
    if (zelbase::detail::MatchesMask(entry.name, mask)) m_files.emplace_back(directory + entry.name);
  }
}

const FileName& FileFinder::operator[](int index) const {
  static const FileName& none = *new FileName;
  return index >= 0 && index < NumFiles() ? m_files[static_cast<std::size_t>(index)] : none;
}
