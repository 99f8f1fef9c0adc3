// The registry of geodetic databases: the geodesy plug-in registers a creator for a type name, modules ask for an object of
// that type. Neighbours: GeoDatabaseICreator.h for what is registered, ZelGeoDatabaseBase.h for what comes out,
// ZelGeoCoordSysLoader.h, which brings the plug-in in.
#pragma once

#include <string>
#include <vector>

#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/geodesy/GeoDatabaseICreator.h"
#include "zelbase/geodesy/ZelGeoDatabaseBase.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its creators: each is destroyed once, with the last name or list that has it. Copies share: they name the same
// creators. Type names are compared case-sensitively.
//
//   ZelGeoDatabaseBaseList::GetGeoDatabaseList().RegisterGeoDatabase("BM", new BmCreator);  // the plug-in
//   auto& list = ZelGeoDatabaseBaseList::GetGeoDatabaseList();
//   std::unique_ptr<ZelGeoDatabaseBase> database(list.Create("BM"));  // later
//
// Nothing is locked but the first GetGeoDatabaseList: registration belongs to the start, when one thread runs. After it any
// number of threads may create, as far as the creators allow it.
class ZELBASE_API ZelGeoDatabaseBaseList {
 public:
  ZelGeoDatabaseBaseList() = default;
  ZelGeoDatabaseBaseList(const ZelGeoDatabaseBaseList&) = default;
  ZelGeoDatabaseBaseList& operator=(const ZelGeoDatabaseBaseList&) = default;

  virtual ~ZelGeoDatabaseBaseList();

  // The one registry, made at first use. At process exit its creators are destroyed, which needs their code still loaded.
  // Other destructors at exit may still ask for it.
  static ZelGeoDatabaseBaseList& GetGeoDatabaseList();

  // Stores the creator under `type` and owns it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it serves another type already. The first one of a type wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. A null creator is ignored. One creator may serve several types.
  void RegisterGeoDatabase(std::string type, GeoDatabaseICreator* creator);

  // Takes the type out and destroys its creator, unless another type or registry still has it. False for an unknown type.
  bool UnRegisterGeoDatabase(std::string type);

  // Empties `types`, fills it with the registered types in ascending order (by bytes) and gives their number.
  int GetGeoDatabaseTypes(std::vector<std::string>& types);

  // A new database that is ready, which the caller owns. Null when the type is not registered, when its creator gives none,
  // or when the database says that it is not ready: then it is destroyed again. It is asked anew each time, and only
  // databases are asked, neither coordinate systems nor static data. A creator that takes its own type out meanwhile is
  // destroyed when it has finished; what it or the database throws passes, without the database.
  ZelGeoDatabaseBase* Create(const std::string& type);

 private:
  zelbase::detail::CreatorMap<std::string, GeoDatabaseICreator> m_creators;
};
