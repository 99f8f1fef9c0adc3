#include "zelbase/geometry/VesselContour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "tests/config/SettingsTestHelp.h"
#include "tests/geometry/EdgeValues.h"
#include "tests/support/Printed.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

using namespace std::string_literals;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A point in words: x, y, z, moveTo, mark.
using Row = std::tuple<double, double, double, bool, bool>;

Row RowOf(const VesselPoint& point) { return {point.x, point.y, point.z, point.moveTo, point.mark}; }

std::vector<Row> RowsOf(const VesselContour& contour) {
  std::vector<Row> rows;
  VesselPoint point;
  for (int i = 1; contour.GetPoint(i, point); ++i) rows.push_back(RowOf(point));
  EXPECT_EQ(static_cast<int>(rows.size()), contour.GetSize());
  return rows;
}

using Rows = std::vector<Row>;

const Rows kDefaultRows = {{-5, -7, 0, true, false}, {-5, 7, 0, false, false}, {0, 10, 0, false, false},
                           {5, 7, 0, false, false},  {5, -7, 0, false, false}, {-5, -7, 0, false, false}};

VesselPoint At(double x, double y, bool moveTo = false, bool mark = false) { return VesselPoint(Point(x, y, 0), moveTo, mark); }

// Width and colour of the pen.
std::pair<long, long> PenOf(const VesselContour& contour) {
  std::pair<long, long> pen{-77, -77};
  EXPECT_TRUE(contour.GetPenWidth(pen.first));
  EXPECT_TRUE(contour.GetPenColor(pen.second));
  return pen;
}

using Pen = std::pair<long, long>;

class VesselContours : public testing::Test {
 protected:
  void SetUp() override { GlobalErrorList::Get().Clear(); }
  void TearDown() override { GlobalErrorList::Get().Clear(); }

  // The store's picture of a file.
  Picture PictureOfFile(const std::string& name) const {
    FileObject settings;
    ReadFrom(settings, folder.Read(name));
    return PictureOf(settings);
  }

  // What comes of one text as the value of Point(1).
  Row RowOfValue(const std::string& value) {
    VesselContour contour;
    EXPECT_TRUE(contour.Create(folder.Write("one.con", "[POINTS]\nPoint(1) =" + value + "\n"), 0)) << value;
    const Rows rows = RowsOf(contour);
    EXPECT_EQ(rows.size(), 1u) << value;
    return rows.empty() ? Row(-99, -99, -99, true, true) : rows[0];
  }

  TemporaryFolder folder;
  const std::string missing = folder.File("missing.con");
};
using VesselContoursLong = VesselContours;

// --- Create ----------------------------------------------------------------------------------------------------------

TEST_F(VesselContours, ANewOneIsEmptyWithAPenOfWidth1) {
  VesselContour contour;
  EXPECT_EQ(contour.GetSize(), 0);
  EXPECT_EQ(contour.GetViewSide(), 0);
  EXPECT_EQ(PenOf(contour), (Pen{1, 0}));
}

TEST_F(VesselContours, AFileWithAPenAndWithoutTheSideGivesAnEmptyListAndTrue) {
  VesselContour contour;
  const std::string text = "[DRAW]\nPenWidth=3\nPenColor=16711680\n[LEFT POINTS]\nPoint(1)=1,1,1\n";
  EXPECT_TRUE(contour.Create(folder.Write("a.con", text), 0));
  EXPECT_EQ(contour.GetSize(), 0);
  EXPECT_EQ(PenOf(contour), (Pen{3, 16711680}));
}

TEST_F(VesselContours, AMissingFileGivesTheSixDefaultPointsPenWidth0AndFalse) {
  VesselContour contour;
  EXPECT_FALSE(contour.Create(missing, 4));
  EXPECT_EQ(RowsOf(contour), kDefaultRows);
  EXPECT_EQ(PenOf(contour), (Pen{0, 0}));
  EXPECT_EQ(contour.GetViewSide(), 4);
}

TEST_F(VesselContours, AFileWithoutDrawHasAPenOfWidth1) {
  VesselContour contour;
  contour.Create(missing, 0);
  EXPECT_TRUE(contour.Create(folder.Write("a.con", "[POINTS]\n"), 0));
  EXPECT_EQ(PenOf(contour), (Pen{1, 0}));
  EXPECT_EQ(contour.GetSize(), 0);
}

TEST_F(VesselContours, ASecondFailingCreateGivesTwelvePoints) {
  VesselContour contour;
  contour.AddPoint(At(1, 2, false, true));
  EXPECT_FALSE(contour.Create(missing, 0));
  EXPECT_FALSE(contour.Create(missing, 0));
  Rows expected{{1, 2, 0, false, true}};
  expected.insert(expected.end(), kDefaultRows.begin(), kDefaultRows.end());
  expected.insert(expected.end(), kDefaultRows.begin(), kDefaultRows.end());
  EXPECT_EQ(RowsOf(contour), expected);
}

TEST_F(VesselContours, AnItemOfThePenThatIsMissingOrNoNumberKeepsItsField) {
  VesselContour contour;
  EXPECT_TRUE(contour.Create(folder.Write("a.con", "[DRAW]\nPenWidth=3\nPenColor=255\n"), 0));
  EXPECT_TRUE(contour.Create(folder.Write("b.con", "[DRAW]\nPenWidth=4\n"), 0));
  EXPECT_EQ(PenOf(contour), (Pen{4, 255}));
  EXPECT_TRUE(contour.Create(folder.Write("c.con", "[DRAW]\nPenWidth=thick\nPenColor=7\n"), 0));
  EXPECT_EQ(PenOf(contour), (Pen{4, 7}));
  EXPECT_TRUE(contour.Create(folder.Write("d.con", "[DRAW]\nPenWidth=\nPenColor=\n"), 0));
  EXPECT_EQ(PenOf(contour), (Pen{4, 7}));
}

