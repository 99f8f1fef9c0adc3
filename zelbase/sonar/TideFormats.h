// The layouts of date and time in the texts of tide tables, for the modules that read and write such texts. Neighbour:
// TideFile.h, the tide values themselves; nothing in the library reads these.
//
// The place of an entry is its number, from 0. D, M and Y stand for day, month and year; H, M and S for hour, minute and
// second. All are made before the first static object of a file that includes this header.
#pragma once

#include <string>

inline const std::string TideDateFormats[6] = {"DMY", "DYM", "MDY", "MYD", "YMD", "YDM"};

inline const std::string TideTimeFormats[2] = {"HM", "HMS"};

// Between the parts of a date or a time.
inline const std::string TideSeparators[6] = {" ", "/", ":", "\\", ",", "-"};
