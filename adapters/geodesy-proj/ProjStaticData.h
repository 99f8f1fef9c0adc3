// Ellipsoids, units and prime meridians of PROJ's database. Neighbours: zelbase/geodesy/GeoStaticData.h, the interface;
// ProjDatabase.h, which lists systems and datums; ProjContext.h below.
#pragma once

#include <string>
#include <vector>

#include "adapters/geodesy-proj/ProjContext.h"
#include "zelbase/geodesy/GeoStaticData.h"

namespace zelbase::detail {

// The database is read at the first question for each list, and kept by the object.
class ProjStaticData final : public GeoStaticData {
 public:
  int GetEllipsoids(std::vector<GeoEllipsoid>& ellipsoids) override;
  bool FindEllipsoid(const std::string& name, GeoEllipsoid& ellipsoid) override;
  int GetLinearUnits(std::vector<GeoUnit>& units) override;
  bool FindLinearUnit(const std::string& name, GeoUnit& unit) override;
  int GetAngularUnits(std::vector<GeoUnit>& units) override;
  bool FindAngularUnit(const std::string& name, GeoUnit& unit) override;
  int GetPrimeMeridians(std::vector<GeoPrimeMeridian>& meridians) override;
  bool FindPrimeMeridian(const std::string& name, GeoPrimeMeridian& meridian) override;

 private:
  const std::vector<GeoEllipsoid>& Ellipsoids();
  const std::vector<GeoUnit>& LinearUnits();
  const std::vector<GeoUnit>& AngularUnits();
  const std::vector<GeoPrimeMeridian>& Meridians();

  ProjContext m_context;
  std::vector<GeoEllipsoid> m_ellipsoids;
  std::vector<GeoUnit> m_linearUnits, m_angularUnits;
  std::vector<GeoPrimeMeridian> m_meridians;
};

}  // namespace zelbase::detail
