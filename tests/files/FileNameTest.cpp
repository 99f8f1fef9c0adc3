#include "zelbase/files/FileName.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

struct Parts {
  std::string root;
  std::string path;
  std::string name;
  std::string extension;

  bool operator==(const Parts&) const = default;
};

void PrintTo(const Parts& parts, std::ostream* out) {
  *out << '[' << parts.root << '|' << parts.path << '|' << parts.name << '|' << parts.extension << ']';
}

Parts PartsOf(const FileName& name) { return {name.Root(true), name.Path(true, false), name.Name(false), name.Extension(true)}; }

// ---- The rules once more, element by element on a list of characters taken from the left ----

std::vector<std::string> Elements(const std::string& text) {
  std::vector<std::string> elements(1);
  for (const char character : text) {
    if (character == '\\') {
      elements.emplace_back();
    } else {
      elements.back() += character;
    }
  }
  if (elements.back().empty()) elements.pop_back();
  return elements;
}

std::string Changed(std::string path, const std::string& element) {
  if (element.empty()) return "";
  if (element != ".." || path.empty()) return path + element + "\\";
  path = path.substr(0, path.length() - 1);
  std::string kept;
  for (std::size_t i = 0; i < path.length(); ++i) {
    if (path[i] == '\\') kept = path.substr(0, i + 1);
  }
  return kept.empty() ? "" : kept + "\\";
}

std::string Walked(std::string path, const std::string& relative) {
  for (const std::string& element : Elements(relative)) path = Changed(path, element);
  return path;
}

// The root of a text and whether the parse goes on behind it.
struct RootOf {
  std::string root;
  std::string rest;
  bool goesOn = true;
};

RootOf SplitRoot(const std::string& text) {
  const auto at = [&](std::size_t i) { return i < text.length() ? text[i] : '\0'; };
  if (at(0) == '\\' && at(1) == '\\') {
    if (text.length() == 2) return {"", "", false};
    for (std::size_t i = 2; i < text.length(); ++i) {
      if (text[i] == '\\') return {text.substr(0, i + 1), text.substr(i + 1), i + 1 < text.length()};
    }
    return {text + "\\", "", false};
  }
  if (text.length() < 2 || at(1) != ':') return {"", text, true};
  if (text.length() == 2) return {text + "\\", "", false};
  if (at(2) != '\\') return {"", text, true};
  return {text.substr(0, 3), text.substr(3), text.length() > 3};
}

void SplitLastName(const std::string& text, std::string& name, std::string& extension) {
  for (std::size_t i = text.length(); i-- > 0;) {
    if (text[i] != '.') continue;
    name = text.substr(0, i);
    extension = text.substr(i);
    return;
  }
  name = text;
}

Parts Told(const std::string& text) {
  Parts parts;
  const RootOf root = SplitRoot(text);
  parts.root = root.root;
  if (!root.goesOn) return parts;
  std::size_t behindLast = 0;
  for (std::size_t i = 0; i < root.rest.length(); ++i) {
    if (root.rest[i] == '\\') behindLast = i + 1;
  }
  parts.path = Walked("", root.rest.substr(0, behindLast));
  SplitLastName(root.rest.substr(behindLast), parts.name, parts.extension);
  return parts;
}

// Calls `visit` with every text of up to `length` of these characters.
void ForEachText(std::size_t length, const std::function<void(const std::string&)>& visit, const std::string& characters = "\\.:ab") {
  std::string text;
  const std::function<void()> extend = [&] {
    visit(text);
    if (text.length() == length) return;
    for (const char character : characters) {
      text += character;
      extend();
      text.pop_back();
    }
  };
  extend();
}

// ---- Taking apart ----

