#include <cmath>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/geometry/BoxComp.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/geometry/Polar.h"
#include "zelbase/geometry/detail/SurfaceState.h"
#include "zelbase/platform/CDC.h"

using zelbase::detail::MadeObject;
using zelbase::detail::PenOf;
using zelbase::detail::SelectedPen;
using zelbase::detail::ToPixel;

namespace {

CPoint Truncated(const Point& pixel) { return CPoint(ToPixel(pixel.x), ToPixel(pixel.y)); }

Line PixelLine(const Line& line, const CoordinateSystem& cs) {
  Line pixels;
  cs.WorldToPixel(line.start, &pixels.start);
  cs.WorldToPixel(line.end, &pixels.end);
  return pixels;
}

Page PixelPage(const Page& page, const CoordinateSystem& cs) {
  Page pixels;
  cs.WorldToPixel(page, &pixels);
  return pixels;
}

// Paints the pixel that LineTo leaves out.
void DrawLastPixel(CDC& dc, const CPoint& last) {
  const SelectedPen pen = PenOf(dc);
  if (!pen.exists) return;
  dc.SetPixel(last.x, last.y, pen.color);
  const int rop2 = dc.GetROP2();
  // Kept: a second time where painting twice brings the surface back; a line drawn twice must vanish whole.
  if (rop2 == R2_NOT || rop2 == R2_XORPEN) dc.SetPixel(last.x, last.y, pen.color);
}

// A font whose line of text runs along the bearing.
LOGFONT FontAlong(double bearing, int height) {
  constexpr int kFullTurn = 3600;  // tenths of a degree
  int direction = ToPixel(4500.0 - bearing * 10.0);
  // Kept: truncated, and 3600 itself stays; due east, whose bearing is a trifle above 90, is 3599.
  if (direction > kFullTurn) direction -= kFullTurn;
  LOGFONT font;
  font.lfHeight = height;
  font.lfEscapement = direction;
  font.lfOrientation = direction;
  font.lfFaceName = "Arial";
  return font;
}

// The space between a point and the edge that a text of this quadrant leans on.
double SpaceToEdge(const Point& anchor, const Page& page, int quadrant) {
  switch (quadrant) {
    case 0: return std::fabs(anchor.x - page.left);
    case 1: return std::fabs(anchor.y - page.top);
    case 2: return std::fabs(anchor.x - page.right);
    default: return std::fabs(anchor.y - page.bottom);
  }
}

// Whether the page holds the whole text when it ends at the anchor.
bool HoldsText(const Page& page, const Point& anchor, double bearing, const CSize& size) {
  constexpr short kBottomRight = 1;
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;
  BoxComp(kBottomRight, Point(), size.cy, size.cx, bearing - 90.0).GetBoundaries(left, bottom, right, top);
  return page.IsPointInPage(anchor.x + left, anchor.y - bottom) && page.IsPointInPage(anchor.x + right, anchor.y - top);
}

}  // namespace

void Line::DrawLine(CDC* dc, const CoordinateSystem& cs, const Page& page) const {
  // Kept: compared with their heights; a line of nothing but height paints its one pixel.
  if (dc == nullptr || start == end) return;
  Line pixels = PixelLine(*this, cs);
  if (!PixelPage(page, cs).ClipLine(pixels)) return;
  const CPoint first = Truncated(pixels.start);
  const CPoint last = Truncated(pixels.end);
  dc->MoveTo(first.x, first.y);
  dc->LineTo(last.x, last.y);
  DrawLastPixel(*dc, last);
}

bool Line::AnnotateLine(CDC* dc, const CoordinateSystem& cs, const Page& page, const std::string& text, int height) const {
  if (dc == nullptr || start == end) return false;
  const Page pixelPage = PixelPage(page, cs);
  const Line pixels = PixelLine(*this, cs);
  Line visible;
  if (!pixelPage.ClipLine(pixels, &visible)) return false;
  double bearing = 0;
  double length = 0;
  XYToPolar(visible.end.x - visible.start.x, -(visible.end.y - visible.start.y), bearing, length);

  const MadeObject font(*dc, dc->CreateFontIndirect(FontAlong(bearing, height)));
  const HGDIOBJ fontBefore = dc->SelectObject(font.Get());
  const int modeBefore = dc->SetBkMode(TRANSPARENT);
  const CSize size = dc->GetTextExtentPoint32A(text);
  Point anchor = visible.start;
  // Kept: asked of the line as it was before it was clipped; the start of the visible piece never counts as clipped.
  const bool isMoved = pixels.PlaceText(anchor, bearing, size, pixelPage);
  const unsigned alignBefore = dc->SetTextAlign(TA_RIGHT | (isMoved ? TA_BOTTOM : TA_BASELINE));
  const CPoint at = Truncated(anchor);
  dc->TextOut(at.x, at.y, text);
  dc->SelectObject(fontBefore);
  dc->SetTextAlign(alignBefore);
  dc->SetBkMode(modeBefore);
  return true;
}

bool Line::PlaceText(Point& anchor, double bearing, const CSize& size, const Page& page) const {
  if (HoldsText(page, anchor, bearing, size)) return false;
  bool startClipped = false;
  bool endClipped = false;
  Clip(page, true, false, startClipped, endClipped);
  if (!startClipped) return false;

  // Kept: whole degrees; due west, whose bearing is a trifle below 270, is 89 degrees of the quadrant before.
  const int degrees = ToPixel(bearing) % 360;
  const int rest = degrees % 90;
  const double space = SpaceToEdge(anchor, page, degrees / 90);
  const double extra = rest > 0 && space < size.cy ? size.cy / std::tan(rest * D_TO_R) : 0.0;
  double x = 0;
  double y = 0;
  PolarToXY(bearing, size.cx + extra, x, y);
  anchor.x += x;
  anchor.y -= y;
  return true;
}
