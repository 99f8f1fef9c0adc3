#include "adapters/xyz/XyzTextSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "adapters/xyz/detail/XyzTextCursor.h"
#include "tests/adapters/LiteralXyzReader.h"
#include "tests/adapters/RandomXyzText.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/data/XyzImporter.h"
#include "zelbase/platform/FaultInjectionFiles.h"

namespace {

// x, y, z, time.
using Row = std::tuple<double, double, double, double>;
using Rows = std::vector<Row>;

Row RowOf(const TimePoint& point) { return {point.position.x, point.position.y, point.position.z, point.time}; }

Rows WalkOver(XYZDataSource& source) {
  Rows rows;
  TimePoint point;
  for (bool more = source.GetFirstPoint(point); more; more = source.GetNextPoint(point)) rows.push_back(RowOf(point));
  return rows;
}

Rows RowsOf(const LiteralXyz& literal) {
  Rows rows;
  for (const TimePoint& point : literal.points) rows.push_back(RowOf(point));
  return rows;
}

class XyzTextSourceTest : public testing::Test {
 protected:
  // A source of this text.
  bool Open(const std::string& text) { return m_source.Open(m_folder.Write("a.xyz", text)); }

  Rows Read(const std::string& text) {
    EXPECT_TRUE(Open(text));
    return WalkOver(m_source);
  }

  TemporaryFolder m_folder;
  XyzTextSource m_source;
};
using XyzTextSourceTestLong = XyzTextSourceTest;

TEST_F(XyzTextSourceTest, ReadsAPointALine) {
  EXPECT_EQ(Read("1 2 3\n4 5 6\n"), (Rows{{1, 2, 3, 0}, {4, 5, 6, 0}}));
  EXPECT_EQ(m_source.SoFar().lines, 2);
  EXPECT_EQ(m_source.SoFar().points, 2);
  EXPECT_EQ(m_source.SoFar().timedPoints, 0);
  EXPECT_EQ(m_source.SoFar().brokenLines, 0);
  EXPECT_EQ(m_source.Result(), FileResult::Ok);
}

TEST_F(XyzTextSourceTest, TakesTheUsualSeparatorsMixedAndWithBlanks) {
  EXPECT_EQ(
      Read("1 2 3\n1\t2\t3\n1,2,3\n1;2;3\n 1 , 2 ;\t3 \n1,2 3\n1 2 3,\n1 2 3 4\n1;2;3;4;\n"),
      (Rows{{1, 2, 3, 0}, {1, 2, 3, 0}, {1, 2, 3, 0}, {1, 2, 3, 0}, {1, 2, 3, 0}, {1, 2, 3, 0}, {1, 2, 3, 0}, {1, 2, 3, 4}, {1, 2, 3, 4}}));
}

TEST_F(XyzTextSourceTest, LinesEndWithLineFeedCarriageReturnAndLineFeedOrTheFile) {
  const Rows rows = {{1, 2, 3, 0}, {4, 5, 6, 7}};
  EXPECT_EQ(Read("1 2 3\r\n4 5 6 7\r\n"), rows);
  EXPECT_EQ(Read("1 2 3\n4 5 6 7"), rows);
  EXPECT_EQ(m_source.SoFar().lines, 2);
  EXPECT_EQ(Read("1 2 3\r\n4 5 6 7\r"), rows);
  EXPECT_EQ(Read("\n\n1 2 3\n \n4 5 6 7\n\n"), rows);
  EXPECT_EQ(m_source.SoFar().lines, 6);
}

TEST_F(XyzTextSourceTest, PassesOverCommentsAndAMarkOfUtf8) {
  EXPECT_EQ(Read("\xEF\xBB\xBF# made by hand\n1 2 3 # the quay\n  # 7 8 9\n4 5 6#\n"), (Rows{{1, 2, 3, 0}, {4, 5, 6, 0}}));
  EXPECT_EQ(m_source.SoFar().brokenLines, 0);
  EXPECT_EQ(Read("\xEF\xBB\xBF"
                 "1 2 3\n"),
            (Rows{{1, 2, 3, 0}}));
  EXPECT_TRUE(Read("\xEF\xBB\xBF").empty());
  EXPECT_EQ(Read("1 2 3\n\xEF\xBB\xBF"
                 "4 5 6\n"),
            (Rows{{1, 2, 3, 0}}));
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);
}

