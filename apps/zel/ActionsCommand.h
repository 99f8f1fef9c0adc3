// The command "zel actions".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddActionsCommand(CLI::App& program, int& exitCode);

}  // namespace zel
