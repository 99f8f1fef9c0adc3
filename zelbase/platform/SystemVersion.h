// What an operating system says of itself, as the suite's probes judge it. Neighbours: PlatformProcesses.h, which asks the
// system; SystemProbes.h, which makes one answer of it.
#pragma once

#include <string>

// Values of SystemVersion that mean something.
inline constexpr unsigned int VERSION_SUITE_STORAGE_SERVER = 0x2000;
inline constexpr unsigned int VERSION_SUITE_HOME_SERVER = 0x8000;
inline constexpr unsigned int VERSION_PRODUCT_WORKSTATION = 1;
inline constexpr unsigned int VERSION_ARCHITECTURE_X64 = 9;

// A version record, with the two answers that are given beside it. What a record does not hold is 0.
struct SystemVersion {
  // In every record.
  unsigned int platformId = 0;  // family of systems: 0, 1 or 2
  unsigned int major = 0;
  unsigned int minor = 0;
  std::string serviceText;  // such as " C"; its second character tells editions apart

  // In the extended record only.
  unsigned int servicePack = 0;
  unsigned int suiteMask = 0;    // bits VERSION_SUITE_...
  unsigned int productType = 0;  // VERSION_PRODUCT_WORKSTATION; other numbers are servers

  // Beside both.
  unsigned int processorArchitecture = 0;  // VERSION_ARCHITECTURE_X64; of the computer, not of the program
  bool secondServerRelease = false;        // the system calls itself the second release of a server
};
