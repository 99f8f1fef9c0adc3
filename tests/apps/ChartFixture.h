// Surveys for the tests of the pictures, and pictures read back. Neighbour: ZelFixture.h, for tests of the program from outside.
#pragma once

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "survey/Survey.h"
#include "survey/SurveyPictures.h"
#include "tests/support/TemporaryFolder.h"

// A survey of nothing but these soundings, with a table of a colour for each two metres from 0 to 20.
inline zel::Survey SurveyOf(std::vector<Point> soundings) {
  zel::Survey survey;
  survey.soundings = std::move(soundings);
  for (int i = 0; i <= 10; ++i) {
    survey.depthColours.AddEntry(2.0 * i, 0x101010u * static_cast<unsigned>(i) + 0x400000u, false, "");
    survey.differenceColours.AddEntry(0.5 * (i - 5), 0x0A0A0Au * static_cast<unsigned>(i) + 0x0000F0u - 0x0Au * static_cast<unsigned>(i),
                                      false, "");
  }
  survey.depths.count = static_cast<long long>(survey.soundings.size());
  for (const Point& point : survey.soundings) {
    survey.extents |= point;
    survey.depths.minimum = std::min(survey.depths.count == 0 ? 0.0 : survey.depths.minimum, -point.z);
    survey.depths.maximum = std::max(survey.depths.maximum, -point.z);
  }
  return survey;
}

// A design line with a bend, an over-depth line half a metre below it, and rows of a section whose bottom falls from a metre above
// the design to a metre below it.
inline void AddDesign(zel::Survey& survey, const Point& origin) {
  survey.design.line =
      std::make_shared<zel::SurveyLine>(std::vector<std::vector<Point>>{{origin, origin + Point(300, 0, 0), origin + Point(500, 150, 0)}});
  survey.design.overDepth = std::make_shared<zel::SurveyLine>(
      std::vector<std::vector<Point>>{{origin + Point(0, 0, -0.5), origin + Point(300, 0, -0.5), origin + Point(500, 150, -0.5)}});
  survey.design.offset = -0.5;
  survey.design.width = 60.0;
  survey.design.end = 550.0;
  for (int i = 0; i <= 55; ++i) {
    zel::SectionRow row;
    row.chainage = 10.0 * i;
    row.design = origin.z;
    row.overDepth = origin.z - 0.5;
    row.measured = i < 20 || i > 22;
    row.difference = row.measured ? 1.0 - i / 27.5 : 0.0;
    row.bottom = row.measured ? row.design + row.difference : 0.0;
    row.shoalest = row.bottom + (row.measured ? 0.2 : 0.0);
    row.sectionStart = i == 0;
    survey.section.rows.push_back(row);
  }
  survey.section.step = 10.0;
}

// The pixels of a PNG, as Cairo reads them back.
class PngFile {
 public:
  explicit PngFile(const std::string& path) : m_surface(cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy) {}

  bool IsGood() const { return cairo_surface_status(m_surface.get()) == CAIRO_STATUS_SUCCESS; }
  int Width() const { return cairo_image_surface_get_width(m_surface.get()); }
  int Height() const { return cairo_image_surface_get_height(m_surface.get()); }

  // 0xRRGGBB; none of these outside.
  std::uint32_t At(int x, int y) const {
    if (x < 0 || x >= Width() || y < 0 || y >= Height()) return 0xFFFFFFFFu;
    const unsigned char* const row = cairo_image_surface_get_data(m_surface.get()) + y * cairo_image_surface_get_stride(m_surface.get());
    return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFFu;
  }

 private:
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> m_surface;
};

// 0xRRGGBB of a colour with red in the low byte.
inline std::uint32_t RgbOf(COLORREF color) { return (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu); }
