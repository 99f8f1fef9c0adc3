#include "adapters/geodesy-proj/ProjDatabase.h"

#include <algorithm>
#include <string_view>

#include "adapters/geodesy-proj/ProjEntries.h"

namespace zelbase::detail {
namespace {

GeoSystemInfo InfoOf(const PROJ_CRS_INFO& crs) {
  GeoSystemInfo info;
  info.code = FromProj(crs.auth_name) + ":" + FromProj(crs.code);
  info.name = FromProj(crs.name);
  info.deprecated = crs.deprecated != 0;
  info.kind = crs.type == PJ_TYPE_PROJECTED_CRS ? GeoCoordSysKind::Projected : GeoCoordSysKind::Geographic;
  info.area.name = FromProj(crs.area_name);
  info.area.hasBounds = crs.bbox_valid != 0;
  if (!info.area.hasBounds) return info;
  info.area.west = crs.west_lon_degree;
  info.area.south = crs.south_lat_degree;
  info.area.east = crs.east_lon_degree;
  info.area.north = crs.north_lat_degree;
  return info;
}

// A system with several uses is listed once for each: the areas become one.
void JoinAreas(GeoArea& area, const GeoArea& other) {
  if (!other.name.empty() && area.name.find(other.name) == std::string::npos) area.name += (area.name.empty() ? "" : "; ") + other.name;
  const bool plain = area.hasBounds && other.hasBounds && area.west <= area.east && other.west <= other.east;
  if (!plain) return;
  area.west = std::min(area.west, other.west);
  area.south = std::min(area.south, other.south);
  area.east = std::max(area.east, other.east);
  area.north = std::max(area.north, other.north);
}

// Takes neighbours of one code together.
void JoinUses(std::vector<GeoSystemInfo>& systems) {
  std::size_t kept = 0;
  for (std::size_t i = 1; i < systems.size(); ++i) {
    if (systems[i].code == systems[kept].code) {
      JoinAreas(systems[kept].area, systems[i].area);
    } else if (++kept != i) {
      systems[kept] = std::move(systems[i]);
    }
  }
  if (!systems.empty()) systems.resize(kept + 1);
}

std::vector<GeoSystemInfo> ReadSystems(const ProjContext& context) {
  const PJ_TYPE types[] = {PJ_TYPE_GEOGRAPHIC_2D_CRS, PJ_TYPE_GEOGRAPHIC_3D_CRS, PJ_TYPE_PROJECTED_CRS};
  PROJ_CRS_LIST_PARAMETERS* const parameters = proj_get_crs_list_parameters_create();
  parameters->types = types;
  parameters->typesCount = std::size(types);
  parameters->allow_deprecated = 1;
  parameters->celestial_body_name = "Earth";
  int count = 0;
  PROJ_CRS_INFO** const list = proj_get_crs_info_list_from_database(context.Get(), nullptr, parameters, &count);
  std::vector<GeoSystemInfo> systems;
  systems.reserve(static_cast<std::size_t>(count));
  for (int i = 0; list != nullptr && i < count; ++i) systems.push_back(InfoOf(*list[i]));
  proj_crs_info_list_destroy(list);
  proj_get_crs_list_parameters_destroy(parameters);
  SortEntries(systems);
  JoinUses(systems);
  return systems;
}

std::vector<std::string> WordsOf(const std::string& text) {
  constexpr std::string_view kBlanks = " \t\r\n\v\f";
  std::vector<std::string> words;
  const std::string lower = LowerCase(text);
  for (std::size_t begin = lower.find_first_not_of(kBlanks); begin != std::string::npos;) {
    const std::size_t end = std::min(lower.find_first_of(kBlanks, begin), lower.size());
    words.push_back(lower.substr(begin, end - begin));
    begin = lower.find_first_not_of(kBlanks, end);
  }
  return words;
}

bool HasWords(const GeoSystemInfo& system, const std::vector<std::string>& words) {
  const std::string text = LowerCase(system.code + '\n' + system.name + '\n' + system.area.name);
  return std::all_of(words.begin(), words.end(), [&text](const std::string& word) { return text.find(word) != std::string::npos; });
}

std::vector<GeoEntry> NamesOf(const ProjContext& context, PJ_TYPE type, PJ_CATEGORY category) {
  return EntriesOf<GeoEntry>(context, type, category, [](const PJ*, GeoEntry&) { return true; });
}

}  // namespace

bool ProjDatabase::IsReady() { return !m_context.DatabasePath().empty() && !m_context.Fact("DATABASE.LAYOUT.VERSION.MAJOR").empty(); }

std::string ProjDatabase::EngineVersion() { return std::string("PROJ ") + proj_info().version; }

std::string ProjDatabase::DataVersion() {
  const std::string version = m_context.Fact("EPSG.VERSION");
  return version.empty() ? "" : "EPSG " + version;
}

// An absolute path keeps its first "/".
std::string ProjDatabase::Location() {
  std::string path = m_context.DatabasePath();
  if (!path.empty()) std::replace(path.begin() + 1, path.end(), '/', '\\');
  return path;
}

const std::vector<GeoSystemInfo>& ProjDatabase::Systems() {
  if (m_systems.empty()) m_systems = ReadSystems(m_context);
  return m_systems;
}

int ProjDatabase::GetSystems(std::vector<GeoSystemInfo>& systems) {
  systems = Systems();
  return static_cast<int>(systems.size());
}

int ProjDatabase::FindSystems(const std::string& text, std::vector<GeoSystemInfo>& systems) {
  const std::vector<std::string> words = WordsOf(text);
  systems.clear();
  for (const GeoSystemInfo& system : Systems()) {
    if (HasWords(system, words)) systems.push_back(system);
  }
  return static_cast<int>(systems.size());
}

int ProjDatabase::GetDatums(std::vector<GeoEntry>& datums) {
  if (m_datums.empty()) m_datums = NamesOf(m_context, PJ_TYPE_GEODETIC_REFERENCE_FRAME, PJ_CATEGORY_DATUM);
  datums = m_datums;
  return static_cast<int>(datums.size());
}

int ProjDatabase::GetEllipsoids(std::vector<GeoEntry>& ellipsoids) {
  if (m_ellipsoids.empty()) m_ellipsoids = NamesOf(m_context, PJ_TYPE_ELLIPSOID, PJ_CATEGORY_ELLIPSOID);
  ellipsoids = m_ellipsoids;
  return static_cast<int>(ellipsoids.size());
}

}  // namespace zelbase::detail
