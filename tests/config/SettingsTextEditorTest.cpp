#include "zelbase/config/SettingsTextEditor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

const std::string kText =
    "; the file of the boat\r\n"
    "\r\n"
    "[Vessel]   the first\r\n"
    "; metres\r\n"
    "Draught = 2.5   // at the stern\r\n"
    "Name=Zeehond\r\n"
    "\r\n"
    "; where it goes\r\n"
    "[Survey]\r\n"
    "  Line = 7\r\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

TEST(SettingsTextEditor, ChangingAValueLeavesEveryOtherByte) {
  SettingsTextEditor editor(kText);
  EXPECT_TRUE(editor.SetItem("Vessel", "Draught", "3.25", false));
  EXPECT_EQ(editor.Text(), Replaced(kText, "2.5", "3.25"));
  EXPECT_EQ(editor.Reason(), "");
}

TEST(SettingsTextEditor, ANewItemGoesBehindTheLastOneInItsStyle) {
  SettingsTextEditor editor(kText);
  EXPECT_TRUE(editor.SetItem("Vessel", "Length", "40", false));
  EXPECT_TRUE(editor.SetItem("Survey", "Speed", "5", false));
  EXPECT_EQ(editor.Text(), Replaced(Replaced(kText, "Name=Zeehond\r\n", "Name=Zeehond\r\nLength=40\r\n"), "  Line = 7\r\n",
                                    "  Line = 7\r\n  Speed = 5\r\n"));
}

TEST(SettingsTextEditor, ANewSectionGoesToTheEnd) {
  SettingsTextEditor editor(kText);
  EXPECT_FALSE(editor.SetItem("New", "k", "v", false));
  EXPECT_EQ(editor.Reason(), "there is no section \"New\"");
  EXPECT_EQ(editor.Text(), kText);
  EXPECT_TRUE(editor.SetItem("New", "k", "v", true));
  EXPECT_EQ(editor.Text(), kText + "\r\n[New]\r\nk = v\r\n");
}

TEST(SettingsTextEditor, DeletingASectionKeepsTheCommentsOfTheNextOne) {
  SettingsTextEditor editor("[Z]\n\n" + kText);
  EXPECT_TRUE(editor.DeleteSection("Vessel"));
  EXPECT_EQ(editor.Text(), "[Z]\n\n; the file of the boat\r\n\r\n; where it goes\r\n[Survey]\r\n  Line = 7\r\n");
  EXPECT_FALSE(editor.DeleteSection("Vessel"));
}

TEST(SettingsTextEditor, CommentsThatWouldBecomeExtraLinesMoveBelowTheirHead) {
  SettingsTextEditor editor(kText);
  EXPECT_TRUE(editor.DeleteSection("Vessel"));
  EXPECT_EQ(editor.Text(), "; the file of the boat\r\n\r\n[Survey]\r\n; where it goes\r\n  Line = 7\r\n");
}

