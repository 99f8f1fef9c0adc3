// A tide file of ten million records beside a std::map that holds the same: opening, memory, search, walk,
// and adding and deleting in the middle.

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/sonar/TideFile.h"

namespace {

constexpr int kBarRecords = 10000000;
constexpr int kQuestions = 200000;
constexpr double kStep = 60000.0;  // a value a minute
constexpr double kMostSeconds = 2.0;
constexpr double kMostMemory = 1.5;
constexpr double kMostNanosecondsAStep = 10.0;

using Map = std::map<double, double>;

std::string MakeFile(int records) {
  char name[] = "/tmp/TideFileBenchXXXXXX";
  const int descriptor = mkstemp(name);
  std::FILE* const file = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
  if (file == nullptr) {
    std::perror(name);
    std::exit(1);
  }
  for (int i = 0; i < records; ++i) {
    const double record[2] = {i * kStep, std::sin(i * 0.00844)};
    std::fwrite(record, sizeof record, 1, file);
  }
  std::fclose(file);
  return name;
}

void ReadMap(const std::string& name, Map& map) {
  std::FILE* const file = std::fopen(name.c_str(), "rb");
  std::vector<double> block(8192);
  for (std::size_t count = 1; count > 0;) {
    count = std::fread(block.data(), 2 * sizeof(double), block.size() / 2, file);
    for (std::size_t i = 0; i < count; ++i) map.insert_or_assign(map.end(), block[2 * i], block[2 * i + 1]);
  }
  std::fclose(file);
}

double SecondsNow() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

double MegabytesInUse() {
  const auto use = mallinfo2();
  return static_cast<double>(use.uordblks + use.hblkhd) / 1e6;
}

bool Report(const char* what, double value, const char* unit, double most) {
  std::printf("%-44s %11.4g %-9s at most %.4g  %s\n", what, value, unit, most, value <= most ? "ok" : "short");
  return value <= most;
}

double WalkTide(TideFile& tide) {
  double sum = 0.0, time = 0.0, value = 0.0;
  for (bool more = tide.GetFirstTideValue(time, value); more; more = tide.GetNextTideValue(time, value)) sum += value;
  return sum;
}

double WalkMap(const Map& map) {
  double sum = 0.0;
  for (const auto& entry : map) sum += entry.second;
  return sum;
}

bool Compare(int records) {
  const std::string name = MakeFile(records);
  bool allMet = true;

  const double before = MegabytesInUse();
  double start = SecondsNow();
  auto tide = std::make_unique<TideFile>();
  if (!tide->FileOpen(name, false) || tide->GetNumValues() != records) return false;
  const double tideSeconds = SecondsNow() - start;
  const double tideMegabytes = MegabytesInUse() - before;
  start = SecondsNow();
  auto map = std::make_unique<Map>();
  ReadMap(name, *map);
  const double mapSeconds = SecondsNow() - start;
  const double mapMegabytes = MegabytesInUse() - before - tideMegabytes;

  std::printf("%s records: %.1f MB and %.3f s, a map of them %.1f MB and %.3f s\n", Grouped(static_cast<std::size_t>(records)).c_str(),
              tideMegabytes, tideSeconds, mapMegabytes, mapSeconds);
  allMet &= Report("opening", tideSeconds, "s", kMostSeconds);
  allMet &= Report("memory as a part of the map's", tideMegabytes / mapMegabytes, "", kMostMemory);
  start = SecondsNow();
  if (WalkTide(*tide) != WalkMap(*map)) return false;
  start = SecondsNow();
  Keep(WalkTide(*tide));
  allMet &= Report("a step of a walk", (SecondsNow() - start) / records * 1e9, "ns", kMostNanosecondsAStep);

  std::mt19937 random(16);
  std::vector<double> times(kQuestions);
  for (double& time : times) time = static_cast<double>(random() % static_cast<unsigned int>(records)) * kStep + 1.0;

  const std::vector<double> plain(2 * static_cast<std::size_t>(records));
  Comparison table("tide values (peer: std::map)", 5);
  table.Row(
      "walk", records, "st", 1.0, [&] { Keep(WalkTide(*tide)); }, [&] { Keep(WalkMap(*map)); }, [&] { ReadOnce(plain); });
  table.Row(
      "the value on or before a random time", kQuestions, "op", 1.0,
      [&] {
        for (double time : times) {
          double value = 0.0;
          tide->GetValueOnOrBefore(time, value);
          Keep(value);
        }
      },
      [&] {
        for (const double time : times) Keep(std::prev(map->upper_bound(time))->second);
      });
  table.Row(
      "adding at random times, then deleting there", 2.0 * kQuestions, "op", 1.0,
      [&] {
        for (const double time : times) tide->AddTideValue(time, 0.0);
        for (const double time : times) tide->DeleteTideValue(time);
      },
      [&] {
        for (const double time : times) (*map)[time] = 0.0;
        for (const double time : times) map->erase(time);
      });

  const int added = records / 10;
  std::vector<double> shuffled(static_cast<std::size_t>(added));
  std::iota(shuffled.begin(), shuffled.end(), 0.0);
  std::shuffle(shuffled.begin(), shuffled.end(), random);
  const auto addAll = [&](const char* what, double bar) {
    table.Row(
        what, added, "op", bar,
        [&] {
          TideFile series;
          for (const double time : shuffled) series.AddTideValue(time, 0.0);
          Keep(series.GetNumValues());
        },
        [&] {
          Map series;
          for (const double time : shuffled) series[time] = 0.0;
          Keep(series.size());
        });
  };
  addAll("a tenth as many added in random order", Comparison::BarAt(records == kBarRecords, 1.0));
  std::sort(shuffled.rbegin(), shuffled.rend());
  addAll("a tenth added from the last to the first", Comparison::kNoBar);
  unlink(name.c_str());
  return table.Finish() == 0 && allMet;
}

}  // namespace

int main() { return AtEachSize({100000, 1000000, kBarRecords}, Compare); }
