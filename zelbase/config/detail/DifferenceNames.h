// The names of the sections of a difference, made and taken apart. Internal to the library; FileObject::GetDifference makes
// them, FileObject::ApplyDifference and the listing of SettingsDifference.h read them.
#pragma once

#include <string_view>

#include "zelbase/frame/detail/Characters.h"

namespace zelbase::detail {

inline constexpr std::string_view kAddPrefix = "add.";
inline constexpr std::string_view kChangePrefix = "change.";
inline constexpr std::string_view kRemovePrefix = "remove.";

enum class DifferenceKind : unsigned char { None, Add, Change, Remove };

// What a section of a difference does when applied, and to which section. Views into the name that was given.
struct DifferenceName {
  DifferenceKind kind = DifferenceKind::None;
  std::string_view target;

  // Splits `name` at "." and trims the parts. Fewer than two, or another first part than an operation: None.
  explicit constexpr DifferenceName(std::string_view name) {
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos) return;
    // Kept: trimmed parts, so that " add .A" is an operation, and an empty second one, so that "add." goes to the section
    // with no name; a file's own section "add.X" is an operation as well. Differences are edited by hand.
    kind = KindOf(Trim(name.substr(0, dot)));
    // Kept: what stands behind a second "." is lost, so that "add.My.Section" goes to "My".
    const std::string_view rest = name.substr(dot + 1);
    target = Trim(rest.substr(0, rest.find('.')));
  }

 private:
  static constexpr DifferenceKind KindOf(std::string_view word) {
    if (word == "add") return DifferenceKind::Add;
    if (word == "change") return DifferenceKind::Change;
    if (word == "remove") return DifferenceKind::Remove;
    return DifferenceKind::None;
  }
};

}  // namespace zelbase::detail
