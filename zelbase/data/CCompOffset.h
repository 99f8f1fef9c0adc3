// What offset a computation is to apply: a named one of a vessel, three numbers, or one that some data carries. Neighbours:
// CDataId.h for that data; CMapTreeitemToOffset.h, the offsets behind the rows of a tree.
#pragma once

#include <string>

#include "zelbase/data/CDataId.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value. Which fields count is told by two of them:
//
// | Off-track selection | Offset type | The offset |
// |---|---|---|
// | not 0 | any | the data of the identifier |
// | 0 | 1 | the offset of that name of that vessel |
// | 0 | 2 | x, y, z, in metres |
// | 0 | 3 | the data of the identifier |
//
// A new one is of type 2, at (0, 0, 0), on vessel 1.
//
// What surprises:
//   (1) Equality looks at the fields that count, and at the selections: 1 and 2 are unequal. A type other than 1, 2 and 3 is unequal
//       to everything, itself and its own copy too, as long as the selection is 0; a map never finds it.
//   (2) The text has no off-track selection, and a name with a comma in it cannot be read back.
//
// Several threads may read one object; whoever changes it must be alone.
class ZELBASE_API CCompOffset {
 public:
  CCompOffset();
  CCompOffset(const CCompOffset& other);
  CCompOffset& operator=(const CCompOffset& other);
  virtual ~CCompOffset();

  unsigned int GetOffTrackSelection() const { return m_offTrackSelection; }
  void SetOffTrackSelection(unsigned int selection) { m_offTrackSelection = selection; }
  unsigned int GetOffsetType() const { return m_offsetType; }
  void SetOffsetType(unsigned int type) { m_offsetType = type; }
  unsigned int GetOffsetVesselId() const { return m_offsetVesselId; }
  void SetOffsetVesselId(unsigned int vesselId) { m_offsetVesselId = vesselId; }
  const std::string& GetOffsetName() const { return m_offsetName; }
  void SetOffsetName(const std::string& name) { m_offsetName = name; }
  const CDataId& GetOffsetDataId() const { return m_offsetDataId; }
  void SetOffsetDataId(const CDataId& dataId) { m_offsetDataId = dataId; }
  void GetOffset(double& x, double& y, double& z) const;
  void SetOffset(double x, double y, double z);

  // The configuration text, ten items: type, vessel, name, the identifier's type, vessel, group and device, and x, y, z with six
  // decimals; "2,1,,0,0,0,0,0.000000,0.000000,0.000000" for a new one. The identifier's numbers are written, not its key.
  std::string GenerateString() const;

  // Reads those ten items, takes what can be read and goes on behind what cannot. An item that cannot be read leaves its field,
  // save that an identifier's number becomes 0: the identifier is always set. The name is taken as it stands, blanks too. True when
  // all ten were read; further items are passed over. "nan" and "inf", as GenerateString writes them, do not read.
  bool SetFromString(const std::string& text);

  // See (1). Names are compared case-sensitively, x, y and z exactly.
  bool operator==(const CCompOffset& other) const;

 private:
  friend struct zelbase::detail::DataImage;

  unsigned int m_offTrackSelection = 0;
  unsigned int m_offsetType = 2;
  unsigned int m_offsetVesselId = 1;
  std::string m_offsetName;
  CDataId m_offsetDataId;
  double m_x = 0.0;
  double m_y = 0.0;
  double m_z = 0.0;
};
