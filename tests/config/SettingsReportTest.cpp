#include "zelbase/config/SettingsReport.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tests/config/SettingsTestHelp.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/config/detail/TextHash.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

using Kind = SettingsFindingKind;
using Severity = SettingsSeverity;

struct Row {
  long long line;
  Kind kind;
  Severity severity;
  bool operator==(const Row&) const = default;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.line << ":" << static_cast<int>(row.kind) << "/" << static_cast<int>(row.severity);
}

SettingsReport Report(const std::string& text) {
  SettingsReport report;
  report.ReadText(text);
  return report;
}

std::vector<Row> Rows(const std::string& text) {
  std::vector<Row> rows;
  const SettingsReport report = Report(text);
  for (const SettingsFinding& finding : report.Findings()) rows.push_back({finding.line, finding.kind, finding.severity});
  return rows;
}

// The message of the only finding.
std::string Said(const std::string& text) {
  const SettingsReport report = Report(text);
  return report.Findings().size() == 1 ? SettingsReport::Message(report.Findings()[0]) : "(not one finding)";
}

TEST(SettingsReport, ACleanTextHasNoFindings) {
  const SettingsReport report = Report("; about\n\n[A]\nk = 1\nl = 2\n\n[B]\nk = 1\n");
  EXPECT_TRUE(report.Findings().empty());
  EXPECT_EQ(report.NumLines(), 8);
  EXPECT_EQ(report.NumSections(), 2);
  EXPECT_EQ(report.NumItems(), 3);
}

