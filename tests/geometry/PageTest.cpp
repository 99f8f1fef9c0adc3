#include "zelbase/geometry/Page.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

bool SamePage(const Page& a, const Page& b) {
  return Same(a.left, b.left) && Same(a.bottom, b.bottom) && Same(a.right, b.right) && Same(a.top, b.top);
}

TEST(Page, DefaultIsInvalidAndHasAnAreaOfFour) {
  Page page;
  EXPECT_EQ(page, Page(1, 1, -1, -1));
  EXPECT_FALSE(page.IsValid());
  EXPECT_EQ(page.Area(), 4);
  page.Set(1, 2, 3, 4);
  page.Invalidate();
  EXPECT_EQ(page, Page());
}

TEST(Page, IsARowOfFourDoubles) {
  const Page page(1, 2, 3, 4);
  const auto* words = reinterpret_cast<const double*>(&page);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(words[i], i + 1);
  EXPECT_EQ(page.left, 1);
  EXPECT_EQ(page.bottom, 2);
  EXPECT_EQ(page.right, 3);
  EXPECT_EQ(page.top, 4);
}

TEST(Page, IsMadeFromTwoCorners) {
  EXPECT_EQ(Page(Point(1, 2, 9), Point(3, 4, 9)), Page(1, 2, 3, 4));
  Page page;
  page.Set(Point(1, 2, 9), Point(3, 4, 9));
  EXPECT_EQ(page, Page(1, 2, 3, 4));
  page.SetBottomLeft(Point(-1, -2, 9));
  page.SetTopRight(Point(7, 8, 9));
  EXPECT_EQ(page, Page(-1, -2, 7, 8));
  EXPECT_EQ(page.BottomLeft(), Point(-1, -2, 0));
  EXPECT_EQ(page.TopRight(), Point(7, 8, 0));
}

TEST(Page, MeasuresAreSigned) {
  const Page world(1, 2, 4, 10);
  EXPECT_EQ(world.Size(), Point(3, 8, 0));
  EXPECT_EQ(world.Area(), 24);
  EXPECT_EQ(world.GetCenter(), Point(2.5, 6, 0));
  const Page screen(0, 10, 20, 0);
  EXPECT_EQ(screen.Width(), 20);
  EXPECT_EQ(screen.Height(), -10);
  EXPECT_EQ(screen.Area(), -200);
  EXPECT_FALSE(screen.IsValid());
}

TEST(Page, ComparesExactlyOverFour) {
  EXPECT_TRUE(Page(1, 2, 3, 4) == Page(1, 2, 3, 4));
  EXPECT_TRUE(Page(1, 2, 3, 4) != Page(1, 2, 3, std::nextafter(4.0, 5.0)));
  EXPECT_TRUE(Page(1, 2, 3, 4) != Page(0, 2, 3, 4));
}

TEST(Page, GrownByAPointFromInvalidHasNoSizeAtThatPoint) {
  Page page;
  page |= Point(3, 4, 5);
  EXPECT_EQ(page, Page(3, 4, 3, 4));
  page |= Point(1, 9, 5);
  EXPECT_EQ(page, Page(1, 4, 3, 9));
}

TEST(Page, UnionGoesAxisByAxisAndCopiesEvenAReversedSource) {
  Page page(5, 0, 0, 10);
  page |= Page(2, 3, 1, 12);
  EXPECT_EQ(page, Page(2, 0, 1, 12));  // x was reversed and took the reversed other
  page |= Page(0, 20, 5, 11);
  EXPECT_EQ(page, Page(0, 0, 5, 12));  // y of the other is reversed and changes nothing
}

TEST(Page, IntersectionMindsInvalidOperands) {
  Page page(0, 0, 10, 10);
  page &= Page();
  EXPECT_EQ(page, Page(0, 0, 10, 10));
  page &= Page(5, -5, 20, 5);
  EXPECT_EQ(page, Page(5, 0, 10, 5));
  page &= Page(20, 20, 30, 30);
  EXPECT_EQ(page, Page(20, 20, 10, 5));
  EXPECT_FALSE(page.IsValid());
  page &= Page(1, 2, 3, 4);
  EXPECT_EQ(page, Page(1, 2, 3, 4));
}

TEST(Page, TimesAPointGrowsAboutTheCentre) {
  Page page(0, 0, 10, 20);
  page *= Point(2, 0.5, 99);
  EXPECT_EQ(page, Page(-5, 5, 15, 15));
  page *= Point(1, 1, 0);
  EXPECT_EQ(page, Page(-5, 5, 15, 15));
  page *= Point(0, 0, 0);
  EXPECT_EQ(page, Page(5, 10, 5, 10));
}

TEST(Page, ShiftsByAPoint) {
  Page page(0, 1, 2, 3);
  page += Point(10, 20, 99);
  EXPECT_EQ(page, Page(10, 21, 12, 23));
  page -= Point(1, 1, 99);
  EXPECT_EQ(page, Page(9, 20, 11, 22));
}

TEST(Page, AllEdgesCountAsInside) {
  const Page page(0, 0, 10, 20);
  for (const double x : {0.0, 5.0, 10.0}) {
    for (const double y : {0.0, 5.0, 20.0}) EXPECT_TRUE(page.IsPointInPage(x, y)) << x << ' ' << y;
  }
  EXPECT_FALSE(page.IsPointInPage(std::nextafter(0.0, -1.0), 5));
  EXPECT_FALSE(page.IsPointInPage(std::nextafter(10.0, 11.0), 5));
  EXPECT_FALSE(page.IsPointInPage(Point(5, std::nextafter(0.0, -1.0), 0)));
  EXPECT_FALSE(page.IsPointInPage(Point(5, std::nextafter(20.0, 21.0), 0)));
}

