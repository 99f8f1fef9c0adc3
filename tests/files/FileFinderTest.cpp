#include "zelbase/files/FileFinder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

using Names = std::vector<std::string>;

class FileFinderTest : public testing::Test {
 protected:
  // What was found, with "~" for the folder of the test.
  Names Found() const {
    const std::string front = m_folder.InterfacePath();
    Names names;
    for (int i = 0; i < m_finder.NumFiles(); ++i) {
      const std::string path = *m_finder[i];
      names.push_back(path.rfind(front, 0) == 0 ? "~" + path.substr(front.size()) : path);
    }
    return names;
  }

  Names Find(const std::string& directory, const std::string& mask, bool recursive) {
    const int count = m_finder.FindFiles(directory, mask, recursive);
    EXPECT_EQ(count, m_finder.NumFiles());
    return Found();
  }

  // One search on a new object.
  Names FindAnew(const std::string& mask, bool recursive = false) {
    m_finder = FileFinder();
    return Find(m_folder.InterfacePath(), mask, recursive);
  }

  TemporaryFolder m_folder;
  FileFinder m_finder;
};

TEST_F(FileFinderTest, FindsWhatMatchesInByteOrder) {
  for (const char* const name : {"b.txt", "a.txt", "B.txt", "c.dat", "\xB0.txt", "_.txt", "a.TXT"}) m_folder.Write(name, "");
  EXPECT_EQ(FindAnew("*.txt"), (Names{"~\\B.txt", "~\\_.txt", "~\\a.TXT", "~\\a.txt", "~\\b.txt", "~\\\xB0.txt"}));
  EXPECT_EQ(FindAnew("?.DAT"), (Names{"~\\c.dat"}));
  EXPECT_EQ(FindAnew("none*"), Names());
}

TEST_F(FileFinderTest, DotEntriesAndFoldersMatchToo) {
  m_folder.Write("!", "");
  m_folder.MakeFolder("sub");
  m_folder.MakeLink("link", "nowhere");
  // ".." is found as name "." with extension ".".
  const Names all = {"~\\.", "~\\..", "~\\!", "~\\link", "~\\sub"};
  EXPECT_EQ(FindAnew("*"), all);
  EXPECT_EQ(FindAnew("*.*"), all);
  EXPECT_EQ(FindAnew("?"), (Names{"~\\.", "~\\!"}));
  EXPECT_EQ(FindAnew("s*"), (Names{"~\\sub"}));
}

TEST_F(FileFinderTest, EmptyMaskMatchesNothing) {
  m_folder.Write("a", "");
  EXPECT_EQ(FindAnew(""), Names());
  EXPECT_EQ(FindAnew("", true), Names());
}

TEST_F(FileFinderTest, MissingFolderIsEmpty) {
  EXPECT_EQ(Find(m_folder.File("none"), "*", false), Names());
  EXPECT_EQ(Find(m_folder.File("none"), "*", true), Names());
  EXPECT_EQ(Find(m_folder.Write("file", ""), "*", true), Names());
  EXPECT_EQ(Find(m_folder.MakeFifo("fifo"), "*", true), Names());
  EXPECT_EQ(Find(std::string("\0", 1), "*", true), Names());
}

TEST_F(FileFinderTest, AddsTheSeparatorWhenItIsMissing) {
  m_folder.Write("a", "");
  EXPECT_EQ(Find(m_folder.InterfacePath() + "\\", "a", false), (Names{"~\\a"}));
}

TEST_F(FileFinderTest, EmptyDirectoryIsTheCurrentOne) {
  m_folder.Write("a", "");
  m_folder.MakeFolder("sub");
  m_folder.Write("sub/a", "");
  ChildProcess child([&] {
    std::filesystem::current_path(m_folder.Path());
    FileFinder finder;
    if (finder.FindFiles("", "a", false) != 1 || *finder[0] != "a") return 1;
    FileFinder recursive;
    return recursive.FindFiles("", "a", true) == 2 && *recursive[1] == "sub\\a" ? 0 : 2;
  });
  EXPECT_EQ(child.Wait(), 0);
}

