// The processes and processors of the computer, and what its system says of itself. Neighbours: FixedProcesses.h, the
// stand-in; SystemProbes.h, what a host asks.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/SystemVersion.h"
#include "zelbase/platform/ZelBaseApi.h"

// Which version record is asked for: older systems know the plain one only.
enum class VersionRecord { Extended, Plain };

// What a record of processors tells about those in its mask. Other numbers exist.
enum class ProcessorRelation : unsigned int { Core = 0, MemoryNode = 1, Cache = 2, Package = 3 };

// Some logical processors that belong together; each is one bit.
struct ProcessorRecord {
  unsigned long long mask = 0;
  ProcessorRelation relation = ProcessorRelation::Core;
};

// Results of ReadProcessorRecords; any other number is the system's own for an error.
inline constexpr int PROCESSOR_RECORDS_READ = 0;
inline constexpr int PROCESSOR_RECORDS_DO_NOT_FIT = 122;

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

  // Whether this system keeps records of its processors. Where it does not, ReadProcessorRecords is not asked.
  virtual bool HasProcessorRecords() = 0;

  // Fills in the records; `count` is their room, and afterwards how many were filled in, or with
  // PROCESSOR_RECORDS_DO_NOT_FIT how much room they need. `records` may be null when `count` is 0.
  virtual int ReadProcessorRecords(ProcessorRecord* records, std::size_t& count) = 0;

  // The version of the operating system. False, `version` untouched, when the system does not give that record.
  virtual bool ReadVersion(VersionRecord record, SystemVersion& version) = 0;

  // This system's processes; never destroyed.
  static PlatformProcesses& System();
};
