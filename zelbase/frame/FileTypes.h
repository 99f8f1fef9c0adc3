// The file types of the suite by number and by key. Neighbour: KeyTables.h, whose fileTypeKeys is the table of both.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// The key of the file type with this number, as GetFileKeyForType(34) is "TideFile"; empty from 109 up.
ZELBASE_API std::string GetFileKeyForType(unsigned int type);

// The number of the file type with this key, compared exactly; 0xFFFFFFFF when there is none.
ZELBASE_API unsigned int GetFileTypeForKey(const std::string& key);
