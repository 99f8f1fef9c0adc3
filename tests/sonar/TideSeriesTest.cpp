#include "zelbase/sonar/detail/TideSeries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <random>
#include <utility>
#include <vector>

namespace {

using zelbase::detail::TideSeries;
using Position = TideSeries::Position;
using Entries = std::vector<std::pair<double, double>>;

Entries EntriesOf(const TideSeries& series) {
  Entries entries;
  for (Position position = series.First(); !position.IsEnd(); position = series.Next(position)) {
    entries.emplace_back(series.At(position).time, series.At(position).value);
  }
  return entries;
}

Entries BackwardsOf(const TideSeries& series) {
  Entries entries;
  for (Position position = series.Last(); !position.IsEnd();) {
    entries.emplace_back(series.At(position).time, series.At(position).value);
    const Position before = series.Previous(position);
    if (before == position) break;
    position = before;
  }
  return {entries.rbegin(), entries.rend()};
}

void ExpectSame(const TideSeries& series, const std::map<double, double>& map) {
  const Entries expected(map.begin(), map.end());
  EXPECT_EQ(EntriesOf(series), expected);
  EXPECT_EQ(BackwardsOf(series), expected);
  EXPECT_EQ(series.Size(), map.size());
  EXPECT_EQ(series.IsEmpty(), map.empty());
}

// The order in which a few thousand times come: many chunks come about, are split, thinned and put together.
std::vector<double> Times(const char* order, std::size_t count) {
  std::vector<double> times(count);
  for (std::size_t i = 0; i < count; ++i) times[i] = static_cast<double>(i);
  std::mt19937 random(5);
  const std::string name = order;
  if (name == "descending") std::reverse(times.begin(), times.end());
  if (name == "random") std::shuffle(times.begin(), times.end(), random);
  if (name == "middle") {
    std::vector<double> inwards;
    for (std::size_t i = 0; i < count; ++i) inwards.push_back(i % 2 == 0 ? times[i / 2] : times[count - 1 - i / 2]);
    times = inwards;
  }
  return times;
}

class TideSeriesOrders : public testing::TestWithParam<const char*> {};

TEST_P(TideSeriesOrders, AreAllTheSameInTheEnd) {
  TideSeries series;
  std::map<double, double> map;
  Position kept;
  for (const double time : Times(GetParam(), 5000)) {
    series.Set(time, -time, kept);
    map[time] = -time;
  }
  EXPECT_TRUE(kept.IsEnd());
  ExpectSame(series, map);
}

TEST_P(TideSeriesOrders, LeaveTheKeptPositionOnItsRecordWhileOthersComeAndGo) {
  for (const double keptTime : {0.0, 1.0, 777.0, 2500.0, 4999.0}) {
    TideSeries series;
    Position kept;
    series.Set(keptTime, 1.0, kept);
    kept = series.First();
    for (const double time : Times(GetParam(), 5000)) {
      if (time != keptTime) series.Set(time, 0.0, kept);
      ASSERT_EQ(series.At(kept).time, keptTime);
    }
    for (const double time : Times(GetParam(), 5000)) {
      if (time != keptTime) series.Erase(series.Find(time), kept);
      ASSERT_EQ(series.At(kept).time, keptTime);
    }
    EXPECT_EQ(EntriesOf(series), (Entries{{keptTime, 1.0}}));
    series.Erase(kept, kept);
    EXPECT_TRUE(kept.IsEnd());
    EXPECT_TRUE(series.IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(TideSeries, TideSeriesOrders, testing::Values("ascending", "descending", "random", "middle"));

TEST(TideSeries, ErasingTheKeptRecordMovesOnToTheNext) {
  TideSeries series;
  Position kept;
  for (int time = 0; time < 3000; ++time) series.Set(time, 0.0, kept);
  kept = series.First();
  for (int time = 0; time < 3000; ++time) {
    ASSERT_EQ(series.At(kept).time, time);
    series.Erase(kept, kept);
  }
  EXPECT_TRUE(kept.IsEnd());
  EXPECT_TRUE(series.IsEmpty());
}

TEST(TideSeries, TheEndStaysTheEnd) {
  TideSeries series;
  Position kept;
  for (int time = 0; time < 2000; ++time) series.Set(time, 0.0, kept);
  series.Set(-1.0, 0.0, kept);
  series.Set(500.5, 0.0, kept);
  series.Erase(series.First(), kept);
  series.Erase(series.Last(), kept);
  EXPECT_TRUE(kept.IsEnd());
  EXPECT_EQ(series.Next(kept), Position());
}

TEST(TideSeries, SearchesAsAMapDoes) {
  TideSeries series;
  std::map<double, double> map;
  Position kept;
  for (int i = 0; i < 3000; ++i) {
    series.Set(i * 2.0, i, kept);
    map[i * 2.0] = i;
  }
  const auto expectSame = [&](Position position, std::map<double, double>::iterator found) {
    ASSERT_EQ(position.IsEnd(), found == map.end());
    if (!position.IsEnd()) {
      EXPECT_EQ(series.At(position).time, found->first);
    }
  };
  for (double time = -3.0; time < 6005.0; time += 1.0) {
    expectSame(series.LowerBound(time), map.lower_bound(time));
    expectSame(series.UpperBound(time), map.upper_bound(time));
    expectSame(series.Find(time), map.find(time));
  }
}

TEST(TideSeries, AnEmptySeriesHasOnlyTheEnd) {
  TideSeries series;
  EXPECT_TRUE(series.First().IsEnd());
  EXPECT_TRUE(series.Last().IsEnd());
  EXPECT_TRUE(series.Find(0.0).IsEnd());
  EXPECT_TRUE(series.LowerBound(0.0).IsEnd());
  EXPECT_TRUE(series.Previous(Position()).IsEnd());
  EXPECT_TRUE(series.Next(Position()).IsEnd());
}

TEST(TideSeries, ARepeatedTimeKeepsItsRecordAndItsSignOfZero) {
  TideSeries series;
  Position kept;
  series.Set(-0.0, 1.0, kept);
  series.Set(0.0, 2.0, kept);
  EXPECT_EQ(series.Size(), 1u);
  EXPECT_TRUE(std::signbit(series.At(series.First()).time));
  EXPECT_EQ(series.At(series.Find(0.0)).value, 2.0);
}

TEST(TideSeries, CopiesAreOfTheirOwn) {
  TideSeries series;
  Position kept;
  for (int time = 0; time < 1500; ++time) series.Set(time, 0.0, kept);
  TideSeries copy(series);
  copy.Set(0.5, 0.0, kept);
  copy.Erase(copy.Last(), kept);
  series.Clear();
  EXPECT_TRUE(series.IsEmpty());
  EXPECT_EQ(copy.Size(), 1500u);
  EXPECT_EQ(copy.At(copy.Last()).time, 1498.0);
}

TEST(TideSeries, RandomScriptsGoAsOnAMap) {
  std::mt19937 random(6);
  for (int round = 0; round < 20; ++round) {
    TideSeries series;
    std::map<double, double> map;
    Position kept;
    const unsigned int range = 1u << (4 + round % 10);
    for (int i = 0; i < 4000; ++i) {
      const auto time = static_cast<double>(random() % range);
      // Grows for a while, then shrinks.
      if (random() % 4 < (i < 2000 ? 3u : 1u)) {
        series.Set(time, i, kept);
        map[time] = i;
      } else if (const Position found = series.Find(time); !found.IsEnd()) {
        series.Erase(found, kept);
        map.erase(time);
      }
    }
    ExpectSame(series, map);
  }
}

}  // namespace
