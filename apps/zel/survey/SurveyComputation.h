// What is computed from the soundings of a survey: the long section, the volumes by band, the statistics, the area covered. Neighbours:
// SurveyDesign.h, the surface they are compared with; SurveyStatistics.h; docs/survey.md, which tells the methods.
#pragma once

#include "survey/Survey.h"
#include "survey/SurveyArea.h"
#include "survey/SurveyPictures.h"

namespace zel {

struct ComputationOptions {
  double cellSize = 2.0;  // metres; larger when there would be too many cells
  double step = 5.0;      // of the long section
  double corridor = 5.0;
};

// Fills section, volumes, both statistics, areaCovered and coverCell from all the rest. False only when `progress` asked to stop.
bool ComputeSurvey(Survey& survey, const SurveyArea& area, const ComputationOptions& options, const SurveyProgress& progress);

}  // namespace zel
