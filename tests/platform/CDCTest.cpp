#include "zelbase/platform/CDC.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "zelbase/platform/RecordingSurface.h"

namespace {

static_assert(std::is_abstract_v<CDC>);
static_assert(std::is_base_of_v<CObject, CDC>);

class Surface : public RecordingSurface {
 public:
  Surface(bool& gone, std::vector<std::string>& drawn) : m_gone(gone), m_drawn(drawn) {}
  ~Surface() override {
    m_gone = true;
    m_drawn = Painted();
  }

 private:
  bool& m_gone;
  std::vector<std::string>& m_drawn;
};

TEST(CDC, ASurfaceOfAHostIsDrawnOnAndDestroyedThroughTheBase) {
  bool gone = false;
  std::vector<std::string> drawn;
  std::unique_ptr<CDC> surface = std::make_unique<Surface>(gone, drawn);
  EXPECT_TRUE(surface->Rectangle(1, 2, 3, 4));
  EXPECT_FALSE(gone);
  std::unique_ptr<CObject> base = std::move(surface);
  base.reset();
  EXPECT_TRUE(gone);
  EXPECT_EQ(drawn, (std::vector<std::string>{"Rectangle 1 2 3 4"}));
}

// Drivers and files of a host hold these numbers.
TEST(CDC, TheNumbersOfTheFrameworkAreKept) {
  EXPECT_EQ(LOGPIXELSY, 90);
  EXPECT_EQ(OBJ_PEN, 1u);
  EXPECT_EQ(OBJ_BRUSH, 2u);
  EXPECT_EQ(OBJ_FONT, 6u);
  EXPECT_EQ(WHITE_BRUSH, 0);
  EXPECT_EQ(BLACK_BRUSH, 4);
  EXPECT_EQ(HOLLOW_BRUSH, 5);
  EXPECT_EQ(WHITE_PEN, 6);
  EXPECT_EQ(BLACK_PEN, 7);
  EXPECT_EQ(NULL_PEN, 8);
  EXPECT_EQ(SYSTEM_FONT, 13);
  EXPECT_EQ(PS_SOLID, 0u);
  EXPECT_EQ(PS_DASH, 1u);
  EXPECT_EQ(PS_DOT, 2u);
  EXPECT_EQ(PS_DASHDOT, 3u);
  EXPECT_EQ(PS_DASHDOTDOT, 4u);
  EXPECT_EQ(PS_NULL, 5u);
  EXPECT_EQ(TRANSPARENT, 1);
  EXPECT_EQ(OPAQUE, 2);
  EXPECT_EQ(R2_NOT, 6);
  EXPECT_EQ(R2_XORPEN, 7);
  EXPECT_EQ(R2_COPYPEN, 13);
  EXPECT_EQ(TA_RIGHT | TA_BOTTOM, 10u);
  EXPECT_EQ(TA_RIGHT | TA_BASELINE, 26u);
  EXPECT_EQ(TA_LEFT | TA_TOP, 0u);
}

TEST(CDC, PensAndFontsBeginEmpty) {
  const LOGPEN pen;
  EXPECT_EQ(pen.lopnStyle, 0u);
  EXPECT_EQ(pen.lopnWidth, CPoint(0, 0));
  EXPECT_EQ(pen.lopnColor, 0u);
  const LOGFONT font;
  EXPECT_EQ(font.lfHeight + font.lfWidth + font.lfEscapement + font.lfOrientation + font.lfWeight, 0);
  EXPECT_EQ(font.lfFaceName, "");
}

}  // namespace
