#include "zelbase/geometry/Extents3D.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/geometry/EdgeValues.h"

namespace {

struct Axis {
  double low;
  double high;
};

std::array<Axis, 3> Axes(const Extents3D& box) { return {Axis{box.xMin, box.xMax}, Axis{box.yMin, box.yMax}, Axis{box.zMin, box.zMax}}; }

bool SameBox(const Extents3D& a, const Extents3D& b) {
  for (std::size_t k = 0; k < 3; ++k) {
    if (!Same(Axes(a)[k].low, Axes(b)[k].low) || !Same(Axes(a)[k].high, Axes(b)[k].high)) return false;
  }
  return true;
}

Extents3D Box(const std::array<Axis, 3>& axes) {
  return Extents3D(axes[0].low, axes[1].low, axes[2].low, axes[0].high, axes[1].high, axes[2].high);
}

TEST(Extents3D, DefaultIsEmpty) {
  const Extents3D box;
  EXPECT_EQ(box, Extents3D(kLargest, kLargest, kLargest, -kLargest, -kLargest, -kLargest));
  EXPECT_FALSE(box.IsValid());
}

TEST(Extents3D, IsARowOfSixDoubles) {
  const Extents3D box(1, 2, 3, 4, 5, 6);
  static_assert(sizeof(Extents3D) == 48 && std::is_trivially_copyable_v<Extents3D> && std::is_standard_layout_v<Extents3D>);
  const auto* words = reinterpret_cast<const double*>(&box);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(words[i], i + 1);
}

TEST(Extents3D, FourDoublesLeaveZEmptyInConstructorAndSet) {
  Extents3D box(1, 2, 3, 4);
  EXPECT_EQ(box, Extents3D(1, 2, kLargest, 3, 4, -kLargest));
  box.Set(1, 2, 3, 4, 5, 6);
  EXPECT_TRUE(box.IsValid());
  box.Set(7, 8, 9, 10);
  EXPECT_EQ(box, Extents3D(7, 8, kLargest, 9, 10, -kLargest));
  EXPECT_FALSE(box.IsValid());
}

TEST(Extents3D, DifferencesAreTakenOfInvalidAxesToo) {
  const Extents3D box(1, 20, 3, 4, 5, 9);
  EXPECT_EQ(box.GetXDiff(), 3);
  EXPECT_EQ(box.GetYDiff(), -15);
  EXPECT_EQ(box.GetZDiff(), 6);
}

TEST(Extents3D, DifferenceOfAnEmptyAxisIsMinusInfinity) {
  EXPECT_EQ(Extents3D(1, 2, 3, 4).GetZDiff(), -kInfinity);
  EXPECT_EQ(Extents3D().GetXDiff(), -kInfinity);
  EXPECT_EQ(Extents3D().GetYDiff(), -kInfinity);
}

TEST(Extents3D, ABoxWithoutSizeIsValid) {
  EXPECT_TRUE(Extents3D(1, 2, 3, 1, 2, 3).IsValid());
  EXPECT_FALSE(Extents3D(1, 2, 3, 0, 2, 3).IsValid());
  EXPECT_FALSE(Extents3D(1, 2, 3, 1, 1, 3).IsValid());
  EXPECT_FALSE(Extents3D(1, 2, 3, 1, 2, 2).IsValid());
}

TEST(Extents3D, Invalidate2DLeavesZAlone) {
  Extents3D box(1, 2, 3, 4, 5, 6);
  box.Invalidate2D();
  EXPECT_EQ(box, Extents3D(kLargest, kLargest, 3, -kLargest, -kLargest, 6));
  box.Invalidate();
  EXPECT_EQ(box, Extents3D());
}

TEST(Extents3D, GrownByOnePointHasNoWidthAtThatPoint) {
  Extents3D box;
  box |= Point(1, -2, 3);
  EXPECT_EQ(box, Extents3D(1, -2, 3, 1, -2, 3));
  EXPECT_EQ(box.GetXDiff(), 0);
  EXPECT_EQ(box.GetYDiff(), 0);
  EXPECT_EQ(box.GetZDiff(), 0);
}

TEST(Extents3D, GrowsByEachKindOfPoint) {
  Extents3D box;
  ((box |= Point(1, 2, 3)) |= FloatPoint(0.5, 9.0, 3.0)) |= RVector3d{0, 0, 10};
  EXPECT_EQ(box, Extents3D(0, 0, 3, 1, 9, 10));
}

TEST(Extents3D, AnInvalidAxisCopiesEvenAReversedSource) {
  Extents3D box;
  box |= Extents3D(5, 1, 1, 2, 2, 2);
  EXPECT_EQ(box, Extents3D(5, 1, 1, 2, 2, 2));
  EXPECT_FALSE(box.IsValid());
}

TEST(Extents3D, AnInvalidSourceAxisLeavesAValidTarget) {
  Extents3D box(1, 1, 1, 2, 2, 2);
  box |= Extents3D(0, 3, -1, 9, 0, 5);
  EXPECT_EQ(box, Extents3D(0, 1, -1, 9, 2, 5));
  box |= Extents3D();
  EXPECT_EQ(box, Extents3D(0, 1, -1, 9, 2, 5));
}

TEST(Extents3D, GetCenterIsTheMiddle) {
  EXPECT_EQ(Extents3D(1, 2, 3, 5, 8, -3).GetCenter(), Point(3, 5, 0));
  EXPECT_EQ(Extents3D().GetCenter(), Point(0, 0, 0));
}

TEST(Extents3D, NormalizeSwapsReversedAxes) {
  Extents3D box(1, 5, 3, 2, 4, 3);
  box.Normalize();
  EXPECT_EQ(box, Extents3D(1, 4, 3, 2, 5, 3));
}

TEST(Extents3D, NormalizeTurnsAnEmptyBoxIntoTheBoxOfAllPoints) {
  Extents3D box;
  box.Normalize();
  EXPECT_EQ(box, Extents3D(-kLargest, -kLargest, -kLargest, kLargest, kLargest, kLargest));
  EXPECT_EQ(box.GetXDiff(), kInfinity);
}

TEST(Extents3D, ANanBoundStaysAndIsNeverValid) {
  Extents3D box(kNan, 0, 0, kNan, 1, 1);
  EXPECT_FALSE(box.IsValid());
  box |= Point(5, 5, 5);
  EXPECT_TRUE(std::isnan(box.xMin) && std::isnan(box.xMax));
  box |= Extents3D(0, 0, 0, 9, 9, 9);
  EXPECT_TRUE(std::isnan(box.xMin) && std::isnan(box.xMax));
  EXPECT_EQ(box.yMax, 9);
  EXPECT_FALSE(box == box);
}

TEST(Extents3D, ANanCoordinateEntersAnEmptyAxisAndNoOther) {
  Extents3D box;
  box |= Point(kNan, 1, 1);
  EXPECT_TRUE(std::isnan(box.xMin) && std::isnan(box.xMax));
  box |= Point(1, kNan, 1);
  EXPECT_EQ(box.yMin, 1);
  EXPECT_EQ(box.yMax, 1);
}

// The rules of one axis as tables of what comes of each order of the four bounds.
TEST(Extents3DLong, RandomGrowthAgreesWithASecondTranscription) {
  EdgeValues random(7109);
  Tally tally({"invalid axis", "raised", "lowered", "kept", "copied", "united", "source invalid", "NaN", "valid", "not valid"});
  for (int i = 0; i < kRandomRounds; ++i) {
    std::array<Axis, 3> mine;
    std::array<Axis, 3> other;
    for (auto* axes : {&mine, &other}) {
      for (Axis& axis : *axes) {
        axis.low = random.Coordinate();
        axis.high = random.Flag() ? random.Near(axis.low) : random.Coordinate();
      }
    }
    const double point[3] = {random.Coordinate(), random.Flag() ? random.Near(mine[1].low) : random.Coordinate(),
                             random.Flag() ? mine[2].high : random.Coordinate()};
    std::array<Axis, 3> grown = mine;
    std::array<Axis, 3> united = mine;
    std::array<Axis, 3> ordered = mine;
    bool valid = true;
    for (std::size_t k = 0; k < 3; ++k) {
      const Axis& m = mine[k];
      const bool invalid = m.low > m.high;
      if (std::isnan(m.low) || std::isnan(m.high)) tally.Count("NaN");
      const double c = point[k];
      if (invalid) {
        grown[k] = {c, c};
        tally.Count("invalid axis");
        ordered[k] = {m.high, m.low};
      } else if (m.high < c) {
        grown[k].high = c;
        tally.Count("raised");
      } else if (m.low > c) {
        grown[k].low = c;
        tally.Count("lowered");
      } else {
        tally.Count("kept");
      }
      const Axis& o = other[k];
      if (invalid) {
        united[k] = o;
        tally.Count("copied");
      } else if (o.low > o.high) {
        tally.Count("source invalid");
      } else {
        if (m.low > o.low) united[k].low = o.low;
        if (m.high < o.high) united[k].high = o.high;
        tally.Count("united");
      }
      valid = valid && m.low <= m.high;
    }
    ASSERT_EQ(Box(mine).IsValid(), tally.Either(valid, "valid", "not valid"));
    Extents3D box = Box(mine);
    box |= Point(point[0], point[1], point[2]);
    ASSERT_TRUE(SameBox(box, Box(grown)));
    box = Box(mine);
    box |= RVector3d{point[0], point[1], point[2]};
    ASSERT_TRUE(SameBox(box, Box(grown)));
    box = Box(mine);
    box |= Box(other);
    ASSERT_TRUE(SameBox(box, Box(united)));
    box = Box(mine);
    box.Normalize();
    ASSERT_TRUE(SameBox(box, Box(ordered)));
    box = Box(mine);
    const Extents3D& itself = box;
    box |= itself;
    ASSERT_TRUE(SameBox(box, Box(mine)));
  }
}

}  // namespace
