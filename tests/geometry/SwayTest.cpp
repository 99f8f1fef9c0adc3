#include "zelbase/geometry/Sway.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <vector>

namespace {

// Every single field as a number, in order; the points give three each.
std::vector<double> Singles(const Sway& s) {
  return {s.point0.x, s.point0.y, s.point0.z, s.double0,       s.double1,       s.double2,        s.point1.x,
          s.point1.y, s.point1.z, s.double3,  s.float0,        s.float1,        s.float2,         s.float3,
          s.double4,  s.double5,  s.double6,  double(s.word0), double(s.word1), double(s.count0), s.float4};
}

constexpr std::size_t kSingles = 21;

Sway Filled() {
  Sway s;
  s.incidents0 = {TwttIncident(1, 2), TwttIncident(3, 4)};
  s.projections0.resize(3);
  s.projections0[2].word6 = 66;
  s.points0 = {FloatPoint(1, 2, 3)};
  s.point0 = Point(1, 2, 3);
  s.double0 = 4;
  s.double1 = 5;
  s.double2 = 6;
  s.point1 = Point(7, 8, 9);
  s.double3 = 10;
  s.float0 = 11;
  s.float1 = 12;
  s.float2 = 13;
  s.float3 = 14;
  s.double4 = 15;
  s.double5 = 16;
  s.double6 = 17;
  s.word0 = 18;
  s.word1 = 19;
  s.floats0 = {1, 2};
  s.floats1 = {3};
  s.count0 = 20;
  s.float4 = 21;
  s.floats2 = {4, 5, 6};
  s.floats3 = {7};
  s.image.word0 = 100;
  s.image.double1 = 200;
  return s;
}

void ExpectLists(const Sway& s) {
  ASSERT_EQ(s.incidents0.size(), 2u);
  EXPECT_EQ(s.incidents0[1].incident, 4.0);
  ASSERT_EQ(s.projections0.size(), 3u);
  EXPECT_EQ(s.projections0[2].word6, 66u);
  EXPECT_EQ(s.points0, std::vector<FloatPoint>({FloatPoint(1, 2, 3)}));
  EXPECT_EQ(s.floats0, std::vector<float>({1, 2}));
  EXPECT_EQ(s.floats1, std::vector<float>({3}));
  EXPECT_EQ(s.floats2, std::vector<float>({4, 5, 6}));
  EXPECT_EQ(s.floats3, std::vector<float>({7}));
  EXPECT_EQ(s.image.word0, 100u);
  EXPECT_EQ(s.image.double1, 200.0);
}

void ExpectNoLists(const Sway& s) {
  EXPECT_TRUE(s.incidents0.empty() && s.projections0.empty() && s.points0.empty());
  EXPECT_TRUE(s.floats0.empty() && s.floats1.empty() && s.floats2.empty() && s.floats3.empty());
  EXPECT_EQ(s.image.word0, 0u);
  EXPECT_EQ(s.image.double1, 0.0);
}

std::vector<double> Counted() {
  std::vector<double> numbers;
  for (std::size_t i = 1; i <= kSingles; ++i) numbers.push_back(static_cast<double>(i));
  return numbers;
}

TEST(Sway, BeginsEmptyAndZero) {
  const Sway sway;
  EXPECT_EQ(Singles(sway), std::vector<double>(kSingles, 0.0));
  ExpectNoLists(sway);
}

TEST(Sway, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<Sway>); }

TEST(Sway, CopiesTakeEverythingAndAreIndependent) {
  Sway source = Filled();
  const Sway copied(source);
  Sway assigned;
  assigned = source;
  source.Clear();
  for (const Sway* copy : {&copied, static_cast<const Sway*>(&assigned)}) {
    EXPECT_EQ(Singles(*copy), Counted());
    ExpectLists(*copy);
  }
}

TEST(Sway, ClearMakesItAsNew) {
  Sway sway = Filled();
  sway.Clear();
  EXPECT_EQ(Singles(sway), std::vector<double>(kSingles, 0.0));
  ExpectNoLists(sway);
}

TEST(Sway, ShallowCopyTakesTheSingleFieldsAndTheCount) {
  Sway target;
  target.floats1 = {42};
  target.image.word0 = 7;
  target.ShallowCopy(Filled());
  EXPECT_EQ(Singles(target), Counted());
  EXPECT_EQ(target.count0, 20);
}

TEST(Sway, ShallowCopyLeavesTheListsAndTheImage) {
  Sway target = Filled();
  target.ShallowCopy(Sway());
  EXPECT_EQ(Singles(target), std::vector<double>(kSingles, 0.0));
  ExpectLists(target);
}

TEST(Sway, FieldsStandInTheirOrder) {
  const Sway s;
  const void* const fields[] = {&s.incidents0, &s.projections0, &s.points0, &s.point0, &s.double0, &s.double1, &s.double2,
                                &s.point1,     &s.double3,      &s.float0,  &s.float1, &s.float2,  &s.float3,  &s.double4,
                                &s.double5,    &s.double6,      &s.word0,   &s.word1,  &s.floats0, &s.floats1, &s.count0,
                                &s.float4,     &s.floats2,      &s.floats3, &s.image};
  const void* before = &s;
  for (const void* field : fields) {
    EXPECT_LT(before, field);
    before = field;
  }
}

}  // namespace
