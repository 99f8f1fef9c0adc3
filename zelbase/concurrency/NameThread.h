// Tells debuggers and traces the name of a thread. Neighbour: PlatformThreads.h, whose hook does it.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Hands a thread's number and its name to the hook of the thread service in force, which has no effect unless a host puts
// its own there. `threadId` is PlatformThread::Id, or PlatformThreads::kCallingThread.
ZELBASE_API void NameThread(unsigned long threadId, const std::string& name);
