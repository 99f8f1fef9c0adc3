// Paths in plain strings: taken apart, and asked for the characters that a file system refuses. Neighbours: FileName.h, the
// class for paths that are changed; FileHelpers.h, which asks the file system.
//
// All of these may be called from any thread; nothing fails. The separator is "\".
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Splits at the last "\" and the last ".". The directory keeps its final "\", the extension loses its dot. The results may be
// `path` itself.
//
//   path               directory   name         extension
//   "C:\dir\file.txt"  "C:\dir\"   "file"       "txt"
//   "file.txt"         ""          "file"       "txt"
//   "file"             ""          "file"       ""
//   ".cfg"             ""          ".cfg"       ""
//   "C:\dir\file"      "C:\dir\"   ""           ""
//   "C:\a.b\file"      "C:\a.b\"   ""           "b\file"
//   "dir\"             ""          "dir\"       ""
//
// Kept: the last three. A name is found only before a dot, the dot may lie in a directory's name, and where nothing at all was
// found the name is the whole text.
ZELBASE_API void SplitPath(const std::string& path, std::string& directory, std::string& name, std::string& extension);

// The name without directory, drive and extension: "track" of "C:\data\track.dat".
// Kept: a name that is nothing but an extension gives the directory's, "a" of "a\.b"; a final "\" does not count.
ZELBASE_API const std::string GetTitleFromPath(const std::string& path);

// What stands behind the last "\": "track.dat" of "C:\data\track.dat", nothing of "data\", all of "track.dat".
ZELBASE_API const std::string GetFileNameFromPath(const std::string& path);

// True when `name` has none of \ / : * " < > | ? and so may be an entry of a directory.
// Kept: a comma is accepted here and refused by FileName::IsValidName; "\", "/" and ":" are refused only here.
ZELBASE_API bool AllValidFileSystemChars(const std::string& name);
inline bool AllValidFileSystemChars(std::string& name) {
  const std::string& text = name;
  return AllValidFileSystemChars(text);
}
