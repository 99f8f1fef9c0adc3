#include "UnitsCommand.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Host.h"
#include "SettingsFile.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/units/CZelUnitCnv.h"
#include "zelbase/units/Translator.h"
#include "zelbase/units/UnitDefinition.h"

namespace zel {
namespace {

struct Arguments {
  std::string catalogue;
  std::string kind;
  std::string value;
  std::string from;
  std::string to;
};

struct Unit {
  std::string key;
  std::string name;
  std::string mnemonic;
  double factor = 1.0;
  double offset = 0.0;
  bool complete = false;
};

std::string Shown(const std::string& text) { return ToTerminal(text, Encoding::Windows1252); }

std::string Number(double value) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 10).ptr;
  return std::string(buffer, end);
}

// The format code that leads to a kind; none for the three kinds that have no group.
std::optional<int> CodeOf(int kind) {
  for (int code = 0; code <= 50; ++code) {
    if (kind != 0 && code != CZelUnitCnv::FormatAngular && CZelUnitCnv::ConvertFMTtoUNIT(code) == kind) return code;
  }
  return std::nullopt;
}

// A kind by its name, with or without " Units", letters of either case; -1 when there is none.
int KindOf(const std::string& name) {
  const auto same = [](const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
  };
  for (int kind = 0; kind < CZelUnitCnv::kNumKinds; ++kind) {
    const std::string& group = unitsParamKeys[kind];
    if (same(name, group) || same(name + " Units", group)) return kind;
  }
  return -1;
}

// ---- kinds ----

int Kinds(const Arguments&) {
  const CZelUnitCnv units;
  std::cout << "Kind  Group                Mnemonic  Format code\n";
  for (int kind = 0; kind < CZelUnitCnv::kNumKinds; ++kind) {
    const auto code = CodeOf(kind);
    std::cout << std::setw(4) << kind << "  " << ToColumn(unitsParamKeys[kind], 21) << ToColumn(units.GetUnitMnem(kind), 10)
              << (code ? std::to_string(*code) : "-") << '\n';
  }
  return kDone;
}

// ---- the catalogue ----

std::vector<Unit> UnitsOf(UnitDefinition& catalogue, int code) {
  std::vector<Unit> units;
  int count = 0;
  if (!catalogue.GetGroupNumItems(code, count)) return units;
  for (int i = 0; i < count; ++i) {
    Unit unit;
    unit.complete = i == 0 ? catalogue.GetFirstGroupItem(code, unit.key, unit.name, unit.factor, unit.offset, unit.mnemonic)
                           : catalogue.GetNextGroupItem(unit.key, unit.name, unit.factor, unit.offset, unit.mnemonic);
    units.push_back(unit);
  }
  std::sort(units.begin(), units.end(), [](const Unit& a, const Unit& b) { return a.key < b.key; });
  return units;
}

bool OpenCatalogue(const Arguments& arguments, UnitDefinition& catalogue) {
  const std::string path = arguments.catalogue.empty() ? SuiteFile(Translator::SECTION_UNITS) : arguments.catalogue;
  if (catalogue.FileOpen(ToSuitePath(path), CFile::modeRead | CFile::shareDenyNone)) return true;
  Fail("cannot open the catalogue of units \"" + path + "\"; --catalogue names another");
  return false;
}

// The name of a unit in the user's language.
std::string NameOf(const std::string& group, const Unit& unit) {
  const Translator& translator = Translator::Instance();
  const std::string translated = translator.IsLanguageForeign() ? translator.GetUnitsString(group, unit.key) : std::string();
  return translated.empty() ? unit.name : translated;
}

void PrintGroup(const std::string& group, const std::vector<Unit>& units) {
  std::cout << group << '\n';
  for (const Unit& unit : units) {
    std::cout << "  " << ToColumn(unit.key, 20) << ToColumn(unit.mnemonic, 10) << ToColumn(NameOf(group, unit), 32) << "factor "
              << Number(unit.factor);
    if (unit.offset != 0.0) std::cout << ", offset " << Number(unit.offset);
    std::cout << (unit.complete ? "" : "  (incomplete: no mnemonic)") << '\n';
  }
}

int ListCatalogue(const Arguments& arguments) {
  UnitDefinition catalogue;
  if (!OpenCatalogue(arguments, catalogue)) return kFoundWrong;
  const int wanted = arguments.kind.empty() ? -1 : KindOf(arguments.kind);
  if (wanted < 0 && !arguments.kind.empty()) return Fail("no kind of unit \"" + arguments.kind + "\"; \"zel units kinds\" lists them");
  bool complete = true;
  const char* separator = "";
  for (int kind = 0; kind < CZelUnitCnv::kNumKinds; ++kind) {
    const auto code = CodeOf(kind);
    if (!code || (wanted >= 0 && kind != wanted)) continue;
    const std::vector<Unit> units = UnitsOf(catalogue, *code);
    if (units.empty()) continue;
    std::cout << separator;
    PrintGroup(unitsParamKeys[kind], units);
    separator = "\n";
    complete = complete && std::all_of(units.begin(), units.end(), [](const Unit& unit) { return unit.complete; });
  }
  return complete ? kDone : kFoundWrong;
}

