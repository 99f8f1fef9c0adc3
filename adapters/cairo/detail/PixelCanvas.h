// Direct writes into the pixels of an image: lines by whole numbers, filled areas, dots. Neighbours: EllipseRows.h and
// ThickLine.h, the rows of shapes; CairoSurface.h, which chooses between this and Cairo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "adapters/cairo/detail/EllipseRows.h"
#include "adapters/cairo/detail/ThickLine.h"
#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CRect.h"

namespace zelbase::detail {

// A colour as the image has it, blue in the low byte, and back. Cairo leaves the top byte of a pixel undefined.
constexpr std::uint32_t kColourBits = 0xFFFFFF;
constexpr std::uint32_t ToPixel(COLORREF color) { return (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu); }
constexpr COLORREF ToColour(std::uint32_t pixel) { return ToPixel(pixel); }

// What painting makes of a pixel: it keeps the bits `keep` and then turns over the bits `flip`. So one loop serves every raster
// mode.
struct PixelInk {
  std::uint32_t keep = 0;
  std::uint32_t flip = 0;

  // For a raster mode (R2_NOT, R2_XORPEN; any other copies).
  static PixelInk Make(COLORREF color, int rop2);

  void Paint(std::uint32_t& pixel) const { pixel = (pixel & keep) ^ flip; }
};

// The gaps of a pen: bit i says whether pixel i of 24 is painted, and so on anew. `phase` is where the next line begins.
struct DashPattern {
  static constexpr unsigned kPeriod = 24;
  static constexpr std::uint32_t kSolid = 0xFFFFFF;

  std::uint32_t bits = kSolid;
  unsigned phase = 0;

  // For a style of pen (PS_SOLID to PS_DASHDOTDOT); anything else is solid.
  static DashPattern Make(unsigned style);
};

// The pixels of an image, 32 bits each, which stay the image's; and the part of them that may be painted. Coordinates may be any
// int: what lies outside is not painted, and costs no time by the pixel. A canvas without pixels paints nothing.
class PixelCanvas {
 public:
  PixelCanvas() = default;
  // `stride`: pixels from one row to the next.
  PixelCanvas(std::uint32_t* pixels, std::ptrdiff_t stride, int width, int height);

  // What may be painted, cut to the image; it begins as the whole image.
  void SetClip(const CRect& clip);
  const CRect& Clip() const { return m_clip; }

  bool IsInside(int x, int y) const { return m_clip.PtInRect(CPoint(x, y)); }

  // The image's pixel, for 0 <= x < width and 0 <= y < height alone.
  std::uint32_t& At(int x, int y) const { return m_pixels[y * m_stride + x]; }

  void FillRect(const CRect& rect, const PixelInk& ink) const;

  // The pixels of a row from `first` to `last`, both included; none when `last` is less.
  void FillRow(int y, int first, int last, const PixelInk& ink) const;

  // A line one pixel wide. In the longer of its two directions it has each coordinate from that of `from` to the one before
  // `to`; in the other one it is nearest to the straight line between the pixels' centres, the lower of two equally near: so
  // that there and back are the same pixels but for the ends. `dash` moves on by all its pixels, seen or not.
  void Line(const CPoint& from, const CPoint& to, const PixelInk& ink, DashPattern& dash) const;

  // A line of a wide pen.
  void Line(const ThickLine& line, const PixelInk& ink) const;

  // An ellipse: `edge` for its pixels that have one beside, above or below them that is not of it, `inside` for the others. Null
  // paints none of them.
  void Ellipse(const EllipseRows& rows, const PixelInk* edge, const PixelInk* inside) const;

 private:
  std::uint32_t* m_pixels = nullptr;
  std::ptrdiff_t m_stride = 0;
  int m_width = 0;
  int m_height = 0;
  CRect m_clip;
};

}  // namespace zelbase::detail
