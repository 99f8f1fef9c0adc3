// The pictures of a survey, as files.

#include <algorithm>
#include <cmath>
#include <random>

#include "survey/ChartFurniture.h"
#include "survey/ChartLayout.h"
#include "survey/ChartSoundings.h"
#include "survey/ProfileLayout.h"
#include "tests/apps/ChartFixture.h"
#include "zelbase/xml/XmlReader.h"

#if defined(__SANITIZE_ADDRESS__)
// The fonts' library keeps what it has read until the end of the process, out of the leak check's sight.
extern "C" const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
#endif

using namespace zel;

namespace {

class SurveyPicturesLong : public testing::Test {
 protected:
  // All files of a survey; the PNG of the chart comes back.
  PngFile Draw(const Survey& survey) {
    std::string reason;
    const SurveyChart chart(survey, {});
    EXPECT_TRUE(chart.SavePng(m_folder.File("chart.png"), reason)) << reason;
    EXPECT_TRUE(chart.SaveSvg(m_folder.File("chart.svg"), reason)) << reason;
    EXPECT_TRUE(chart.SavePdf(m_folder.File("chart.pdf"), reason)) << reason;
    EXPECT_TRUE(SaveProfilePng(survey, m_folder.File("profile.png"), reason)) << reason;
    return PngFile(m_folder.File("chart.png"));
  }

  TemporaryFolder m_folder;
};

// The pixel of a place in chart.png.
CPoint PixelOf(const Survey& survey, const Point& place) { return ViewOf(survey).System(sheet::kPngParts).WorldToPixel(place); }

// Soundings ten metres apart, deeper to the east.
Survey Slope() {
  std::vector<Point> soundings;
  for (int i = 0; i < 60; ++i) {
    for (int j = 0; j < 40; ++j) soundings.emplace_back(512000 + 10 * i, 5752000 + 10 * j, -0.3 * i - 0.5);
  }
  return SurveyOf(std::move(soundings));
}

}  // namespace

TEST(ChartSoundings, EachPixelHasTheColourOfItsShoalestSounding) {
  const Survey survey = SurveyOf({Point(0, 0, -9), Point(0, 0, -5), Point(0, 0, -7), Point(100, 100, -15)});
  const MapView view = ViewOf(survey);
  const ChartSoundings soundings(survey.soundings, view, {}, {});
  for (const auto& [image, parts] :
       {std::pair{soundings.Coarse(survey.depthColours), sheet::kPngParts}, {soundings.Fine(survey.depthColours), sheet::kFineParts}}) {
    for (const Point& place : {Point(0, 0, -5), Point(100, 100, -15)}) {
      const CPoint pixel = view.System(parts).WorldToPixel(place);
      const std::size_t at = static_cast<std::size_t>(pixel.y - image.top) * static_cast<std::size_t>(image.width) +
                             static_cast<std::size_t>(pixel.x - image.left);
      ASSERT_LT(at, image.pixels.size());
      EXPECT_EQ(image.pixels[at], 0xFF000000u | RgbOf(survey.depthColours.GetColor(-place.z)));
    }
  }
}

TEST(ChartSoundings, AreToldWithTheirPlacesAndStopWhenAsked) {
  std::vector<Point> many(50000, Point(5, 5, -1));
  many.front() = Point(0, 0, -1);
  const MapView view = ViewOf(SurveyOf(many));
  std::size_t told = 0;
  double x = 0.0, y = 0.0;
  const ChartSoundings all(many, view,
                           [&](double atX, double atY, double, std::size_t index) {
                             EXPECT_EQ(index, told++);
                             x = atX;
                             y = atY;
                           },
                           {});
  EXPECT_EQ(told, many.size());
  Point pixel;
  view.System(1200).WorldToPixel(Point(5, 5, 0), &pixel);
  EXPECT_NEAR(x, pixel.x / 1200.0, 0.1);
  EXPECT_NEAR(y, pixel.y / 1200.0, 0.1);
  told = 0;
  const ChartSoundings some(
      many, view, [&](double, double, double, std::size_t) { ++told; }, [](double) { return false; });
  EXPECT_LT(told, 10000u);
}

