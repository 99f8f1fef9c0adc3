// A source of positions with everything under it failing in turn: memory, the system's calls, the file service.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "adapters/xyz/XyzTextSource.h"
#include "tests/faults/FaultRuns.h"

namespace {

TEST(XyzFaultsLong, OpeningWalkingAndLookingThroughTheWhole) {
  const TemporaryFolder folder;
  const std::string name = folder.File("a file name that is too long for a short string");
  FaultCase<XyzTextSource> what;
  what.mayHold = 1;
  what.prepare = [&] {
    std::string text = "x y z\n";
    for (int i = 0; i < 60; ++i) text += std::to_string(i) + ".5 " + std::to_string(2 * i) + " -3.25\n";
    folder.Write("a file name that is too long for a short string", text + "broken line here\n" + std::string(9000, '#') + "\n1 2 3\n");
  };
  std::string walked;
  what.run = [&](XyzTextSource& source) {
    walked.clear();
    if (!source.Open(name)) return false;
    TimePoint point;
    int count = 0;
    double sum = 0.0;
    for (bool more = source.GetFirstPoint(point); more; more = source.GetNextPoint(point)) {
      ++count;
      sum += point.position.x + point.position.y + point.position.z;
    }
    if (source.Result() != FileResult::Ok) return false;
    const bool whole = source.Whole() != nullptr && source.GetNumberOfPoints() == count;
    walked = std::to_string(count) + " " + std::to_string(sum) + " " + std::to_string(source.SoFar().brokenLines);
    return whole;
  };
  what.picture = [&](XyzTextSource&) { return walked; };
  what.afterFailure = [](XyzTextSource& source, RunEnd end, const std::string&) {
    if (end == RunEnd::False) {
      EXPECT_NE(source.Result(), FileResult::Ok);
    }
  };
  FaultRuns<XyzTextSource> runs(folder, std::move(what));
  runs.All();
  EXPECT_GE(runs.Faults(), 100u);
}

}  // namespace
