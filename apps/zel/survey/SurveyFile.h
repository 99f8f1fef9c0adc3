// A survey's folder, read and computed. Neighbours: Survey.h, what comes out; SurveySettings.h, the settings that name all the rest;
// docs/survey.md, what the folder holds.
#pragma once

#include <functional>
#include <string>

#include "survey/Survey.h"

namespace zel {

// Told what is being done, and how much of it, 0 to 1. False asks to stop.
using SurveyStage = std::function<bool(const char* stage, double progress)>;

enum class SurveyOutcome { Read, NoSettings, Stopped };

// Whatever is wrong in the folder goes into the library's list of errors, and the rest is read and computed all the same. Only without
// settings there is nothing to go by. The survey's own list of errors is left to FaultCounter::Gather.
SurveyOutcome ReadSurvey(const std::string& folder, const std::string& settingsName, const SurveyStage& stage, Survey& survey);

}  // namespace zel
