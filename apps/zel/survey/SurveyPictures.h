// The pictures of a survey, each in a file of its own. Neighbours: Survey.h, what they show; SurveyCommand.cpp asks for them.
#pragma once

#include <functional>
#include <string>

#include "survey/Survey.h"

namespace zel {

// Told how much of the job is done, 0 to 1. False asks to stop.
using SurveyProgress = std::function<bool(double)>;

// Each draws one picture, which replaces the file at `path` when it is whole. False, with a reason that a person can read, when it
// cannot be written; false with an empty reason when `progress` asked to stop. In both cases the file is as it was. The survey may lack
// any of its parts, soundings too: what is there is drawn. `progress` may be empty.

// The chart: one sheet from above.
bool SaveChartPng(const Survey& survey, const std::string& path, const SurveyProgress& progress, std::string& reason);
bool SaveChartSvg(const Survey& survey, const std::string& path, const SurveyProgress& progress, std::string& reason);
bool SaveChartPdf(const Survey& survey, const std::string& path, const SurveyProgress& progress, std::string& reason);

// The long section along the design line. Not to be asked for without one.
bool SaveProfilePng(const Survey& survey, const std::string& path, const SurveyProgress& progress, std::string& reason);

}  // namespace zel
