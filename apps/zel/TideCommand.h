// The command "zel tide".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddTideCommand(CLI::App& program, int& exitCode);

}  // namespace zel
