// zel geometry: what it prints, and the pictures it writes.

#include "tests/apps/ZelFixture.h"

class ZelGeometry : public Zel {
 protected:
  std::string m_picture = m_folder.File("picture.svg");

  ProgramResult Clip(const std::string& page, const std::string& file) { return Run({"geometry", "clip", page, file, "-o", m_picture}); }
};

TEST_F(ZelGeometry, ClipPrintsRingsAreasAndWritesThePicture) {
  const std::string file = Write("square.txt", "# a square\n0 0 1\n20 0 1\n20 20 3\n0 20 3\n0 0 1\n");
  const ProgramResult result = Clip("-5,-5,10,10", file);
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "Ring 1 of 1: 5 points, area 100.000")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output), " 10.000 10.000 2.000\n")) << "the height is half way up";
  EXPECT_TRUE(Holds(result.output, "1 polygon of area 400.000; inside the page 1 ring of area 100.000"));
  const std::string svg = m_folder.Read("picture.svg");
  EXPECT_TRUE(svg.starts_with("<svg ") && svg.ends_with("</svg>\n"));
  EXPECT_TRUE(Holds(svg, "rings inside the page"));
}

TEST_F(ZelGeometry, ClipTakesThePageInAnyOrderAndPolygonsThatAreOpen) {
  const std::string file = Write("two.txt", "0;0\n20;0\n20;20\n0;20\n\n\n100,100\n110,100\n110,110\n");
  const ProgramResult result = Clip("10,10,-5,-5", file);
  EXPECT_TRUE(Holds(result.output, "2 polygons of area 450.000; inside the page 1 ring of area 100.000")) << result.output;
}

TEST_F(ZelGeometry, ASampleOfAHarbourIsClipped) {
  const ProgramResult result = Clip("120,80,520,360", Sample("geometry/harbour.txt"));
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "5 polygons of area")) << result.output;
}

TEST_F(ZelGeometry, OffsetPrintsBothLinesAndLiftsAtTheCorner) {
  const std::string file = Write("profile.txt", "0 0 -5\n100 0 -5\n\n100 0 -9\n200 0 -9\n");
  const ProgramResult result = Run({"geometry", "offset", file, "--offset", "1.5", "-o", m_picture});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const std::string output = OneBlank(result.output);
  EXPECT_TRUE(Holds(output, "section 0.000 0.000 0.000 -5.000\n")) << output;
  EXPECT_TRUE(Holds(output, "section 100.000 100.000 0.000 -9.000\n"));
  EXPECT_TRUE(Holds(output, "section 0.000 0.000 0.000 -3.500\n"));
  EXPECT_TRUE(Holds(output, "section 100.000 100.000 0.000 -7.500\n"));
  EXPECT_TRUE(Holds(m_folder.Read("picture.svg"), "offset line"));
}

TEST_F(ZelGeometry, OffsetTakesANegativeDistanceAndALevel) {
  const ProgramResult result =
      Run({"geometry", "offset", Sample("geometry/dredge-profile.txt"), "--offset", "-1.5", "--level", "-14", "-o", m_picture});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "Offset line"));
}

TEST_F(ZelGeometry, ContourShowsTheSixSides) {
  const ProgramResult result = Run({"geometry", "contour", Sample("geometry/vessel-contour.con"), "-o", m_picture});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  for (const char* const side : {"top", "bottom", "left", "right", "front", "back"}) {
    EXPECT_TRUE(Holds(result.output, side)) << result.output;
  }
  EXPECT_FALSE(Holds(result.output, "no points"));
}

TEST_F(ZelGeometry, ContourChecksTheRows) {
  const std::string file = Write("c.con", "[POINTS]\nPoint(1) = 0, 0, 0\nPoint(2) = 1 , 1, 0\nPoint(3) = 2, 2, 1\nPoint(5) = 3, 3, 0\n");
  const ProgramResult result = Run({"geometry", "contour", file, "-o", m_picture});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.output, "POINTS: 1 item not read; the numbers have a gap behind Point(3)")) << result.output;
  EXPECT_TRUE(Holds(result.output, "POINTS: Point(2) = \"1 , 1, 0\" is not \"x, y, code\""));
  EXPECT_TRUE(Holds(result.output, "POINTS: Point(1) does not begin a stroke"));
  EXPECT_TRUE(Holds(result.output, "POINTS: a stroke of one point draws nothing"));
  EXPECT_TRUE(Holds(result.output, "BACK POINTS: no points"));
}

TEST_F(ZelGeometry, BadFilesAndArgumentsAreToldByLine) {
  const std::string bad = Write("bad.txt", "0 0 0\n1 x 0\n");
  const ProgramResult result = Clip("0,0,1,1", bad);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "bad.txt:2: not a point: \"1 x 0\"")) << result.errors;
  for (const char* const text : {"", "1\n", "1 2 3 4\n", "nan 1 2\n", "inf 0 0\n", "1e999 0 0\n"}) {
    EXPECT_EQ(Clip("0,0,1,1", Write("bad.txt", text)).exitCode, 1) << text;
  }
  EXPECT_EQ(Clip("0,0,1", bad).exitCode, 2);
  EXPECT_EQ(Clip("0,0,1,1", m_folder.Path()).exitCode, 1);
  EXPECT_EQ(Run({"geometry", "contour", m_folder.File("none.con")}).exitCode, 1);
  EXPECT_EQ(Run({"geometry", "clip", "0,0,1,1", Sample("geometry/harbour.txt"), "-o", m_folder.File("no/p.svg")}).exitCode, 1);
}
