// Geodesy: what a plug-in does: it registers creators of its own coordinate systems, which the suite then
// makes by type.
#include <cstdio>
#include <memory>

#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/geodesy/ZelCoordSysICreator.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"

class LocalGrid : public SpareGeoCoordSys {
 public:
  bool GetLinearUnit(double& factor) override {
    factor = 0.3048;  // a grid in feet
    return true;
  }
};

class LocalGridCreator : public ZelCoordSysICreator {
 public:
  ZelGeoCoordSysBase* Create() override { return new LocalGrid; }
};

int main() {
  ZelGeoCoordSysList& list = ZelGeoCoordSysList::GetCoordSysList();
  list.RegisterGeoCoordSys("Local", new LocalGridCreator);  // the list's from now on

  const std::unique_ptr<ZelGeoCoordSysBase> system(list.Create("Local"));
  double factor = 0.0;
  if (system->GetLinearUnit(factor)) std::printf("a unit is %.4f m\n", factor);
  std::printf("unknown types give %s\n", list.Create("Elsewhere") == nullptr ? "null" : "something");
  std::printf("only one name loads a plug-in: %s\n", ZelGeoCoordSysLoader::Instance().LoadDLL("Another", nullptr) ? "loaded" : "no");
  return 0;
}

// Prints:
//   a unit is 0.3048 m
//   unknown types give null
//   only one name loads a plug-in: no
