#include "zelbase/data/CCompOffset.h"

#include <iterator>

#include "zelbase/data/detail/DataIdText.h"
#include "zelbase/frame/CZelString.h"
#include "zelbase/frame/detail/NumberText.h"

namespace {

enum OffsetType : unsigned int { Named = 1, Explicit = 2, FromData = 3 };

constexpr int kDecimals = 6;

// Where the items stand in the text.
constexpr int kTypeItem = 0;
constexpr int kVesselItem = 1;
constexpr int kNameItem = 2;
constexpr int kDataIdItem = 3;
constexpr int kPositionItem = 7;

}  // namespace

CCompOffset::CCompOffset() = default;

CCompOffset::CCompOffset(const CCompOffset& other) = default;

CCompOffset& CCompOffset::operator=(const CCompOffset& other) = default;

CCompOffset::~CCompOffset() = default;

void CCompOffset::GetOffset(double& x, double& y, double& z) const {
  x = m_x;
  y = m_y;
  z = m_z;
}

void CCompOffset::SetOffset(double x, double y, double z) {
  m_x = x;
  m_y = y;
  m_z = z;
}

std::string CCompOffset::GenerateString() const {
  const zelbase::detail::DataNumbers numbers = {m_offsetDataId.GetDataType(), m_offsetDataId.GetVesselId(), m_offsetDataId.GetGroupId(),
                                                m_offsetDataId.GetDeviceNum()};
  // Kept: the off-track selection is not in the text.
  std::string text;
  zelbase::detail::AppendUnsigned(text, m_offsetType);
  text += ',';
  zelbase::detail::AppendUnsigned(text, m_offsetVesselId);
  text += ',';
  text += m_offsetName;
  text += ',';
  zelbase::detail::AppendDataNumbers(text, numbers, zelbase::detail::kDataIdNumbers);
  for (const double value : {m_x, m_y, m_z}) {
    text += ',';
    zelbase::detail::AppendFixed(text, value, kDecimals);
  }
  return text;
}

bool CCompOffset::SetFromString(const std::string& text) {
  const CZelString items(text, ',', false);
  bool all = items.GetItem(kTypeItem, m_offsetType);
  all = items.GetItem(kVesselItem, m_offsetVesselId) && all;
  all = items.GetItem(kNameItem, m_offsetName) && all;
  unsigned short numbers[zelbase::detail::kDataIdNumbers] = {};
  for (int i = 0; i < static_cast<int>(std::size(numbers)); ++i) all = items.GetItem(kDataIdItem + i, numbers[i]) && all;
  // Kept: also when a number is missing.
  const auto [dataType, vesselId, groupId, deviceNum] = numbers;
  m_offsetDataId.Set(dataType, groupId, deviceNum, vesselId);
  all = items.GetItem(kPositionItem, m_x) && all;
  all = items.GetItem(kPositionItem + 1, m_y) && all;
  all = items.GetItem(kPositionItem + 2, m_z) && all;
  return all;
}

bool CCompOffset::operator==(const CCompOffset& other) const {
  // Kept: 1 and 2 are two selections, though both only mean "from the data".
  if (m_offTrackSelection != other.m_offTrackSelection) return false;
  if (m_offTrackSelection != 0) return m_offsetDataId == other.m_offsetDataId;
  if (m_offsetType != other.m_offsetType) return false;
  switch (m_offsetType) {
    case Named: return m_offsetVesselId == other.m_offsetVesselId && m_offsetName == other.m_offsetName;
    case Explicit: return m_x == other.m_x && m_y == other.m_y && m_z == other.m_z;
    case FromData: return m_offsetDataId == other.m_offsetDataId;
    default: return false;  // Kept: an unknown type is unequal even to itself
  }
}
