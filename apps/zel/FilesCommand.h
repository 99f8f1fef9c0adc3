// The commands "zel files", "zel crc" and "zel ports".
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddFilesCommands(CLI::App& program, int& exitCode);

}  // namespace zel
