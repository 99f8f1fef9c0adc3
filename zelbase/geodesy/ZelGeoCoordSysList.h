// The registry of coordinate systems: the geodesy plug-in registers a creator for a type name, modules ask for an object of
// that type. Neighbours: ZelCoordSysICreator.h for what is registered, ZelGeoCoordSysBase.h for what comes out,
// ZelGeoCoordSysLoader.h, which brings the plug-in in.
#pragma once

#include <string>
#include <vector>

#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/geodesy/ZelCoordSysICreator.h"
#include "zelbase/geodesy/ZelGeoCoordSysBase.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its creators: each is destroyed once, with the last name or list that has it. Copies share: they name the same
// creators. Type names are compared case-sensitively.
//
//   ZelGeoCoordSysList::GetCoordSysList().RegisterGeoCoordSys("UTM", new UtmCreator);         // the plug-in
//   std::unique_ptr<ZelGeoCoordSysBase> system(ZelGeoCoordSysList::GetCoordSysList().Create("UTM"));  // later
//
// Nothing is locked but the first GetCoordSysList: registration belongs to the start, when one thread runs. After it any
// number of threads may create, as far as the creators allow it.
class ZELBASE_API ZelGeoCoordSysList {
 public:
  ZelGeoCoordSysList() = default;
  ZelGeoCoordSysList(const ZelGeoCoordSysList&) = default;
  ZelGeoCoordSysList& operator=(const ZelGeoCoordSysList&) = default;

  virtual ~ZelGeoCoordSysList();

  // The one registry, made at first use. At process exit its creators are destroyed, which needs their code still loaded.
  // Other destructors at exit may still ask for it.
  static ZelGeoCoordSysList& GetCoordSysList();

  // Stores the creator under `type` and owns it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it serves another type already. The first one of a type wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. A null creator is ignored. One creator may serve several types.
  void RegisterGeoCoordSys(std::string type, ZelCoordSysICreator* creator);

  // Takes the type out and destroys its creator, unless another type or registry still has it. False for an unknown type.
  bool UnRegisterGeoCoordSys(std::string type);

  // Empties `types`, fills it with the registered types in ascending order (by bytes) and gives their number.
  int GetCoordSysTypes(std::vector<std::string>& types);

  // A new coordinate system, which the caller owns. Null when the type is not registered, or when its creator gives none.
  // A creator that takes its own type out meanwhile is destroyed when it has finished; what it throws passes.
  ZelGeoCoordSysBase* Create(const std::string& type);

 private:
  zelbase::detail::CreatorMap<std::string, ZelCoordSysICreator> m_creators;
};
