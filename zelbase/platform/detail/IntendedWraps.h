// Marks a function whose integers wrap, lose their high bits or change their sign on purpose, so that the search for those that nobody
// meant passes over it. Neighbours: cmake/integer-ignored.txt, the code of others that it passes over. Internal to the library.
#pragma once

// Stands in front of a function, or behind the parameters of a lambda. The generated code is the same.
#ifdef __clang__
#define ZELBASE_WRAPS __attribute__((no_sanitize("unsigned-integer-overflow", "implicit-conversion", "unsigned-shift-base")))
#else
#define ZELBASE_WRAPS
#endif
