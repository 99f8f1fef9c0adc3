// The command "zel xyz".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddXyzCommand(CLI::App& program, int& exitCode);

}  // namespace zel
