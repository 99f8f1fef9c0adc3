// "zel settings ...": looks into settings files, checks them and changes them with a gentle hand.
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

// Adds the command with its subcommands; `exitCode` receives the result of the one that ran.
void AddSettingsCommands(CLI::App& program, int& exitCode);

}  // namespace zel