TEST(SettingsReport, EachKind) {
  const struct {
    std::string text;
    std::vector<Row> rows;
  } rows[] = {
      {"[A]\njunk\n", {{2, Kind::NoSeparator, Severity::Loss}}},
      {"[A]\nk//=1\n", {{2, Kind::NoSeparator, Severity::Loss}}},
      {"[A]\n=1\n", {{2, Kind::NoKey, Severity::Loss}}},
      {"[A]\nk=1\nk=2\n", {{2, Kind::KeyRepeated, Severity::Loss}}},
      {"[A]\nk=1\nk=1\n", {{2, Kind::KeyRepeated, Severity::Note}}},
      {"[A]\nk=1\n[B]\nk=2\n[A]\nl=1\n", {{5, Kind::SectionRepeated, Severity::Warning}}},
      {"[A]\nu = http://x\n", {{2, Kind::ValueCut, Severity::Loss}}},
      {"[A]\nk = 1 // note\n", {{2, Kind::ValueCut, Severity::Warning}}},
      {"[http://x]\n", {{1, Kind::HeadCut, Severity::Loss}}},
      {"[A\n", {{1, Kind::HeadNotClosed, Severity::Loss}}},
      {"[A] x\n", {{1, Kind::HeadTrailingText, Severity::Warning}}},
      {"[A] // x\n", {}},
      {"[A]\n ;k = 1\n", {{2, Kind::SemicolonKey, Severity::Loss}}},
      {"[A]\n;k = 1\n//l\n", {{2, Kind::CommentInSection, Severity::Note}, {3, Kind::CommentInSection, Severity::Note}}},
      {"[A]\nk=\n", {{2, Kind::EmptyValue, Severity::Note}}},
      {"words\n[A]\n", {{1, Kind::TextBeforeSections, Severity::Note}}},
      {"k=1\n[A]\n", {{1, Kind::TextBeforeSections, Severity::Warning}}},
      {"", {{0, Kind::NoSections, Severity::Warning}}},
      {"\xEF\xBB\xBF; x\n[A]\n",
       {{1, Kind::TextBeforeSections, Severity::Note},
        {1, Kind::ByteOrderMark, Severity::Warning},
        {1, Kind::Utf8Text, Severity::Warning}}},
      {std::string("[A]\nk=\0\n", 8), {{2, Kind::ZeroByte, Severity::Warning}}},
      {"[A]\nk=\x1Bx\n", {{2, Kind::ControlByte, Severity::Warning}}},
      {"[A]\nk=\x7F\n", {{2, Kind::ControlByte, Severity::Warning}}},
      {"[A]\nk=1\rl=2\n", {{2, Kind::LoneCarriageReturn, Severity::Warning}}},
      {"[A]\nk=\xC2\xB0\n", {{2, Kind::Utf8Text, Severity::Warning}}},
      {"[A]\nk=\xE2\x82\xAC\n", {{2, Kind::Utf8Text, Severity::Warning}}},
      {"[A]\nk=\xB0\xE9l\xE8\n", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(Rows(row.text), row.rows) << testing::PrintToString(row.text);
}

TEST(SettingsReport, Utf16IsALoss) {
  for (const std::string text : {"\xFF\xFE[\n", "\xFE\xFF[\n"}) {
    const SettingsReport report = Report(text);
    ASSERT_FALSE(report.Findings().empty());
    EXPECT_EQ(report.NumFindings(Severity::Loss), 1);
  }
}

// Sequences of two, three and four bytes; then a front that no sequence has, one that is cut short and one without its end.
TEST(SettingsReport, AByteOrderMarkStandsOutWhole) {
  const SettingsReport report = Report("\xEF\xBB\xBF; about\n[A]\nk=1\n");
  std::string text;
  for (const SettingsFinding& finding : report.Findings()) {
    if (finding.kind == Kind::ByteOrderMark) text = finding.text;
  }
  EXPECT_EQ(text, "\xEF\xBB\xBF");
}

TEST(SettingsReport, Utf8IsToldFromWindows1252ByWholeSequences) {
  for (const std::string text : {"\xC2\xB0", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF",
                                 "\xC2\xB0\xC2\xB0", "\xC2 \xC2\xB0"}) {
    EXPECT_EQ(Rows("[A]\nk=" + text + "\n"), (std::vector<Row>{{2, Kind::Utf8Text, Severity::Warning}})) << testing::PrintToString(text);
  }
  for (const std::string text :
       {"\xC1\x80", "\xF5\x80\x80\x80", "\xFF", "\xC2", "\xE2\x82", "\xF0\x9F\x98", "\xC2z", "\xE2\x82z", "\xF0\x9F\x98z"}) {
    EXPECT_EQ(Rows("[A]\nk=" + text + "\n"), (std::vector<Row>{})) << testing::PrintToString(text);
  }
}

// The one message of each kind that the text meets, in words.
TEST(SettingsReport, EveryKindHasItsWords) {
  const struct {
    std::string text, said;
  } rows[] = {
      {"[A]\n=1\n", "dropped, nothing stands before \"=\": \"=1\""},
      {"[A]\nk=1\nk=1\n", "\"k\" of [A] stands here and again with the same value; line 3 wins"},
      {"[A // x\n", "the section head is cut at \"//\"; not read: \"// x\""},
      {"[A\n", "a section head without \"]\" is the section with no name: \"[A\""},
      {"[A] x\n", "text behind the head of [A] is not read: \"x\""},
      {"[A]\n ;k = 1\n", "the key begins with \";\"; the next save turns the line into a comment: \";k\""},
      {"[A]\n; x\n", "this comment is gone after a save by the store: \"; x\""},
      {"[A]\nk=\n", "\"k\" of [A] has no value and counts as absent where that is asked"},
      {"words\n[A]\n", "text before the first section is kept: \"words\""},
      {"k=1\n[A]\n", "an item before the first section is kept, but not read: \"k=1\""},
      {"", "there is no section at all"},
      {std::string("[A]\nk=\0\n", 8), "zero byte in \"k=\\x00\""},
      {"[A]\nk=\x7F\n", "control character in \"k=\\x7F\""},
      {"[A]\nk=1\rl=2\n", "a carriage return alone ends no line: \"k=1\\x0Dl=2\""},
      {"[A]\nk=\xC2\xB0\n", "this is UTF-8, and will be shown as Windows-1252: \"k=\xC2\xB0\""},
  };
  for (const auto& row : rows) EXPECT_EQ(Said(row.text), row.said) << testing::PrintToString(row.text);
  SettingsFinding mark;
  mark.kind = Kind::ByteOrderMark;
  mark.severity = Severity::Loss;
  EXPECT_EQ(SettingsReport::Message(mark), "the text is UTF-16, which cannot be read");
  mark.severity = Severity::Warning;
  EXPECT_EQ(SettingsReport::Message(mark), "the text begins with a byte order mark, which counts as text");
}

// Two texts of which `differs` is the difference of the hashes: by the birthday rule one pair in 2^32 is found among 2^18 texts.
std::pair<std::string, std::string> TextsThatHashApartBy(std::uint32_t differs) {
  std::unordered_map<std::uint32_t, std::string> known;
  for (int i = 0; i < 10'000'000; ++i) {
    std::string text = "k" + std::to_string(i);
    const std::uint32_t hash = zelbase::detail::HashText(text);
    const auto found = known.find(hash ^ differs);
    if (found != known.end()) return {found->second, text};
    known.emplace(hash, std::move(text));
  }
  return {};
}

TEST(SettingsReportLong, KeysThatShareAHashAreKeysOfTheirOwn) {
  const auto [one, other] = TextsThatHashApartBy(0);
  ASSERT_NE(one, other);
  EXPECT_EQ(Rows("[A]\n" + one + "=1\n" + other + "=1\n"), (std::vector<Row>{}));
  // In two sections: what the number of the section does to a hash is undone by the keys.
  const auto [first, second] = TextsThatHashApartBy((1U * 0x9E3779B1U) ^ (2U * 0x9E3779B1U));
  ASSERT_NE(first, second);
  EXPECT_EQ(Rows("[A]\n" + first + "=1\n[B]\n" + second + "=1\n"), (std::vector<Row>{}));
  EXPECT_EQ(Rows("[A]\n" + second + "=1\n[B]\n" + first + "=1\n"), (std::vector<Row>{}));
}

TEST(SettingsReport, OfARepeatedKeyTheLastLineWinsWhereverItStands) {
  const SettingsReport report = Report("[A]\nk=1\nk=2\n[B]\n[A]\nk=3\n");
  ASSERT_EQ(report.Findings().size(), 3U);
  EXPECT_EQ(report.Findings()[0].line, 2);
  EXPECT_EQ(report.Findings()[0].relatedLine, 6);
  EXPECT_EQ(report.Findings()[0].text, "1");
  EXPECT_EQ(report.Findings()[1].line, 3);
  EXPECT_EQ(report.Findings()[1].relatedLine, 6);
  EXPECT_EQ(report.Findings()[2].kind, Kind::SectionRepeated);
  EXPECT_EQ(report.Findings()[2].relatedLine, 1);
}

TEST(SettingsReport, Messages) {
  EXPECT_EQ(Said("[A]\njunk\n"), "dropped, there is no \"=\": \"junk\"");
  EXPECT_EQ(Said("[A]\nk=1\nk=2\n"), "\"k\" of [A] is given again, line 3 wins; lost here: \"1\"");
  EXPECT_EQ(Said("[A]\nu=http://x\n"), "the value of \"u\" is cut at \"//\"; not read: \"//x\"");
  EXPECT_EQ(Said("[A]\n[A]\n"), "[A] began in line 1 already, both become one section");
  EXPECT_EQ(Said("[A]\nk=\x1B[2J\n"), "control character in \"k=\\x1B[2J\"");
  SettingsFinding unknown;
  unknown.kind = static_cast<Kind>(99);
  unknown.text = "t";
  EXPECT_EQ(SettingsReport::Message(unknown), "t");
}

TEST(SettingsReport, PercentSignsOfTheTextStay) { EXPECT_EQ(Said("[A]\n%t %s %n\n"), "dropped, there is no \"=\": \"%t %s %n\""); }

TEST(SettingsReport, FindingsAreBoundedAndStillCounted) {
  std::string text = "[A]\n";
  for (int i = 0; i < 30000; ++i) text += "x\n";
  text += std::string(1000, 'y') + "\n";
  const SettingsReport report = Report(text);
  EXPECT_EQ(report.Findings().size(), static_cast<std::size_t>(SettingsReport::MOST_FINDINGS));
  EXPECT_EQ(report.NumFindings(Severity::Loss), 30001);
  EXPECT_EQ(Report("[A]\n" + std::string(1000, 'y')).Findings()[0].text, std::string(117, 'y') + "...");
  EXPECT_EQ(report.NumFindings(static_cast<Severity>(7)), 0);
  EXPECT_EQ(report.NumFindings(static_cast<Severity>(-1)), 0);
}

TEST(SettingsReport, ASectionRepeatedBehindTheLastFindingThatIsKeptIsCounted) {
  std::string text = "[A]\n";
  for (int i = 0; i < SettingsReport::MOST_FINDINGS; ++i) text += "x\n";
  const SettingsReport report = Report(text + "[A]\n");
  ASSERT_EQ(report.Findings().size(), static_cast<std::size_t>(SettingsReport::MOST_FINDINGS));
  EXPECT_EQ(report.Findings().back().kind, Kind::NoSeparator);
  EXPECT_EQ(report.Findings().back().relatedLine, 0);
  EXPECT_EQ(report.NumFindings(Severity::Warning), 1);
}

TEST(SettingsReport, ReadsFilesQuietly) {
  GlobalErrorList::Get().Clear();
  const TemporaryFolder folder;
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  SettingsReport report;
  EXPECT_TRUE(report.ReadFile(folder.Write("a.ini", "[A]\njunk\n")));
  EXPECT_EQ(report.Findings().size(), 1U);
  EXPECT_FALSE(report.ReadFile(folder.File("none.ini")));
  EXPECT_TRUE(report.Findings().empty());
  files.FailAt(FileOperation::Read, 2);
  EXPECT_FALSE(report.ReadFile(folder.File("a.ini")));
  EXPECT_TRUE(report.Findings().empty());
  EXPECT_EQ(report.NumLines(), 0);
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  EXPECT_EQ(files.OpenFiles(), 0);
}

// The report counts what the store has, and calls a text free of losses only when a second save and reading changes nothing.
TEST(SettingsReport, AgreesWithTheStoreOnRandomTexts) {
  static const std::string pieces[] = {"[",  "]",       "=",       ";", "//", " ",     "\r",   "\n",
                                       "\n", "\n[A]\n", "\n[B]\n", "a", "b",  "k = v", "\nk=", "\nk=w"};
  int clean = 0;
  for (unsigned int seed = 1; seed <= 3000; ++seed) {
    std::mt19937 random(seed);
    std::string text;
    for (auto i = random() % 25; i != 0; --i) text += pieces[random() % std::size(pieces)];
    FileObject settings;
    ReadFrom(settings, text);
    const SettingsReport report = Report(text);
    ASSERT_EQ(report.NumSections(), settings.GetNumSections()) << seed;
    long long items = 0;
    const Picture picture = PictureOf(settings);
    for (const auto& [name, section] : picture) items += static_cast<long long>(section.size());
    ASSERT_EQ(report.NumItems(), items) << seed;
    if (report.NumFindings(Severity::Loss) != 0) continue;
    ++clean;
    FileObject again;
    ReadFrom(again, WrittenBy(settings));
    ASSERT_EQ(PictureOf(again), picture) << seed;
    ASSERT_EQ(again.GetExtraInfo(), settings.GetExtraInfo()) << seed;
  }
  EXPECT_GT(clean, 100);
}

}  // namespace
