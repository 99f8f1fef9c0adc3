#include "zelbase/numerics/col_vector.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

col_vector MakeVector(double a, double b, double c) {
  col_vector vector(3);
  vector[0] = a;
  vector[1] = b;
  vector[2] = c;
  return vector;
}

TEST(ColVector, HasTheCountItIsMadeWith) {
  EXPECT_EQ(col_vector(3).Count(), 3u);
  EXPECT_EQ(col_vector(0).Count(), 0u);
  EXPECT_EQ(col_vector().Count(), 0u);
}

TEST(ColVector, TheNullObjectHasNoElements) {
  EXPECT_EQ(col_vector::NULL_COL_VECTOR.Count(), 0u);
  const col_vector copy(col_vector::NULL_COL_VECTOR);
  EXPECT_EQ(copy.Count(), 0u);
}

// Another file's static initialiser may run before any of the library's.
const unsigned int g_nullCount = col_vector(col_vector::NULL_COL_VECTOR).Count();

TEST(ColVector, TheNullObjectMayBeUsedByAStaticInitialiser) { EXPECT_EQ(g_nullCount, 0u); }

TEST(ColVector, ElementsAreReadAndWrittenByIndex) {
  col_vector vector = MakeVector(1.5, -2, 0);
  vector[1] += 5;
  const col_vector& constant = vector;
  EXPECT_EQ(constant[0], 1.5);
  EXPECT_EQ(constant[1], 3);
  EXPECT_EQ(constant[2], 0);
  static_assert(std::is_same_v<decltype(vector[0]), double&>);
  static_assert(std::is_same_v<decltype(constant[0]), double>);
}

TEST(ColVector, ACopyHasElementsOfItsOwn) {
  col_vector vector = MakeVector(1, 2, 3);
  const col_vector copy(vector);
  vector[0] = 9;
  EXPECT_EQ(copy[0], 1);
  EXPECT_EQ(copy[2], 3);
}

TEST(ColVector, AssignmentTakesCountAndElements) {
  const col_vector three = MakeVector(1, 2, 3);
  col_vector vector(7);
  vector = three;
  ASSERT_EQ(vector.Count(), 3u);
  EXPECT_EQ(vector[1], 2);
  vector = col_vector::NULL_COL_VECTOR;
  EXPECT_EQ(vector.Count(), 0u);
  vector = three;
  ASSERT_EQ(vector.Count(), 3u);
  EXPECT_EQ(vector[2], 3);
}

TEST(ColVector, AssignmentOfAnEqualCountKeepsTheBlock) {
  col_vector vector = MakeVector(1, 2, 3);
  const double* const before = &vector[0];
  const col_vector other = MakeVector(4, 5, 6);
  vector = other;
  EXPECT_EQ(&vector[0], before);
  EXPECT_EQ(vector[0], 4);
}

TEST(ColVector, AssignmentToItselfDoesNothing) {
  col_vector vector = MakeVector(1, 2, 3);
  const col_vector& itself = vector;
  vector = itself;
  ASSERT_EQ(vector.Count(), 3u);
  EXPECT_EQ(vector[0], 1);
}

TEST(ColVector, AMovedOneIsLeftWithoutElements) {
  col_vector vector = MakeVector(1, 2, 3);
  col_vector moved(std::move(vector));
  EXPECT_EQ(vector.Count(), 0u);
  EXPECT_EQ(moved[2], 3);
  col_vector target(8);
  target = std::move(moved);
  EXPECT_EQ(moved.Count(), 0u);
  ASSERT_EQ(target.Count(), 3u);
  EXPECT_EQ(target[0], 1);
  vector = target;
  EXPECT_EQ(vector.Count(), 3u);
}

}  // namespace
