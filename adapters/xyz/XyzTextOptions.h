// How a text of positions is to be read. Neighbour: XyzTextSource.h, the reader.
#pragma once

#include <cstddef>

struct XyzTextOptions {
  // What follows z is not looked at, whatever it is, and no point has a time. Otherwise it is the time, and a line with yet
  // another column is broken: so a text with decimal commas does not pass for one with other numbers.
  bool positionOnly = false;

  // Broken lines that are kept with their reasons; all are counted.
  std::size_t keptProblems = 10;
};
