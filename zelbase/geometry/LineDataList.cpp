#include "zelbase/geometry/LineDataList.h"

#include <memory>

LineDataList::~LineDataList() { m_creators.Clear(); }

LineDataList& LineDataList::GetLineDataList() {
  return zelbase::detail::OneRegistry<LineDataList>([](LineDataList& list) { list.m_creators.Clear(); });
}

void LineDataList::RegisterLineData(unsigned int type, LineDataICreator* creator) { m_creators.Register(type, creator); }

LineData* LineDataList::Create(unsigned int type, const std::string& name) {
  const std::shared_ptr<LineDataICreator> creator = m_creators.Find(type);
  return creator == nullptr ? nullptr : creator->Create(name);
}
