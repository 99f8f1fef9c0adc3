// The catalogue of units to choose from, the file "Units.uni": for each kind of quantity a group of units with factor,
// mnemonic, display name and offset. Neighbours: CZelUnitCnv.h, which holds the choice and converts by it; FileObject.h, the
// text format; docs/units.md, the catalogue's format with a worked example.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/config/FileObject.h"
#include "zelbase/frame/CZelString.h"
#include "zelbase/platform/ZelBaseApi.h"

// A settings file with a section for each group, named by unitsParamKeys, in which each item is a unit:
//
//   [Depth Units]
//   Metre = 1.0, m
//   Foot = 0.3048, ft, International foot
//
//   UnitDefinition catalogue;
//   if (!catalogue.FileOpen(folder + "Units.uni", CFile::modeRead | CFile::shareDenyWrite)) return false;
//   const int code = CZelUnitCnv::FormatDepth;
//   for (bool more = catalogue.GetFirstGroupItem(code, key, name, factor, offset, mnemonic); more;
//        more = catalogue.GetNextGroupItem(key, name, factor, offset, mnemonic)) { ... }
//
// The value of a unit is a list with commas, white space around an item not counting:
//
//   Item             When the list is shorter              When the item is not a number
//   0 unit factor    (there always is an item)             the output is left as it was
//   1 mnemonic       the output is left as it was and
//                    the result is false; the others
//                    are filled all the same
//   2 display name   the unit key
//   3 offset         0.0                                   0.0
//
// An item that is there but empty is an item: "1," has an empty mnemonic, and is true. Of a number only the front has to parse:
// "12abc" is 12.
//
// So false may stand for a unit without a mnemonic, in a walk as well: the loop above ends there, although the walk itself goes
// on with the next call. Use GetGroupNumItems for a loop that has to see every unit of a faulty catalogue.
//
// Every operation takes a format code (CZelUnitCnv::FormatCode), not a kind. The groups "No Units", "Angular Units" and
// "Area Units" have no code that reaches them: code 47 has a kind, but no group.
//
// Nothing here reports, throws or touches the status of FileObject, whatever its flags say, except for what opening a file
// does.
//
// Copies are as those of FileObject, with the walk: both go on from the same place, each on its own. Assigning an object to
// itself empties it, and its walk goes on.
//
// Threads: the constant operations may be called from any number of threads at once while nothing changes the object; a
// walk belongs to one thread, so that threads which walk have a copy each.
class ZELBASE_API UnitDefinition : public FileObject {
 public:
  UnitDefinition();
  ~UnitDefinition() override;
  UnitDefinition(const UnitDefinition& other);
  UnitDefinition& operator=(const UnitDefinition& other);

  // The section of the code's group. False, `name` untouched, for code 47 and for codes that have no kind.
  bool GetGroupName(int formatCode, std::string& name) const;

  // The units in the group, also those that cannot be read; 0 is possible. False, `count` untouched, when the code has no
  // group or the catalogue does not have its section.
  bool GetGroupNumItems(int formatCode, int& count) const;

  // Begins a walk over the group and gives its first unit. False when the code has no group, or the catalogue no such section,
  // or nothing in it: then the outputs are untouched, and no walk is running. Otherwise as the table above says.
  //
  // The walk is over the group as it is now: whatever happens to the object, the walk goes on with what was there. The
  // order is that of FileObject.
  bool GetFirstGroupItem(int formatCode, std::string& key, std::string& displayName, double& factor, double& offset, std::string& mnemonic);

  // The next unit of the walk. False, the outputs untouched, when none is running or it has come to its end. Otherwise as
  // the table above says.
  bool GetNextGroupItem(std::string& key, std::string& displayName, double& factor, double& offset, std::string& mnemonic);

  // The unit of that key. False, the outputs untouched, when the code has no group or the group no such key. Otherwise as
  // the table above says.
  bool GetGroupItemData(int formatCode, const std::string& key, std::string& displayName, double& factor, double& offset,
                        std::string& mnemonic) const;

 private:
  using Entry = std::pair<std::string, std::string>;  // key and value

  bool FindGroup(int formatCode, std::string& name) const;
  bool Fill(const Entry& entry, std::string& displayName, double& factor, double& offset, std::string& mnemonic) const;

  CZelString m_list;           // knows the separator of a value; it has no elements
  std::vector<Entry> m_walk;   // the group as it was at GetFirstGroupItem
  std::size_t m_nextItem = 0;  // place in m_walk
};
