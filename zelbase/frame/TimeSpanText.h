// A span of time as a person reads it, "3 days 04:05:06". Neighbours: the texts of a moment stand with CExTime; NumberFormat.h
// for plain numbers.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Hours and minutes in two digits each, "04:05", and with `withSeconds` the seconds, "04:05:06"; from one day on "3 days " in
// front, also "1 days ". Seconds are cut, not rounded, and without them the minutes are.
//   TimeSpanToString(90061000.0, true)    "1 days 01:01:01"
//
// `milliseconds` below 0: each field is what C's division and remainder give, "-1:-1:-1" for -3661000, and whole days are left
// out. Not finite, or more seconds than 64 bits hold: as 0. Pure, safe on any thread.
ZELBASE_API std::string TimeSpanToString(double milliseconds, bool withSeconds);