TEST_F(VesselContours, ThePenIsReadAsSignedIntegers) {
  VesselContour contour;
  EXPECT_TRUE(contour.Create(folder.Write("a.con", "[DRAW]\nPenWidth=-2\nPenColor=0xFF00\n"), 0));
  EXPECT_EQ(PenOf(contour), (Pen{-2, 65280}));
  // Not as three colour numbers: the front of the text is a number.
  EXPECT_TRUE(contour.Create(folder.Write("b.con", "[DRAW]\nPenWidth=2\nPenColor=255, 1, 1\n"), 0));
  EXPECT_EQ(PenOf(contour), (Pen{2, 255}));
}

TEST_F(VesselContours, EachSideHasItsSectionAndAllOtherNumbersThatFromAbove) {
  const std::string file = folder.Write("a.con",
                                        "[POINTS]\nPoint(1)=10,0,0\n[BOTTOM POINTS]\nPoint(1)=11,0,0\n"
                                        "[LEFT POINTS]\nPoint(1)=12,0,0\n[RIGHT POINTS]\nPoint(1)=13,0,0\n"
                                        "[FRONT POINTS]\nPoint(1)=14,0,0\n[BACK POINTS]\nPoint(1)=15,0,0\n");
  const std::pair<int, double> sides[] = {{0, 10}, {1, 11},  {2, 12}, {3, 13},       {4, 14},      {5, 15},
                                          {6, 10}, {-1, 10}, {7, 10}, {INT_MAX, 10}, {INT_MIN, 10}};
  VesselContour changing;
  ASSERT_TRUE(changing.Create(file, 0));
  for (const auto& [side, x] : sides) {
    VesselContour contour;
    EXPECT_TRUE(contour.Create(file, side));
    EXPECT_EQ(contour.GetViewSide(), side);
    EXPECT_EQ(RowsOf(contour), (Rows{{x, 0, 0, false, false}})) << side;
    EXPECT_TRUE(changing.SetViewSide(side));
    EXPECT_EQ(changing.GetViewSide(), side);
    EXPECT_EQ(RowsOf(changing), (Rows{{x, 0, 0, false, false}})) << side;
  }
}

TEST_F(VesselContours, AMissingNumberEndsTheList) {
  VesselContour contour;
  EXPECT_TRUE(contour.Create(folder.Write("a.con", "[POINTS]\nPoint(4)=4,4,0\nPoint(2)=2,2,0\nPoint(1)=1,1,0\n"), 0));
  EXPECT_EQ(RowsOf(contour), (Rows{{1, 1, 0, false, false}, {2, 2, 0, false, false}}));
}

TEST_F(VesselContours, KeysAreWrittenExactlyAndCountFrom1) {
  VesselContour contour;
  for (const char* const key : {"Point(0)", "point(1)", "Point( 1)", "Point(01)", "Point 1", "Point(1", "POINT(1)"}) {
    EXPECT_TRUE(contour.Create(folder.Write("a.con", std::string("[POINTS]\n") + key + "=1,1,1\n"), 0));
    EXPECT_EQ(contour.GetSize(), 0) << key;
  }
}

TEST_F(VesselContours, TheWrittenFormReadsBack) { EXPECT_EQ(RowOfValue(" 1.500000, -2.000000, 3"), Row(1.5, -2, 0, true, true)); }

TEST_F(VesselContours, ACodeSetsItsFlagsByEqualityNotByBits) {
  const std::tuple<const char*, bool, bool> codes[] = {{"0", false, false},  {"1", true, false},  {"2", false, true},  {"3", true, true},
                                                       {"4", false, false},  {"5", false, false}, {"7", false, false}, {"-1", false, false},
                                                       {"-3", false, false}, {"+3", true, true},  {"03", true, true},  {"3.9", true, true},
                                                       {"3x", true, true},   {"x", false, false}, {"", false, false}};
  for (const auto& [code, moveTo, mark] : codes) {
    EXPECT_EQ(RowOfValue(std::string("1,2,") + code), Row(1, 2, 0, moveTo, mark)) << code;
  }
}

TEST_F(VesselContours, ACodeBeyond32BitsSaturatesAndSetsNothing) {
  // Modulo 2^32, or 2^64, each of them would be 1, 2 or 3.
  for (const char* const code :
       {"4294967297", "4294967298", "4294967299", "-4294967295", "18446744073709551617", "18446744073709551619", "-18446744073709551613",
        "2147483648", "-2147483649", "99999999999999999999999999999999999999999999999999"}) {
    EXPECT_EQ(RowOfValue(std::string("1,2,") + code), Row(1, 2, 0, false, false)) << code;
  }
}

TEST_F(VesselContours, WhatWasScannedBeforeATextWentWrongCounts) {
  const std::tuple<const char*, double, double> rows[] = {
      {"", 0, 0},         {"junk", 0, 0},     {"1.5", 1.5, 0},    {"1.5,", 1.5, 0},           {"1.5,junk,3", 1.5, 0},   {"1.5,2", 1.5, 2},
      {"1.5,2,", 1.5, 2}, {",2,3", 0, 0},     {"1.5,,3", 1.5, 0}, {"1.5;2;3", 1.5, 0},        {"1.5 2 3", 1.5, 0},      {"nan,1,3", 0, 0},
      {"1,inf,3", 1, 0},  {"0x10,1,3", 0, 0}, {"(1,2,3)", 0, 0},  {"1e3,-2e-1,", 1000, -0.2}, {".5,-.25,", 0.5, -0.25}, {"1.,2.,", 1, 2},
      {"\"1\",2,3", 0, 0}};
  for (const auto& [value, x, y] : rows) EXPECT_EQ(RowOfValue(value), Row(x, y, 0, false, false)) << value;
}

