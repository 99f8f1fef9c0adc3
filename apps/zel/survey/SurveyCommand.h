// zel survey: the main job, a survey's folder into its chart and its report.
#pragma once

#include <CLI/CLI.hpp>

namespace zel {

void AddSurveyCommand(CLI::App& program, int& exitCode);

}  // namespace zel
