// The pens, brushes and fonts of one surface: who made them, which are selected. Neighbours: CairoSurface.h, whose handles these
// are; LOGPEN.h and LOGFONT.h, what they describe.
#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/HGDIOBJ.h"
#include "zelbase/platform/LOGFONT.h"
#include "zelbase/platform/LOGPEN.h"

namespace zelbase::detail {

struct SurfaceBrush {
  bool isHollow = false;
  COLORREF color = 0;
};

// A handle is a number that no other object of this process has or had; it is looked up and never followed. So any value may be
// asked for, also a handle of another surface or of an object that is gone: it is none of ours.
class SurfaceObjects {
 public:
  using Thing = std::variant<LOGPEN, SurfaceBrush, LOGFONT>;

  // What is alive at most: who makes more has forgotten to delete.
  static constexpr std::size_t kMost = 10000;

  // The stock is there; its black pen, white brush and font are selected.
  SurfaceObjects();

  // Null when there are too many.
  HGDIOBJ Add(const Thing& thing);

  // False for what is selected, of the stock or none of ours.
  bool Remove(HGDIOBJ handle);

  // Gives what of its kind was selected before; null, with nothing changed, for what is none of ours.
  HGDIOBJ Select(HGDIOBJ handle);

  // By the platform's number (BLACK_PEN and so on); null for another one.
  HGDIOBJ Stock(int index) const;

  // By the platform's number of the kind (OBJ_PEN, OBJ_BRUSH, OBJ_FONT); null for another one.
  HGDIOBJ Current(unsigned kind) const;

  const LOGPEN& Pen() const { return m_pen; }
  const SurfaceBrush& Brush() const { return m_brush; }
  const LOGFONT& Font() const { return m_font; }

  // Null when it is no pen of ours.
  const LOGPEN* FindPen(HGDIOBJ handle) const;

 private:
  struct Entry {
    std::uintptr_t number;
    Thing thing;
  };

  const Entry* Find(HGDIOBJ handle) const;
  void AddStock(int index, const Thing& thing);

  std::vector<Entry> m_entries;  // by rising number; the stock first
  std::vector<int> m_stock;      // the stock's indexes, in the order of its entries
  HGDIOBJ m_selected[3] = {};    // by the place of the kind in Thing
  LOGPEN m_pen;                  // copies of what is selected
  SurfaceBrush m_brush;
  LOGFONT m_font;
};

}  // namespace zelbase::detail