TEST_F(FileFinderTest, SearchesBelowDepthFirstParentsAheadOfChildren) {
  for (const char* const folder : {"b", "a", "a/z", "a/c", "a/c/d"}) m_folder.MakeFolder(folder);
  for (const char* const file : {"f", "a/f", "b/f", "a/z/f", "a/c/f", "a/c/d/f"}) m_folder.Write(file, "");
  EXPECT_EQ(FindAnew("f", true), (Names{"~\\f", "~\\a\\f", "~\\a\\c\\f", "~\\a\\c\\d\\f", "~\\a\\z\\f", "~\\b\\f"}));
  EXPECT_EQ(FindAnew("f", false), (Names{"~\\f"}));
}

TEST_F(FileFinderTest, TheMaskDoesNotChooseTheFoldersThatAreSearched) {
  m_folder.MakeFolder("sub");
  m_folder.Write("sub/a.txt", "");
  EXPECT_EQ(FindAnew("*.txt", true), (Names{"~\\sub\\a.txt"}));
}

TEST_F(FileFinderTest, LinkedFoldersAreFoundButNotEntered) {
  m_folder.MakeFolder("real");
  m_folder.Write("real/f", "");
  m_folder.MakeLink("real/loop", "..");
  m_folder.MakeLink("alias", "real");
  EXPECT_EQ(FindAnew("*l*", true), (Names{"~\\alias", "~\\real", "~\\real\\loop"}));
  EXPECT_EQ(FindAnew("f", true), (Names{"~\\real\\f"}));
}

TEST_F(FileFinderTest, SearchBeginsInALinkedFolderWhenAskedTo) {
  m_folder.MakeFolder("real");
  m_folder.Write("real/f", "");
  m_folder.MakeLink("alias", "real");
  EXPECT_EQ(Find(m_folder.InterfacePath() + "\\alias", "f", true), (Names{"~\\alias\\f"}));
}

TEST_F(FileFinderTest, UnreadableFolderIsEmpty) {
  std::filesystem::permissions(m_folder.Path(), std::filesystem::perms(0755));
  for (const char* const folder : {"a", "b", "c"}) {
    std::filesystem::permissions(m_folder.MakeFolder(folder), std::filesystem::perms(0755));
    m_folder.Write(std::string(folder) + "/f", "");
  }
  std::filesystem::permissions(m_folder.File("b"), std::filesystem::perms(0));
  ChildProcess child([&] {
    if (!BecomeOrdinaryUser()) return 100;
    FileFinder finder;
    if (finder.FindFiles(m_folder.InterfacePath(), "f", true) != 2) return 1;
    return *finder[1] == m_folder.InterfacePath() + "\\c\\f" ? 0 : 2;
  });
  EXPECT_EQ(child.Wait(), 0);
  std::filesystem::permissions(m_folder.File("b"), std::filesystem::perms(0755));
}

TEST_F(FileFinderTest, NamesThatHoldASeparatorAreLeftOut) {
  m_folder.Write("odd\\name", "");
  m_folder.Write("even", "");
  EXPECT_EQ(FindAnew("*e*"), (Names{"~\\even"}));
}

TEST_F(FileFinderTest, MaskMayBeginWithFolders) {
  m_folder.MakeFolder("sub");
  m_folder.Write("sub/f", "");
  m_folder.Write("f", "");
  // Found there, named as directory and match.
  EXPECT_EQ(FindAnew("sub\\f"), (Names{"~\\f"}));
  EXPECT_EQ(FindAnew("no\\f"), Names());
  EXPECT_EQ(FindAnew("s?b\\f"), Names());
  EXPECT_EQ(FindAnew("sub\\"), Names());
}

TEST_F(FileFinderTest, SecondSearchGoesThroughTheFirstOnesFoldersAgain) {
  m_folder.MakeFolder("a");
  m_folder.MakeFolder("b");
  m_folder.Write("a/f", "");
  m_folder.Write("a/g", "");
  m_folder.Write("b/g", "");
  EXPECT_EQ(Find(m_folder.InterfacePath() + "\\a", "f", false), (Names{"~\\a\\f"}));
  EXPECT_EQ(Find(m_folder.InterfacePath() + "\\b", "g", false), (Names{"~\\a\\g", "~\\b\\g"}));
}