TEST_F(VesselContours, NoBlankMayStandBeforeACommaAndAnyMayStandBehind) {
  EXPECT_EQ(RowOfValue("1.5 , 2, 1"), Row(1.5, 0, 0, false, false));
  EXPECT_EQ(RowOfValue("1.5, 2 , 1"), Row(1.5, 2, 0, false, false));
  EXPECT_EQ(RowOfValue("1.5, \t  2,\t\t1  "), Row(1.5, 2, 0, true, false));
}

TEST_F(VesselContours, BrokenRowsStandBesideGoodOnes) {
  VesselContour contour;
  EXPECT_TRUE(contour.Create(folder.Write("a.con",
                                          "[POINTS]\nPoint(1)=1,1,1\nPoint(2)=\nPoint(3)=x\nPoint(4)=4 , 4, 1\n"
                                          "Point(5)=5,5,2 // the rest of the line goes\nPoint(6)\nPoint(7)=7,7,1\n"),
                             0));
  EXPECT_EQ(
      RowsOf(contour),
      (Rows{{1, 1, 0, true, false}, {0, 0, 0, false, false}, {0, 0, 0, false, false}, {4, 0, 0, false, false}, {5, 5, 0, false, true}}));
}

// "%lf,%lf,%d" once more, by the C library's numbers from text, which take the longest front and saturate.
Row SecondScan(const std::string& text) {
  const char* at = text.c_str();
  double xy[2] = {0, 0};
  for (double& number : xy) {
    char* end = nullptr;
    const double value = ReadDouble(at, &end);
    if (end == at) return {xy[0], xy[1], 0, false, false};
    number = value;
    if (*end != ',') return {xy[0], xy[1], 0, false, false};
    at = end + 1;
  }
  const long code = std::strtol(at, nullptr, 10);
  return {xy[0], xy[1], 0, code == 1 || code == 3, code == 2 || code == 3};
}

TEST_F(VesselContoursLong, ReadingAgreesWithASecondReader) {
  std::mt19937 random(20260714);
  const char alphabet[] = "0123456789.,,, -+e\t";
  int flagged = 0;
  int partial = 0;
  std::string text;
  VesselContour contour;
  for (int round = 0; round < 20; ++round) {
    text = "[POINTS]\n";
    std::vector<Row> expected;
    for (int i = 1; i <= 5000; ++i) {
      std::string value;
      if (random() % 2 == 0) {
        value = std::to_string(static_cast<int>(random() % 4000) - 2000) + "." + std::to_string(random() % 100) + "," +
                std::string(random() % 3, ' ') + std::to_string(random() % 90) + "e" + std::to_string(random() % 9) + "," +
                std::to_string(random() % 6);
      }
      for (unsigned int n = random() % 4; n != 0; --n) {
        const char c = alphabet[random() % (sizeof alphabet - 1)];
        value.insert(random() % (value.size() + 1), 1, c);
      }
      text += "Point(" + std::to_string(i) + ")=" + value + "\n";
      expected.push_back(SecondScan(value));
      flagged += std::get<3>(expected.back()) || std::get<4>(expected.back());
      partial += std::get<0>(expected.back()) != 0 && std::get<1>(expected.back()) == 0;
    }
    ASSERT_TRUE(contour.Create(folder.Write("a.con", text), 0));
    ASSERT_EQ(RowsOf(contour), expected) << "round " << round;
  }
  EXPECT_GT(flagged, 10000);
  EXPECT_GT(partial, 10000);
}

TEST_F(VesselContours, AFailedOpeningEntersTheErrorListAndAnEmptyNameDoesNot) {
  VesselContour contour;
  EXPECT_FALSE(contour.Create("", 0));
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  EXPECT_EQ(contour.GetSize(), 6);
  EXPECT_FALSE(contour.Create(missing, 0));
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
}

TEST_F(VesselContours, AFolderOrAFifoFailsLikeAMissingFile) {
  for (const std::string& name : {folder.Path(), folder.MakeFolder("sub"), folder.MakeFifo("fifo")}) {
    VesselContour contour;
    EXPECT_FALSE(contour.Create(name, 0)) << name;
    EXPECT_EQ(RowsOf(contour), kDefaultRows);
  }
}

TEST_F(VesselContours, AFileOfAnyBytesOpens) {
  VesselContour contour;
  EXPECT_TRUE(contour.Create(folder.Write("a.con", "\0\xFF\xFE junk\r\r\n=\n[[]]"s), 0));
  EXPECT_EQ(contour.GetSize(), 0);
  EXPECT_TRUE(contour.Create(folder.Write("b.con", ""), 0));
  EXPECT_EQ(PenOf(contour), (Pen{1, 0}));
}

TEST_F(VesselContours, AReadThatFailsMidwayIsAFileFailureAndLeavesNoHalfOfTheFile) {
  std::string text = "[POINTS]\n";
  for (int i = 1; i < 3000; ++i) text += "Point(" + std::to_string(i) + ")=1,2,1\n";
  const std::string big = folder.Write("big.con", text);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.FailAt(FileOperation::Read, 3);
  VesselContour contour;
  EXPECT_FALSE(contour.Create(big, 0));
  EXPECT_EQ(files.FaultsGiven(), 1u);
  EXPECT_EQ(RowsOf(contour), kDefaultRows);
  EXPECT_EQ(files.OpenFiles(), 0);
  contour.SetViewSide(1);
  EXPECT_TRUE(contour.Save(folder.File("after.con")));
  EXPECT_EQ(PictureOfFile("after.con")["POINTS"].size(), 6u);
}

