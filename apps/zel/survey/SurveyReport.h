// A survey as a report: a text for people, and XML for programs. Neighbours: Survey.h, what it is about; docs/survey.md, which tells both
// forms and the methods behind the numbers.
#pragma once

#include <string>

#include "survey/Survey.h"
#include "zelbase/xml/XmlElement.h"

namespace zel {

// In UTF-8, in the survey's units and language.
std::string SurveyReportText(const Survey& survey);

// In UTF-8; metres throughout, whatever the units, and English names.
XmlElement SurveyReportXml(const Survey& survey);

// The name of a band of differences: "below -0.50", "-0.50 to -0.25", "0.50 and above". `scale` makes the unit of metres.
std::string BandText(const VolumeBand& band, double scale, int decimals);

}  // namespace zel
