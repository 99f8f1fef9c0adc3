// What the tests of profile lines share: a line with given points, stand-ins for the classes of other modules, and the exact
// comparison of points.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/geometry/LineData.h"
#include "zelbase/geometry/Page.h"

class CAttributeMap {};
class CenterLine {};

using ProfilePoints = std::vector<ProfilePoint>;

inline void Write(std::ostream& stream, const ProfilePoint& point) {
  stream << "(" << point.x << ", " << point.y << ", " << point.z << "; " << point.distance << (point.sectionStart ? ", start)" : ")");
}

// Equal to the last bit, -0.0 apart from 0.0; one NaN is as good as another.
inline bool SameValue(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return a == b && std::signbit(a) == std::signbit(b);
}

inline bool SamePoint(const ProfilePoint& a, const ProfilePoint& b) {
  return SameValue(a.x, b.x) && SameValue(a.y, b.y) && SameValue(a.z, b.z) && SameValue(a.distance, b.distance) &&
         a.sectionStart == b.sectionStart;
}

inline testing::AssertionResult SamePoints(const ProfilePoints& a, const ProfilePoints& b) {
  if (a.size() != b.size()) return testing::AssertionFailure() << a.size() << " points and " << b.size();
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (SamePoint(a[i], b[i])) continue;
    testing::AssertionResult result = testing::AssertionFailure();
    std::ostringstream text;
    text.precision(17);
    Write(text, a[i]);
    Write(text << " and ", b[i]);
    return result << "point " << i << ": " << text.str();
  }
  return testing::AssertionSuccess();
}

inline testing::AssertionResult NearPoint(const ProfilePoint& a, const ProfilePoint& b, double tolerance = 1e-9) {
  const auto isNear = [tolerance](double u, double v) { return std::fabs(u - v) <= tolerance; };
  if (isNear(a.x, b.x) && isNear(a.y, b.y) && isNear(a.z, b.z) && isNear(a.distance, b.distance) && a.sectionStart == b.sectionStart) {
    return testing::AssertionSuccess();
  }
  std::ostringstream text;
  text.precision(17);
  Write(text, a);
  Write(text << " and ", b);
  return testing::AssertionFailure() << text.str();
}

inline ProfilePoints PointsOf(LineData& line) {
  ProfilePoints points;
  for (int i = 0; i < line.NumDataPoints(); ++i) points.push_back(line.DataPoint(i));
  return points;
}

// A line whose points, answers and losses a test decides, and that counts what is asked of it. LoadLineData takes `delivered`
// and puts it in order as the base does, unless `loads` is false.
class SetLine : public LineData {
 public:
  explicit SetLine(ProfilePoints points = {}) : LineData("set") { m_points = std::move(points); }
  SetLine(const SetLine&) = default;
  SetLine& operator=(const SetLine&) = default;
  ~SetLine() override {
    if (destroyed != nullptr) ++*destroyed;
  }

  bool GetModelExtents(Page& page) override {
    page = extents;
    return hasExtents;
  }
  void SetAttributes(const CAttributeMap& attributes) override { given = &attributes; }
  bool LoadLineData(const std::string& a, const std::string& b, const CenterLine& line) override {
    ++loadCount;
    requests.push_back(a + "|" + b);
    lastLine = &line;
    found = m_points;
    if (!loads) return false;
    if (deliver) m_points = delivered;
    return LineData::LoadLineData(a, b, line);
  }

  void Set(ProfilePoints points) { m_points = std::move(points); }
  const ProfilePoints& Points() const { return m_points; }

  bool hasExtents = true;
  Page extents;
  bool loads = true;
  bool deliver = true;
  ProfilePoints delivered;
  ProfilePoints found;  // what LoadLineData found in place
  int loadCount = 0;
  std::vector<std::string> requests;
  const CenterLine* lastLine = nullptr;
  const CAttributeMap* given = nullptr;
  int* destroyed = nullptr;
};
