#include "zelbase/files/PathHelpers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zelbase/files/FileName.h"

namespace {

struct Split {
  std::string directory;
  std::string name;
  std::string extension;

  bool operator==(const Split&) const = default;
};

void PrintTo(const Split& split, std::ostream* out) {
  *out << '[' << split.directory << '|' << split.name << '|' << split.extension << ']';
}

Split SplitOf(const std::string& path) {
  Split split{"old", "old", "old"};
  SplitPath(path, split.directory, split.name, split.extension);
  return split;
}

TEST(PathHelpers, SplitsAtTheLastSeparatorAndDot) {
  struct Row {
    const char* path;
    Split split;
  };
  for (const Row& row : std::vector<Row>{{"", {"", "", ""}},
                                         {"C:\\dir\\file.txt", {"C:\\dir\\", "file", "txt"}},
                                         {"file.txt", {"", "file", "txt"}},
                                         {"file", {"", "file", ""}},
                                         {"file.", {"", "file", ""}},
                                         {".cfg", {"", ".cfg", ""}},
                                         {"a.b.c", {"", "a.b", "c"}},
                                         {"dir\\.cfg", {"dir\\", "", "cfg"}},
                                         {"\\file", {"", "\\file", ""}},
                                         {"\\file.txt", {"", "file", "txt"}},
                                         {".", {"", ".", ""}},
                                         {"..", {"", ".", ""}}}) {
    EXPECT_EQ(SplitOf(row.path), row.split) << row.path;
  }
}

TEST(PathHelpers, SplitNameIsEmptyWhenTheLastDotIsADirectorys) { EXPECT_EQ(SplitOf("C:\\a.b\\file"), (Split{"C:\\a.b\\", "", "b\\file"})); }

TEST(PathHelpers, SplitFindsNoNameWithoutADot) { EXPECT_EQ(SplitOf("C:\\dir\\file"), (Split{"C:\\dir\\", "", ""})); }

TEST(PathHelpers, SplitOfADirectoryAloneIsAName) {
  EXPECT_EQ(SplitOf("dir\\"), (Split{"", "dir\\", ""}));
  EXPECT_EQ(SplitOf("d.r\\"), (Split{"", "", "r\\"}));
}

// The rule told once more, by scanning from the left; every text of up to seven of the characters that matter.
Split Told(const std::string& path) {
  int p = -1;
  int d = -1;
  const int length = static_cast<int>(path.size());
  for (int i = 0; i < length; ++i) {
    if (path[static_cast<std::size_t>(i)] == '\\') p = i;
    if (path[static_cast<std::size_t>(i)] == '.') d = i;
  }
  Split split;
  for (int i = 0; i < length; ++i) {
    const char character = path[static_cast<std::size_t>(i)];
    if (p > 0 && p + 1 < length && i <= p) split.directory += character;
    if (d > 0 && p + 1 < length && i > p && i < d) split.name += character;
    if (d > 0 && i > d) split.extension += character;
  }
  if (split == Split{}) split.name = path;
  return split;
}

TEST(PathHelpers, SplitOfEveryShortTextIsAsTold) {
  const std::string characters = "\\.:ab";
  for (unsigned int length = 0; length <= 7; ++length) {
    unsigned int texts = 1;
    for (unsigned int i = 0; i < length; ++i) texts *= 5;
    for (unsigned int number = 0; number < texts; ++number) {
      std::string text;
      for (unsigned int i = 0, rest = number; i < length; ++i, rest /= 5) text += characters[rest % 5];
      if (SplitOf(text) != Told(text)) ADD_FAILURE() << text << ": " << testing::PrintToString(SplitOf(text));
    }
  }
}

TEST(PathHelpers, SplitMayWriteOverItsInput) {
  std::string path = "C:\\dir\\file.txt";
  std::string a;
  std::string b;
  SplitPath(path, path, a, b);
  EXPECT_EQ(path, "C:\\dir\\");
  path = "C:\\dir\\file.txt";
  SplitPath(path, a, path, b);
  EXPECT_EQ(path, "file");
  path = "C:\\dir\\file.txt";
  SplitPath(path, a, b, path);
  EXPECT_EQ(path, "txt");
}

TEST(PathHelpers, TitleIsTheNameAlone) {
  for (const auto& [path, title] : std::vector<std::pair<std::string, std::string>>{{"", ""},
                                                                                    {"C:\\data\\track.dat", "track"},
                                                                                    {"track.dat", "track"},
                                                                                    {"track", "track"},
                                                                                    {"a.b.c", "a.b"},
                                                                                    {"C:track.dat", "track"},
                                                                                    {"C:\\a.b\\track", "track"},
                                                                                    {".cfg", ".cfg"},
                                                                                    {"dir\\", "dir"},
                                                                                    {"dir\\\\", ""},
                                                                                    {"C:\\dir\\", "dir"},
                                                                                    {"C:\\", ""},
                                                                                    {"C:", ""},
                                                                                    {"\\", ""},
                                                                                    {".", "."},
                                                                                    {"..", "."},
                                                                                    {"a:b:c.d", "c"},
                                                                                    {"/tmp\\x.y", "x"}}) {
    EXPECT_EQ(GetTitleFromPath(path), title) << path;
  }
}

TEST(PathHelpers, TitleOfAnExtensionAloneIsTheDirectorys) { EXPECT_EQ(GetTitleFromPath("a\\.b"), "a"); }

TEST(PathHelpers, FileNameIsWhatStandsBehindTheLastSeparator) {
  for (const auto& [path, name] : std::vector<std::pair<std::string, std::string>>{{"", ""},
                                                                                   {"C:\\data\\track.dat", "track.dat"},
                                                                                   {"track.dat", "track.dat"},
                                                                                   {"data\\", ""},
                                                                                   {"C:x", "C:x"},
                                                                                   {"a/b", "a/b"},
                                                                                   {"\\x", "x"}}) {
    EXPECT_EQ(GetFileNameFromPath(path), name) << path;
  }
}

TEST(PathHelpers, FileSystemCharactersAreAllButNine) {
  const std::string refused = "\\/:*\"<>|?";
  for (int code = 0; code < 256; ++code) {
    std::string text{'a', static_cast<char>(code), 'b'};
    EXPECT_EQ(AllValidFileSystemChars(text), refused.find(static_cast<char>(code)) == std::string::npos) << code;
  }
  EXPECT_TRUE(AllValidFileSystemChars(""));
}

TEST(PathHelpers, CommaIsValidForTheFileSystemAndNotInAName) {
  EXPECT_TRUE(AllValidFileSystemChars("a,b"));
  EXPECT_FALSE(FileName::IsValidName("a,b"));
}

}  // namespace
