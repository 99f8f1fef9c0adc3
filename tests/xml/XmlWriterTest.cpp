#include "zelbase/xml/XmlWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/xml/XmlReader.h"

namespace {

const std::string kHead = "<?xml version=\"1.0\"?>\r\n";

std::string Written(const XmlElement& root) {
  std::ostringstream stream;
  EXPECT_TRUE(XmlWriter(root).WriteStream(stream));
  return stream.str();
}

// Takes `room` bytes and refuses the rest; counts what comes.
class ShortStream : public std::streambuf {
 public:
  explicit ShortStream(std::streamsize room) : m_room(room) {}
  std::streamsize taken = 0;

 protected:
  std::streamsize xsputn(const char*, std::streamsize count) override {
    const std::streamsize now = std::min(count, m_room - taken);
    taken += now;
    return now;
  }
  int overflow(int) override { return traits_type::eof(); }

 private:
  std::streamsize m_room;
};

}  // namespace

TEST(XmlWriter, AnElementWithoutTextAndChildrenClosesItself) { EXPECT_EQ(Written(XmlElement("a")), kHead + "<a/>\r\n"); }

TEST(XmlWriter, ElementsAreIndentedByTabsWithCrLf) {
  XmlElement root("a");
  root.SetAttribute("n", "1");
  root.Add("b").Add("c").SetAttribute("m", "");
  root.Add("d").SetText("text");
  EXPECT_EQ(Written(root), kHead +
                               "<a n=\"1\">\r\n"
                               "\t<b>\r\n"
                               "\t\t<c m=\"\"/>\r\n"
                               "\t</b>\r\n"
                               "\t<d>text</d>\r\n"
                               "</a>\r\n");
}

TEST(XmlWriter, FiveCharactersBecomeReferencesInTextsAndValues) {
  XmlElement root("a");
  root.SetAttribute("b", "\"&'<>\xB0\r\n");
  root.SetText("x<y>&\"'");
  EXPECT_EQ(Written(root), kHead + "<a b=\"&quot;&amp;&apos;&lt;&gt;\xB0\r\n\">x&lt;y&gt;&amp;&quot;&apos;</a>\r\n");
}

TEST(XmlWriter, NamesGoOutAsTheyAre) {
  XmlElement root("a&b");
  root.SetAttribute("<", "");
  EXPECT_EQ(Written(root), kHead + "<a&b <=\"\"/>\r\n");
}

// Kept: once a level is not pretty, everything below it runs on.
TEST(XmlWriter, BelowATextEverythingRunsOn) {
  XmlElement root("a");
  XmlElement& mixed = root.Add("b");
  mixed.SetText("x");
  mixed.Add("c").Add("d").Add("e");
  EXPECT_EQ(Written(root), kHead + "<a>\r\n\t<b>x<c><d><e/></d></c></b>\r\n</a>\r\n");
}

TEST(XmlWriter, ANamelessChildKeepsItsElementOnOneLine) {
  XmlElement root("a");
  root.Add("b");
  root.Add("").SetText("<");
  root.Add("c").Add("d");
  EXPECT_EQ(Written(root), kHead + "<a><b/>&lt;<c><d/></c></a>\r\n");
}

// Kept: only its text.
TEST(XmlWriter, AttributesAndChildrenOfANamelessChildAreNeverWritten) {
  XmlElement root("a");
  XmlElement& run = root.Add("");
  run.SetText("x");
  run.SetAttribute("b", "1");
  run.Add("c");
  EXPECT_EQ(Written(root), kHead + "<a>x</a>\r\n");
}

// Kept: an empty run of text is a child.
TEST(XmlWriter, OneEmptyNamelessChildIsNotAnEmptyElement) {
  XmlElement root("a");
  root.Add("");
  EXPECT_EQ(Written(root), kHead + "<a></a>\r\n");
}

TEST(XmlWriter, ARootWithoutANameWritesNothing) {
  XmlElement root;
  root.SetText("text");
  root.Add("child");
  std::ostringstream stream;
  EXPECT_FALSE(XmlWriter(root).WriteStream(stream));
  EXPECT_EQ(stream.str(), "");
  EXPECT_TRUE(stream.good());
}

TEST(XmlWriter, LongTextsNamesAndDeepIndentsPassTheBuffer) {
  XmlElement root("a" + std::string(200000, 'n'));
  XmlElement* inner = &root;
  for (int i = 0; i < 5000; ++i) inner = &inner->Add("b");
  inner->SetText(std::string(100000, '&') + std::string(100000, 'x'));
  std::string expected = kHead + "<" + root.Name() + ">";
  for (std::size_t i = 1; i < 5000; ++i) expected += "\r\n" + std::string(i, '\t') + "<b>";
  expected += "\r\n" + std::string(5000, '\t') + "<b>";
  for (int i = 0; i < 100000; ++i) expected += "&amp;";
  expected += std::string(100000, 'x') + "</b>";
  for (std::size_t i = 5000; i-- > 1;) expected += "\r\n" + std::string(i, '\t') + "</b>";
  expected += "\r\n</" + root.Name() + ">\r\n";
  EXPECT_TRUE(Written(root) == expected);
}

