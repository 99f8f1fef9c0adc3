// The bytes of what serialises itself, and objects from bytes: what the tests of archive forms share.
#pragma once

#include <cstring>
#include <memory>
#include <string>

#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CObject.h"
#include "zelbase/platform/CSharedFile.h"

// What the object writes. Not by a constant reference, since Serialize serves both ways.
inline std::string StoredBytes(CObject& object, int bufferSize = 4096) {
  CSharedFile file;
  CArchive archive(&file, CArchive::store, bufferSize);
  object.Serialize(archive);
  archive.Close();
  return *file.Detach();
}

// Lets the object read the bytes; what it throws passes.
inline void LoadBytes(CObject& object, const std::string& bytes, int bufferSize = 4096) {
  CSharedFile file(std::make_shared<const std::string>(bytes));
  CArchive archive(&file, CArchive::load, bufferSize);
  object.Serialize(archive);
}

// Puts bytes together by hand, the lowest byte of a number first.
class Bytes {
 public:
  Bytes& Number(unsigned long long value, int size) {
    for (int i = 0; i < size; ++i) m_bytes += static_cast<char>(value >> (8 * i));
    return *this;
  }
  Bytes& Zeros(std::size_t count) {
    m_bytes.append(count, '\0');
    return *this;
  }
  Bytes& Double(double value) {
    unsigned long long bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return Number(bits, 8);
  }
  Bytes& Text(const std::string& text) {
    m_bytes += text;
    return *this;
  }
  const std::string& Get() const { return m_bytes; }

 private:
  std::string m_bytes;
};
