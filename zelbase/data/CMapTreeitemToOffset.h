// The computation offsets behind the rows of a configuration tree, and the way back from one to its row. Neighbours: CCompOffset.h,
// the value; CMapTreeitemToDatainfo.h, its sister for data references.
#pragma once

#include "zelbase/data/CCompOffset.h"
#include "zelbase/data/detail/TreeItemMap.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;

// A map from row to CCompOffset, with the operations GetCount, SetAt, operator[], Lookup, RemoveKey, RemoveAll and GetItemHandle of
// zelbase/data/detail/TreeItemMap.h. Entries are in ascending order of the rows: of several with an equal value GetItemHandle gives
// the lowest. An offset of an unknown type equals nothing and is never found. Copies are independent. One thread at a time.
class ZELBASE_API CMapTreeitemToOffset : public zelbase::detail::TreeItemMap<unsigned int, CCompOffset> {
 public:
  // To an archive: the count, 4 + 64 bytes an entry in the map's order, then the strings; docs/data-identifiers.md has the table.
  // From one: in place of all entries; of two with one row the later counts. An archive that ends too early throws a
  // CArchiveException, endOfFile, and the map is as it was; what the file throws passes.
  void Serialize(CArchive& archive) override;
};
