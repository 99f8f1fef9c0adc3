#include "zelbase/platform/MemoryClipboard.h"

#include <utility>

#include "zelbase/platform/LockGuard.h"

namespace {

constexpr unsigned int kFirstNumber = 0xC000;
constexpr unsigned int kLastNumber = 0xFFFF;

// Letters A to Z only, in whatever locale.
std::string InSmallLetters(std::string name) {
  for (char& c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return name;
}

}  // namespace

MemoryClipboard::MemoryClipboard() = default;

MemoryClipboard::~MemoryClipboard() = default;

unsigned int MemoryClipboard::RegisterFormat(const std::string& name) {
  if (name.empty()) return 0;
  const std::string key = InSmallLetters(name);
  const LockGuard guard(m_mutex);
  const auto found = m_numbers.find(key);
  if (found != m_numbers.end()) return found->second;
  const unsigned int number = kFirstNumber + static_cast<unsigned int>(m_numbers.size());
  if (number > kLastNumber) return 0;
  m_numbers.emplace(key, number);
  return number;
}

bool MemoryClipboard::Put(std::shared_ptr<const ClipboardContent> content) {
  // The former content goes when the lock is free again: its destructor may ask for the clipboard.
  const LockGuard guard(m_mutex);
  m_content.swap(content);
  return true;
}

std::shared_ptr<const ClipboardContent> MemoryClipboard::Get() {
  const LockGuard guard(m_mutex);
  return m_content;
}

PlatformClipboard& PlatformClipboard::System() {
  static MemoryClipboard& clipboard = *new MemoryClipboard;
  return clipboard;
}
