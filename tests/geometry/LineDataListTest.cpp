#include "zelbase/geometry/LineDataList.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>

#include "tests/geometry/ProfileTestHelp.h"
#include "tests/support/ChildProcess.h"

namespace {

// Makes lines of as many points as `points`, notes the names, and counts its own end.
class NotingCreator : public LineDataICreator {
 public:
  explicit NotingCreator(int points = 1, int* destroyed = nullptr) : m_points(points), m_destroyed(destroyed) {}
  ~NotingCreator() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
    if (onEnd) onEnd();
  }
  LineData* Create(const std::string& name) override {
    lastName = name;
    if (m_points < 0) return nullptr;
    return new SetLine(ProfilePoints(static_cast<std::size_t>(m_points)));
  }

  std::string lastName;
  std::function<void()> onEnd;

 private:
  int m_points;
  int* m_destroyed;
};

// The number of points of a line of that type, -1 without a line.
int PointsMade(LineDataList& list, unsigned int type) {
  const std::unique_ptr<LineData> line(list.Create(type, "a name"));
  return line == nullptr ? -1 : line->NumDataPoints();
}

TEST(LineDataList, AnUnknownTypeGivesNull) {
  LineDataList list;
  EXPECT_EQ(list.Create(0, "a name"), nullptr);
  list.RegisterLineData(7, new NotingCreator);
  EXPECT_EQ(list.Create(8, "a name"), nullptr);
}

TEST(LineDataList, CreatesByTypeAndHandsOnTheName) {
  LineDataList list;
  NotingCreator* const creator = new NotingCreator(3);
  list.RegisterLineData(7, creator);
  list.RegisterLineData(std::numeric_limits<unsigned int>::max(), new NotingCreator(4));
  EXPECT_EQ(PointsMade(list, 7), 3);
  EXPECT_EQ(creator->lastName, "a name");
  EXPECT_EQ(PointsMade(list, std::numeric_limits<unsigned int>::max()), 4);
}

TEST(LineDataList, EachLineIsANewOne) {
  LineDataList list;
  list.RegisterLineData(7, new NotingCreator);
  const std::unique_ptr<LineData> first(list.Create(7, "a"));
  const std::unique_ptr<LineData> second(list.Create(7, "a"));
  EXPECT_NE(first, second);
}

TEST(LineDataList, ACreatorMayGiveNull) {
  LineDataList list;
  list.RegisterLineData(7, new NotingCreator(-1));
  EXPECT_EQ(list.Create(7, "a name"), nullptr);
}

TEST(LineDataList, TheFirstOfATypeStaysAndTheRefusedOneIsItsCallers) {
  int refusedDestroyed = 0;
  const auto refused = std::make_unique<NotingCreator>(4, &refusedDestroyed);
  {
    LineDataList list;
    list.RegisterLineData(7, new NotingCreator(3));
    list.RegisterLineData(7, refused.get());
    EXPECT_EQ(PointsMade(list, 7), 3);
  }
  EXPECT_EQ(refusedDestroyed, 0);
}

TEST(LineDataList, ANullCreatorIsIgnored) {
  LineDataList list;
  list.RegisterLineData(7, nullptr);
  EXPECT_EQ(list.Create(7, "a name"), nullptr);
  list.RegisterLineData(7, new NotingCreator(3));
  EXPECT_EQ(PointsMade(list, 7), 3);
}

TEST(LineDataList, CreatorsGoWithTheList) {
  int destroyed = 0;
  {
    LineDataList list;
    list.RegisterLineData(7, new NotingCreator(1, &destroyed));
    list.RegisterLineData(8, new NotingCreator(1, &destroyed));
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 2);
}

TEST(LineDataList, CopiesShareTheCreatorsAndTheLastDestroysThemOnce) {
  int destroyed = 0;
  auto list = std::make_unique<LineDataList>();
  list->RegisterLineData(7, new NotingCreator(3, &destroyed));
  auto copy = std::make_unique<LineDataList>(*list);
  LineDataList assigned;
  assigned = *copy;
  list.reset();
  EXPECT_EQ(PointsMade(*copy, 7), 3);
  copy.reset();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(PointsMade(assigned, 7), 3);
  assigned = LineDataList();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(assigned.Create(7, "a name"), nullptr);
}

TEST(LineDataList, ACopyRegistersForItself) {
  LineDataList list;
  LineDataList copy(list);
  copy.RegisterLineData(7, new NotingCreator(3));
  EXPECT_EQ(list.Create(7, "a name"), nullptr);
}

TEST(LineDataList, AssignmentToItselfKeepsTheCreators) {
  int destroyed = 0;
  LineDataList list;
  list.RegisterLineData(7, new NotingCreator(3, &destroyed));
  LineDataList& same = list;
  list = same;
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(PointsMade(list, 7), 3);
}

TEST(LineDataList, OneCreatorForTwoTypesIsDestroyedOnce) {
  int destroyed = 0;
  {
    LineDataList list;
    NotingCreator* const creator = new NotingCreator(3, &destroyed);
    list.RegisterLineData(7, creator);
    list.RegisterLineData(8, creator);
    EXPECT_EQ(PointsMade(list, 7), 3);
    EXPECT_EQ(PointsMade(list, 8), 3);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(LineDataList, ACreatorMayAskTheListWhileItGoes) {
  int destroyed = 0;
  int pointsOfOther = 0;
  {
    LineDataList list;
    NotingCreator* const creator = new NotingCreator(3, &destroyed);
    list.RegisterLineData(7, creator);
    list.RegisterLineData(8, new NotingCreator(4, &destroyed));
    creator->onEnd = [&] {
      EXPECT_EQ(list.Create(7, "a name"), nullptr);
      pointsOfOther = PointsMade(list, 8);
      list.RegisterLineData(9, new NotingCreator(5, &destroyed));
    };
  }
  EXPECT_EQ(pointsOfOther, 4);
  EXPECT_EQ(destroyed, 3);
}

TEST(LineDataList, DestroysDerivedCreatorsAndListsThroughTheirBases) {
  static_assert(std::has_virtual_destructor_v<LineDataICreator>);
  static_assert(std::has_virtual_destructor_v<LineDataList>);
  static_assert(std::is_abstract_v<LineDataICreator>);
}

TEST(LineDataList, ThereIsOne) {
  LineDataList* onThread = nullptr;
  std::thread([&] { onThread = &LineDataList::GetLineDataList(); }).join();
  EXPECT_EQ(onThread, &LineDataList::GetLineDataList());
}

TEST(LineDataList, TheOneListDestroysItsCreatorsAtExit) {
  ChildProcess child(
      [] {
        NotingCreator* const creator = new NotingCreator;
        creator->onEnd = [] {
          // Still there, and without the creator that goes.
          if (LineDataList::GetLineDataList().Create(7, "a name") == nullptr) std::fputs("gone", stdout);
          std::fflush(stdout);
        };
        LineDataList::GetLineDataList().RegisterLineData(7, creator);
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "gone");
}

}  // namespace