TEST_F(VesselContours, AFileThatSomebodyWritesDoesNotOpen) {
  const std::string name = folder.Write("a.con", "[POINTS]\nPoint(1)=1,1,1\n");
  CFile writer;
  ASSERT_TRUE(writer.Open(name, CFile::modeReadWrite | CFile::shareDenyNone));
  VesselContour contour;
  EXPECT_FALSE(contour.Create(name, 0));
  writer.Close();
  EXPECT_TRUE(contour.Create(name, 0));
  EXPECT_EQ(RowsOf(contour), (Rows{{1, 1, 0, true, false}}));
}

// --- Save ------------------------------------------------------------------------------------------------------------

TEST_F(VesselContours, SavedItIsThePenAndThePointsOfTheSide) {
  VesselContour contour;
  contour.Create(missing, 3);
  contour.DeleteAllPoints();
  contour.AddPoint(At(1.5, -2, true, true));
  contour.AddPoint(At(0.0078125, 1e6, false, true));
  contour.AddPoint(VesselPoint(Point(-0.0, 3, 99), true, false));
  EXPECT_TRUE(contour.Save(folder.File("a.con")));
  EXPECT_EQ(PictureOfFile("a.con"), (Picture{{"DRAW", {{"PenWidth", "0"}, {"PenColor", "0"}}},
                                             {"RIGHT POINTS",
                                              {{"Point(1)", "1.500000, -2.000000, 3"},
                                               // An exact half rounds to even.
                                               {"Point(2)", "0.007812, 1000000.000000, 2"},
                                               {"Point(3)", "-0.000000, 3.000000, 1"}}}}));
}

TEST_F(VesselContours, AnEmptyNameIsFalseEvenWhenAFileWasOpened) {
  const std::string text = "[POINTS]\nPoint(1)=1,1,1\n";
  const std::string name = folder.Write("a.con", text);
  VesselContour contour;
  ASSERT_TRUE(contour.Create(name, 0));
  contour.AddPoint(At(2, 2));
  EXPECT_FALSE(contour.Save(""));
  EXPECT_EQ(folder.Read("a.con"), text);
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
}

TEST_F(VesselContours, WhatTheClassDoesNotKnowSurvivesASave) {
  const std::string name = folder.Write("a.con",
                                        "; drawn by hand\nfirst line\n[DRAW]\nPenWidth=3\nStyle=dashed\n"
                                        "[POINTS]\nPoint(1)=1,1,1\nPoint(5)=5,5,5\nNote=x\n[Other]\nk=v\n[BACK POINTS]\nPoint(1)=a\n");
  VesselContour contour;
  ASSERT_TRUE(contour.Create(name, 0));
  EXPECT_TRUE(contour.Save(name));
  EXPECT_EQ(folder.Read("a.con").substr(0, 29), "; drawn by hand\r\nfirst line\r\n");
  // The two sections that are written are written anew, and lose what else they held.
  EXPECT_EQ(PictureOfFile("a.con"), (Picture{{"DRAW", {{"PenWidth", "3"}, {"PenColor", "0"}}},
                                             {"POINTS", {{"Point(1)", "1.000000, 1.000000, 1"}}},
                                             {"Other", {{"k", "v"}}},
                                             {"BACK POINTS", {{"Point(1)", "a"}}}}));
}

TEST_F(VesselContours, AColourWithItsTopBitSetKeepsItsSign) {
  VesselContour contour;
  ASSERT_TRUE(contour.LoadFromString(std::string("\xFF\xFF\xFF\xFF\x02\x00\x00\x80", 8) + '\0'));
  EXPECT_TRUE(contour.Save(folder.File("a.con")));
  EXPECT_EQ(PictureOfFile("a.con"), (Picture{{"DRAW", {{"PenWidth", "-2147483646"}, {"PenColor", "-1"}}}}));
  VesselContour again;
  EXPECT_TRUE(again.Create(folder.File("a.con"), 0));
  EXPECT_EQ(PenOf(again), (Pen{-2147483646, -1}));
}

TEST_F(VesselContours, ALargeCoordinateIsWrittenWithAllItsDigits) {
  const double largest = std::numeric_limits<double>::max();
  VesselContour contour;
  contour.AddPoint(At(1e308, -largest, true));
  EXPECT_TRUE(contour.Save(folder.File("a.con")));
  const std::string expected = Printed("%f, %f, 1", 1e308, -largest);
  EXPECT_EQ(expected.size(), 309u + 7 + 2 + 1 + 309 + 7 + 3);
  EXPECT_EQ(PictureOfFile("a.con")["POINTS"]["Point(1)"], expected);
  VesselContour again;
  EXPECT_TRUE(again.Create(folder.File("a.con"), 0));
  EXPECT_EQ(RowsOf(again), (Rows{{1e308, -largest, 0, true, false}}));
}

TEST_F(VesselContours, WhatIsNotFiniteDoesNotReadBackNorDoesWhatStandsBehindIt) {
  VesselContour contour;
  contour.AddPoint(At(kInfinity, 1, true));
  contour.AddPoint(At(1, kNaN, true));
  contour.AddPoint(At(2, -kInfinity, true));
  EXPECT_TRUE(contour.Save(folder.File("a.con")));
  EXPECT_TRUE(contour.Create(folder.File("a.con"), 0));
  EXPECT_EQ(RowsOf(contour), (Rows{{0, 0, 0, false, false}, {1, 0, 0, false, false}, {2, 0, 0, false, false}}));
}

