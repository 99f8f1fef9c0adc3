#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Line.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/platform/CDC.h"

void Page::DrawRect(CDC* dc, const CoordinateSystem& cs, const Page& clip) const {
  const Point topLeft(left, top, 0);
  const Point bottomRight(right, bottom, 0);
  Line(BottomLeft(), topLeft).DrawLine(dc, cs, clip);
  Line(topLeft, TopRight()).DrawLine(dc, cs, clip);
  Line(TopRight(), bottomRight).DrawLine(dc, cs, clip);
  Line(bottomRight, BottomLeft()).DrawLine(dc, cs, clip);
}

void Page::DrawSolidRect(CDC* dc, const CoordinateSystem& cs, COLORREF color, const Page& clip) const {
  Page visible = *this;
  if (dc == nullptr || !clip.ClipRect(visible)) return;
  const COLORREF before = dc->GetBkColor();
  dc->FillSolidRect(cs.WorldToPixel(visible), color);
  dc->SetBkColor(before);
}
