// The long section of a survey: the bottom along the design line, from the soundings near it. Neighbours: SurveyDesign.h, which says how
// far along the line a sounding lies; SurveyComputation.cpp, which hands the soundings over.
#pragma once

#include <vector>

#include "survey/Survey.h"
#include "survey/SurveyDesign.h"

namespace zel {

// Rows stand at the ends of each section of the line and at all multiples of the step between them. A sounding counts at the row next to
// it, when it lies within half a step along the line and within the corridor to either side.
class SectionBuilder {
 public:
  static constexpr double kMostRows = 100000.0;

  // A step that would give more rows than that is made longer.
  SectionBuilder(const SurveyDesign& design, double step, double corridor);

  void Add(const DesignPlace& place, double z);

  LongSection Finish();

 private:
  void AddRows(LineData& line);
  void AddRow(const ProfilePoint& a, const ProfilePoint& b, double chainage, bool sectionStart);

  const SurveyDesign& m_design;
  LongSection m_section;
  std::vector<double> m_sums;
};

}  // namespace zel
