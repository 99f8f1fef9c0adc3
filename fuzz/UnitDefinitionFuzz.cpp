// Any bytes as a catalogue of units, all operations of UnitDefinition and what a table makes of the units, against a literal
// second reader of the format.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/config/SecondSettingsReader.h"
#include "tests/config/SettingsTestHelp.h"
#include "tests/units/CatalogueAnswer.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/units/CZelUnitCnv.h"
#include "zelbase/units/UnitDefinition.h"

namespace {

using Outputs = CatalogueAnswer;

// The value of a unit, character by character.
Outputs SecondReading(const std::string& key, const std::string& value) {
  std::vector<std::string> items(1);
  for (const char c : value) {
    if (c == ',') {
      items.emplace_back();
    } else {
      items.back() += c;
    }
  }
  for (std::string& item : items) item = SecondSettingsReader::Both(item);
  Outputs outputs;
  outputs.key = key;
  zelbase::detail::ScanDouble(items[0], outputs.factor);
  outputs.result = items.size() > 1;
  if (items.size() > 1) outputs.mnemonic = items[1];
  outputs.name = items.size() > 2 ? items[2] : key;
  outputs.offset = 0.0;
  if (items.size() > 3) zelbase::detail::ScanDouble(items[3], outputs.offset);
  return outputs;
}

// The unit goes into a table and comes out as it went in; conversions take any number.
void Choose(CZelUnitCnv& units, int kind, const Outputs& unit) {
  Require(units.SetUnit(kind, unit.factor, unit.offset, unit.mnemonic, unit.key, unit.name), "the unit is chosen");
  Outputs back;
  back.result = units.GetUnit(kind, back.factor, back.offset, back.mnemonic, back.key, back.name);
  Outputs expected = unit;
  expected.result = true;
  Require(back == expected, "the unit is given back");
  for (const double value : {0.0, 1.0, -2.5, unit.factor, unit.offset}) {
    units.ConvertFromUnit(kind, units.ConvertUnit(kind, value));
    units.ToInternalUnit(kind, units.ToExternalUnit(kind, value, unit.factor, unit.offset), unit.factor, unit.offset);
    units.ToInternalUnit(kind, static_cast<float>(value), unit.factor, unit.offset);
    units.ToExternalUnit(kind, static_cast<float>(value), unit.factor, unit.offset);
  }
}

using Expected = std::map<std::string, std::string>;

// The walk gives each unit of the group once and then nothing; half-way the catalogue may be emptied.
void WalkOver(UnitDefinition& catalogue, int code, const Expected& items, bool emptied, CZelUnitCnv& units) {
  std::map<std::string, Outputs> met;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const Outputs out = i == 0 ? FirstAnswer(catalogue, code) : NextAnswer(catalogue);
    if (i == items.size() / 2 && emptied) catalogue.FileClose();
    Require(met.emplace(out.key, out).second, "each unit comes once");
    Choose(units, CZelUnitCnv::ConvertFMTtoUNIT(code), out);
  }
  for (const auto& [key, value] : items) {
    const auto found = met.find(key);
    Require(found != met.end() && found->second == SecondReading(key, value), "the unit is read");
  }
  Require(NextAnswer(catalogue) == Outputs(), "the walk ends");
}

void CheckNoGroup(UnitDefinition& catalogue, int code) {
  int count = -7;
  Require(!catalogue.GetGroupNumItems(code, count) && count == -7, "no group has no count");
  Require(FirstAnswer(catalogue, code) == Outputs() && NextAnswer(catalogue) == Outputs(), "no group has no walk");
  Outputs nothing;
  nothing.key = "Metre";
  Require(DataAnswer(catalogue, code, "Metre") == nothing, "no group has no unit");
}

void CheckGroup(UnitDefinition& catalogue, int code, const Expected& items, bool emptied, CZelUnitCnv& units) {
  int count = -7;
  Require(catalogue.GetGroupNumItems(code, count) && count == static_cast<int>(items.size()), "count");
  for (const auto& [key, value] : items) {
    Require(DataAnswer(catalogue, code, key) == SecondReading(key, value), "the unit is looked up");
    if (items.find(key + "x") == items.end()) Require(!DataAnswer(catalogue, code, key + "x").result, "another is not");
  }
  if (items.empty()) {
    Require(FirstAnswer(catalogue, code) == Outputs() && NextAnswer(catalogue) == Outputs(), "an empty group has no walk");
    return;
  }
  WalkOver(catalogue, code, items, emptied, units);
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const SecondSettingsReader expected(text);
  UnitDefinition catalogue;
  Require(ReadFrom(catalogue, text) == expected.headSeen, "the catalogue opens");
  catalogue.ThrowExceptions(size % 2 == 0);  // which changes nothing
  CZelUnitCnv units;
  for (int code = -2; code <= 60; ++code) {
    std::string group = "?";
    const int kind = CZelUnitCnv::ConvertFMTtoUNIT(code);
    const bool named = catalogue.GetGroupName(code, group);
    Require(named == (kind != 0 && code != 47), "which codes have a group");
    Require(group == (named ? unitsParamKeys[kind] : "?"), "the group's name");
    const auto section = expected.sections.find(group);
    if (!named || section == expected.sections.end()) {
      CheckNoGroup(catalogue, code);
      continue;
    }
    UnitDefinition copy(catalogue);
    CheckGroup(copy, code, section->second, (size + static_cast<std::size_t>(code)) % 3 == 0, units);
  }
}
