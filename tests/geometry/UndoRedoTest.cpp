#include "zelbase/geometry/UndoRedo.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

static_assert(std::is_aggregate_v<UndoRedo>);

TEST(UndoRedo, ANewRecordIsZeroAndNoStep) {
  const UndoRedo record;
  EXPECT_EQ(record.kind, 0);
  EXPECT_EQ(record.index, 0);
  EXPECT_EQ(record.from, Point(0, 0, 0));
  EXPECT_EQ(record.to, Point(0, 0, 0));
}

TEST(UndoRedo, ItsFieldsStandInOrder) {
  const UndoRedo record{5, 2, Point(1, 2, 3), Point(4, 5, 6)};
  EXPECT_EQ(record.kind, 5);
  EXPECT_EQ(record.index, 2);
  EXPECT_EQ(record.from, Point(1, 2, 3));
  EXPECT_EQ(record.to, Point(4, 5, 6));
}

}  // namespace
