// What a catalogue of units answers, as one value. For tests of UnitDefinition.
#pragma once

#include <bit>
#include <cstdint>
#include <string>

#include "zelbase/units/UnitDefinition.h"

// The outputs of a look-up, with values by which untouched ones are known.
struct CatalogueAnswer {
  std::string key = "?";
  std::string name = "?";
  double factor = -7.0;
  double offset = -8.0;
  std::string mnemonic = "?";
  bool result = false;

  // Numbers to the last bit.
  bool operator==(const CatalogueAnswer& other) const {
    const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    return key == other.key && name == other.name && bits(factor) == bits(other.factor) && bits(offset) == bits(other.offset) &&
           mnemonic == other.mnemonic && result == other.result;
  }
};

inline CatalogueAnswer FirstAnswer(UnitDefinition& catalogue, int code) {
  CatalogueAnswer answer;
  answer.result = catalogue.GetFirstGroupItem(code, answer.key, answer.name, answer.factor, answer.offset, answer.mnemonic);
  return answer;
}

inline CatalogueAnswer NextAnswer(UnitDefinition& catalogue) {
  CatalogueAnswer answer;
  answer.result = catalogue.GetNextGroupItem(answer.key, answer.name, answer.factor, answer.offset, answer.mnemonic);
  return answer;
}

// `key` of the answer is the key asked for.
inline CatalogueAnswer DataAnswer(const UnitDefinition& catalogue, int code, const std::string& key) {
  CatalogueAnswer answer;
  answer.key = key;
  answer.result = catalogue.GetGroupItemData(code, key, answer.name, answer.factor, answer.offset, answer.mnemonic);
  return answer;
}
