// The job that takes all points of a source, one after the other, with progress and a stop. Neighbours: XYZDataSource.h, the
// source; Processor.h, what every job has.
#pragma once

#include <memory>

#include "zelbase/concurrency/Processor.h"
#include "zelbase/data/XYZDataSource.h"
#include "zelbase/platform/ZelBaseApi.h"

// Derive, and take the points:
//
//   class DepthImport : public XyzImporter {
//    public:
//     explicit DepthImport(XYZDataSource* source) : XyzImporter(source, true) {}
//    protected:
//     bool AddPoint(const TimePoint& point) override { return m_grid.Add(point.position); }
//     ...
//   };
//
// Any thread may ask for the progress or Stop meanwhile. Not copyable.
class ZELBASE_API XyzImporter : public Processor {
 public:
  // The source is deleted at the end when `ownsSource` is true; otherwise it outlives this. A null source fails.
  XyzImporter(XYZDataSource* source, bool ownsSource);
  ~XyzImporter() override;

  // Hands every point to AddPoint. True at the end of the source, and for an empty one, stopped or not. False when AddPoint
  // refused a point or a stop was asked for, which is looked at before each point: the points up to then have been added.
  //
  // Progress is the source's position, set after each point that was taken. An error text is the deriving class's to set.
  bool Process() override;

 protected:
  // Takes one point. False ends the job as failed.
  virtual bool AddPoint(const TimePoint& point);

  XYZDataSource* GetDataSource();

  // The source's own answers, -1 and false without a source. They may read the whole source: inside AddPoint they leave it at
  // its end, and the job then ends there.
  int GetNumberOfPoints() const;
  bool GetExtents(Point& minimum, Point& maximum) const;

 private:
  XYZDataSource* m_source;
  std::unique_ptr<XYZDataSource> m_owned;
};
