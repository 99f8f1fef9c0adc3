// Colours: a table from depths to colours, a depth's colour and a whole row's, and the table as settings.
#include <cstdio>
#include <vector>

#include "zelbase/colour/ColorTable.h"

int main() {
  ColorTable table;
  table.SetRange(0.0, 10.0, 2.0, 0x0000FFu, 0xFF0000u);  // a step each 2 metres, red to blue
  std::printf("%d steps\n", table.NumEntries());
  std::printf("at 0.5 m red %u\n", table.GetColor(0.5) & 0xFFu);
  std::printf("at 99 m blue %u\n", table.GetColor(99.0) >> 16);

  const std::vector<double> row = {1.0, 5.0, 9.5};
  std::vector<COLORREF> colors(row.size());
  table.GetColors(row, colors);
  bool same = true;
  for (std::size_t i = 0; i < row.size(); ++i) same = same && colors[i] == table.GetColor(row[i]);
  std::printf("a row has the colours of its values: %s\n", same ? "yes" : "no");
  return 0;
}

// Prints:
//   6 steps
//   at 0.5 m red 255
//   at 99 m blue 255
//   a row has the colours of its values: yes
