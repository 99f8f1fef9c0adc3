// A data item as a user has configured it for a display, or a separator line in a list of them. Neighbours: CDataInfo.h, the
// reference to the data; CDataInfoArray.h, the list.
#pragma once

#include <string>

#include "zelbase/data/CDataInfo.h"
#include "zelbase/data/DATATEXTATTRIBS.h"
#include "zelbase/platform/ZelBaseApi.h"

// A value. A new one is no separator and has no description, the default attributes on, zero attributes, the default format off
// and 0 decimals. Comparison is that of the base: the reference alone.
//
// Several threads may read one object; whoever changes it must be alone.
class ZELBASE_API CDataInfoEx : public CDataInfo {
 public:
  CDataInfoEx();
  // The default attributes are on whatever `textAttribs` holds.
  CDataInfoEx(const CDataId& dataId, unsigned short elemId, unsigned short arrayIndex, bool separator, const std::string& userDescription,
              bool defaultFormat, const DATATEXTATTRIBS& textAttribs, int decimals);
  CDataInfoEx(const CDataInfoEx& other);
  CDataInfoEx& operator=(const CDataInfoEx& other);
  virtual ~CDataInfoEx();

  // The reference alone.
  void SetDataInfo(const CDataInfo& dataInfo);
  void GetDataInfo(CDataInfo& dataInfo) const;

  // Makes it a separator line, which refers to no data. There is no way back but assignment.
  void SetSeparator() { m_separator = true; }
  bool IsSeparator() const { return m_separator; }

  void SetUserDescription(const std::string& description) { m_userDescription = description; }
  const std::string& GetUserDescription() const { return m_userDescription; }

  // Whether the display's own attributes are used in place of the text attributes.
  void SetDefaultattr(bool on) { m_defaultAttribs = on; }
  bool IsDefaultattribsOn() const { return m_defaultAttribs; }

  void SetDataTxtAttr(const DATATEXTATTRIBS& attribs) { m_textAttribs = attribs; }
  const DATATEXTATTRIBS& GetDataTxtAttr() const { return m_textAttribs; }

  // Whether the item's own format is used in place of the decimals.
  void SetDefaultFmt(bool on) { m_defaultFormat = on; }
  bool IsDefaultFmtSet() const { return m_defaultFormat; }

  void SetDecimals(int decimals) { m_decimals = decimals; }
  int GetDecimals() const { return m_decimals; }

 private:
  friend struct zelbase::detail::DataImage;

  bool m_separator = false;
  std::string m_userDescription;
  bool m_defaultAttribs = true;
  DATATEXTATTRIBS m_textAttribs;
  bool m_defaultFormat = false;
  int m_decimals = 0;
};
