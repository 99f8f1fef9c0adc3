// The framework's handle of a thing that a surface draws with: a pen, a brush, a font. Neighbour: CDC.h, which makes and
// selects them.
#pragma once

// Means something to the surface that gave it, and to no other. Null is none.
using HGDIOBJ = void*;
