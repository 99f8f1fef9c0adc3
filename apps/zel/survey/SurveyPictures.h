// The pictures of a survey, each in a file of its own. Neighbours: Survey.h, what they show; SurveyCommand.cpp asks for them.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "survey/Survey.h"

namespace zel {

// Told how much of the job is done, 0 to 1. False asks to stop.
using SurveyProgress = std::function<bool(double)>;

// Each Save draws one picture, which replaces the file at `path` when it is whole. False, with a reason that a person can read, when it
// cannot be written. In that case the file is as it was. The survey may lack any of its parts, soundings too: what is there is drawn.

// The chart: one sheet from above, of A3 size. The survey must outlive it and stay as it is.
class SurveyChart {
 public:
  // Looks at all soundings, once for the three files. When `progress`, which may be empty, asks to stop, only those so far are shown.
  SurveyChart(const Survey& survey, const SurveyProgress& progress);
  ~SurveyChart();
  SurveyChart(const SurveyChart&) = delete;
  SurveyChart& operator=(const SurveyChart&) = delete;

  // Several may run at once, each on its own thread.
  bool SavePng(const std::string& path, std::string& reason) const;
  bool SaveSvg(const std::string& path, std::string& reason) const;
  bool SavePdf(const std::string& path, std::string& reason) const;

 private:
  struct Body;
  std::unique_ptr<const Body> m_body;
};

// The long section along the design line. A survey without one gives a sheet that says so.
bool SaveProfilePng(const Survey& survey, const std::string& path, std::string& reason);

}  // namespace zel
