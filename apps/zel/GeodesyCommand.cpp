#include "GeodesyCommand.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FieldText.h"
#include "GeodesyPlugin.h"
#include "GeodesyPositions.h"
#include "PositionText.h"
#include "SettingsFile.h"
#include "TextEdge.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/geodesy/GeoidModel.h"
#include "zelbase/geodesy/GeoidModelList.h"

namespace zel {
namespace {

constexpr unsigned short kSatellitePositions = 3, kGridPositions = 15;  // types of geoid models

struct Arguments {
  std::string plugin;
  std::vector<std::string> words;
  std::vector<std::string> at;
  bool deprecated = false;
  bool wholeArea = false;
  std::string from, to;
  std::vector<std::string> positions;
  std::string input;
  PairStyle style;
  std::string grid, system;
};

const char* KindText(GeoCoordSysKind kind) {
  switch (kind) {
    case GeoCoordSysKind::Geographic: return "geographic";
    case GeoCoordSysKind::Projected: return "projected";
    case GeoCoordSysKind::None: break;
  }
  return "";
}

// ---- info ----

std::string Joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ", ") + Shown(text);
  return result.empty() ? "none" : result;
}

std::vector<std::string> GeoidModelTypes() {
  std::vector<std::string> types;
  for (unsigned short type = 0; type < static_cast<unsigned short>(std::size(GeoidmodelTypeKeys)); ++type) {
    const std::unique_ptr<GeoidModel> model(GeoidModelList::GetGeoidModelList().Create(type));
    if (model != nullptr) types.push_back(std::to_string(type) + " \"" + GeoidmodelTypeKeys[type] + "\"");
  }
  return types;
}

void PrintFact(const char* name, const std::string& text) { std::cout << ToColumn(name, 20) << text << '\n'; }

// How many systems there are, and of what kind.
std::string SystemsText(GeoDatabase& database) {
  std::vector<GeoSystemInfo> systems;
  database.GetSystems(systems);
  std::size_t geographic = 0, deprecated = 0;
  for (const GeoSystemInfo& system : systems) {
    if (system.kind == GeoCoordSysKind::Geographic) ++geographic;
    if (system.deprecated) ++deprecated;
  }
  return Counted(systems.size(), "coordinate system", "coordinate systems") + ": " + std::to_string(geographic) + " geographic, " +
         std::to_string(systems.size() - geographic) + " projected; " + std::to_string(deprecated) + " of them deprecated";
}

template <class Entry, class Source>
std::string CountText(Source& source, int (Source::*list)(std::vector<Entry>&), const char* one, const char* many) {
  std::vector<Entry> entries;
  return Counted(static_cast<std::size_t>((source.*list)(entries)), one, many);
}

void PrintContents(GeoDatabase& database) {
  PrintFact("Engine", Shown(database.EngineVersion()));
  PrintFact("Database", Shown(database.DataVersion()) + ", ready, " + Shown(ToShownPath(database.Location())));
  PrintFact("", SystemsText(database));
  PrintFact("", CountText(database, &GeoDatabase::GetDatums, "datum", "datums") + ", " +
                    CountText(database, &GeoDatabase::GetEllipsoids, "ellipsoid", "ellipsoids"));
}

void PrintStaticData(GeoStaticData& data) {
  PrintFact("Static data", CountText(data, &GeoStaticData::GetLinearUnits, "linear unit", "linear units") + ", " +
                               CountText(data, &GeoStaticData::GetAngularUnits, "angular unit", "angular units") + ", " +
                               CountText(data, &GeoStaticData::GetPrimeMeridians, "prime meridian", "prime meridians"));
}

// False after a message.
bool Load(const Arguments& arguments, GeodesyPlugin& plugin) {
  if (plugin.Load(arguments.plugin)) return true;
  Fail(plugin.Reason() + (plugin.File().empty() ? "; --plugin names its folder" : ""));
  return false;
}