TEST(FileName, TakesPathsApart) {
  struct Row {
    const char* text;
    Parts parts;
  };
  for (const Row& row : std::vector<Row>{{"", {"", "", "", ""}},
                                         {"C:\\a\\b.txt", {"C:\\", "a\\", "b", ".txt"}},
                                         {"\\\\srv\\share\\f", {"\\\\srv\\", "share\\", "f", ""}},
                                         {"C:", {"C:\\", "", "", ""}},
                                         {"C:\\", {"C:\\", "", "", ""}},
                                         {"\\\\", {"", "", "", ""}},
                                         {"\\\\srv", {"\\\\srv\\", "", "", ""}},
                                         {"\\\\srv\\", {"\\\\srv\\", "", "", ""}},
                                         {"\\\\\\x", {"\\\\\\", "", "x", ""}},
                                         {"C:foo", {"", "", "C:foo", ""}},
                                         {"C:foo\\bar", {"", "C:foo\\", "bar", ""}},
                                         {"a.b.c", {"", "", "a.b", ".c"}},
                                         {"dir\\", {"", "dir\\", "", ""}},
                                         {"..\\x.txt", {"", "..\\", "x", ".txt"}},
                                         {"..\\..\\x", {"", "", "x", ""}},
                                         {".\\x", {"", ".\\", "x", ""}},
                                         {"name.", {"", "", "name", "."}},
                                         {".cfg", {"", "", "", ".cfg"}},
                                         {".", {"", "", "", "."}},
                                         {"..", {"", "", ".", "."}},
                                         {"/tmp\\x\\y.z", {"", "/tmp\\x\\", "y", ".z"}},
                                         {"a/b.c", {"", "", "a/b", ".c"}}}) {
    EXPECT_EQ(PartsOf(FileName(row.text)), row.parts) << row.text;
  }
}

TEST(FileName, ADoubleSeparatorThrowsAwayWhatStoodBeforeIt) {
  EXPECT_EQ(PartsOf(FileName("a\\\\b")), (Parts{"", "", "b", ""}));
  EXPECT_EQ(PartsOf(FileName("C:\\a\\\\b")), (Parts{"C:\\", "", "b", ""}));
  EXPECT_EQ(PartsOf(FileName("a\\\\b\\c")), (Parts{"", "b\\", "c", ""}));
  EXPECT_EQ(PartsOf(FileName("a\\\\")), (Parts{"", "", "", ""}));
}

TEST(FileName, TwoDotsAsTheLastElementAreANameAndAnExtension) {
  EXPECT_EQ(PartsOf(FileName("a\\..")), (Parts{"", "a\\", ".", "."}));
  EXPECT_EQ(PartsOf(FileName("..\\..")), (Parts{"", "..\\", ".", "."}));
}

TEST(FileName, EveryShortTextAgreesWithTheRulesToldOnceMore) {
  std::size_t texts = 0;
  ForEachText(7, [&](const std::string& text) {
    ++texts;
    const FileName name(text);
    const Parts told = Told(text);
    if (PartsOf(name) == told && *name == told.root + told.path + told.name + told.extension) return;
    ADD_FAILURE() << text << ": " << testing::PrintToString(PartsOf(name)) << ", told " << testing::PrintToString(told);
  });
  EXPECT_EQ(texts, 97656u);  // 1 + 5 + 25 + ... + 5^7
}

TEST(FileName, NullIsTheEmptyPath) {
  const char* const null = nullptr;
  FileName name(null);
  EXPECT_TRUE(name.IsEmpty());
  name = "a";
  name = null;
  EXPECT_TRUE(name.IsEmpty());
  name.Set("a");
  name.Set(null);
  EXPECT_TRUE(name.IsEmpty());
}

TEST(FileName, AnyBytesAndLengthsAreParts) {
  const std::string directory(100000, 'd');
  const std::string odd("\x80 \0\xFF", 4);
  const FileName name(directory + "\\" + odd + "." + odd);
  EXPECT_EQ(PartsOf(name), (Parts{"", directory + "\\", odd, "." + odd}));
}

// ---- Assigning ----

TEST(FileName, AssignsFromEachType) {
  const std::string text = "C:\\a\\b.txt";
  const FileName other(text);
  FileName name;
  name = text;
  EXPECT_EQ(name, other);
  name = "x";
  name = text.c_str();
  EXPECT_EQ(name, other);
  name = "x";
  name = other;
  EXPECT_EQ(name, other);
  name.Set("x");
  EXPECT_EQ(*name, "x");
  name.Set(text);
  EXPECT_EQ(name, other);
  name.Set("x");
  name.Set(other);
  EXPECT_EQ(name, other);
  EXPECT_EQ(*FileName(other), text);
}

