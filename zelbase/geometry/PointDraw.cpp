#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/detail/SurfaceState.h"
#include "zelbase/platform/CDC.h"
#include "zelbase/platform/MulDiv.h"

using zelbase::detail::MadeObject;
using zelbase::detail::NearestInt;
using zelbase::detail::PenOf;
using zelbase::detail::PutBack;
using zelbase::detail::SelectedPen;
using zelbase::detail::ToPixel;

namespace {

constexpr int kDotsPerInchOfSizes = 96;

constexpr int kUpright = 0;
constexpr int kDiagonal = 1;
constexpr int kUprightAndDiagonal = 2;

// Pixels with room for the sums of two positions and sizes.
struct WidePixel {
  long long x;
  long long y;
};

WidePixel PixelOf(const Point& point, const CoordinateSystem& cs) {
  const CPoint pixel = cs.WorldToPixel(point);
  return {pixel.x, pixel.y};
}

// Crosses around one point.
class CrossPainter {
 public:
  CrossPainter(CDC& dc, const CoordinateSystem& cs, const Point& point, int size)
      : m_dc(dc),
        m_cs(cs),
        m_length(MulDiv(size, dc.GetDeviceCaps(LOGPIXELSY), kDotsPerInchOfSizes)),
        // An odd pen needs one pixel more at the far end to lie in the middle.
        m_odd(PenOf(dc).width % 2),
        m_at(PixelOf(point, cs)) {}

  void DrawUpright() { DrawStrokes(1, 0); }
  void DrawDiagonal() { DrawStrokes(1, 1); }

 private:
  // Two strokes, the arm of the first being (x, y) times the length.
  void DrawStrokes(int x, int y) {
    if (m_cs.GetRotationMode() != ROTATIONMODE_SKEW) return DrawStrokes(WidePixel{x * m_length, y * m_length}, m_odd);
    // Kept: a turned arm is one longer and the pen's width does not count; it is truncated afterwards.
    double armX = x * (m_length + 1.0);
    double armY = y * (m_length + 1.0);
    m_cs.RotatePtoW(armX, armY);
    DrawStrokes(WidePixel{ToPixel(armX), ToPixel(armY)}, 0);
  }

  void DrawStrokes(const WidePixel& arm, int odd) {
    // Kept: the odd pixel goes to one axis of each stroke, of the diagonal ones too.
    MoveTo(m_at.x - arm.x, m_at.y - arm.y);
    LineTo(m_at.x + arm.x + odd, m_at.y + arm.y);
    MoveTo(m_at.x + arm.y, m_at.y - arm.x);
    LineTo(m_at.x - arm.y, m_at.y + arm.x + odd);
  }

  void MoveTo(long long x, long long y) { m_dc.MoveTo(NearestInt(x), NearestInt(y)); }
  void LineTo(long long x, long long y) { m_dc.LineTo(NearestInt(x), NearestInt(y)); }

  CDC& m_dc;
  const CoordinateSystem& m_cs;
  int m_length;
  int m_odd;
  WidePixel m_at;
};

// The rectangle that reaches `reach` pixels to all sides of one pixel, right and bottom edge excluded.
CRect Around(const WidePixel& at, long long reach) {
  return CRect(NearestInt(at.x - reach), NearestInt(at.y - reach), NearestInt(at.x + reach + 1), NearestInt(at.y + reach + 1));
}

void DrawOutline(CDC& dc, const CRect& box) {
  const PutBack brush(dc, dc.SelectStockObject(HOLLOW_BRUSH));
  dc.Rectangle(box.left, box.top, box.right, box.bottom);
}

void DrawDisc(CDC& dc, const CRect& box, COLORREF color) {
  const MadeObject solid(dc, dc.CreateSolidBrush(color));
  const PutBack brush(dc, dc.SelectObject(solid.Get()));
  dc.Ellipse(box.left, box.top, box.right, box.bottom);
}

}  // namespace

void Point::DrawCross(CDC* dc, const CoordinateSystem& cs, int size) const {
  if (dc != nullptr) CrossPainter(*dc, cs, *this, size).DrawUpright();
}

void Point::DrawSymbol(CDC* dc, const CoordinateSystem& cs, int size, int kind) const {
  if (dc == nullptr || kind < kUpright || kind > kUprightAndDiagonal) return;
  CrossPainter cross(*dc, cs, *this, size);
  if (kind != kDiagonal) cross.DrawUpright();
  if (kind != kUpright) cross.DrawDiagonal();
}

void Point::DrawPixel(CDC* dc, const CoordinateSystem& cs, COLORREF color) const {
  if (dc == nullptr) return;
  Point pixel;
  cs.WorldToPixel(*this, &pixel);
  // Kept: the window's far edges are inside, which is one pixel beyond its last; the surface leaves it out.
  if (cs.GetPixelWindow().IsPointInPage(pixel)) dc->SetPixel(ToPixel(pixel.x), ToPixel(pixel.y), color);
}

void Point::DrawDot(CDC* dc, const CoordinateSystem& cs, int radius, CSize offset, bool outline, int margin) const {
  if (dc == nullptr) return;
  WidePixel at = PixelOf(*this, cs);
  at.x += offset.cx;
  at.y += offset.cy;
  const SelectedPen pen = PenOf(*dc);
  const bool isOnePixel = radius < 1;
  if (outline) return DrawOutline(*dc, Around(at, (isOnePixel ? 0LL : radius) + margin));
  if (!isOnePixel) return DrawDisc(*dc, Around(at, radius), pen.color);
  dc->SetPixel(NearestInt(at.x), NearestInt(at.y), pen.color);
}
