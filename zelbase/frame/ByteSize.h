// A number of bytes as a person reads it, for status lines and file lists. Neighbour: StringAppend.h for numbers as they are.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Replaces `text` by `size` bytes in KB below 1 MB, in MB below 1 GB, otherwise in GB (1024 each): with one decimal when that
// is below 10 and not 0, otherwise with none.
//   0 gives "0 KB", 1536 "1.5 KB", 10240 "10 KB", 1048576 "1.0 MB"
// The decimals are chosen before rounding: 10239 gives "10.0 KB" and 1 gives "0.0 KB".
ZELBASE_API void FormatByteSize(unsigned long long size, std::string& text);

// The same with "/s" behind it.
ZELBASE_API void FormatByteSizeperSec(unsigned long long size, std::string& text);
