#include "ColoursCommand.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ColourFile.h"
#include "ColourText.h"
#include "LegendPicture.h"
#include "Palette.h"
#include "SettingsFile.h"
#include "TextEdge.h"

namespace zel {
namespace {

struct Arguments {
  std::string file;
  std::string output;
  std::string legend;
  std::string title;
  std::string low = "blue", mid = "white", high = "red";
  std::string under, tolerance, over;  // "MIN MAX COUNT" of a dredge band
  std::vector<std::string> lookUp;
  double min = 0.0, max = 0.0, step = 0.0;
  double underLimit = 0.5, overLimit = -0.5;
  int count = 0;
  int steps = 8;
  bool rgb = false;
  bool rainbow = false;
  Palette palette;
};

std::string Number(double value) {
  char buffer[40];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 12).ptr);
}

// ---- listing ----

std::string Row(const Palette& palette, const std::string& label, COLORREF color, const std::string& name, bool locked) {
  const std::string channels = std::to_string(RedOf(color)) + ", " + std::to_string(GreenOf(color)) + ", " + std::to_string(BlueOf(color));
  std::string row = ToColumn(label, 16) + palette.Swatch(RedOf(color), GreenOf(color), BlueOf(color)) + ColourText(color) + "  " +
                    ToColumn(channels, 15) + (locked ? "locked  " : "        ") + ToTerminal(name, Encoding::Windows1252);
  row.erase(row.find_last_not_of(' ') + 1);
  return row;
}

void PrintDredge(const ColorTable& table) {
  double under = 0.0, over = 0.0;
  bool sync = false;
  COLORREF low = 0, high = 0;
  unsigned int count = 0;
  table.GetUnderDredgeLimit(under);
  table.GetOverDredgeLimit(over);
  table.GetSyncWithDesignModel(sync);
  std::cout << "\nDredge differences: over dredged below " << Number(over) << ", under dredged from " << Number(under)
            << (sync ? ", limits from the design\n" : "\n");
  const auto print = [&](const char* name) {
    std::cout << "  " << ToColumn(name, 14) << ColourText(low) << " to " << ColourText(high) << ", " << Counted(count, "colour", "colours")
              << '\n';
  };
  table.GetUnderDredgeColorRange(low, high, count);
  print("under dredged");
  table.GetInTolColorRange(low, high, count);
  print("in tolerance");
  table.GetOverDredgeColorRange(low, high, count);
  print("over dredged");
}

void Print(const ColorTable& table, const Palette& palette) {
  std::cout << Row(palette, "below", table.LowColor(), table.LowColorName(), false) << '\n';
  for (int i = 0; i < table.NumEntries(); ++i) {
    std::cout << Row(palette, Number(table.EntryValue(i)), table.EntryColor(i), table.EntryName(i), table.EntryLocked(i)) << '\n';
  }
  if (table.HasDredgeDiffSection()) PrintDredge(table);
}

// The values asked for, a row each. False when one is no number.
bool PrintLookUps(const ColorTable& table, const Arguments& arguments) {
  if (!arguments.lookUp.empty()) std::cout << '\n';
  bool good = true;
  for (const std::string& text : arguments.lookUp) {
    double value = 0.0;
    if (!ToNumber(text, value)) {
      Fail("\"" + text + "\" is not a number");
      good = false;
      continue;
    }
    std::cout << Row(arguments.palette, "value " + Number(value), table.GetColor(value), table.GetName(value), false) << '\n';
  }
  return good;
}

int SaveLegendOf(const ColorTable& table, const Arguments& arguments, const std::string& name) {
  if (arguments.legend.empty()) return kDone;
  std::string reason;
  const std::string title = arguments.title.empty() ? std::filesystem::path(name).stem().string() : arguments.title;
  if (!SaveLegend(table, title, arguments.legend, reason)) return Fail(reason);
  std::cout << "\nPicture: " << arguments.legend << '\n';
  return kDone;
}

// ---- show, convert ----

