// The drawing surface for pictures in memory (saved as PNG) and for sheets (SVG, PDF), on Cairo. Neighbours: CDC.h, the operations
// that geometry draws with; docs/drawing.md, what they paint to the pixel.
#pragma once

#include <cairo.h>

#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "zelbase/platform/CDC.h"

// Png: an image of whole pixels. Svg and Pdf: a sheet of strokes and areas, on which a pixel is a square of one unit.
enum class CairoFormat : int { Png = 0, Svg = 1, Pdf = 2 };

// A white surface of `width` by `height` pixels, at so many dots per inch. A sheet has the size that an image of as many dots per
// inch has in print: 2100 pixels at 254 dots per inch are 21 cm in either case.
//
//   CairoSurface chart(CairoFormat::Png, 1600, 1200);
//   chart.SelectObject(chart.CreatePen(PS_SOLID, 2, 0x0000FF));   // red
//   line.DrawLine(&chart, system, page);
//   chart.Save([&file](std::string_view bytes) { return file.Write(bytes); });    // the caller's file; false when it failed
//
// What always holds:
// (1) A surface that could not be made (IsGood) takes every call and paints, measures and saves nothing: false, 0 or all bits set.
//     Settings and handles are kept as ever. It can be made from 1 to 32767 pixels either way and 2^28 pixels in all (an image has
//     four bytes for each), at 10 to 10000 dots per inch.
// (2) Coordinates may be any int. What lies outside the surface costs no time by its length.
// (3) Without smoothing (SetSmooth), the operations on an image paint whole pixels in the very colour:
//     - a line of a pen up to one pixel wide has in its longer direction each coordinate once, without that of its end, and
//       in the other one it is nearest to the straight line; both directions of drawing give the same pixels between the ends;
//     - a wider pen of an odd width runs through the pixels' centres and ends a step before the end; one of an even width runs
//       along the pixels' edges. So a cross of either is symmetrical. Its ends and corners are round, and it has the pixels whose
//       centres it covers;
//     - Rectangle and FillSolidRect paint exactly the pixels from left to right - 1 and from top to bottom - 1; Ellipse those of
//       them whose centres are in the ellipse. Pens wider than a pixel reach beyond, by half of what they are wider.
// (4) SetPixel and all that a pen or a brush paints obey the raster mode (SetROP2) on images: a line that is drawn twice with
//     R2_XORPEN or R2_NOT leaves no trace. FillSolidRect and texts copy. A sheet has no pixels to read and copies always.
// (5) On sheets, and on images for smooth pens and wide ones with gaps, lines that go on from each other are stroked in one piece.
//     A line stops a step before its end there, too, until SetPixel sets the end in the pen's colour or the next line goes on from it.
//
// At the beginning: black pen, white brush, SYSTEM_FONT (ten points), black text at its top left (TA_LEFT | TA_TOP) with a
// background (OPAQUE) of white, R2_COPYPEN, not smooth, no clip.
//
// Handles are numbers that are looked up and never followed; no number comes twice in a process. Those of another surface or of
// an object that is gone are none of this surface's. At most 10000 objects live at a time; the surface's end frees those left.
//
// Not copyable. One thread at a time; different surfaces may be drawn on at once.
class CairoSurface : public CDC {
 public:
  CairoSurface(CairoFormat format, int width, int height, int dotsPerInch = 96);
  ~CairoSurface() override;
  CairoSurface(const CairoSurface&) = delete;
  CairoSurface& operator=(const CairoSurface&) = delete;

  // False when it could not be made, when memory ran out while drawing, and for a sheet after Save: nothing is painted then.
  bool IsGood() const;
  CairoFormat Format() const;
  int Width() const;  // pixels; what was asked for, also when it could not be made
  int Height() const;

  // Hands the whole file to `write`, piece by piece in order, until that gives false. False then and when the surface is not good;
  // an exception of `write` counts as false. An image may be drawn on and saved again. A sheet is closed by it, and can only be
  // saved again.
  bool Save(const std::function<bool(std::string_view)>& write);

  // For what these operations cannot paint: Cairo's own context, one unit a pixel, with all that was drawn so far in it; null when
  // the surface is not good. Ask anew whenever one of the other operations has painted in between. Leave matrix, clip and the
  // stack of states as they were (cairo_save, cairo_restore); everything else may change. It stays the surface's.
  cairo_t* Context();

