// How often this process has asked for memory with new: for tests that hold what allocates nothing to it. The test program
// of this folder has an operator new and an operator delete of its own for it.
#pragma once

// Calls of operator new in any form since the start, on every thread.
long CountedAllocations();
