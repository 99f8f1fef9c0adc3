// The system's calls of tests/faults/SystemCallFaults.h, for the test program of this folder.
#include "tests/faults/SystemCallFaults.cpp"