TEST(FileName, MayBeGivenAPartOfItself) {
  const std::string text = "C:\\dir\\name.txt";
  FileName name(text);
  name = *name;
  EXPECT_EQ(*name, text);
  name.Set(name.c_str());
  EXPECT_EQ(*name, text);
  name = static_cast<const FileName&>(name);
  EXPECT_EQ(*name, text);
  name.SetName(*name, false);
  EXPECT_EQ(name.Name(false), text);
  name = text;
  name.SetName(*name, true);
  EXPECT_EQ(name.Name(false), "C:\\dir\\name");
  name = text;
  name.SetExtension(*name);
  EXPECT_EQ(name.Extension(true), "." + text);
  name = text;
  name.SetRoot(*name);
  EXPECT_EQ(name.Root(true), text + "\\");
  name = text;
  name.SetPath(*name);
  EXPECT_EQ(name.Path(true, true), text + "\\");
  name = "a\\b\\";
  name.CD(*name);
  EXPECT_EQ(name.Path(true, false), "a\\b\\a\\b\\");
}

TEST(FileName, ClearEmptiesAllParts) {
  FileName name("C:\\a\\b.txt");
  EXPECT_FALSE(name.IsEmpty());
  name.Clear();
  EXPECT_TRUE(name.IsEmpty());
  EXPECT_EQ(*name, "");
  EXPECT_STREQ(name.c_str(), "");
}

TEST(FileName, IsNotEmptyWithAnyPart) {
  for (const char* const text : {"C:\\", "a\\", "a", ".a"}) EXPECT_FALSE(FileName(text).IsEmpty()) << text;
}

// ---- Comparing ----

TEST(FileName, ComparesThePartsWithCase) {
  EXPECT_TRUE(FileName("C:\\a\\b.c") == FileName("C:\\a\\b.c"));
  for (const char* const other : {"c:\\a\\b.c", "C:\\A\\b.c", "C:\\a\\B.c", "C:\\a\\b.C", "a\\b.c", "C:\\b.c", "C:\\a\\b"}) {
    EXPECT_TRUE(FileName("C:\\a\\b.c") != FileName(other)) << other;
    EXPECT_FALSE(FileName("C:\\a\\b.c") == FileName(other)) << other;
  }
}

TEST(FileName, EqualTextsMayBeUnequalNames) {
  FileName whole;
  whole.SetName("a.b", false);
  const FileName split("a.b");
  EXPECT_EQ(*whole, *split);
  EXPECT_NE(whole, split);
}

TEST(FileName, AskingForTheWholePathDoesNotCountInComparisons) {
  const FileName asked("C:\\a");
  EXPECT_EQ(*asked, "C:\\a");
  EXPECT_EQ(asked, FileName("C:\\a"));
}

// ---- Asking ----

TEST(FileName, GivesPartsWithAndWithoutTheirMarks) {
  const FileName name("C:\\a\\b.txt");
  EXPECT_EQ(name.Root(true), "C:\\");
  EXPECT_EQ(name.Root(false), "C:");
  EXPECT_EQ(name.Path(true, true), "C:\\a\\");
  EXPECT_EQ(name.Path(false, true), "C:\\a");
  EXPECT_EQ(name.Path(true, false), "a\\");
  EXPECT_EQ(name.Path(false, false), "a");
  EXPECT_EQ(name.Name(true), "b.txt");
  EXPECT_EQ(name.Name(false), "b");
  EXPECT_EQ(name.Extension(true), ".txt");
  EXPECT_EQ(name.Extension(false), "txt");
  EXPECT_EQ(*name, "C:\\a\\b.txt");
  EXPECT_STREQ(name.c_str(), "C:\\a\\b.txt");
}