TEST(SettingsTextEditor, Rows) {
  using Editor = SettingsTextEditor;
  const struct {
    const char* before;
    bool (*change)(Editor&);
    const char* after;
  } rows[] = {
      {"[A]\nk=1", [](Editor& e) { return e.SetItem("A", "l", "2", false); }, "[A]\nk=1\nl=2"},
      {"[A]", [](Editor& e) { return e.SetItem("A", "l", "2", false); }, "[A]\r\nl = 2"},
      {"[A]\n\tk\t=\t1\n", [](Editor& e) { return e.SetItem("A", "l", "2", false); }, "[A]\n\tk\t=\t1\n\tl\t=\t2\n"},
      {"x\r", [](Editor& e) { return e.CreateSection("A"); }, "x\r\r\n[A]\r\n"},
      {"", [](Editor& e) { return e.SetItem("A", "k", "v", true); }, "[A]\r\nk = v\r\n"},
      {"x\n", [](Editor& e) { return e.SetItem("A", "k", "v", true); }, "x\n[A]\nk = v\n"},
      {"[A]\nk=1\nk=2\n", [](Editor& e) { return e.SetItem("A", "k", "3", true); }, "[A]\nk=1\nk=3\n"},
      {"[A]\nk=1\n[B]\n[A]\nk=2\n", [](Editor& e) { return e.SetItem("A", "k", "3", true); }, "[A]\nk=1\n[B]\n[A]\nk=3\n"},
      {"[A]\nk=\n", [](Editor& e) { return e.SetItem("A", "k", "3", true); }, "[A]\nk=3\n"},
      {"[A]\nk =\n", [](Editor& e) { return e.SetItem("A", "k", "3", true); }, "[A]\nk = 3\n"},
      {"[A]\nk =  // c\n", [](Editor& e) { return e.SetItem("A", "k", "3", true); }, "[A]\nk = 3 // c\n"},
      {"[A]\nk = // c\n", [](Editor& e) { return e.SetItem("A", "k", "3", true); }, "[A]\nk = 3 // c\n"},
      {"[A]\nk=//c\n", [](Editor& e) { return e.SetItem("A", "k", "3/", true); }, "[A]\nk=3/ //c\n"},
      {"[A]\nk=a//c\n", [](Editor& e) { return e.SetItem("A", "k", "3/", true); }, "[A]\nk=3/ //c\n"},
      {"[A]\nk=a // c\n", [](Editor& e) { return e.SetItem("A", "k", "", true); }, "[A]\nk= // c\n"},
      {"[A]\n ;k=1\n", [](Editor& e) { return e.SetItem("A", ";k", "2", true); }, "[A]\n ;k=2\n"},
      {"[A]\nk=1\nl=2\nk=3\n", [](Editor& e) { return e.DeleteItem("A", "k", true); }, "[A]\nl=2\n"},
      {"[A]\nk=1\n[B]\n[A]\nk=3\n", [](Editor& e) { return e.DeleteItem("A", "k", true); }, "[B]\n"},
      {"[A]\nk=1\n", [](Editor& e) { return e.DeleteItem("A", "k", false); }, "[A]\n"},
      {"[A]\n k = 1\nl=2\nk=3\n", [](Editor& e) { return e.RenameItem("A", "k", "l"); }, "[A]\n l = 1\nl=3\n"},
      {"[A] x\n[B]\n[A // c\n[A]\n", [](Editor& e) { return e.RenameSection("A", "N"); }, "[N] x\n[B]\n[A // c\n[N]\n"},
      {"[http://x]\n", [](Editor& e) { return e.RenameSection("", "N"); }, "[N]//x]\n"},
      {"[ ]\n", [](Editor& e) { return e.RenameSection("", "N"); }, "[ N]\n"},
      {"[A  // c\n", [](Editor& e) { return e.RenameSection("", "N"); }, "[N]  // c\n"},
      {"[A]\n[B]\nk=1\n", [](Editor& e) { return e.RenameSection("A", "B"); }, "[B]\n"},
      {"[A]\nk=1\nk=2\n;c\n[B]\n;d\nl=1\n", [](Editor& e) { return e.CopySection("B", "A"); }, "[A]\nk=1\nk=2\n;c\n[B]\nk = 2\n;d\n"},
      {"[A]\n ;k=1\n", [](Editor& e) { return e.CopySection("B", "A"); }, "[A]\n ;k=1\n\n[B]\n ;k = 1\n"},
      {"[A]\n;c\n[B]", [](Editor& e) { return e.DeleteSection("A"); }, "[B]\n;c"},
  };
  for (const auto& row : rows) {
    SettingsTextEditor editor{std::string(row.before)};
    EXPECT_TRUE(row.change(editor)) << row.before << editor.Reason();
    EXPECT_EQ(editor.Text(), row.after) << row.before;
  }
}

