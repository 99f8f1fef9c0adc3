// The framework's drawing context: the surface that geometry draws on, in pixels, y downwards. Neighbours: CPoint.h, CSize.h and
// CRect.h, its coordinates.
#pragma once

#include "zelbase/platform/CObject.h"
#include "zelbase/platform/ZelBaseApi.h"

// An abstract surface, as small as its callers need it: a window, a picture in memory or a recorder of what was drawn stands
// behind it. It is handed out by pointer and owned by whoever made it; those that draw never keep it.
//
//   class Recorder : public CDC { bool Rectangle(int x1, int y1, int x2, int y2) override { ... } };
//
// One thread at a time, the one that paints.
class ZELBASE_API CDC : public CObject {
 public:
  // Draws a rectangle with the present pen around the present brush, from (x1, y1) to just before (x2, y2). False when the
  // surface cannot.
  virtual bool Rectangle(int x1, int y1, int x2, int y2) = 0;
};
