// The command "zel colours".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddColoursCommand(CLI::App& program, int& exitCode);

}  // namespace zel
