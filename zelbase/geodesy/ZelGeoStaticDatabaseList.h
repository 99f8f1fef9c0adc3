// The registry of static geodetic data: the geodesy plug-in registers a creator for a type name, modules ask for an object of
// that type. Neighbours: GeoStaticICreator.h for what is registered, ZelGeoStaticDataBase.h for what comes out,
// ZelGeoCoordSysLoader.h, which brings the plug-in in.
#pragma once

#include <string>
#include <vector>

#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/geodesy/GeoStaticICreator.h"
#include "zelbase/geodesy/ZelGeoStaticDataBase.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its creators: each is destroyed once, with the last name or list that has it. Copies share: they name the same
// creators. Type names are compared case-sensitively.
//
//   ZelGeoStaticDatabaseList::GetGeoStaticDataList().RegisterGeoStaicDatabase("BM", new BmCreator);  // the plug-in
//   auto& list = ZelGeoStaticDatabaseList::GetGeoStaticDataList();
//   std::unique_ptr<ZelGeoStaticDataBase> data(list.Create("BM"));  // later
//
// Nothing is locked but the first GetGeoStaticDataList: registration belongs to the start, when one thread runs. After it any
// number of threads may create, as far as the creators allow it.
class ZELBASE_API ZelGeoStaticDatabaseList {
 public:
  ZelGeoStaticDatabaseList() = default;
  ZelGeoStaticDatabaseList(const ZelGeoStaticDatabaseList&) = default;
  ZelGeoStaticDatabaseList& operator=(const ZelGeoStaticDatabaseList&) = default;

  virtual ~ZelGeoStaticDatabaseList();

  // The one registry, made at first use. At process exit its creators are destroyed, which needs their code still loaded.
  // Other destructors at exit may still ask for it.
  static ZelGeoStaticDatabaseList& GetGeoStaticDataList();

  // Stores the creator under `type` and owns it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it serves another type already. The first one of a type wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. A null creator is ignored. One creator may serve several types.
  // Kept: the misspelt name, which the plug-ins call.
  void RegisterGeoStaicDatabase(std::string type, GeoStaticICreator* creator);

  // Takes the type out and destroys its creator, unless another type or registry still has it. False for an unknown type.
  bool UnRegisterGeoStaicDatabase(std::string type);

  // Empties `types`, fills it with the registered types in ascending order (by bytes) and gives their number.
  int GetGeoStaticTypes(std::vector<std::string>& types);

  // A new store of static data, which the caller owns. Null when the type is not registered, or when its creator gives none.
  // A creator that takes its own type out meanwhile is destroyed when it has finished; what it throws passes.
  ZelGeoStaticDataBase* Create(const std::string& type);

 private:
  zelbase::detail::CreatorMap<std::string, GeoStaticICreator> m_creators;
};
