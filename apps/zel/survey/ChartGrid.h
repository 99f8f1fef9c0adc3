// The grid over the map and the frame around it: lines of round coordinates, and what they are where they meet the frame. Neighbours:
// ChartSteps.h for round numbers, ChartOverlay.h draws the lines, ChartFurniture.h what stands beside the map.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "survey/ChartLayout.h"
#include "survey/SheetPen.h"
#include "survey/Survey.h"

namespace zel {

// The four sides of the map's window.
enum class Side { Top, Right, Bottom, Left };

// A place where a line of round coordinates meets the frame.
struct FrameMark {
  double at = 0.0;       // millimetres on the sheet, along x on top and bottom, along y on the others
  double value = 0.0;    // the coordinate
  long long number = 0;  // of half steps in it
  bool isWhole = false;  // a whole step, which has a line and a label
};

// Coordinates of the grid, or latitude and longitude when the survey asks for these and knows the projection. On a turned map each of
// the two runs of lines is labelled on those two sides that it meets more squarely.
class ChartGrid {
 public:
  ChartGrid(const Survey& survey, const MapView& view);

  // The lines, in the world: from round coordinate to round coordinate, straight or in many pieces.
  const std::vector<std::vector<Point>>& Lines() const { return m_lines; }

  // By rising `at`.
  const std::vector<FrameMark>& Marks(Side side) const { return m_marks[static_cast<std::size_t>(side)]; }

  // Whether the lines of constant x, or longitude, are labelled at this side.
  bool ShowsEastings(Side side) const { return m_eastingsAcross == (side == Side::Top || side == Side::Bottom); }

  // "123 400 E", "051°57.5'N"; UTF-8.
  std::string LabelOf(double value, bool isEasting) const;

  bool IsGeographic() const { return m_isGeographic; }

  // From line to line: metres, or degrees of latitude.
  double Step() const { return m_stepY; }

  // The rules around the map, the alternating bars and the labels.
  void DrawFrame(const SheetPen& pen) const;

 private:
  struct Bounds;

  Bounds GridBounds() const;
  bool GeographicBounds(Bounds& bounds) const;
  void ChooseSteps(const Bounds& bounds);
  void MakeLines(const Bounds& bounds);
  std::vector<Point> PathOf(double value, bool isEasting, const Bounds& bounds) const;
  void MarkCrossings(const std::vector<Point>& path, bool isEasting, FrameMark mark);
  void DrawBars(const SheetPen& pen, Side side) const;
  void DrawLabels(const SheetPen& pen, Side side) const;

  const Survey& m_survey;
  const MapView& m_view;
  bool m_isGeographic = false;
  bool m_eastingsAcross = true;
  double m_stepX = 1.0, m_stepY = 1.0;
  int m_decimals = 0;
  std::vector<std::vector<Point>> m_lines;
  std::array<std::vector<FrameMark>, 4> m_marks;
};

}  // namespace zel
