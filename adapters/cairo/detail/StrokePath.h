// Gathers the lines that one pen draws, so that Cairo strokes them together and joined. Neighbour: CairoSurface.h, which says
// what a line covers.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <vector>

#include "zelbase/platform/CPoint.h"

namespace zelbase::detail {

// Beyond this distance from the origin Cairo's own coordinates end; lines are cut there.
inline constexpr int kFarthest = 1 << 19;

// Lines as CDC draws them, each from where it begins to just before its end, as one path. A line that begins where the one before
// it ended goes on with it.
class StrokePath {
 public:
  // A pen of an odd width runs through the pixels' centres, one of an even width along their edges.
  void SetWidth(int width) { m_isOdd = width % 2 != 0; }

  bool IsEmpty() const { return m_points.empty() && m_segments == 0; }

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
  bool m_isOdd = true;
  bool m_isComplete = false;
};

}  // namespace zelbase::detail
