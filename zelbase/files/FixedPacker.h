// Builds a line of fixed columns, as fixed-format data files and device messages need it. Neighbours: CharBuffer.h for binary
// records; zelbase/frame/StringAppend.h for texts without columns.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Holds the line; fields are put into it by position (the first column is 0) and width, in any order.
//
//   FixedPacker line;
//   line.SetItem(3, 2, "ab");                     // "   ab"
//   line.SetLabeledItem(6, 8, "T=", " 12 ");      // "   ab T=    12"
//
// What surprises in SetItem:
//   (1) A field that ends beyond the line cuts off all that stood from its first column on. One that ends exactly at the line's
//       end, or before it, is written over what stands there.
//   (2) A text shorter than its field is not filled up: it leaves the line short, or lets the old columns show.
//
// A negative position or width, and a field that would make the line longer than 16777216 characters, change nothing. Copies are
// independent. One thread at a time.
class ZELBASE_API FixedPacker {
 public:
  FixedPacker();
  FixedPacker(const FixedPacker& other);
  FixedPacker& operator=(const FixedPacker& other);
  ~FixedPacker();

  // Takes `text` as the line.
  void LoadString(const std::string& text);
  const std::string& GetString() const;

  // Puts the first `width` characters of `text` at `position`, with blanks before it where the line is too short. Always true.
  bool SetItem(int position, int width, const std::string& text);

  // Clears the field to blanks and puts `label` at its left and `value`, without white space at its ends, at its right end. A label
  // longer than the field is cut. A value may cover the label, and one longer than the field covers what stands before the
  // field, too; of one that would begin before column 0 the end is written. Always true.
  bool SetLabeledItem(int position, int width, std::string label, std::string value);

 private:
  std::string m_line;
};
