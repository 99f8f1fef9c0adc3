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
  Import job(&source, false);
  EXPECT_TRUE(job.Process());
  EXPECT_EQ(job.added, (Added{1, 2, 3, 4}));
  EXPECT_EQ(job.GetProgress(), 1.0);
  EXPECT_EQ(job.GetDataSource(), &source);
}

TEST(XyzImporter, TakesEveryPointUnlessOverridden) {
  ListSource source(kFour);
  XyzImporter job(&source, false);
  EXPECT_TRUE(job.Process());
  EXPECT_EQ(source.next, 4u);
  EXPECT_TRUE((std::is_base_of_v<Processor, XyzImporter>));
}

TEST(XyzImporter, AnEmptySourceSucceedsEvenWhenStopped) {
  ListSource source;
  Import job(&source, false);
  EXPECT_TRUE(job.Process());
  job.Stop();
  EXPECT_TRUE(job.Process());
  EXPECT_TRUE(job.added.empty());
}

TEST(XyzImporter, AStopBeforeTheBeginningAddsNothing) {
  ListSource source(kFour);
  Import job(&source, false);
  job.Stop();
  EXPECT_FALSE(job.Process());
  EXPECT_TRUE(job.added.empty());
  EXPECT_EQ(source.firstCalls, 1);
  EXPECT_EQ(source.nextCalls, 0);
  job.Initialize();
  EXPECT_TRUE(job.Process());
  EXPECT_EQ(job.added.size(), 4u);
}

TEST(XyzImporter, AStopIsHeardBeforeTheNextPoint) {
  ListSource source(kFour);
  Import job(&source, false);
  job.atAdd = [&] {
    if (job.added.size() == 2) job.Stop();
    return true;
  };
  EXPECT_FALSE(job.Process());
  EXPECT_EQ(job.added, (Added{1, 2}));
  EXPECT_EQ(job.GetProgress(), 0.5);
}

TEST(XyzImporter, AStopDuringTheLastPointComesTooLate) {
  ListSource source(kFour);
  Import job(&source, false);
  job.atAdd = [&] {
    if (job.added.size() == 4) job.Stop();
    return true;
  };
  EXPECT_TRUE(job.Process());
  EXPECT_EQ(job.added.size(), 4u);
}

TEST(XyzImporter, ARefusedPointEndsTheJobAndLeavesTheProgress) {
  ListSource source(kFour);
  Import job(&source, false);
  job.atAdd = [&] { return job.added.size() < 3; };
  EXPECT_FALSE(job.Process());
  EXPECT_EQ(job.added, (Added{1, 2, 3}));
  EXPECT_EQ(job.GetProgress(), 0.5);  // of the second point
  EXPECT_EQ(job.ErrorMessage(), "");
}

TEST(XyzImporter, ProgressIsSetAfterThePoint) {
  ListSource source(kFour);
  Import job(&source, false);
  std::vector<double> seen;
  job.atAdd = [&] {
    seen.push_back(job.GetProgress());
    return true;
  };
  job.Process();
  EXPECT_EQ(seen, (std::vector<double>{0.0, 0.25, 0.5, 0.75}));
}

TEST(XyzImporter, ProgressGoesToTheTopmostParent) {
  ListSource source(kFour);
  XyzImporter parent(nullptr, false);
  XyzImporter middle(nullptr, false);
  middle.SetProgressParent(&parent);
  Import job(&source, false);
  job.SetProgressParent(&middle);
  job.Process();
  EXPECT_EQ(parent.GetProgress(), 1.0);
  EXPECT_EQ(middle.GetProgress(), 0.0);
  EXPECT_EQ(job.GetProgress(), 0.0);
}

TEST(XyzImporter, BeginsWithoutProgressOrParts) {
  ListSource source;
  Import job(&source, false);
  job.SetProgress(0.5);
  job.PushProgressPart(0.25);
  job.Process();
  EXPECT_EQ(job.GetProgress(), 0.0);
  job.PopProgressPart();  // there is none left to end
  EXPECT_EQ(job.GetProgress(), 0.0);
}

TEST(XyzImporter, RunsAgainFromTheFirstPoint) {
  ListSource source(kFour);
  Import job(&source, false);
  job.Process();
  job.Process();
  EXPECT_EQ(job.added.size(), 8u);
}

TEST(XyzImporter, AsksTheSourceForExtentsAndNumber) {
  ListSource source(kFour);
  const Import job(&source, false);
  EXPECT_EQ(job.GetNumberOfPoints(), 4);
  Point minimum, maximum;
  EXPECT_TRUE(job.GetExtents(minimum, maximum));
  EXPECT_EQ(minimum, Point(1, 10, 100));
  EXPECT_EQ(maximum, Point(4, 40, 400));
}

TEST(XyzImporter, AskingForTheNumberInsideAPointCutsTheImportShort) {
  ListSource source(kFour);
  Import job(&source, false);
  job.atAdd = [&] { return job.GetNumberOfPoints() == 4; };
  EXPECT_TRUE(job.Process());
  EXPECT_EQ(job.added, (Added{1}));
}

TEST(XyzImporter, ANullSourceFails) {
  Import job(nullptr, true);
  job.SetProgress(0.5);
  EXPECT_FALSE(job.Process());
  EXPECT_EQ(job.GetProgress(), 0.0);
  EXPECT_EQ(job.GetDataSource(), nullptr);
  EXPECT_EQ(job.GetNumberOfPoints(), -1);
  Point minimum(1, 2, 3), maximum(4, 5, 6);
  EXPECT_FALSE(job.GetExtents(minimum, maximum));
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
  { XyzImporter job(new WatchedSource(gone), true); }
  EXPECT_EQ(gone, 1);
}

TEST(XyzImporter, LeavesASourceThatItDoesNotOwn) {
  int gone = 0;
  WatchedSource source(gone);
  { XyzImporter job(&source, false); }
  EXPECT_EQ(gone, 0);
}

}  // namespace
