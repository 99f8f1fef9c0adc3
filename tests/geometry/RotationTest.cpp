#include "zelbase/geometry/Rotation.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

namespace {

constexpr double kDegree = 0.017453292519943;

void ExpectNear(const Point& a, const Point& b) {
  EXPECT_NEAR(a.x, b.x, 1e-10);
  EXPECT_NEAR(a.y, b.y, 1e-10);
  EXPECT_NEAR(a.z, b.z, 1e-10);
}

TEST(Rotation, Rotation2DTurnsClockwiseAndAddsTheCentre) {
  double x = 0;
  double y = 0;
  Rotation2D(10, 20, 0, 1, 90, x, y);
  EXPECT_NEAR(x, 11, 1e-12);
  EXPECT_NEAR(y, 20, 1e-12);
  Rotation2D(10, 20, 3, 0, 180, x, y);
  EXPECT_NEAR(x, 7, 1e-12);
  EXPECT_NEAR(y, 20, 1e-12);
}

TEST(Rotation, Rotation2DWorksInPlace) {
  double x = 0;
  double y = 1;
  Rotation2D(0, 0, x, y, 30, x, y);
  EXPECT_NEAR(x, 0.5, 1e-12);
  EXPECT_NEAR(y, std::sqrt(0.75), 1e-12);
}

// Each axis by itself, a quarter turn: the first of the pair has the role of x.
TEST(Rotation, Rotation3DTurnsEachPairTheStatedWay) {
  Point out;
  Rotation3D(Point(0, 0, 1), Point(0, -90, 0), out);  // x and z by +90: z goes to x
  ExpectNear(out, Point(1, 0, 0));
  Rotation3D(Point(0, 0, 1), Point(90, 0, 0), out);  // y and z by +90: z goes to y
  ExpectNear(out, Point(0, 1, 0));
  Rotation3D(Point(0, 1, 0), Point(0, 0, 90), out);  // x and y by +90: y goes to x
  ExpectNear(out, Point(1, 0, 0));
}

TEST(Rotation, Rotation3DTurnsByYFirstThenXThenZ) {
  Point out;
  // By y: (0, 0, 1) to (-1, 0, 0); x leaves it; by z: x to -y, so (-1, 0) goes to (0, 1).
  Rotation3D(Point(0, 0, 1), Point(90, 90, 90), out);
  ExpectNear(out, Point(0, 1, 0));
}

TEST(Rotation, Rotation3DWorksInPlaceAndIntoTheAngles) {
  const Point in(1, 2, 3);
  const Point angles(10, 20, 30);
  Point out;
  Rotation3D(in, angles, out);
  Point same = in;
  Rotation3D(same, angles, same);
  EXPECT_EQ(same, out);
  Point intoAngles = angles;
  Rotation3D(in, intoAngles, intoAngles);
  EXPECT_EQ(intoAngles, out);
}

TEST(RotationLong, RandomTurnsAgreeWithASecondTranscription) {
  EdgeValues random(7106);
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point in = random.AnyPoint();
    const Point by(random.Bearing(), random.Bearing(), random.Bearing());
    // One plane after the other, over an array; each row names the x role, the y role and the angle.
    double v[3] = {in.x, in.y, in.z};
    const struct {
      int first, second;
      double angle;
    } rows[] = {{0, 2, -by.y}, {1, 2, by.x}, {0, 1, by.z}};
    for (const auto& row : rows) {
      const double a = row.angle * kDegree;
      const double first = std::cos(a) * v[row.first] + std::sin(a) * v[row.second] + 0.0;
      const double second = std::cos(a) * v[row.second] - std::sin(a) * v[row.first] + 0.0;
      v[row.first] = first;
      v[row.second] = second;
    }
    Point out;
    Rotation3D(in, by, out);
    ASSERT_TRUE(Same(out, Point(v[0], v[1], v[2]))) << in.ToString() << ' ' << by.ToString();
    if (std::isfinite(by.x) && std::isfinite(by.y) && std::isfinite(by.z) && std::fabs(by.x) + std::fabs(by.y) + std::fabs(by.z) < 1e4 &&
        in.Dist3D(Point()) < 1e8) {
      ASSERT_NEAR(out.Dist3D(Point()), in.Dist3D(Point()), 1e-6);
    }
  }
}

}  // namespace
