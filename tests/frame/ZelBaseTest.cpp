#include "zelbase/frame/ZelBase.h"

#include <gtest/gtest.h>

// Something of every folder is in reach with this one include.
TEST(ZelBase, OneIncludeReachesEveryFolder) {
  FileObject settings;
  CZelString list("1, 2", ',', true);
  settings.SetItem("A", "list", list.String(), true);
  std::string text;
  ASSERT_TRUE(settings.GetItem("A", "list", text));
  EXPECT_EQ(text, "1,2");
  EXPECT_EQ(CRCChecksum().Value(), 0xFFFFFFFFu);
  EXPECT_EQ(FileError("C:\\a\\b.txt", FileError::Open).Format(), "Error opening \"b.txt\".");
  EXPECT_EQ(CExTime::UtcDateToTime(2001, 9, 9, 1, 46, 40), 1000000000);
  Locker lock;
  EXPECT_TRUE(lock.Lock());
  lock.Unlock();
  EXPECT_GT(PlatformService<PlatformClock>::Current().Frequency(), 0);
}
