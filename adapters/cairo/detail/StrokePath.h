// Gathers the lines that one pen draws, so that Cairo strokes them together and joined. Neighbours: ThickLine.h, where a
// pen runs; CairoSurface.h.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <vector>

#include "zelbase/platform/CPoint.h"

namespace zelbase::detail {

// Beyond this distance from the origin, farther than any surface with half its widest pen reaches, lines are cut: so that neither
// Cairo's coordinates end nor the gaps of a pen are without number.
inline constexpr int kFarthest = 1 << 16;

// Lines as CDC draws them, each from where it begins to just before its end, as one path. A line that begins where the one before
// it ended goes on with it.
class StrokePath {
 public:
  // The pen's width, which says where in the pixels it runs (PenTrack of ThickLine.h).
  void SetWidth(int width) { m_width = width; }

  bool IsEmpty() const { return m_points.empty() && m_segments == 0; }

  // Whether a line from here goes on with the one before.
  bool GoesOnFrom(const CPoint& point) const { return !m_points.empty() && m_points.back() == point; }

  // Enough to be stroked now.
  bool IsLong() const { return m_segments + m_points.size() >= kMost; }

  // Two different points. The path so far goes to `path` when it does not go on.
  void Add(cairo_t* path, const CPoint& from, const CPoint& to);

  // The last line has its end too, when that is `end`. False when it is not, or when there is none.
  bool CompleteAt(const CPoint& end);

  // The rest goes to `path`, and all is as at the beginning.
  void Finish(cairo_t* path);

 private:
  static constexpr std::size_t kMost = 256;

  void Emit(cairo_t* path);

  std::vector<CPoint> m_points;  // of the line in work
  std::size_t m_segments = 0;    // given to the path so far
  int m_width = 1;
  bool m_isComplete = false;
};

}  // namespace zelbase::detail
