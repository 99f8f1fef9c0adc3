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

}  // namespace zel
