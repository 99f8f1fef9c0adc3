// Statistics of a row of numbers. Neighbours: Survey.h, what they are; SurveyComputation.cpp, which asks for them.
#pragma once

#include <vector>

#include "survey/Survey.h"

namespace zel {

// Changes the order of the values.
SurveyStatistics StatisticsOf(std::vector<double>& values);

}  // namespace zel
