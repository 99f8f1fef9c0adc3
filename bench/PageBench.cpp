// The page's line clipper and its test of a point against those of Anti-Grain Geometry (a drawing library),
// on a million random segments of which a third are visible, and on their starts.

#include <agg_basics.h>
#include <agg_clip_liang_barsky.h>

#include <cstddef>
#include <cstdio>
#include <random>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"

namespace {

constexpr std::size_t kBarSegments = 1000000;
constexpr std::size_t kMostPoints = 50000;  // what a near cache holds
constexpr double kHalf = 100.0;             // half a side of the page
constexpr double kBar = 1.0;

using Lines = std::vector<Line>;
using Box = agg::rect_base<double>;

Lines MakeLines(std::size_t count) {
  std::mt19937 random(20240608);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  Lines lines(count);
  for (Line& line : lines) {
    const Point middle(215 * unit(random), 215 * unit(random), 0);
    line = Line(middle + Point(80 * unit(random), 80 * unit(random), 0), middle + Point(80 * unit(random), 80 * unit(random), 0));
  }
  return lines;
}

std::vector<Point> StartsOf(const Lines& lines) {
  std::vector<Point> points;
  for (std::size_t i = 0; i < std::min(lines.size(), kMostPoints); ++i) points.push_back(lines[i].start);
  return points;
}

// Each counts what is visible and sums what was cut, so that neither can be left out.
struct Seen {
  long lines = 0;
  double sum = 0;
};

Seen ClipOurs(const Lines& lines, const Page& page) {
  Seen seen;
  Line out;
  for (const Line& line : lines) {
    if (!page.ClipLine(line, &out)) continue;
    ++seen.lines;
    seen.sum += out.start.x + out.end.y;
  }
  return seen;
}

Seen ClipSegment(const Lines& lines, const Box& box) {
  Seen seen;
  for (const Line& line : lines) {
    double x1 = line.start.x;
    double y1 = line.start.y;
    double x2 = line.end.x;
    double y2 = line.end.y;
    if (agg::clip_line_segment(&x1, &y1, &x2, &y2, box) >= 4) continue;
    ++seen.lines;
    seen.sum += x1 + y2;
  }
  return seen;
}

Seen ClipLiangBarsky(const Lines& lines, const Box& box) {
  Seen seen;
  double x[4];
  double y[4];
  for (const Line& line : lines) {
    const unsigned int count = agg::clip_liang_barsky(line.start.x, line.start.y, line.end.x, line.end.y, box, x, y);
    if (count < 2) continue;
    ++seen.lines;
    seen.sum += x[0] + y[count - 1];
  }
  return seen;
}

bool Compare(Comparison& table, std::size_t size) {
  const Lines lines = MakeLines(size);
  const Page page(-kHalf, -kHalf, kHalf, kHalf);
  const Box box(-kHalf, -kHalf, kHalf, kHalf);
  const Seen ours = ClipOurs(lines, page);
  const Seen theirs = ClipSegment(lines, box);
  std::printf("%ld of %zu segments visible, the peer sees %ld\n", ours.lines, lines.size(), theirs.lines);

  const double count = static_cast<double>(size);
  const double bar = Comparison::BarAt(size == kBarSegments, kBar);
  const std::string of = ", " + Grouped(size);
  const auto limit = [&] { ReadOnce(lines); };
  const auto clip = [&] { Keep(ClipOurs(lines, page)); };
  table.Row(
      "ClipLine, clip_line_segment" + of, count, "ln", bar, clip, [&] { Keep(ClipSegment(lines, box)); }, limit);
  table.Row(
      "ClipLine, clip_liang_barsky" + of, count, "ln", bar, clip, [&] { Keep(ClipLiangBarsky(lines, box)); }, limit);

  const std::vector<Point> points = StartsOf(lines);
  const auto countInside = [&points](auto isInside) {
    long inside = 0;
    for (const Point& point : points) inside += static_cast<long>(isInside(point));
    Keep(inside);
  };
  table.Row(
      "IsPointInPage, hit_test, " + Grouped(points.size()), static_cast<double>(points.size()), "pt", bar,
      [&] { countInside([&](const Point& point) { return page.IsPointInPage(point); }); },
      [&] { countInside([&](const Point& point) { return box.hit_test(point.x, point.y); }); }, [&] { ReadOnce(points); });
  return ours.lines == theirs.lines;
}

}  // namespace

int main() {
  Comparison table("page (peer: Anti-Grain Geometry)");
  bool agree = true;
  for (const std::size_t size : {std::size_t{1000}, std::size_t{30000}, kBarSegments}) agree = Compare(table, size) && agree;
  return agree ? table.Finish() : 1;
}
