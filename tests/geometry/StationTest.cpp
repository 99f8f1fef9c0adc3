#include "zelbase/geometry/Station.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

// A station that has read a file of this content, and what reading gave.
struct Reading {
  explicit Reading(const std::string& content) {
    station.SetStationPos(Point(7, 8, 9));
    complete = station.ReadFile(folder.Write("station.txt", content));
    valid = station.GetStationPos(position);
  }
  TemporaryFolder folder;
  Station station;
  bool complete = false;
  bool valid = false;
  Point position;
};

TEST(Station, BeginsAtTheOriginAndNotValid) {
  const Station station;
  Point point(7, 8, 9);
  EXPECT_FALSE(station.GetStationPos(point));
  EXPECT_EQ(point, Point(0, 0, 0));
  EXPECT_EQ(station.text0, "");
  EXPECT_EQ(station.text1, "");
}

TEST(Station, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<Station>); }

TEST(Station, SettingThePositionMakesItValid) {
  Station station;
  station.SetStationPos(Point(1, 2, 3));
  Point point;
  EXPECT_TRUE(station.GetStationPos(point));
  EXPECT_EQ(point, Point(1, 2, 3));
}

TEST(Station, CopiesAreIndependent) {
  Station station;
  station.SetStationPos(Point(1, 2, 3));
  station.text0 = "quay";
  station.text1 = "north";
  const Station copied(station);
  Station assigned;
  assigned = station;
  station.SetStationPos(Point());
  station.text0 = "";
  for (const Station* copy : {&copied, &std::as_const(assigned)}) {
    EXPECT_EQ(copy->position, Point(1, 2, 3));
    EXPECT_EQ(copy->text0, "quay");
    EXPECT_EQ(copy->text1, "north");
    EXPECT_TRUE(copy->valid);
  }
}

TEST(Station, ReadsThreeNumbersFromALine) {
  const Reading reading("1,2,3\n");
  EXPECT_TRUE(reading.complete);
  EXPECT_TRUE(reading.valid);
  EXPECT_EQ(reading.position, Point(1, 2, 3));
}

struct Row {
  std::string content;
  bool complete;
  Point position;
};

TEST(Station, GoodLines) {
  const Row rows[] = {
      {"1,2,3", true, Point(1, 2, 3)},
      {"1,2,3\r\n", true, Point(1, 2, 3)},
      {"1.5,-2.25,+3e2\n4,5,6\n", true, Point(1.5, -2.25, 300)},
      {" 1 , 2 ,\t3 m", true, Point(1, 2, 3)},
      {"1m,2m,3m", true, Point(1, 2, 3)},
      {"1,2,3,4,x", true, Point(1, 2, 3)},
      {"1,2,3,", true, Point(1, 2, 3)},
      {std::string("1\0,2,3\0", 7), true, Point(1, 2, 3)},
      {"1e999,-1e999,1e-999", true, Point(std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 0)},
  };
  for (const Row& row : rows) {
    const Reading reading(row.content);
    EXPECT_TRUE(reading.complete) << row.content;
    EXPECT_TRUE(reading.valid) << row.content;
    EXPECT_EQ(reading.position, row.position) << row.content;
  }
}

TEST(Station, OnlyTheThirdItemDecidesTheAnswer) {
  const Row rows[] = {
      {"x,2,3", true, Point(0, 2, 3)},
      {",,3", true, Point(0, 0, 3)},
      {"1,x,3", true, Point(1, 0, 3)},
      {"1,2,x", false, Point(1, 2, 0)},
      {"1,2,", false, Point(1, 2, 0)},
      {"1,2", false, Point(1, 2, 0)},
      {"1", false, Point(1, 0, 0)},
      {"nan,inf,nan", false, Point(0, 0, 0)},
      {"1 2 3", false, Point(1, 0, 0)},
      {"1;2;3", false, Point(1, 0, 0)},
      {"\xEF\xBB\xBF"
       "1,2,3",
       true, Point(0, 2, 3)},
  };
  for (const Row& row : rows) {
    const Reading reading(row.content);
    EXPECT_EQ(reading.complete, row.complete) << row.content;
    EXPECT_TRUE(reading.valid) << row.content;
    EXPECT_EQ(reading.position, row.position) << row.content;
  }
}

