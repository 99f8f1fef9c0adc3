#include "tests/support/SourceFolder.h"

std::string SourceFolder() { return ZELBASE_SOURCE_DIR; }

std::string BinaryFolder() { return ZELBASE_BINARY_DIR; }