TEST(SettingsTextEditor, WhatWouldNotReadBackIsRefused) {
  SettingsTextEditor editor(kText);
  for (const char* value : {"a\nb", "a//b", " a", "a ", "a\r", "\t"}) {
    EXPECT_FALSE(editor.SetItem("Vessel", "Name", value, true)) << value;
    EXPECT_NE(editor.Reason(), "");
  }
  for (const char* key : {"", "a\nb", "a//b", " a", "a ", "a=b", "[a", ";a"}) {
    EXPECT_FALSE(editor.SetItem("Vessel", key, "v", true)) << key;
    EXPECT_FALSE(editor.RenameItem("Vessel", "Name", key)) << key;
    EXPECT_NE(editor.Reason(), "");
  }
  for (const char* name : {"a\nb", "a//b", " a", "a "}) {
    EXPECT_FALSE(editor.CreateSection(name)) << name;
    EXPECT_FALSE(editor.SetItem(name, "k", "v", true)) << name;
    EXPECT_FALSE(editor.RenameSection("Vessel", name)) << name;
    EXPECT_FALSE(editor.CopySection(name, "Vessel")) << name;
  }
  EXPECT_EQ(editor.Text(), kText);
}

TEST(SettingsTextEditor, WhatIsMissingIsSaid) {
  SettingsTextEditor editor(kText);
  EXPECT_FALSE(editor.DeleteItem("Vessel", "none", false));
  EXPECT_EQ(editor.Reason(), "there is no key \"none\" in section \"Vessel\"");
  EXPECT_FALSE(editor.RenameItem("Vessel", "none", "x"));
  EXPECT_FALSE(editor.RenameSection("none", "x"));
  EXPECT_FALSE(editor.CopySection("x", "none"));
  EXPECT_FALSE(editor.CopySection("Vessel", "Vessel"));
  EXPECT_EQ(editor.Reason(), "the section \"Vessel\" cannot be copied onto itself");
  EXPECT_EQ(editor.Text(), kText);
  EXPECT_TRUE(editor.RenameSection("Vessel", "Vessel"));
  EXPECT_TRUE(editor.RenameItem("Vessel", "Name", "Name"));
  EXPECT_TRUE(editor.CreateSection("Vessel"));
  EXPECT_EQ(editor.Text(), kText);
  EXPECT_EQ(editor.Reason(), "");
}

// Random changes of random texts: the changed text, read, is what the store has after the same change, and lines that
// have nothing to do with it are all still there.
class RandomEdit {
 public:
  explicit RandomEdit(unsigned int seed) : m_random(seed) {
    static const std::string pieces[] = {
        "\n",      "\n",        "\r\n",     "\r",          " ",       "//",          " // c", ";",
        "; c\n",   "=",         "k=v",      "k = ",        "l = w\n", "[",           "]",     "[A]\n",
        "\n[A]\n", "\n[B] x\n", "[A//x]\n", "\n;c\n[C]\n", "/",       "\n ;k = 1\n", "[]",    "\n[Checksum]\n"};
    for (auto i = m_random() % 40; i != 0; --i) m_text += pieces[m_random() % std::size(pieces)];
    m_editor.SetText(m_text);
    ReadFrom(m_store, m_text);
  }

  bool Run() {
    const bool edited = Change();
    FileObject back;
    ReadFrom(back, m_editor.Text());
    EXPECT_EQ(PictureOf(back), PictureOf(m_store)) << Story();
    EXPECT_EQ(back.GetExtraInfo(), m_store.GetExtraInfo()) << Story();
    return edited;
  }

 private:
  std::string Pick(std::initializer_list<const char*> names) { return names.begin()[m_random() % names.size()]; }
  std::string Section() { return Pick({"A", "B", "C", "N", "", "Checksum", "a]", "x/"}); }
  std::string Key() { return Pick({"k", "l", "n", ";k", "m/", "o\rp"}); }
  std::string Value() { return Pick({"", "1", "/", "a/", "b c", "=", ";", "[x]", "q\rr"}); }