// Tells rows of a suite's table that reading left out. True when there are none.
bool CheckRows(const ColorTable& table, const std::string& path) {
  SettingsFile file;
  std::string reason;
  if (!table.HasOpened() || !file.Open(path, reason)) return true;
  const int dropped = file.store.GetNumItems("Values") - table.NumEntries();
  if (dropped <= 0) return true;
  std::cout.flush();
  Fail(path + ": " + Counted(static_cast<std::size_t>(dropped), "row", "rows") +
       " not read: values out of order or equal, no number, or behind a gap in the keys");
  return false;
}

int Show(const Arguments& arguments) {
  ColorTable table;
  std::string reason;
  if (!OpenColourFile(arguments.file, arguments.steps, table, reason)) return Fail(reason);
  Print(table, arguments.palette);
  if (!PrintLookUps(table, arguments)) return kBadUsage;
  const int exitCode = SaveLegendOf(table, arguments, arguments.file);
  return CheckRows(table, arguments.file) ? exitCode : kFoundWrong;
}

int Convert(const Arguments& arguments) {
  ColorTable table;
  std::string reason;
  if (!OpenColourFile(arguments.file, arguments.steps, table, reason)) return Fail(reason);
  if (!SaveColourFile(arguments.output, table, reason)) return Fail(reason);
  std::cout << arguments.output << ": " << Counted(static_cast<std::size_t>(table.NumEntries()), "entry", "entries") << '\n';
  return SaveLegendOf(table, arguments, arguments.file);
}

// ---- make ----

// The two or three colours of a run. False, told, when one is none.
struct RunColours {
  COLORREF low = 0, mid = 0, high = 0;

  bool Read(const Arguments& arguments) { return Read(arguments.low, low) && Read(arguments.mid, mid) && Read(arguments.high, high); }

  static bool Read(const std::string& text, COLORREF& color) {
    if (ToColour(text, color)) return true;
    Fail("\"" + text + "\" is not a colour; write #RRGGBB, R,G,B or a name such as \"navy\"");
    return false;
  }
};

// Saves a table that has been made, and shows it.
int Finish(const ColorTable& table, const Arguments& arguments) {
  std::string reason;
  if (!arguments.output.empty() && !SaveColourFile(arguments.output, table, reason)) return Fail(reason);
  Print(table, arguments.palette);
  if (!PrintLookUps(table, arguments)) return kBadUsage;
  if (!arguments.output.empty()) std::cout << "\nTable: " << arguments.output << '\n';
  return SaveLegendOf(table, arguments, arguments.output.empty() ? "Colours" : arguments.output);
}

bool StartFrom(const Arguments& arguments, ColorTable& table) {
  std::string reason;
  if (arguments.file.empty() || OpenColourFile(arguments.file, arguments.steps, table, reason)) return true;
  Fail(reason);
  return false;
}

int MakeRange(const Arguments& arguments) {
  RunColours colours;
  if (!colours.Read(arguments)) return kBadUsage;
  ColorTable table;
  if (!StartFrom(arguments, table)) return kFoundWrong;
  const bool add = !arguments.file.empty();
  const auto [low, mid, high] = colours;
  const auto run = [&, low = low, high = high](auto step) {
    if (add) table.AddRange(arguments.min, arguments.max, step, low, high, arguments.rgb);
    else if (arguments.rgb) table.SetRangeRGB(arguments.min, arguments.max, step, low, high);
    else table.SetRange(arguments.min, arguments.max, step, low, high);
  };
  if (arguments.count > 0) run(arguments.count);
  else run(arguments.step);
  return Finish(table, arguments);
}

int MakeThree(const Arguments& arguments) {
  RunColours colours;
  if (!colours.Read(arguments)) return kBadUsage;
  ColorTable table;
  if (!StartFrom(arguments, table)) return kFoundWrong;
  const bool add = !arguments.file.empty();
  const auto run = [&](auto step) {
    if (add) table.AddRange3(arguments.min, arguments.max, step, colours.low, colours.mid, colours.high);
    else table.SetRangeRGB3(arguments.min, arguments.max, step, colours.low, colours.mid, colours.high);
  };
  if (arguments.count > 0) run(arguments.count);
  else run(arguments.step);
  return Finish(table, arguments);
}

