#include "survey/SurveyFaults.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "SettingsFile.h"
#include "zelbase/errors/GenericError.h"
#include "zelbase/errors/GlobalErrorList.h"

namespace zel {
namespace {

SurveyError Told(const std::string& context, const Error& error) {
  return SurveyError{context, error.Type(), error.Format(), error.Details()};
}

}  // namespace

void ReportFile(const std::string& context, const std::string& path, FileError::CODE code) {
  ReportError(FileError(ToSuitePath(path), code), context);
}

void ReportFault(const std::string& context, const std::string& text, const std::string& details) {
  ReportError(GenericError(text, details, "Survey Error"), context);
}

void ReportLines(const std::string& context, const std::string& path, const LineFaults& faults) {
  for (const LineFaults::Fault& fault : faults.kept) {
    ReportFault(context, "line " + std::to_string(fault.line) + ": " + fault.text, path);
  }
  const long long more = faults.count - static_cast<long long>(faults.kept.size());
  if (more > 0) ReportFault(context, "and " + std::to_string(more) + (more == 1 ? " more such line" : " more such lines"), path);
}

FaultCounter::FaultCounter() : m_before(GlobalErrorList::Get().NumErrors(true)) { GlobalErrorList::Get().AddReporter(this); }

FaultCounter::~FaultCounter() { GlobalErrorList::Get().RemoveReporter(this); }

void FaultCounter::Report(const Error&) { ++m_told; }

void FaultCounter::Gather(Survey& survey) const {
  GlobalErrorList& list = GlobalErrorList::Get();
  std::vector<std::pair<unsigned int, SurveyError>> errors;
  list.Lock();
  const std::string former = list.CurrentContext();
  for (bool more = list.FirstContext(); more; more = list.NextContext()) {
    for (int i = 0; i < list.NumErrors(false); ++i) errors.emplace_back(list[i].ID(), Told(list.CurrentContext(), list[i]));
  }
  list.SetContext(former);
  list.Unlock();
  // The ids count up as errors are made, whatever piece they belong to.
  std::stable_sort(errors.begin(), errors.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  survey.errors.clear();
  for (auto& error : errors) survey.errors.push_back(std::move(error.second));
  survey.moreErrors = std::max(0LL, m_told + m_before - static_cast<long long>(errors.size()));
}

}  // namespace zel
