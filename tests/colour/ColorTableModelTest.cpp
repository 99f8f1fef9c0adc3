#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <numeric>

#include "tests/colour/SecondColorTable.h"
#include "zelbase/colour/ColorTable.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

void SecondRgbToHsl(unsigned int color, double& h, double& s, double& l) {
  const double r = RedOf(color) / 255.0;
  const double g = GreenOf(color) / 255.0;
  const double b = BlueOf(color) / 255.0;
  const double most = std::fmax(r, std::fmax(g, b));
  const double least = std::fmin(r, std::fmin(g, b));
  const double delta = most - least;
  l = (most + least) * 0.5;
  h = s = 0;
  if (delta == 0) return;
  s = l < 0.5 ? delta / (most + least) : delta / (2 - most - least);
  const double dR = ((most - r) / 6 + delta / 2) / delta;
  const double dG = ((most - g) / 6 + delta / 2) / delta;
  const double dB = ((most - b) / 6 + delta / 2) / delta;
  h = r == most ? dB - dG : g == most ? 1.0 / 3 + dR - dB : 2.0 / 3 + dG - dR;
  if (h < 0) h += 1;
  if (h > 1) h -= 1;
}

double SecondChannel(double a, double b, double h) {
  if (h < 0) h += 1;
  if (h > 1) h -= 1;
  double result = a;
  if (3 * h < 2) result = a + (b - a) * 6 * (2.0 / 3 - h);
  if (2 * h < 1) result = b;
  if (6 * h < 1) result = a + (b - a) * 6 * h;
  return result;
}

unsigned int SecondHslToRgb(double h, double s, double l) {
  if (s > 1) s = 1;
  if (l > 1) l = 1;
  if (s == 0) return Rgb(SecondByte(l), SecondByte(l), SecondByte(l));
  const double b = l >= 0.5 ? s + l - s * l : (1 + s) * l;
  const double a = 2 * l - b;
  return Rgb(SecondByte(SecondChannel(a, b, h + 1.0 / 3)), SecondByte(SecondChannel(a, b, h)),
             SecondByte(SecondChannel(a, b, h - 1.0 / 3)));
}

TEST(ColorModel, PrimaryAndSecondaryColoursHaveTheirHues) {
  const unsigned int colors[] = {Rgb(255, 0, 0), Rgb(255, 255, 0), Rgb(0, 255, 0), Rgb(0, 255, 255), Rgb(0, 0, 255), Rgb(255, 0, 255)};
  for (int i = 0; i < 6; ++i) {
    double h = 0, s = 0, v = 0;
    ColorTable::RGBtoHSV(colors[i], h, s, v);
    EXPECT_EQ(h, 60.0 * i);
    EXPECT_EQ(s, 1.0);
    EXPECT_EQ(v, 1.0);
    EXPECT_EQ(ColorTable::HSVtoRGB(60.0 * i, 1, 1), colors[i]);
    ColorTable::RGBtoHSL(colors[i], h, s, v);
    EXPECT_NEAR(h, i / 6.0, 1e-15);
    EXPECT_EQ(s, 1.0);
    EXPECT_EQ(v, 0.5);
  }
}

TEST(ColorModel, RedIsTheLowByte) {
  EXPECT_EQ(ColorTable::HSVtoRGB(0, 1, 1), 0x0000FFu);
  EXPECT_EQ(ColorTable::HSVtoRGB(240, 1, 1), 0xFF0000u);
  EXPECT_EQ(ColorTable::HSLtoRGB(0, 1, 0.5), 0x0000FFu);
}

TEST(ColorModel, AGreyHasTheHueMinusOneInHsvAndZeroInHsl) {
  for (int byte = 0; byte < 256; ++byte) {
    double h = 7, s = 7, v = 7;
    ColorTable::RGBtoHSV(Rgb(byte, byte, byte), h, s, v);
    EXPECT_EQ(h, -1.0);
    EXPECT_EQ(s, 0.0);
    EXPECT_EQ(v, byte / 255.0);
    ColorTable::RGBtoHSL(Rgb(byte, byte, byte), h, s, v);
    EXPECT_EQ(h, 0.0);
    EXPECT_EQ(s, 0.0);
  }
}

