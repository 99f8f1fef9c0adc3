// The interface of a stream of positioned points, with their extents and number computed when somebody asks. Neighbours:
// XyzImporter.h, the job that takes all points of a source; BaseDataSource.h, a source of data blocks.
#pragma once

#include <memory>

#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/TimePoint.h"
#include "zelbase/platform/ZelBaseApi.h"

class CDataBlock;  // another module's

// Derive, and deliver the points:
//
//   class TrackSource : public XYZDataSource {
//    public:
//     bool GetFirstPoint(TimePoint& point) override { m_next = 0; return GetNextPoint(point); }
//     bool GetNextPoint(TimePoint& point) override {
//       if (m_next == m_track.size()) return false;
//       point = m_track[m_next++];
//       return true;
//     }
//     double GetPosition() override { return m_track.empty() ? 1.0 : double(m_next) / double(m_track.size()); }
//     void Load(std::vector<TimePoint> track) { m_track = std::move(track); Clear(); }   // other content, other extents
//     ...
//   };
//
// Extents and number of points are kept until the deriving class calls Clear. A copy shares what is kept: it answers as its
// source does, without a pass of its own, and a Clear of either leaves the other's.
//
// A source is destroyed through this base. One thread at a time.
class ZELBASE_API XYZDataSource {
 public:
  XYZDataSource() = default;
  XYZDataSource(const XYZDataSource&) = default;
  XYZDataSource& operator=(const XYZDataSource&) = default;
  virtual ~XYZDataSource();

  virtual int GetDataGroup() { return 0; }

  // The data block behind the points, if there is one: moves to the next; the present one, not the caller's.
  virtual bool GetNextDataBlock() { return false; }
  virtual CDataBlock* GetDataBlock() const { return nullptr; }

  // Rewinds and delivers the first point. False when there is none.
  virtual bool GetFirstPoint(TimePoint& point) = 0;

  // Delivers the next point. False at the end.
  virtual bool GetNextPoint(TimePoint& point) = 0;

  // At most 2147483647, and -1 for a source without points. Asks for the extents, and so may read the whole source.
  virtual int GetNumberOfPoints();

  // Lowest and highest x, y and z over all points. NaN replaces nothing, and a NaN of the first point stays.
  //
  // The first time this is a pass over the whole source, which is left at its end; from then on, until Clear, the source is
  // not read. Not so when it is empty: then the answer is false, and the source is asked again the next time. On false the
  // arguments are as they were. When both are one object it holds the maximum.
  //
  // Asked for again by the source itself in the middle of the pass, it answers with what has come so far. A source that
  // calls Clear in the middle of the pass ends it: false.
  virtual bool GetExtents(Point& minimum, Point& maximum);

  // Part of the source read so far, 0 to 1.
  virtual double GetPosition() = 0;

  // Side of the cells, in metres, that suits a grid of these points; the argument is left alone.
  virtual double GetPreferredCellSize(bool&) { return 1.0; }

 protected:
  // Forgets extents and number of points. For a deriving class to call when its content changes.
  void Clear() const;

 private:
  class Pass;

  bool ComputeExtents();

  // Both or neither; the time of both is that of the first point.
  mutable std::shared_ptr<TimePoint> m_minimum;
  mutable std::shared_ptr<TimePoint> m_maximum;
  mutable int m_numberOfPoints = -1;
};