int MakeLog(const Arguments& arguments) {
  ColorTable table;
  table.SetLogRange(arguments.max, arguments.count, arguments.rainbow);
  return Finish(table, arguments);
}

int MakeFiles(const Arguments& arguments) {
  RunColours colours;
  if (!colours.Read(arguments)) return kBadUsage;
  ColorTable table;
  table.MakeFileColors(arguments.count, colours.low, colours.high);
  return Finish(table, arguments);
}

// "MIN:MAX:COUNT" of one dredge band; an empty text leaves the band as it is. False, told, when it is none.
bool ReadBand(const std::string& text, COLORREF& low, COLORREF& high, unsigned int& count) {
  if (text.empty()) return true;
  const std::size_t first = text.find(':'), last = text.rfind(':');
  double number = 0.0;
  if (first != last && ToColour(text.substr(0, first), low) && ToColour(text.substr(first + 1, last - first - 1), high) &&
      ToNumber(text.substr(last + 1), number) && number >= 0 && number <= 1000 && number == std::floor(number)) {
    count = static_cast<unsigned int>(number);
    return true;
  }
  Fail("\"" + text + "\" is not a band; write COLOUR:COLOUR:COUNT, as #C0C0C0:#808080:5");
  return false;
}

int MakeDredge(const Arguments& arguments) {
  ColorTable table;
  COLORREF low = 0, high = 0;
  unsigned int count = 0;
  table.GetUnderDredgeColorRange(low, high, count);
  if (!ReadBand(arguments.under, low, high, count)) return kBadUsage;
  table.SetUnderDredgeColorRange(low, high, count);
  table.GetInTolColorRange(low, high, count);
  if (!ReadBand(arguments.tolerance, low, high, count)) return kBadUsage;
  table.SetInTolColorRange(low, high, count);
  table.GetOverDredgeColorRange(low, high, count);
  if (!ReadBand(arguments.over, low, high, count)) return kBadUsage;
  table.SetOverDredgeColorRange(low, high, count);
  table.SetUnderDredgeLimit(arguments.underLimit);
  table.SetOverDredgeLimit(arguments.overLimit);
  table.SetDredgeDiffColTab(true);
  table.GenerateDredgeDiffColorTable();
  return Finish(table, arguments);
}

// ---- command line ----

using Shared = std::shared_ptr<Arguments>;

void AddLegend(CLI::App& app, const Shared& arguments) {
  app.add_option("--legend", arguments->legend, "Picture of the legend to write: .png or .svg");
  app.add_option("--title", arguments->title, "Title of the legend, instead of the file's name");
}

void AddLookUp(CLI::App& app, const Shared& arguments) {
  app.add_option("--value", arguments->lookUp, "Look a value up; may be given often")->take_all()->allow_extra_args(false);
  arguments->palette.AddOption(app);
}

void AddSteps(CLI::App& app, const Shared& arguments) {
  app.add_option("--steps", arguments->steps, "Entries for each slice of a .cpt between two colours")
      ->check(CLI::Range(1, 256))
      ->capture_default_str();
}

CLI::App* AddMaker(CLI::App& make, const Shared& arguments, const char* name, const char* what) {
  CLI::App* const app = make.add_subcommand(name, what);
  app->add_option("-o,--output", arguments->output, "Table file to write (.cpt and .txt as in \"convert\")");
  AddLegend(*app, arguments);
  AddLookUp(*app, arguments);
  return app;
}

void AddRun(CLI::App& app, const Shared& arguments) {
  app.add_option("--min", arguments->min, "Value of the first entry")->required();
  app.add_option("--max", arguments->max, "The entries end at the first step at or above it")->required();
  CLI::Option_group* const spacing = app.add_option_group("Spacing, one of");
  spacing->add_option("--step", arguments->step, "From entry to entry");
  spacing->add_option("--count", arguments->count, "The number of colours, the low colour included")->check(CLI::Range(1, 65536));
  spacing->require_option(1);
  app.add_option("--add-to", arguments->file, "Put the run into this table, in place of what lies within it")->check(CLI::ExistingFile);
}

