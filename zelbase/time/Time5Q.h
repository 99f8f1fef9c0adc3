// The packed time record of the suite's sonar data. Neighbour: CExTime.h, which converts it to and from a time value.
#pragma once

#pragma pack(push, 1)

// A UTC time as a date of year and day of the year with a time of day, 10 bytes without padding, least significant byte
// first on disk and on the wire. A plain record: bytes may be copied into and out of it, and `tagTIME5Q record{};` is
// all zeros.
//
// The fields are unaligned: take them by value, never by reference or pointer. Readers do not test the time of day, so
// any number may stand in `seconds`, `hours` and `minutes`.
struct tagTIME5Q {
  unsigned short year;    // offset 0: full year
  unsigned short day;     // offset 2: day of the year, 1 = 1 January
  float seconds;          // offset 4: seconds within the minute, with fraction
  unsigned char hours;    // offset 8: 0..23
  unsigned char minutes;  // offset 9: 0..59
};

#pragma pack(pop)

static_assert(sizeof(tagTIME5Q) == 10);
