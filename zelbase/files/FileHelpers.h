// Size and time of a file by its path. Neighbours: FileInfo.h, for all that the file system knows of a path; PathHelpers.h, for
// the path alone; HugeFileStream.h, for a file that is open.
//
// Any thread. Wild cards are characters like any other; links are followed.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Bytes. False, `size` untouched, for a path that does not exist. A folder gives true and 0.
ZELBASE_API bool GetFileSize(const std::string& path, unsigned long long& size);

// The time of the last writing in milliseconds since 1970-01-01 00:00:00 UTC. False, `time` untouched, for what does not open
// for reading.
ZELBASE_API bool GetFileWriteTime(const std::string& path, double& time);

// True when that time is exactly `time`, as two doubles; NaN equals nothing.
ZELBASE_API bool CompareFileWriteTime(const std::string& path, double time);