TEST_F(XyzTextSourceTest, TheFirstLineWithSomethingInItMayHoldTheNames) {
  EXPECT_EQ(Read("# soundings\n\nEasting,Northing,Depth,Time\n1,2,3,4\n"), (Rows{{1, 2, 3, 4}}));
  EXPECT_TRUE(m_source.SoFar().hasNames);
  EXPECT_EQ(m_source.SoFar().brokenLines, 0);

  Read("x y z\nm m m\n1 2 3\n");
  EXPECT_TRUE(m_source.SoFar().hasNames);
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);

  Read("1 2 3\nx y z\n");
  EXPECT_FALSE(m_source.SoFar().hasNames);
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);

  Read("x 2 z\n1 2 3\n");  // a number among them: a point gone wrong
  EXPECT_FALSE(m_source.SoFar().hasNames);
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);
}

TEST_F(XyzTextSourceTest, BrokenLinesAreSkippedCountedAndTheFirstKeptWithTheirReasons) {
  std::string text = "1 2 3\n1 2\n4 5 6\nabc 1 2\n";
  for (int i = 0; i < 20; ++i) text += "1 2 3 4 " + std::to_string(i) + "\n";
  EXPECT_EQ(Read(text), (Rows{{1, 2, 3, 0}, {4, 5, 6, 0}}));
  const XyzTextSummary& summary = m_source.SoFar();
  EXPECT_EQ(summary.lines, 24);
  EXPECT_EQ(summary.brokenLines, 22);
  ASSERT_EQ(summary.problems.size(), 10u);
  EXPECT_EQ(summary.problems[0].line, 2);
  EXPECT_EQ(summary.problems[0].reason, "z is missing");
  EXPECT_EQ(summary.problems[1].line, 4);
  EXPECT_EQ(summary.problems[1].reason, "x is not a number: abc");
  EXPECT_EQ(summary.problems[9].line, 12);
  EXPECT_EQ(summary.problems[9].reason, "more than four columns: 7");
}

TEST_F(XyzTextSourceTest, AsManyProblemsAreKeptAsAreAskedFor) {
  const std::string name = m_folder.Write("a", "1 2\n1\n1 2 3\nx\n");
  for (const std::size_t kept : {0u, 1u, 3u, 100u}) {
    XyzTextOptions options;
    options.keptProblems = kept;
    XyzTextSource source(name, options);
    EXPECT_EQ(WalkOver(source).size(), 1u);
    EXPECT_EQ(source.SoFar().brokenLines, 3);
    EXPECT_EQ(source.SoFar().problems.size(), std::min<std::size_t>(kept, 3));
  }
}

TEST_F(XyzTextSourceTest, DecimalCommasDoNotPassForOtherNumbers) {
  EXPECT_TRUE(Read("543210,12 5812345,67 -12,34\n543210,12;5812345,67;-12,34\n").empty());
  EXPECT_EQ(m_source.SoFar().brokenLines, 2);
}

TEST_F(XyzTextSourceTest, WithPositionsOnlyFurtherColumnsAreNotLookedAt) {
  XyzTextOptions options;
  options.positionOnly = true;
  XyzTextSource source(m_folder.Write("a", "1 2 3 4\n1 2 3 4 5 good\n1,2,3,x\n1 2\n1 2 3\n"), options);
  EXPECT_EQ(WalkOver(source), Rows(4, Row{1, 2, 3, 0}));
  EXPECT_EQ(source.SoFar().timedPoints, 0);
  EXPECT_EQ(source.SoFar().brokenLines, 1);
}

TEST_F(XyzTextSourceTest, TimesAreTakenAsNumbersAndAsDates) {
  EXPECT_EQ(Read("1 2 3 1777890030500\n1 2 3 2026-05-04T10:20:30.5Z\n1,2,3,2026-05-04T12:20:30.5+02:00 # local\n1 2 3\n"),
            (Rows{{1, 2, 3, 1777890030500.0}, {1, 2, 3, 1777890030500.0}, {1, 2, 3, 1777890030500.0}, {1, 2, 3, 0}}));
  EXPECT_EQ(m_source.SoFar().timedPoints, 3);
}

