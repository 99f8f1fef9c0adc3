// A geodesy plug-in for the tests of the loader: one creator for each registry, and a count of the calls of its export.
#include <string>

#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/geodesy/SpareGeoDatabase.h"
#include "zelbase/geodesy/SpareGeoStaticData.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

int g_calls = 0;

class FootSystem : public SpareGeoCoordSys {
 public:
  bool GetLinearUnit(double& factor) override {
    factor = 0.3048;
    return true;
  }
  bool Operation66() override { return true; }
};
class Database : public SpareGeoDatabase {
 public:
  bool IsReady() override { return true; }
};
class Model : public GeoidModel {
 public:
  bool IsReady() override { return m_linearUnit == 0.3048; }
};

template <class Creator, class Product, class Class>
class Making : public Creator {
 public:
  Product* Create() override { return new Class; }
};

}  // namespace

PLUGIN_EXPORT void RegisterCoordSys() {
  if (++g_calls > 1) return;
  ZelGeoCoordSysList::GetCoordSysList().RegisterGeoCoordSys("plug-in system",
                                                            new Making<ZelCoordSysICreator, ZelGeoCoordSysBase, FootSystem>);
  ZelGeoDatabaseBaseList::GetGeoDatabaseList().RegisterGeoDatabase("plug-in database",
                                                                   new Making<GeoDatabaseICreator, ZelGeoDatabaseBase, Database>);
  ZelGeoStaticDatabaseList::GetGeoStaticDataList().RegisterGeoStaicDatabase(
      "plug-in data", new Making<GeoStaticICreator, ZelGeoStaticDataBase, SpareGeoStaticData>);
  GeoidModelList::GetGeoidModelList().RegisterGeoidModel("plug-in model", 4711, new Making<GeoidModelICreator, GeoidModel, Model>);
}

PLUGIN_EXPORT int CallsOfRegisterCoordSys() { return g_calls; }
