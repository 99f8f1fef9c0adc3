// Draws what lies in the world on a map, through the library's drawing members and clipped to the map's window. Neighbours:
// ChartOverlay.h draws the chart with it, ProfilePicture.cpp the long section; SheetPen.h draws what lies on the sheet.
#pragma once

#include <string>
#include <vector>

#include "adapters/cairo/CairoSurface.h"
#include "survey/SheetPen.h"
#include "survey/Survey.h"
#include "zelbase/geometry/CoordinateSystem.h"
#include "zelbase/geometry/Line.h"

namespace zel {

// Lives no longer than its surface, and sets its clip to the map's window until it ends. Widths and heights are millimetres of the
// sheet.
class MapPen {
 public:
  // `parts`: pixels of surface and system to a millimetre.
  MapPen(CairoSurface& surface, const CoordinateSystem& system, int parts);
  ~MapPen();
  MapPen(const MapPen&) = delete;
  MapPen& operator=(const MapPen&) = delete;

  // Of the lines from now on, `rim` wider on both sides. They cover all of what is below, whatever the ink says.
  void Use(const Ink& ink, double width, double rim = 0.0);

  void Draw(const Line& line) const { line.DrawLine(&m_surface, m_system, m_system.worldWindow); }
  void Draw(const std::vector<Point>& path) const;

  // The outlines of closed polygons.
  void DrawRings(const std::vector<std::vector<Point>>& rings) const;

  // Fills polygons, by the even-odd rule.
  void Fill(const std::vector<std::vector<Point>>& rings, const Ink& ink) const;

  // A diagonal cross whose arms reach `size` to all sides.
  void Cross(const Point& place, double size) const;

  // A text that ends where the line begins, in the line's direction. Windows-1252.
  void Annotate(const Line& line, const std::string& text, double height, const Ink& ink) const;

  // The same with a rim of paper, so many metres of the world wide, around the letters.
  void AnnotateWithRim(const Line& line, const std::string& text, double height, const Ink& ink, double metres) const;

  // How wide Annotate writes it.
  double AnnotationWidth(const std::string& text, double height) const;

  // Where a place of the world lies on the sheet, in millimetres.
  Point OnSheet(const Point& world) const;

  const CoordinateSystem& System() const { return m_system; }

 private:
  HGDIOBJ MakeFont(double height) const;

  CairoSurface& m_surface;
  CoordinateSystem m_system;
  double m_parts;
  HGDIOBJ m_pen = nullptr;
  HGDIOBJ m_former = nullptr;
};

}  // namespace zel
