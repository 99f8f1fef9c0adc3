// A coordinate system that a plug-in offers by name and arguments: chosen by its code, asked for positions, connected with another
// system. Neighbours: ZelGeoCoordSysBase.h for the numbered contract below it and ZelGeoCoordSysList.h for where one comes from;
// GeoDatabase.h for what systems there are, GeoStaticData.h for ellipsoids and units; docs/geodesy-proj.md for the plug-in on PROJ.
//
//   const std::unique_ptr<ZelGeoCoordSysBase> base(ZelGeoCoordSysList::GetCoordSysList().Create("PROJ"));
//   GeoCoordSys* const system = dynamic_cast<GeoCoordSys*>(base.get());
//   if (system == nullptr || !system->Select("EPSG:32631")) return false;   // system->Reason() says why
//   double easting = 0.0, northing = 0.0;
//   system->Forward(52.5, 4.25, easting, northing);
//
// Latitudes and longitudes are degrees, north and east positive, as GeographicText.h writes and reads them. x goes to the east
// and y to the north whatever the system's own order and direction of axes is. Texts are 8-bit, Windows-1252.
#pragma once

#include <string>

#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/platform/ZelBaseApi.h"

// Fixed values: they are stored.
enum class GeoCoordSysKind : int {
  None = 0,        // nothing selected
  Geographic = 1,  // latitudes and longitudes
  Projected = 2    // eastings and northings
};

// Where something is meant to be used: a name, and degrees of longitude and latitude. An area across the 180th meridian has
// `west` above `east`. Without bounds `hasBounds` is false and they are 0.
struct GeoArea {
  std::string name;
  bool hasBounds = false;
  double west = 0.0, south = 0.0, east = 0.0, north = 0.0;

  // Whether a position lies in it, its edge included; true without bounds. The longitude may be given within -360 to 360.
  bool Contains(double latitude, double longitude) const {
    if (!hasBounds) return true;
    if (!(latitude >= south && latitude <= north)) return false;
    for (const double turn : {0.0, -360.0, 360.0}) {
      const double turned = longitude + turn;
      const bool fromWest = turned >= west && turned <= 180.0, toEast = turned <= east && turned >= -180.0;
      if (west <= east ? fromWest && toEast : fromWest || toEast) return true;
    }
    return false;
  }
};

// How positions were carried to the target. `accuracy` is metres, as the operation's maker states it; negative when unknown.
struct GeoConversionInfo {
  std::string description;
  double accuracy = -1.0;
};

// One coordinate system, and at will a second one that positions are carried to. The operations come behind the numbered ones.
//
// What fails gives false, leaves its outputs as they were and prints nothing. Every position is safe to ask for: what is not
// finite, a latitude beyond 90 degrees, a longitude beyond 360, and where the projection is not defined, is false. A position
// far off the area of use is projected as long as the formula holds, and is then of little worth: see GetAreaOfUse.
//
// One thread at a time for each object; different objects are independent. Not copyable.
class ZELBASE_API GeoCoordSys : public SpareGeoCoordSys {
 public:
  GeoCoordSys() = default;
  ~GeoCoordSys() override;
  GeoCoordSys(const GeoCoordSys&) = delete;
  GeoCoordSys& operator=(const GeoCoordSys&) = delete;

  // Chooses the system by "AUTHORITY:CODE" ("EPSG:32631"), in either case of letters, or by a definition in a form that the
  // plug-in names. Of a system with heights the horizontal part counts. False when there is none such, or it is neither
  // geographic nor projected: the system chosen before stays, and its target. A success drops the target.
  virtual bool Select(const std::string& code) = 0;

  // Why the last Select or SelectTarget failed, as a person reads it; empty after a success and before the first.
  virtual std::string Reason() = 0;

  // "EPSG:32631"; empty before a selection, and for a definition without a code.
  virtual std::string Code() = 0;

  // "WGS 84 / UTM zone 31N"; empty before a selection.
  virtual std::string Name() = 0;

  virtual GeoCoordSysKind Kind() = 0;

  // Name of the unit of eastings and northings, or of longitudes and latitudes: "metre", "US survey foot", "degree". Empty
  // before a selection. The factor of a linear unit is GetLinearUnit's: metres a unit, and 1.0 for a geographic system,
  // whose heights are metres; false, with the factor untouched, before a selection.
  virtual std::string UnitName() = 0;

  // Radians a unit of a geographic system's longitudes and latitudes. False for a projected one.
  virtual bool GetAngularUnit(double& unit) = 0;

  // Where the system is meant to be used. False when nothing is known of it.
  virtual bool GetAreaOfUse(GeoArea& area) = 0;

  // From latitude and longitude on the system's own datum, from Greenwich, to its easting and northing in its own unit. For a
  // geographic system these are longitude and latitude in its own unit, from its own prime meridian.
  virtual bool Forward(double latitude, double longitude, double& easting, double& northing) = 0;

  // Back from easting and northing. The longitude comes within -180 to 180.
  virtual bool Inverse(double easting, double northing, double& latitude, double& longitude) = 0;

  // Chooses the system that Convert carries positions to, as Select does. False also without a selected system, and when no way
  // is known from this system's datum to that one's: a shift is never passed over in silence. The former target stays then.
  virtual bool SelectTarget(const std::string& code) = 0;

  // From the system's easting and northing (x, y of Forward) to the target's. False without a target.
  virtual bool Convert(double easting, double northing, double& targetEasting, double& targetNorthing) = 0;

  // How the last position that Convert carried over went; different regions may go different ways. False when there is none.
  virtual bool GetConversionInfo(GeoConversionInfo& info) = 0;
};
