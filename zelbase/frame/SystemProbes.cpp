#include "zelbase/frame/SystemProbes.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdio>
#include <new>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/PlatformProcesses.h"

namespace {

constexpr char kSeparator = '\\';

PlatformProcesses& Processes() { return PlatformService<PlatformProcesses>::Current(); }

void Print(const std::string& text) { static_cast<void>(std::fputs(text.c_str(), stdout)); }

bool SecondCharacterIs(const std::string& text, std::string_view characters) {
  return text.size() > 1 && characters.find(text[1]) != characters.npos;
}

bool IsWorkstation(const SystemVersion& version) { return version.productType == VERSION_PRODUCT_WORKSTATION; }

OSType OSTypeOfFamily1(const SystemVersion& version) {
  if (version.major != 4) return OS_UNKNOWN;
  switch (version.minor) {
    case 0: return SecondCharacterIs(version.serviceText, "CB") ? OS_WINDOWS_95_OSR2 : OS_WINDOWS_95;
    case 10: return SecondCharacterIs(version.serviceText, "AB") ? OS_WINDOWS_98_SE : OS_WINDOWS_98;
    case 90: return OS_WINDOWS_ME;
    default: return OS_UNKNOWN;
  }
}

OSType OSTypeOfService(unsigned int servicePack) {
  if (servicePack == 2) return OS_WINDOWS_XP_SP2;
  return servicePack == 3 ? OS_WINDOWS_XP_SP3 : OS_WINDOWS_XP;
}

// Kept: the order of the tests; a computer of several of these kinds goes by the first.
OSType OSTypeOfVersion52(const SystemVersion& version) {
  if (version.secondServerRelease) return OS_SERVER_2003_R2;
  if ((version.suiteMask & VERSION_SUITE_STORAGE_SERVER) != 0) return OS_STORAGE_SERVER_2003;
  if ((version.suiteMask & VERSION_SUITE_HOME_SERVER) != 0) return OS_HOME_SERVER;
  const bool isX64 = version.processorArchitecture == VERSION_ARCHITECTURE_X64;
  return IsWorkstation(version) && isX64 ? OS_WINDOWS_XP_X64 : OS_SERVER_2003;
}

OSType OSTypeOfVersion5(const SystemVersion& version) {
  switch (version.minor) {
    case 0: return OS_WINDOWS_2000;
    case 1: return OSTypeOfService(version.servicePack);
    case 2: return OSTypeOfVersion52(version);
    default: return OS_UNKNOWN;
  }
}

OSType OSTypeOfVersion6(const SystemVersion& version) {
  switch (version.minor) {
    case 0: return IsWorkstation(version) ? OS_WINDOWS_VISTA : OS_SERVER_2008;
    case 1: return IsWorkstation(version) ? OS_WINDOWS_7 : OS_SERVER_2008_R2;
    case 2: return OS_WINDOWS_8;
    default: return OS_UNKNOWN;  // Kept: what is newer is unknown; displays show the number 0 for it.
  }
}

// Reads into `records`, which grows as long as the system asks for more room.
int ReadRecords(std::vector<ProcessorRecord>& records) {
  for (;;) {
    std::size_t count = records.size();
    const int result = Processes().ReadProcessorRecords(records.data(), count);
    const bool wantsMore = result == PROCESSOR_RECORDS_DO_NOT_FIT && count > records.size();
    if (!wantsMore && result != PROCESSOR_RECORDS_READ) return result;
    records.resize(wantsMore ? count : std::min(count, records.size()));
    if (!wantsMore) return result;
  }
}

bool CountsProcessors(ProcessorRelation relation) {
  switch (relation) {
    case ProcessorRelation::Core: return true;
    case ProcessorRelation::MemoryNode:
    case ProcessorRelation::Cache:
    case ProcessorRelation::Package: return false;
    default: Print("\nError: Unsupported LOGICAL_PROCESSOR_RELATIONSHIP value.\n"); return false;
  }
}

unsigned long CountByRecords() {
  std::vector<ProcessorRecord> records;
  const int error = ReadRecords(records);
  if (error != PROCESSOR_RECORDS_READ) {
    std::string text = "\nError ";
    zelbase::detail::AppendInt(text, error);
    Print(text + "\n");
    return 0;
  }
  unsigned long processors = 0;
  for (const ProcessorRecord& record : records) {
    if (CountsProcessors(record.relation)) processors += static_cast<unsigned long>(std::popcount(record.mask));
  }
  return processors;
}

}  // namespace

OSType OSTypeOf(const SystemVersion& version) {
  if (version.platformId == 0) return OS_WIN32S;
  if (version.platformId == 1) return OSTypeOfFamily1(version);
  if (version.platformId != 2) return OS_UNKNOWN;
  if (version.major <= 4) return OS_WINDOWS_NT_4;
  if (version.major == 5) return OSTypeOfVersion5(version);
  return version.major == 6 ? OSTypeOfVersion6(version) : OS_UNKNOWN;
}

OSType GetOSType() {
  SystemVersion version;
  PlatformProcesses& processes = Processes();
  const bool known = processes.ReadVersion(VersionRecord::Extended, version) || processes.ReadVersion(VersionRecord::Plain, version);
  return known ? OSTypeOf(version) : OS_UNKNOWN;
}

unsigned long GetTotalNumberOfCores() {
  if (!Processes().HasProcessorRecords()) return Processes().LogicalProcessors();
  try {
    return CountByRecords();
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  Print("\nError: Allocation failure\n");
  return 0;
}

bool IsProcessAlreadyRunning(const std::string& exeName) {
  if (exeName.empty()) return false;
  const std::vector<std::string> names = Processes().ExecutableNames();
  return std::find(names.begin(), names.end(), exeName) != names.end();
}

unsigned long long GetFreeDiskSpace(std::string path) {
  if (path.empty()) return 0;
  if (path.back() != kSeparator) path += kSeparator;
  unsigned long long bytes = 0;
  return PlatformService<PlatformFolders>::Current().FreeSpace(path, bytes) ? bytes : 0;
}

std::string GetAppPath() {
  std::string path = PlatformService<PlatformModules>::Current().ProgramPath();
  const std::size_t separator = path.rfind(kSeparator);
  // Kept: a program in the root has no folder of its own, and its whole path is the answer.
  if (separator == std::string::npos || separator == 0) return path;
  path.resize(separator + 1);
  return path;
}
