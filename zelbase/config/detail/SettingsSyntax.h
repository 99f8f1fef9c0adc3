// The rules by which one line of a settings text is understood. The store, the report and the text editor all ask here, so
// that they cannot differ. Internal to the library.
#pragma once

#include <string_view>

namespace zelbase::detail {

// The section that enumeration passes over.
inline constexpr std::string_view kChecksumSection = "Checksum";

enum class SettingsLineKind : unsigned char {
  Blank,        // nothing but white space
  Comment,      // ";" in column 1, or "//" with nothing but white space before it
  Section,      // a head
  Item,         // a key and a value
  NoSeparator,  // no "="
  NoKey,        // "=" comes first
};

// One line, taken apart. All views lie in the line that was given, so that their places can be told from it. Small on
// purpose: one is filled in for every line that is read.
struct SettingsLine {
  SettingsLineKind kind = SettingsLineKind::Blank;
  bool closed = false;       // Section: there was a "]"
  std::string_view content;  // what counts: the line up to "//", without white space at its front
  std::string_view name;     // Item: the key, trimmed, never empty. Section: the name, trimmed
  std::string_view value;    // Item: trimmed. Section: all that stands between "[" and the last "]" or the end of the content
  std::string_view cut;      // from "//" on, when the line holds that and is no ";" comment
};

// `line` comes without its line end. (1) ";" in column 1 makes all of it a comment. (2) Otherwise it is cut at its first
// "//", wherever that stands. (3) White space at the front goes. (4) "[" at the front makes a head; the name reaches to
// the last "]", and without one it is empty. (5) Otherwise the first "=" parts key and value.
SettingsLine ScanSettingsLine(std::string_view line);

// Takes the next line off the front of `text`: up to LF, with one CR just before it dropped; the end of the text ends a
// line too, when something stands before it. False when nothing is left.
bool TakeSettingsLine(std::string_view& text, std::string_view& line);

}  // namespace zelbase::detail
