// The command "zel geometry".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddGeometryCommand(CLI::App& program, int& exitCode);

}  // namespace zel
