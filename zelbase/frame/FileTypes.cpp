#include "zelbase/frame/FileTypes.h"

#include <algorithm>
#include <iterator>

#include "zelbase/frame/KeyTables.h"

std::string GetFileKeyForType(unsigned int type) { return type < std::size(fileTypeKeys) ? fileTypeKeys[type] : std::string(); }

unsigned int GetFileTypeForKey(const std::string& key) {
  // Kept: rows are matched in full, case and zero bytes included, and nothing is trimmed.
  const auto* const row = std::find(std::begin(fileTypeKeys), std::end(fileTypeKeys), key);
  // Kept: no such key is -1, which reads as 0xFFFFFFFF.
  return row == std::end(fileTypeKeys) ? static_cast<unsigned int>(-1) : static_cast<unsigned int>(row - std::begin(fileTypeKeys));
}