  // The store is changed when the editor did not refuse. It must not refuse what it could do.
  bool Change() {
    const std::string section = Section();
    const std::string other = Section();
    const std::string key = Key();
    const std::string otherKey = Key();
    const std::string value = Value();
    const bool flag = m_random() % 2 == 0;
    const auto which = m_random() % 7;
    m_story = std::to_string(which) + " " + section + " " + other + " " + key + " " + otherKey + " " + value + (flag ? " +" : " -");
    std::string found;
    switch (which) {
      case 0:
      case 1:
        return Same(m_editor.SetItem(section, key, value, flag), key[0] == ';' && !m_store.GetItem(section, key, found),
                    [&] { return m_store.SetItem(section, key, value, flag); });
      case 2: return Same(m_editor.DeleteItem(section, key, flag), false, [&] { return m_store.DeleteItem(section, key, flag); });
      case 3:
        return Same(m_editor.RenameItem(section, key, otherKey), otherKey[0] == ';' && key != otherKey, [&] {
          if (!m_store.GetItem(section, key, found)) return false;
          m_store.DeleteItem(section, key, false);
          return m_store.SetItem(section, otherKey, found, true);
        });
      case 4: return Same(m_editor.DeleteSection(section), false, [&] { return m_store.DeleteSection(section); });
      case 5: return Same(m_editor.RenameSection(section, other), false, [&] { return m_store.RenameSection(section, other); });
      default:
        return Same(m_editor.CopySection(section, other), section == other, [&] { return m_store.CopySection(section, m_store, other); });
    }
  }

  template <class StoreChange>
  bool Same(bool edited, bool mayRefuse, StoreChange change) {
    if (!edited) {
      EXPECT_EQ(m_editor.Text(), m_text) << Story();
      EXPECT_NE(m_editor.Reason(), "") << Story();
      if (mayRefuse) return false;
    }
    EXPECT_EQ(change(), edited) << Story() << m_editor.Reason();
    return edited;
  }

  std::string Story() const { return m_story + "\n" + testing::PrintToString(m_text) + "\n" + testing::PrintToString(m_editor.Text()); }

  std::mt19937 m_random;
  std::string m_text;
  SettingsTextEditor m_editor;
  FileObject m_store;
  std::string m_story;
};

TEST(SettingsTextEditorLong, TheChangedTextReadsAsTheStoreAfterTheSameChange) {
  int edits = 0;
  for (unsigned int seed = 1; seed <= 20000; ++seed) {
    edits += RandomEdit(seed).Run();
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
  }
  EXPECT_GT(edits, 5000);
}

class SettingsTextEditorFiles : public testing::Test {
 protected:
  void SetUp() override { GlobalErrorList::Get().Clear(); }
  void TearDown() override { GlobalErrorList::Get().Clear(); }
  TemporaryFolder folder;
};

TEST_F(SettingsTextEditorFiles, OpensChangesAndReplaces) {
  const std::string name = folder.Write("a.ini", kText);
  SettingsTextEditor editor;
  ASSERT_TRUE(editor.FileOpen(name));
  EXPECT_EQ(editor.Text(), kText);
  editor.SetItem("Survey", "Line", "8", false);
  EXPECT_TRUE(editor.FileSaveReplacing(""));
  EXPECT_EQ(folder.Read("a.ini"), Replaced(kText, "Line = 7", "Line = 8"));
  EXPECT_TRUE(editor.FileSaveReplacing(folder.File("b.ini")));
  EXPECT_EQ(folder.Read("b.ini"), editor.Text());
}

TEST_F(SettingsTextEditorFiles, AFailedOpenIsQuietAndChangesNothing) {
  SettingsTextEditor editor(kText);
  EXPECT_FALSE(editor.FileOpen(folder.File("none")));
  EXPECT_EQ(editor.Reason(), "cannot open \"" + folder.File("none") + "\"");
  EXPECT_EQ(editor.Text(), kText);
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  EXPECT_FALSE(editor.FileSaveReplacing(""));
  EXPECT_EQ(editor.Reason(), "there is no file name");
}

TEST_F(SettingsTextEditorFiles, AfterASuccessNothingIsSaidOfTheFailureBefore) {
  const std::string name = folder.Write("a.ini", "[A]\n");
  SettingsTextEditor editor;
  EXPECT_FALSE(editor.FileOpen(folder.File("none")));
  EXPECT_NE(editor.Reason(), "");
  EXPECT_TRUE(editor.FileOpen(name));
  EXPECT_EQ(editor.Reason(), "");
  EXPECT_FALSE(editor.FileOpen(folder.File("none")));
  EXPECT_NE(editor.Reason(), "");
  EXPECT_TRUE(editor.FileSaveReplacing(name));
  EXPECT_EQ(editor.Reason(), "");
  EXPECT_FALSE(editor.FileOpen(folder.File("none")));
  editor.SetText("[B]\n");
  EXPECT_EQ(editor.Reason(), "");
}

