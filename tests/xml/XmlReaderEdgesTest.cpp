// What lies right beside the limits of XmlReader: one byte of nothing, names that look like the closing of their parent, texts that
// are cut within a longer one, and marks at places where a reader in a hurry takes them for something else.
#include "zelbase/xml/XmlReader.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/xml/LiteralXml.h"

namespace {

// Reads the first `length` bytes as the second reader does, which has a copy of them and nothing behind it.
void ExpectCutAsLiteral(const std::string& text, std::size_t length) {
  LiteralXml literal;
  const bool expected = LiteralXmlReader::Read(text.substr(0, length), literal);
  XmlElement root("former");
  EXPECT_EQ(XmlReader(root).ReadData(text.data(), static_cast<unsigned int>(length)), expected) << text.substr(0, length);
  EXPECT_TRUE(IsSame(root, literal)) << text.substr(0, length);
}

void ExpectAsLiteral(const std::string& text) { ExpectCutAsLiteral(text, text.size()); }

TEST(XmlReaderEdges, OneByteAtANullPointerIsRefused) {
  XmlElement root("former");
  XmlReader reader(root);
  EXPECT_FALSE(reader.ReadData(nullptr, 1));
  EXPECT_EQ(reader.LastReport().fault, XmlFault::CannotRead);
  EXPECT_EQ(root, XmlElement());
}

TEST(XmlReaderEdges, AChildNamedAsItsParentWithACharacterBeforeItIsAChild) {
  const std::string text = "<a><ba>x</ba></a>";
  XmlElement root;
  XmlReader reader(root);
  ASSERT_TRUE(reader.ReadData(text.data(), static_cast<unsigned int>(text.size())));
  EXPECT_EQ(root.Name(), "a");
  EXPECT_EQ(root.Text(), "");
  ASSERT_EQ(root.ElementCount(), 1u);
  EXPECT_EQ(root.GetElementByIndex(0).Name(), "ba");
  EXPECT_EQ(root.GetElementByIndex(0).Text(), "x");
}

TEST(XmlReaderEdges, WhatStandsBehindTheLengthIsNotSeen) {
  for (const std::string text : {"<abc d=\"1\" e=\"\">x</abc>", "<a><bc/></a>", "<a b=\"\"/>"}) {
    for (std::size_t length = 0; length <= text.size(); ++length) {
      ASSERT_NO_FATAL_FAILURE(ExpectCutAsLiteral(text, length));
      if (length == 0 || text[length - 1] == '>') continue;
      XmlElement root;
      XmlReader reader(root);
      reader.ReadData(text.data(), static_cast<unsigned int>(length));
      const bool inText = text.substr(0, length).ends_with(">x");
      EXPECT_EQ(reader.LastReport().fault, inText ? XmlFault::ElementsLeftOpen : XmlFault::UnfinishedTag) << text.substr(0, length);
    }
  }
}

TEST(XmlReaderEdges, ASignAtTheVeryEndIsAnUnfinishedTag) {
  XmlElement root;
  XmlReader reader(root);
  EXPECT_TRUE(reader.ReadData("<a>\n<", 5));
  EXPECT_EQ(root, XmlElement("a"));
  EXPECT_EQ(reader.LastReport().fault, XmlFault::UnfinishedTag);
  EXPECT_EQ(reader.LastReport().line, 2u);
  EXPECT_EQ(reader.LastReport().column, 1u);
}

TEST(XmlReaderEdges, AWordWithoutAnEqualsSignDoesNotCloseItsElement) {
  ExpectAsLiteral("<a b>x</a>");
  ExpectAsLiteral("<a bc>x</a>");
}

TEST(XmlReaderEdges, AValueThatASignCutsIsRefusedWhateverComesBehind) {
  for (const char* text : {"<a b=\"1>/>", "<a b=\"1>>", "<a b=\"&lt;/>", "<a b=\"1> c=\"2\"/>"}) ExpectAsLiteral(text);
}

TEST(XmlReaderEdges, AQuoteRightBeforeTheEqualsSignBelongsToTheName) {
  ExpectAsLiteral("<a b\"=\"1\"/>");
  ExpectAsLiteral("<a \"=\"1\">x</a>");
}

}  // namespace