TEST_F(XyzTextSourceTest, TextsWithoutPointsAreEmptySources) {
  for (const char* text : {"", "\n", "# nothing\n", "x y z", "1 2\n", "\r\n\r\n"}) {
    EXPECT_TRUE(Read(text).empty());
    EXPECT_EQ(m_source.GetNumberOfPoints(), -1);
    Point minimum(1, 1, 1), maximum(2, 2, 2);
    EXPECT_FALSE(m_source.GetExtents(minimum, maximum));
    EXPECT_EQ(minimum, Point(1, 1, 1));
    EXPECT_EQ(maximum, Point(2, 2, 2));
    EXPECT_EQ(m_source.GetPosition(), 1.0);
    EXPECT_EQ(m_source.Result(), FileResult::Ok);
    ASSERT_NE(m_source.Whole(), nullptr);
    EXPECT_EQ(m_source.Whole()->points, 0);
    EXPECT_TRUE(XyzImporter(&m_source, false).Process());
  }
}

TEST_F(XyzTextSourceTest, KnowsExtentsAndNumber) {
  Open("3 10 -2\n1 30 -1\n2 20 -3\n");
  Point minimum, maximum;
  EXPECT_TRUE(m_source.GetExtents(minimum, maximum));
  EXPECT_EQ(minimum, Point(1, 10, -3));
  EXPECT_EQ(maximum, Point(3, 30, -1));
  EXPECT_EQ(m_source.GetNumberOfPoints(), 3);
}

TEST_F(XyzTextSourceTest, AskingForExtentsDoesNotDisturbTheWalk) {
  Open("1 2 3\n4 5 6\n7 8 9\n");
  TimePoint point;
  m_source.GetFirstPoint(point);
  EXPECT_EQ(m_source.GetNumberOfPoints(), 3);
  EXPECT_EQ(m_source.SoFar().points, 1);
  EXPECT_TRUE(m_source.GetNextPoint(point));
  EXPECT_EQ(point.position, Point(4, 5, 6));
}

TEST_F(XyzTextSourceTest, AWholeWalkLeavesNothingToReadForTheExtents) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  Read("1 2 3\nbroken\n4 5 6\n");
  const unsigned long long operations = files.Count();
  Point minimum, maximum;
  EXPECT_TRUE(m_source.GetExtents(minimum, maximum));
  EXPECT_EQ(m_source.GetNumberOfPoints(), 2);
  EXPECT_EQ(m_source.Whole()->brokenLines, 1);
  EXPECT_EQ(files.Count(), operations);
}

TEST_F(XyzTextSourceTest, ThePassForTheExtentsIsMadeOnce) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  Open("1 2 3\n4 5 6\n");
  EXPECT_EQ(m_source.GetNumberOfPoints(), 2);
  const unsigned long long operations = files.Count();
  Point minimum, maximum;
  EXPECT_TRUE(m_source.GetExtents(minimum, maximum));
  EXPECT_EQ(files.Count(), operations);
}

TEST_F(XyzTextSourceTest, PositionIsThePartOfTheBytes) {
  Open("1 2 3\n10 20 30\n\n#x\n1 1\n");  // 6, 9, 1, 3 and 4 bytes
  EXPECT_EQ(m_source.GetPosition(), 0.0);
  TimePoint point;
  m_source.GetFirstPoint(point);
  EXPECT_EQ(m_source.GetPosition(), 6.0 / 23.0);
  m_source.GetNextPoint(point);
  EXPECT_EQ(m_source.GetPosition(), 15.0 / 23.0);
  EXPECT_FALSE(m_source.GetNextPoint(point));
  EXPECT_EQ(m_source.GetPosition(), 1.0);
  EXPECT_FALSE(m_source.GetNextPoint(point));
  m_source.GetFirstPoint(point);
  EXPECT_EQ(m_source.GetPosition(), 6.0 / 23.0);
}

TEST_F(XyzTextSourceTest, PositionEndsAtOneWithoutALastLineEnd) {
  Open("1 2 3\n1 2 3");
  TimePoint point;
  m_source.GetFirstPoint(point);
  EXPECT_EQ(m_source.GetPosition(), 6.0 / 11.0);
  m_source.GetNextPoint(point);
  EXPECT_EQ(m_source.GetPosition(), 1.0);
}

TEST_F(XyzTextSourceTest, WalksAgainFromTheBeginning) {
  const Rows rows = Read("x y z\n1 2 3\nbad\n4 5 6\n");
  EXPECT_EQ(WalkOver(m_source), rows);
  EXPECT_EQ(m_source.SoFar().lines, 4);
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);
  EXPECT_TRUE(m_source.SoFar().hasNames);
}

