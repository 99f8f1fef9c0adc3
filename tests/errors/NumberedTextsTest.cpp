#include "zelbase/errors/NumberedTexts.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/errors/FixedWording.h"

namespace {

TEST(NumberedTexts, BuiltInTable) {
  const struct {
    int number;
    const char* text;
  } rows[] = {
      {12030, R"(Interpolation error "%s".)"},
      {12031, R"(Extrapolation error "%s".)"},
      {12032, R"(Error reading from "%s".)"},
      {12033, R"(Computation failed "%s".)"},
      {12034, R"(Unspecified Error)"},
      {12035, R"(Error opening "%s".)"},
      {12036, R"(Error reading from "%s".)"},
      {12037, R"(Error writing to "%s".)"},
      {12038,
       "Error retrieving item \"[%s] - %s\"."
       "\n"
       "File in question:"
       "\n"
       "\"%s\"."},
      {12039, R"(Unknown)"},
      {12040, R"(Section "%s" could not be found in "%s".)"},
      {12041, R"(The key "%s" could not be found in section "%s" of "%s".)"},
      {12044, "Base action"},
      {12045, "Composite Action"},
      {12049, "m"},
      {12050, "m/s"},
      {12051, "m\263"},
      {12052, "T/m\263"},
      {12053, "\260"},
      {12054, "m\263/s"},
      {12055, "Bar"},
      {12056, "KW"},
      {12057, "T/min"},
      {12058, "\260BU+"},
      {12059, "\260PU+"},
      {12060, "Ton"},
      {12061, "Ton/s"},
      {12062, "m\262"},
      {12063, "\260C"},
      {12064, "mm"},
      {12065, "kgf"},
  };
  for (const auto& row : rows) EXPECT_EQ(NumberedText(row.number), row.text) << row.number;
}

TEST(NumberedTexts, TheTwoReadingTextsAreEqual) { EXPECT_EQ(NumberedText(12032), NumberedText(12036)); }

TEST(NumberedTexts, UnknownNumberIsEmpty) {
  for (const int number :
       {0, -1, 1, 12029, 12042, 12043, 12046, 12048, 12066, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(NumberedText(number), "") << number;
  }
}

TEST(NumberedTexts, InstalledTableLiesOverTheBuiltInOne) {
  const NumberedTextsGuard guard({{12034, "Unbekannter Fehler"}, {12039, ""}, {7, "sieben"}});
  EXPECT_EQ(NumberedText(12034), "Unbekannter Fehler");
  EXPECT_EQ(NumberedText(12039), "");  // known, though empty
  EXPECT_EQ(NumberedText(7), "sieben");
  EXPECT_EQ(NumberedText(12035), "Error opening \"%s\".");
  EXPECT_EQ(NumberedText(8), "");
}

// A table that spoils the output although it knows nothing.
class Spoiler : public NumberedTextTable {
 public:
  bool Get(int, std::string& text) const override {
    text = "spoiled";
    return false;
  }
};

TEST(NumberedTexts, TableThatKnowsNothingIsNotHeard) {
  const auto former = InstallNumberedTexts(std::make_shared<Spoiler>());
  EXPECT_EQ(NumberedText(12039), "Unknown");
  EXPECT_EQ(NumberedText(1), "");
  InstallNumberedTexts(former);
}

TEST(NumberedTexts, InstallingGivesBackTheFormerTable) {
  const auto table = std::make_shared<FixedTexts>(std::map<int, std::string>{{1, "x"}});
  const auto former = InstallNumberedTexts(table);
  EXPECT_EQ(InstallNumberedTexts(nullptr), table);
  EXPECT_EQ(NumberedText(1), "");
  EXPECT_EQ(InstallNumberedTexts(former), nullptr);
}

}  // namespace
