// The data references behind the rows of a configuration tree, and the way back from one to its row. Neighbours: CDataInfo.h, the
// value; CMapTreeitemToOffset.h, its sister for offsets.
#pragma once

#include "zelbase/data/CDataInfo.h"
#include "zelbase/data/detail/TreeItemMap.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;

// A row of the framework's tree control, which this library knows by its address alone.
struct _TREEITEM;

// A map from row to CDataInfo, with the operations GetCount, SetAt, operator[], Lookup, RemoveKey, RemoveAll and GetItemHandle of
// zelbase/data/detail/TreeItemMap.h. Entries are in ascending order of the addresses: of several rows with an equal value
// GetItemHandle gives the lowest. Copies are independent. One thread at a time.
class ZELBASE_API CMapTreeitemToDatainfo : public zelbase::detail::TreeItemMap<_TREEITEM*, CDataInfo> {
 public:
  // To an archive: the count, 4 + 16 bytes an entry in the map's order, then the strings; docs/data-identifiers.md has the table.
  // Of an address the low 32 bits travel. From one: in place of all entries; of two with one handle the later counts. An archive
  // that ends too early throws a CArchiveException, endOfFile, and the map is as it was; what the file throws passes.
  void Serialize(CArchive& archive) override;
};