TEST_F(XyzTextSourceTest, APointThatDoesNotComeLeavesTheArgument) {
  Open("1 2 3\n");
  TimePoint point;
  m_source.GetFirstPoint(point);
  EXPECT_FALSE(m_source.GetNextPoint(point));
  EXPECT_EQ(point.position, Point(1, 2, 3));
}

TEST_F(XyzTextSourceTest, WhatIsNotOpenHasNoPoints) {
  XyzTextSource source;
  TimePoint point;
  Point minimum, maximum;
  EXPECT_FALSE(source.IsOpen());
  EXPECT_FALSE(source.GetFirstPoint(point));
  EXPECT_FALSE(source.GetNextPoint(point));
  EXPECT_FALSE(source.GetExtents(minimum, maximum));
  EXPECT_EQ(source.GetNumberOfPoints(), -1);
  EXPECT_EQ(source.GetPosition(), 1.0);
  EXPECT_EQ(source.Whole(), nullptr);
  EXPECT_EQ(source.SoFar().lines, 0);
  source.Close();
}

TEST_F(XyzTextSourceTest, OnlyRegularFilesOpen) {
  const std::vector<std::pair<std::string, FileResult>> rows = {{m_folder.File("none"), FileResult::NotFound},
                                                                {m_folder.MakeFolder("folder"), FileResult::AccessDenied},
                                                                {m_folder.MakeFifo("fifo"), FileResult::AccessDenied},
                                                                {"/dev/zero", FileResult::AccessDenied},
                                                                {"", FileResult::InvalidName},
                                                                {std::string("a\0b", 3), FileResult::InvalidName}};
  for (const auto& [name, result] : rows) {
    Open("1 2 3\n");
    EXPECT_FALSE(m_source.Open(name)) << name;
    EXPECT_EQ(m_source.Result(), result) << name;
    EXPECT_FALSE(m_source.IsOpen());
    EXPECT_EQ(m_source.GetNumberOfPoints(), -1);
  }
}

TEST_F(XyzTextSourceTest, OpeningAnotherFileForgetsTheFirst) {
  Read("1 2 3\n4 5 6\n");
  EXPECT_EQ(m_source.GetNumberOfPoints(), 2);
  Open("7 8 9\n");
  EXPECT_EQ(m_source.GetNumberOfPoints(), 1);
  EXPECT_EQ(m_source.SoFar().lines, 0);
  EXPECT_EQ(WalkOver(m_source), (Rows{{7, 8, 9, 0}}));
  m_source.Close();
  EXPECT_EQ(m_source.GetNumberOfPoints(), -1);
}

constexpr std::size_t kLongest = zelbase::detail::XyzTextCursor::kBufferBytes;

TEST_F(XyzTextSourceTest, LinesOfMegabytesAreBrokenAndPassedOver) {
  for (const std::size_t size : {kLongest, 2 * kLongest, 2 * kLongest + 1, std::size_t{5000000}}) {
    EXPECT_EQ(Read("1 2 3\n" + std::string(size, '7') + "\n4 5 6\n"), (Rows{{1, 2, 3, 0}, {4, 5, 6, 0}})) << size;
    EXPECT_EQ(m_source.SoFar().lines, 3);
    EXPECT_EQ(m_source.SoFar().brokenLines, 1);
    EXPECT_EQ(m_source.SoFar().problems[0].line, 2);
    EXPECT_EQ(m_source.SoFar().problems[0].reason, "the line is too long");
    EXPECT_EQ(m_source.GetPosition(), 1.0);
  }
}

TEST_F(XyzTextSourceTest, ALongLastLineEndsWithTheFile) {
  EXPECT_EQ(Read("1 2 3\n" + std::string(3 * kLongest, ' ')), (Rows{{1, 2, 3, 0}}));
  EXPECT_EQ(m_source.SoFar().lines, 2);
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);
}

TEST_F(XyzTextSourceTest, TheLongestLineIsStillRead) {
  const std::string longest = std::string(kLongest - 6, ' ') + "1 2 3\n";
  EXPECT_EQ(Read(longest + longest), Rows(2, Row{1, 2, 3, 0}));
  EXPECT_EQ(m_source.SoFar().brokenLines, 0);
  EXPECT_TRUE(Read(" " + longest).empty());
  EXPECT_EQ(m_source.SoFar().brokenLines, 1);
}

