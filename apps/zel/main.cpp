// zel: the suite's tool on the command line.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>

#include "ActionsCommand.h"
#include "ColoursCommand.h"
#include "DisplaysCommand.h"
#include "FilesCommand.h"
#include "FormatCommand.h"
#include "GeodesyCommand.h"
#include "GeometryCommand.h"
#include "Host.h"
#include "LanguageCommand.h"
#include "ReportCommand.h"
#include "SettingsCommands.h"
#include "SettingsFile.h"
#include "TideCommand.h"
#include "TrackCommand.h"
#include "UnitsCommand.h"
#include "XmlCommand.h"
#include "XyzCommand.h"
#include "survey/SurveyCommand.h"

#if defined(__SANITIZE_ADDRESS__)
// The fonts' library keeps what it has read until the end of the process, out of the leak check's sight.
extern "C" const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
#endif

namespace {

int Run(int argc, char** argv) {
  CLI::App program("zel looks into the files and services of the survey suite.", "zel");
  program.set_version_flag("--version", std::string(ZEL_VERSION));
  program.require_subcommand(1);
  program.footer(
      "Examples:\n  zel survey samples/survey --out out\n  zel report samples/settings/suite.ini\n"
      "  zel settings check samples/settings/faulty.ini\n"
      "  zel format coordinate 52.5125\n  zel --common samples/common units convert 12 Fathom m\n\n"
      "\"zel COMMAND --help\" tells more.\n"
      "Exit codes: 0 done, 1 something found wrong, 2 bad usage.\n");
  int exitCode = zel::kDone;
  zel::AddHostOptions(program);
  zel::AddSurveyCommand(program, exitCode);
  zel::AddReportCommand(program, exitCode);
  zel::AddSettingsCommands(program, exitCode);
  zel::AddDisplaysCommand(program, exitCode);
  zel::AddFormatCommand(program, exitCode);
  zel::AddUnitsCommand(program, exitCode);
  zel::AddGeometryCommand(program, exitCode);
  zel::AddGeodesyCommand(program, exitCode);
  zel::AddColoursCommand(program, exitCode);
  zel::AddTrackCommand(program, exitCode);
  zel::AddTideCommand(program, exitCode);
  zel::AddXmlCommand(program, exitCode);
  zel::AddXyzCommand(program, exitCode);
  zel::AddActionsCommand(program, exitCode);
  zel::AddFilesCommands(program, exitCode);
  zel::AddLanguageCommand(program, exitCode);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? zel::kDone : zel::kBadUsage;
  }
  return exitCode;
}

// An answer that did not reach its reader, on a full disk, say, is no success.
int AfterOutput(int exitCode) {
  std::cout.flush();
  const bool written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && !std::cout.fail();
  return written ? exitCode : zel::Fail("cannot write all of the output");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return AfterOutput(Run(argc, argv));
  } catch (const std::exception& error) {
    return zel::Fail(error.what());
  }
}
