#include "ReportCommand.h"

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "SettingsFile.h"
#include "TypedValue.h"
#include "zelbase/config/SettingsReport.h"
#include "zelbase/errors/GenericError.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/time/CExTime.h"

namespace zel {
namespace {

constexpr const char* kCheckContext = "Settings check";
constexpr const char* kFilesSection = "Files";

std::string Count(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

// The suite's time of this moment, in UTC for people and as the stamp that modules exchange.
void PrintHead() {
  CExTime clock;
  const double now = clock.GetCurTime();
  const CTime seconds = clock.ConvertToCTime(now);
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  CExTime::TimeToUtcDate(seconds, year, month, day, hour, minute, second);
  std::printf("Settings report of %04d-%02d-%02d %02d:%02d:%02d.%03d UTC, time stamp %s\n", year, month, day, hour, minute, second,
              static_cast<int>(now - static_cast<double>(seconds) * 1000.0), clock.GetTimeStampString(now).c_str());
}

// What the value reads as through the store's typed access, behind the name of the type.
std::string Describe(const SettingsFile& file, const std::string& section, const SettingsItem& item) {
  const std::string type = GuessType(item.value);
  std::string text;
  if (type == "integer") {
    const bool hexadecimal = item.value.find_first_of("xX") != std::string::npos;
    ReadAs(file.store, section, item.key, hexadecimal ? "int" : "int64", text);
  } else if (type == "number") {
    ReadAs(file.store, section, item.key, "double", text);
  } else if (type == "colour") {
    ReadAs(file.store, section, item.key, "colour", text);
  } else {
    text = file.Shown(item.value);
  }
  char column[16];
  std::snprintf(column, sizeof column, "%-9s", type.c_str());
  return column + text;
}

void PrintSection(const SettingsFile& file, const std::string& name) {
  std::cout << "  [" << file.Shown(name) << "]\n";
  const auto items = Items(file.store, name);
  std::size_t width = 0;
  for (const auto& item : items) width = std::max(width, item.key.size());
  for (const auto& item : items) {
    std::string key = file.Shown(item.key);
    if (key.size() < width) key.resize(width, ' ');
    std::cout << "    " << key << "  " << Describe(file, name, item) << '\n';
  }
}

void PrintFile(const SettingsFile& file) {
  const auto names = SectionNames(file.store);
  std::size_t items = 0;
  for (const auto& name : names) items += static_cast<std::size_t>(file.store.GetNumItems(name));
  std::cout << '\n' << file.path << ": " << Count(names.size(), "section", "sections") << ", " << Count(items, "item", "items") << '\n';
  for (const auto& name : names) PrintSection(file, name);
}

// Puts what the text of the file loses on its way into the store on the error list.
void ReportFindings(const SettingsFile& file) {
  SettingsReport report;
  report.ReadFile(ToSuitePath(file.path));
  for (const auto& finding : report.Findings()) {
    if (finding.severity == SettingsSeverity::Note) continue;
    const std::string place = file.path + ":" + std::to_string(finding.line) + ": ";
    ReportError(GenericError(place + SettingsReport::Message(finding), file.path, "Settings file"), kCheckContext);
  }
}

// The files that the [Files] section of `file` names, relative to its own folder.
std::vector<std::string> NamedFiles(const SettingsFile& file) {
  const std::size_t slash = file.path.find_last_of('/');
  const std::string folder = slash == std::string::npos ? "" : file.path.substr(0, slash + 1);
  std::vector<std::string> names;
  for (const auto& item : Items(file.store, kFilesSection)) names.push_back(folder + ToShownPath(item.value));
  return names;
}

std::size_t PrintErrors() {
  GlobalErrorList& list = GlobalErrorList::Get();
  list.Lock();
  const int count = list.NumErrors(true);
  std::cout << "\nError list: " << Count(static_cast<std::size_t>(count), "entry", "entries") << '\n';
  for (bool more = list.FirstContext(); more; more = list.NextContext()) {
    if (list.NumErrors(false) == 0) continue;
    std::cout << "  " << ToTerminal(list.CurrentContext(), Encoding::Windows1252) << '\n';
    for (int i = 0; i < list.NumErrors(false); ++i) {
      const Error& error = list[i];
      const std::string message = error.Format();  // the suite's words around a file's name, which may be UTF-8
      std::cout << "    " << ToTerminal(error.Type(), Encoding::Windows1252) << ": "
                << ToShownPath(ToTerminal(message, DetectEncoding(message))) << '\n';
    }
  }
  list.SetContext(list.DefaultContext());
  list.Unlock();
  return static_cast<std::size_t>(count);
}

bool ReportFile(const std::string& path, std::vector<std::string>& more) {
  SettingsFile file;
  std::string reason;
  if (!file.Open(path, reason)) return false;
  PrintFile(file);
  ReportFindings(file);
  more = NamedFiles(file);
  return true;
}

int Report(const std::vector<std::string>& paths) {
  PrintHead();
  bool opened = true;
  for (const auto& path : paths) {
    std::vector<std::string> named;
    opened = ReportFile(path, named) && opened;
    std::vector<std::string> ignored;
    for (const auto& name : named) ReportFile(name, ignored);
  }
  PrintErrors();
  return opened ? kDone : kFoundWrong;
}

}  // namespace

void AddReportCommand(CLI::App& program, int& exitCode) {
  auto* command = program.add_subcommand("report", "Show what settings files hold and what went wrong in reading them");
  const auto paths = std::make_shared<std::vector<std::string>>();
  command->add_option("FILE", *paths, "Settings files; those that a section [Files] names are shown, too")->required();
  command->footer("Example:\n  zel report samples/settings/suite.ini\n\nExit code: 0, or 1 when a FILE cannot be opened.\n");
  command->callback([paths, &exitCode] { exitCode = Report(*paths); });
}

}  // namespace zel
