// One operation on tide values, chosen by numbers, done to a TideFile and to its plain sister, with the question whether they
// still agree. For tests and the fuzzer.
#pragma once

#include <bit>
#include <cstdint>

#include "tests/sonar/LiteralTide.h"
#include "zelbase/sonar/TideFile.h"

inline bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

// Whether both answered alike and stand on the same entry. `operation` counts modulo 16, of which the first are the changing ones.
inline bool DoTheSame(TideFile& tide, LiteralTide& literal, unsigned int operation, double time, double value) {
  double time1 = time, time2 = time, value1 = -1.0, value2 = -1.0;
  bool result1 = false, result2 = false;
  switch (operation % 16) {
    case 0:
    case 1:
    case 2:
      result1 = tide.AddTideValue(time, value);
      result2 = literal.AddTideValue(time, value);
      break;
    case 3:
    case 4:
      result1 = tide.DeleteTideValue(time);
      result2 = literal.DeleteTideValue(time);
      break;
    case 5:
      result1 = tide.UpdateTideValue(time, value);
      result2 = literal.UpdateTideValue(time, value);
      break;
    case 6:
      result1 = tide.GetTideValue(time, value1);
      result2 = literal.GetTideValue(time, value2);
      break;
    case 7:
      result1 = tide.GetValueBefore(time1, value1);
      result2 = literal.GetValueBefore(time2, value2);
      break;
    case 8:
      result1 = tide.GetValueOnOrBefore(time1, value1);
      result2 = literal.GetValueOnOrBefore(time2, value2);
      break;
    case 9:
      result1 = tide.GetValueAfter(time1, value1);
      result2 = literal.GetValueAfter(time2, value2);
      break;
    case 10:
      result1 = tide.GetValueOnOrAfter(time1, value1);
      result2 = literal.GetValueOnOrAfter(time2, value2);
      break;
    case 11:
      result1 = tide.GetFirstTideValue(time1, value1);
      result2 = literal.GetFirstTideValue(time2, value2);
      break;
    case 12:
      result1 = tide.GetLastTideValue(time1, value1);
      result2 = literal.GetLastTideValue(time2, value2);
      break;
    case 13:
    case 14:
      result1 = tide.GetNextTideValue(time1, value1);
      result2 = literal.GetNextTideValue(time2, value2);
      break;
    default:
      result1 = tide.GetPreviousTideValue(time1, value1);
      result2 = literal.GetPreviousTideValue(time2, value2);
      break;
  }
  bool agree = result1 == result2 && SameBits(time1, time2) && SameBits(value1, value2);
  agree = agree && tide.GetNumValues() == literal.GetNumValues();
  time1 = time2 = value1 = value2 = -2.0;
  agree = agree && tide.GetCurrentTideValue(time1, value1) == literal.GetCurrentTideValue(time2, value2);
  return agree && SameBits(time1, time2) && SameBits(value1, value2);
}
