// The plug-in's one export, and what it registers: "PROJ" in each of the three registries, and two geoid models. Neighbours:
// zelbase/geodesy/ZelGeoCoordSysLoader.h, which calls it; exports.map, which keeps everything else inside.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "adapters/geodesy-proj/ProjCoordSys.h"
#include "adapters/geodesy-proj/ProjDatabase.h"
#include "adapters/geodesy-proj/ProjGeoidModel.h"
#include "adapters/geodesy-proj/ProjStaticData.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/geodesy/GeoDatabaseICreator.h"
#include "zelbase/geodesy/GeoStaticICreator.h"
#include "zelbase/geodesy/GeoidModelICreator.h"
#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/ZelCoordSysICreator.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

namespace {

using zelbase::detail::ProjCoordSys;
using zelbase::detail::ProjDatabase;
using zelbase::detail::ProjGeoidModel;
using zelbase::detail::ProjStaticData;

constexpr char kType[] = "PROJ";
constexpr unsigned short kSatellitePositions = 3;  // "Grid Model(Satellite coordinates)"
constexpr unsigned short kGridPositions = 15;      // "Grid Model(Grid coordinates)"

class CoordSysCreator final : public ZelCoordSysICreator {
 public:
  ZelGeoCoordSysBase* Create() override { return new ProjCoordSys; }
};

class DatabaseCreator final : public GeoDatabaseICreator {
 public:
  ZelGeoDatabaseBase* Create() override { return new ProjDatabase; }
};

class StaticDataCreator final : public GeoStaticICreator {
 public:
  ZelGeoStaticDataBase* Create() override { return new ProjStaticData; }
};

class GeoidModelCreator final : public GeoidModelICreator {
 public:
  explicit GeoidModelCreator(ProjGeoidModel::Positions positions) : m_positions(positions) {}
  GeoidModel* Create() override { return new ProjGeoidModel(m_positions); }

 private:
  ProjGeoidModel::Positions m_positions;
};

bool IsFree(const std::vector<std::string>& types) { return std::find(types.begin(), types.end(), kType) == types.end(); }

// The registries keep the first creator of a type and leave a second one to its maker, so that none is made for a taken type.
void RegisterSystems() {
  std::vector<std::string> types;
  ZelGeoCoordSysList& systems = ZelGeoCoordSysList::GetCoordSysList();
  systems.GetCoordSysTypes(types);
  if (IsFree(types)) systems.RegisterGeoCoordSys(kType, new CoordSysCreator);
  ZelGeoDatabaseBaseList& databases = ZelGeoDatabaseBaseList::GetGeoDatabaseList();
  databases.GetGeoDatabaseTypes(types);
  if (IsFree(types)) databases.RegisterGeoDatabase(kType, new DatabaseCreator);
  ZelGeoStaticDatabaseList& data = ZelGeoStaticDatabaseList::GetGeoStaticDataList();
  data.GetGeoStaticTypes(types);
  if (IsFree(types)) data.RegisterGeoStaicDatabase(kType, new StaticDataCreator);
}

// The map by type owns: a model whose type is taken is not registered.
void RegisterModel(unsigned short type, ProjGeoidModel::Positions positions) {
  GeoidModelList& models = GeoidModelList::GetGeoidModelList();
  if (std::unique_ptr<GeoidModel>(models.Create(type)) != nullptr) return;
  models.RegisterGeoidModel(GeoidmodelTypeKeys[type], type, new GeoidModelCreator(positions));
}

}  // namespace

// May be called any number of times. Start-up only, as every registration: one thread.
extern "C" __attribute__((visibility("default"))) void RegisterCoordSys() {
  RegisterSystems();
  RegisterModel(kSatellitePositions, ProjGeoidModel::Positions::Satellite);
  RegisterModel(kGridPositions, ProjGeoidModel::Positions::Grid);
}
