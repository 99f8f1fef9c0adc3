// Walks the includes of the library, file by file, and holds the layers: imports run one way, from the top to the bottom,
// and nothing goes round in a circle. Also: only platform/posix and platform/win32 know a system's header, and the chief
// header names every public one.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/SourceFolder.h"

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = SourceFolder();

// Height of a layer; a file may include what is lower, and its own folder.
const std::map<std::string, int> kFolderHeight = {
    {"platform", 0}, {"frame", 10}, {"concurrency", 20}, {"errors", 30},   {"config", 40},    {"time", 50},
    {"files", 60},   {"sonar", 70}, {"geometry", 80},    {"data", 90},     {"numerics", 100}, {"colour", 100},
    {"units", 100},  {"xml", 100},  {"actions", 100},    {"geodesy", 100}, {"comms", 100}};

// Single files that sit lower or higher than their folder, by the front of their path below zelbase/.
const std::vector<std::pair<std::string, int>> kExceptions = {{"config/CRCChecksum", 5},
                                                              {"config/Checksums", 5},
                                                              {"config/detail/Crc", 5},
                                                              {"config/detail/Prefetch", 5},
                                                              {"errors/DaxError", 55},
                                                              {"errors/ErrorMessageFile", 105},
                                                              {"frame/GeographicText", 35},
                                                              {"frame/LanguageModules", 110},
                                                              {"frame/ModuleStart", 110},
                                                              {"frame/ZelBase.h", 120},
                                                              {"frame/detail/LanguageTables", 110}};

std::string Folder(const std::string& file) { return file.substr(0, file.find('/')); }

int Height(const std::string& file) {
  for (const auto& [front, height] : kExceptions) {
    if (file.rfind(front, 0) == 0) return height;
  }
  const auto found = kFolderHeight.find(Folder(file));
  return found == kFolderHeight.end() ? -1 : found->second;
}

// Path below zelbase/ of each source file, with the paths below zelbase/ that it includes.
using Includes = std::map<std::string, std::vector<std::string>>;

std::vector<std::string> ReadLines(const fs::path& path) {
  std::ifstream stream(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Includes ReadIncludes() {
  static const std::regex pattern(R"re(^\s*#\s*include\s*"zelbase/([^"]+)")re");
  Includes includes;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / "zelbase")) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    auto& list = includes[fs::relative(entry.path(), kRoot / "zelbase").generic_string()];
    for (const std::string& line : ReadLines(entry.path())) {
      std::smatch match;
      if (std::regex_search(line, match, pattern)) list.push_back(match[1]);
    }
  }
  return includes;
}

// An arrow is upward when its end is higher than its start, or when both are equally high in two folders.
bool IsUpward(const std::string& from, const std::string& to) {
  const int difference = Height(to) - Height(from);
  return difference > 0 || (difference == 0 && Folder(from) != Folder(to));
}

bool IsPublicHeader(const std::string& file) {
  return file.ends_with(".h") && file.find("/detail/") == std::string::npos && file.find("/posix/") == std::string::npos &&
         file.find("/win32/") == std::string::npos && file != "frame/ZelBase.h";
}

}  // namespace

TEST(Layers, EveryFolderHasAHeight) {
  for (const auto& [file, list] : ReadIncludes()) EXPECT_GE(Height(file), 0) << file;
}

TEST(Layers, EveryIncludeExists) {
  const Includes includes = ReadIncludes();
  for (const auto& [file, list] : includes) {
    for (const auto& included : list) EXPECT_TRUE(includes.contains(included)) << file << " includes " << included;
  }
}

TEST(Layers, NoIncludeGoesUpward) {
  for (const auto& [file, list] : ReadIncludes()) {
    for (const auto& included : list) EXPECT_FALSE(IsUpward(file, included)) << file << " includes " << included;
  }
}

TEST(Layers, NoIncludeGoesInACircle) {
  const Includes includes = ReadIncludes();
  std::set<std::string> done;
  std::vector<std::string> path;
  const std::function<void(const std::string&)> walk = [&](const std::string& file) {
    if (done.contains(file)) return;
    ASSERT_EQ(std::find(path.begin(), path.end(), file), path.end()) << file << " includes itself by a detour";
    path.push_back(file);
    for (const auto& included : includes.at(file)) {
      if (included != file) walk(included);
    }
    path.pop_back();
    done.insert(file);
  };
  for (const auto& [file, list] : includes) walk(file);
}

TEST(Layers, OnlyTheSystemsFoldersIncludeASystemsHeader) {
  static const std::regex pattern(
      R"(^\s*#\s*include\s*<(unistd|fcntl|dlfcn|pthread|termios|dirent|sched|signal|link|sys/.*|linux/.*|windows)\.?h?>)");
  for (const auto& [file, list] : ReadIncludes()) {
    if (file.rfind("platform/posix/", 0) == 0 || file.rfind("platform/win32/", 0) == 0) continue;
    for (const std::string& line : ReadLines(kRoot / "zelbase" / file)) {
      EXPECT_FALSE(std::regex_search(line, pattern)) << file << ": " << line;
    }
  }
}

TEST(Layers, TheChiefHeaderIncludesEveryPublicHeader) {
  const Includes includes = ReadIncludes();
  const auto& chief = includes.at("frame/ZelBase.h");
  const std::set<std::string> named(chief.begin(), chief.end());
  for (const auto& [file, list] : includes) {
    if (IsPublicHeader(file)) {
      EXPECT_TRUE(named.contains(file)) << file;
    }
  }
  for (const auto& file : named) EXPECT_TRUE(IsPublicHeader(file)) << file;
}
