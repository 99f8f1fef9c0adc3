// The cursor over a FileObject: a selected section, a place among its items, and a place among the sections. FileObject.h
// has the operations that move one.
#pragma once

#include <string>

#include "zelbase/config/detail/SettingsMap.h"
#include "zelbase/platform/ZelBaseApi.h"

class FileObject;

// A small value that callers declare on the stack; one of them walks sections and items at once.
//
// It remembers numbers and a name, never an address. So a cursor may be copied, may outlive its FileObject, may be given
// to another one (where it selects nothing), and stays safe whatever happens to the sections it walks over:
//
//   What happens meanwhile                       The walk over sections            The walk over items
//   a value overwritten, a key or section added  goes on; the new one not walked   goes on; the new one not walked
//   an item deleted                              goes on                           goes on, without that item
//   a section deleted through this cursor        goes on, without that section     ends, whatever section it was in
//   a section deleted otherwise                  starts again, also when ended     ends if it was in that section
//   a section renamed                            goes on; it comes exactly once    goes on
//   a missing section selected                   goes on                           ends
//   MakeEmpty, FileOpen, FileClose, Read, =      ends                              ends
class ZELBASE_API FobjSection {
 public:
  FobjSection() = default;

  // Forgets section, places and name.
  void SetNoSelection() { *this = FobjSection(); }

  // True when GetFirstMapEntry has selected a section. CreateSection selects one, too, and leaves this as it is.
  bool IsValid() const noexcept { return m_valid; }

 private:
  friend class FileObject;

  // The walk over sections stays: a look for a section that is missing must not make it begin again, and again.
  void ForgetSection() {
    m_selection = {};
    m_items = {};
    m_name.clear();
    m_valid = false;
  }

  zelbase::detail::SectionSelection m_selection;
  zelbase::detail::TableWalk m_items;  // place among the items of the selected section
  std::string m_name;                  // of the selected section, as it was when selected
  bool m_valid = false;
  std::uint64_t m_sectionEpoch = 0;       // of the walk over sections; 0: none was begun
  zelbase::detail::TableWalk m_sections;  // place among the sections
  unsigned int m_generation = 0;          // removals of sections that the walk over sections knows of
};