TEST(ChartSoundingsLong, DotsAreSmallWhereSoundingsAreDense) {
  std::mt19937 engine(1);
  std::uniform_real_distribution<double> any(0.0, 1000.0);
  std::vector<Point> dense;
  for (int i = 0; i < 300000; ++i) dense.emplace_back(any(engine), any(engine), -1);
  const std::vector<Point> sparse(dense.begin(), dense.begin() + 1000);
  const ChartSoundings many(dense, ViewOf(SurveyOf(dense)), {}, {}), few(sparse, ViewOf(SurveyOf(sparse)), {}, {});
  EXPECT_LE(many.Diameter(), 9);
  EXPECT_EQ(few.Diameter(), 13);
  const PixelImage image = many.Coarse(SurveyOf({}).depthColours);
  const auto painted = static_cast<double>(std::ranges::count_if(image.pixels, [](std::uint32_t pixel) { return pixel != 0; }));
  EXPECT_GT(painted / static_cast<double>(image.pixels.size()), 0.75) << "they make a surface";
}

TEST_F(SurveyPicturesLong, SoundingsHaveTheColourOfTheirDepth) {
  const Survey survey = Slope();
  const PngFile png = Draw(survey);
  ASSERT_TRUE(png.IsGood());
  EXPECT_EQ(png.Width(), sheet::kWidth * sheet::kPngParts);
  EXPECT_EQ(png.Height(), sheet::kHeight * sheet::kPngParts);
  int seen = 0;
  for (std::size_t i = 0; i < survey.soundings.size(); i += 7) {
    const Point& sounding = survey.soundings[i];
    const CPoint pixel = PixelOf(survey, sounding);
    seen += png.At(pixel.x, pixel.y) == RgbOf(survey.depthColours.GetColor(-sounding.z)) ? 1 : 0;
  }
  const auto asked = static_cast<int>(survey.soundings.size() / 7);
  EXPECT_GT(seen, asked / 2) << "all but those below a label or a grid line";
}

TEST_F(SurveyPicturesLong, TheOverlayLiesWhereItBelongs) {
  Survey survey = SurveyOf({Point(512000, 5752000, -5), Point(512590, 5752390, -9)});
  survey.workArea.push_back({Point(511900, 5751900, 0), Point(512700, 5751900, 0), Point(512700, 5752500, 0), Point(511900, 5752500, 0)});
  survey.land.push_back({Point(511000, 5752420, 0), Point(513000, 5752420, 0), Point(513000, 5754000, 0), Point(511000, 5754000, 0)});
  AddDesign(survey, Point(512050, 5752100, -8));
  survey.vessel = {.known = true, .x = 512600, .y = 5752300, .heading = 90, .time = 0, .hasContour = false, .contour = {}};
  for (const double rotation : {0.0, 25.0, 200.0}) {
    survey.mapRotation = rotation;
    const PngFile png = Draw(survey);
    const auto near = [](std::uint32_t a, const Ink& ink) {
      const Ink b{(a >> 16 & 0xFF) / 255.0, (a >> 8 & 0xFF) / 255.0, (a & 0xFF) / 255.0};
      return std::abs(b.red - ink.red) + std::abs(b.green - ink.green) + std::abs(b.blue - ink.blue) < 0.1;
    };
    // At the place itself or at a pixel beside it, for lines are thin.
    const auto isAt = [&](const Point& place, const Ink& ink) {
      const CPoint pixel = PixelOf(survey, place);
      bool found = false;
      for (int i = 0; i < 9; ++i) found = found || near(png.At(pixel.x + i % 3 - 1, pixel.y + i / 3 - 1), ink);
      return found;
    };
    EXPECT_TRUE(isAt(Point(512203, 5752455, 0), inks::kLand)) << rotation;
    EXPECT_TRUE(isAt(Point(512313, 5751900, 0), inks::kWorkArea)) << rotation;
    EXPECT_TRUE(isAt(Point(512226, 5752100, 0), inks::kDesign)) << rotation;
    EXPECT_TRUE(isAt(Point(512600, 5752300, 0), inks::kVessel)) << rotation;
    EXPECT_TRUE(isAt(Point(512507, 5752333, 0), inks::kWater)) << rotation;
  }
}

TEST_F(SurveyPicturesLong, NothingOfTheMapLeavesItsWindow) {
  Survey survey = Slope();
  survey.land.push_back({Point(0, 0, 0), Point(2e6, 0, 0), Point(2e6, 9e6, 0), Point(0, 9e6, 0)});
  survey.workArea = survey.land;
  for (const double rotation : {0.0, 40.0}) {
    survey.mapRotation = rotation;
    const PngFile png = Draw(survey);
    for (int y = 10 * sheet::kPngParts; y < 284 * sheet::kPngParts; ++y)
      ASSERT_EQ(png.At(9 * sheet::kPngParts, y), 0xFFFFFFu) << "between the sheet's rule and the labels";
    EXPECT_EQ(png.At(324 * sheet::kPngParts, 150 * sheet::kPngParts), 0xFFFFFFu);
  }
}

