// Draws the furniture of a sheet in millimetres: rules, boxes and texts, x to the right and y down. Neighbours: ChartFurniture.h and
// ProfilePicture.cpp, which draw with it; ChartOverlay.h draws what lies on the map through the library.
#pragma once

#include <cairo.h>

#include <string>
#include <vector>

#include "zelbase/platform/COLORREF.h"

namespace zel {

// Red, green and blue from 0 to 1, and how much it covers.
struct Ink {
  double red = 0.0, green = 0.0, blue = 0.0, cover = 1.0;

  static Ink Of(COLORREF color);
  Ink Covering(double share) const { return {red, green, blue, share}; }
};

// The few colours that all pictures of a survey share.
namespace inks {
inline constexpr Ink kText{0.12, 0.16, 0.21};
inline constexpr Ink kFaint{0.42, 0.47, 0.53};
inline constexpr Ink kRule{0.60, 0.65, 0.70};
inline constexpr Ink kGridLine{0.68, 0.73, 0.78};
inline constexpr Ink kPaper{1.0, 1.0, 1.0};
inline constexpr Ink kWater{0.945, 0.968, 0.980};
inline constexpr Ink kLand{0.957, 0.902, 0.757};
inline constexpr Ink kCoast{0.55, 0.43, 0.22};
inline constexpr Ink kWorkArea{0.72, 0.16, 0.50};
inline constexpr Ink kDesign{0.75, 0.12, 0.10};
inline constexpr Ink kOverDepth{0.86, 0.45, 0.10};
inline constexpr Ink kTrack{0.10, 0.20, 0.42};
inline constexpr Ink kVessel{0.98, 0.78, 0.22};
}  // namespace inks

enum class Face { Plain, Bold, Serif, SerifBold };

struct TextStyle {
  double size = 2.6;  // millimetres, of the font
  Ink ink = inks::kText;
  Face face = Face::Plain;
  double align = 0.0;  // 0 from the position on, 0.5 around it, 1 up to it
  double angle = 0.0;  // degrees, clockwise
};

// Lives as long as the Cairo context, whose units it makes millimetres; what the context had is put back at its end. Texts are UTF-8
// and go through fonts without hinting, so that they are as wide on every surface.
class SheetPen {
 public:
  // `unitsPerMillimetre`: of the context as it is handed over.
  SheetPen(cairo_t* pen, double unitsPerMillimetre);
  ~SheetPen();
  SheetPen(const SheetPen&) = delete;
  SheetPen& operator=(const SheetPen&) = delete;

  cairo_t* Context() const { return m_pen; }

  void Rule(double x1, double y1, double x2, double y2, double width, const Ink& ink) const;
  void Box(double x, double y, double width, double height, double lineWidth, const Ink& ink) const;
  void Fill(double x, double y, double width, double height, const Ink& ink) const;

  // The path that the context has, which is empty afterwards.
  void Stroke(double width, const Ink& ink) const;
  void FillPath(const Ink& ink) const;

  // (x, y) lies on the base line.
  void Text(double x, double y, const std::string& text, const TextStyle& style) const;

  // With a rim in the colour of the paper around the letters.
  void HaloText(double x, double y, const std::string& text, const TextStyle& style, double rim) const;

  // How far it reaches along its base line.
  double Width(const std::string& text, const TextStyle& style) const;

  // Lines of at most `width`, broken at blanks; a word that is longer has a line of its own, cut with an ellipsis. At most `lines`.
  std::vector<std::string> Wrap(const std::string& text, const TextStyle& style, double width, std::size_t lines) const;

  // The text, or the longest front of it that fits with an ellipsis behind.
  std::string Fit(const std::string& text, const TextStyle& style, double width) const;

 private:
  void Choose(const TextStyle& style) const;

  cairo_t* m_pen;
};

}  // namespace zel
