// The names in a block of dropped files, as the clipboard's format CF_HDROP has it. Neighbours: ClipboardFormats.h, the number;
// zelbase/data/CCF_HDROP.h, which writes such a block.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/HGLOBAL.h"
#include "zelbase/platform/ZelBaseApi.h"

// The block begins with 20 bytes, five little-endian numbers of 4 bytes: where the names begin, two coordinates, a flag, and whether
// the names are of 16-bit characters. Each name ends with a zero byte; an empty name, or the block's end, ends the list.
//
// No names for a null or short block, for names that begin behind its end, and for names of 16-bit characters, which an adapter
// turns into 8-bit ones before it hands the block over.
ZELBASE_API std::vector<std::string> DroppedFileNames(const HGLOBAL& block);
