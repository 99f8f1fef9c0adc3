// What lies right beside the limits of XmlReader: one byte of nothing, and names that look like the closing of their parent.
#include "zelbase/xml/XmlReader.h"

#include <gtest/gtest.h>

#include <string>

namespace {

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

}  // namespace
