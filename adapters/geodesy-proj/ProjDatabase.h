// What PROJ's database lists. Neighbours: zelbase/geodesy/GeoDatabase.h, the interface; ProjStaticData.h, which gives the figures
// from the same database; ProjContext.h below.
#pragma once

#include <string>
#include <vector>

#include "adapters/geodesy-proj/ProjContext.h"
#include "zelbase/geodesy/GeoDatabase.h"

namespace zelbase::detail {

// The database is read at the first question for each list, and kept by the object.
class ProjDatabase final : public GeoDatabase {
 public:
  // Whether PROJ has found its database and can read it.
  bool IsReady() override;

  std::string EngineVersion() override;
  std::string DataVersion() override;
  std::string Location() override;
  int GetSystems(std::vector<GeoSystemInfo>& systems) override;
  int FindSystems(const std::string& text, std::vector<GeoSystemInfo>& systems) override;
  int GetDatums(std::vector<GeoEntry>& datums) override;
  int GetEllipsoids(std::vector<GeoEntry>& ellipsoids) override;

 private:
  const std::vector<GeoSystemInfo>& Systems();

  ProjContext m_context;
  std::vector<GeoSystemInfo> m_systems;
  std::vector<GeoEntry> m_datums, m_ellipsoids;
};

}  // namespace zelbase::detail
