#include "DisplaysCommand.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "SettingsFile.h"
#include "zelbase/config/DisplaysFile.h"
#include "zelbase/frame/KeyTables.h"

namespace zel {
namespace {

void PrintViews(const DisplaysFile& displays, Encoding encoding) {
  for (const std::string& view : viewTypeKeys) {
    if (!displays.IsPresent(view)) continue;
    std::cout << "  " << view;
    const char* separator = ": ";
    for (const auto& item : Items(displays, view)) {
      std::cout << separator << ToTerminal(item.key, encoding) << " = " << ToTerminal(item.value, encoding);
      separator = ", ";
    }
    std::cout << '\n';
  }
}

int Show(const std::string& path) {
  DisplaysFile displays;
  const bool good = displays.ReadFromDisk(ToSuitePath(path));
  DisplaysFile::ERRINFO error;
  displays.GetError(error);
  if (!good && error.code == 1) return Fail("cannot open \"" + path + "\"");

  const Encoding encoding = DetectEncoding(ReadBytes(path));
  std::cout << path << ": " << displays.GetNumSections() << (displays.GetNumSections() == 1 ? " section\n" : " sections\n");
  PrintViews(displays, encoding);
  if (good) return kDone;
  return Fail("\"" + path + "\": no view type has the name \"" + ToTerminal(error.name, encoding) + "\"");
}

int ShowAll(const std::vector<std::string>& paths) {
  int exitCode = kDone;
  for (const auto& path : paths) exitCode = Show(path) == kDone ? exitCode : kFoundWrong;
  return exitCode;
}

}  // namespace

void AddDisplaysCommand(CLI::App& program, int& exitCode) {
  CLI::App* const app = program.add_subcommand("displays", "Show which displays a displays file asks for");
  const auto paths = std::make_shared<std::vector<std::string>>();
  app->add_option("FILE", *paths, "Displays files")->required();
  app->footer(
      "Example:\n  zel displays samples/displays/Displays.ini\n\n"
      "Exit code: 0, or 1 when a file cannot be opened or has a section that is no view type.\n");
  app->callback([paths, &exitCode] { exitCode = ShowAll(*paths); });
}

}  // namespace zel
