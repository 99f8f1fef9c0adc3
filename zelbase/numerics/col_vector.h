// A column of doubles, what a matrix is multiplied with and what comes out. Neighbour: Matrix.h, whose operator* takes one.
#pragma once

#include <cstddef>
#include <memory>

#include "zelbase/platform/ZelBaseApi.h"

// Owns its elements; a copy has elements of its own. NULL_COL_VECTOR, with 0 elements, is the value for no result: ask for
// Count() == 0. A failing allocation throws std::bad_alloc and leaves everything as it was. One object belongs to one thread
// at a time; reading is safe from several.
//
//   col_vector position(3);
//   position[0] = 12.5;           // the others are undefined until they are set
//   position[1] = position[2] = 0;
//   const col_vector turned = rotation * position;
//   if (turned.Count() == 0) { ... rotation has not 3 columns }
class ZELBASE_API col_vector {
 public:
  // No elements. There from the start of the program: a static initialiser may use it.
  static const col_vector NULL_COL_VECTOR;

  // No elements.
  constexpr col_vector() noexcept = default;

  // `count` elements, undefined until they are set.
  explicit col_vector(unsigned int count);

  col_vector(const col_vector& other);
  col_vector(col_vector&& other) noexcept;  // `other` is left without elements
  ~col_vector() = default;

  // Takes count and elements; to itself, nothing happens. The block of elements stays where it is when the counts are equal.
  col_vector& operator=(const col_vector& other);
  col_vector& operator=(col_vector&& other) noexcept;

  unsigned int Count() const noexcept { return m_count; }

  // The element, from 0 on. The index is not checked: it must be below Count().
  double& operator[](int index) noexcept { return m_data[static_cast<std::size_t>(index)]; }
  double operator[](int index) const noexcept { return m_data[static_cast<std::size_t>(index)]; }

 private:
  friend class Matrix;  // reads and fills the block in one go

  unsigned int m_count = 0;
  std::unique_ptr<double[]> m_data;  // null without elements
};