TEST_F(VesselContours, ADecimalCommaOfTheProcessChangesNothing) {
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::string former = std::setlocale(LC_ALL, nullptr);
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
  for (const char* const name : {"de_DE.UTF-8", "de_DE.utf8", "nl_NL.UTF-8", "fr_FR.UTF-8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  }
  VesselContour contour;
  contour.AddPoint(At(12345.5, -0.25, true));
  const bool saved = contour.Save(folder.File("a.con"));
  const bool read = contour.Create(folder.File("a.con"), 0);
  std::locale::global(before);
  std::setlocale(LC_ALL, former.c_str());
  EXPECT_TRUE(saved && read);
  EXPECT_EQ(PictureOfFile("a.con")["POINTS"]["Point(1)"], "12345.500000, -0.250000, 1");
  EXPECT_EQ(RowsOf(contour), (Rows{{12345.5, -0.25, 0, true, false}}));
}

TEST_F(VesselContours, ASaveThatFailsIsFalseAndLeavesThePoints) {
  VesselContour contour;
  contour.AddPoint(At(1, 1, true));
  EXPECT_FALSE(contour.Save(folder.File("none/a.con")));
  EXPECT_FALSE(contour.Save(folder.Path()));
  EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 2);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  unsigned long long n = 1;
  for (;; ++n) {
    files.Reset();
    files.FailAt(n);
    const bool saved = contour.Save(folder.File("a.con"));
    EXPECT_EQ(files.OpenFiles(), 0);
    EXPECT_EQ(RowsOf(contour), (Rows{{1, 1, 0, true, false}}));
    if (files.FaultsGiven() == 0) {
      EXPECT_TRUE(saved);
      break;
    }
    EXPECT_FALSE(saved) << n;
    ASSERT_LT(n, 100u);
  }
  EXPECT_GT(n, 2u);
  EXPECT_EQ(PictureOfFile("a.con")["POINTS"]["Point(1)"], "1.000000, 1.000000, 1");
}

// --- Sides -----------------------------------------------------------------------------------------------------------

TEST_F(VesselContours, ThePresentSideDoesNothingNotEvenAReload) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(folder.Write("a.con", "[POINTS]\nPoint(1)=1,1,1\n"), 0));
  contour.SetPoint(1, VesselPoint(Point(1.0 / 3, 2, 5), false, true));
  EXPECT_TRUE(contour.SetViewSide(0));
  EXPECT_EQ(RowsOf(contour), (Rows{{1.0 / 3, 2, 5, false, true}}));
}

TEST_F(VesselContours, AnotherNumberOfTheSameSectionRoundsThePoints) {
  VesselContour contour;
  contour.AddPoint(VesselPoint(Point(1.0 / 3, 2e-7, 5), false, true));
  EXPECT_TRUE(contour.SetViewSide(7));
  EXPECT_EQ(RowsOf(contour), (Rows{{0.333333, 0, 0, false, true}}));
  EXPECT_EQ(contour.GetViewSide(), 7);
}

TEST_F(VesselContours, EditsOfASideSurviveAChangeOfSideAndReachTheDiscBySave) {
  const std::string text = "[POINTS]\nPoint(1)=1,1,1\n[LEFT POINTS]\nPoint(1)=2,2,2\n";
  const std::string name = folder.Write("a.con", text);
  VesselContour contour;
  ASSERT_TRUE(contour.Create(name, 0));
  contour.AddPoint(At(8, 9));
  EXPECT_TRUE(contour.SetViewSide(2));
  contour.SetPoint(1, At(3, 3, true, true));
  EXPECT_TRUE(contour.SetViewSide(0));
  EXPECT_EQ(RowsOf(contour), (Rows{{1, 1, 0, true, false}, {8, 9, 0, false, false}}));
  EXPECT_EQ(folder.Read("a.con"), text);
  EXPECT_TRUE(contour.Save(name));
  Picture picture = PictureOfFile("a.con");
  EXPECT_EQ(picture["POINTS"], (Items{{"Point(1)", "1.000000, 1.000000, 1"}, {"Point(2)", "8.000000, 9.000000, 0"}}));
  EXPECT_EQ(picture["LEFT POINTS"], (Items{{"Point(1)", "3.000000, 3.000000, 3"}}));
}

TEST_F(VesselContours, ASideWithoutPointsLosesItsSection) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(folder.Write("a.con", "[POINTS]\nPoint(1)=1,1,1\n[LEFT POINTS]\nPoint(1)=2,2,2\n"), 0));
  contour.DeleteAllPoints();
  EXPECT_TRUE(contour.SetViewSide(2));
  contour.DeletePoint(1);
  EXPECT_TRUE(contour.Save(folder.File("b.con")));
  EXPECT_EQ(PictureOfFile("b.con"), (Picture{{"DRAW", {{"PenWidth", "1"}, {"PenColor", "0"}}}}));
}

TEST_F(VesselContours, AShorterListLeavesNoOldPointsBehind) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(folder.Write("a.con", "[POINTS]\nPoint(1)=1,1,1\nPoint(2)=2,2,2\nPoint(3)=3,3,3\n"), 0));
  contour.DeletePoint(1);
  contour.SetViewSide(1);
  contour.SetViewSide(0);
  EXPECT_EQ(RowsOf(contour), (Rows{{2, 2, 0, false, true}, {3, 3, 0, true, true}}));
}

// --- Points ----------------------------------------------------------------------------------------------------------

TEST_F(VesselContours, IndexesRunFrom1ToTheSize) {
  VesselContour contour;
  EXPECT_TRUE(contour.AddPoint(At(1, 0)));
  EXPECT_TRUE(contour.AddPoint(At(2, 0)));
  EXPECT_TRUE(contour.InsertPoint(1, At(0, 0)));
  EXPECT_TRUE(contour.InsertPoint(3, At(1.5, 0)));
  EXPECT_TRUE(contour.SetPoint(4, At(3, 0)));
  EXPECT_EQ(RowsOf(contour), (Rows{{0, 0, 0, false, false}, {1, 0, 0, false, false}, {1.5, 0, 0, false, false}, {3, 0, 0, false, false}}));
  EXPECT_TRUE(contour.DeletePoint(4));
  EXPECT_TRUE(contour.DeletePoint(1));
  EXPECT_EQ(RowsOf(contour), (Rows{{1, 0, 0, false, false}, {1.5, 0, 0, false, false}}));
}