TEST_F(SettingsTextEditorFiles, EveryFileOperationMayFail) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  const int descriptors = CountOpenDescriptors();
  int failures = 0;
  for (const auto repeat : {FaultInjectionFiles::Repeat::Once, FaultInjectionFiles::Repeat::ForEver}) {
    for (unsigned long long n = 1;; ++n) {
      GlobalErrorList::Get().Clear();
      const std::string name = folder.Write("a.ini", "old");
      files.Reset();
      files.FailAt(n, FileResult::DiskFull, repeat);
      SettingsTextEditor editor(kText);
      const bool opened = editor.FileOpen(name);
      EXPECT_EQ(editor.Text(), opened ? "old" : kText);
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
      editor.SetText("new");
      const bool saved = editor.FileSaveReplacing(name);
      EXPECT_EQ(editor.Text(), "new");
      EXPECT_EQ(folder.Read("a.ini"), saved ? "new" : "old") << n;
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), saved ? 0 : 1);
      if (!saved) {
        const std::string format = GlobalErrorList::Get()[0].Format();
        EXPECT_TRUE(format == "Error opening \"" + name + "\"." || format == "Error writing to \"" + name + "\".") << format;
      }
      EXPECT_EQ(files.OpenFiles(), 0);
      EXPECT_EQ(CountOpenDescriptors(), descriptors);
      failures += !opened || !saved;
      if (files.FaultsGiven() == 0) break;
      EXPECT_FALSE(opened && saved) << n;
      if (repeat == FaultInjectionFiles::Repeat::ForEver) continue;  // nothing can be removed then
      const std::filesystem::directory_iterator entries(folder.Path());
      EXPECT_EQ(std::distance(begin(entries), end(entries)), 1) << n;
    }
  }
  EXPECT_GT(failures, 12);
}

TEST(SettingsTextEditor, CopyFromAnotherStoreGivesExactlyItsItems) {
  FileObject source;
  source.SetItem("Old", "Draught", "9", true);
  source.SetItem("Old", "Empty", "", true);
  SettingsTextEditor editor(kText);
  ASSERT_TRUE(editor.CopySection("Vessel", source, "Old")) << editor.Reason();
  EXPECT_EQ(editor.Text(), Replaced(Replaced(Replaced(kText, "Draught = 2.5   // at the stern\r\n", ""), "Name=Zeehond\r\n", ""),
                                    "[Vessel]   the first\r\n", "[Vessel]   the first\r\nDraught = 9\r\nEmpty = \r\n"));
  ASSERT_TRUE(editor.CopySection("New", source, "Old"));
  EXPECT_TRUE(editor.Text().ends_with("  Line = 7\r\n\r\n[New]\r\nDraught = 9\r\nEmpty = \r\n"));
}

TEST(SettingsTextEditor, CopyFromAnotherStoreRefusesWhatWouldNotReadBack) {
  const std::vector<std::pair<std::string, std::string>> rows = {{"k", "http://x"}, {"k", " 1"}, {"k", "1\n"}, {"", "1"},
                                                                 {";k", "1"},       {"[k", "1"}, {"a=b", "1"}};
  for (const auto& [key, value] : rows) {
    FileObject source;
    source.SetItem("A", "good", "1", true);
    source.SetItem("A", key, value, true);
    SettingsTextEditor editor(kText);
    EXPECT_FALSE(editor.CopySection("Vessel", source, "A")) << key << value;
    EXPECT_FALSE(editor.Reason().empty());
    EXPECT_EQ(editor.Text(), kText);
  }
  SettingsTextEditor editor(kText);
  EXPECT_FALSE(editor.CopySection("Vessel", FileObject(), "A"));
  EXPECT_EQ(editor.Text(), kText);
}

}  // namespace
