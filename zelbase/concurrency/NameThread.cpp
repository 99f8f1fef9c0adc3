#include "zelbase/concurrency/NameThread.h"

#include "zelbase/platform/PlatformThreads.h"

void NameThread(unsigned long threadId, const std::string& name) { PlatformService<PlatformThreads>::Current().NameThread(threadId, name); }