TEST(XmlWriter, FormattingFlagsOfTheStreamAreWithoutEffect) {
  std::ostringstream stream;
  stream << std::setw(40) << std::setfill('*');
  EXPECT_TRUE(XmlWriter(XmlElement("a")).WriteStream(stream));
  EXPECT_EQ(stream.str(), kHead + "<a/>\r\n");
}

TEST(XmlWriter, AStreamThatHasFailedIsFalse) {
  std::ostringstream stream;
  stream.setstate(std::ios::failbit);
  EXPECT_FALSE(XmlWriter(XmlElement("a")).WriteStream(stream));
  EXPECT_EQ(stream.str(), "");
}

TEST(XmlWriter, AFullDiskIsNoticedByTheFlush) {
  std::ofstream stream("/dev/full", std::ios::binary);
  ASSERT_TRUE(stream.is_open());
  EXPECT_FALSE(XmlWriter(XmlElement("a")).WriteStream(stream));
}

TEST(XmlWriter, WritingStopsWhenTheStreamFails) {
  // Nested so deep that all of it would be 4 * 10^10 bytes.
  XmlElement root("a");
  XmlElement* inner = &root;
  for (int i = 0; i < 200000; ++i) inner = &inner->Add("a");
  ShortStream buffer(1000000);
  std::ostream stream(&buffer);
  EXPECT_FALSE(XmlWriter(root).WriteStream(stream));
  EXPECT_EQ(buffer.taken, 1000000);
}

// 10,000 levels have indents of up to 10 kB, 100 MB in all: nearly all of what is written, so that the stream ends in one.
TEST(XmlWriter, WritingStopsWithinAnIndent) {
  XmlElement root("a");
  XmlElement* inner = &root;
  for (int i = 0; i < 10000; ++i) inner = &inner->Add("a");
  for (const std::streamsize room : {0, 65536, 40000000}) {
    ShortStream buffer(room);
    std::ostream stream(&buffer);
    EXPECT_FALSE(XmlWriter(root).WriteStream(stream));
    EXPECT_EQ(buffer.taken, room);
  }
}

// The name ends some bytes before the buffer's end, on it and behind it.
TEST(XmlWriter, NamesAroundTheSizeOfTheBufferAreWhole) {
  for (std::size_t size = 65536 - 64; size <= 65536 + 64; ++size) {
    XmlElement root(std::string(size, 'n'));
    EXPECT_TRUE(Written(root) == kHead + "<" + root.Name() + "/>\r\n") << size;
  }
}

TEST(XmlWriter, AFileIsWrittenAndReadBack) {
  const TemporaryFolder folder;
  folder.Write("tree.xml", std::string(1000, 'x'));
  XmlElement root("a");
  root.Add("b").SetText("1 < 2");
  EXPECT_TRUE(XmlWriter(root).WriteFile((folder.InterfacePath() + "\\tree.xml").c_str()));
  EXPECT_EQ(folder.Read("tree.xml"), Written(root));
  XmlElement again;
  EXPECT_TRUE(XmlReader(again).ReadFile(folder.File("tree.xml").c_str()));
  EXPECT_EQ(again, root);
}

// Kept: the file is cut before the root is looked at.
TEST(XmlWriter, ARootWithoutANameLeavesTheFileCutToNothing) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("tree.xml", "former");
  EXPECT_FALSE(XmlWriter(XmlElement()).WriteFile(name.c_str()));
  EXPECT_TRUE(folder.Exists("tree.xml"));
  EXPECT_EQ(folder.Read("tree.xml"), "");
}

TEST(XmlWriter, AFileThatDoesNotOpenIsFalse) {
  const TemporaryFolder folder;
  const XmlElement root("a");
  EXPECT_FALSE(XmlWriter(root).WriteFile(nullptr));
  EXPECT_FALSE(XmlWriter(root).WriteFile(""));
  EXPECT_FALSE(XmlWriter(root).WriteFile(folder.Path().c_str()));
  EXPECT_FALSE(XmlWriter(root).WriteFile(folder.File("missing/tree.xml").c_str()));
}

TEST(XmlWriter, ADiskThatFillsUpIsFalse) {
  const TemporaryFolder folder;
  XmlElement root("a");
  root.SetText(std::string(300000, 'x'));
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  for (const unsigned long long room : {0ull, 1ull, 65536ull, 200000ull}) {
    files.Reset();
    files.FillUpAfter(room);
    EXPECT_FALSE(XmlWriter(root).WriteFile(folder.File("tree.xml").c_str())) << room;
    EXPECT_EQ(folder.Read("tree.xml").size(), room);
    EXPECT_EQ(files.OpenFiles(), 0);
  }
  files.Reset();
  EXPECT_TRUE(XmlWriter(root).WriteFile(folder.File("tree.xml").c_str()));
}

TEST(XmlWriter, AWriteThatFailsOnceEndsTheWriting) {
  const TemporaryFolder folder;
  XmlElement root("a");
  root.SetText(std::string(300000, 'x'));  // several buffers full
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.FailAt(FileOperation::Write, 2);
  EXPECT_FALSE(XmlWriter(root).WriteFile(folder.File("tree.xml").c_str()));
  EXPECT_EQ(files.FaultsGiven(), 1u);
  EXPECT_LE(folder.Read("tree.xml").size(), 65536u);  // one buffer, and nothing behind the gap
}
