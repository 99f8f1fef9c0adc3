// The soundings as a picture: each a dot in the colour of its depth, the shoaler on top of the deeper. Neighbours: ChartLayout.h says
// where they lie, ChartLabels.h which of them have their depth written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "survey/ChartLayout.h"
#include "zelbase/colour/ColorTable.h"
#include "zelbase/geometry/Point.h"

namespace zel {

// Rows of pixels from the top, 0xAARRGGBB, either opaque or nothing at all.
struct PixelImage {
  int left = 0, top = 0;  // of the first pixel, counted from the sheet's upper left corner
  int width = 0, height = 0;
  std::vector<std::uint32_t> pixels;

  bool IsEmpty() const { return pixels.empty(); }
};

// The shoalest height at each pixel of a map. Eight bytes a pixel; nothing is kept of a sounding.
class ChartSoundings {
 public:
  // Told where each sounding lies, in millimetres from the sheet's upper left corner.
  using Visit = std::function<void(double x, double y, double z, std::size_t index)>;
  using Progress = std::function<bool(double)>;

  // Draws. Each sounding in the map's window is told to `visit`, if there is one. Ends early once `progress` says false.
  ChartSoundings(const std::vector<Point>& soundings, const MapView& view, const Visit& visit, const Progress& progress);

  // Of the dots, in fine pixels; odd.
  int Diameter() const { return m_diameter; }

  // The part of the map that has soundings, sheet::kFineParts pixels to a millimetre.
  PixelImage Fine(const ColorTable& colours) const;

  // The same with sheet::kPngParts: each the shoalest of the fine ones.
  PixelImage Coarse(const ColorTable& colours) const;

 private:
  struct Grid {
    int width = 0, height = 0;
    std::vector<double> heights;  // minus infinity where there is none

    double* Row(int y) { return heights.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }
    const double* Row(int y) const { return heights.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }
  };

  void ChooseDiameter(const std::vector<Point>& soundings, const CoordinateSystem& system);
  void DrawDot(int x, int y, double z);
  Grid Pooled() const;
  static PixelImage ImageOf(const Grid& grid, const ColorTable& colours);

  Grid m_grid;
  int m_diameter = 1;
  std::vector<int> m_reach;  // of a dot's rows, from the top, to either side of its middle
};

}  // namespace zel