TEST(FileName, EmptyPartsAreEmptyInBothForms) {
  const FileName name;
  for (const bool with : {false, true}) {
    EXPECT_EQ(name.Root(with), "");
    EXPECT_EQ(name.Name(with), "");
    EXPECT_EQ(name.Extension(with), "");
    for (const bool withRoot : {false, true}) EXPECT_EQ(name.Path(with, withRoot), "");
  }
}

TEST(FileName, TheRootKeepsItsSeparatorWhenThereAreNoDirectories) {
  const FileName name("C:\\file");
  EXPECT_EQ(name.Path(false, true), "C:\\");
  EXPECT_EQ(name.Path(false, false), "");
}

TEST(FileName, TheWholePathFollowsEveryChange) {
  FileName name("C:\\a\\b.txt");
  EXPECT_EQ(*name, "C:\\a\\b.txt");
  name.SetRoot("D:");
  EXPECT_EQ(*name, "D:\\a\\b.txt");
  name.SetPath("x\\y");
  EXPECT_EQ(*name, "D:\\x\\y\\b.txt");
  name.SetName("n", false);
  EXPECT_EQ(*name, "D:\\x\\y\\n.txt");
  name.SetExtension("dat");
  EXPECT_EQ(*name, "D:\\x\\y\\n.dat");
  name.CD("..");
  EXPECT_EQ(*name, "D:\\x\\\\n.dat");
  name.SetName("m.ini", true);
  EXPECT_EQ(*name, "D:\\x\\\\m.ini");
}

// ---- Changing ----

TEST(FileName, SetRootAddsASeparator) {
  FileName name("C:\\a");
  for (const auto& [text, root] : std::vector<std::pair<std::string, std::string>>{
           {"D:", "D:\\"}, {"D:\\", "D:\\"}, {"\\\\srv", "\\\\srv\\"}, {"", ""}, {"x", "x\\"}, {"\\", "\\"}}) {
    name.SetRoot(text);
    EXPECT_EQ(name.Root(true), root) << text;
  }
}

TEST(FileName, SetPathTakesTheTextAsItIs) {
  FileName name("C:\\a\\b.txt");
  name.SetPath("..\\x\\..\\\\y");
  EXPECT_EQ(PartsOf(name), (Parts{"C:\\", "..\\x\\..\\\\y\\", "b", ".txt"}));
  name.SetPath("");
  EXPECT_EQ(PartsOf(name), (Parts{"C:\\", "", "b", ".txt"}));
}

TEST(FileName, SetPathReplacesTheRootWhenTheTextHasOne) {
  FileName name("C:\\a\\b.txt");
  name.SetPath("D:\\x\\y");
  EXPECT_EQ(PartsOf(name), (Parts{"D:\\", "x\\y\\", "b", ".txt"}));
  name.SetPath("x");
  EXPECT_EQ(PartsOf(name), (Parts{"D:\\", "x\\", "b", ".txt"}));
  name.SetPath("\\\\srv");
  EXPECT_EQ(PartsOf(name), (Parts{"\\\\srv\\", "", "b", ".txt"}));
  name.SetPath("E:\\");
  EXPECT_EQ(PartsOf(name), (Parts{"E:\\", "", "b", ".txt"}));
  name.SetPath("\\\\");  // no root: the present one stays
  EXPECT_EQ(PartsOf(name), (Parts{"E:\\", "", "b", ".txt"}));
}

TEST(FileName, SetPathOfEveryShortTextAgreesWithTheRulesToldOnceMore) {
  ForEachText(5, [](const std::string& text) {
    FileName name("Z:\\p\\n.e");
    name.SetPath(text);
    const RootOf told = SplitRoot(text);
    std::string path = told.goesOn ? told.rest : "";
    if (!path.empty() && path.back() != '\\') path += '\\';
    EXPECT_EQ(PartsOf(name), (Parts{told.root.empty() ? "Z:\\" : told.root, path, "n", ".e"})) << text;
  });
}

