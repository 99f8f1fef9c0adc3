#include "zelbase/platform/CRect.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int kHighest = std::numeric_limits<int>::max();
constexpr int kLowest = std::numeric_limits<int>::min();

TEST(CRect, BeginsNullAndEmpty) {
  const CRect rect;
  EXPECT_TRUE(rect.IsRectNull());
  EXPECT_TRUE(rect.IsRectEmpty());
  EXPECT_FALSE(rect.PtInRect(CPoint(0, 0)));
}

TEST(CRect, IsMadeFromEdgesCornersOrCornerAndSize) {
  const CRect rect(1, 2, 11, 22);
  EXPECT_EQ(rect, CRect(CPoint(1, 2), CPoint(11, 22)));
  EXPECT_EQ(rect, CRect(CPoint(1, 2), CSize(10, 20)));
  EXPECT_EQ(rect.Width(), 10);
  EXPECT_EQ(rect.Height(), 20);
  EXPECT_EQ(rect.Size(), CSize(10, 20));
  EXPECT_EQ(rect.TopLeft(), CPoint(1, 2));
  EXPECT_EQ(rect.BottomRight(), CPoint(11, 22));
  CRect set;
  set.SetRect(1, 2, 11, 22);
  EXPECT_EQ(set, rect);
  EXPECT_NE(set, CRect(1, 2, 11, 23));
}

TEST(CRect, LeftAndTopEdgesAreInsideRightAndBottomAreNot) {
  const CRect rect(1, 2, 4, 6);
  int inside = 0;
  for (int x = -1; x < 8; ++x) {
    for (int y = -1; y < 8; ++y) inside += rect.PtInRect(CPoint(x, y)) ? 1 : 0;
  }
  EXPECT_EQ(inside, 3 * 4);
  EXPECT_TRUE(rect.PtInRect(CPoint(1, 2)));
  EXPECT_TRUE(rect.PtInRect(CPoint(3, 5)));
  EXPECT_FALSE(rect.PtInRect(CPoint(4, 5)));
  EXPECT_FALSE(rect.PtInRect(CPoint(3, 6)));
}

TEST(CRect, IsEmptyWithoutWidthOrHeight) {
  EXPECT_FALSE(CRect(0, 0, 1, 1).IsRectEmpty());
  EXPECT_TRUE(CRect(0, 0, 0, 1).IsRectEmpty());
  EXPECT_TRUE(CRect(0, 0, 1, 0).IsRectEmpty());
  EXPECT_TRUE(CRect(5, 0, 1, 1).IsRectEmpty());
  EXPECT_FALSE(CRect(5, 0, 1, 1).IsRectNull());
}

TEST(CRect, NormalizePutsTheEdgesInOrder) {
  CRect rect(10, 20, 1, 2);
  EXPECT_EQ(rect.Width(), -9);
  EXPECT_FALSE(rect.PtInRect(CPoint(5, 5)));
  rect.NormalizeRect();
  EXPECT_EQ(rect, CRect(1, 2, 10, 20));
  rect.NormalizeRect();
  EXPECT_EQ(rect, CRect(1, 2, 10, 20));
  CRect half(10, 2, 1, 20);
  half.NormalizeRect();
  EXPECT_EQ(half, CRect(1, 2, 10, 20));
}

TEST(CRect, OffsetMovesAndInflateGrows) {
  CRect rect(1, 2, 3, 4);
  rect.OffsetRect(10, -10);
  EXPECT_EQ(rect, CRect(11, -8, 13, -6));
  rect.OffsetRect(CSize(-10, 10));
  rect.OffsetRect(CPoint(1, 1));
  EXPECT_EQ(rect, CRect(2, 3, 4, 5));
  rect.InflateRect(1, 2);
  EXPECT_EQ(rect, CRect(1, 1, 5, 7));
  rect.InflateRect(CSize(-1, -2));
  EXPECT_EQ(rect, CRect(2, 3, 4, 5));
  rect.InflateRect(1, 2, 3, 4);
  EXPECT_EQ(rect, CRect(1, 1, 7, 9));
  EXPECT_EQ(CRect(1, 2, 3, 4) + CPoint(1, 2), CRect(2, 4, 4, 6));
  EXPECT_EQ(CRect(1, 2, 3, 4) + CSize(1, 2), CRect(2, 4, 4, 6));
  EXPECT_EQ(CRect(1, 2, 3, 4) - CPoint(1, 2), CRect(0, 0, 2, 2));
  EXPECT_EQ(CRect(1, 2, 3, 4) - CSize(1, 2), CRect(0, 0, 2, 2));
}

TEST(CRect, EndsAtTheNearestIntInsteadOfOverflowing) {
  CRect rect(kLowest, kLowest, kHighest, kHighest);
  EXPECT_EQ(rect.Width(), kHighest);
  EXPECT_EQ(rect.Height(), kHighest);
  EXPECT_FALSE(rect.IsRectEmpty());
  EXPECT_TRUE(rect.PtInRect(CPoint(0, 0)));
  rect.InflateRect(1, kHighest);
  EXPECT_EQ(rect, CRect(kLowest, kLowest, kHighest, kHighest));
  rect.OffsetRect(kLowest, kHighest);
  EXPECT_EQ(rect, CRect(kLowest, -1, -1, kHighest));
  EXPECT_EQ(CRect(0, 0, 0, 0) - CSize(kLowest, kLowest), CRect(kHighest, kHighest, kHighest, kHighest));
}

TEST(CRect, EqualsOnlyInAllFourEdges) {
  const CRect rect(1, 2, 3, 4);
  EXPECT_TRUE(rect == CRect(1, 2, 3, 4));
  EXPECT_FALSE(rect == CRect(0, 2, 3, 4));
  EXPECT_FALSE(rect == CRect(1, 0, 3, 4));
  EXPECT_FALSE(rect == CRect(1, 2, 0, 4));
  EXPECT_FALSE(rect == CRect(1, 2, 3, 0));
}

}  // namespace
