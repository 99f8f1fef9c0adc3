// A profile line moved at right angles to itself: for a design slope the parallel slope at a given distance, as a dredging
// tolerance or an over-depth surface needs. Neighbours: VerticalOffsetLineData.h shifts heights only, LineData.h is the line.
#pragma once

#include <memory>
#include <string>

#include "zelbase/geometry/LineData.h"
#include "zelbase/platform/ZelBaseApi.h"

// Reads a source line and holds its offset line as points of its own. The work is done in the plane of the profile, chainage
// across and height up: each segment is moved to the left of travel by the offset, so upward on a level line; corners get
// arcs; the loops that appear at inner corners are cut out; and the result may be lifted to a level. The plan position of a
// moved point follows from the horizontal direction of its segment.
//
//   OffsetLineData overDepth(&design, false);
//   overDepth.SetOffset(-0.5);                       // metres, below the design
//   if (overDepth.LoadLineData("axis", "12", line))  // loads the design, then ApplyOffset
//     Draw(overDepth);
//
// What may surprise:
// - An inner station appears twice, once for each of its segments. Where they meet at an angle, the points of an arc stand
//   between, on the outside of a bend as on the inside; its chords stay within the tolerance.
// - A source of one point, or of sections of one point each, has no segments: the offset line is empty.
// - A segment without horizontal movement counts as one along x, backwards: its points move by MINUS the shift in x.
// - Loops are sought along the whole line, with no regard to sections: where two sections overlap they are joined at their
//   crossing, and the flag between is lost. A loop that is still open at the last point stays.
// - Chainages rise along the result but for loops that have no crossing.
//
// Settings take effect at the next ApplyOffset or LoadLineData. LoadCached keeps the points of its first load, with the offset
// of that moment.
//
// The source is read only through its NumDataPoints and DataPoint(int). Copies share it; where it is owned, the last copy
// destroys it. Without a source the line is empty: extents and loading fail, attributes go nowhere.
//
// Bounds: 2 points a segment and at most 4096 arc points a corner (reached with offsets beyond some 680 km). A corner whose arc
// is not a number (NaN or infinite offset or source) has no arc. Cost: n log n in the points, wide loops included; at worst the
// square, on a line that swings to and fro ever wider without crossing itself.
class ZELBASE_API OffsetLineData : public LineData {
 public:
  // A line on `source`, empty until ApplyOffset. With `ownsSource` the source is destroyed with this line, otherwise it must
  // outlive it.
  OffsetLineData(LineData* source, bool ownsSource);

  // The source's extents, without the offset.
  bool GetModelExtents(Page& page) override;

  // Handed on to the source.
  void SetAttributes(const CAttributeMap& attributes) override;

  // Loads the source with the same arguments, then ApplyOffset. False when the source fails, with the line empty.
  bool LoadLineData(const std::string& a, const std::string& b, const CenterLine& line) override;

  // Metres in the plane of the profile, positive to the left of travel. 0.0 exactly copies the source's points: no station is
  // doubled. Default 0.0.
  void SetOffset(double offset);
  double GetOffset() const;

  // Metres, added to each height of the source before anything else. Default 0.0.
  void SetZShift(double zShift);
  double GetZShift() const;

  // The level of ClipToMaxZ, and whether ApplyOffset ends with it. Default 0.0, not enabled.
  void SetMaxZ(double maxZ, bool enabled);
  double GetMaxZ() const;
  bool IsMaxZEnabled() const;

  // The chord error allowed in corner arcs, 0.1 m. An offset of no more than that has no arcs.
  double GetTolerance() const;

  // Makes the points anew from the source as it stands. Always true.
  bool ApplyOffset();

  // Lifts every point that lies below the level to it, also when the level is not enabled. Before a point without flag a point
  // is put in where the straight way to it from the ORIGIN (0, 0, 0, chainage 0) passes the level, if it does; the point
  // before plays no part. Each call puts such points in anew.
  void ClipToMaxZ();

 private:
  double m_offset = 0.0;
  double m_zShift = 0.0;
  double m_maxZ = 0.0;
  bool m_maxZEnabled = false;
  double m_tolerance = 0.1;
  std::shared_ptr<LineData> m_source;
};
