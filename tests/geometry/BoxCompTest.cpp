#include "zelbase/geometry/BoxComp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();

static_assert(!std::is_polymorphic_v<BoxComp>);

std::vector<Point> CornersOf(const BoxComp& box) {
  std::vector<Point> corners;
  Point corner;
  for (int i = 0; box.GetCornerPoint(i, corner); ++i) {
    EXPECT_EQ(box.GetCornerPoint(i), corner);
    corners.push_back(corner);
  }
  return corners;
}

using Points = std::vector<Point>;

void ExpectNear(const Points& corners, const Points& expected, double tolerance) {
  ASSERT_EQ(corners.size(), expected.size());
  for (std::size_t i = 0; i < corners.size(); ++i) {
    EXPECT_NEAR(corners[i].x, expected[i].x, tolerance) << "corner " << i;
    EXPECT_NEAR(corners[i].y, expected[i].y, tolerance) << "corner " << i;
    EXPECT_EQ(corners[i].z, expected[i].z) << "corner " << i;
  }
}

// Where each reference point lies in a box, as fractions of width and height from corner 0.
struct Place {
  double across;
  double along;
};
constexpr Place kPlaces[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0.5, 0.5}, {0.5, 0}, {0.5, 1}, {1, 0.5}, {0, 0.5}};

// The corners by vectors: `right` is one metre across the box, `ahead` one along it.
Points CornersByVectors(short code, const Point& reference, double height, double width, double rotation) {
  const double radians = rotation * 0.017453292519943;
  const Point ahead(std::sin(radians), std::cos(radians), 0);
  const Point right(std::cos(radians), -std::sin(radians), 0);
  const Place place = kPlaces[code];
  const Point origin = Point(reference.x, reference.y, 0) - right * (place.across * width) - ahead * (place.along * height);
  return {origin, origin + right * width, origin + right * width + ahead * height, origin + ahead * height, origin};
}

TEST(BoxComp, AroundItsCentreWithoutRotation) {
  const BoxComp box(4, Point(0, 0, 0), 4, 2, 0);
  EXPECT_EQ(CornersOf(box), (Points{{-1, -2, 0}, {1, -2, 0}, {1, 2, 0}, {-1, 2, 0}, {-1, -2, 0}}));
}

TEST(BoxComp, EveryCodeWithoutRotationIsExact) {
  // Corner 0 of a box of height 4 and width 2 whose reference point lies at (10, 20).
  const Point corner0[] = {{10, 20, 0}, {8, 20, 0}, {8, 16, 0}, {10, 16, 0}, {9, 18, 0}, {9, 20, 0}, {9, 16, 0}, {8, 18, 0}, {10, 18, 0}};
  for (short code = 0; code <= 8; ++code) {
    const BoxComp box(code, Point(10, 20, 0), 4, 2, 0);
    const Point& p = corner0[code];
    EXPECT_EQ(CornersOf(box), (Points{p, p + Point(2, 0, 0), p + Point(2, 4, 0), p + Point(0, 4, 0), p})) << code;
  }
}

TEST(BoxComp, ARotationOf90HasItsHeightAlongPlusXAndItsWidthAlongMinusY) {
  const BoxComp box(0, Point(0, 0, 0), 4, 2, 90);
  ExpectNear(CornersOf(box), {{0, 0, 0}, {0, -2, 0}, {4, -2, 0}, {4, 0, 0}, {0, 0, 0}}, 1e-12);
}

TEST(BoxCompLong, TheReferencePointLiesWhereItsCodeSays) {
  std::mt19937 random(20260715);
  std::uniform_real_distribution<double> length(-50, 50);
  std::uniform_real_distribution<double> angle(-720, 720);
  for (int i = 0; i < 100000; ++i) {
    const short code = static_cast<short>(random() % 9);
    const Point reference(length(random), length(random), length(random));
    const double height = length(random);
    const double width = length(random);
    const double rotation = angle(random);
    const BoxComp box(code, reference, height, width, rotation);
    ExpectNear(CornersOf(box), CornersByVectors(code, reference, height, width, rotation), 1e-10);
    if (HasFailure()) FAIL() << "code " << code << ", rotation " << rotation;
  }
}

