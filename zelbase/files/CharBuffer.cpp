#include "zelbase/files/CharBuffer.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();

std::size_t ToSize(int value) { return static_cast<std::size_t>(value); }

int NotBeyondLargest(long long value) { return static_cast<int>(std::min<long long>(value, kLargest)); }

}  // namespace

CharBuffer::CharBuffer() = default;

CharBuffer::~CharBuffer() = default;

int CharBuffer::Size() const { return m_dataEnd; }

int CharBuffer::Capacity() const { return m_capacity; }

void CharBuffer::Clear() { m_position = m_dataEnd = 0; }

int CharBuffer::GetPos() const { return m_position; }

const unsigned char* CharBuffer::Begin() const { return m_array.get(); }

const unsigned char* CharBuffer::End() const { return m_array.get() + m_dataEnd; }

CharBuffer::Array CharBuffer::Grow(long long size, long long least) {
  // Kept: exactly the size at first, later with twice the old capacity on top.
  const int capacity = NotBeyondLargest(std::max(size + 2LL * m_capacity, least));
  // calloc, because large blocks of zeros cost nothing until they are used.
  Array grown(static_cast<unsigned char*>(std::calloc(ToSize(capacity), 1)));
  if (grown == nullptr) throw std::bad_alloc();
  if (m_capacity > 0) std::memcpy(grown.get(), m_array.get(), ToSize(m_capacity));
  m_capacity = capacity;
  return std::exchange(m_array, std::move(grown));
}

void CharBuffer::Read(void* target, int size) {
  if (target == nullptr || size <= 0) return;
  const int there = std::clamp(m_capacity - m_position, 0, size);
  if (there > 0) std::memmove(target, m_array.get() + m_position, ToSize(there));
  std::memset(static_cast<unsigned char*>(target) + there, 0, ToSize(size - there));
  // Kept: on behind the end of the data, and of the array.
  m_position = NotBeyondLargest(static_cast<long long>(m_position) + size);
}

void CharBuffer::Write(const void* source, int size) {
  if (source == nullptr || size <= 0) return;
  const long long end = static_cast<long long>(m_position) + size;
  if (end > kLargest) return;
  Array old;  // freed last, since `source` may lie in it
  // Kept: also when the bytes would just fit, so that one byte stays free behind them.
  if (end >= m_capacity && m_capacity < kLargest) old = Grow(size, end);
  std::memmove(m_array.get() + m_position, source, ToSize(size));
  m_position = static_cast<int>(end);
  m_dataEnd = std::max(m_dataEnd, m_position);
}

void CharBuffer::SetPos(int position) {
  position = std::max(position, 0);
  if (position >= m_capacity && m_capacity < kLargest) Grow(position - m_capacity + 1LL);
  m_position = position;
}

unsigned char* CharBuffer::GetOffsetBuffer(int offset) { return const_cast<unsigned char*>(std::as_const(*this).GetOffsetBuffer(offset)); }

const unsigned char* CharBuffer::GetOffsetBuffer(int offset) const {
  return offset > m_capacity ? nullptr : m_array.get() + std::max(offset, 0);
}

unsigned char* CharBuffer::GetBuffer(int size) {
  if (size <= 0) return m_array.get();
  if (size > m_capacity) Grow(size - m_capacity);
  m_position = m_dataEnd = size;  // Kept: also when there was more data
  return m_array.get();
}
