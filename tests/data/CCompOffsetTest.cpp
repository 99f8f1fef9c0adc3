#include "zelbase/data/CCompOffset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "tests/support/CommaLocale.h"
#include "tests/support/Printed.h"

namespace {

const CDataId kId(5, 1002, 3, 1);

using Fields = std::tuple<unsigned, unsigned, unsigned, std::string, std::string, double, double, double>;

Fields FieldsOf(const CCompOffset& offset) {
  double x = 0, y = 0, z = 0;
  offset.GetOffset(x, y, z);
  return {offset.GetOffTrackSelection(),
          offset.GetOffsetType(),
          offset.GetOffsetVesselId(),
          offset.GetOffsetName(),
          offset.GetOffsetDataId().GetKey(),
          x,
          y,
          z};
}

CCompOffset Sample() {
  CCompOffset offset;
  offset.SetOffTrackSelection(7);
  offset.SetOffsetType(1);
  offset.SetOffsetVesselId(3);
  offset.SetOffsetName("antenna");
  offset.SetOffsetDataId(kId);
  offset.SetOffset(1.5, -2.5, 4.5);
  return offset;
}

TEST(CCompOffset, BeginsAsAnExplicitOffsetOfNothing) {
  const CCompOffset offset;
  EXPECT_EQ(FieldsOf(offset), Fields(0, 2, 1, "", "0,0,0,0", 0.0, 0.0, 0.0));
  EXPECT_EQ(offset.GenerateString(), "2,1,,0,0,0,0,0.000000,0.000000,0.000000");
}

TEST(CCompOffset, SettersAndGettersAgree) { EXPECT_EQ(FieldsOf(Sample()), Fields(7, 1, 3, "antenna", "5,1,1002,3", 1.5, -2.5, 4.5)); }

TEST(CCompOffset, CopiesTakeEverything) {
  CCompOffset assigned;
  assigned = Sample();
  const CCompOffset copy(assigned);
  EXPECT_EQ(FieldsOf(copy), FieldsOf(Sample()));
  static_assert(std::has_virtual_destructor_v<CCompOffset>);
}

TEST(CCompOffset, TheTextHasTenItemsAndNoOffTrackSelection) {
  EXPECT_EQ(Sample().GenerateString(), "1,3,antenna,5,1,1002,3,1.500000,-2.500000,4.500000");
  CCompOffset other = Sample();
  other.SetOffTrackSelection(0);
  EXPECT_EQ(other.GenerateString(), Sample().GenerateString());
}

TEST(CCompOffset, TheTextHasTheIdentifiersNumbersAndNotItsKey) {
  CCompOffset offset = Sample();
  CDataId stale = kId;
  stale.SetUndefined();
  offset.SetOffsetDataId(stale);
  EXPECT_EQ(offset.GetOffsetDataId().GetKey(), "5,1,1002,3");
  EXPECT_EQ(offset.GenerateString(), "1,3,antenna,0,1,1002,3,1.500000,-2.500000,4.500000");
}

TEST(CCompOffset, NumbersOfAnyLengthAreWritten) {
  CCompOffset offset;
  offset.SetOffset(1e308, -1e308, std::numeric_limits<double>::denorm_min());
  const std::string text = offset.GenerateString();
  const std::string expected = Printed("%f", 1e308);
  EXPECT_EQ(expected.size(), 316u);
  EXPECT_EQ(text, "2,1,,0,0,0,0," + expected + ",-" + expected + ",0.000000");
  CCompOffset back;
  EXPECT_TRUE(back.SetFromString(text));
  EXPECT_EQ(FieldsOf(back), Fields(0, 2, 1, "", "0,0,0,0", 1e308, -1e308, 0.0));
}

TEST(CCompOffset, WhatIsNotFiniteIsWrittenByNameAndNotReadBack) {
  CCompOffset offset;
  offset.SetOffset(std::nan(""), HUGE_VAL, -HUGE_VAL);
  const std::string text = offset.GenerateString();
  EXPECT_EQ(text, "2,1,,0,0,0,0,nan,inf,-inf");
  CCompOffset back = Sample();
  EXPECT_FALSE(back.SetFromString(text));
  EXPECT_EQ(FieldsOf(back), Fields(7, 2, 1, "", "0,0,0,0", 1.5, -2.5, 4.5));
}

TEST(CCompOffset, TextsDoNotDependOnTheLocale) {
  const CommaLocale locale;
  CCompOffset offset = Sample();
  offset.SetOffset(1234.5, -0.25, 1e6);
  EXPECT_EQ(offset.GenerateString(), "1,3,antenna,5,1,1002,3,1234.500000,-0.250000,1000000.000000");
  CCompOffset back;
  EXPECT_TRUE(back.SetFromString(offset.GenerateString()));
  back.SetOffTrackSelection(7);
  EXPECT_EQ(FieldsOf(back), FieldsOf(offset));
}

struct TextRow {
  const char* description;
  const char* text;
  bool read;
  Fields fields;
};

// Each text is read into an offset (7; 1, 3, "antenna", 5,1,1002,3, 1.5, -2.5, 4.5).
TEST(CCompOffset, TextsByHand) {
  const std::vector<TextRow> rows = {
      {"the defaults", "2,1,,0,0,0,0,0.000000,0.000000,0.000000", true, {7, 2, 1, "", "0,0,0,0", 0, 0, 0}},
      {"the name as it stands", "1,2, a b ,4,5,6,7,8,9,10", true, {7, 1, 2, " a b ", "4,5,6,7", 8, 9, 10}},
      {"blanks before numbers", " 1, 2,n, 4, 5, 6, 7, 8, 9,\t10", true, {7, 1, 2, "n", "4,5,6,7", 8, 9, 10}},
      {"what follows a number", "1x,2 y,n,4 ,5.5,6z,7,8m,9e,10 ", true, {7, 1, 2, "n", "4,5,6,7", 8, 9, 10}},
      {"further items", "1,2,n,4,5,6,7,8,9,10,11,12", true, {7, 1, 2, "n", "4,5,6,7", 8, 9, 10}},
      {"numbers wrap around", "-1,4294967298,n,65536,-1,65537,7,8,9,10", true, {7, 4294967295u, 2, "n", "0,65535,1,7", 8, 9, 10}},
      {"exponents", "1,2,n,4,5,6,7,1e3,-1E-2,.5", true, {7, 1, 2, "n", "4,5,6,7", 1000, -0.01, 0.5}},
      {"a name with a comma shifts the rest", "1,3,A,B,5,1,1002,3,1.5,-2.5,4.5", false, {7, 1, 3, "A", "0,5,1,1002", 3, 1.5, -2.5}},
      {"a type that does not read stays", "x,2,n,4,5,6,7,8,9,10", false, {7, 1, 2, "n", "4,5,6,7", 8, 9, 10}},
      {"a vessel that does not read stays", "2,,n,4,5,6,7,8,9,10", false, {7, 2, 3, "n", "4,5,6,7", 8, 9, 10}},
      {"an identifier's number that does not read is 0", "2,2,n,4,x,,7,8,9,10", false, {7, 2, 2, "n", "4,0,0,7", 8, 9, 10}},
      {"an x that does not read stays", "2,2,n,4,5,6,7,,9,10", false, {7, 2, 2, "n", "4,5,6,7", 1.5, 9, 10}},
      {"a y that does not read stays", "2,2,n,4,5,6,7,8,-,10", false, {7, 2, 2, "n", "4,5,6,7", 8, -2.5, 10}},
      {"a z that is missing stays", "2,2,n,4,5,6,7,8,9", false, {7, 2, 2, "n", "4,5,6,7", 8, 9, 4.5}},
      {"the identifier is set when it is missing", "2,2,n", false, {7, 2, 2, "n", "0,0,0,0", 1.5, -2.5, 4.5}},
      {"an empty text", "", false, {7, 1, 3, "antenna", "0,0,0,0", 1.5, -2.5, 4.5}},
      {"commas alone", ",,,,,,,,,", false, {7, 1, 3, "", "0,0,0,0", 1.5, -2.5, 4.5}},
      {"no commas", "2;2;n;4;5;6;7;8;9;10", false, {7, 2, 3, "antenna", "0,0,0,0", 1.5, -2.5, 4.5}},
  };
  for (const TextRow& row : rows) {
    CCompOffset offset = Sample();
    EXPECT_EQ(offset.SetFromString(row.text), row.read) << row.description;
    EXPECT_EQ(FieldsOf(offset), row.fields) << row.description;
  }
}

TEST(CCompOffset, ItsOwnNameMayBeTheText) {
  CCompOffset offset;
  offset.SetOffsetName("1,2,n,4,5,6,7,8,9,10");
  EXPECT_TRUE(offset.SetFromString(offset.GetOffsetName()));
  EXPECT_EQ(FieldsOf(offset), Fields(0, 1, 2, "n", "4,5,6,7", 8, 9, 10));
}

TEST(CCompOffset, AnyNameWithoutACommaGoesThereAndBack) {
  std::mt19937 random(20261111);
  for (int round = 0; round < 2000; ++round) {
    CCompOffset offset;
    std::string name;
    for (std::size_t left = random() % 10; left > 0; --left) {
      const char c = static_cast<char>(random() % 256);
      if (c != ',') name += c;
    }
    const auto number = [&] { return static_cast<unsigned short>(random()); };
    offset.SetOffsetName(name);
    offset.SetOffsetType(static_cast<unsigned int>(random()));
    offset.SetOffsetVesselId(static_cast<unsigned int>(random()));
    offset.SetOffsetDataId(CDataId(number(), number(), number(), number()));
    const auto millionths = [&] { return std::round(static_cast<double>(random()) - 2e9) / 1048576.0; };
    offset.SetOffset(millionths(), millionths(), millionths());
    CCompOffset back;
    ASSERT_TRUE(back.SetFromString(offset.GenerateString()));
    ASSERT_EQ(back.GenerateString(), offset.GenerateString());
    ASSERT_EQ(back.GetOffsetName(), name);
    ASSERT_EQ(back.GetOffsetType(), offset.GetOffsetType());
    ASSERT_EQ(back.GetOffsetVesselId(), offset.GetOffsetVesselId());
    ASSERT_EQ(back.GetOffsetDataId(), offset.GetOffsetDataId());
  }
}

// One field changed against the sample, and whether that is seen, by off-track selection and type.
struct EqualRow {
  unsigned int selection;
  unsigned int type;
  bool seesVessel;
  bool seesName;
  bool seesId;
  bool seesPosition;
  bool equalToItself;
};

TEST(CCompOffset, EqualityLooksAtTheFieldsThatCount) {
  const std::vector<EqualRow> rows = {{0, 1, true, true, false, false, true},          {0, 2, false, false, false, true, true},
                                      {0, 3, false, false, true, false, true},         {1, 1, false, false, true, false, true},
                                      {1, 2, false, false, true, false, true},         {1, 7, false, false, true, false, true},
                                      {0xFFFFFFFF, 3, false, false, true, false, true}};
  for (const EqualRow& row : rows) {
    CCompOffset offset = Sample();
    offset.SetOffTrackSelection(row.selection);
    offset.SetOffsetType(row.type);
    EXPECT_EQ(offset == CCompOffset(offset), row.equalToItself);
    CCompOffset vessel = offset, name = offset, id = offset, position = offset;
    vessel.SetOffsetVesselId(99);
    name.SetOffsetName("Antenna");
    id.SetOffsetDataId(CDataId(5, 1002, 3, 2));
    position.SetOffset(1.5, -2.5, std::nextafter(4.5, 5.0));
    EXPECT_EQ(offset == vessel, !row.seesVessel) << row.selection << ", " << row.type;
    EXPECT_EQ(offset == name, !row.seesName) << row.selection << ", " << row.type;
    EXPECT_EQ(offset == id, !row.seesId) << row.selection << ", " << row.type;
    EXPECT_EQ(offset == position, !row.seesPosition) << row.selection << ", " << row.type;
    EXPECT_EQ(offset != vessel, row.seesVessel);
  }
}

TEST(CCompOffset, EachCoordinateCounts) {
  CCompOffset offset;
  for (const auto& [x, y, z] : {std::tuple(1.0, 0.0, 0.0), std::tuple(0.0, 1.0, 0.0), std::tuple(0.0, 0.0, 1.0)}) {
    CCompOffset other;
    other.SetOffset(x, y, z);
    EXPECT_FALSE(offset == other);
  }
  CCompOffset negative;
  negative.SetOffset(-0.0, -0.0, -0.0);
  EXPECT_TRUE(offset == negative);
  CCompOffset unknown;
  unknown.SetOffset(std::nan(""), 0, 0);
  EXPECT_FALSE(unknown == CCompOffset(unknown));
}

TEST(CCompOffset, AnUnknownTypeIsUnequalToItsOwnCopyAndToItself) {
  for (const unsigned int type : {0u, 4u, 7u, 0xFFFFFFFFu}) {
    CCompOffset offset;
    offset.SetOffsetType(type);
    const CCompOffset& itself = offset;
    EXPECT_FALSE(offset == CCompOffset(offset)) << type;
    EXPECT_FALSE(offset == itself) << type;
  }
}

TEST(CCompOffset, SelectionsOneAndTwoAreUnequal) {
  CCompOffset one = Sample();
  CCompOffset two = Sample();
  one.SetOffTrackSelection(1);
  two.SetOffTrackSelection(2);
  EXPECT_FALSE(one == two);
  two.SetOffTrackSelection(1);
  two.SetOffsetType(9);
  EXPECT_TRUE(one == two);  // the types do not count then
}

TEST(CCompOffset, DifferentTypesAreUnequal) {
  CCompOffset named;
  named.SetOffsetType(1);
  CCompOffset fromData;
  fromData.SetOffsetType(3);
  EXPECT_FALSE(named == CCompOffset());
  EXPECT_FALSE(named == fromData);
  EXPECT_FALSE(fromData == CCompOffset());
}

}  // namespace
