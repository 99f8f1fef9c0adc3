#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

ZelGeoStaticDatabaseList::~ZelGeoStaticDatabaseList() { m_creators.Clear(); }

ZelGeoStaticDatabaseList& ZelGeoStaticDatabaseList::GetGeoStaticDataList() {
  return zelbase::detail::OneRegistry<ZelGeoStaticDatabaseList>([](ZelGeoStaticDatabaseList& list) { list.m_creators.Clear(); });
}

void ZelGeoStaticDatabaseList::RegisterGeoStaicDatabase(std::string type, GeoStaticICreator* creator) {
  m_creators.Register(type, creator);
}

bool ZelGeoStaticDatabaseList::UnRegisterGeoStaicDatabase(std::string type) { return m_creators.UnRegister(type); }

int ZelGeoStaticDatabaseList::GetGeoStaticTypes(std::vector<std::string>& types) { return m_creators.Keys(types); }

ZelGeoStaticDataBase* ZelGeoStaticDatabaseList::Create(const std::string& type) { return m_creators.Create(type); }
