// A source of points from a list, that counts how it is asked and can be told to misbehave. For the tests of this folder only.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "zelbase/data/XYZDataSource.h"

class ListSource : public XYZDataSource {
 public:
  ListSource() = default;
  explicit ListSource(std::vector<TimePoint> list) : points(std::move(list)) {}

  bool GetFirstPoint(TimePoint& point) override {
    ++firstCalls;
    next = 0;
    if (atFirst) atFirst();
    return Deliver(point);
  }
  bool GetNextPoint(TimePoint& point) override {
    ++nextCalls;
    if (atNext) atNext();
    return Deliver(point);
  }
  double GetPosition() override { return points.empty() ? 1.0 : static_cast<double>(next) / static_cast<double>(points.size()); }
  void Change(std::vector<TimePoint> list) {
    points = std::move(list);
    Clear();
  }
  using XYZDataSource::Clear;

  std::vector<TimePoint> points;
  std::size_t next = 0;
  int firstCalls = 0;
  int nextCalls = 0;
  std::function<void()> atFirst;
  std::function<void()> atNext;

 private:
  bool Deliver(TimePoint& point) {
    if (next >= points.size()) return false;
    point = points[next++];
    return true;
  }
};
