// The base class of all profile lines: points by rising chainage along a line in the plan, with the height at each station.
// Neighbours: LineDataList.h makes lines by type number, OffsetLineData.h and VerticalOffsetLineData.h show a line shifted.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "zelbase/geometry/ProfilePoint.h"
#include "zelbase/platform/ZelBaseApi.h"

class CAttributeMap;  // of another module; only passed on
class CenterLine;     // of another module; only passed on
class Page;

// Concrete lines derive from it, fill m_points in LoadLineData from a source of their own and then call the base, which puts
// the list into the order of travel. A line is empty until it is loaded.
//
// A line may consist of sections without connection. The first point of each carries `sectionStart`: no line runs to it from
// the point before.
//
//   class FileLine : public LineData {
//    public:
//     explicit FileLine(const std::string& name) : LineData(name) {}
//     bool LoadLineData(const std::string& a, const std::string& b, const CenterLine& line) override {
//       m_points = ReadStations(a);                // delivered in either direction
//       return LineData::LoadLineData(a, b, line);
//     }
//   };
//
// A class that overrides one of the two DataPoint says `using LineData::DataPoint;`, or the other one is hidden.
//
// Copies are full copies, of the points and of what LoadCached keeps. A line belongs to one thread at a time.
class ZELBASE_API LineData {
 public:
  // An empty line. The name is not stored; it is there for lines that read by it.
  explicit LineData(const std::string& name);
  LineData(const LineData&) = default;
  LineData& operator=(const LineData&) = default;

  virtual ~LineData();

  // The area that the line's model covers. The base answers false and leaves the page.
  virtual bool GetModelExtents(Page& page);

  // Hands over attributes that a concrete line may draw on. The base does nothing.
  virtual void SetAttributes(const CAttributeMap& attributes);

  // Loads. What the two strings ask for is up to the concrete line. The base loads and clears nothing: it puts m_points, as
  // the derived class has filled it, into the order of travel, and answers true.
  //
  // - Fewer than 2 points stay as they are, without a flag.
  // - The first point gets `sectionStart`.
  // - When the first chainage is above the last (or one of the two is NaN) the list was delivered backwards and is reversed.
  //   What ended a section then begins one, and the flags move accordingly. The points between are not looked at.
  virtual bool LoadLineData(const std::string& a, const std::string& b, const CenterLine& line);

  virtual int NumDataPoints() const;

  // The line at chainage `distance`, interpolated between its two stations. `out.distance` is the request, and
  // `out.sectionStart` false. False leaves `out`:
  //
  // - an empty line; NaN; a chainage outside the line. The two ends answer within MATH::Equal, which takes an infinite request
  //   for equal to either end; `out` is then the end point itself, with its own chainage and flag;
  // - a gap: between a section and the first point of the next one, that point included (the line's first point answers);
  // - a segment of which one end has chainage exactly 0.0, unless the request is the first point.
  //
  // Logarithmic; the list must rise by chainage, otherwise the answer is that of some segment of it, or false.
  virtual bool DataPoint(double distance, ProfilePoint& out) const;

  // The point at `index`, 0 to NumDataPoints() - 1. Any other index gives a default ProfilePoint.
  virtual ProfilePoint DataPoint(int index);

  // Loads by LoadLineData at the first request of these two strings and from memory at later ones, also when the first one
  // failed: a failed load, which leaves the line empty, is not tried again. True when the line has points afterwards.
  //
  // The strings are told apart by a + "," + b only, and the line's other settings by nothing: what was loaded first stays, for
  // as long as this object lives. When LoadLineData is called, the points of before are still in place. A load by LoadLineData
  // itself neither reads nor fills this memory.
  virtual bool LoadCached(const std::string& a, const std::string& b, const CenterLine& line);

 protected:
  std::vector<ProfilePoint> m_points;

 private:
  std::map<std::string, std::vector<ProfilePoint>> m_cache;
};