TEST_F(VesselContours, AnIndexOutOfRangeChangesNothing) {
  VesselContour empty;
  VesselContour two;
  two.AddPoint(At(1, 1, true));
  two.AddPoint(At(2, 2));
  const Rows before = RowsOf(two);
  for (const int index : {0, -1, 3, 4, INT_MIN, INT_MIN + 1, INT_MAX, INT_MAX - 1}) {
    for (VesselContour* const contour : {&empty, &two}) {
      VesselPoint point(Point(7, 8, 9), true, true);
      EXPECT_FALSE(contour->GetPoint(index, point)) << index;
      EXPECT_EQ(RowOf(point), Row(7, 8, 9, true, true));
      EXPECT_FALSE(contour->SetPoint(index, point)) << index;
      EXPECT_FALSE(contour->DeletePoint(index)) << index;
      // 3 is one behind the last: only AddPoint reaches the end.
      EXPECT_FALSE(contour->InsertPoint(index, point)) << index;
    }
    EXPECT_EQ(RowsOf(empty), Rows());
    EXPECT_EQ(RowsOf(two), before);
  }
  EXPECT_FALSE(empty.InsertPoint(1, At(1, 1)));
}

TEST_F(VesselContours, APointInMemoryKeepsItsHeight) {
  VesselContour contour;
  contour.AddPoint(VesselPoint(Point(1, 2, 3), true, true));
  EXPECT_EQ(RowsOf(contour), (Rows{{1, 2, 3, true, true}}));
}

TEST_F(VesselContours, DeletingAllPointsLeavesPenSideAndFile) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(folder.Write("a.con", "[DRAW]\nPenWidth=3\n[LEFT POINTS]\nPoint(1)=2,2,2\n[Other]\nk=v\n"), 2));
  EXPECT_TRUE(contour.DeleteAllPoints());
  EXPECT_TRUE(contour.DeleteAllPoints());
  EXPECT_EQ(contour.GetSize(), 0);
  EXPECT_EQ(PenOf(contour), (Pen{3, 0}));
  EXPECT_EQ(contour.GetViewSide(), 2);
  EXPECT_TRUE(contour.Save(folder.File("b.con")));
  EXPECT_EQ(PictureOfFile("b.con")["Other"]["k"], "v");
}

TEST_F(VesselContours, TheBoundingPageHoldsAllPoints) {
  VesselContour contour;
  contour.Create(missing, 0);
  Page page(-100, -100, 100, 100);
  EXPECT_TRUE(contour.GetBoundingPage(page));
  EXPECT_EQ(page, Page(-5, -7, 5, 10));
  Page extents(-100, -100, 100, 100);
  EXPECT_TRUE(contour.GetExtents(extents));
  EXPECT_EQ(extents, page);
  Point center;
  EXPECT_TRUE(contour.GetCenterPoint(center));
  EXPECT_EQ(center, Point(0, 1.5, 0));
}

TEST_F(VesselContours, OnePointHasAPageOfNoSize) {
  VesselContour contour;
  contour.AddPoint(At(3, 4));
  Page page;
  EXPECT_TRUE(contour.GetBoundingPage(page));
  EXPECT_EQ(page, Page(3, 4, 3, 4));
}

TEST_F(VesselContours, WithoutPointsThePageIsInvalidAndThereIsNoCentre) {
  const VesselContour contour;
  Page page(0, 0, 10, 10);
  EXPECT_FALSE(contour.GetBoundingPage(page));
  EXPECT_EQ(page, Page());
  page.Set(0, 0, 10, 10);
  EXPECT_TRUE(contour.GetExtents(page));
  EXPECT_EQ(page, Page());
  Point center(7, 8, 9);
  EXPECT_FALSE(contour.GetCenterPoint(center));
  EXPECT_EQ(center, Point(7, 8, 9));
}

TEST_F(VesselContours, APointThatIsNoNumberMakesThePageInvalid) {
  VesselContour contour;
  contour.AddPoint(At(kNaN, 1));
  contour.AddPoint(At(2, 2));
  Page page;
  EXPECT_FALSE(contour.GetBoundingPage(page));
  EXPECT_TRUE(contour.GetExtents(page));
  Point center(7, 8, 9);
  EXPECT_FALSE(contour.GetCenterPoint(center));
  EXPECT_EQ(center, Point(7, 8, 9));
}

// --- The compact form ------------------------------------------------------------------------------------------------

// Colour 0x01020304, width -2, (1.5, -2) with moveTo, (0, 0.1) with mark; made by hand from the table of the form.
const std::string kTwoPoints(
    "\x04\x03\x02\x01"
    "\xFE\xFF\xFF\xFF"
    "\x00\x00\x00\x00\x00\x00\xF8\x3F"
    "\x00\x00\x00\x00\x00\x00\x00\xC0"
    "\x01\x00"
    "\x00\x00\x00\x00\x00\x00\x00\x00"
    "\x9A\x99\x99\x99\x99\x99\xB9\x3F"
    "\x00\x01",
    44);

TEST_F(VesselContours, TheCompactFormIsReadByteByByte) {
  VesselContour contour;
  contour.AddPoint(At(9, 9));
  EXPECT_TRUE(contour.LoadFromString(kTwoPoints));
  EXPECT_EQ(RowsOf(contour), (Rows{{1.5, -2, 0, true, false}, {0, 0.1, 0, false, true}}));
  EXPECT_EQ(PenOf(contour), (Pen{-2, 0x01020304}));
}

TEST_F(VesselContours, TheCompactFormIsWrittenByteByByte) {
  VesselContour contour;
  ASSERT_TRUE(contour.LoadFromString(kTwoPoints.substr(0, 9)));
  EXPECT_EQ(contour.GetSize(), 0);
  contour.AddPoint(VesselPoint(Point(1.5, -2, 77), true, false));
  contour.AddPoint(At(0, 0.1, false, true));
  std::string text = "before";
  EXPECT_TRUE(contour.SaveToString(text));
  EXPECT_EQ(text, kTwoPoints);
}