int Info(const Arguments& arguments) {
  GeodesyPlugin plugin;
  if (!Load(arguments, plugin)) return kFoundWrong;
  std::vector<std::string> names;
  GeoidModelList::GetGeoidModelList().GetGeoidModelNames(names);
  PrintFact("Plug-in", plugin.File());
  PrintFact("Registered", "coordinate systems: " + Joined(CoordSysTypes()));
  PrintFact("", "databases: " + Joined(DatabaseTypes()));
  PrintFact("", "static data: " + Joined(StaticDataTypes()));
  PrintFact("", "geoid models by name: " + Joined(names));
  PrintFact("", "geoid models by type: " + Joined(GeoidModelTypes()));
  std::cout.flush();
  const std::unique_ptr<GeoDatabase> database = plugin.MakeDatabase();
  database != nullptr ? PrintContents(*database) : void(Fail(plugin.Reason()));
  std::cout.flush();
  const std::unique_ptr<GeoStaticData> data = plugin.MakeStaticData();
  data != nullptr ? PrintStaticData(*data) : void(Fail(plugin.Reason()));
  return database != nullptr && data != nullptr ? kDone : kFoundWrong;
}

// ---- systems ----

// An area's name, cut to what fits behind the rest of a line unless it is wanted whole.
std::string AreaColumn(const std::string& name, bool whole) {
  constexpr std::size_t kWidth = 60;
  return whole || name.size() <= kWidth ? Shown(name) : Shown(name.substr(0, kWidth - 3)) + "...";
}

int Systems(const Arguments& arguments) {
  std::string text, reason;
  for (const std::string& word : arguments.words) text += word + " ";
  double latitude = 0.0, longitude = 0.0;
  if (!arguments.at.empty() && !ReadPosition(arguments.at[0], arguments.at[1], latitude, longitude, reason)) return Fail(reason);
  std::string wanted;
  GeodesyPlugin plugin;
  if (!Load(arguments, plugin)) return kFoundWrong;
  const std::unique_ptr<GeoDatabase> database = plugin.MakeDatabase();
  if (database == nullptr) return Fail(plugin.Reason());
  std::vector<GeoSystemInfo> systems;
  if (FromArgument(text, Encoding::Windows1252, wanted)) database->FindSystems(wanted, systems);
  std::erase_if(systems, [&](const GeoSystemInfo& system) {
    const bool elsewhere = !arguments.at.empty() && !(system.area.hasBounds && system.area.Contains(latitude, longitude));
    return elsewhere || (system.deprecated && !arguments.deprecated);
  });
  if (systems.empty()) return Fail("no coordinate system answers to that");
  for (const GeoSystemInfo& system : systems) {
    std::cout << ToColumn(system.code, 14) << ' ' << ToColumn(KindText(system.kind), 10) << "  " << ToColumn(system.name, 44) << "  "
              << AreaColumn(system.area.name, arguments.wholeArea) << (system.deprecated ? " (deprecated)" : "") << '\n';
  }
  std::cout << Counted(systems.size(), "coordinate system", "coordinate systems") << '\n';
  return kDone;
}

// ---- convert ----

int ConvertArguments(const Arguments& arguments, Conversion& conversion) {
  if (arguments.positions.empty() || arguments.positions.size() % 2 != 0) {
    Fail("positions are pairs of values");
    return kBadUsage;
  }
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i < arguments.positions.size(); i += 2) {
    if (!ReadPair(conversion.From(), arguments.positions[i], arguments.positions[i + 1], pairs.emplace_back())) return kFoundWrong;
  }
  const Columns from(conversion.From(), arguments.style), to(conversion.To(), arguments.style);
  std::cout << "from  " << SystemText(conversion.From()) << ": " << from.Head() << "\nto    " << SystemText(conversion.To()) << ": "
            << to.Head() << '\n';
  for (const Pair& pair : pairs) {
    Pair result;
    const bool done = conversion.Convert(pair, result);
    std::cout << from.Text(pair) << "  ->  " << (done ? to.Text(result) : "no such position") << '\n';
  }
  conversion.PrintWays("");
  std::cout.flush();
  return conversion.Report();
}

// A line is two numbers and whatever stands behind, which goes along.
int ConvertLines(std::istream& stream, const std::string& name, const Arguments& arguments, Conversion& conversion) {
  const Columns to(conversion.To(), arguments.style);
  std::cout << "# " << SystemText(conversion.To()) << ": " << to.Head() << "; from " << SystemText(conversion.From()) << '\n';
  std::size_t number = 0, refused = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::string_view rest = line;
    if (IsEmpty(rest) || line.front() == '#') {
      std::cout << line << '\n';
      continue;
    }
    Pair pair, result;
    if (!TakeNumber(rest, pair.first) || !TakeNumber(rest, pair.second) || !conversion.Convert(pair, result)) {
      ++refused;
      Fail(name + ":" + std::to_string(number) + ": no position: \"" + ToTerminal(line, DetectEncoding(line)) + "\"");
      continue;
    }
    std::cout << to.Text(result) << rest << '\n';
  }
  conversion.PrintWays("# ");
  std::cout.flush();
  const int exitCode = conversion.Report();
  return refused == 0 ? exitCode : kFoundWrong;
}

