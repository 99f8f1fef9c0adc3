#include "zelbase/frame/detail/TextItems.h"

#include <gtest/gtest.h>

#include <climits>

namespace zelbase::detail {
namespace {

const TextItems kThree = {"a", "", "Bc"};

TEST(TextItems, JoinPutsSeparatorsBetween) {
  EXPECT_EQ(JoinItems(kThree, ';'), "a;;Bc");
  EXPECT_EQ(JoinItems({"a"}, ';'), "a");
  EXPECT_EQ(JoinItems({""}, ';'), "");
  EXPECT_EQ(JoinItems({}, ';'), "");
}

TEST(TextItems, LeftAndRightEndInASeparatorAndTakeAtMostAll) {
  EXPECT_EQ(LeftItems(kThree, ';', 2), "a;;");
  EXPECT_EQ(RightItems(kThree, ';', 2), ";Bc;");
  for (const int count : {3, 4, INT_MAX}) {
    EXPECT_EQ(LeftItems(kThree, ';', count), "a;;Bc;");
    EXPECT_EQ(RightItems(kThree, ';', count), "a;;Bc;");
  }
  for (const int count : {0, -1, INT_MIN}) {
    EXPECT_EQ(LeftItems(kThree, ';', count), "");
    EXPECT_EQ(RightItems(kThree, ';', count), "");
  }
}

TEST(TextItems, FindTakesTheFirstWholeItemWithoutCase) {
  EXPECT_EQ(FindItem(kThree, "A"), 0);
  EXPECT_EQ(FindItem(kThree, "bC"), 2);
  EXPECT_EQ(FindItem(kThree, ""), 1);
  EXPECT_EQ(FindItem(kThree, "b"), -1);
  EXPECT_EQ(FindItem({"x", "X"}, "X"), 0);
  EXPECT_EQ(FindItem({}, ""), -1);
}

TEST(TextItems, NoItemIsEmptyEachTime) {
  NoItem() = "lost";
  EXPECT_EQ(NoItem(), "");
}

}  // namespace
}  // namespace zelbase::detail
