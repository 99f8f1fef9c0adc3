#include "zelbase/frame/FileTypes.h"

#include <gtest/gtest.h>

#include <string>

#include "zelbase/frame/KeyTables.h"

namespace {

TEST(FileTypes, KeyOfANumber) {
  EXPECT_EQ(GetFileKeyForType(0), "Language");
  EXPECT_EQ(GetFileKeyForType(34), "TideFile");
  EXPECT_EQ(GetFileKeyForType(108), "UKOOAP190");
}

TEST(FileTypes, NumberBeyondTheTableHasAnEmptyKey) {
  EXPECT_EQ(GetFileKeyForType(109), "");
  EXPECT_EQ(GetFileKeyForType(0xFFFFFFFFu), "");
}

TEST(FileTypes, NumberOfAKey) {
  for (unsigned int type = 0; type < 109; ++type) EXPECT_EQ(GetFileTypeForKey(GetFileKeyForType(type)), type);
}

TEST(FileTypes, UnknownKeyIsMinusOneAsAnUnsignedValue) {
  EXPECT_EQ(GetFileTypeForKey("tidefile"), 0xFFFFFFFFu);
  EXPECT_EQ(GetFileTypeForKey(""), 0xFFFFFFFFu);
  EXPECT_EQ(GetFileTypeForKey("TideFile "), 0xFFFFFFFFu);
}

TEST(FileTypes, RowsAreMatchedInFullZeroBytesIncluded) {
  EXPECT_EQ(GetFileTypeForKey(std::string("TideFile\0", 9)), 0xFFFFFFFFu);
  EXPECT_EQ(GetFileTypeForKey(std::string("TideFile\0x", 10)), 0xFFFFFFFFu);
  EXPECT_EQ(GetFileTypeForKey("TideFil"), 0xFFFFFFFFu);
}

}  // namespace
