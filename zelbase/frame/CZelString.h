// A small delimited list such as "12, 3, 4.5": takes the text apart into elements and puts it together again.
// Neighbours: FormatString.h, the plain list of texts; StringAppend.h to build texts, StringCompare.h to compare them,
// Trim.h, TextEscapes.h, StringBytes.h, ByteSize.h.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

// Holds the elements, the separator, the text last loaded and whether elements are trimmed.
//
// The text last loaded is a source only. Changes go to the elements; String() and everything about places and parts is built
// from the elements, GetString() and GetElementNumber() look at the text last loaded, and SetSeparator() goes back to it.
//
// Splitting: every separator ends an element, and what follows the last one is an element too. So "" has one empty element
// and "a," has two, "a" and "". With a blank as separator, outer blanks go and a run of blanks counts as one separator.
//
// Elements are counted from 0. An index that names none gives false or changes nothing. Used by one thread at a time.
class ZELBASE_API CZelString {
 public:
  // No elements yet; nothing is trimmed.
  CZelString() = default;
  explicit CZelString(char separator) : m_separator(separator) {}

  // Splits `text` at once. `trim` takes white space off both ends of each element, here and in later splits.
  CZelString(const std::string& text, char separator, bool trim);

  // --- Loading ---

  // Takes text and flag, and splits. A null text is an empty one.
  void LoadString(const std::string& text, bool trim);
  void LoadString(const char* text, bool trim);

  // Takes the separator and splits the text last loaded anew: changes made to the elements are lost.
  void SetSeparator(char separator);

  // --- Elements ---

  int Size() const { return static_cast<int>(m_items.size()); }

  // True without elements. A loaded "" is not empty: it has one element.
  bool IsEmpty() const { return m_items.empty(); }

  // Size() less 1; -1 without elements.
  int CountSeparators() const { return Size() - 1; }

  // The element itself. An index out of range is the caller's fault; it gives an empty text that belongs to no list and
  // that the calling thread's next such fault empties again.
  std::string& operator[](int index);
  const std::string& operator[](int index) const;

  // The element's value, read as the C scan of the type in brackets reads it: leading white space and whatever follows the
  // number are passed over. False, with `value` untouched, when the index is out of range or no number stands there. A whole
  // number beyond its type wraps around; there is no hexadecimal here.
  bool GetItem(int index, std::string& value) const;
  bool GetItem(int index, int& value) const;             // "%d"
  bool GetItem(int index, bool& value) const;            // "%d", true unless 0
  bool GetItem(int index, unsigned int& value) const;    // "%u"
  bool GetItem(int index, unsigned short& value) const;  // "%hu"
  bool GetItem(int index, double& value) const;          // "%lf"
  bool GetItem(int index, float& value) const;           // "%f"

  // --- Changing elements ---

  // Sets the element; beyond the end the list first grows by empty elements. False for a negative index and for one above
  // kLastIndex, and then nothing changes.
  bool SetItem(int index, const std::string& text);

  // As SetItem; null is an empty text.
  void Set(int index, const char* text);

  void AddItem(const std::string& text);

  // Puts one element in before `index`, 0 to Size(); elsewhere nothing happens.
  void Insert(int index, const std::string& text);

  // Removes `count` elements from `first` on. A count beyond the end is cut; nothing happens for a `first` that names no
  // element or a count below 1.
  void Erase(int first, int count);

  // Removes all elements and forgets the text last loaded. Separator and trim flag stay.
  void Clear();

  // A copy with `text` as one more element, and this list with it. The text is not split.
  CZelString operator+(const std::string& text) const;
  CZelString& operator+=(const std::string& text);

  // --- Texts ---

  // The elements joined by the separator.
  std::string String() const;

  // The text last loaded, whatever has happened to the elements.
  const std::string GetString() const { return m_string; }

  // The first or last `count` elements, each followed by the separator, so that the text ends in one. Empty for a count
  // below 1; all elements for one too large.
  std::string Left(int count) const;
  std::string Right(int count) const;

  // --- Searching ---

  // Despite the name: whether an element equals `text`, letters of either case alike. The second form gives the first
  // such element, and leaves `index` alone when there is none.
  bool HasSubString(const std::string& text) const;
  bool HasSubString(const std::string& text, int& index) const;

  // Where the element stands in String(): its first and its last character. `last` is -1 for an empty element. False, with
  // both untouched, for an index out of range.
  bool GetItemBoundaries(int index, int& first, int& last) const;

  // The number of the element that reads exactly `text` in the text last loaded: the separators before it, with neither
  // trimming nor runs of blanks joined. `text` may hold separators and then names neighbours by the first of them. -1 when
  // there is none or `text` is null. A `separator` other than 0 first goes through SetSeparator. The text last loaded
  // counts up to its first zero byte.
  int GetElementNumber(const char* text, char separator);

  // The highest index that SetItem grows to.
  static constexpr int kLastIndex = 16777215;

 private:
  void SeperateString();
  void SeparateAtBlanks();
  void AddElement(std::string_view text);
  const std::string* Item(int index) const;

  std::vector<std::string> m_items;
  char m_separator = ',';
  std::string m_string;
  bool m_trim = false;
};
