// Rows of points turned into pixels against Cairo's matrix, which a program without a coordinate system would
// call point by point: on a map with north up and on a turned one, in a near cache, in a far one and in
// memory.

#include <cairo.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/geometry/CoordinateSystem.h"

namespace {

constexpr double kBar = 2.0;
constexpr double kSide = 1000.0;  // metres of the world window

using Points = std::vector<Point>;
using Pixels = std::vector<CPoint>;

Points MakePoints(std::size_t count) {
  std::mt19937_64 random(20250711);
  std::uniform_real_distribution<double> place(0, kSide);
  Points points(count);
  for (Point& point : points) point = Point(place(random), place(random), -place(random));
  return points;
}

CoordinateSystem MakeSystem(bool isTurned) {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(0, 0, 1920, 1080));
  system.SetSkew(30);
  system.SetRotationMode(isTurned ? ROTATIONMODE_SKEW : ROTATIONMODE_0);
  system.SetWorldWindow(Page(0, 0, kSide, kSide));
  return system;
}

// The same mapping.
cairo_matrix_t MatrixOf(const CoordinateSystem& system) {
  const bool isTurned = system.GetRotationMode() == ROTATIONMODE_SKEW;
  const double s = isTurned ? system.sinSkew : 0;
  const double c = isTurned ? system.cosSkew : 1;
  const double xx = system.scale.x * c;
  const double xy = system.scale.x * s;
  const double yx = -system.scale.y * s;
  const double yy = system.scale.y * c;
  cairo_matrix_t matrix;
  cairo_matrix_init(&matrix, xx, yx, xy, yy, system.pixelCentre.x - xx * system.worldCentre.x - xy * system.worldCentre.y,
                    system.pixelCentre.y - yx * system.worldCentre.x - yy * system.worldCentre.y);
  return matrix;
}

void PixelsByMatrix(const cairo_matrix_t& matrix, const Points& points, Pixels& pixels) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    double x = points[i].x;
    double y = points[i].y;
    cairo_matrix_transform_point(&matrix, &x, &y);
    pixels[i] = CPoint(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
  }
}

struct Place {
  double x;
  double y;
};

// The matrix alone, without heights to step over and without whole pixels to make.
void PlacesByMatrix(const cairo_matrix_t& matrix, std::vector<Place>& places) {
  for (Place& place : places) cairo_matrix_transform_point(&matrix, &place.x, &place.y);
}

// Rounding differs in the last digit, and so may a pixel in a million.
bool Agree(const Pixels& a, const Pixels& b) {
  std::size_t numDifferent = 0;
  for (std::size_t i = 0; i < a.size(); ++i) numDifferent += a[i] == b[i] ? 0 : 1;
  return numDifferent <= 1 + a.size() / 1000000;
}

bool Measure(Comparison& table, std::size_t count, bool isTurned) {
  const Points points = MakePoints(count);
  const CoordinateSystem system = MakeSystem(isTurned);
  const cairo_matrix_t matrix = MatrixOf(system);
  Pixels ours(count);
  Pixels theirs(count);
  std::vector<Place> places(count);
  const std::string what = std::to_string(count) + (isTurned ? " points, turned" : " points, north up");
  const double units = static_cast<double>(count);
  const auto row = [&] {
    system.WorldToPixel(points, ours.data());
    Keep(ours);
  };
  table.Row(
      what, units, "pt", kBar, row,
      [&] {
        PixelsByMatrix(matrix, points, theirs);
        Keep(theirs);
      },
      [&] {
        ReadOnce(points);
        WriteOnce(ours);
      });
  row();
  table.Row("  the peer: doubles in place, no pixels", units, "pt", Comparison::kNoBar, row, [&] {
    PlacesByMatrix(matrix, places);
    Keep(places);
  });
  return Agree(ours, theirs);
}

}  // namespace

int main() {
  Comparison table("world to pixel (peer: Cairo's matrix, point by point)");
  bool agree = true;
  for (const std::size_t count : {std::size_t{1000}, std::size_t{100000}, std::size_t{10000000}}) {
    for (const bool isTurned : {false, true}) agree = Measure(table, count, isTurned) && agree;
  }
  if (!agree) std::printf("the pixels differ\n");
  return agree ? table.Finish() : 1;
}
