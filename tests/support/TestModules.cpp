#include "tests/support/TestModules.h"

#include <elf.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>

#include "tests/support/SourceFolder.h"

std::string ModuleFile(const std::string& module) { return BinaryFolder() + "/tests/modules/" + module + ".so"; }

std::string ModuleContent(const std::string& module) {
  std::ifstream stream(ModuleFile(module), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::size_t EndOfSegments(const std::string& content) {
  Elf64_Ehdr header;
  std::memcpy(&header, content.data(), sizeof header);
  std::size_t end = 0;
  for (std::size_t i = 0; i < header.e_phnum; ++i) {
    Elf64_Phdr segment;
    std::memcpy(&segment, content.data() + header.e_phoff + i * sizeof segment, sizeof segment);
    if (segment.p_type == PT_LOAD) end = std::max<std::size_t>(end, segment.p_offset + segment.p_filesz);
  }
  return end;
}
