// The command "zel units".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddUnitsCommand(CLI::App& program, int& exitCode);

}  // namespace zel