TEST_F(FileFinderTest, TheSameSearchTwiceDoublesTheResult) {
  m_folder.Write("f", "");
  EXPECT_EQ(Find(m_folder.InterfacePath(), "f", true), (Names{"~\\f"}));
  EXPECT_EQ(Find(m_folder.InterfacePath(), "f", true), (Names{"~\\f", "~\\f"}));
}

TEST_F(FileFinderTest, CopiesSearchOnByThemselves) {
  m_folder.Write("f", "");
  Find(m_folder.InterfacePath(), "f", false);
  FileFinder copy(m_finder);
  EXPECT_EQ(copy.NumFiles(), 1);
  EXPECT_EQ(copy.FindFiles(m_folder.InterfacePath(), "f", false), 2);
  EXPECT_EQ(m_finder.NumFiles(), 1);
  m_finder = copy;
  EXPECT_EQ(m_finder.NumFiles(), 2);
}

TEST_F(FileFinderTest, IndexThatIsNoneGivesAnEmptyName) {
  m_folder.Write("f", "");
  Find(m_folder.InterfacePath(), "f", false);
  for (const int index : {-1, 1, 2147483647, -2147483647 - 1}) {
    EXPECT_TRUE(m_finder[index].IsEmpty()) << index;
    EXPECT_EQ(*m_finder[index], "");
  }
}

TEST_F(FileFinderTest, FoundNamesMayBeTheNextDirectory) {
  m_folder.MakeFolder("sub");
  m_folder.Write("sub/f", "");
  Find(m_folder.InterfacePath(), "sub", false);
  EXPECT_EQ(Find(*m_finder[0], "f", false), (Names{"~\\sub\\f"}));
}

TEST_F(FileFinderTest, FoldersDeeperThanTheSystemsPathsAreEmpty) {
  // Made and left from within: 20 names of 250 characters are more than one path may hold here.
  const std::string name(250, 'd');
  ChildProcess child([&] {
    std::filesystem::current_path(m_folder.Path());
    for (int depth = 0; depth < 20; ++depth) {
      std::filesystem::create_directory(name);
      std::filesystem::current_path(name);
    }
    FileFinder finder;
    const int found = finder.FindFiles(m_folder.InterfacePath(), name, true);
    return found >= 15 && found < 20 ? 0 : 1;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
}

TEST_F(FileFinderTest, FollowsAChainOfFoldersToItsEnd) {
  std::string path;
  for (int depth = 0; depth < 300; ++depth) {
    path += depth == 0 ? "d" : "/d";
    m_folder.MakeFolder(path);
  }
  EXPECT_EQ(FindAnew("d", true).size(), 300u);
}

TEST_F(FileFinderTest, EachFailingListingIsAnEmptyFolderAndLeaksNothing) {
  for (const char* const folder : {"a", "b"}) {
    m_folder.MakeFolder(folder);
    m_folder.Write(std::string(folder) + "/f", "");
  }
  const int descriptors = CountOpenDescriptors();
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  for (unsigned long long n = 1;; ++n) {
    files.Reset();
    files.FailAt(n);
    const Names found = FindAnew("f", true);
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    if (files.FaultsGiven() == 0) {
      EXPECT_EQ(found, (Names{"~\\a\\f", "~\\b\\f"}));
      EXPECT_EQ(n, 7u);  // three folders, each listed twice
      break;
    }
    // The root: nothing is known to be below it. A folder while its own folders are looked for: it has none. A folder while
    // its matches are looked for: these are missing.
    const Names expected = n == 1 ? Names() : n == 5 ? Names{"~\\b\\f"} : n == 6 ? Names{"~\\a\\f"} : Names{"~\\a\\f", "~\\b\\f"};
    EXPECT_EQ(found, expected) << n;
  }
}

}  // namespace
