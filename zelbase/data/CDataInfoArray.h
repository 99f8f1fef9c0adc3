// The data items that a user has chosen for a display, in their order. Neighbour: CDataInfoEx.h, one of them.
#pragma once

#include <vector>

#include "zelbase/data/CDataInfoEx.h"
#include "zelbase/platform/CObject.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;

// A growable array; copies are independent. Indexes count from 0. A reference to an element is good until the array changes its
// size. One thread at a time.
class ZELBASE_API CDataInfoArray : public CObject {
 public:
  CDataInfoArray();
  CDataInfoArray(const CDataInfoArray& other);
  CDataInfoArray& operator=(const CDataInfoArray& other);
  ~CDataInfoArray() override;

  // To an archive: the count, 60 bytes an element, then the strings; docs/data-identifiers.md has the table. From one: in place of
  // all elements. An archive that ends too early throws a CArchiveException, endOfFile, and the array is as it was; what the file
  // throws passes.
  void Serialize(CArchive& archive) override;

  int GetSize() const { return static_cast<int>(m_items.size()); }

  // Puts a copy behind the last and gives its index.
  int Add(const CDataInfoEx& item);

  // The element. An index out of range is the caller's fault: it gives a default one that belongs to no array and that the calling
  // thread's next such fault makes a default one again.
  CDataInfoEx& GetAt(int index);
  const CDataInfoEx& GetAt(int index) const;
  CDataInfoEx& operator[](int index) { return GetAt(index); }
  const CDataInfoEx& operator[](int index) const { return GetAt(index); }

  // Replaces the element, or takes it out. An index out of range does nothing.
  void SetAt(int index, const CDataInfoEx& item);
  void RemoveAt(int index);

  void RemoveAll();

 private:
  bool HasIndex(int index) const { return index >= 0 && index < GetSize(); }

  std::vector<CDataInfoEx> m_items;
};