  // The colour of an image's pixel; all bits set outside the image, on a sheet and on a surface that is not good.
  COLORREF GetPixel(int x, int y);

  // Lines, ellipses, dots and texts with soft edges from now on, in R2_COPYPEN; gives the former state. Lines are then stroked
  // through the pixels' centres. Sheets are always smooth.
  bool SetSmooth(bool smooth);

  // Paints within this rectangle only, right and bottom edge excluded, until the next call; ResetClip ends it.
  void SetClipRect(const CRect& rect);
  void ResetClip();

  // R2_NOT, R2_XORPEN or R2_COPYPEN; another mode changes nothing. Gives the former one.
  int SetROP2(int rop2);

  // Gives the former one.
  COLORREF SetTextColor(COLORREF color);

  // A pen of one of the styles PS_SOLID to PS_NULL, null for another one. A width up to 1 is one pixel, the greatest is 32767. GetObject
  // tells a width of 0 as such, and a cross then lacks the last pixels of its arms (Point::DrawCross): for crosses ask for 1. Of a
  // pen with gaps, one of 24 pixels of width 1 is the period of its pattern, which begins anew with MoveTo.
  HGDIOBJ CreatePen(unsigned style, int width, COLORREF color);

  // SetPixel for many: pixel i in colour i, or all in one when there is one colour only; the rest of a longer row is left out.
  void SetPixels(std::span<const CPoint> points, std::span<const COLORREF> colors);

  // Likewise with filled circles of 2 * radius + 1 pixels across, without an outline: as Ellipse fills them with a brush.
  // A radius below 0 is none. Later ones lie above earlier ones.
  void FillDots(std::span<const CPoint> points, std::span<const COLORREF> colors, int radius);

  CPoint MoveTo(int x, int y) override;

  // False when the surface is not good.
  bool LineTo(int x, int y) override;

  // The colour that the pixel has then. All bits set outside the surface or its clip.
  COLORREF SetPixel(int x, int y, COLORREF color) override;

  // The edges may come in any order; without width or height nothing is painted. With NULL_PEN the brush fills all of it.
  bool Rectangle(int x1, int y1, int x2, int y2) override;

  // Likewise. Also false, with nothing painted, when Cairo is to paint it (a sheet, smooth, a wide pen or one with gaps) and a
  // coordinate is beyond 65536 in magnitude.
  bool Ellipse(int x1, int y1, int x2, int y2) override;

  // LOGPIXELSY; 0 for others.
  int GetDeviceCaps(int index) const override;

  // OBJ_PEN, OBJ_BRUSH or OBJ_FONT.
  HGDIOBJ GetCurrentObject(unsigned kind) const override;
  bool GetObject(HGDIOBJ object, LOGPEN& pen) const override;
  int GetROP2() const override;

  // Null, with nothing changed, for what is none of this surface's.
  HGDIOBJ SelectObject(HGDIOBJ object) override;

  // WHITE_BRUSH, BLACK_BRUSH, HOLLOW_BRUSH, WHITE_PEN, BLACK_PEN, NULL_PEN, SYSTEM_FONT; null for others.
  HGDIOBJ SelectStockObject(int index) override;
  HGDIOBJ CreateSolidBrush(COLORREF color) override;

  // The face as the system knows it ("Arial"; one that is not there is replaced). Letters stand in the line's direction, whatever
  // lfOrientation is. Sizes end at 4096 pixels.
  HGDIOBJ CreateFontIndirect(const LOGFONT& font) override;

  // Also false for what is selected: it stays.
  bool DeleteObject(HGDIOBJ object) override;

  // Bytes of a text that are valid UTF-8 are taken as that, all others as Windows-1252. Control characters are not shown. What lies
  // beyond 8192 bytes of UTF-8 is left out.
  CSize GetTextExtentPoint32A(const std::string& text) const override;
  unsigned SetTextAlign(unsigned align) override;
  int SetBkMode(int mode) override;

  // The corner, or the point of the base line, that the alignment names is the upper left corner of the pixel (x, y); about it a
  // font's escapement turns the text. So an upright text at its top left begins in this pixel.
  bool TextOut(int x, int y, const std::string& text) override;
  void FillSolidRect(const CRect& rect, COLORREF color) override;
  COLORREF GetBkColor() const override;
  COLORREF SetBkColor(COLORREF color) override;

 private:
  struct Body;
  std::unique_ptr<Body> m_body;
};
