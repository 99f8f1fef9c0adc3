// A growing array of bytes with a read and write position, for building and taking apart binary records in memory. Neighbours:
// FixedPacker.h for lines of text columns; zelbase/data/CDataId.h, which saves itself here.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

#include "zelbase/platform/ZelBaseApi.h"

// Owns one array, with three places in it: the position, the end of the data (the furthest that was written), and the end of the
// array (its capacity). All are 0 in a new buffer, which has no array yet. Clear keeps the array.
//
//   CharBuffer buffer;
//   buffer.Write(&record, 16);
//   buffer.SetPos(0);
//   buffer.Read(&copy, 16);
//
// How the array grows:
//   (1) The first array has exactly the size asked for.
//   (2) After that a Write grows when its end would reach or pass the end of the array, by its size and twice the old capacity.
//       As long as it stays below, pointers into the array stay good; growing makes them stale.
//   (3) Growing keeps every byte of the old array. Bytes that nobody wrote are 0.
//
// What surprises:
//   (4) The position may stand behind the end of the data (SetPos), and GetBuffer may pull the end of the data back.
//   (5) Read looks neither at the end of the data nor at that of the array: a caller knows its record. Behind the array it gives
//       zeros and moves on; the next Write grows until it fits.
//
// Sizes below 1 and null pointers do nothing, a negative position is 0. The position stops at 2147483647; a Write that would end
// beyond it does nothing. Without memory std::bad_alloc passes and the buffer is as it was.
//
// Not copyable. One thread at a time.
class ZELBASE_API CharBuffer {
 public:
  CharBuffer();
  ~CharBuffer();
  CharBuffer(const CharBuffer&) = delete;
  CharBuffer& operator=(const CharBuffer&) = delete;

  // Bytes from the start to the end of the data.
  int Size() const;

  // Position and end of the data go back to the start; the array stays, with its bytes.
  void Clear();

  // Copies `size` bytes from the position to `target`, which may lie in this buffer, and moves on; see (5).
  void Read(void* target, int size);

  // Copies `size` bytes to the position and moves on; the end of the data is pushed out where needed. `source` may lie in this
  // buffer.
  void Write(const void* source, int size);

  // Bytes from the start. SetPos to a place at or behind the end of the array grows first; the end of the data does not move.
  int GetPos() const;
  void SetPos(int position);

  // The start of the array, null without one, and the end of the data.
  const unsigned char* Begin() const;
  const unsigned char* End() const;

  // The place `offset` bytes from the start, wherever position and data end are. Null behind the end of the array.
  unsigned char* GetOffsetBuffer(int offset);
  const unsigned char* GetOffsetBuffer(int offset) const;

  // Makes room for `size` bytes, sets position and end of the data behind them, and gives the start: the caller then fills those
  // bytes itself. A size below 1 changes nothing.
  unsigned char* GetBuffer(int size);

 private:
  struct Free {
    void operator()(unsigned char* array) const noexcept { std::free(array); }
  };
  using Array = std::unique_ptr<unsigned char[], Free>;

  int Capacity() const;

  // Takes a larger array with the same bytes: `size` more than twice the old, and not below `least`. Gives the old one, which the
  // caller may still need.
  Array Grow(long long size, long long least = 0);

  Array m_array;
  int m_position = 0;
  int m_dataEnd = 0;
  int m_capacity = 0;
};
