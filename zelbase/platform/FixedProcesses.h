// The stand-in for the computer's processes: it answers with what it was given. Neighbour: PlatformProcesses.h, the
// interface it fills.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "zelbase/platform/PlatformProcesses.h"

// The members are set before it is put in force, or while nobody asks.
class ZELBASE_API FixedProcesses : public PlatformProcesses {
 public:
  std::vector<std::string> ExecutableNames() override { return names; }
  long long CurrentId() override { return id; }
  unsigned long LogicalProcessors() override { return processors; }
  bool HasProcessorRecords() override { return records.has_value(); }

  int ReadProcessorRecords(ProcessorRecord* room, std::size_t& count) override {
    if (recordsError != PROCESSOR_RECORDS_READ || !records.has_value()) return recordsError;
    const bool fits = count >= records->size();
    count = records->size();
    if (!fits) return PROCESSOR_RECORDS_DO_NOT_FIT;
    for (std::size_t i = 0; i < count; ++i) room[i] = (*records)[i];
    return PROCESSOR_RECORDS_READ;
  }

  bool ReadVersion(VersionRecord record, SystemVersion& version) override {
    const std::optional<SystemVersion>& known = record == VersionRecord::Extended ? extendedVersion : plainVersion;
    if (known.has_value()) version = *known;
    return known.has_value();
  }

  std::vector<std::string> names;
  long long id = 1;
  unsigned long processors = 1;

  // No value: a system without such records.
  std::optional<std::vector<ProcessorRecord>> records;
  // What reading the records gives, with the room needed left as it is; PROCESSOR_RECORDS_READ to read them.
  int recordsError = PROCESSOR_RECORDS_READ;

  // No value: the system does not give that record.
  std::optional<SystemVersion> extendedVersion;
  std::optional<SystemVersion> plainVersion;
};