TEST(Station, AnEmptyFirstLineIsFalseWhateverFollows) {
  for (const char* content : {"", "\n", "\r\n", "\n1,2,3\n", "\r\n1,2,3\n"}) {
    const Reading reading(content);
    EXPECT_FALSE(reading.complete) << content;
    EXPECT_TRUE(reading.valid) << content;
    EXPECT_EQ(reading.position, Point(0, 0, 0)) << content;
  }
}

TEST(Station, NumbersDoNotGoOnInTheNextLine) {
  const Reading reading("1,2\n3,4\n");
  EXPECT_FALSE(reading.complete);
  EXPECT_EQ(reading.position, Point(1, 2, 0));
}

TEST(Station, AFailedReadFileLeavesTheOriginMarkedValid) {
  const TemporaryFolder folder;
  const std::string names[] = {folder.File("missing.txt"), folder.Path(), folder.MakeFifo("pipe"), "", "/dev/zero", std::string("a\0b", 3)};
  for (const std::string& name : names) {
    Station station;
    station.SetStationPos(Point(7, 8, 9));
    EXPECT_FALSE(station.ReadFile(name)) << name;
    Point point(1, 1, 1);
    EXPECT_TRUE(station.GetStationPos(point)) << name;
    EXPECT_EQ(point, Point(0, 0, 0)) << name;
  }
}

TEST(Station, TextsStayWhenAFileIsRead) {
  const TemporaryFolder folder;
  Station station;
  station.text0 = "quay";
  EXPECT_TRUE(station.ReadFile(folder.Write("station.txt", "1,2,3")));
  EXPECT_EQ(station.text0, "quay");
}

TEST(Station, TakesPathsWithEitherSeparator) {
  const TemporaryFolder folder;
  folder.Write("station.txt", "1,2,3");
  Station station;
  EXPECT_TRUE(station.ReadFile(folder.InterfacePath() + "\\station.txt"));
}

TEST(Station, ItemsMayBeOfAnyLength) {
  const std::string blanks(3000000, ' ');
  const std::string zeros(100000, '0');
  const Reading reading(blanks + "1," + zeros + "2," + blanks + "3" + std::string(5000000, 'x'));
  EXPECT_TRUE(reading.complete);
  EXPECT_EQ(reading.position, Point(1, 2, 3));
}

// Where a block of the file ends must not matter.
TEST(Station, ItemsMayStandAnywhereInTheLine) {
  for (std::size_t front = 4080; front < 4100; ++front) {
    const Reading reading(std::string(front, ' ') + "12.5,-3,44\r\n9,9,9\n");
    EXPECT_TRUE(reading.complete) << front;
    EXPECT_EQ(reading.position, Point(12.5, -3, 44)) << front;
  }
}

TEST(Station, ShortReadsAreReadOn) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("station.txt", "12.5,-3,44\n");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  files.LimitReads(1);
  Station station;
  EXPECT_TRUE(station.ReadFile(name));
  EXPECT_EQ(station.position, Point(12.5, -3, 44));
}

TEST(Station, EveryFailingOperationGivesFalseOrTheNumbers) {
  const TemporaryFolder folder;
  const std::string name = folder.Write("station.txt", "12.5,-3,44");
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  int failures = 0;
  for (unsigned long long n = 1;; ++n) {
    files.Reset();
    files.LimitReads(3);
    files.FailAt(n);
    Station station;
    const bool complete = station.ReadFile(name);
    EXPECT_TRUE(station.valid);
    EXPECT_EQ(station.position, complete ? Point(12.5, -3, 44) : Point()) << n;
    EXPECT_EQ(files.OpenFiles(), 0);
    if (files.FaultsGiven() == 0) {
      EXPECT_TRUE(complete);
      break;
    }
    EXPECT_FALSE(complete) << n;
    ++failures;
  }
  EXPECT_EQ(failures, 1 + 5);  // the opening, four reads of the ten bytes and the one that meets the end
}

TEST(Station, NumbersDoNotDependOnTheLocale) {
  const CommaLocale locale;
  const Reading reading("1.5,2.5,3.5");
  EXPECT_TRUE(reading.complete);
  EXPECT_EQ(reading.position, Point(1.5, 2.5, 3.5));
}

}  // namespace
