// A database of what a geodesy plug-in knows: coordinate systems, datums, ellipsoids. Neighbours: ZelGeoDatabaseBase.h for the
// numbered contract below it; GeoCoordSys.h, which selects by the codes listed here; GeoStaticData.h for figures.
//
//   const std::unique_ptr<ZelGeoDatabaseBase> base(ZelGeoDatabaseBaseList::GetGeoDatabaseList().Create("PROJ"));
//   std::vector<GeoSystemInfo> systems;
//   if (auto* const database = dynamic_cast<GeoDatabase*>(base.get())) database->FindSystems("utm zone 31", systems);
#pragma once

#include <string>
#include <vector>

#include "zelbase/geodesy/GeoCoordSys.h"
#include "zelbase/geodesy/SpareGeoDatabase.h"
#include "zelbase/platform/ZelBaseApi.h"

// A thing of the database under its code ("EPSG:7030") and name. A deprecated one has been replaced by another, and is kept
// for old data.
struct GeoEntry {
  std::string code;
  std::string name;
  bool deprecated = false;
};

struct GeoSystemInfo : GeoEntry {
  GeoCoordSysKind kind = GeoCoordSysKind::None;
  GeoArea area;
};

// The registry has asked IsReady already: a database that is not ready is never handed out by it.
//
// Lists are of the earth alone. They come sorted by authority and by number within; each call empties the list first
// and gives its size. A database that cannot be read gives 0. Texts are 8-bit, Windows-1252, with "?" for what that has no place for.
// One thread at a time for each object.
class ZELBASE_API GeoDatabase : public SpareGeoDatabase {
 public:
  GeoDatabase() = default;
  ~GeoDatabase() override;
  GeoDatabase(const GeoDatabase&) = delete;
  GeoDatabase& operator=(const GeoDatabase&) = delete;

  // What reads it, and whose data it holds: "PROJ 9.1.1", "EPSG v10.076".
  virtual std::string EngineVersion() = 0;
  virtual std::string DataVersion() = 0;

  // Where it lies, in the "\" form; empty when there is none.
  virtual std::string Location() = 0;

  // The geographic and projected systems of every authority, deprecated ones included, and those whose projection nobody here can
  // compute, which GeoCoordSys refuses.
  virtual int GetSystems(std::vector<GeoSystemInfo>& systems) = 0;

  // Those with every blank-parted word of `text` in their code, name or area, in either case of letters A to Z. Without words: all.
  virtual int FindSystems(const std::string& text, std::vector<GeoSystemInfo>& systems) = 0;

  virtual int GetDatums(std::vector<GeoEntry>& datums) = 0;
  virtual int GetEllipsoids(std::vector<GeoEntry>& ellipsoids) = 0;
};
