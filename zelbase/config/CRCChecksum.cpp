#include "zelbase/config/CRCChecksum.h"

#include <cstring>

#include "zelbase/config/detail/Crc32.h"

CRCChecksum& CRCChecksum::operator+=(unsigned char byte) noexcept { return Add(&byte, 1); }

CRCChecksum& CRCChecksum::operator+=(unsigned int number) noexcept {
  const unsigned char bytes[4] = {static_cast<unsigned char>(number), static_cast<unsigned char>(number >> 8),
                                  static_cast<unsigned char>(number >> 16), static_cast<unsigned char>(number >> 24)};
  return Add(bytes, sizeof(bytes));
}

CRCChecksum& CRCChecksum::operator+=(int number) noexcept { return *this += static_cast<unsigned int>(number); }

CRCChecksum& CRCChecksum::operator+=(const char* text) noexcept { return text != nullptr ? Add(text, std::strlen(text)) : *this; }

CRCChecksum& CRCChecksum::Add(const void* data, std::size_t size) noexcept {
  // Kept: no inversion at the end, so that signatures and file checks stored by earlier releases keep their values.
  m_register = zelbase::detail::UpdateCrc32(m_register, data, size);
  return *this;
}
