#include "zelbase/frame/detail/LanguageTables.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/platform/FixedModules.h"

namespace {

using zelbase::detail::LanguageTable;
using zelbase::detail::LanguageTableChain;
using zelbase::detail::LoadLanguageTable;
using zelbase::detail::ModuleTextTable;
using zelbase::detail::TextFileTable;

// The text of a number, or "(none)".
std::string TextOf(const NumberedTextTable& table, int number) {
  std::string text = "untouched";
  if (table.Get(number, text)) return text;
  EXPECT_EQ(text, "untouched");
  return "(none)";
}

std::shared_ptr<const TextFileTable> TableOf(const std::string& content) {
  const TemporaryFolder folder;
  return TextFileTable::Read(folder.Write("texts", content));
}

TEST(TextFileTable, GivesTheTextsOfItsSection) {
  const auto table = TableOf("; by hand\n[Other]\n12030 = no\n[Texts]\r\n12034 = Unbekannter Fehler\r\n12035=\"%s\"\n0 = null\n");
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(TextOf(*table, 12034), "Unbekannter Fehler");
  EXPECT_EQ(TextOf(*table, 12035), "\"%s\"");
  EXPECT_EQ(TextOf(*table, 0), "null");
  EXPECT_EQ(TextOf(*table, 12030), "(none)");
  EXPECT_EQ(TextOf(*table, -1), "(none)");
}

TEST(TextFileTable, WithoutItsSectionIsNone) {
  EXPECT_EQ(TableOf(""), nullptr);
  EXPECT_EQ(TableOf("12034 = x\n"), nullptr);
  EXPECT_EQ(TableOf("[texts]\n12034 = x\n"), nullptr);
  EXPECT_EQ(TableOf("\x7F"
                    "ELF\x02\x01\x01"),
            nullptr);
  EXPECT_NE(TableOf("[Texts]"), nullptr);
}

TEST(TextFileTable, BrokenRowsStandBesideGoodOnes) {
  const auto table = TableOf(
      "[Texts]\n"
      "12030 = first\n"
      "= 12031\n"
      "12032\n"
      "x12033 = x\n"
      "12034x = x\n"
      "012035 = x\n"
      "+12036 = x\n"
      "-12037 = x\n"
      "0x2F06 = x\n"
      "12 039 = x\n"
      "4294979336 = x\n"  // 12040 above 2^32
      "2147483648 = x\n"
      "18446744073709563657 = x\n"  // 12041 above 2^64
      "00 = x\n"
      "; 12044 = x\n"
      "12045 =\n"
      "\xB2\xB3 = x\n" +
      std::string("12049\0 = x\n", 11) +
      "12050 = last\n"
      "2147483647 = most\n"
      "12051 = early\n"
      "12051 = late\n"
      "12052 = cut // here");
  ASSERT_NE(table, nullptr);
  const std::map<int, std::string> good = {{12030, "first"}, {12050, "last"}, {2147483647, "most"}, {12051, "late"}, {12052, "cut"}};
  for (int number = 12025; number < 12070; ++number) {
    const auto found = good.find(number);
    EXPECT_EQ(TextOf(*table, number), found != good.end() ? found->second : "(none)") << number;
  }
  EXPECT_EQ(TextOf(*table, 2147483647), "most");
  EXPECT_EQ(TextOf(*table, -2147483647 - 1), "(none)");
  EXPECT_EQ(TextOf(*table, -12037), "(none)");
  EXPECT_EQ(TextOf(*table, 0), "(none)");
}

TEST(TextFileTable, EscapesBecomeTheirCharacters) {
  const auto table = TableOf(R"([Texts]
1 = one\ntwo\r\n\tthree
2 = \"%s\" in C:\\data
3 = \x20outer blanks\40
4 = http:/\x2f*
)");
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(TextOf(*table, 1), "one\ntwo\r\n\tthree");
  EXPECT_EQ(TextOf(*table, 2), "\"%s\" in C:\\data");
  EXPECT_EQ(TextOf(*table, 3), " outer blanks ");
  EXPECT_EQ(TextOf(*table, 4), "http://*");
}

TEST(TextFileTable, ATextWithAnUnknownEscapeStandsAsItIsWritten) {
  const auto table = TableOf("[Texts]\n1 = C:\\data\\new\n2 = \\0\n3 = a\\x\n4 = end\\\n" + std::string("5 = a\0b\\n\n", 10));
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(TextOf(*table, 1), "C:\\data\\new");
  EXPECT_EQ(TextOf(*table, 2), "\\0");
  EXPECT_EQ(TextOf(*table, 3), "a\\x");
  EXPECT_EQ(TextOf(*table, 4), "end");
  EXPECT_EQ(TextOf(*table, 5), std::string("a\0b\\n", 5));
}

TEST(TextFileTable, ALoneBackslashGivesNoText) {
  const auto table = TableOf("[Texts]\n12039 = \\\n");
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(TextOf(*table, 12039), "(none)");
}

TEST(TextFileTableLong, SurvivesAnyBytes) {
  const unsigned int seed = 20140115;
  std::mt19937 random(seed);
  const std::string pieces[] = {
      "[Texts]", "\n", "\r\n", "=", "12034", "\\", "\\n", "//", ";", "[", "]", " ", "9999999999", std::string(1, '\0'), "\xFF", "%s"};
  const TemporaryFolder folder;
  int tables = 0;
  for (int round = 0; round < 500; ++round) {
    std::string content = round % 2 == 0 ? "" : "[Texts]\n";
    const int count = static_cast<int>(random() % 60);
    for (int i = 0; i < count; ++i) content += pieces[random() % std::size(pieces)];
    content += "\n[Texts]\n12035 = good\n";
    const auto table = TextFileTable::Read(folder.Write("texts", content));
    ASSERT_NE(table, nullptr) << "seed " << seed << ", round " << round;
    ASSERT_EQ(TextOf(*table, 12035), "good") << "seed " << seed << ", round " << round;
    tables += TextOf(*table, 12034) != "(none)" ? 1 : 0;
  }
  EXPECT_GT(tables, 0) << "no round gave a text of its own";
}

int ReportedErrors() { return GlobalErrorList::Get().NumErrors(true); }

TEST(TextFileTable, WhatCannotBeReadIsNoneWithoutAWord) {
  const TemporaryFolder folder;
  const int before = ReportedErrors();
  EXPECT_EQ(TextFileTable::Read(folder.File("missing")), nullptr);
  EXPECT_EQ(TextFileTable::Read(folder.Path()), nullptr);
  EXPECT_EQ(TextFileTable::Read(folder.MakeFifo("fifo")), nullptr);
  EXPECT_EQ(TextFileTable::Read(""), nullptr);
  EXPECT_EQ(TextFileTable::Read(std::string("a\0b", 3)), nullptr);
  EXPECT_EQ(ReportedErrors(), before);
}

const char* SomeTexts(int number) { return number == 1 ? "one" : number == 2 ? "" : nullptr; }
const char* OtherTexts(int number) { return number <= 3 ? "other" : nullptr; }

TEST(ModuleTextTable, NullAndEmptyAreNoText) {
  const ModuleTextTable table(SomeTexts);
  EXPECT_EQ(TextOf(table, 1), "one");
  EXPECT_EQ(TextOf(table, 2), "(none)");
  EXPECT_EQ(TextOf(table, 3), "(none)");
}

TEST(LanguageTableChain, TheFirstThatHasANumberGivesItsText) {
  const LanguageTableChain chain(
      {{nullptr, std::make_shared<ModuleTextTable>(SomeTexts)}, {nullptr, std::make_shared<ModuleTextTable>(OtherTexts)}});
  EXPECT_EQ(TextOf(chain, 1), "one");
  EXPECT_EQ(TextOf(chain, 2), "other");
  EXPECT_EQ(TextOf(chain, 4), "(none)");
  EXPECT_EQ(TextOf(LanguageTableChain({}), 1), "(none)");
}

// --- Which file is taken -----------------------------------------------------------------------------------------

std::string TextsOf(const std::string& text) { return "[Texts]\n1 = " + text + "\n"; }

class LoadedLanguageTable : public testing::Test {
 protected:
  LoadedLanguageTable() { m_modules.SetLibraryEnding(".so"); }

