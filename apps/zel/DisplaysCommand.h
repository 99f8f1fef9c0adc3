// The command "zel displays".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddDisplaysCommand(CLI::App& program, int& exitCode);

}  // namespace zel
