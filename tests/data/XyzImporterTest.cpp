#include "zelbase/data/XyzImporter.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <type_traits>
#include <vector>

#include "tests/data/ListSource.h"

namespace {

const std::vector<TimePoint> kFour = {{1, 10, 100, 1}, {2, 20, 200, 2}, {3, 30, 300, 3}, {4, 40, 400, 4}};

class Import : public XyzImporter {
 public:
  using XyzImporter::GetDataSource;
  using XyzImporter::GetExtents;
  using XyzImporter::GetNumberOfPoints;
  using XyzImporter::XyzImporter;

  std::vector<double> added;
  std::function<bool()> atAdd;

 protected:
  bool AddPoint(const TimePoint& point) override {
    added.push_back(point.position.x);
    return atAdd ? atAdd() : true;
  }
};

using Added = std::vector<double>;

TEST(XyzImporter, HandsOverEveryPointInOrder) {
  ListSource source(kFour);
  Import import(&source, false);
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.added, (Added{1, 2, 3, 4}));
  EXPECT_EQ(import.GetProgress(), 1.0);
  EXPECT_EQ(import.GetDataSource(), &source);
}

TEST(XyzImporter, TakesEveryPointUnlessOverridden) {
  ListSource source(kFour);
  XyzImporter import(&source, false);
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(source.next, 4u);
  EXPECT_TRUE((std::is_base_of_v<Processor, XyzImporter>));
}

TEST(XyzImporter, AnEmptySourceSucceedsEvenWhenStopped) {
  ListSource source;
  Import import(&source, false);
  EXPECT_TRUE(import.Process());
  import.Stop();
  EXPECT_TRUE(import.Process());
  EXPECT_TRUE(import.added.empty());
}

TEST(XyzImporter, AStopBeforeTheBeginningAddsNothing) {
  ListSource source(kFour);
  Import import(&source, false);
  import.Stop();
  EXPECT_FALSE(import.Process());
  EXPECT_TRUE(import.added.empty());
  EXPECT_EQ(source.firstCalls, 1);
  EXPECT_EQ(source.nextCalls, 0);
  import.Initialize();
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.added.size(), 4u);
}

TEST(XyzImporter, AStopIsHeardBeforeTheNextPoint) {
  ListSource source(kFour);
  Import import(&source, false);
  import.atAdd = [&] {
    if (import.added.size() == 2) import.Stop();
    return true;
  };
  EXPECT_FALSE(import.Process());
  EXPECT_EQ(import.added, (Added{1, 2}));
  EXPECT_EQ(import.GetProgress(), 0.5);
}

TEST(XyzImporter, AStopDuringTheLastPointComesTooLate) {
  ListSource source(kFour);
  Import import(&source, false);
  import.atAdd = [&] {
    if (import.added.size() == 4) import.Stop();
    return true;
  };
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.added.size(), 4u);
}

TEST(XyzImporter, ARefusedPointEndsTheJobAndLeavesTheProgress) {
  ListSource source(kFour);
  Import import(&source, false);
  import.atAdd = [&] { return import.added.size() < 3; };
  EXPECT_FALSE(import.Process());
  EXPECT_EQ(import.added, (Added{1, 2, 3}));
  EXPECT_EQ(import.GetProgress(), 0.5);  // of the second point
  EXPECT_EQ(import.ErrorMessage(), "");
}

TEST(XyzImporter, ProgressIsSetAfterThePoint) {
  ListSource source(kFour);
  Import import(&source, false);
  std::vector<double> seen;
  import.atAdd = [&] {
    seen.push_back(import.GetProgress());
    return true;
  };
  import.Process();
  EXPECT_EQ(seen, (std::vector<double>{0.0, 0.25, 0.5, 0.75}));
}

TEST(XyzImporter, ProgressGoesToTheTopmostParent) {
  ListSource source(kFour);
  XyzImporter parent(nullptr, false);
  XyzImporter middle(nullptr, false);
  middle.SetProgressParent(&parent);
  Import import(&source, false);
  import.SetProgressParent(&middle);
  import.Process();
  EXPECT_EQ(parent.GetProgress(), 1.0);
  EXPECT_EQ(middle.GetProgress(), 0.0);
  EXPECT_EQ(import.GetProgress(), 0.0);
}

TEST(XyzImporter, BeginsWithoutProgressOrParts) {
  ListSource source;
  Import import(&source, false);
  import.SetProgress(0.5);
  import.PushProgressPart(0.25);
  import.Process();
  EXPECT_EQ(import.GetProgress(), 0.0);
  import.PopProgressPart();  // there is none left to end
  EXPECT_EQ(import.GetProgress(), 0.0);
}

TEST(XyzImporter, RunsAgainFromTheFirstPoint) {
  ListSource source(kFour);
  Import import(&source, false);
  import.Process();
  import.Process();
  EXPECT_EQ(import.added.size(), 8u);
}

TEST(XyzImporter, AsksTheSourceForExtentsAndNumber) {
  ListSource source(kFour);
  const Import import(&source, false);
  EXPECT_EQ(import.GetNumberOfPoints(), 4);
  Point minimum, maximum;
  EXPECT_TRUE(import.GetExtents(minimum, maximum));
  EXPECT_EQ(minimum, Point(1, 10, 100));
  EXPECT_EQ(maximum, Point(4, 40, 400));
}

TEST(XyzImporter, AskingForTheNumberInsideAPointCutsTheImportShort) {
  ListSource source(kFour);
  Import import(&source, false);
  import.atAdd = [&] { return import.GetNumberOfPoints() == 4; };
  EXPECT_TRUE(import.Process());
  EXPECT_EQ(import.added, (Added{1}));
}

TEST(XyzImporter, ANullSourceFails) {
  Import import(nullptr, true);
  import.SetProgress(0.5);
  EXPECT_FALSE(import.Process());
  EXPECT_EQ(import.GetProgress(), 0.0);
  EXPECT_EQ(import.GetDataSource(), nullptr);
  EXPECT_EQ(import.GetNumberOfPoints(), -1);
  Point minimum(1, 2, 3), maximum(4, 5, 6);
  EXPECT_FALSE(import.GetExtents(minimum, maximum));
  EXPECT_EQ(minimum, Point(1, 2, 3));
  EXPECT_EQ(maximum, Point(4, 5, 6));
}

// Says when it goes.
class WatchedSource : public ListSource {
 public:
  explicit WatchedSource(int& gone) : m_gone(gone) {}
  ~WatchedSource() override { ++m_gone; }

 private:
  int& m_gone;
};

TEST(XyzImporter, DeletesASourceThatItOwns) {
  int gone = 0;
  { XyzImporter import(new WatchedSource(gone), true); }
  EXPECT_EQ(gone, 1);
}

TEST(XyzImporter, LeavesASourceThatItDoesNotOwn) {
  int gone = 0;
  WatchedSource source(gone);
  { XyzImporter import(&source, false); }
  EXPECT_EQ(gone, 0);
}

}  // namespace