TEST_F(XyzTextSourceTest, CommentsOfMegabytesAreComments) {
  EXPECT_EQ(Read(" #" + std::string(3000000, '7') + "\n4 5 6\n"), (Rows{{4, 5, 6, 0}}));
  EXPECT_EQ(m_source.SoFar().brokenLines, 0);
  EXPECT_EQ(m_source.SoFar().lines, 2);
}

TEST_F(XyzTextSourceTest, BytesOfAnyKindAreNoPoints) {
  std::string text = "1 2 3\n";
  for (int byte = 0; byte < 256; ++byte) text += static_cast<char>(byte);
  text += "\n4 5 6\n" + std::string(1000, '\0') + "\n";
  EXPECT_EQ(Read(text), (Rows{{1, 2, 3, 0}, {4, 5, 6, 0}}));
}

std::string RandomText(unsigned int seed, std::size_t size) {
  RandomXyzText lines(seed);
  std::string text;
  while (text.size() < size) text += lines.Line();
  return text;
}

TEST_F(XyzTextSourceTestLong, ReadsSeveralBlocksAsThePlainReaderDoes) {
  for (unsigned int seed = 1; seed <= 3; ++seed) {
    const std::string text = RandomText(seed, 3 * kLongest);
    for (const bool positionOnly : {false, true}) {
      const LiteralXyz literal = ReadLiteralXyz(text, positionOnly);
      XyzTextOptions options;
      options.positionOnly = positionOnly;
      options.keptProblems = 1000000;
      XyzTextSource source(m_folder.Write("b", text), options);
      EXPECT_EQ(WalkOver(source), RowsOf(literal));
      const XyzTextSummary& summary = source.SoFar();
      EXPECT_EQ(summary.lines, literal.lines);
      EXPECT_EQ(summary.timedPoints, literal.timedPoints);
      EXPECT_EQ(summary.hasNames, literal.hasNames);
      std::vector<long long> broken;
      for (const XyzLineProblem& problem : summary.problems) broken.push_back(problem.line);
      EXPECT_EQ(broken, literal.brokenLines);
      EXPECT_EQ(source.GetNumberOfPoints(), static_cast<int>(literal.points.size()));
    }
  }
}

TEST_F(XyzTextSourceTest, ExtentsAreThoseOfTheInterface) {
  const std::string text = RandomText(7, 100000);
  Read(text);
  // The interface's own pass, over the same walk.
  Point minimum, maximum, plainMinimum, plainMaximum;
  EXPECT_TRUE(m_source.XYZDataSource::GetExtents(plainMinimum, plainMaximum));
  EXPECT_TRUE(m_source.GetExtents(minimum, maximum));
  EXPECT_EQ(minimum, plainMinimum);
  EXPECT_EQ(maximum, plainMaximum);
  EXPECT_EQ(m_source.XYZDataSource::GetNumberOfPoints(), m_source.GetNumberOfPoints());
}

TEST_F(XyzTextSourceTest, SlowConnectionsChangeNothing) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  const std::string text = RandomText(9, 5000);
  const Rows rows = Read(text);
  EXPECT_FALSE(rows.empty());
  for (const std::size_t limit : {1u, 2u, 7u, 1000u}) {
    files.LimitReads(limit);
    EXPECT_EQ(Read(text), rows) << limit;
  }
}

TEST_F(XyzTextSourceTestLong, EveryFailureOfAnOperationIsToldAndGivesOnlyTheFront) {
  const std::string text = RandomText(11, 2 * kLongest);
  const Rows all = RowsOf(ReadLiteralXyz(text));
  const std::string name = m_folder.Write("c", text);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  for (const std::size_t bytes : {0u, 1u, 1000u, 100000u}) {
    for (unsigned long long n = 1;; ++n) {
      files.Reset();
      files.BytesBeforeFailure(bytes);
      files.FailAt(n);
      {
        XyzTextSource source(name);
        const Rows rows = WalkOver(source);
        const bool failed = files.FaultsGiven() > 0;
        EXPECT_EQ(source.Result(), failed ? FileResult::IoFailed : FileResult::Ok) << n;
        ASSERT_LE(rows.size(), all.size());
        EXPECT_TRUE(std::equal(rows.begin(), rows.end(), all.begin())) << n;
        EXPECT_TRUE(failed || rows.size() == all.size()) << n;
        // The fault was given once: what asks again gets all.
        if (source.IsOpen()) {
          EXPECT_EQ(source.GetNumberOfPoints(), static_cast<int>(all.size()));
          EXPECT_EQ(source.Result(), FileResult::Ok);
        }
      }
      EXPECT_EQ(files.OpenFiles(), 0);
      if (files.FaultsGiven() == 0) break;
      ASSERT_LT(n, 100u);
    }
  }
}