int ConvertFile(const Arguments& arguments, Conversion& conversion) {
  if (!arguments.positions.empty()) {
    Fail("either positions or --input");
    return kBadUsage;
  }
  if (arguments.input == "-") return ConvertLines(std::cin, "standard input", arguments, conversion);
  std::ifstream stream(arguments.input);
  if (!stream || std::filesystem::is_directory(arguments.input)) return Fail("cannot open \"" + arguments.input + "\"");
  return ConvertLines(stream, arguments.input, arguments, conversion);
}

int Convert(const Arguments& arguments) {
  GeodesyPlugin plugin;
  if (!Load(arguments, plugin)) return kFoundWrong;
  std::unique_ptr<GeoCoordSys> from = plugin.Select(arguments.from);
  if (from == nullptr) return Fail(plugin.Reason());
  std::unique_ptr<GeoCoordSys> to = plugin.Select(arguments.to);
  if (to == nullptr) return Fail(plugin.Reason());
  std::string target;
  FromArgument(arguments.to, Encoding::Windows1252, target);
  if (!from->SelectTarget(target)) return Fail(Shown(from->Reason()));
  Conversion conversion(std::move(from), std::move(to));
  return arguments.input.empty() ? ConvertArguments(arguments, conversion) : ConvertFile(arguments, conversion);
}

// ---- geoid ----

struct GeoidAnswer {
  double inUnit = 0.0, metres = 0.0;
};

// A model that has its grid; null after a message.
std::unique_ptr<GeoidModel> OpenModel(const std::string& grid, GeoCoordSys* system) {
  const unsigned short type = system != nullptr ? kGridPositions : kSatellitePositions;
  std::unique_ptr<GeoidModel> model(GeoidModelList::GetGeoidModelList().Create(type));
  if (model == nullptr) {
    Fail("the plug-in has no geoid model \"" + GeoidmodelTypeKeys[type] + "\"");
    return nullptr;
  }
  model->SetFileName(ToSuitePath(grid));
  if (model->Init(system) && model->IsReady()) return model;
  Fail("\"" + grid + "\" is no grid of geoid heights (.gtx or GeoTIFF), or cannot be read");
  return nullptr;
}

int PrintHeights(const Arguments& arguments, GeoidModel& model, GeoCoordSys& shown, bool inUnit) {
  int exitCode = kDone;
  const Columns columns(shown, arguments.style);
  std::cout << columns.Head() << ", height of the geoid above the ellipsoid\n";
  for (std::size_t i = 0; i < arguments.positions.size(); i += 2) {
    Pair pair;
    if (!ReadPair(shown, arguments.positions[i], arguments.positions[i + 1], pair)) return kFoundWrong;
    GeoidAnswer answer;
    if (!model.Calculate(pair.first, pair.second, answer.inUnit, answer.metres, false)) {
      std::cout.flush();
      exitCode = Fail("\"" + arguments.positions[i] + "\", \"" + arguments.positions[i + 1] + "\" is outside the grid");
      continue;
    }
    std::cout << columns.Text(pair) << NumberColumn(answer.metres, 4) << " m";
    if (inUnit) std::cout << NumberColumn(answer.inUnit, 4) << ' ' << Shown(shown.UnitName());
    std::cout << '\n';
  }
  return exitCode;
}

int Geoid(const Arguments& arguments) {
  if (arguments.positions.size() % 2 != 0) {
    Fail("positions are pairs of values");
    return kBadUsage;
  }
  GeodesyPlugin plugin;
  if (!Load(arguments, plugin)) return kFoundWrong;
  const bool onGlobe = arguments.system.empty();
  const std::unique_ptr<GeoCoordSys> system = plugin.Select(onGlobe ? "EPSG:4326" : arguments.system);
  if (system == nullptr) return Fail(plugin.Reason());
  if (!onGlobe && IsGeographic(*system))
    return Fail(SystemText(*system) + " has no eastings and northings; without --system positions are latitude and longitude");
  const std::unique_ptr<GeoidModel> model = OpenModel(arguments.grid, onGlobe ? nullptr : system.get());
  if (model == nullptr) return kFoundWrong;
  double unit = 1.0;
  system->GetLinearUnit(unit);
  return PrintHeights(arguments, *model, *system, unit != 1.0);
}

