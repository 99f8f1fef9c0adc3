// The command "zel format".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddFormatCommand(CLI::App& program, int& exitCode);

}  // namespace zel