  ModuleHandle AddLibrary() {
    const ModuleHandle library = m_modules.AddLibrary(Path() + ".so");
    m_modules.AddExport(library, "ZelNumberedText", reinterpret_cast<void*>(&SomeTexts));
    return library;
  }
  std::string Path() const { return m_folder.InterfacePath() + "\\app_res"; }

  TemporaryFolder m_folder;
  FixedModules m_modules;
  PlatformOverride<PlatformModules> m_guard{m_modules};
};

TEST_F(LoadedLanguageTable, IsTheTextFileUnderTheModulesOwnNameFirst) {
  m_folder.Write("app_res.dll", TextsOf("dll"));
  m_folder.Write("app_res.ini", TextsOf("ini"));
  AddLibrary();
  const LanguageTable loaded = LoadLanguageTable(Path());
  ASSERT_NE(loaded.table, nullptr);
  EXPECT_NE(loaded.handle, nullptr);
  EXPECT_EQ(TextOf(*loaded.table, 1), "dll");
  EXPECT_TRUE(m_modules.Requests().empty());
}

TEST_F(LoadedLanguageTable, IsThenTheTextFileOfThisSystem) {
  m_folder.Write("app_res.dll", "MZ\x90 a module of another system");
  m_folder.Write("app_res.ini", TextsOf("ini"));
  AddLibrary();
  const LanguageTable loaded = LoadLanguageTable(Path());
  ASSERT_NE(loaded.table, nullptr);
  EXPECT_NE(loaded.handle, nullptr);
  EXPECT_EQ(TextOf(*loaded.table, 1), "ini");
  EXPECT_TRUE(m_modules.Requests().empty());
}

TEST_F(LoadedLanguageTable, IsThenTheSharedLibraryWithTheSystemsEnding) {
  m_folder.Write("app_res.ini", "[Text]\n1 = ini");
  const ModuleHandle library = AddLibrary();
  const LanguageTable loaded = LoadLanguageTable(Path());
  ASSERT_NE(loaded.table, nullptr);
  EXPECT_EQ(loaded.handle, library);
  EXPECT_EQ(TextOf(*loaded.table, 1), "one");
  EXPECT_EQ(m_modules.Requests(), std::vector<std::string>{Path() + ".so"});
  EXPECT_EQ(m_modules.LoadCount(library), 1);
}

TEST_F(LoadedLanguageTable, IsNoneOfALibraryWithoutTheExportWhichIsUnloadedAgain) {
  const ModuleHandle library = m_modules.AddLibrary(Path() + ".so");
  m_modules.AddExport(library, "ZelNumberedTexts", reinterpret_cast<void*>(&SomeTexts));
  const LanguageTable loaded = LoadLanguageTable(Path());
  EXPECT_EQ(loaded.table, nullptr);
  EXPECT_EQ(loaded.handle, nullptr);
  EXPECT_EQ(m_modules.LoadCount(library), 0);
  EXPECT_EQ(m_modules.Requests().size(), 1u);
}

TEST_F(LoadedLanguageTable, IsNoneWhereNothingLies) {
  const LanguageTable loaded = LoadLanguageTable(Path());
  EXPECT_EQ(loaded.table, nullptr);
  EXPECT_EQ(loaded.handle, nullptr);
}

// A read that fails midway is silent, too.
TEST_F(LoadedLanguageTable, AFileThatFailsWhileItIsReadIsPassedOver) {
  m_folder.Write("app_res.dll", TextsOf("dll"));
  m_folder.Write("app_res.ini", TextsOf("ini"));
  FaultInjectionFiles files;
  files.FailAt(FileOperation::Read, 1);
  const PlatformOverride<PlatformFiles> guard(files);
  const int before = ReportedErrors();
  const LanguageTable loaded = LoadLanguageTable(Path());
  ASSERT_NE(loaded.table, nullptr);
  EXPECT_EQ(TextOf(*loaded.table, 1), "ini");
  EXPECT_EQ(files.FaultsGiven(), 1u);
  EXPECT_EQ(files.OpenFiles(), 0);
  EXPECT_EQ(ReportedErrors(), before);
}

}  // namespace