TEST_F(SurveyPicturesLong, TheNorthArrowPointsNorthOnATurnedMap) {
  for (const double rotation : {0.0, 90.0, 200.0, 330.0}) {
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 400, 400);
    cairo_t* const context = cairo_create(surface);
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_paint(context);
    {
      const SheetPen pen(context, 1.0);
      DrawNorthArrow(pen, 200, 200, 200, rotation);
    }
    cairo_surface_write_to_png(surface, m_folder.File("arrow.png").c_str());
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    const PngFile png(m_folder.File("arrow.png"));
    // North lies on the sheet at minus the bearing that is up. The needle's tip is a point, its tail is wide.
    const double angle = -rotation * 3.14159265358979 / 180.0;
    const auto inkAcross = [&](double along) {
      int ink = 0;
      for (int across = -40; across <= 40; ++across) {
        const double x = 200 + along * std::sin(angle) + across * std::cos(angle),
                     y = 200 - along * std::cos(angle) + across * std::sin(angle);
        ink += png.At(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))) != 0xFFFFFFu ? 1 : 0;
      }
      return ink;
    };
    EXPECT_GT(inkAcross(60), 1) << rotation;
    EXPECT_LT(inkAcross(60), inkAcross(-55)) << rotation;
    EXPECT_EQ(inkAcross(-95), 0) << "no letter at the tail, " << rotation;
    EXPECT_GT(inkAcross(88), 5) << "but at the tip, " << rotation;
  }
}

TEST_F(SurveyPicturesLong, TheScaleBarIsAsLongAsItSays) {
  const Survey survey = Slope();
  const PngFile png = Draw(survey);
  const ScaleBar bar = ScaleBarFor(survey, ViewOf(survey), 46.0);
  // The longest run of black and white boxes below the scale: find a row with exactly the dark parts of the bar.
  const int left = static_cast<int>(sheet::kColumn.left * sheet::kPngParts),
            right = static_cast<int>(sheet::kColumn.right * sheet::kPngParts);
  const double part = bar.paper / bar.parts * sheet::kPngParts;
  bool found = false;
  for (int y = 40 * sheet::kPngParts; y < 150 * sheet::kPngParts && !found; ++y) {
    int first = -1, run = 0, runs = 0;
    bool fits = true;
    for (int x = left; x < left + static_cast<int>(50 * sheet::kPngParts) && x < right; ++x) {
      const bool dark = (png.At(x, y) & 0xFF) < 0x60;
      if (dark && first < 0) first = x;
      if (dark) ++run;
      if (!dark && run > 3) {
        fits = fits && std::abs(run - part) < 3.0;
        ++runs;
      }
      if (!dark) run = 0;
    }
    found = fits && first >= 0 && runs == (bar.parts + 1) / 2;
  }
  EXPECT_TRUE(found) << part;
}