// ---- the command ----

void AddStyle(CLI::App& app, Arguments& arguments) {
  app.add_option("--style", arguments.style.angles, "Of latitudes and longitudes: degrees, minutes or seconds")
      ->check(CLI::IsMember(std::vector<std::string>{"degrees", "minutes", "seconds"}))
      ->capture_default_str();
  app.add_option("--decimals", arguments.style.decimals, "Of what is shown, 0 to 15")->check(CLI::Range(0, 15));
}

void AddConvert(CLI::App& geodesy, const std::shared_ptr<Arguments>& arguments, int& exitCode) {
  CLI::App* const app = geodesy.add_subcommand("convert", "Positions from one coordinate system to another");
  app->add_option("--from", arguments->from, "The system they are in: a code, \"+proj=...\" or WKT")->required();
  app->add_option("--to", arguments->to, "The system they are wanted in")->required();
  app->add_option("POSITION", arguments->positions, "Pairs: latitude longitude, or easting northing");
  app->add_option("-i,--input", arguments->input, "A file of lines that begin with a pair of numbers, - for standard input");
  AddStyle(*app, *arguments);
  app->footer(
      "Latitude and longitude are degrees from Greenwich; with letters they may stand in either order. What stands behind the pair on\n"
      "a line of a file goes along. A conversion between datums without a known way is refused, and its accuracy is told.\n\nExamples:\n"
      "  zel geodesy convert --from EPSG:4326 --to EPSG:32631 \"52 30 45 N\" \"4 15 30 E\"\n"
      "  zel geodesy convert --from EPSG:28992 --to EPSG:4326 --style seconds 155000 463000\n\n"
      "Exit code: 0, or 1 when a position has no counterpart or lies outside the area of use of a system.\n");
  app->callback([arguments, &exitCode] { exitCode = Convert(*arguments); });
}

void AddGeoid(CLI::App& geodesy, const std::shared_ptr<Arguments>& arguments, int& exitCode) {
  CLI::App* const app = geodesy.add_subcommand("geoid", "The geoid's height above the ellipsoid, from a grid file");
  app->add_option("--grid", arguments->grid, "Grid of heights, .gtx or GeoTIFF; also looked for beside the database")->required();
  app->add_option("--system", arguments->system, "Positions are eastings and northings of this system");
  app->add_option("POSITION", arguments->positions, "Pairs: latitude longitude, or easting northing")->required();
  AddStyle(*app, *arguments);
  app->footer("Example:\n  zel geodesy geoid --grid egm96_15.gtx 52 4\n\nExit code: 0, or 1 when a position is outside the grid.\n");
  app->callback([arguments, &exitCode] { exitCode = Geoid(*arguments); });
}

}  // namespace

void AddGeodesyCommand(CLI::App& program, int& exitCode) {
  CLI::App* const geodesy = program.add_subcommand("geodesy", "Coordinate systems, conversions and geoid heights, by the geodesy plug-in");
  geodesy->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();
  geodesy->add_option("--plugin", arguments->plugin, "Folder of the plug-in; by default the program's own, or where it was installed");

  CLI::App* app = geodesy->add_subcommand("info", "Which plug-in was loaded, what it registered, and what it holds");
  app->callback([arguments, &exitCode] { exitCode = Info(*arguments); });

  app = geodesy->add_subcommand("systems", "Coordinate systems by words of their code, name or area");
  app->add_option("TEXT", arguments->words, "Words that all must be there");
  app->add_option("--at", arguments->at, "Only those meant for this latitude and longitude")
      ->expected(2)
      ->allow_extra_args(false);  // what follows the two is TEXT
  app->add_flag("--deprecated", arguments->deprecated, "Those, too, that others have replaced");
  app->add_flag("--long", arguments->wholeArea, "The areas' whole names");
  app->footer("Examples:\n  zel geodesy systems UTM 31N\n  zel geodesy systems --at 52.5 4.25 ED50\n");
  app->callback([arguments, &exitCode] { exitCode = Systems(*arguments); });

  AddConvert(*geodesy, arguments, exitCode);
  AddGeoid(*geodesy, arguments, exitCode);
  for (CLI::App* const each : geodesy->get_subcommands(nullptr)) each->fallthrough();  // --plugin may stand behind
}

}  // namespace zel
