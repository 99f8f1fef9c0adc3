// A file in memory, for benchmarks of what reads and writes through a CFile.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

#include "zelbase/platform/CFile.h"

// Reads from the front on, and writes at the end.
class MemoryFile : public CFile {
 public:
  explicit MemoryFile(std::string text = {}) : m_text(std::move(text)) {}

  unsigned int Read(void* buffer, unsigned int count) override {
    const std::size_t taken = std::min<std::size_t>(count, m_text.size() - m_position);
    std::memcpy(buffer, m_text.data() + m_position, taken);
    m_position += taken;
    return static_cast<unsigned int>(taken);
  }

  void Write(const void* buffer, unsigned int count) override { m_text.append(static_cast<const char*>(buffer), count); }

  void Rewind() { m_position = 0; }
  void Cut() { m_text.clear(); }

 private:
  std::string m_text;
  std::size_t m_position = 0;
};
