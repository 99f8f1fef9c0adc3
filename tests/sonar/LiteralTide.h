// Tide values a second time, on the map of the language with an iterator as the position, step by step as the operations are
// stated. For tests and the fuzzer; NaN times are not for this.
#pragma once

#include <iterator>
#include <map>

class LiteralTide {
 public:
  using Map = std::map<double, double>;

  bool AddTideValue(double time, double value) {
    values[time] = value;
    return true;
  }
  bool DeleteTideValue(double time) {
    if (current != values.end() && current->first == time) {
      current = values.erase(current);
      return true;
    }
    return values.erase(time) > 0;
  }
  bool UpdateTideValue(double time, double value) {
    if (current != values.end() && current->first == time) {
      current->second = value;
      return true;
    }
    current = values.lower_bound(time);
    if (current == values.end() || current->first != time) return false;
    current->second = value;
    return true;
  }
  bool GetTideValue(double time, double& value) {
    current = values.find(time);
    if (current == values.end()) return false;
    value = current->second;
    return true;
  }
  bool GetValueBefore(double& time, double& value) {
    current = values.lower_bound(time);
    if (values.empty() || current == values.begin()) return false;
    --current;
    return Deliver(time, value);
  }
  bool GetValueOnOrBefore(double& time, double& value) {
    current = values.lower_bound(time);
    if (current != values.end() && current->first == time) return Deliver(time, value);
    if (current != values.begin()) --current;
    return Deliver(time, value);
  }
  bool GetValueAfter(double& time, double& value) {
    current = values.upper_bound(time);
    return Deliver(time, value);
  }
  bool GetValueOnOrAfter(double& time, double& value) {
    current = values.lower_bound(time);
    return Deliver(time, value);
  }
  bool GetFirstTideValue(double& time, double& value) {
    current = values.begin();
    return Deliver(time, value);
  }
  bool GetLastTideValue(double& time, double& value) {
    current = values.empty() ? values.end() : std::prev(values.end());
    return Deliver(time, value);
  }
  bool GetNextTideValue(double& time, double& value) {
    if (current != values.end()) ++current;
    return Deliver(time, value);
  }
  bool GetPreviousTideValue(double& time, double& value) {
    if (current != values.begin()) --current;
    return Deliver(time, value);
  }
  bool GetCurrentTideValue(double& time, double& value) { return Deliver(time, value); }
  int GetNumValues() const { return static_cast<int>(values.size()); }

  Map values;
  Map::iterator current = values.end();

 private:
  bool Deliver(double& time, double& value) {
    if (current == values.end()) return false;
    time = current->first;
    value = current->second;
    return true;
  }
};
