// The commands "zel settings diff" and "zel settings apply".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

// Adds the commands below `settings`. Whichever runs stores the program's exit code.
void AddDifferenceCommands(CLI::App& settings, int& exitCode);

}  // namespace zel
