#include "zelbase/geodesy/ZelGeoCoordSysList.h"

ZelGeoCoordSysList::~ZelGeoCoordSysList() { m_creators.Clear(); }

ZelGeoCoordSysList& ZelGeoCoordSysList::GetCoordSysList() {
  return zelbase::detail::OneRegistry<ZelGeoCoordSysList>([](ZelGeoCoordSysList& list) { list.m_creators.Clear(); });
}

void ZelGeoCoordSysList::RegisterGeoCoordSys(std::string type, ZelCoordSysICreator* creator) { m_creators.Register(type, creator); }

bool ZelGeoCoordSysList::UnRegisterGeoCoordSys(std::string type) { return m_creators.UnRegister(type); }

int ZelGeoCoordSysList::GetCoordSysTypes(std::vector<std::string>& types) { return m_creators.Keys(types); }

ZelGeoCoordSysBase* ZelGeoCoordSysList::Create(const std::string& type) { return m_creators.Create(type); }
