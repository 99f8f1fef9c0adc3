// Figures that geodesy rests on and that never change: ellipsoids, units, prime meridians. Neighbours: ZelGeoStaticDataBase.h for the
// numbered contract below it; GeoDatabase.h, which lists what there is; GeoCoordSys.h, which computes with them.
#pragma once

#include <string>
#include <vector>

#include "zelbase/geodesy/GeoDatabase.h"
#include "zelbase/geodesy/SpareGeoStaticData.h"
#include "zelbase/platform/ZelBaseApi.h"

// Half axes in metres; the inverse flattening is 0 for a sphere.
struct GeoEllipsoid : GeoEntry {
  double semiMajor = 0.0;
  double semiMinor = 0.0;
  double inverseFlattening = 0.0;
};

// `factor` is metres or radians a unit.
struct GeoUnit : GeoEntry {
  double factor = 0.0;
};

// `longitude` is degrees east of Greenwich.
struct GeoPrimeMeridian : GeoEntry {
  double longitude = 0.0;
};

// A name is looked for as a code ("EPSG:7030") or as the whole name ("WGS 84"), in either case of letters A to Z; one that is not
// deprecated wins. What is not found is false, the output untouched. Lists come as GeoDatabase gives them, of every
// authority; a unit without a fixed factor (degrees, minutes and seconds as one number) is in none. One thread at a time for each object.
class ZELBASE_API GeoStaticData : public SpareGeoStaticData {
 public:
  GeoStaticData() = default;
  ~GeoStaticData() override;
  GeoStaticData(const GeoStaticData&) = delete;
  GeoStaticData& operator=(const GeoStaticData&) = delete;

  virtual int GetEllipsoids(std::vector<GeoEllipsoid>& ellipsoids) = 0;
  virtual bool FindEllipsoid(const std::string& name, GeoEllipsoid& ellipsoid) = 0;

  virtual int GetLinearUnits(std::vector<GeoUnit>& units) = 0;
  virtual bool FindLinearUnit(const std::string& name, GeoUnit& unit) = 0;

  virtual int GetAngularUnits(std::vector<GeoUnit>& units) = 0;
  virtual bool FindAngularUnit(const std::string& name, GeoUnit& unit) = 0;

  virtual int GetPrimeMeridians(std::vector<GeoPrimeMeridian>& meridians) = 0;
  virtual bool FindPrimeMeridian(const std::string& name, GeoPrimeMeridian& meridian) = 0;
};
