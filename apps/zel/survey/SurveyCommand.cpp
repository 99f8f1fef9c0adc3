#include "survey/SurveyCommand.h"

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "OutputFile.h"
#include "ProgressBar.h"
#include "SettingsFile.h"
#include "survey/SurveyFaults.h"
#include "survey/SurveyFile.h"
#include "survey/SurveyPictures.h"
#include "survey/SurveyReport.h"
#include "zelbase/xml/XmlWriter.h"

namespace zel {
namespace {

constexpr std::size_t kMostShown = 20;  // errors that are printed; the report has all of them

struct Arguments {
  std::string folder;
  std::string settings = "survey.ini";
  std::string output;
  bool noPictures = false;
};

// A bar for each stage.
class Stages {
 public:
  bool Show(const std::string& stage, double progress) {
    if (stage != m_stage) m_bar = std::make_unique<ProgressBar>(stage);
    m_stage = stage;
    m_bar->Show(progress);
    return !IsInterrupted();
  }

 private:
  std::string m_stage;
  std::unique_ptr<ProgressBar> m_bar;
};

bool WriteFile(const std::string& path, std::string_view text) {
  OutputFile file(path);
  file.Write(text);
  if (file.Finish()) return true;
  Fail("cannot write \"" + path + "\"");
  return false;
}

bool WriteReports(const Survey& survey, const std::filesystem::path& folder) {
  std::ostringstream xml;
  const bool made = XmlWriter(SurveyReportXml(survey)).WriteStream(xml);
  const bool text = WriteFile((folder / "report.txt").string(), SurveyReportText(survey));
  return made && WriteFile((folder / "report.xml").string(), xml.view()) && text;
}

using Save = std::function<bool(const std::string& path, std::string& reason)>;
using Pictures = std::vector<std::pair<const char*, Save>>;

// The chart in three forms, and the long section of a survey with a design.
Pictures PicturesOf(const Survey& survey, const SurveyChart& chart) {
  Pictures pictures = {{"chart.png", [&chart](const std::string& path, std::string& reason) { return chart.SavePng(path, reason); }},
                       {"chart.svg", [&chart](const std::string& path, std::string& reason) { return chart.SaveSvg(path, reason); }},
                       {"chart.pdf", [&chart](const std::string& path, std::string& reason) { return chart.SavePdf(path, reason); }}};
  if (survey.design.IsGiven()) {
    pictures.emplace_back("profile.png",
                          [&survey](const std::string& path, std::string& reason) { return SaveProfilePng(survey, path, reason); });
  }
  return pictures;
}

// What cannot be written is reported; the rest is drawn all the same, and told in `drawn`. False once it was asked to stop.
bool WritePictures(const Survey& survey, const std::filesystem::path& folder, Stages& stages, std::string& drawn) {
  const SurveyChart chart(survey, [&stages](double progress) { return stages.Show("drawing", 0.3 * progress); });
  const Pictures pictures = PicturesOf(survey, chart);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    if (!stages.Show("drawing", 0.3 + 0.7 * static_cast<double>(i) / static_cast<double>(pictures.size()))) return false;
    const auto& [name, save] = pictures[i];
    const std::string path = (folder / name).string();
    std::string reason;
    if (save(path, reason)) drawn += std::string(name) + ", ";
    else ReportFile("Pictures", path, FileError::Write);
  }
  return !IsInterrupted();
}

void PrintErrors(const Survey& survey) {
  for (std::size_t i = 0; i < survey.errors.size() && i < kMostShown; ++i) {
    const SurveyError& error = survey.errors[i];
    const auto shown = [](const std::string& text) { return ToTerminal(text, DetectEncoding(text)); };
    Fail(shown(error.context) + ": " + shown(error.text) + (error.details.empty() ? "" : " (" + ToShownPath(shown(error.details)) + ")"));
  }
  if (survey.errors.size() > kMostShown) Fail("and " + std::to_string(survey.errors.size() - kMostShown) + " more; the report has them");
}

void PrintSummary(const Survey& survey, const std::string& drawn, const Arguments& arguments) {
  const SurveyCounts& counts = survey.counts;
  std::printf("%s of %lld read, %lld outside the work area, %lld without tide%s\n",
              Counted(survey.soundings.size(), "sounding", "soundings").c_str(), counts.read, counts.outside, counts.withoutTide,
              counts.keptUnreduced > 0 ? ", which are NOT reduced" : "");
  const std::size_t errors = survey.errors.size() + static_cast<std::size_t>(survey.moreErrors);
  std::printf("%s\n", errors == 0 ? "no errors" : Counted(errors, "error", "errors").c_str());
  std::printf("%sreport.txt and report.xml are in \"%s\"\n", drawn.c_str(), arguments.output.c_str());
  std::fflush(stdout);
}

// False once it was asked to stop. Without settings there is nothing to draw.
bool ReadAndDraw(const Arguments& arguments, Survey& survey, std::string& drawn) {
  Stages stages;
  const SurveyStage show = [&stages](const char* stage, double progress) { return stages.Show(stage, progress); };
  const SurveyOutcome outcome = ReadSurvey(arguments.folder, arguments.settings, show, survey);
  if (outcome == SurveyOutcome::Stopped) return false;
  return arguments.noPictures || outcome == SurveyOutcome::NoSettings || WritePictures(survey, arguments.output, stages, drawn);
}

int RunSurvey(const Arguments& arguments) {
  CatchInterrupt();
  std::error_code failed;
  std::filesystem::create_directories(arguments.output, failed);
  if (!std::filesystem::is_directory(arguments.output, failed)) return Fail("cannot make the folder \"" + arguments.output + "\"");
  const FaultCounter faults;
  Survey survey;
  std::string drawn;
  if (!ReadAndDraw(arguments, survey, drawn)) return Fail("stopped");
  faults.Gather(survey);
  PrintErrors(survey);
  if (!WriteReports(survey, arguments.output)) return kFoundWrong;
  PrintSummary(survey, drawn, arguments);
  return survey.errors.empty() ? kDone : kFoundWrong;
}

}  // namespace

void AddSurveyCommand(CLI::App& program, int& exitCode) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* const app = program.add_subcommand("survey", "A survey's folder into its chart and its report");
  app->add_option("FOLDER", arguments->folder, "Folder of the survey")->required();
  app->add_option("--out", arguments->output, "Folder to write to; made when it is not there")->required();
  app->add_option("--settings", arguments->settings, "The settings in the folder that name all the rest");
  app->add_flag("--no-pictures", arguments->noPictures, "Only the reports");
  app->footer(
      "Ctrl-C stops it, and leaves no half files.\n\nExample:\n  zel survey samples/survey --out out\n\n"
      "Exit code: 0, or 1 when something was wrong in the folder; what could be done is done all the same.\n");
  app->callback([arguments, &exitCode] { exitCode = RunSurvey(*arguments); });
}

}  // namespace zel