TEST(ColorModel, TheHueMinusOneGivesATruncatedGrey) {
  EXPECT_EQ(ColorTable::HSVtoRGB(-1, 0, 0.5), Rgb(127, 127, 127));
  EXPECT_EQ(ColorTable::HSVtoRGB(-1, 1, 0.5), Rgb(127, 127, 127));
  EXPECT_EQ(ColorTable::HSVtoRGB(-1, 0, 9), 0xFFFFFFu);
  EXPECT_EQ(ColorTable::HSVtoRGB(-1, 0, -1), 0u);
}

TEST(ColorModel, AHueOutsideTheCircleIsBlack) {
  for (const double h : {360.0, 361.0, 1e300, kInfinity, -1e-300, -0.5, -2.0, -kInfinity, kNan}) {
    EXPECT_EQ(ColorTable::HSVtoRGB(h, 0.5, 0.5), 0u) << h;
  }
  EXPECT_NE(ColorTable::HSVtoRGB(std::nextafter(360.0, 0.0), 0.5, 0.5), 0u);
  EXPECT_EQ(ColorTable::HSVtoRGB(-0.0, 1, 1), Rgb(255, 0, 0));
}

TEST(ColorModel, ChannelsOfStrangeNumbersAreBytes) {
  EXPECT_EQ(ColorTable::HSVtoRGB(30, kNan, 1), Rgb(255, 0, 0));
  EXPECT_EQ(ColorTable::HSVtoRGB(30, 1, kNan), 0u);
  EXPECT_EQ(ColorTable::HSVtoRGB(30, -3, 1), Rgb(255, 255, 255));
  EXPECT_EQ(ColorTable::HSVtoRGB(30, 1, -3), 0u);
  EXPECT_EQ(ColorTable::HSVtoRGB(0, 5, 5), Rgb(255, 0, 0));
  EXPECT_EQ(ColorTable::HSLtoRGB(kNan, kNan, kNan), 0u);
  EXPECT_EQ(ColorTable::HSLtoRGB(0.3, 0, kInfinity), 0xFFFFFFu);
  EXPECT_EQ(ColorTable::HSLtoRGB(0.3, 0, -kInfinity), 0u);
  EXPECT_EQ(ColorTable::ScaleIntensity(0x123456, kNan), 0u);
}

TEST(ColorModel, ConvertsLikeTheSecondTranscriptionOverTheColourCube) {
  for (int red = 0; red < 256; red += 5) {
    for (int green = 0; green < 256; green += 5) {
      for (int blue = 0; blue < 256; blue += 3) {
        const unsigned int color = Rgb(red, green, blue);
        double h = 0, s = 0, v = 0, h2 = 0, s2 = 0, v2 = 0;
        ColorTable::RGBtoHSV(color, h, s, v);
        SecondRgbToHsv(color, h2, s2, v2);
        ASSERT_TRUE(SameDouble(h, h2) && SameDouble(s, s2) && SameDouble(v, v2)) << color;
        ASSERT_EQ(ColorTable::HSVtoRGB(h, s, v), SecondHsvToRgb(h, s, v)) << color;
        ColorTable::RGBtoHSL(color, h, s, v);
        SecondRgbToHsl(color, h2, s2, v2);
        ASSERT_TRUE(SameDouble(h, h2) && SameDouble(s, s2) && SameDouble(v, v2)) << color;
        ASSERT_EQ(ColorTable::HSLtoRGB(h, s, v), SecondHslToRgb(h, s, v)) << color;
      }
    }
  }
}

TEST(ColorModel, ConvertsLikeTheSecondTranscriptionOverTheModels) {
  for (int i = -100; i <= 1000; ++i) {
    for (int s = -1; s <= 12; ++s) {
      for (int v = -1; v <= 12; ++v) {
        const double h = i * 0.37;
        ASSERT_EQ(ColorTable::HSVtoRGB(h, s / 11.0, v / 11.0), SecondHsvToRgb(h, s / 11.0, v / 11.0));
        ASSERT_EQ(ColorTable::HSLtoRGB(h / 360, s / 11.0, v / 11.0), SecondHslToRgb(h / 360, s / 11.0, v / 11.0));
      }
    }
  }
}