TEST(Page, IsPointInPageMindsTheOrientationInYOnly) {
  const Page screen(0, 20, 10, 0);
  EXPECT_TRUE(screen.IsPointInPage(5, 5));
  EXPECT_TRUE(screen.IsPointInPage(0, 20));
  EXPECT_FALSE(screen.IsPointInPage(5, 21));
  EXPECT_FALSE(screen.IsPointInPage(5, -1));
  const Page leftwards(10, 0, 0, 20);
  EXPECT_FALSE(leftwards.IsPointInPage(5, 5));
}

TEST(Page, IsRectInPageOfRectanglesThatOnlyTouchIsFalse) {
  const Page page(0, 0, 10, 10);
  EXPECT_FALSE(page.IsRectInPage(Page(10, 0, 20, 10)));
  EXPECT_FALSE(page.IsRectInPage(-10, 0, 0, 10));
  EXPECT_FALSE(page.IsRectInPage(0, 10, 10, 20));
  EXPECT_FALSE(page.IsRectInPage(0, -10, 10, 0));
  EXPECT_TRUE(page.IsRectInPage(9.999, 9.999, 20, 20));
  EXPECT_TRUE(page.IsRectInPage(2, 2, 3, 3));
  EXPECT_TRUE(page.IsRectInPage(-1, -1, 11, 11));
}

TEST(Page, IsRectInPageNeverLooksAtOrientation) {
  const Page screen(0, 10, 10, 0);
  EXPECT_FALSE(screen.IsRectInPage(Page(0, 0, 10, 10)));
  EXPECT_FALSE(screen.IsRectInPage(screen));
}

TEST(Page, NormalizeAndNormalizeToScreen) {
  Page page(10, 0, 0, 20);
  page.NormalizeToScreen();
  EXPECT_EQ(page, Page(0, 20, 10, 0));
  page.NormalizeToScreen();
  EXPECT_EQ(page, Page(0, 20, 10, 0));
  page.Normalize();
  EXPECT_EQ(page, Page(0, 0, 10, 20));
}

TEST(Page, ToStringIsTwoLines) {
  EXPECT_EQ(Page(1, -2.5, 3, 4.00390625).ToString(), "1.000000, -2.500000\n3.000000, 4.003906");
  EXPECT_EQ(Page(kLargest, 0, kLargest, 0).ToString().size(), 2 * (316 + 2 + 8) + 1);
}

TEST(Page, ANanBoundStaysAndIsNeverValid) {
  Page page(kNan, 0, 10, 10);
  EXPECT_FALSE(page.IsValid());
  page |= Point(50, 50, 0);
  EXPECT_TRUE(std::isnan(page.left));
  EXPECT_EQ(page.right, 50);
  page &= Page(0, 0, 1, 1);  // not valid: becomes the other
  EXPECT_EQ(page, Page(0, 0, 1, 1));
}

TEST(PageLong, RandomSetOperationsAgreeWithASecondTranscription) {
  EdgeValues random(7301);
  Tally tally({"right invalid", "left invalid", "both valid", "inside", "outside", "overlap", "apart"});
  const auto axis = [](double& low, double& high, double otherLow, double otherHigh) {
    if (low > high) {
      low = otherLow;
      high = otherHigh;
    } else if (!(otherLow > otherHigh)) {
      low = low > otherLow ? otherLow : low;
      high = high < otherHigh ? otherHigh : high;
    }
  };
  for (int i = 0; i < kRandomRounds; ++i) {
    const Page a(random.Coordinate(), random.Coordinate(), random.Coordinate(), random.Coordinate());
    const Page b(random.Flag() ? random.Near(a.left) : random.Coordinate(), random.Coordinate(), random.Coordinate(),
                 random.Flag() ? a.bottom : random.Coordinate());
    Page expected = a;
    axis(expected.left, expected.right, b.left, b.right);
    axis(expected.bottom, expected.top, b.bottom, b.top);
    Page page = a;
    page |= b;
    ASSERT_TRUE(SamePage(page, expected));

    expected = a;
    const bool rightValid = b.left <= b.right && b.bottom <= b.top;
    const bool leftValid = a.left <= a.right && a.bottom <= a.top;
    tally.Count(!rightValid ? "right invalid" : !leftValid ? "left invalid" : "both valid");
    if (rightValid && !leftValid) expected = b;
    if (rightValid && leftValid) {
      expected.Set(a.left < b.left ? b.left : a.left, a.bottom < b.bottom ? b.bottom : a.bottom, a.right > b.right ? b.right : a.right,
                   a.top > b.top ? b.top : a.top);
    }
    page = a;
    page &= b;
    ASSERT_TRUE(SamePage(page, expected));
    ASSERT_EQ(a.IsValid(), leftValid);

    const double x = random.Index(3) == 0 ? a.left : random.Index(2) == 0 ? random.Near(a.right) : random.Coordinate();
    const double y = random.Index(3) == 0 ? a.top : random.Index(2) == 0 ? random.Near(a.bottom) : random.Coordinate();
    const double lower = a.top > a.bottom ? a.bottom : a.top;
    const double upper = a.top > a.bottom ? a.top : a.bottom;
    const bool outside = x < a.left || x > a.right || y < lower || y > upper;
    ASSERT_EQ(a.IsPointInPage(x, y), !tally.Either(outside, "outside", "inside"));
    const bool apart = a.top <= b.bottom || a.right <= b.left || a.bottom >= b.top || a.left >= b.right;
    ASSERT_EQ(a.IsRectInPage(b), !tally.Either(apart, "apart", "overlap"));
  }
}

}  // namespace