void AddColours(CLI::App& app, const Shared& arguments, bool three) {
  app.add_option("--low", arguments->low, "Colour of the lower end: #RRGGBB, R,G,B or a name")->capture_default_str();
  if (three) app.add_option("--mid", arguments->mid, "Colour of the middle")->capture_default_str();
  app.add_option("--high", arguments->high, "Colour of the upper end")->capture_default_str();
}

void AddMake(CLI::App& colours, const Shared& arguments, int& exitCode) {
  CLI::App* const make = colours.add_subcommand("make", "Generate a table, print it, save it");
  make->require_subcommand(1);
  make->footer("Example:\n  zel colours make range --min 0 --max 20 --step 2 -o depth.col --legend depth.png\n");

  CLI::App* app = AddMaker(*make, arguments, "range", "From colour to colour, through the rainbow or straight (--rgb)");
  AddRun(*app, arguments);
  AddColours(*app, arguments, false);
  app->add_flag("--rgb", arguments->rgb, "Straight from colour to colour");
  app->callback([arguments, &exitCode] { exitCode = MakeRange(*arguments); });

  app = AddMaker(*make, arguments, "three", "From colour to colour by way of a third");
  AddRun(*app, arguments);
  AddColours(*app, arguments, true);
  app->callback([arguments, &exitCode] { exitCode = MakeThree(*arguments); });

  app = AddMaker(*make, arguments, "log", "From 1 to a maximum in equal ratios");
  app->add_option("--max", arguments->max, "Value of the last entry")->required()->check(CLI::PositiveNumber);
  app->add_option("--count", arguments->count, "Number of colours, the low colour included")->required()->check(CLI::Range(3, 65536));
  app->add_flag("--rainbow", arguments->rainbow, "Blue to red instead of black to white");
  app->callback([arguments, &exitCode] { exitCode = MakeLog(*arguments); });

  app = AddMaker(*make, arguments, "files", "A colour for each of a number of files");
  app->add_option("--count", arguments->count, "Number of files")->required()->check(CLI::Range(1, 65536));
  AddColours(*app, arguments, false);
  app->callback([arguments, &exitCode] { exitCode = MakeFiles(*arguments); });

  app = AddMaker(*make, arguments, "dredge", "Over dredged, in tolerance, under dredged");
  app->add_option("--under-limit", arguments->underLimit, "Differences from here up are under dredged")->capture_default_str();
  app->add_option("--over-limit", arguments->overLimit, "Differences below are over dredged")->capture_default_str();
  app->add_option("--under", arguments->under, "Band as COLOUR:COLOUR:COUNT; so the next two");
  app->add_option("--tolerance", arguments->tolerance);
  app->add_option("--over", arguments->over);
  app->callback([arguments, &exitCode] { exitCode = MakeDredge(*arguments); });
}

}  // namespace

void AddColoursCommand(CLI::App& program, int& exitCode) {
  CLI::App* const colours = program.add_subcommand("colours", "Make, show and convert colour tables");
  colours->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();
  AddMake(*colours, arguments, exitCode);

  CLI::App* app = colours->add_subcommand("show", "The entries of a table, values looked up, the legend as a picture");
  app->add_option("FILE", arguments->file, "Table: the suite's, a .cpt, or a colour text .txt")->required();
  AddLookUp(*app, arguments);
  AddLegend(*app, arguments);
  AddSteps(*app, arguments);
  app->footer("Example:\n  zel colours show samples/colours/dredge.col --value 0.2 --value -1.3 --legend dredge.png\n");
  app->callback([arguments, &exitCode] { exitCode = Show(*arguments); });

  app = colours->add_subcommand("convert", "A table from one form to another, told by the endings");
  app->add_option("FROM", arguments->file, "Table: the suite's, a .cpt, or a colour text .txt")->required();
  app->add_option("TO", arguments->output, "Table to write; .cpt and .txt as above, any other ending is the suite's")->required();
  AddLegend(*app, arguments);
  AddSteps(*app, arguments);
  app->footer("Example:\n  zel colours convert samples/colours/seabed.cpt seabed.col\n");
  app->callback([arguments, &exitCode] { exitCode = Convert(*arguments); });
}

}  // namespace zel
