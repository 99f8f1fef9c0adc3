// How the library reaches the operating system: each service (clipboard, clock, files, folders, help, modules, processes, serial
// ports, threads) is one narrow interface, and PlatformService<Interface> says which implementation answers now.
//
// Every interface has a default for this system, made at first use and never destroyed, so that the destructor of any
// static may still call it. A test, or a host with needs of its own, puts another in its place with PlatformOverride.
#pragma once

#include <atomic>

#include "zelbase/platform/ZelBaseApi.h"

// The door to one service. Interface is PlatformClipboard, PlatformClock, PlatformFiles, PlatformFolders, PlatformHelp,
// PlatformModules, PlatformProcesses, PlatformSerialPorts or PlatformThreads; each of them has a static System() that gives
// this system's own answer.
//
// Threads: Current() may be called from any thread at any time. Replacing a service while another thread is inside a
// call of the old one is safe as long as the old one stays alive until that call has returned.
template <class Interface>
class PlatformService {
 public:
  // The implementation in force: the override, or Interface::System().
  static Interface& Current() {
    Interface* const replacement = s_replacement.load(std::memory_order_acquire);
    return replacement != nullptr ? *replacement : Interface::System();
  }

  // Puts `replacement` in force, not owned; null restores the system's own. Returns what was set before (null: none).
  static Interface* Replace(Interface* replacement) { return s_replacement.exchange(replacement); }

 private:
  static std::atomic<Interface*> s_replacement;
};

// Puts a service in force for the life of a scope and restores the former one at its end:
//
//   SimulatedClock clock;
//   PlatformOverride<PlatformClock> guard(clock);
//
// Not copyable. Overrides nest, and end in the reverse order of their beginning.
template <class Interface>
class PlatformOverride {
 public:
  explicit PlatformOverride(Interface& replacement) : m_former(PlatformService<Interface>::Replace(&replacement)) {}
  ~PlatformOverride() { PlatformService<Interface>::Replace(m_former); }
  PlatformOverride(const PlatformOverride&) = delete;
  PlatformOverride& operator=(const PlatformOverride&) = delete;

 private:
  Interface* m_former;
};

class PlatformClipboard;
class PlatformClock;
class PlatformFiles;
class PlatformFolders;
class PlatformHelp;
class PlatformModules;
class PlatformProcesses;
class PlatformSerialPorts;
class PlatformThreads;

// One replacement a process, whichever module of the suite asks: the variables live in this library.
template <>
ZELBASE_API std::atomic<PlatformClipboard*> PlatformService<PlatformClipboard>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformClock*> PlatformService<PlatformClock>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformFiles*> PlatformService<PlatformFiles>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformFolders*> PlatformService<PlatformFolders>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformHelp*> PlatformService<PlatformHelp>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformModules*> PlatformService<PlatformModules>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformProcesses*> PlatformService<PlatformProcesses>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformSerialPorts*> PlatformService<PlatformSerialPorts>::s_replacement;
template <>
ZELBASE_API std::atomic<PlatformThreads*> PlatformService<PlatformThreads>::s_replacement;