TEST(BoxComp, TheOrderOfOperationsIsThatOfTheTable) {
  std::mt19937 random(20260716);
  std::uniform_real_distribution<double> length(-50, 50);
  for (int i = 0; i < 100000; ++i) {
    const double x = length(random), y = length(random), h = length(random), w = length(random), r = 7 * length(random);
    const double s = std::sin(r * 0.017453292519943);
    const double c = std::cos(r * 0.017453292519943);
    const Point table[] = {{x, y, 0},
                           {x - c * w, y + s * w, 0},
                           {x - s * h - c * w, y - c * h + s * w, 0},
                           {x - s * h, y - c * h, 0},
                           {x - s * h / 2 - c * w / 2, y - c * h / 2 + s * w / 2, 0},
                           {x - c * w / 2, y + s * w / 2, 0},
                           {x - s * h - c * w / 2, y - c * h + s * w / 2, 0},
                           {x - s * h / 2 - c * w, y - c * h / 2 + s * w, 0},
                           {x - s * h / 2, y - c * h / 2, 0}};
    for (short code = 0; code <= 8; ++code) {
      const BoxComp box(code, Point(x, y, 0), h, w, r);
      const Point p = box.GetCornerPoint(0);
      ASSERT_EQ(p, table[code]) << code;
      const Point p1(p.x + c * w, p.y - s * w, 0);
      ASSERT_EQ(box.GetCornerPoint(1), p1);
      ASSERT_EQ(box.GetCornerPoint(2), Point(p1.x + s * h, p1.y + c * h, 0));
      ASSERT_EQ(box.GetCornerPoint(3), Point(p.x + s * h, p.y + c * h, 0));
      ASSERT_EQ(box.GetCornerPoint(4), p);
    }
  }
}

TEST(BoxComp, TheCornersHaveNoHeightWhateverTheReferencePointHas) {
  BoxComp box(0, Point(1, 2, 99), 4, 2, 0);
  EXPECT_EQ(box.GetRefPoint(), Point(1, 2, 99));
  EXPECT_TRUE(box.SetRefPoint(Point(1, 2, -7)));
  for (const Point& corner : CornersOf(box)) EXPECT_EQ(corner.z, 0);
}

TEST(BoxComp, TheConstructorTakesABadCodeAndLaysCorner0AtTheOrigin) {
  for (const short code : {short{-1}, short{9}, short{SHRT_MAX}, short{SHRT_MIN}}) {
    const BoxComp box(code, Point(10, 20, 0), 4, 2, 0);
    EXPECT_EQ(box.GetRefCode(), code);
    EXPECT_EQ(CornersOf(box), (Points{{0, 0, 0}, {2, 0, 0}, {2, 4, 0}, {0, 4, 0}, {0, 0, 0}}));
  }
}

TEST(BoxComp, SetRefCodeTakesABadCodeAndLeavesCorner0) {
  BoxComp box(4, Point(0, 0, 0), 4, 2, 0);
  EXPECT_TRUE(box.SetRefCode(9));
  EXPECT_EQ(box.GetRefCode(), 9);
  EXPECT_EQ(box.GetCornerPoint(0), Point(-1, -2, 0));
  // Corner 0 stays, the others follow.
  EXPECT_TRUE(box.SetRefPoint(Point(100, 100, 0)));
  EXPECT_TRUE(box.SetWidth(6));
  EXPECT_EQ(CornersOf(box), (Points{{-1, -2, 0}, {5, -2, 0}, {5, 2, 0}, {-1, 2, 0}, {-1, -2, 0}}));
  EXPECT_TRUE(box.SetRefCode(0));
  EXPECT_EQ(box.GetCornerPoint(0), Point(100, 100, 0));
}

TEST(BoxComp, SetRefusesABadCodeAndChangesNothingAtAll) {
  BoxComp box(4, Point(1, 2, 3), 4, 2, 0);
  const Points before = CornersOf(box);
  for (const short code : {short{-1}, short{9}, short{SHRT_MAX}, short{SHRT_MIN}}) {
    EXPECT_FALSE(box.Set(code, Point(9, 9, 9), 9, 9, 9));
    EXPECT_EQ(box.GetRefCode(), 4);
    EXPECT_EQ(box.GetRefPoint(), Point(1, 2, 3));
    EXPECT_EQ(box.GetHeight(), 4);
    EXPECT_EQ(box.GetWidth(), 2);
    EXPECT_EQ(box.GetRotation(), 0);
    EXPECT_EQ(CornersOf(box), before);
  }
}

