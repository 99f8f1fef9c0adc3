// The stand-in for the computer's processes: it answers with what it was given. Neighbour: PlatformProcesses.h, the
// interface it fills.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/PlatformProcesses.h"

// The members are set before it is put in force, or while nobody asks.
class ZELBASE_API FixedProcesses : public PlatformProcesses {
 public:
  std::vector<std::string> ExecutableNames() override { return names; }
  long long CurrentId() override { return id; }
  unsigned long LogicalProcessors() override { return processors; }

  std::vector<std::string> names;
  long long id = 1;
  unsigned long processors = 1;
};
