#include "survey/SurveyComputation.h"

#include <vector>

#include "survey/SurveyDesign.h"
#include "survey/SurveySection.h"
#include "survey/SurveyStatistics.h"
#include "survey/SurveyVolumes.h"

namespace zel {
namespace {

constexpr std::size_t kLook = 65536;  // soundings from look to look at the clock and at Ctrl-C

bool GoesOn(const SurveyProgress& progress, double part) { return !progress || progress(part); }

// Hands each sounding to the cells, and those near the design line to the section. False when it was stopped.
bool WalkSoundings(const Survey& survey, const DesignSurface& surface, SurveyCells& cells, SectionBuilder& section,
                   std::vector<double>& differences, const SurveyProgress& progress) {
  for (std::size_t i = 0; i < survey.soundings.size(); ++i) {
    const Point& point = survey.soundings[i];
    if (i % kLook == 0 && !GoesOn(progress, static_cast<double>(i) / static_cast<double>(survey.soundings.size()))) return false;
    cells.Add(point);
    DesignPlace place;
    if (!surface.Find(point.x, point.y, place)) continue;
    if (surface.Applies(place)) differences.push_back(point.z - place.design);
    section.Add(place, point.z);
  }
  return true;
}

bool ComputeGeometry(Survey& survey, const SurveyArea& area, const ComputationOptions& options, const SurveyProgress& progress) {
  const DesignSurface surface(survey.design, options.corridor);
  SurveyCells cells(survey.extents, options.cellSize);
  SectionBuilder section(survey.design, options.step, options.corridor);
  std::vector<double> differences;
  if (!WalkSoundings(survey, surface, cells, section, differences, progress)) return false;
  survey.areaCovered = cells.Covered(area);
  survey.coverCell = cells.CellSize();
  if (!survey.design.IsGiven()) return true;
  survey.section = section.Finish();
  survey.volumes = cells.Volumes(area, survey.design, surface, survey.differenceColours);
  survey.differences = StatisticsOf(differences);
  return GoesOn(progress, 1.0);
}

}  // namespace

bool ComputeSurvey(Survey& survey, const SurveyArea& area, const ComputationOptions& options, const SurveyProgress& progress) {
  if (!ComputeGeometry(survey, area, options, progress)) return false;
  std::vector<double> depths;
  depths.reserve(survey.soundings.size());
  for (const Point& point : survey.soundings) depths.push_back(-point.z);
  survey.depths = StatisticsOf(depths);
  return GoesOn(progress, 1.0);
}

}  // namespace zel
