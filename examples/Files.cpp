// Files: names taken apart and checked.
#include <cstdio>
#include <string>

#include "zelbase/files/PathHelpers.h"

int main() {
  const std::string path = "C:\\survey\\lines\\0042.dat";
  std::printf("title %s\n", GetTitleFromPath(path).c_str());
  std::string directory, name, extension;
  SplitPath(path, directory, name, extension);
  std::printf("%s | %s | %s\n", directory.c_str(), name.c_str(), extension.c_str());
  std::printf("\"a:b\" is %s name\n", AllValidFileSystemChars("a:b") ? "a" : "no");
  return 0;
}

// Prints:
//   title 0042
//   C:\survey\lines\ | 0042 | dat
//   "a:b" is no name
