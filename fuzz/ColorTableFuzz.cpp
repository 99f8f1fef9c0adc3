// Any bytes as a settings text with a colour table: opened, looked up and generated from beside a slow second table,
// saved and opened again.

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/colour/SecondColorTable.h"
#include "tests/config/SettingsTestHelp.h"
#include "zelbase/colour/ColorTable.h"
#include "zelbase/config/FileObject.h"

namespace {

// The second table is slow: nothing longer is generated, but what the library refuses as too long.
constexpr std::size_t kMostRows = 200;

bool IsGenerated(double entries) { return !(entries > kMostRows) || entries > 2.0 * ColorTable::MOST_RUN_ENTRIES; }

void RequireSame(const ColorTable& table, const SecondColorTable& second, const char* what) {
  const SecondColorTable shown(table);
  Require(shown.low == second.low && shown.lowName == second.lowName, what);
  Require(shown.rows.size() == second.rows.size(), what);
  for (std::size_t i = 0; i < shown.rows.size(); ++i) {
    const SecondColorTable::Row& a = shown.rows[i];
    const SecondColorTable::Row& b = second.rows[i];
    Require(SameDouble(a.value, b.value) && a.color == b.color && a.locked == b.locked && a.name == b.name, what);
  }
}

void LookUp(const ColorTable& table) {
  const SecondColorTable second(table);
  if (second.rows.size() > kMostRows) return;
  const std::vector<double> probes = ProbesOf(table);
  std::vector<unsigned int> row(probes.size());
  for (const double value : probes) Require(table.GetColor(value) == second.Color(value), "colour");
  LookUpOften(table);
  table.GetColors(probes, row);
  for (std::size_t i = 0; i < probes.size(); ++i) {
    Require(row[i] == second.Color(probes[i]), "colour of a row");
    Require(table.GetColor(probes[i]) == row[i], "colour again");
    Require(table.GetName(probes[i]) == second.Name(probes[i]), "name");
  }
}

// What becomes of the rows in a settings object: a value goes through its item, which may round it, and no value that
// is not above the one before comes back.
SecondColorTable AfterSettings(const SecondColorTable& table) {
  SecondColorTable expected = table;
  expected.rows.clear();
  for (const SecondColorTable::Row& row : table.rows) {
    FileObject item;
    double value = 0;
    item.SetItem("S", "k", row.value, true);
    if (!item.GetItem("S", "k", value)) break;
    if (!expected.rows.empty() && !(expected.rows.back().value < value)) continue;
    expected.rows.push_back(row);
    expected.rows.back().value = value;
  }
  return expected;
}

void SaveAndOpenAgain(const ColorTable& table) {
  FileObject settings;
  ColorTable again;
  Require(table.FileSave(settings), "saved");
  Require(again.FileOpen(settings), "opened again");
  RequireSame(again, AfterSettings(SecondColorTable(table)), "what was saved");
  Require(again.HasDredgeDiffSection() == table.HasDredgeDiffSection(), "the dredge flag");
}

double NumberOf(const FileObject& settings, const char* key) {
  double value = 0;
  settings.GetItem("Range", key, value);
  return value;
}

// Generates a range into the table from the numbers of the section "Range".
void Generate(ColorTable& table, const FileObject& settings) {
  SecondColorTable second(table);
  const double min = NumberOf(settings, "min");
  const double max = NumberOf(settings, "max");
  const double step = NumberOf(settings, "step");
  const double kind = NumberOf(settings, "kind");
  if (second.rows.size() > kMostRows || !IsGenerated(std::fabs((max - min) / step))) return;
  const unsigned int low = table.EntryColor(0);
  const unsigned int mid = table.LowColor();
  const unsigned int high = table.EntryColor(1);
  if (kind < 1) {
    table.SetRange(min, max, step, low, high);
    second.SetRange(min, max, step, low, high);
  } else if (kind < 2) {
    table.AddRange(min, max, step, low, high, false);
    second.AddRange(min, max, step, low, high, false);
  } else if (kind < 3) {
    table.SetRangeRGB3(min, max, step, low, mid, high);
    second.SetRangeRgb3(min, max, step, low, mid, high);
  } else {
    table.AddRange3(min, max, step, low, mid, high);
    second.AddRange3(min, max, step, low, mid, high);
  }
  RequireSame(table, second, "a range");
}

void GenerateDredgeDiff(ColorTable& table) {
  SecondColorTable second(table);
  if (!IsGenerated(second.under.number) || !IsGenerated(second.tolerance.number) || !IsGenerated(second.over.number)) return;
  table.GenerateDredgeDiffColorTable();
  if (second.under.number > kMostRows || second.tolerance.number > kMostRows || second.over.number > kMostRows) return;
  second.GenerateDredgeDiff();
  RequireSame(table, second, "dredge bands");
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  FileObject settings;
  ReadFrom(settings, std::string(reinterpret_cast<const char*>(data), size));
  FileObject throwing(settings);
  throwing.ThrowExceptions(true);
  ColorTable table;
  ColorTable second;
  Require(table.FileOpen(settings) == second.FileOpen(throwing), "the same though it throws");
  RequireSame(second, SecondColorTable(table), "the same table though it throws");
  LookUp(table);
  SaveAndOpenAgain(table);
  Generate(table, settings);
  LookUp(table);
  GenerateDredgeDiff(table);
  LookUp(table);
}
