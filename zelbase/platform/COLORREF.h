// The colour value of every interface. Neighbours: ColorTable.h, which makes colours and turns them into other models;
// CDC.h, which draws.
#pragma once

// Red in bits 0 to 7, green in bits 8 to 15, blue in bits 16 to 23, 0 above: pure red is 0x0000FF, pure blue 0xFF0000.
// The other way round than most programs write it ("#FF0000" for red). A settings file has it as "red, green, blue".
using COLORREF = unsigned int;
