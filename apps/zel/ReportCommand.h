// "zel report FILE...": opens settings through the store and tells what they hold and what went wrong on the way.
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

// Adds the command; `exitCode` receives its result when it ran.
void AddReportCommand(CLI::App& program, int& exitCode);

}  // namespace zel
