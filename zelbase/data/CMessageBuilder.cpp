#include "zelbase/data/CMessageBuilder.h"

#include <algorithm>
#include <new>
#include <utility>

CMessageBuilder::CMessageBuilder() = default;

CMessageBuilder::CMessageBuilder(const CMessageBuilder& other) = default;

CMessageBuilder& CMessageBuilder::operator=(const CMessageBuilder& other) = default;

CMessageBuilder::~CMessageBuilder() = default;

void CMessageBuilder::SetDevicePtr(Device* device) { m_device = device; }

bool CMessageBuilder::Init(CDataInfo* items, int count, CDataId& id) {
  if (items != nullptr && count > 0) {
    std::shared_ptr<CDataInfo[]> copy;
    try {
      copy.reset(new CDataInfo[static_cast<std::size_t>(count)]);
      std::copy_n(items, count, copy.get());
    } catch (const std::bad_alloc&) {
      return false;
    }
    m_itemsOwner.swap(copy);  // the earlier array goes last: `items` may lie in it
    m_dataItems = m_itemsOwner.get();
    m_itemCount = count;
  }
  // Kept: the identifier is taken without items, too.
  m_dataId = id;
  return true;
}

bool CMessageBuilder::GetMessage(std::vector<std::string>& messages) {
  // Kept: a fresh text each time; without it, result and texts of the other pass as they are.
  std::string message;
  if (!BuildMessage(message)) return BuildMessage(messages);
  // Kept: an empty text is a message, too.
  messages.assign(1, message);
  return true;
}

void CMessageBuilder::SetMsgMode(int) {}

void CMessageBuilder::SetAttribMap(CAttributeMap*) {}

bool CMessageBuilder::BuildMessage(std::vector<std::string>&) { return false; }

bool CMessageBuilder::BuildMessage(std::string&) { return false; }

bool CMessageBuilder::BuildMessage(const CDataBlock&, int, int, std::vector<std::string>&) { return false; }

bool CMessageBuilder::BuildMessage(const CDataBlock&, int, int, std::string&) { return false; }
