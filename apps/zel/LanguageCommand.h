// The command "zel language".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddLanguageCommand(CLI::App& program, int& exitCode);

}  // namespace zel
