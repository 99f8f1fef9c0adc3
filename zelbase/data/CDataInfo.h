// Names one element of a data item's record: the item's identifier, the element, and its place where the element is an array.
// Neighbours: CDataId.h is the identifier; CDataInfoEx.h adds how a user wants to see it.
#pragma once

#include <string>

#include "zelbase/data/CDataId.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value. Element and array index are 0 to 65534; 65535 stands for none, and both are none in a new one.
//
//   CDataInfo info(CDataId(5, 1002, 3, 1), 7, 65535);
//   info.GenerateString();                              // "5,1,1002,3,7"
//
// Several threads may read one object; whoever changes it must be alone.
class ZELBASE_API CDataInfo {
 public:
  CDataInfo() = default;
  CDataInfo(const CDataId& dataId, unsigned short elemId, unsigned short arrayIndex);

  void SetInfo(const CDataId& dataId, unsigned short elemId, unsigned short arrayIndex);

  // Identifier and element; the array index has its own operation.
  void GetInfo(CDataId& dataId, unsigned short& elemId) const;

  void SetDataId(const CDataId& dataId) { m_dataId = dataId; }
  const CDataId& GetDataId() const { return m_dataId; }
  void SetElemId(unsigned short elemId) { m_elemId = elemId; }
  unsigned short GetElemId() const { return m_elemId; }
  void SetArrayIndex(unsigned short arrayIndex) { m_arrayIndex = arrayIndex; }
  unsigned short GetArrayIndex() const { return m_arrayIndex; }

  bool HasElemId() const { return m_elemId < kNone; }
  bool HasArrayIndex() const { return m_arrayIndex < kNone; }

  // A valid identifier and an element.
  bool IsValid() const { return m_dataId.IsValid() && HasElemId(); }

  // By all six numbers.
  bool operator==(const CDataInfo& other) const;
  bool operator!=(const CDataInfo& other) const { return !(*this == other); }

  // The numbers with commas between: type, vessel, group, device, element and, when there is one, the array index.
  std::string GenerateString() const;

  // Reads five numbers or six, by the rules of CDataId::SetFromKey; what follows is passed over. Five leave the array index as it
  // was, so that an element without one does not clear it. Fewer give false and change nothing.
  bool SetFromString(const std::string& text);

 private:
  friend struct zelbase::detail::DataImage;

  static constexpr unsigned short kNone = 65535;

  CDataId m_dataId;
  unsigned short m_elemId = kNone;
  unsigned short m_arrayIndex = kNone;
};
