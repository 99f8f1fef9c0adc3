#include "zelbase/platform/PlatformService.h"

template <>
constinit std::atomic<PlatformClipboard*> PlatformService<PlatformClipboard>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformClock*> PlatformService<PlatformClock>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformFiles*> PlatformService<PlatformFiles>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformFolders*> PlatformService<PlatformFolders>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformHelp*> PlatformService<PlatformHelp>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformModules*> PlatformService<PlatformModules>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformProcesses*> PlatformService<PlatformProcesses>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformSerialPorts*> PlatformService<PlatformSerialPorts>::s_replacement{nullptr};
template <>
constinit std::atomic<PlatformThreads*> PlatformService<PlatformThreads>::s_replacement{nullptr};
