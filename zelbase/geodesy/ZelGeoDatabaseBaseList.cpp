#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"

#include <memory>

ZelGeoDatabaseBaseList::~ZelGeoDatabaseBaseList() { m_creators.Clear(); }

ZelGeoDatabaseBaseList& ZelGeoDatabaseBaseList::GetGeoDatabaseList() {
  return zelbase::detail::OneRegistry<ZelGeoDatabaseBaseList>([](ZelGeoDatabaseBaseList& list) { list.m_creators.Clear(); });
}

void ZelGeoDatabaseBaseList::RegisterGeoDatabase(std::string type, GeoDatabaseICreator* creator) { m_creators.Register(type, creator); }

bool ZelGeoDatabaseBaseList::UnRegisterGeoDatabase(std::string type) { return m_creators.UnRegister(type); }

int ZelGeoDatabaseBaseList::GetGeoDatabaseTypes(std::vector<std::string>& types) { return m_creators.Keys(types); }

ZelGeoDatabaseBase* ZelGeoDatabaseBaseList::Create(const std::string& type) {
  std::unique_ptr<ZelGeoDatabaseBase> database(m_creators.Create(type));
  // Kept: asked anew each time, and of databases only; the other two registries hand out what their creators make.
  if (database == nullptr || !database->IsReady()) return nullptr;
  return database.release();
}
