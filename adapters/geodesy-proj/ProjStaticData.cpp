#include "adapters/geodesy-proj/ProjStaticData.h"

#include "adapters/geodesy-proj/ProjEntries.h"

namespace zelbase::detail {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;  // in radians

std::vector<GeoEllipsoid> ReadEllipsoids(const ProjContext& context) {
  return EntriesOf<GeoEllipsoid>(context, PJ_TYPE_ELLIPSOID, PJ_CATEGORY_ELLIPSOID, [&context](const PJ* object, GeoEllipsoid& ellipsoid) {
    return proj_ellipsoid_get_parameters(context.Get(), object, &ellipsoid.semiMajor, &ellipsoid.semiMinor, nullptr,
                                         &ellipsoid.inverseFlattening) != 0;
  });
}

std::vector<GeoPrimeMeridian> ReadMeridians(const ProjContext& context) {
  return EntriesOf<GeoPrimeMeridian>(context, PJ_TYPE_PRIME_MERIDIAN, PJ_CATEGORY_PRIME_MERIDIAN,
                                     [&context](const PJ* object, GeoPrimeMeridian& meridian) {
                                       double longitude = 0.0, unit = kDegree;
                                       if (!proj_prime_meridian_get_parameters(context.Get(), object, &longitude, &unit, nullptr))
                                         return false;
                                       meridian.longitude = longitude * (unit / kDegree);
                                       return true;
                                     });
}

std::vector<GeoUnit> ReadUnits(const ProjContext& context, const char* category) {
  std::vector<GeoUnit> units;
  int count = 0;
  PROJ_UNIT_INFO** const list = proj_get_units_from_database(context.Get(), nullptr, category, 1, &count);
  for (int i = 0; list != nullptr && i < count; ++i) {
    if (!(list[i]->conv_factor > 0.0)) continue;
    GeoUnit unit;
    unit.code = FromProj(list[i]->auth_name) + ":" + FromProj(list[i]->code);
    unit.name = FromProj(list[i]->name);
    unit.deprecated = list[i]->deprecated != 0;
    unit.factor = list[i]->conv_factor;
    units.push_back(std::move(unit));
  }
  proj_unit_list_destroy(list);
  SortEntries(units);
  return units;
}

template <class Entry>
int GiveOut(const std::vector<Entry>& entries, std::vector<Entry>& result) {
  result = entries;
  return static_cast<int>(entries.size());
}

// The first one with this code or whole name that is not deprecated; otherwise the first one that is.
template <class Entry>
bool Find(const std::vector<Entry>& entries, const std::string& name, Entry& result) {
  const std::string wanted = LowerCase(name);
  const Entry* found = nullptr;
  for (const Entry& entry : entries) {
    if (LowerCase(entry.code) != wanted && LowerCase(entry.name) != wanted) continue;
    if (found == nullptr || (found->deprecated && !entry.deprecated)) found = &entry;
  }
  if (found == nullptr) return false;
  result = *found;
  return true;
}

}  // namespace

const std::vector<GeoEllipsoid>& ProjStaticData::Ellipsoids() {
  if (m_ellipsoids.empty()) m_ellipsoids = ReadEllipsoids(m_context);
  return m_ellipsoids;
}

const std::vector<GeoUnit>& ProjStaticData::LinearUnits() {
  if (m_linearUnits.empty()) m_linearUnits = ReadUnits(m_context, "linear");
  return m_linearUnits;
}

const std::vector<GeoUnit>& ProjStaticData::AngularUnits() {
  if (m_angularUnits.empty()) m_angularUnits = ReadUnits(m_context, "angular");
  return m_angularUnits;
}

const std::vector<GeoPrimeMeridian>& ProjStaticData::Meridians() {
  if (m_meridians.empty()) m_meridians = ReadMeridians(m_context);
  return m_meridians;
}

int ProjStaticData::GetEllipsoids(std::vector<GeoEllipsoid>& ellipsoids) { return GiveOut(Ellipsoids(), ellipsoids); }
int ProjStaticData::GetLinearUnits(std::vector<GeoUnit>& units) { return GiveOut(LinearUnits(), units); }
int ProjStaticData::GetAngularUnits(std::vector<GeoUnit>& units) { return GiveOut(AngularUnits(), units); }
int ProjStaticData::GetPrimeMeridians(std::vector<GeoPrimeMeridian>& meridians) { return GiveOut(Meridians(), meridians); }

bool ProjStaticData::FindEllipsoid(const std::string& name, GeoEllipsoid& ellipsoid) { return Find(Ellipsoids(), name, ellipsoid); }
bool ProjStaticData::FindLinearUnit(const std::string& name, GeoUnit& unit) { return Find(LinearUnits(), name, unit); }
bool ProjStaticData::FindAngularUnit(const std::string& name, GeoUnit& unit) { return Find(AngularUnits(), name, unit); }
bool ProjStaticData::FindPrimeMeridian(const std::string& name, GeoPrimeMeridian& meridian) { return Find(Meridians(), name, meridian); }

}  // namespace zelbase::detail
