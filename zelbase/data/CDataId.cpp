#include "zelbase/data/CDataId.h"

#include <tuple>

#include "zelbase/data/detail/DataIdText.h"
#include "zelbase/files/CharBuffer.h"

using zelbase::detail::DataNumbers;
using zelbase::detail::kDataIdNumbers;

CDataId::CDataId() : m_key("0,0,0,0") {}

CDataId::CDataId(unsigned short dataType, unsigned short groupId, unsigned short deviceNum, unsigned short vesselId) {
  Set(dataType, groupId, deviceNum, vesselId);
}

void CDataId::MakeKey() {
  m_key.clear();
  // Kept: the vessel stands second in the text, and last everywhere else.
  zelbase::detail::AppendDataNumbers(m_key, DataNumbers{m_dataType, m_vesselId, m_groupId, m_deviceNum}, kDataIdNumbers);
}

void CDataId::SetDataType(unsigned short dataType) {
  m_dataType = dataType;
  MakeKey();
}

void CDataId::SetGroupId(unsigned short groupId) {
  m_groupId = groupId;
  MakeKey();
}

void CDataId::SetDeviceNum(unsigned short deviceNum) {
  m_deviceNum = deviceNum;
  MakeKey();
}

void CDataId::SetVesselId(unsigned short vesselId) {
  m_vesselId = vesselId;
  MakeKey();
}

bool CDataId::Set(unsigned short dataType, unsigned short groupId, unsigned short deviceNum, unsigned short vesselId) {
  m_dataType = dataType;
  m_groupId = groupId;
  m_deviceNum = deviceNum;
  m_vesselId = vesselId;
  MakeKey();
  return true;
}

bool CDataId::SetFromKey(const std::string& key) {
  DataNumbers numbers{};
  if (zelbase::detail::ScanDataNumbers(key, numbers, kDataIdNumbers) != kDataIdNumbers) return false;
  const auto [dataType, vesselId, groupId, deviceNum, element, index] = numbers;
  return Set(dataType, groupId, deviceNum, vesselId);
}

bool CDataId::SetFromString(const std::string& text) { return SetFromKey(text); }

void CDataId::SetUndefined() {
  m_dataType = 0;  // Kept: the key goes on showing the old type
}

bool CDataId::operator==(const CDataId& other) const {
  return m_dataType == other.m_dataType && m_groupId == other.m_groupId && m_deviceNum == other.m_deviceNum &&
         m_vesselId == other.m_vesselId;
}

bool CDataId::operator<(const CDataId& other) const {
  return std::tie(m_dataType, m_groupId, m_deviceNum, m_vesselId) <
         std::tie(other.m_dataType, other.m_groupId, other.m_deviceNum, other.m_vesselId);
}

void CDataId::Save(CharBuffer& buffer) const {
  for (const unsigned short number : {m_dataType, m_groupId, m_deviceNum, m_vesselId}) {
    buffer.Write(&number, sizeof number);
  }
}

void CDataId::Load(CharBuffer& buffer) {
  // Kept: the key stays as it was.
  for (unsigned short* const number : {&m_dataType, &m_groupId, &m_deviceNum, &m_vesselId}) {
    buffer.Read(number, sizeof *number);
  }
}