// Truncation loses at most one of a channel on the way there and back.
TEST(ColorModel, ThereAndBackStaysWithinOneOfAChannel) {
  for (unsigned int color = 0; color < 0x1000000; color += 997) {
    double h = 0, s = 0, v = 0;
    ColorTable::RGBtoHSV(color, h, s, v);
    const unsigned int byHsv = ColorTable::HSVtoRGB(h, s, v);
    ColorTable::RGBtoHSL(color, h, s, v);
    const unsigned int byHsl = ColorTable::HSLtoRGB(h, s, v);
    for (const unsigned int back : {byHsv, byHsl}) {
      ASSERT_NEAR(RedOf(back), RedOf(color), 1) << color;
      ASSERT_NEAR(GreenOf(back), GreenOf(color), 1) << color;
      ASSERT_NEAR(BlueOf(back), BlueOf(color), 1) << color;
      ASSERT_EQ(back >> 24, 0u);
    }
  }
}

TEST(ColorModel, HueToChannelRisesStaysAndFalls) {
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0, 1, 0), 0.0);
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0, 1, 1.0 / 12), 0.5);
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0, 1, 0.25), 1.0);
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0, 1, 0.5), (2.0 / 3 - 0.5) * 6);
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0.2, 1, 0.75), 0.2);
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0, 1, -0.75), 1.0);
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0, 1, 1.25), 1.0);
  // The end of the circle is no part of its beginning, where an infinity would make 0 times infinity.
  EXPECT_EQ(OpenColorTable::Hue_2_RGB(0.25, std::numeric_limits<double>::infinity(), 1), 0.25);
}

// --- The rainbow ---------------------------------------------------------------------------------------------------

// The sums of each ten rows, in thousandths.
TEST(ColorModel, TheHueLookupIsComplete) {
  EXPECT_EQ(std::size(ColorTable::m_hueLookup), 201u);
  const int sums[] = {133, 433, 730, 1029, 1227, 1308, 1436, 1626, 1825, 2038, 2570, 3399, 3988, 4429, 4852, 5273, 5637, 5933, 6224, 6506};
  for (int tens = 0; tens < 20; ++tens) {
    const double* const row = ColorTable::m_hueLookup + 10 * tens;
    EXPECT_EQ(std::lround(std::accumulate(row, row + 10, 0.0) * 1000), sums[tens]) << tens;
  }
  EXPECT_EQ(ColorTable::m_hueLookup[200], 0.667);
}

TEST(ColorModel, TheHueLookupKeepsItsIrregularities) {
  EXPECT_EQ(ColorTable::m_hueLookup[49], 0.128);
  EXPECT_EQ(ColorTable::m_hueLookup[50], 0.124);
  EXPECT_EQ(ColorTable::m_hueLookup[125], 0.402);
  EXPECT_EQ(ColorTable::m_hueLookup[126], 0.402);
  EXPECT_EQ(ColorTable::m_hueLookup[192], 0.644);
  EXPECT_EQ(ColorTable::m_hueLookup[193], 0.643);
}

TEST(ColorModel, TheRainbowCorrectionChangesOnlyTheHue) {
  double h = 120, s = 0.3, v = 0.7;
  OpenColorTable::NiceRainbowCorrection(h, s, v);
  EXPECT_EQ(h, 0.225 * 360);
  EXPECT_EQ(s, 0.3);
  EXPECT_EQ(v, 0.7);
}

TEST(ColorModel, TheRainbowCorrectionLeavesANegativeHue) {
  for (double h : {-1.0, -1e-300, -1e300, -kInfinity}) {
    const double before = h;
    double s = 0, v = 0;
    OpenColorTable::NiceRainbowCorrection(h, s, v);
    EXPECT_EQ(h, before);
  }
}

