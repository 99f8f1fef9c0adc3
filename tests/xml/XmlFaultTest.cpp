#include "zelbase/xml/XmlFault.h"

#include <gtest/gtest.h>

#include <set>
#include <span>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "zelbase/xml/XmlElement.h"
#include "zelbase/xml/XmlReader.h"

namespace {

struct Row {
  const char* text;
  bool read;
  XmlFault fault;
  unsigned int line;
  unsigned int column;
};

XmlReport ReportOf(const std::string& text, bool& read) {
  XmlElement root;
  XmlReader reader(root);
  read = reader.ReadData(text.data(), static_cast<unsigned int>(text.size()));
  return reader.LastReport();
}

void ExpectReports(std::span<const Row> rows) {
  for (const Row& row : rows) {
    bool read = false;
    const XmlReport report = ReportOf(row.text, read);
    EXPECT_EQ(read, row.read) << row.text;
    EXPECT_EQ(report.fault, row.fault) << row.text;
    EXPECT_EQ(report.line, row.line) << row.text;
    EXPECT_EQ(report.column, row.column) << row.text;
  }
}

}  // namespace

TEST(XmlFault, ARefusalHasReasonLineAndColumn) {
  const Row rows[] = {
      {"<a>\n <>", false, XmlFault::EmptyTag, 2, 3},
      {"<a>\r\n\t< b>", false, XmlFault::NoTagName, 2, 3},
      {"<a/>\n\n<b/>", false, XmlFault::SecondRoot, 3, 2},
      {"</a>", false, XmlFault::NothingToClose, 1, 2},
      {"<a>\n<b\n>\n</a>", false, XmlFault::WrongClosingName, 4, 2},
      {"<a\n =\"1\"/>", false, XmlFault::AttributeWithoutBlank, 2, 2},
      {"<=\"1\"/>", false, XmlFault::AttributeWithoutName, 1, 2},
      {"<a=\"1\"/>", false, XmlFault::AttributeWithoutBlank, 1, 3},
      {"<a b=\"1\"\nc='1'/>", false, XmlFault::AttributeWithoutQuotes, 2, 2},
      {"<a b=\"&lt;\" c=\"x&y\"/>", false, XmlFault::UnknownAttributeReference, 1, 17},
  };
  ExpectReports(rows);
}

TEST(XmlFault, AReadingThatEndsEarlyIsTrueAndSaysWhy) {
  const Row rows[] = {
      {"<a>\n x&bad;</a>", true, XmlFault::UnknownTextReference, 2, 3},
      {"<a/>\n&", true, XmlFault::None, 0, 0},
      {"<a/>\n&<", true, XmlFault::UnknownTextReference, 2, 1},
      {"<a>\n<b", true, XmlFault::UnfinishedTag, 2, 1},
      {"<a>\n<b>\nx", true, XmlFault::ElementsLeftOpen, 3, 2},
      {"", true, XmlFault::NoElement, 1, 1},
      {"<!-- -->\n", true, XmlFault::NoElement, 2, 1},
      {"<a>x</a>", true, XmlFault::None, 0, 0},
  };
  ExpectReports(rows);
}

TEST(XmlFault, TheFirstFaultOfATagIsTheOneReported) {
  bool read = true;
  EXPECT_EQ(ReportOf("<a b=\"&bad;\" c=1>", read).fault, XmlFault::UnknownAttributeReference);
  EXPECT_EQ(ReportOf("<a b=1 c=\"&bad;>", read).fault, XmlFault::AttributeWithoutQuotes);
}

TEST(XmlFault, NamesThatAreTooLongAreReported) {
  bool read = true;
  EXPECT_EQ(ReportOf("<a " + std::string(64u * 1024 * 1024 + 1, 'n') + "=\"\"/>", read).fault, XmlFault::AttributeNamesTooLong);
  EXPECT_FALSE(read);
}

TEST(XmlFaultLong, NamesAsLongAsTheyMayBeAreRead) {
  bool read = false;
  EXPECT_EQ(ReportOf("<a " + std::string(64u * 1024 * 1024, 'n') + "=\"\"/>", read).fault, XmlFault::None);
  EXPECT_TRUE(read);
}

TEST(XmlFault, AFileThatCannotBeReadHasAReasonWithoutAPlace) {
  const TemporaryFolder folder;
  XmlElement root;
  XmlReader reader(root);
  EXPECT_EQ(reader.LastReport().fault, XmlFault::None);
  EXPECT_FALSE(reader.ReadFile(folder.File("missing").c_str()));
  EXPECT_EQ(reader.LastReport().fault, XmlFault::CannotOpen);
  EXPECT_EQ(reader.LastReport().line, 0u);
  EXPECT_FALSE(reader.ReadData(nullptr, 1));
  EXPECT_EQ(reader.LastReport().fault, XmlFault::CannotRead);
  EXPECT_EQ(reader.LastReport().column, 0u);
  EXPECT_TRUE(reader.ReadData("<a/>", 4));
  EXPECT_EQ(reader.LastReport().fault, XmlFault::None);
}

TEST(XmlFault, EveryFaultHasWordsOfItsOwn) {
  std::set<std::string> texts;
  for (int i = 1; i <= static_cast<int>(XmlFault::NoElement); ++i) texts.insert(XmlFaultText(static_cast<XmlFault>(i)));
  EXPECT_EQ(texts.size(), static_cast<std::size_t>(XmlFault::NoElement));
  EXPECT_FALSE(texts.contains(""));
  EXPECT_STREQ(XmlFaultText(XmlFault::None), "");
  EXPECT_STREQ(XmlFaultText(static_cast<XmlFault>(1000)), "");
  EXPECT_STREQ(XmlFaultText(static_cast<XmlFault>(-1)), "");
}