TEST(BoxComp, EachSetterMovesTheCorners) {
  BoxComp box(0, Point(0, 0, 0), 1, 1, 0);
  EXPECT_TRUE(box.Set(3, Point(5, 6, 7), 4, 2, 0));
  EXPECT_EQ(box.GetCornerPoint(0), Point(5, 2, 0));
  EXPECT_TRUE(box.SetHeight(3));
  EXPECT_EQ(box.GetHeight(), 3);
  EXPECT_EQ(box.GetCornerPoint(0), Point(5, 3, 0));
  EXPECT_TRUE(box.SetWidth(8));
  EXPECT_EQ(box.GetWidth(), 8);
  EXPECT_EQ(box.GetCornerPoint(1), Point(13, 3, 0));
  EXPECT_TRUE(box.SetRefPoint(Point(0, 0, 0)));
  EXPECT_EQ(box.GetCornerPoint(3), Point(0, 0, 0));
  EXPECT_TRUE(box.SetRefCode(1));
  EXPECT_EQ(box.GetCornerPoint(1), Point(0, 0, 0));
  EXPECT_TRUE(box.SetRotation(180));
  EXPECT_EQ(box.GetRotation(), 180);
  ExpectNear(CornersOf(box), {{8, 0, 0}, {0, 0, 0}, {0, -3, 0}, {8, -3, 0}, {8, 0, 0}}, 1e-11);
}

TEST(BoxComp, ACornerOutOfRangeIsTheZeroPointOrFalse) {
  const BoxComp box(4, Point(50, 50, 0), 4, 2, 0);
  for (const int index : {-1, 5, 6, INT_MIN, INT_MAX, -5}) {
    Point corner(7, 8, 9);
    EXPECT_EQ(box.GetCornerPoint(index), Point()) << index;
    EXPECT_FALSE(box.GetCornerPoint(index, corner)) << index;
    EXPECT_EQ(corner, Point(7, 8, 9));
  }
}

TEST(BoxComp, TheBoundariesHoldAllCorners) {
  const BoxComp box(0, Point(1, 1, 0), 4, 2, 45);
  double left = 0, bottom = 0, right = 0, top = 0;
  EXPECT_TRUE(box.GetBoundaries(left, bottom, right, top));
  const double r = std::sqrt(0.5);
  EXPECT_NEAR(left, 1, 1e-12);
  EXPECT_NEAR(bottom, 1 - 2 * r, 1e-12);
  EXPECT_NEAR(right, 1 + 6 * r, 1e-12);
  EXPECT_NEAR(top, 1 + 4 * r, 1e-12);
}

TEST(BoxComp, ABoxOfNoSizeIsItsReferencePoint) {
  for (short code = 0; code <= 8; ++code) {
    const BoxComp box(code, Point(3, 4, 0), 0, 0, 30);
    for (const Point& corner : CornersOf(box)) EXPECT_EQ(corner, Point(3, 4, 0)) << code;
    double left = 0, bottom = 0, right = 0, top = 0;
    box.GetBoundaries(left, bottom, right, top);
    EXPECT_EQ(left, 3);
    EXPECT_EQ(bottom, 4);
    EXPECT_EQ(right, 3);
    EXPECT_EQ(top, 4);
  }
}

TEST(BoxComp, NoNumberGivesTheStartingBoundaries) {
  for (const BoxComp& box : {BoxComp(4, Point(0, 0, 0), 4, 2, kNaN), BoxComp(0, Point(kNaN, kNaN, 0), 4, 2, 0),
                             BoxComp(4, Point(0, 0, 0), 4, 2, std::numeric_limits<double>::infinity())}) {
    double left = 0, bottom = 0, right = 0, top = 0;
    EXPECT_TRUE(box.GetBoundaries(left, bottom, right, top));
    EXPECT_EQ(left, kLargest);
    EXPECT_EQ(bottom, kLargest);
    EXPECT_EQ(right, -kLargest);
    EXPECT_EQ(top, -kLargest);
  }
}

TEST(BoxComp, ACopyIsItsOwn) {
  BoxComp box(4, Point(0, 0, 0), 4, 2, 0);
  const BoxComp copy(box);
  BoxComp assigned(0, Point(1, 1, 1), 1, 1, 1);
  assigned = box;
  box.Set(0, Point(9, 9, 9), 9, 9, 9);
  for (const BoxComp& other : {copy, assigned}) {
    EXPECT_EQ(other.GetRefCode(), 4);
    EXPECT_EQ(other.GetCornerPoint(2), Point(1, 2, 0));
  }
}

}  // namespace
