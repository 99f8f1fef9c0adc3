// The command "zel geodesy".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddGeodesyCommand(CLI::App& program, int& exitCode);

}  // namespace zel