// ---- converting ----

// A unit by key, mnemonic or display name.
const Unit* Find(const std::vector<Unit>& units, const std::string& name) {
  const auto found = std::find_if(units.begin(), units.end(),
                                  [&name](const Unit& unit) { return unit.key == name || unit.mnemonic == name || unit.name == name; });
  return found == units.end() ? nullptr : &*found;
}

void Choose(CZelUnitCnv& units, int kind, const Unit& unit) {
  units.SetUnit(kind, unit.factor, unit.offset, unit.mnemonic, unit.key, unit.name);
}

// Converts by way of the suite's own unit: from the one unit to that, and from that to the other. System Units are what the
// other kinds refer to, and convert nothing themselves.
int Convert(const Arguments& arguments) {
  double value = 0.0;
  std::string from, to;
  if (!ToNumber(arguments.value, value)) return Fail("\"" + arguments.value + "\" is not a number");
  const int wanted = arguments.kind.empty() ? -1 : KindOf(arguments.kind);
  if (wanted < 0 && !arguments.kind.empty()) return Fail("no kind of unit \"" + arguments.kind + "\"; \"zel units kinds\" lists them");
  UnitDefinition catalogue;
  if (!OpenCatalogue(arguments, catalogue)) return kFoundWrong;
  if (!FromArgument(arguments.from, Encoding::Windows1252, from) || !FromArgument(arguments.to, Encoding::Windows1252, to)) {
    return Fail("a unit's name has characters outside Windows-1252");
  }
  for (int kind = 0; kind < CZelUnitCnv::kNumKinds; ++kind) {
    const auto code = CodeOf(kind);
    if (!code || kind == CZelUnitCnv::System || (wanted >= 0 && kind != wanted)) continue;
    const std::vector<Unit> units = UnitsOf(catalogue, *code);
    const Unit* const source = Find(units, from);
    const Unit* const target = Find(units, to);
    if (source == nullptr || target == nullptr) continue;
    CZelUnitCnv conversion;
    Choose(conversion, kind, *source);
    const double inside = conversion.ConvertFromUnit(kind, value);
    Choose(conversion, kind, *target);
    std::cout << Number(value) << ' ' << Shown(source->mnemonic) << " = " << Number(conversion.ConvertUnit(kind, inside)) << ' '
              << Shown(target->mnemonic) << "  (" << unitsParamKeys[kind] << ")\n";
    return kDone;
  }
  return Fail("no group of the catalogue has both \"" + arguments.from + "\" and \"" + arguments.to +
              "\"; \"zel units list\" shows what there is");
}

}  // namespace

void AddUnitsCommand(CLI::App& program, int& exitCode) {
  CLI::App* const units = program.add_subcommand("units", "Look into the catalogue of units and convert by it");
  units->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* app = units->add_subcommand("kinds", "The 24 kinds of unit, with the mnemonics of the user's language");
  app->footer("Example:\n  zel units kinds\n");
  app->callback([arguments, &exitCode] { exitCode = Kinds(*arguments); });

  app = units->add_subcommand("list", "The groups of a catalogue and their units");
  app->add_option("KIND", arguments->kind, "Only this kind, as \"Depth\"");
  app->add_option("--catalogue", arguments->catalogue, "Catalogue file, instead of the suite's Units.uni");
  app->footer(
      "Example:\n  zel units list Pressure --catalogue samples/common/VESOK/ZELCORE/Units.uni\n\n"
      "Exit code: 0, or 1 when a unit is incomplete.\n");
  app->callback([arguments, &exitCode] { exitCode = ListCatalogue(*arguments); });

  app = units->add_subcommand("convert", "A value from one unit to another");
  app->add_option("VALUE", arguments->value, "The number")->required();
  app->add_option("FROM", arguments->from, "Unit by key, mnemonic or name")->required();
  app->add_option("TO", arguments->to, "Unit of the same group")->required();
  app->add_option("--kind", arguments->kind, "The kind, where several have units of these names");
  app->add_option("--catalogue", arguments->catalogue, "Catalogue file, instead of the suite's Units.uni");
  app->footer("Example:\n  zel --common samples/common units convert 12 Fathom m\n");
  app->callback([arguments, &exitCode] { exitCode = Convert(*arguments); });
}

}  // namespace zel
