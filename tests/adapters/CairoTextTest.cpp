// Texts on the drawing surface: where their ink lies.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "tests/adapters/ImagePixels.h"

namespace {

class CairoText : public testing::Test {
 protected:
  static constexpr int kX = 150;
  static constexpr int kY = 150;

  void SetUp() override { m_surface.SetBkMode(TRANSPARENT); }

  void SelectFont(int height, int tenths, int weight = 400) {
    LOGFONT font;
    font.lfHeight = height;
    font.lfEscapement = font.lfOrientation = tenths;
    font.lfWeight = weight;
    font.lfFaceName = "Arial";
    m_surface.SelectObject(m_surface.CreateFontIndirect(font));
  }

  CRect InkOf(unsigned align, const std::string& text) {
    m_surface.FillSolidRect(CRect(0, 0, 300, 300), kWhite);
    m_surface.SetTextAlign(align);
    EXPECT_TRUE(m_surface.TextOut(kX, kY, text));
    return BoxOf(Painted(m_surface));
  }

  CairoSurface m_surface{CairoFormat::Png, 300, 300};
};

bool Contains(const CRect& outer, const CRect& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right && inner.bottom <= outer.bottom;
}

TEST_F(CairoText, LiesInItsBoxWhereTheAlignmentSays) {
  SelectFont(30, 0);
  const std::string text = "Hgp";
  const CSize size = m_surface.GetTextExtentPoint32A(text);
  EXPECT_NEAR(size.cy, 30, 2);
  for (const auto& [across, part] : std::vector<std::pair<unsigned, double>>{{TA_LEFT, 0}, {TA_CENTER, 0.5}, {TA_RIGHT, 1}}) {
    const int left = kX - static_cast<int>(std::lround(size.cx * part));
    const auto box = [&](int top) { return CRect(left - 1, top - 1, left + size.cx + 1, top + size.cy + 1); };
    const CRect below = InkOf(across | TA_TOP, text);
    EXPECT_TRUE(Contains(box(kY), below)) << across;
    const CRect above = InkOf(across | TA_BOTTOM, text);
    EXPECT_TRUE(Contains(box(kY - size.cy), above)) << across;
    EXPECT_NEAR(below.top - above.top, size.cy, 1);
    // "H" stands on the base line, and fills most of its width.
    const CRect letter = InkOf(across | TA_BASELINE, "H");
    EXPECT_NEAR(letter.bottom, kY, 1) << across;
    EXPECT_GT(letter.Height(), 15);
    EXPECT_NEAR((letter.left + letter.right) / 2.0, kX + (0.5 - part) * m_surface.GetTextExtentPoint32A("H").cx, 2) << across;
  }
}

// By hand: a point (dx, dy) of the level text, turned counter-clockwise about the anchor, is at (dx cos + dy sin, dy cos - dx sin).
TEST_F(CairoText, IsTurnedAboutItsAnchor) {
  for (const unsigned align : {TA_LEFT | TA_TOP, TA_RIGHT | TA_BOTTOM, TA_CENTER | TA_TOP, TA_RIGHT | TA_BASELINE}) {
    SelectFont(30, 0);
    const CRect level = InkOf(align, "HHHH");
    for (const int degrees : {90, 180, 270, 45, -45, 450}) {
      SelectFont(30, degrees * 10);
      const CRect turned = InkOf(align, "HHHH");
      const double sine = std::sin(degrees * 3.14159265358979 / 180);
      const double cosine = std::cos(degrees * 3.14159265358979 / 180);
      double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
      for (const int dx : {level.left - kX, level.right - kX}) {
        for (const int dy : {level.top - kY, level.bottom - kY}) {
          const double x = kX + dx * cosine + dy * sine;
          const double y = kY + dy * cosine - dx * sine;
          left = std::min(left, x);
          right = std::max(right, x);
          top = std::min(top, y);
          bottom = std::max(bottom, y);
        }
      }
      EXPECT_NEAR(turned.left, left, 2.5) << degrees << ' ' << align;
      EXPECT_NEAR(turned.top, top, 2.5) << degrees << ' ' << align;
      EXPECT_NEAR(turned.right, right, 2.5) << degrees << ' ' << align;
      EXPECT_NEAR(turned.bottom, bottom, 2.5) << degrees << ' ' << align;
    }
  }
}

TEST_F(CairoText, ItsExtentIsLevelWhateverItsDirection) {
  SelectFont(20, 0);
  const CSize level = m_surface.GetTextExtentPoint32A("depth 12.5");
  SelectFont(20, 900);
  EXPECT_EQ(m_surface.GetTextExtentPoint32A("depth 12.5"), level);
  EXPECT_EQ(m_surface.GetTextExtentPoint32A("").cx, 0);
}

TEST_F(CairoText, HeightsAreOfTheLineOrOfTheLetters) {
  SelectFont(40, 0);
  const int line = m_surface.GetTextExtentPoint32A("x").cy;
  SelectFont(-40, 0);
  const int letters = m_surface.GetTextExtentPoint32A("x").cy;
  EXPECT_NEAR(line, 40, 1);
  EXPECT_GT(letters, 42);
  SelectFont(0, 0);  // ten points at 96 dots per inch are 13.3 pixels
  EXPECT_NEAR(m_surface.GetTextExtentPoint32A("x").cy, 13.3 * letters / 40, 2);
}

TEST_F(CairoText, WeightAndWidthCount) {
  SelectFont(30, 0, 400);
  const int plain = m_surface.GetTextExtentPoint32A("Sounding").cx;
  SelectFont(30, 0, 700);
  EXPECT_GT(m_surface.GetTextExtentPoint32A("Sounding").cx, plain);
  LOGFONT wide;
  wide.lfHeight = 30;
  wide.lfWidth = 40;
  m_surface.SelectObject(m_surface.CreateFontIndirect(wide));
  EXPECT_NEAR(m_surface.GetTextExtentPoint32A("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz").cx, 40 * 52, 30);
}

TEST_F(CairoText, AnOpaqueBackgroundFillsItsBox) {
  SelectFont(20, 0);
  EXPECT_EQ(m_surface.SetBkMode(OPAQUE), TRANSPARENT);
  m_surface.SetBkColor(kBlue);
  m_surface.TextOut(kX, kY, "12");
  const CSize size = m_surface.GetTextExtentPoint32A("12");
  EXPECT_EQ(BoxOf(Painted(m_surface)), CRect(CPoint(kX, kY), size));
  EXPECT_EQ(m_surface.GetPixel(kX, kY), kBlue);
}

TEST_F(CairoText, HasItsColour) {
  EXPECT_EQ(m_surface.SetTextColor(kRed), kBlack);
  for (const auto& [x, y] : Painted(m_surface)) ADD_FAILURE() << x << ' ' << y;
  const CRect ink = InkOf(TA_LEFT | TA_TOP, "III");
  EXPECT_FALSE(ink.IsRectEmpty());
  for (const auto& [x, y] : Painted(m_surface)) EXPECT_EQ(m_surface.GetPixel(x, y), kRed);
}

TEST_F(CairoText, BothEncodingsOfADegreeSignAreOneSign) {
  SelectFont(30, 0);
  InkOf(TA_LEFT | TA_TOP, "5\xB0");
  const Pixels windows = Painted(m_surface);
  InkOf(TA_LEFT | TA_TOP, "5\xC2\xB0");
  EXPECT_EQ(Painted(m_surface), windows);
  InkOf(TA_LEFT | TA_TOP, "5");
  EXPECT_NE(Painted(m_surface), windows);
}

TEST_F(CairoText, HostileTextsAndFontsAreTaken) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  for (const std::string& text :
       {all, std::string(100000, 'x'), std::string("\xF4\x90\x80\x80"), std::string("\xED\xA0\x80"), std::string(5, '\0')}) {
    EXPECT_TRUE(m_surface.TextOut(kX, kY, text));
    m_surface.GetTextExtentPoint32A(text);
  }
  for (const int size : {INT_MIN, -1, 1, INT_MAX}) {
    LOGFONT font;
    font.lfHeight = font.lfWidth = font.lfEscapement = font.lfOrientation = font.lfWeight = size;
    font.lfFaceName = all + "\xFF\xC3";
    m_surface.SelectObject(m_surface.CreateFontIndirect(font));
    EXPECT_TRUE(m_surface.TextOut(kX, kY, "Ag"));
    m_surface.GetTextExtentPoint32A("Ag");
  }
  EXPECT_TRUE(m_surface.IsGood());
}

}  // namespace