TEST_F(VesselContours, A26ByteStringHasOnePointAndOneOf25BytesNone) {
  VesselContour contour;
  EXPECT_TRUE(contour.LoadFromString(kTwoPoints.substr(0, 26)));
  EXPECT_EQ(contour.GetSize(), 1);
  EXPECT_TRUE(contour.LoadFromString(kTwoPoints.substr(0, 25)));
  EXPECT_EQ(contour.GetSize(), 0);
}

TEST_F(VesselContours, AStringCutAtAnyLengthGivesItsWholePoints) {
  for (std::size_t length = 0; length <= kTwoPoints.size(); ++length) {
    VesselContour contour;
    contour.AddPoint(At(9, 9));
    const std::vector<char> bytes(kTwoPoints.begin(), kTwoPoints.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(contour.LoadFromString(std::string(bytes.begin(), bytes.end())), length > 8) << length;
    EXPECT_EQ(contour.GetSize(), length < 26 ? 0 : length < 44 ? 1 : 2) << length;
    EXPECT_EQ(PenOf(contour), length > 8 ? (Pen{-2, 0x01020304}) : (Pen{1, 0})) << length;
  }
}

TEST_F(VesselContours, WithoutPointsItIsEightBytesOfZeroThatDoNotReadBack) {
  VesselContour contour;
  ASSERT_TRUE(contour.LoadFromString(kTwoPoints.substr(0, 9)));
  std::string text = "before, and longer than that";
  EXPECT_TRUE(contour.SaveToString(text));
  EXPECT_EQ(text, std::string(8, '\0'));
  EXPECT_FALSE(contour.LoadFromString(text));
  EXPECT_EQ(PenOf(contour), (Pen{-2, 0x01020304}));
}

TEST_F(VesselContours, AnyFlagByteBut0IsTrueAndIsWrittenAs1) {
  std::string text = kTwoPoints;
  text[24] = '\x80';
  text[25] = '\xFF';
  VesselContour contour;
  EXPECT_TRUE(contour.LoadFromString(text));
  EXPECT_EQ(RowsOf(contour)[0], Row(1.5, -2, 0, true, true));
  EXPECT_TRUE(contour.SaveToString(text));
  EXPECT_EQ(text.substr(24, 2), "\x01\x01");
}

TEST_F(VesselContours, TheCompactFormKeepsEveryBitOfACoordinate) {
  std::string text = kTwoPoints;
  text.replace(8, 16, std::string("\x01\x00\x00\x00\x00\x00\xF0\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 16));   // two NaN
  text.replace(26, 16, std::string("\x00\x00\x00\x00\x00\x00\x00\x80\x01\x00\x00\x00\x00\x00\x00\x00", 16));  // -0, denormal
  VesselContour contour;
  EXPECT_TRUE(contour.LoadFromString(text));
  std::string again;
  EXPECT_TRUE(contour.SaveToString(again));
  EXPECT_EQ(again, text);
}

TEST_F(VesselContours, LoadingAStringLeavesSideAndFile) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(folder.Write("a.con", "[LEFT POINTS]\nPoint(1)=2,2,2\n[Other]\nk=v\n"), 2));
  EXPECT_TRUE(contour.LoadFromString(kTwoPoints));
  EXPECT_EQ(contour.GetViewSide(), 2);
  EXPECT_TRUE(contour.Save(folder.File("b.con")));
  Picture picture = PictureOfFile("b.con");
  EXPECT_EQ(picture["LEFT POINTS"], (Items{{"Point(1)", "1.500000, -2.000000, 1"}, {"Point(2)", "0.000000, 0.100000, 2"}}));
  EXPECT_EQ(picture["Other"]["k"], "v");
}

// --- Copies ----------------------------------------------------------------------------------------------------------

TEST_F(VesselContours, ACopyHasAllOfItAndIsItsOwn) {
  VesselContour contour;
  const std::string text = "[DRAW]\nPenWidth=3\n[POINTS]\nPoint(1)=1,1,1\n[LEFT POINTS]\nPoint(1)=2,2,2\n";
  ASSERT_TRUE(contour.Create(folder.Write("a.con", text), 0));
  VesselContour copy(contour);
  VesselContour assigned;
  assigned = contour;
  contour.SetPoint(1, At(9, 9));
  contour.SetViewSide(2);
  contour.DeleteAllPoints();
  contour.SetViewSide(0);
  for (VesselContour* const other : {&copy, &assigned}) {
    EXPECT_EQ(RowsOf(*other), (Rows{{1, 1, 0, true, false}}));
    EXPECT_EQ(PenOf(*other), (Pen{3, 0}));
    EXPECT_TRUE(other->SetViewSide(2));
    EXPECT_EQ(RowsOf(*other), (Rows{{2, 2, 0, false, true}}));
  }
}

TEST_F(VesselContours, AssigningItToItselfKeepsTheOtherSides) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(folder.Write("a.con", "[POINTS]\nPoint(1)=1,1,1\n[LEFT POINTS]\nPoint(1)=2,2,2\n"), 0));
  VesselContour& same = contour;
  contour = same;
  EXPECT_EQ(RowsOf(contour), (Rows{{1, 1, 0, true, false}}));
  EXPECT_TRUE(contour.SetViewSide(2));
  EXPECT_EQ(RowsOf(contour), (Rows{{2, 2, 0, false, true}}));
}

// --- A whole vessel --------------------------------------------------------------------------------------------------

