#include "zelbase/geometry/TimePoint.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(TimePoint, DefaultsToTheOriginAtTimeZero) {
  const TimePoint p;
  EXPECT_EQ(p.position, Point());
  EXPECT_EQ(p.GetTime(), 0.0);
}

TEST(TimePoint, CarriesPositionAndTime) {
  TimePoint p(1, 2, 3, 1e12);
  EXPECT_EQ(p.position, Point(1, 2, 3));
  EXPECT_EQ(p.GetTime(), 1e12);
  p.SetTime(5);
  const TimePoint copy = p;
  TimePoint assigned(Point(7, 8, 9), 4);
  EXPECT_EQ(assigned.position, Point(7, 8, 9));
  EXPECT_EQ(assigned.time, 4);
  assigned = copy;
  EXPECT_EQ(assigned.position, Point(1, 2, 3));
  EXPECT_EQ(assigned.GetTime(), 5);
}

TEST(TimePoint, IsDestroyedThroughItsBase) {
  struct Derived : TimePoint {
    explicit Derived(bool& flag) : gone(flag) {}
    ~Derived() override { gone = true; }
    bool& gone;
  };
  bool gone = false;
  std::unique_ptr<TimePoint> owner = std::make_unique<Derived>(gone);
  owner.reset();
  EXPECT_TRUE(gone);
}

}  // namespace
