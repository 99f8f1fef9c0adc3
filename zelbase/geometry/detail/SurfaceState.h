// What drawing asks of a surface before it draws, and how it puts back what it changed. Internal to the library; CDC.h is the
// surface.
#pragma once

#include "zelbase/platform/CDC.h"

namespace zelbase::detail {

// The pen that is selected.
struct SelectedPen {
  bool exists = false;
  int width = 0;  // pixels; 0 without a pen
  COLORREF color = 0;
};

inline SelectedPen PenOf(const CDC& dc) {
  const HGDIOBJ pen = dc.GetCurrentObject(OBJ_PEN);
  if (pen == nullptr) return {};
  LOGPEN description;
  dc.GetObject(pen, description);
  return {true, description.lopnWidth.x, description.lopnColor};
}

// Selects again, when it goes, what was selected before.
class PutBack {
 public:
  PutBack(CDC& dc, HGDIOBJ before) : m_dc(dc), m_before(before) {}
  ~PutBack() { m_dc.SelectObject(m_before); }
  PutBack(const PutBack&) = delete;
  PutBack& operator=(const PutBack&) = delete;

 private:
  CDC& m_dc;
  HGDIOBJ m_before;
};

// A brush or font that is deleted when it goes; by then it must no longer be selected.
class MadeObject {
 public:
  MadeObject(CDC& dc, HGDIOBJ object) : m_dc(dc), m_object(object) {}
  ~MadeObject() { m_dc.DeleteObject(m_object); }
  MadeObject(const MadeObject&) = delete;
  MadeObject& operator=(const MadeObject&) = delete;

  HGDIOBJ Get() const { return m_object; }

 private:
  CDC& m_dc;
  HGDIOBJ m_object;
};

}  // namespace zelbase::detail
