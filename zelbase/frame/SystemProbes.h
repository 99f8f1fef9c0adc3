// Questions to the operating system, for a host's status displays and start-up checks: which system, how many processors,
// what runs already, how much room a disk has, where the program lies. Neighbours: PlatformProcesses.h, PlatformFolders.h
// and PlatformModules.h, the doors that answer, and behind which a test puts its own.
#pragma once

#include <string>

#include "zelbase/platform/SystemVersion.h"
#include "zelbase/platform/ZelBaseApi.h"

// The operating systems that a status display tells apart. The numbers are stored and sent; 13 is not given out.
enum OSType : int {
  OS_UNKNOWN = 0,
  OS_WIN32S = 1,
  OS_WINDOWS_95 = 2,
  OS_WINDOWS_95_OSR2 = 3,
  OS_WINDOWS_NT_4 = 4,
  OS_WINDOWS_98 = 5,
  OS_WINDOWS_98_SE = 6,
  OS_WINDOWS_ME = 7,
  OS_WINDOWS_2000 = 8,
  OS_WINDOWS_XP = 9,
  OS_WINDOWS_XP_X64 = 10,
  OS_WINDOWS_XP_SP2 = 11,
  OS_WINDOWS_XP_SP3 = 12,
  OS_WINDOWS_VISTA = 14,
  OS_SERVER_2003 = 15,
  OS_STORAGE_SERVER_2003 = 16,
  OS_SERVER_2003_R2 = 17,
  OS_HOME_SERVER = 18,
  OS_SERVER_2008 = 19,
  OS_SERVER_2008_R2 = 20,
  OS_WINDOWS_7 = 21,
  OS_WINDOWS_8 = 22
};

// The operating system by its extended version record, or by the plain one where there is no extended one; OS_UNKNOWN where
// there is neither, as on every POSIX system. Any thread.
ZELBASE_API enum OSType GetOSType();

// The same for a record at hand, by platform id and major.minor:
//
//   0  any       Win32s
//   1  4.0       95 OSR2 when the second character of the service text is "C" or "B", otherwise 95
//   1  4.10      98 SE when it is "A" or "B", otherwise 98
//   1  4.90      ME
//   2  up to 4   NT 4
//   2  5.0       2000
//   2  5.1       XP SP2 with service pack 2, XP SP3 with 3, otherwise XP
//   2  5.2       the first that holds: Server 2003 R2 (second server release), Storage Server 2003, Home Server (suite
//                mask), XP x64 (workstation on x64), otherwise Server 2003
//   2  6.0       Vista on a workstation, otherwise Server 2008
//   2  6.1       7 on a workstation, otherwise Server 2008 R2
//   2  6.2       8
//
// Everything else is OS_UNKNOWN, and so is everything newer than 6.2.
ZELBASE_API enum OSType OSTypeOf(const SystemVersion& version);

// Logical processors online: a core that runs two threads counts twice, and processors that this process may not use count,
// too. 0 when that cannot be told.
//
// A system that keeps records of its processors is counted by them. A record of a kind unknown here then writes
// "\nError: Unsupported LOGICAL_PROCESSOR_RELATIONSHIP value.\n" to standard output and does not count; records that cannot
// be read write "\nError N\n" with the system's number, or "\nError: Allocation failure\n", and the result is 0. Any thread.
ZELBASE_API unsigned long GetTotalNumberOfCores();

// True when a process runs whose executable has exactly this file name (no folder, case-sensitive), the caller's own
// included. Of a process whose executable may not be seen only a name of at most 15 characters is known. False for an empty
// name. Any thread.
ZELBASE_API bool IsProcessAlreadyRunning(const std::string& exeName);

// Bytes that the caller may still write on the disk of the folder `path`, with or without its final "\"; 0 when that cannot
// be told, and for an empty path. A file has no free space: 0. Any thread.
ZELBASE_API unsigned long long GetFreeDiskSpace(std::string path);

// The folder of the running program with its final "\", whatever the current folder is. The whole path of the program when
// it lies in the root ("\x.exe", "/x.exe"); empty when it is not known. Any thread.
ZELBASE_API std::string GetAppPath();
