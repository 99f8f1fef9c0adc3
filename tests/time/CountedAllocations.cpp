// The counting operator new of tests/numerics/CountedAllocations.h, for the test program of this folder.
#include "tests/numerics/CountedAllocations.cpp"
