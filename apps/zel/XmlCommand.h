// The command "zel xml".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddXmlCommand(CLI::App& program, int& exitCode);

}  // namespace zel
