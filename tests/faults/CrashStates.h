// What a disk may hold after the power has gone, for each moment of a recorded work on files. Neighbour: SystemCallFaults.h,
// which records.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/faults/SystemCallFaults.h"

// The files of a folder by path.
using DiskContent = std::map<std::string, std::string>;

// Calls `look` with every state in which the disk may be found when the power goes behind the first `done` of `changes`, which
// begin on `before`. What was forced out is there. Of everything else, each on its own, any part may be: a write is whole, lost,
// has its front half, its back half, or its length but zeros for bytes; the making, renaming or removing of a name is done or not,
// and a cut of a file likewise. Returns the number of states.
unsigned long long ForEachCrashState(const DiskContent& before, const std::vector<DiskChange>& changes, std::size_t done,
                                     const std::function<void(const DiskContent&)>& look);
