// The numbers by which programs name what they put on a clipboard. Neighbour: PlatformClipboard.h, which knows them.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// The platform's own format of a list of dropped files; DroppedFiles.h reads its block.
inline constexpr unsigned short CF_HDROP = 15;

// The number of the format of that name, from 0xC000 to 0xFFFF: the same one for every caller, and without regard to the case of
// the letters A to Z. 0 for a null or empty name, and when there are no more numbers. Any thread.
ZELBASE_API unsigned int RegisterClipboardFormatA(const char* name);
