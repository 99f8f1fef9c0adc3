// The operator new of tests/faults/AllocationFaults.h, for the test program of this folder.
#include "tests/faults/AllocationFaults.cpp"
