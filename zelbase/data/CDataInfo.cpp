#include "zelbase/data/CDataInfo.h"

#include "zelbase/data/detail/DataIdText.h"

using zelbase::detail::DataNumbers;
using zelbase::detail::kDataInfoNumbers;

CDataInfo::CDataInfo(const CDataId& dataId, unsigned short elemId, unsigned short arrayIndex)
    : m_dataId(dataId), m_elemId(elemId), m_arrayIndex(arrayIndex) {}

void CDataInfo::SetInfo(const CDataId& dataId, unsigned short elemId, unsigned short arrayIndex) {
  m_dataId = dataId;
  m_elemId = elemId;
  m_arrayIndex = arrayIndex;
}

void CDataInfo::GetInfo(CDataId& dataId, unsigned short& elemId) const {
  dataId = m_dataId;
  elemId = m_elemId;
}

bool CDataInfo::operator==(const CDataInfo& other) const {
  return m_dataId == other.m_dataId && m_elemId == other.m_elemId && m_arrayIndex == other.m_arrayIndex;
}

std::string CDataInfo::GenerateString() const {
  const DataNumbers numbers = {
      m_dataId.GetDataType(), m_dataId.GetVesselId(), m_dataId.GetGroupId(), m_dataId.GetDeviceNum(), m_elemId, m_arrayIndex};
  std::string text;
  zelbase::detail::AppendDataNumbers(text, numbers, HasArrayIndex() ? kDataInfoNumbers : kDataInfoNumbers - 1);
  return text;
}

bool CDataInfo::SetFromString(const std::string& text) {
  DataNumbers numbers{};
  const std::size_t read = zelbase::detail::ScanDataNumbers(text, numbers, kDataInfoNumbers);
  if (read < kDataInfoNumbers - 1) return false;
  const auto [dataType, vesselId, groupId, deviceNum, element, index] = numbers;
  m_dataId.Set(dataType, groupId, deviceNum, vesselId);
  m_elemId = element;
  // Kept: five numbers leave the array index.
  if (read == kDataInfoNumbers) m_arrayIndex = index;
  return true;
}