TEST_F(SurveyPicturesLong, SvgAndPdfAreWholeSheetsOfA3) {
  Survey survey = Slope();
  AddDesign(survey, Point(512050, 5752100, -8));
  Draw(survey);
  const std::string svg = m_folder.Read("chart.svg"), pdf = m_folder.Read("chart.pdf");
  XmlElement root;
  XmlReader reader(root);
  ASSERT_TRUE(reader.ReadData(svg.data(), static_cast<unsigned int>(svg.size())));
  EXPECT_NE(svg.find("</svg>"), std::string::npos);
  EXPECT_NE(svg.find("<image"), std::string::npos) << "the soundings are a picture";
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.find("%%EOF"), std::string::npos);
  const std::size_t start = pdf.rfind("startxref\n");
  ASSERT_NE(start, std::string::npos);
  const std::size_t table = std::stoul(pdf.substr(start + 10));
  EXPECT_EQ(pdf.substr(table, 4), "xref");
  EXPECT_EQ(m_folder.Read("profile.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
}

TEST_F(SurveyPicturesLong, ManySoundingsMakeNoGreatFiles) {
  std::mt19937 engine(1);
  std::uniform_real_distribution<double> any(0.0, 1000.0);
  std::vector<Point> soundings;
  for (int i = 0; i < 100000; ++i) soundings.emplace_back(any(engine), any(engine), -any(engine) / 50.0);
  Draw(SurveyOf(std::move(soundings)));
  EXPECT_LT(m_folder.Read("chart.svg").size(), 16u << 20);
  EXPECT_LT(m_folder.Read("chart.pdf").size(), 16u << 20);
}

TEST_F(SurveyPicturesLong, WhateverASurveyLacksItHasASheet) {
  EXPECT_TRUE(Draw(Survey()).IsGood()) << "nothing at all";
  EXPECT_TRUE(Draw(SurveyOf({})).IsGood()) << "no soundings";
  EXPECT_TRUE(Draw(SurveyOf({Point(1, 2, -3)})).IsGood()) << "one";
  EXPECT_TRUE(Draw(SurveyOf(std::vector<Point>(1000, Point(1, 2, -3)))).IsGood()) << "all at one place";
  Survey plain = Slope();
  plain.depthColours.Clear();
  EXPECT_TRUE(Draw(plain).IsGood()) << "no colours";
  for (const double size : {1e-9, 1e-3, 1e5, 1e12, 1e200, 1.7e308}) {
    for (const double origin : {0.0, 1e9, 1e15, -1e300}) {
      if (std::abs(origin) > 1e16 && size > 1e300) continue;
      Survey survey =
          SurveyOf({Point(origin, origin, -5), Point(origin + size, origin + size / 2, 1e9), Point(origin, origin + size, -1e300)});
      survey.mapRotation = 17.0;
      AddDesign(survey, survey.soundings.front());
      survey.workArea.push_back(survey.soundings);
      survey.land.push_back(survey.soundings);
      survey.vessel = {.known = true, .x = origin, .y = origin, .heading = -1e300, .time = 0, .hasContour = false, .contour = {}};
      survey.track.places = {{.x = origin, .y = origin, .semiMajor = size, .semiMinor = 1, .orientation = 1, .isFix = true},
                             {.x = origin + size, .y = origin}};
      EXPECT_TRUE(Draw(survey).IsGood()) << size << " at " << origin;
    }
  }
}

TEST_F(SurveyPicturesLong, LongTextsStayInTheirColumn) {
  Survey survey = Slope();
  survey.title = {std::string(3000, 'W'), std::string(300, 'x') + " and " + std::string(300, 'y'),
                  "A vessel of a name \x80\xB0 that is long enough for two lines or three", std::string(500, '9'), std::string(500, 'z')};
  const PngFile png = Draw(survey);
  for (int y = 10 * sheet::kPngParts; y < 286 * sheet::kPngParts; ++y) ASSERT_EQ(png.At(411 * sheet::kPngParts, y), 0xFFFFFFu) << y;
}

TEST_F(SurveyPicturesLong, WhatCannotBeWrittenSaysSo) {
  const Survey survey = SurveyOf({Point(1, 2, -3)});
  const SurveyChart chart(survey, {});
  for (const auto save : {&SurveyChart::SavePng, &SurveyChart::SaveSvg, &SurveyChart::SavePdf}) {
    std::string reason;
    EXPECT_FALSE((chart.*save)(m_folder.File("none/chart"), reason));
    EXPECT_NE(reason.find("none/chart"), std::string::npos);
  }
  std::string reason;
  EXPECT_FALSE(SaveProfilePng(survey, "/dev/full", reason));
}

TEST_F(SurveyPicturesLong, LongTextsOfManyLettersAreNotCutWithinOne) {
  for (std::size_t front = 398; front <= 400; ++front) {  // texts are cut at 400 bytes, and all letters behind have two
    Survey survey = Slope();
    AddDesign(survey, Point(512010, 5752200, -10));
    const std::string text = std::string(front, 'i') + std::string(1700, '\xFC');
    survey.title = {text, text, text, text, text};
    EXPECT_TRUE(Draw(survey).IsGood()) << front;
  }
}

TEST_F(SurveyPicturesLong, ARowOfTheSectionOnItsOwnIsAStepWide) {
  Survey survey = Slope();
  AddDesign(survey, Point(512010, 5752200, -10));
  for (std::size_t i = 0; i < survey.section.rows.size(); ++i) {
    SectionRow& row = survey.section.rows[i];
    row.measured = i == 30;
    row.difference = 2.0;
    row.bottom = row.shoalest = row.design + row.difference;
  }
  Draw(survey);
  const PngFile png(m_folder.File("profile.png"));
  const CoordinateSystem system = ProfileViewOf(survey).System(sheet::kPngParts);
  const std::uint32_t colour = RgbOf(survey.differenceColours.GetColor(2.0));
  for (const auto& [chainage, isPainted] : {std::pair{294.0, false}, {296.0, true}, {300.0, true}, {304.0, true}, {306.0, false}}) {
    const CPoint pixel = system.WorldToPixel(Point(chainage, -9.0, 0));
    EXPECT_EQ(png.At(pixel.x, pixel.y) == colour, isPainted) << chainage;
  }
}
