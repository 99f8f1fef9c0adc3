#include "zelbase/numerics/col_vector.h"

#include <algorithm>
#include <utility>

#include "zelbase/numerics/detail/ElementBlock.h"

using zelbase::detail::NewElements;

constinit const col_vector col_vector::NULL_COL_VECTOR;

col_vector::col_vector(unsigned int count) : m_count(count), m_data(NewElements(count)) {}

col_vector::col_vector(const col_vector& other) : col_vector(other.m_count) { std::copy_n(other.m_data.get(), m_count, m_data.get()); }

col_vector::col_vector(col_vector&& other) noexcept : m_count(std::exchange(other.m_count, 0)), m_data(std::move(other.m_data)) {}

col_vector& col_vector::operator=(const col_vector& other) {
  if (this == &other) return *this;
  if (m_count != other.m_count) {
    m_data = NewElements(other.m_count);
    m_count = other.m_count;
  }
  std::copy_n(other.m_data.get(), m_count, m_data.get());
  return *this;
}

col_vector& col_vector::operator=(col_vector&& other) noexcept {
  if (this == &other) return *this;
  m_count = std::exchange(other.m_count, 0);
  m_data = std::move(other.m_data);
  return *this;
}
