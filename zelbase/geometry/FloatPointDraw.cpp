#include "zelbase/geometry/FloatPoint.h"
#include "zelbase/geometry/Point.h"

void FloatPoint::DrawCross(CDC* dc, const CoordinateSystem& cs, int size) const { Point(*this).DrawCross(dc, cs, size); }

void FloatPoint::DrawSymbol(CDC* dc, const CoordinateSystem& cs, int size, int kind) const { Point(*this).DrawSymbol(dc, cs, size, kind); }

void FloatPoint::DrawPixel(CDC* dc, const CoordinateSystem& cs, COLORREF color) const { Point(*this).DrawPixel(dc, cs, color); }

void FloatPoint::DrawDot(CDC* dc, const CoordinateSystem& cs, int radius, CSize offset, bool outline, int margin) const {
  Point(*this).DrawDot(dc, cs, radius, offset, outline, margin);
}
