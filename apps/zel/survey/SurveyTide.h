// The tide at the times of the soundings. Neighbours: zelbase/sonar/TideFile.h, the series it comes from; SurveySoundings.h, which
// reduces by it.
#pragma once

#include <string>

#include "survey/Survey.h"
#include "zelbase/sonar/TideFile.h"

namespace zel {

// Between two values the tide runs straight. Before the first, behind the last and between two that lie further apart than the longest
// step there is none, but at the very times of the values.
class SurveyTideSeries {
 public:
  // Reads the file and says in `tide` what it holds. False, reported, when it cannot be opened or has no values.
  bool Open(const std::string& path, double longestStep, SurveyTide& tide);

  // The height in metres at a time; false when there is none. Fast for times that follow each other.
  bool HeightAt(double time, double& height);

 private:
  bool FindStep(double time);
  void NoteSeries(SurveyTide& tide);

  TideFile m_file;
  double m_longestStep = 0.0;
  // The step that was asked last: from m_begin to m_end, none at first.
  double m_begin = 0.0, m_end = -1.0;
  double m_beginHeight = 0.0, m_endHeight = 0.0;
};

}  // namespace zel
