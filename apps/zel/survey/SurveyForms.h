// How a survey's values are shown: units, language, coordinates, colours. Neighbours: SurveySettings.h, which names them;
// zelbase/units/CZelUnitCnv.h and Translator.h, what they are looked up in.
#pragma once

#include "survey/Survey.h"
#include "survey/SurveySettings.h"

namespace zel {

// Each reads its sections of the settings. What is wrong is reported, and the default holds.
void ReadTitle(const SurveySettings& settings, Survey& survey);
void ReadLanguage(const SurveySettings& settings, Survey& survey);
void ReadUnits(const SurveySettings& settings, Survey& survey);
void ReadCoordinates(const SurveySettings& settings, Survey& survey);

// By the extents of the soundings, where the settings name no table for depths: after these have been read.
void ReadColours(const SurveySettings& settings, Survey& survey);

}  // namespace zel
