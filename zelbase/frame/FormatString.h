// A plain list of texts with a separator, such as the columns of a log line: splits and joins, nothing else. Neighbour:
// CZelString.h, the richer list that trims, joins runs of blanks and reads numbers off its elements.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

// Holds the items and the separator; copies are independent.
//
//   FormatString line("a,b,,c,", ',');   // "a", "b", "", "c"
//   line.String()                        // "a,b,,c"
//   line.Left(2)                         // "a,b,"
//
// What surprises beside CZelString: an empty text has no item, one empty piece at the very end is dropped, blanks are a
// separator like any other, and Erase takes the index behind the last item and not a count.
//
// Items are counted from 0. An index that names none changes nothing. Used by one thread at a time.
class ZELBASE_API FormatString {
 public:
  // No items.
  explicit FormatString(char separator) : m_separator(separator) {}

  // Splits `text` at every separator. Empty pieces stay, but for one behind the last separator: "a," has one item, "a,,"
  // has two, "," has one empty item, and "" has none. Nothing is trimmed.
  FormatString(const std::string& text, char separator);

  // The item itself. An index out of range is the caller's fault; it gives an empty text that belongs to no list and that
  // the calling thread's next such fault empties again.
  std::string& operator[](int index);
  const std::string& operator[](int index) const;

  int Size() const { return static_cast<int>(m_items.size()); }

  bool IsEmpty() const { return m_items.empty(); }

  // The items with the separator between them, none at the ends. Items that hold separators are not told apart.
  std::string String() const;

  // The first or last `count` items, each followed by the separator, so that the text ends in one. Empty for a count
  // below 1; all items for one too large.
  std::string Left(int count) const;
  std::string Right(int count) const;

  // Despite the name: whether any whole item equals `text`, letters of either case alike.
  bool HasSubString(const std::string& text) const;

  // Puts `text` in before the item at `index`, 0 to Size(); elsewhere nothing happens. The text is not split.
  void Insert(int index, const std::string& text);

  // Removes the items from `first` up to, not including, `last`. A `last` beyond the end is cut; nothing happens for a
  // `first` that names no item or a `last` that is not above it.
  void Erase(int first, int last);

  // A copy with `text` as one more item, and this list with it. The text is not split.
  FormatString operator+(const std::string& text) const;
  FormatString& operator+=(const std::string& text);

 private:
  bool Names(int index) const { return index >= 0 && index < Size(); }

  std::vector<std::string> m_items;
  char m_separator;
};