TEST_F(XyzTextSourceTest, ExtentsOfAFileThatFailsAreNone) {
  FaultInjectionFiles files;
  const PlatformOverride<PlatformFiles> guard(files);
  Open("1 2 3\n");
  files.FailAt(FileOperation::Read, 1);
  Point minimum, maximum;
  EXPECT_FALSE(m_source.GetExtents(minimum, maximum));
  EXPECT_EQ(m_source.Result(), FileResult::IoFailed);
  EXPECT_TRUE(m_source.GetExtents(minimum, maximum));
  EXPECT_EQ(m_source.Result(), FileResult::Ok);
}

TEST_F(XyzTextSourceTest, AFileThatBecomesShorterEndsThePointsAndIsTold) {
  const std::string text = RandomText(13, 3 * kLongest);
  const std::string name = m_folder.Write("d", text);
  XyzTextSource source(name);
  TimePoint point;
  ASSERT_TRUE(source.GetFirstPoint(point));
  std::filesystem::resize_file(name, kLongest + 1000);
  std::size_t count = 1;
  while (source.GetNextPoint(point)) ++count;
  EXPECT_EQ(source.Result(), FileResult::IoFailed);
  EXPECT_LT(source.GetPosition(), 1.0);
  EXPECT_GT(count, 1000u);
  EXPECT_EQ(source.GetNumberOfPoints(), -1);
}

TEST_F(XyzTextSourceTest, WhatIsAddedToTheFileAfterwardsIsNotRead) {
  Open("1 2 3\n4 5 6\n");
  std::ofstream(m_folder.File("a.xyz"), std::ios::app) << "7 8 9\n";
  EXPECT_EQ(WalkOver(m_source).size(), 2u);
  EXPECT_EQ(m_source.GetNumberOfPoints(), 2);
  EXPECT_EQ(m_source.GetPosition(), 1.0);
  ASSERT_TRUE(m_source.Open(m_folder.File("a.xyz")));
  EXPECT_EQ(m_source.GetNumberOfPoints(), 3);
}

TEST_F(XyzTextSourceTest, KeepsNoDescriptorWhenItGoes) {
  const int before = CountOpenDescriptors();
  {
    XyzTextSource source(m_folder.Write("a", "1 2 3\n"));
    WalkOver(source);
    source.Open(m_folder.File("none"));
    source.Open(m_folder.File("a"));
  }
  EXPECT_EQ(CountOpenDescriptors(), before);
}

class Import : public XyzImporter {
 public:
  using XyzImporter::XyzImporter;
  Rows rows;
  std::size_t stopAt = std::numeric_limits<std::size_t>::max();
  bool asks = false;

 protected:
  bool AddPoint(const TimePoint& point) override {
    rows.push_back(RowOf(point));
    if (rows.size() == stopAt) Stop();
    return !asks || GetNumberOfPoints() == 3;
  }
};

TEST_F(XyzTextSourceTest, IsImportedWithProgress) {
  Open("1 2 3\n4 5 6\nbroken\n7 8 9\n");
  Import import(&m_source, false);
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.rows, (Rows{{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}}));
  EXPECT_EQ(import.GetProgress(), 1.0);
}

TEST_F(XyzTextSourceTest, AnImportStopsBetweenPoints) {
  Open("1 2 3\n4 5 6\n7 8 9\n");
  Import import(&m_source, false);
  import.stopAt = 2;
  EXPECT_FALSE(import.Process());
  EXPECT_EQ(import.rows.size(), 2u);
  EXPECT_EQ(import.GetProgress(), 12.0 / 18.0);
  EXPECT_EQ(m_source.SoFar().points, 3);  // the next was fetched, and not added
}

TEST_F(XyzTextSourceTest, AnImportMayAskForTheNumberAtEachPoint) {
  Open("1 2 3\n4 5 6\n7 8 9\n");
  Import import(&m_source, false);
  import.asks = true;
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.rows.size(), 3u);
}

TEST_F(XyzTextSourceTest, AnImporterMayOwnIt) {
  Import import(new XyzTextSource(m_folder.Write("a", "1 2 3\n")), true);
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.rows.size(), 1u);
}

}  // namespace
