// A path taken apart into root, directories, name and extension, each of which can be changed by itself. Neighbours:
// FileInfo.h, a path with what the file system knows of it; FileFinder.h, the paths that match a pattern; PathHelpers.h,
// plain functions on strings.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Any text yields some split; nothing fails, and the file system is not asked. The separator is "\".
//
//   text               Root       Path      Name     Extension
//   "C:\a\b.txt"       "C:\"      "a\"      "b"      ".txt"
//   "\\srv\share\f"    "\\srv\"   "share\"  "f"      ""
//   "C:"               "C:\"      ""        ""       ""
//   "\\srv"            "\\srv\"   ""        ""       ""
//   "C:foo"            ""         ""        "C:foo"  ""
//   "a.b.c"            ""         ""        "a.b"    ".c"
//   "dir\"             ""         "dir\"    ""       ""
//   "name."            ""         ""        "name"   "."
//   ".cfg"             ""         ""        ""       ".cfg"
//   "a\.."             ""         "a\"      "."      "."
//   "a\\b"             ""         ""        "b"      ""
//   "\\"               ""         ""        ""       ""
//
// Kept: an empty element, as in the last but one, throws away what stood before it (see CD), and ".." as the last element is
// a name like any other. Equal whole texts may be unequal names: one object may hold "a.b" as name and extension, another as
// name alone.
//
// An absolute path of this system, "/tmp\x\y", has no root, and "/tmp\x\" is its Path.
//
// A value. A text given to any of these may be a part of the object itself. Not even reading is safe from two threads at once,
// since the whole path is made when it is first asked for.
class ZELBASE_API FileName {
 public:
  FileName() = default;
  FileName(const std::string& path) { Set(path); }
  // Null is the empty path.
  FileName(const char* path) { Set(path); }
  FileName(const FileName&) = default;

  FileName& operator=(const std::string& path) { return Set(path); }
  FileName& operator=(const char* path) { return Set(path); }
  FileName& operator=(const FileName&) = default;

  // Assignment as a function.
  FileName& Set(const std::string& path);
  FileName& Set(const char* path);
  FileName& Set(const FileName& other) { return *this = other; }

  void Clear();

  // True when all four parts are empty.
  bool IsEmpty() const;

  // The four parts, exactly, with case.
  bool operator==(const FileName& other) const;
  bool operator!=(const FileName& other) const { return !(*this == other); }

  // The whole path: root, path, name, extension. Valid until the object changes.
  const std::string& operator*() const;
  const char* c_str() const { return (**this).c_str(); }

  // A drive or a server with its final "\", or without its last character. Empty without a root.
  const std::string Root(bool withSeparator) const;

  // The directories below the root. Without the final separator the last character is cut off, unless there are no directories:
  // the root keeps its own.
  const std::string Path(bool withFinalSeparator, bool withRoot) const;

  const std::string Name(bool withExtension) const;

  // With its leading ".", or without its first character. Empty without an extension.
  const std::string Extension(bool withDot) const;

  // A "\" is added unless the text is empty or ends in one.
  void SetRoot(const std::string& root);

  // Directories, ".." taken as written. A root in the text replaces the present one; a text without one leaves it. A "\" is
  // added at the end if need be.
  void SetPath(const std::string& path);

  // With `nameHoldsExtension` the text is split at its last ".".
  // Kept: a text without one leaves the extension as it was. Without the flag the whole text is the name, dots and all.
  void SetName(const std::string& name, bool nameHoldsExtension);

  // A "." is put in front unless the text is empty or has one.
  void SetExtension(const std::string& extension);

  // Goes through the elements of `relative`, split at "\"; a last empty one does not count.
  //
  //   element        what it does to the path
  //   ".."           empty: becomes "..\". One directory: becomes empty. More: the last one goes.
  //   empty          clears it
  //   anything else  is appended, also "."
  //
  // Kept: going up out of "a\b\" gives "a\\", with two separators, which the system reads as one; a second ".." gives "a\\"
  // again, and never goes further up. "..\" and ".." give the empty path.
  void CD(const std::string& relative);

  // True when the text has none of , | ? * " > <
  // Kept: a backslash, "/" and ":" are accepted, since a path may be asked about; PathHelpers.h has the other set.
  static bool IsValidName(const std::string& name);

 private:
  bool TakeRoot(std::string& rest);
  bool TakePath(std::string& rest);
  void TakeName(const std::string& rest);
  void ChangePath(const std::string& element);

  mutable std::string m_full;  // empty: to be made anew
  std::string m_root;
  std::string m_path;
  std::string m_name;
  std::string m_extension;
};