TEST(FileName, SetNameSplitsOnlyWhenAsked) {
  FileName name("a\\b.txt");
  name.SetName("x.y.z", true);
  EXPECT_EQ(PartsOf(name), (Parts{"", "a\\", "x.y", ".z"}));
  name.SetName("x.y.z", false);
  EXPECT_EQ(PartsOf(name), (Parts{"", "a\\", "x.y.z", ".z"}));
  name.SetName("x.", true);
  EXPECT_EQ(PartsOf(name), (Parts{"", "a\\", "x", "."}));
  name.SetName("", false);
  EXPECT_EQ(PartsOf(name), (Parts{"", "a\\", "", "."}));
}

TEST(FileName, SetNameWithoutADotKeepsTheExtension) {
  FileName name("b.txt");
  name.SetName("x", true);
  EXPECT_EQ(*name, "x.txt");
  name.SetName("", true);
  EXPECT_EQ(*name, ".txt");
}

TEST(FileName, SetExtensionPutsADotInFront) {
  FileName name("a.b");
  for (const auto& [text, extension] : std::vector<std::pair<std::string, std::string>>{
           {"txt", ".txt"}, {".txt", ".txt"}, {"", ""}, {".", "."}, {"x", ".x"}, {"a.b", ".a.b"}, {"..", ".."}}) {
    name.SetExtension(text);
    EXPECT_EQ(name.Extension(true), extension) << text;
    EXPECT_EQ(*name, "a" + extension);
  }
}

// ---- CD ----

TEST(FileName, GoingUpOutOfADeeperDirectoryLeavesTwoSeparatorsAndStaysThere) {
  FileName name("a\\b\\");
  name.CD("..");
  EXPECT_EQ(name.Path(true, false), "a\\\\");
  name.CD("..");
  EXPECT_EQ(name.Path(true, false), "a\\\\");
}

TEST(FileName, GoingUpOutOfOneDirectoryGivesTheEmptyPath) {
  FileName name("C:\\a\\");
  name.CD("..");
  EXPECT_EQ(*name, "C:\\");
  name.CD("..");
  EXPECT_EQ(*name, "C:\\..\\");
}

TEST(FileName, GoingUpTwiceFromTheStartDoesNotAdd) {
  FileName name;
  name.CD("..\\..");
  EXPECT_EQ(*name, "");
  name.CD("..\\..\\..");
  EXPECT_EQ(*name, "..\\");
}

TEST(FileName, CDTakesOneDotAsAnOrdinaryElement) {
  FileName name("a\\");
  name.CD(".\\b\\");
  EXPECT_EQ(*name, "a\\.\\b\\");
}

TEST(FileName, CDWithAnEmptyElementBeginsAnew) {
  FileName name("C:\\a\\n");
  name.CD("\\x");
  EXPECT_EQ(*name, "C:\\x\\n");
  name.CD("y\\\\");
  EXPECT_EQ(*name, "C:\\n");
  name.CD("");
  EXPECT_EQ(*name, "C:\\n");
}

TEST(FileName, EveryShortChangeOfDirectoryAgreesWithTheRulesToldOnceMore) {
  for (const std::string start : {"", "a\\", "a\\b\\", "..\\", "a\\b\\c\\", "a\\\\", "\\"}) {
    ForEachText(
        7,
        [&](const std::string& relative) {
          FileName name;
          name.SetPath(start);
          name.CD(relative);
          if (name.Path(true, false) != Walked(start, relative)) {
            ADD_FAILURE() << start << " and " << relative << ": " << name.Path(true, false);
          }
        },
        "\\.a");
  }
}

// ---- Characters ----

TEST(FileName, ValidNamesHaveNoneOfSevenCharacters) {
  const std::string refused = ",|?*\"><";
  for (int code = 0; code < 256; ++code) {
    const std::string text{'a', static_cast<char>(code), 'b'};
    EXPECT_EQ(FileName::IsValidName(text), refused.find(static_cast<char>(code)) == std::string::npos) << code;
  }
  EXPECT_TRUE(FileName::IsValidName(""));
  EXPECT_FALSE(FileName::IsValidName("a,b"));
}

TEST(FileName, SeparatorsAndColonAreValidInAName) { EXPECT_TRUE(FileName::IsValidName("C:\\a/b")); }

}  // namespace
