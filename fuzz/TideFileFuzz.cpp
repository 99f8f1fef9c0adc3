// Any bytes as a tide file, and the same bytes as a script of operations on it, beside a plain map that must agree. The file lies
// in memory.

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/sonar/LiteralTide.h"
#include "tests/sonar/TideScript.h"
#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/sonar/TideFile.h"

namespace {

// The records of a file, in the byte order of this machine, which is the file's where this runs.
LiteralTide ReadPlainly(const std::string& bytes) {
  LiteralTide literal;
  for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16) {
    double record[2];
    std::memcpy(record, bytes.data() + at, sizeof record);
    if (!std::isnan(record[0])) literal.AddTideValue(record[0], record[1]);
  }
  return literal;
}

std::string WritePlainly(const LiteralTide& literal) {
  std::string bytes;
  for (const auto& [time, value] : literal.values) {
    const double record[2] = {time, value};
    bytes.append(reinterpret_cast<const char*>(record), sizeof record);
  }
  return bytes;
}

// Times that are often there: those of the file, and small whole ones.
double PickTime(const LiteralTide& literal, unsigned int choice) {
  if (choice % 3 == 0 && !literal.values.empty()) {
    const double near = choice % 2 == 0 ? literal.values.begin()->first : literal.values.rbegin()->first;
    return near + choice / 6 % 4;
  }
  return choice / 3 - 20.0;
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  MemoryFiles memory;
  const PlatformOverride<PlatformFiles> guard(memory);
  memory.files["tide"] = bytes;

  TideFile tide;
  LiteralTide literal = ReadPlainly(bytes);
  literal.current = literal.values.end();
  Require(tide.FileOpen("tide", false), "any file opens");
  Require(tide.GetNumValues() == literal.GetNumValues(), "the number of values");
  Require(tide.FileSave() && memory.files["tide"] == bytes, "a save without a change");
  for (std::size_t at = 0; at + 1 < size; at += 2) {
    Require(DoTheSame(tide, literal, data[at], PickTime(literal, data[at + 1]), static_cast<double>(at)), "the operations");
  }
  Require(tide.AddTideValue(0.25, 1.0), "the last change");
  literal.AddTideValue(0.25, 1.0);
  Require(tide.FileSave(), "the save");
  Require(memory.files["tide"] == WritePlainly(literal), "what was saved");
  Require(memory.files.size() == 1, "the files");
}
