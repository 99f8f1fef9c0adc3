// The soundings of a survey: read, cut to the work area and reduced by the tide, one after the other. Neighbours: SurveyArea.h and
// SurveyTide.h; adapters/xyz/XyzTextSource.h, the reader of texts; SurveyPings.h, that of pings.
#pragma once

#include <cmath>
#include <string>

#include "survey/Survey.h"
#include "survey/SurveyArea.h"
#include "survey/SurveyPictures.h"
#include "survey/SurveyTide.h"

namespace zel {

// Coordinates beyond 100,000 km and heights beyond 100 km are a slip in the file.
inline bool IsOnGrid(const Point& point) { return std::abs(point.x) <= 1e8 && std::abs(point.y) <= 1e8 && std::abs(point.z) <= 1e5; }

class SurveySoundings {
 public:
  enum class Tide { NotAsked, Series, Missing };
  struct Options {
    Tide tide = Tide::NotAsked;
    bool keepWithoutTide = false;  // soundings without tide at their time stay, unreduced
  };

  // All three outlive it.
  SurveySoundings(Survey& survey, const SurveyArea& area, SurveyTideSeries& series, const Options& options)
      : m_survey(survey), m_area(area), m_series(series), m_options(options) {}

  // Each takes a file. False only when `progress` asked to stop; what is wrong in the file is reported.
  bool ReadText(const std::string& path, const SurveyProgress& progress);
  bool ReadPings(const std::string& path, const SurveyProgress& progress);

  // Takes one sounding; a time of 0 is none. `point` is on the grid.
  void Take(const Point& point, double time);

  // The heading of the last ping in time, for the vessel.
  bool HasHeading() const { return m_headingTime > 0.0; }
  double LastHeading() const { return m_heading; }
  double HeadingTime() const { return m_headingTime; }

 private:
  class TextImport;

  bool Reduce(double time, double& height);
  void TakePing(const struct SurveyPing& ping);

  Survey& m_survey;
  const SurveyArea& m_area;
  SurveyTideSeries& m_series;
  Options m_options;
  double m_heading = 0.0, m_headingTime = 0.0;
  long long m_offGrid = 0;
  bool m_reduced = false;  // a sounding has had tide
};

}  // namespace zel
