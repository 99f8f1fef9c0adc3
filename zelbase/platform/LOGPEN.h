// The framework's description of a pen. Neighbours: CDC.h, whose GetObject fills one; LOGFONT.h for fonts.
#pragma once

#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/CPoint.h"

// A plain value.
struct LOGPEN {
  unsigned lopnStyle = 0;  // 0: a line without gaps
  CPoint lopnWidth;        // the width in pixels is x; 0 draws one pixel wide; y says nothing
  COLORREF lopnColor = 0;
};
