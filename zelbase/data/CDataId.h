// The name of a data item: its kind, the group and number of the device it comes from, and the vessel. Neighbours: CDataInfo.h
// names one element of the item's record; docs/data-identifiers.md has all text and byte forms.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

class CharBuffer;

namespace zelbase::detail {
struct DataImage;
}

// A value of four numbers, each 0 to 65535, and a text made of them, the key. All numbers of a new one are 0.
//
//   CDataId id(5, 1002, 3, 1);      // type 5, group 1002, device 3, vessel 1
//   id.GetKey();                    // "5,1,1002,3"
//
// What surprises:
//   (1) The text has another order than everything else. Constructor, Set, operator< and the bytes of Save go type, group, device,
//       vessel; the key goes type, vessel, group, device.
//   (2) The key is kept, not made when asked for. SetUndefined and Load leave it as it was, and a copy takes the stale key along;
//       the next Set... makes it anew. Comparisons look at the numbers alone.
//   (3) IsValid does not look at the vessel.
//
// Several threads may read one object; whoever changes it must be alone.
class ZELBASE_API CDataId {
 public:
  CDataId();
  CDataId(unsigned short dataType, unsigned short groupId, unsigned short deviceNum, unsigned short vesselId);

  unsigned short GetDataType() const { return m_dataType; }
  unsigned short GetGroupId() const { return m_groupId; }
  unsigned short GetDeviceNum() const { return m_deviceNum; }
  unsigned short GetVesselId() const { return m_vesselId; }

  // One number; the key follows.
  void SetDataType(unsigned short dataType);
  void SetGroupId(unsigned short groupId);
  void SetDeviceNum(unsigned short deviceNum);
  void SetVesselId(unsigned short vesselId);

  // All four; the key follows. Always true.
  bool Set(unsigned short dataType, unsigned short groupId, unsigned short deviceNum, unsigned short vesselId);

  // From a text of four numbers, in the order of the key, with commas between. White space may stand before a number, not before
  // a comma; a sign is taken; a number counts modulo 65536 ("-1" is 65535); what follows the fourth is passed over. Fewer than
  // four give false and change nothing. Both do the same.
  bool SetFromKey(const std::string& key);
  bool SetFromString(const std::string& text);

  // The key, as it was last made. Both do the same.
  const std::string& GetKey() const { return m_key; }
  const std::string& GenerateString() const { return m_key; }

  // The type is not 0. SetUndefined makes it 0 and nothing else; see (2).
  bool IsDefined() const { return m_dataType != 0; }
  void SetUndefined();

  // Type, group and device are not 0. Kept: whatever the vessel is; data need not belong to one.
  bool IsValid() const { return m_dataType != 0 && m_groupId != 0 && m_deviceNum != 0; }

  // What the group is: 1 to 999 a device, 1001 to 1116 a computation, 2001 to 2009 a data source; all else none of them.
  bool IsDevice() const { return m_groupId >= 1 && m_groupId <= 999; }
  bool IsComputation() const { return m_groupId >= 1001 && m_groupId <= 1116; }
  bool IsDataSource() const { return m_groupId >= 2001 && m_groupId <= 2009; }

  // By the four numbers; the order is that of type, then group, device, vessel.
  bool operator==(const CDataId& other) const;
  bool operator!=(const CDataId& other) const { return !(*this == other); }
  bool operator<(const CDataId& other) const;

  // 8 bytes at the buffer's position: type, group, device, vessel, 2 bytes each in the machine's byte order. Load leaves the key;
  // see (2).
  void Save(CharBuffer& buffer) const;
  void Load(CharBuffer& buffer);

 private:
  friend struct zelbase::detail::DataImage;

  void MakeKey();

  unsigned short m_dataType = 0;
  unsigned short m_groupId = 0;
  unsigned short m_deviceNum = 0;
  unsigned short m_vesselId = 0;
  std::string m_key;
};
