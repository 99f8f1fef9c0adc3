#include "TideCommand.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "OutputFile.h"
#include "SettingsFile.h"
#include "TextEdge.h"
#include "TidePicture.h"
#include "TideSeries.h"
#include "TideText.h"
#include "UtcText.h"
#include "zelbase/sonar/TideFile.h"
#include "zelbase/sonar/TideFormats.h"

namespace zel {
namespace {

constexpr double kMinute = 60000.0;
constexpr std::size_t kFaultsShown = 5;

struct Arguments {
  std::string file;
  std::string output;
  std::string from, to;
  std::string dateFormat = "YMD", timeFormat = "HM";
  double longest = 0.0;  // minutes; 0: by the usual step
  bool add = false;
  bool force = false;
};

std::string Line(const TideRow& row) {
  char height[40];
  std::snprintf(height, sizeof height, "%.3f", row.height);
  return UtcText(row.time) + "  " + height;
}

std::string Minutes(double milliseconds) {
  const double minutes = milliseconds / kMinute;
  char text[60];
  if (minutes < 120) std::snprintf(text, sizeof text, "%.6g min", minutes);
  else std::snprintf(text, sizeof text, "%.0f h %02.0f min", std::floor(minutes / 60), std::fmod(minutes, 60));
  return text;
}

double LongestStep(const TideSeries& series, const Arguments& arguments) {
  return arguments.longest > 0 ? arguments.longest * kMinute : series.UsualGap();
}

bool Open(const Arguments& arguments, TideSeries& series) {
  std::string reason;
  if (!series.Open(arguments.file, reason)) {
    Fail(reason);
    return false;
  }
  const auto size = std::filesystem::file_size(arguments.file);
  if (size % 16 != 0)
    Fail("\"" + arguments.file + "\": the last " + std::to_string(size % 16) + " bytes are no whole value, and are left out");
  return true;
}

// ---- info, list, gaps, plot ----

int Info(const Arguments& arguments) {
  TideSeries series;
  if (!Open(arguments, series)) return kFoundWrong;
  std::cout << Counted(series.rows.size(), "value", "values") << '\n';
  if (series.rows.empty()) return kDone;
  const auto [low, high] =
      std::minmax_element(series.rows.begin(), series.rows.end(), [](const TideRow& a, const TideRow& b) { return a.height < b.height; });
  double sum = 0.0;
  for (const TideRow& row : series.rows) sum += row.height;
  char mean[40];
  std::snprintf(mean, sizeof mean, "%.3f", sum / static_cast<double>(series.rows.size()));
  std::cout << "first    " << Line(series.rows.front()) << "\nlast     " << Line(series.rows.back()) << "\nlowest   " << Line(*low)
            << "\nhighest  " << Line(*high) << "\nmean     " << mean << "\nstep     " << Minutes(series.UsualStep()) << ", "
            << Counted(series.Gaps(series.UsualGap()).size(), "gap", "gaps") << '\n';
  return kDone;
}

// The times that --from and --to ask for. False, told, when one is none.
bool ReadSpan(const Arguments& arguments, double& from, double& to) {
  for (const auto& [text, time] : {std::pair{&arguments.from, &from}, std::pair{&arguments.to, &to}}) {
    if (text->empty() || FromUtcText(*text, *time)) continue;
    Fail("\"" + *text + "\" is not a time; write it as 2026-05-01T10:20");
    return false;
  }
  return true;
}

int List(const Arguments& arguments) {
  double from = -HUGE_VAL, to = HUGE_VAL;
  if (!ReadSpan(arguments, from, to)) return kBadUsage;
  TideSeries series;
  if (!Open(arguments, series)) return kFoundWrong;
  for (const TideRow& row : series.rows) {
    if (row.time >= from && row.time <= to) std::cout << Line(row) << '\n';
  }
  return kDone;
}

int Gaps(const Arguments& arguments) {
  TideSeries series;
  if (!Open(arguments, series)) return kFoundWrong;
  const double longest = LongestStep(series, arguments);
  const std::vector<std::size_t> gaps = series.Gaps(longest);
  for (const std::size_t i : gaps) {
    const double from = series.rows[i - 1].time, to = series.rows[i].time;
    std::cout << UtcText(from) << " to " << UtcText(to) << "  " << Minutes(to - from) << '\n';
  }
  std::cout << Counted(gaps.size(), "gap", "gaps") << " of more than " << Minutes(longest) << '\n';
  return gaps.empty() ? kDone : kFoundWrong;
}

int Plot(const Arguments& arguments) {
  TideSeries series;
  if (!Open(arguments, series)) return kFoundWrong;
  const std::string stem = std::filesystem::path(arguments.file).stem().string();
  const std::string path = arguments.output.empty() ? stem + "-tide.svg" : arguments.output;
  if (!SaveTidePicture(series, LongestStep(series, arguments), "Tide, " + stem, path)) return Fail("cannot write \"" + path + "\"");
  std::cout << "Picture: " << path << '\n';
  return kDone;
}

// ---- import, export ----

void TellFaults(const TideText& text, const std::string& path) {
  for (std::size_t i = 0; i < std::min(text.faults.size(), kFaultsShown); ++i) {
    Fail(path + ":" + std::to_string(text.faults[i].line) + ": not a date, a time and a height: \"" + text.faults[i].text + "\"");
  }
  if (text.faults.size() > kFaultsShown) Fail(path + ": and " + std::to_string(text.faults.size() - kFaultsShown) + " more such lines");
}

void Empty(TideFile& file) {
  double time = 0.0, height = 0.0;
  while (file.GetFirstTideValue(time, height)) file.DeleteTideValue(time);
}

// Whatever stops it, the file is the old one or the new one whole: the series replaces it as it saves.
bool SaveSeries(const TideText& text, const Arguments& arguments, int& values) {
  const bool isNew = !std::filesystem::exists(arguments.output);
  TideFile file;
  if (!file.FileOpen(ToSuitePath(arguments.output), isNew)) return false;
  if (!arguments.add) Empty(file);
  for (const TideText::Row& row : text.rows) file.AddTideValue(row.time, row.height);
  values = file.GetNumValues();
  const bool saved = file.FileSave();
  file.FileClose(false);
  std::error_code ignored;
  if (!saved && isNew) std::filesystem::remove(arguments.output, ignored);
  return saved;
}

int Import(const Arguments& arguments) {
  TideText text;
  text.dateFormat = arguments.dateFormat;
  text.timeFormat = arguments.timeFormat;
  std::string reason;
  if (!text.Open(arguments.file, reason)) return Fail(reason);
  TellFaults(text, arguments.file);
  if (text.rows.empty()) return Fail("\"" + arguments.file + "\" has no values; --date and --time tell its layout");
  if (!text.faults.empty() && !arguments.force) return Fail("nothing written; --force imports the lines that do read");
  int values = 0;
  if (!SaveSeries(text, arguments, values)) return Fail("cannot write \"" + arguments.output + "\"");
  std::cout << arguments.output << ": " << Counted(text.rows.size(), "value", "values") << " read, " << values << " in the file\n";
  return text.faults.empty() ? kDone : kFoundWrong;
}

int Export(const Arguments& arguments) {
  TideSeries series;
  if (!Open(arguments, series)) return kFoundWrong;
  OutputFile file(arguments.output);
  // As the import reads it by default, or with --time HMS where there are seconds.
  const bool minutes =
      std::all_of(series.rows.begin(), series.rows.end(), [](const TideRow& row) { return std::fmod(row.time, kMinute) == 0; });
  for (const TideRow& row : series.rows) {
    std::string line = Line(row);
    if (minutes) line.erase(16, 3);
    file.Write(line + '\n');
  }
  if (!file.Finish()) return Fail("cannot write \"" + arguments.output + "\"");
  std::cout << arguments.output << ": " << Counted(series.rows.size(), "value", "values") << '\n';
  return kDone;
}

template <class Table>
std::vector<std::string> Entries(const Table& table) {
  return std::vector<std::string>(std::begin(table), std::end(table));
}

}  // namespace

void AddTideCommand(CLI::App& program, int& exitCode) {
  CLI::App* const tide = program.add_subcommand("tide", "Look into tide files, make them from text and back");
  tide->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();
  const auto add = [&](const char* name, const char* what, int (*run)(const Arguments&)) {
    CLI::App* const app = tide->add_subcommand(name, what);
    app->callback([arguments, run, &exitCode] { exitCode = run(*arguments); });
    return app;
  };
  const auto addLongest = [&arguments](CLI::App* app) {
    app->add_option("--longer-than", arguments->longest,
                    "Minutes from value to value that make a gap; by default half as much again as usual")
        ->check(CLI::PositiveNumber);
  };

  CLI::App* app = add("info", "Number of values, span, lowest and highest, step", Info);
  app->add_option("FILE", arguments->file, "Tide file")->required();

  app = add("list", "The values", List);
  app->add_option("FILE", arguments->file, "Tide file")->required();
  app->add_option("--from", arguments->from, "Only from this time on, as 2026-05-01T10:20, UTC");
  app->add_option("--to", arguments->to, "Only up to this time");

  app = add("import", "A tide file from a text: a date, a time and a height a line, UTC", Import);
  app->add_option("TEXT", arguments->file, "Text file")->required();
  app->add_option("FILE", arguments->output, "Tide file to make")->required();
  app->add_option("--date", arguments->dateFormat, "Order of day, month and year")
      ->check(CLI::IsMember(Entries(TideDateFormats)))
      ->capture_default_str();
  app->add_option("--time", arguments->timeFormat, "Hours and minutes, or seconds too")
      ->check(CLI::IsMember(Entries(TideTimeFormats)))
      ->capture_default_str();
  app->add_flag("--add", arguments->add, "Keep the values that FILE has; those of the same times are replaced");
  app->add_flag("--force", arguments->force, "Import although some lines do not read");
  app->footer("Example:\n  zel tide import samples/tide/harbour.txt harbour.tid\n");

  app = add("export", "A text from a tide file", Export);
  app->add_option("FILE", arguments->file, "Tide file")->required();
  app->add_option("TEXT", arguments->output, "Text file to write")->required();

  app = add("gaps", "Where values are missing", Gaps);
  app->add_option("FILE", arguments->file, "Tide file")->required();
  addLongest(app);
  app->footer("Exit code: 0, or 1 when there is a gap.\n");

  app = add("plot", "The curve as a picture", Plot);
  app->add_option("FILE", arguments->file, "Tide file")->required();
  app->add_option("-o,--output", arguments->output, "Picture, .png or .svg; by default in the current folder");
  addLongest(app);
}

}  // namespace zel