TEST(ColorModel, TheRainbowCorrectionFollowsTheSecondTranscriptionRoundTheCircle) {
  double s = 0, v = 0;
  for (int i = 0; i <= 36500; ++i) {
    double h = i * 0.01;
    const double expected = SecondCorrectedHue(h);
    OpenColorTable::NiceRainbowCorrection(h, s, v);
    ASSERT_TRUE(SameDouble(h, expected)) << i;
  }
  double last = std::nextafter(240.0, 0.0);
  OpenColorTable::NiceRainbowCorrection(last, s, v);
  EXPECT_NEAR(last, 0.667 * 360, 1e-9);
  double first = 240;
  OpenColorTable::NiceRainbowCorrection(first, s, v);
  EXPECT_EQ(first, 0.667 * 360);
  double none = kNan;
  OpenColorTable::NiceRainbowCorrection(none, s, v);
  EXPECT_TRUE(std::isnan(none));
}

// --- Single colours ------------------------------------------------------------------------------------------------

TEST(ColorModel, GreyIsTruncatedSoThatSomeGreysComeOutDarker) {
  EXPECT_EQ(ColorTable::ColorToGray(0x808080), 0x7F7F7Fu);
  EXPECT_EQ(ColorTable::ColorToGray(Rgb(255, 0, 0)), Rgb(76, 76, 76));     // 76.5
  EXPECT_EQ(ColorTable::ColorToGray(Rgb(0, 255, 0)), Rgb(150, 150, 150));  // 150.45
  EXPECT_EQ(ColorTable::ColorToGray(Rgb(0, 0, 255)), Rgb(28, 28, 28));     // 28.05
  int darker = 0;
  for (int byte = 0; byte < 256; ++byte) {
    const int gray = RedOf(ColorTable::ColorToGray(Rgb(byte, byte, byte)));
    EXPECT_TRUE(gray == byte || gray == byte - 1) << byte;
    darker += gray != byte ? 1 : 0;
  }
  EXPECT_EQ(darker, 67);
}

TEST(ColorModel, ContrastIsWhiteOnDarkAndBlackOnLight) {
  EXPECT_EQ(ColorTable::GetContrastColor(0x000000), 0xFFFFFFu);
  EXPECT_EQ(ColorTable::GetContrastColor(0xFFFFFF), 0u);
  EXPECT_EQ(ColorTable::GetContrastColor(0x7F7F7F), 0xFFFFFFu);
  EXPECT_EQ(ColorTable::GetContrastColor(0x808080), 0u);
  EXPECT_EQ(ColorTable::GetContrastColor(Rgb(0, 255, 0)), 0u);
  EXPECT_EQ(ColorTable::GetContrastColor(Rgb(255, 0, 255)), 0xFFFFFFu);
}

TEST(ColorModel, ColoursAddUpToWhiteAndNoFurther) {
  EXPECT_EQ(ColorTable::AddColors(Rgb(1, 2, 3), Rgb(10, 20, 30)), Rgb(11, 22, 33));
  EXPECT_EQ(ColorTable::AddColors(Rgb(200, 255, 0), Rgb(56, 1, 0)), Rgb(255, 255, 0));
  EXPECT_EQ(ColorTable::AddColors(Rgb(200, 100, 0), Rgb(55, 0, 255)), Rgb(255, 100, 255));
}

TEST(ColorModel, IntensityScalesTheLightness) {
  EXPECT_EQ(ColorTable::ScaleIntensity(Rgb(255, 0, 0), 0.5), Rgb(127, 0, 0));
  EXPECT_EQ(ColorTable::ScaleIntensity(0x123456, 0), 0u);
  EXPECT_EQ(ColorTable::ScaleIntensity(0x123456, 1e9), 0xFFFFFFu);
  EXPECT_EQ(ColorTable::ScaleIntensity(0x123456, -1), SecondHslToRgb(0, 0, 0));
  for (unsigned int color = 0; color < 0x1000000; color += 4099) {
    for (const double factor : {0.0, 0.3, 1.0, 1.7, 40.0}) {
      double h = 0, s = 0, l = 0;
      SecondRgbToHsl(color, h, s, l);
      ASSERT_EQ(ColorTable::ScaleIntensity(color, factor), SecondHslToRgb(h, s, l * factor)) << color;
    }
  }
}

}  // namespace
