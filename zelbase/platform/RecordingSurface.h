// A drawing surface that paints nothing and keeps every call, so that a test compares what was drawn number by number.
// Neighbours: CDC.h, the interface; RecordingHelp.h, the same for help.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "zelbase/platform/CDC.h"
#include "zelbase/platform/ZelBaseApi.h"

// Selects, makes and deletes as a surface does, with one pen, a white brush and a font from the beginning. The public members
// are set and read between calls.
//
//   RecordingSurface surface;
//   Line(Point(10, 20, 0), Point(30, 20, 0)).DrawLine(&surface, system, page);
//   surface.Painted();             // {"MoveTo 10 20", "LineTo 30 20", "SetPixel 30 20 0"}
//   surface.NumNotDeleted();       // 0: nothing that was made is left
//
// Every call counts, questions among them. It stands in `calls` even when it fails.
//
// Handles mean something to this surface alone. They are numbered: 1 is the pen, 2 the brush, 3 the font, 4 the hollow brush; then
// each thing made gets the next number, which is never given again. As a number in a call 0 is null and -1 a handle of nothing.
//
// One thread at a time.
class ZELBASE_API RecordingSurface : public CDC {
 public:
  // One call: the name of the member and what it was given.
  struct Call {
    std::string name;
    std::vector<long long> numbers;  // in order; a handle is its number; a font is height, width, escapement, orientation, weight
    std::string text;                // the text, or the name of a font's face; empty where the member takes none

    // "LineTo 10 20", "SetPixel 3 4 255", "TextOut 1 2 'abc'": with single quotes, for those that take a text.
    std::string ToString() const;

    bool operator==(const Call&) const = default;
  };

  RecordingSurface();
  RecordingSurface(const RecordingSurface&) = delete;
  RecordingSurface& operator=(const RecordingSurface&) = delete;

  // The pen from now on; none at all without a value.
  void SetPen(const std::optional<LOGPEN>& pen);
  void SetPen(int width, COLORREF color) { SetPen(LOGPEN{0, CPoint(width, 0), color}); }

  // The calls so far as lines of text: all of them, or those that leave a mark or move the pen's position (MoveTo, LineTo, SetPixel,
  // Rectangle, Ellipse, TextOut, FillSolidRect).
  std::vector<std::string> Lines() const;
  std::vector<std::string> Painted() const;

  // Things made and not deleted.
  std::size_t NumNotDeleted() const;

  CPoint MoveTo(int x, int y) override;
  bool LineTo(int x, int y) override;
  COLORREF SetPixel(int x, int y, COLORREF color) override;
  bool Rectangle(int x1, int y1, int x2, int y2) override;
  bool Ellipse(int x1, int y1, int x2, int y2) override;
  int GetDeviceCaps(int index) const override;
  HGDIOBJ GetCurrentObject(unsigned kind) const override;
  bool GetObject(HGDIOBJ object, LOGPEN& pen) const override;
  int GetROP2() const override;

  // Null, nothing selected, for a handle of nothing and for the number of no stock object; HOLLOW_BRUSH is the only one here.
  HGDIOBJ SelectObject(HGDIOBJ object) override;
  HGDIOBJ SelectStockObject(int index) override;

  HGDIOBJ CreateSolidBrush(COLORREF color) override;
  HGDIOBJ CreateFontIndirect(const LOGFONT& font) override;
  bool DeleteObject(HGDIOBJ object) override;

  // `letter.cx` for each byte, `letter.cy` high, whatever the font; a width beyond int is the highest.
  CSize GetTextExtentPoint32A(const std::string& text) const override;

  unsigned SetTextAlign(unsigned align) override;
  int SetBkMode(int mode) override;
  bool TextOut(int x, int y, const std::string& text) override;
  void FillSolidRect(const CRect& rect, COLORREF color) override;
  COLORREF GetBkColor() const override;
  COLORREF SetBkColor(COLORREF color) override;

  int dotsPerInch = 96;         // of GetDeviceCaps(LOGPIXELSY)
  int rop2 = R2_COPYPEN;        // of GetROP2
  CSize letter = CSize(8, 16);  // of a text's extent
  bool answer = true;           // of what draws; false also makes nothing new
  mutable std::vector<Call> calls;

 private:
  struct Thing {
    unsigned kind = 0;
    bool isStock = false;
    LOGPEN pen;
  };

  void Note(const char* name, std::vector<long long> numbers, const std::string& text = std::string()) const;
  long long NumberOf(HGDIOBJ object) const;
  HGDIOBJ Make(unsigned kind, bool isStock);
  HGDIOBJ Select(HGDIOBJ object);
  bool IsSelected(HGDIOBJ object) const;

  std::map<HGDIOBJ, Thing> m_things;
  std::map<unsigned, HGDIOBJ> m_selected;  // by kind
  HGDIOBJ m_pen = nullptr;
  HGDIOBJ m_hollow = nullptr;
  long long m_lastNumber = 0;
  CPoint m_position;
  unsigned m_align = TA_LEFT | TA_TOP;
  int m_bkMode = OPAQUE;
  COLORREF m_bkColor = 0xFFFFFF;
};
