#include "zelbase/platform/COleDataSource.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zelbase/platform/MemoryClipboard.h"

namespace {

HGLOBAL Block(const std::string& bytes) { return std::make_shared<const std::string>(bytes); }

std::vector<unsigned short> Numbers(const COleDataSource& source) {
  std::vector<unsigned short> numbers;
  for (const FORMATETC& details : source.Content()->Formats()) numbers.push_back(details.cfFormat);
  return numbers;
}

using Offered = std::vector<unsigned short>;

TEST(COleDataSource, BeginsWithoutOffers) {
  const COleDataSource source;
  ASSERT_NE(source.Content(), nullptr);
  EXPECT_EQ(Numbers(source), Offered());
  EXPECT_EQ(source.Content()->Block(15), nullptr);
}

TEST(COleDataSource, OffersOneBlockAFormatInOrder) {
  COleDataSource source;
  source.CacheGlobalData(9, Block("nine"));
  source.CacheGlobalData(7, Block("seven"));
  source.CacheGlobalData(9, Block("nine again"));
  EXPECT_EQ(Numbers(source), (Offered{9, 7}));
  EXPECT_EQ(*source.Content()->Block(9), "nine again");
  EXPECT_EQ(*source.Content()->Block(7), "seven");
  EXPECT_EQ(source.Content()->Block(8), nullptr);
}

TEST(COleDataSource, OfDetailsTheNumberAndTheMediumAreReplaced) {
  COleDataSource source;
  FORMATETC details{3, &source, 4, 5, 6};
  source.CacheGlobalData(9, Block("nine"), &details);
  source.CacheGlobalData(8, Block("eight"));
  const std::vector<FORMATETC> formats = source.Content()->Formats();
  ASSERT_EQ(formats.size(), 2u);
  EXPECT_EQ(formats[0].cfFormat, 9);
  EXPECT_EQ(formats[0].ptd, &source);
  EXPECT_EQ(formats[0].dwAspect, 4u);
  EXPECT_EQ(formats[0].lindex, 5);
  EXPECT_EQ(formats[0].tymed, 1u);
  EXPECT_EQ(formats[1].dwAspect, 1u);
  EXPECT_EQ(formats[1].lindex, -1);
  EXPECT_EQ(details.cfFormat, 3);
}

TEST(COleDataSource, TheNumber0AndANullBlockAreIgnored) {
  COleDataSource source;
  source.CacheGlobalData(0, Block("x"));
  source.CacheGlobalData(9, nullptr);
  EXPECT_EQ(Numbers(source), Offered());
}

TEST(COleDataSource, WhatWasHandedOutStaysAsItWas) {
  MemoryClipboard clipboard;
  const PlatformOverride<PlatformClipboard> guard(clipboard);
  std::shared_ptr<const ClipboardContent> content;
  {
    COleDataSource source;
    source.CacheGlobalData(9, Block("nine"));
    content = source.Content();
    EXPECT_TRUE(source.SetClipboard());
    source.CacheGlobalData(9, Block("changed"));
    source.Empty();
    EXPECT_EQ(Numbers(source), Offered());
  }
  EXPECT_EQ(*content->Block(9), "nine");
  EXPECT_EQ(*clipboard.Get()->Block(9), "nine");
}

}  // namespace
