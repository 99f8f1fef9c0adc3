// The key names of a section "Checksum". Neighbour: FileObject.h, whose enumeration passes over that section.
#pragma once

#include <string>

// Callers index the table by number: rows are neither moved nor removed, new ones go at the end.
inline const std::string checksumKeys[] = {"Checksum", "Integrity"};
