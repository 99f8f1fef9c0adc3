// The framework's drawing context: the surface that geometry draws on, in pixels, y downwards. Neighbours: CPoint.h, CSize.h and
// CRect.h, its coordinates; LOGPEN.h and LOGFONT.h, what it draws with; RecordingSurface.h, a surface for tests.
#pragma once

#include <string>

#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/CObject.h"
#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CRect.h"
#include "zelbase/platform/CSize.h"
#include "zelbase/platform/HGDIOBJ.h"
#include "zelbase/platform/LOGFONT.h"
#include "zelbase/platform/LOGPEN.h"
#include "zelbase/platform/ZelBaseApi.h"

// The numbers of the framework that those who draw hand over or ask for.
inline constexpr int LOGPIXELSY = 90;         // GetDeviceCaps: dots per inch down the surface
inline constexpr unsigned OBJ_PEN = 1;        // GetCurrentObject: the pen,
inline constexpr unsigned OBJ_BRUSH = 2;      // the brush
inline constexpr unsigned OBJ_FONT = 6;       // or the font
inline constexpr int WHITE_BRUSH = 0;         // SelectStockObject: brushes that fill in white,
inline constexpr int BLACK_BRUSH = 4;         // in black
inline constexpr int HOLLOW_BRUSH = 5;        // or not at all,
inline constexpr int WHITE_PEN = 6;           // pens that draw in white,
inline constexpr int BLACK_PEN = 7;           // in black
inline constexpr int NULL_PEN = 8;            // or not at all,
inline constexpr int SYSTEM_FONT = 13;        // and the surface's own font
inline constexpr unsigned PS_SOLID = 0;       // LOGPEN: a line without gaps,
inline constexpr unsigned PS_DASH = 1;        // of dashes,
inline constexpr unsigned PS_DOT = 2;         // of dots,
inline constexpr unsigned PS_DASHDOT = 3;     // of a dash and a dot by turns,
inline constexpr unsigned PS_DASHDOTDOT = 4;  // of a dash and two dots by turns,
inline constexpr unsigned PS_NULL = 5;        // or none
inline constexpr int TRANSPARENT = 1;         // SetBkMode: only the letters are painted
inline constexpr int OPAQUE = 2;              // SetBkMode: a box in the background colour lies below them
inline constexpr int R2_NOT = 6;              // GetROP2: each painted pixel is inverted
inline constexpr int R2_XORPEN = 7;           // GetROP2: each painted pixel is the exclusive or of pen and surface
inline constexpr int R2_COPYPEN = 13;         // GetROP2: each painted pixel is the pen's
inline constexpr unsigned TA_LEFT = 0;        // SetTextAlign: the position is at the text's left,
inline constexpr unsigned TA_RIGHT = 2;       // at its right
inline constexpr unsigned TA_CENTER = 6;      // or in its middle,
inline constexpr unsigned TA_TOP = 0;         // and at its top,
inline constexpr unsigned TA_BOTTOM = 8;      // at its bottom
inline constexpr unsigned TA_BASELINE = 24;   // or at its base line

// An abstract surface, as small as its callers need it: a window, a picture in memory or a recorder of what was drawn stands
// behind it. It is handed out by pointer and owned by whoever made it; those that draw never keep it. What may fail says so by
// false, or by null for a handle, and leaves the surface usable.
//
// One thread at a time, the one that paints.
class ZELBASE_API CDC : public CObject {
 public:
  // Moves the pen's position without drawing; gives the former one.
  virtual CPoint MoveTo(int x, int y) = 0;

  // Draws from the pen's position to just before (x, y), which becomes the new position: the last pixel is left out.
  virtual bool LineTo(int x, int y) = 0;

  // Paints one pixel; gives the colour painted, all bits set when the surface could not.
  virtual COLORREF SetPixel(int x, int y, COLORREF color) = 0;

  // Draws a rectangle with the present pen around the present brush, from (x1, y1) to just before (x2, y2).
  virtual bool Rectangle(int x1, int y1, int x2, int y2) = 0;

  // The ellipse that fills this rectangle, likewise.
  virtual bool Ellipse(int x1, int y1, int x2, int y2) = 0;

  // A property of the surface by its number (LOGPIXELSY); 0 for one it does not know.
  virtual int GetDeviceCaps(int index) const = 0;

  // What is selected of a kind (OBJ_PEN and so on); null without one. It stays the surface's.
  virtual HGDIOBJ GetCurrentObject(unsigned kind) const = 0;

  // Describes a pen. False for a handle that is none, `pen` untouched.
  virtual bool GetObject(HGDIOBJ object, LOGPEN& pen) const = 0;

  // How painted pixels meet those already there (R2_COPYPEN and so on).
  virtual int GetROP2() const = 0;

  // Select a thing for its kind, by its handle or by the number of one that every surface has; give what was selected of this
  // kind before. A null handle selects nothing.
  virtual HGDIOBJ SelectObject(HGDIOBJ object) = 0;
  virtual HGDIOBJ SelectStockObject(int index) = 0;

  // A new brush or font, to be given back to DeleteObject once it is no longer selected. Null when the surface cannot.
  virtual HGDIOBJ CreateSolidBrush(COLORREF color) = 0;
  virtual HGDIOBJ CreateFontIndirect(const LOGFONT& font) = 0;

  // False for null, for a stock object, for what is still selected, and for a handle that is none of this surface's.
  virtual bool DeleteObject(HGDIOBJ object) = 0;

  // The box that a text fills in the selected font, lying level whatever the font's direction.
  virtual CSize GetTextExtentPoint32A(const std::string& text) const = 0;

  // Which point of a text its position is: one of TA_LEFT, TA_RIGHT, TA_CENTER with one of TA_TOP, TA_BOTTOM, TA_BASELINE. Gives
  // the former one.
  virtual unsigned SetTextAlign(unsigned align) = 0;

  // TRANSPARENT or OPAQUE, for texts. Gives the former one.
  virtual int SetBkMode(int mode) = 0;

  virtual bool TextOut(int x, int y, const std::string& text) = 0;

  // Fills the rectangle, right and bottom edge excluded. The background colour is `color` afterwards.
  virtual void FillSolidRect(const CRect& rect, COLORREF color) = 0;

  virtual COLORREF GetBkColor() const = 0;

  // Gives the former one.
  virtual COLORREF SetBkColor(COLORREF color) = 0;
};
