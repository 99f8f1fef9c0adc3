// The processes and processors of the computer. Neighbour: FixedProcesses.h, the stand-in.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

class ZELBASE_API PlatformProcesses {
 public:
  virtual ~PlatformProcesses() = default;

  // File names (no folder) of the executables of all running processes, the caller's included, one entry a process. A
  // process that ends meanwhile, or hides its name, is left out.
  virtual std::vector<std::string> ExecutableNames() = 0;

  // Number of the calling process. Differs in a forked child.
  virtual long long CurrentId() = 0;

  // Logical processors online; 0 when that cannot be told.
  virtual unsigned long LogicalProcessors() = 0;

  // This system's processes; never destroyed.
  static PlatformProcesses& System();
};
