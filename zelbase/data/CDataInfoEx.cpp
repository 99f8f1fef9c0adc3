#include "zelbase/data/CDataInfoEx.h"

CDataInfoEx::CDataInfoEx() = default;

CDataInfoEx::CDataInfoEx(const CDataId& dataId, unsigned short elemId, unsigned short arrayIndex, bool separator,
                         const std::string& userDescription, bool defaultFormat, const DATATEXTATTRIBS& textAttribs, int decimals)
    : CDataInfo(dataId, elemId, arrayIndex),
      m_separator(separator),
      m_userDescription(userDescription),
      m_textAttribs(textAttribs),
      m_defaultFormat(defaultFormat),
      m_decimals(decimals) {}

CDataInfoEx::CDataInfoEx(const CDataInfoEx& other) = default;

CDataInfoEx& CDataInfoEx::operator=(const CDataInfoEx& other) = default;

CDataInfoEx::~CDataInfoEx() = default;

void CDataInfoEx::SetDataInfo(const CDataInfo& dataInfo) { CDataInfo::operator=(dataInfo); }

void CDataInfoEx::GetDataInfo(CDataInfo& dataInfo) const { dataInfo = *this; }
