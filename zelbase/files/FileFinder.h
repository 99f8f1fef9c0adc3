// The files that match a pattern in a directory, or in everything below it. Neighbours: FileName.h, what each is found as;
// FileInfo.h, what the file system knows of one.
#pragma once

#include <string>
#include <vector>

#include "zelbase/files/FileName.h"
#include "zelbase/platform/ZelBaseApi.h"

//   FileFinder finder;
//   const int count = finder.FindFiles("C:\\data", "*.dat", true);
//   for (int i = 0; i < count; ++i) Load(*finder[i]);
//
// A value. One thread at a time; what operator[] gives is as unsafe to share as any FileName.
class ZELBASE_API FileFinder {
 public:
  FileFinder() = default;
  FileFinder(const FileFinder&) = default;
  FileFinder& operator=(const FileFinder&) = default;

  // Looks for `mask` in `directory` (empty: the current one), with `recursive` also in all folders below it, parents ahead of
  // their children. Returns the number found.
  //
  // In the mask "*" stands for any number of characters, also none, "?" for one; A to Z equal a to z; "*.*" is every entry, with
  // a dot or without. Every kind of entry may match, folders, links and the entries "." and ".." too. A folder's matches begin
  // with these two, the others follow in ascending byte order. An empty mask matches nothing. A mask may begin with folders of
  // its own, which are taken as written: it is then looked for there, and found as directory and name.
  //
  // A folder that is missing or may not be read is empty. Links to folders are not entered.
  //
  // Kept: the folders of earlier searches on this object are searched again, with the new mask, ahead of the new ones: the same
  // search twice doubles the result.
  int FindFiles(const std::string& directory, const std::string& mask, bool recursive);

  int NumFiles() const { return static_cast<int>(m_files.size()); }

  // An index that is none gives an empty name.
  const FileName& operator[](int index) const;

 private:
  void AddFolders(const std::string& directory);
  void AddMatches(const std::string& directory);

  std::vector<FileName> m_files;
  std::vector<std::string> m_directories;
  std::string m_mask;
};