TEST_F(VesselContours, TheSampleHasSixSidesOfOneVessel) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(SourceFolder() + "/samples/geometry/vessel-contour.con", 0));
  EXPECT_EQ(PenOf(contour), (Pen{2, 180 + 60 * 256 + 20 * 65536}));
  // Size and extents of each side. The hull is 97.5 m long and 21.6 m wide; the bow rakes over the keel, and wings of the
  // bridge and the stowed pipe stand out.
  const std::tuple<int, Page> sides[] = {{29, Page(-11.6, -48.75, 10.8, 48.75)}, {33, Page(-10.2, -45.2, 10.2, 45.5)},
                                         {24, Page(-49.6, 0, 48.75, 30.5)},      {24, Page(-48.75, 0, 49.6, 30.5)},
                                         {20, Page(-11.4, 0, 11.4, 30.5)},       {19, Page(-11.4, 0, 11.4, 30.5)}};
  int side = 0;
  for (const auto& [size, extents] : sides) {
    EXPECT_TRUE(contour.SetViewSide(side));
    EXPECT_EQ(contour.GetSize(), size) << side;
    Page page;
    EXPECT_TRUE(contour.GetBoundingPage(page));
    EXPECT_EQ(page, extents) << side << ": " << page.ToString();
    EXPECT_TRUE(std::get<3>(RowsOf(contour)[0])) << side;
    ++side;
  }
}

TEST_F(VesselContours, TheSampleSavedAndReadAgainIsTheSameVessel) {
  VesselContour contour;
  ASSERT_TRUE(contour.Create(SourceFolder() + "/samples/geometry/vessel-contour.con", 0));
  std::vector<Rows> before;
  for (int side = 0; side <= 5; ++side) {
    contour.SetViewSide(side);
    before.push_back(RowsOf(contour));
  }
  // From the left it is the mirror of what it is from the right.
  ASSERT_EQ(before[2].size(), before[3].size());
  for (std::size_t i = 0; i < before[2].size(); ++i) EXPECT_EQ(std::get<0>(before[2][i]), -std::get<0>(before[3][i]));
  EXPECT_TRUE(contour.Save(folder.File("a.con")));
  VesselContour again;
  ASSERT_TRUE(again.Create(folder.File("a.con"), 0));
  EXPECT_EQ(PenOf(again), PenOf(contour));
  for (int side = 0; side <= 5; ++side) {
    again.SetViewSide(side);
    EXPECT_EQ(RowsOf(again), before[static_cast<std::size_t>(side)]) << side;
  }
}

// --- At random ------------------------------------------------------------------------------------------------------------

// A list of rows beside the contour; coordinates in sixty-fourths, which six decimals hold exactly.
TEST_F(VesselContoursLong, RandomEditsAreThoseOfAList) {
  EdgeValues random(7811);
  Tally tally({"added", "inserted", "insertion refused", "set", "refused", "deleted", "emptied", "other side", "string", "string cut",
               "bounds", "no bounds"});
  VesselContour contour;
  std::map<int, Rows> sides;
  int side = 0;
  for (int i = 0; i < kRandomRounds; ++i) {
    Rows& rows = sides[side];
    const Row row = {random.Index(4096) / 64.0 - 32, random.Index(4096) / 64.0 - 32, 0, random.Flag(), random.Flag()};
    const VesselPoint point = At(std::get<0>(row), std::get<1>(row), std::get<3>(row), std::get<4>(row));
    const int size = static_cast<int>(rows.size());
    const int index = random.Index(size + 3) - 1;  // -1 to one behind the end
    const bool isThere = index >= 1 && index <= size;
    switch (size < 20 ? random.Index(10) : 3 + random.Index(7)) {
      case 0:
      case 1:
      case 2:
        tally.Count("added");
        ASSERT_TRUE(contour.AddPoint(point));
        rows.push_back(row);
        break;
      case 3:
        ASSERT_EQ(contour.InsertPoint(index, point), tally.Either(isThere, "inserted", "insertion refused"));
        if (isThere) rows.insert(rows.begin() + (index - 1), row);
        break;
      case 4:
        ASSERT_EQ(contour.SetPoint(index, point), tally.Either(isThere, "set", "refused"));
        if (isThere) rows[static_cast<std::size_t>(index - 1)] = row;
        break;
      case 5:
      case 6:
        ASSERT_EQ(contour.DeletePoint(index), tally.Either(isThere, "deleted", "refused"));
        if (isThere) rows.erase(rows.begin() + (index - 1));
        break;
      case 7: {
        if (random.Index(8) != 0) break;
        tally.Count(random.Flag() ? "emptied" : "other side");
        if (random.Flag()) {
          ASSERT_TRUE(contour.DeleteAllPoints());
          rows.clear();
        } else {
          side = random.Index(6);
          ASSERT_TRUE(contour.SetViewSide(side));
        }
        break;
      }
      case 8: {
        std::string text;
        ASSERT_TRUE(contour.SaveToString(text));
        ASSERT_EQ(text.size(), 8 + 18 * rows.size());
        const std::size_t cut = random.Flag() ? text.size() : text.size() - std::min<std::size_t>(text.size(), 20);
        tally.Count(cut == text.size() ? "string" : "string cut");
        ASSERT_EQ(contour.LoadFromString(text.substr(0, cut)), cut >= 9);
        rows.resize(cut >= 9 ? (cut - 8) / 18 : 0);
        break;
      }
      default: {
        Page page;
        Page expected;
        for (const Row& r : rows) expected |= Point(std::get<0>(r), std::get<1>(r), 0);
        ASSERT_EQ(contour.GetBoundingPage(page), tally.Either(!rows.empty(), "bounds", "no bounds"));
        ASSERT_EQ(page, expected);
      }
    }
    if (i % 16 == 0 || sides[side].size() < 4) {
      ASSERT_EQ(RowsOf(contour), sides[side]) << "step " << i;
    }
    ASSERT_EQ(contour.GetSize(), static_cast<int>(sides[side].size())) << "step " << i;
  }
}

}  // namespace
