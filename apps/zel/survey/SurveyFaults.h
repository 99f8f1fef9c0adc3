// What goes wrong in a survey, told to the library's list of errors under the name of the piece it belongs to, and gathered from
// there for the report. Neighbours: zelbase/errors/GlobalErrorList.h, the list; Survey.h, where the errors end up.
#pragma once

#include <string>

#include "LineFaults.h"
#include "survey/Survey.h"
#include "zelbase/errors/ErrorReporterBase.h"
#include "zelbase/errors/FileError.h"

namespace zel {

// A file that cannot be opened, read or written, in the library's wording. `path` as a person types it here.
void ReportFile(const std::string& context, const std::string& path, FileError::CODE code);

// Anything else. `details` says where: a file, a line.
void ReportFault(const std::string& context, const std::string& text, const std::string& details = "");

// Lines of a file that do not read: the first of them each by itself, the rest as one.
void ReportLines(const std::string& context, const std::string& path, const LineFaults& faults);

// Reads a PointFile or a TrackFile and reports what is wrong in it. False, reported, when it cannot be opened.
template <class File>
bool ReadReported(const std::string& context, const std::string& path, File& file) {
  LineFaults faults;
  const bool opened = file.Read(path, faults);
  if (!opened) ReportFile(context, path, FileError::Open);
  ReportLines(context, path, faults);
  return opened;
}

// Counts what is reported while it lives.
class FaultCounter : public ErrorReporterBase {
 public:
  FaultCounter();
  ~FaultCounter();
  FaultCounter(const FaultCounter&) = delete;
  FaultCounter& operator=(const FaultCounter&) = delete;

  void Report(const Error& error) override;

  // All that the list holds goes into the survey, oldest first. What was told and is not kept, repeats included, is its moreErrors.
  void Gather(Survey& survey) const;

 private:
  long long m_told = 0;
  int m_before = 0;  // errors in the list when this began
};

}  // namespace zel
