// The command "zel track".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddTrackCommand(CLI::App& program, int& exitCode);

}  // namespace zel
