// Strings as plain bytes, zeros included: appending and searching. Neighbour: StringAppend.h appends the text of a value.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Appends `size` bytes from `data`, which may lie in `text` itself. Null data appends nothing. A size from 0x80000000 up is a
// negative one: std::invalid_argument, and the text is unchanged.
ZELBASE_API void CStringAppend(std::string& text, const void* data, unsigned int size);

// Appends one byte.
ZELBASE_API void CStringAppend(std::string& text, unsigned char byte);

// Appends all bytes of `more`.
ZELBASE_API void CStringAppend(std::string& text, const std::string& more);

// The first position from `start` on that holds the pattern's first byte and leaves room for the whole pattern; -1 when there
// is none. The pattern's other bytes do not count: CStringFind("abcabd", "abd", 0) is 0. An empty pattern and a `start` at or
// behind the end give -1. A negative `start` throws std::invalid_argument, also on an empty text.
ZELBASE_API int CStringFind(std::string text, std::string pattern, int start);

// The same for a pattern of one byte.
ZELBASE_API int CStringFind(std::string text, unsigned char c, int start);
