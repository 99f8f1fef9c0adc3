#include "adapters/geodesy-proj/ProjCoordSys.h"

#include <cmath>
#include <exception>
#include <string_view>
#include <utility>

namespace zelbase::detail {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegree = kPi / 180.0;  // in radians
constexpr double kMostLatitude = 90.0;
constexpr double kMostLongitude = 360.0;
constexpr double kRounding = 1e-9;  // degrees that an inverse at a pole may be off
constexpr std::size_t kLongestDefinition = 1 << 16;
constexpr double kUnknown = -1000.0;  // PROJ's bound of an area without bounds

// How PROJ's pair, with an east-west axis in front as far as it can tell, lies to x east and y north.
struct AxisTurn {
  bool swap = false;
  double signX = 1.0, signY = 1.0;

  // To x and y, and back.
  PJ_COORD Out(PJ_COORD pair) const {
    if (swap) std::swap(pair.xy.x, pair.xy.y);
    return proj_coord(signX * pair.xy.x, signY * pair.xy.y, 0, 0);
  }
  PJ_COORD In(double x, double y) const {
    PJ_COORD pair = proj_coord(signX * x, signY * y, 0, 0);
    if (swap) std::swap(pair.xy.x, pair.xy.y);
    return pair;
  }
};

struct Axis {
  std::string direction;
  std::string unit;
  double factor = 1.0;
};

struct Axes {
  Axis first, second;
};

bool IsFinite(PJ_COORD pair) { return std::isfinite(pair.xy.x) && std::isfinite(pair.xy.y); }

bool IsPosition(double latitude, double longitude) {
  return std::abs(latitude) <= kMostLatitude && std::abs(longitude) <= kMostLongitude;  // false for NaN
}

// Into -180 to 180.
double Wrapped(double longitude) { return std::abs(longitude) > 180.0 ? std::remainder(longitude, 360.0) : longitude; }

bool ReadAxis(const ProjContext& context, const PJ* axes, int index, Axis& axis) {
  const char *direction = nullptr, *unit = nullptr;
  if (!proj_cs_get_axis_info(context.Get(), axes, index, nullptr, nullptr, &direction, &axis.factor, &unit, nullptr, nullptr)) return false;
  axis.direction = direction != nullptr ? direction : "";
  axis.unit = FromProj(unit);
  return axis.factor > 0.0;
}

bool ReadAxes(const ProjContext& context, const PJ* system, Axes& axes) {
  const PjPointer list(proj_crs_get_coordinate_system(context.Get(), system));
  return list != nullptr && ReadAxis(context, list.get(), 0, axes.first) && ReadAxis(context, list.get(), 1, axes.second);
}

bool IsEastWest(const Axis& axis) { return axis.direction == "east" || axis.direction == "west"; }
bool IsNorthSouth(const Axis& axis) { return axis.direction == "north" || axis.direction == "south"; }

// Where both axes point the same way, as around a pole, they stand in their order, x first.
AxisTurn TurnOf(const Axes& axes) {
  AxisTurn turn;
  turn.swap = IsNorthSouth(axes.first) && IsEastWest(axes.second);
  const Axis& x = turn.swap ? axes.second : axes.first;
  const Axis& y = turn.swap ? axes.first : axes.second;
  if (!IsEastWest(x) || !IsNorthSouth(y)) return turn;
  if (x.direction == "west") turn.signX = -1.0;
  if (y.direction == "south") turn.signY = -1.0;
  return turn;
}

// Degrees east of Greenwich.
double MeridianOf(const ProjContext& context, const PJ* system) {
  const PjPointer meridian(proj_get_prime_meridian(context.Get(), system));
  double longitude = 0.0, factor = kDegree;
  if (meridian == nullptr || !proj_prime_meridian_get_parameters(context.Get(), meridian.get(), &longitude, &factor, nullptr)) return 0.0;
  return longitude == 0.0 ? 0.0 : longitude * (factor / kDegree);
}

// Whether PROJ has the formulas of a projected system. Where it has not, it makes an operation all the same, which never answers.
bool IsComputable(const ProjContext& context, const PJ* system) {
  const PjPointer projection(proj_crs_get_coordoperation(context.Get(), system));
  return projection != nullptr && proj_coordoperation_is_instantiable(context.Get(), projection.get()) != 0;
}

// A definition could have PROJ open any file by these words, a pipe even, which never ends.
bool NamesFiles(const std::string& definition) {
  const std::string text = LowerCase(definition);
  for (const char* const word : {"grids", "init=", "parameterfile", "extension", "model="}) {
    if (text.find(word) != std::string::npos) return true;
  }
  return false;
}

GeoCoordSysKind KindOf(PJ_TYPE type) {
  if (type == PJ_TYPE_PROJECTED_CRS) return GeoCoordSysKind::Projected;
  const bool geographic = type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
  return geographic ? GeoCoordSysKind::Geographic : GeoCoordSysKind::None;
}

std::string Quoted(const std::string& text) {
  constexpr std::size_t kShown = 60;
  return "\"" + (text.size() > kShown ? text.substr(0, kShown) + "..." : text) + "\"";
}

}  // namespace

// A system as it was chosen, with all that the answers need.
struct ProjCoordSys::System {
  std::string code, name, unit;
  GeoCoordSysKind kind = GeoCoordSysKind::None;
  GeoArea area;
  bool hasArea = false;
  PjPointer horizontal;  // what conversions go from and to
  PjPointer fromBase;    // from the datum's longitude and latitude
  AxisTurn turn;
  double factor = 1.0;        // metres or radians a unit
  double baseUnit = kDegree;  // radians a unit of the datum's longitude and latitude
  double baseMeridian = 0.0;  // degrees east of Greenwich

  double ToBase(double degrees) const { return baseUnit == kDegree ? degrees : degrees * (kDegree / baseUnit); }
  double FromBase(double units) const { return baseUnit == kDegree ? units : units * (baseUnit / kDegree); }

  // Whether a longitude and latitude of a geographic system are on the globe.
  bool Takes(double x, double y) const {
    if (!std::isfinite(x) || !std::isfinite(y)) return false;
    return kind != GeoCoordSysKind::Geographic || IsPosition(y * (factor / kDegree), x * (factor / kDegree));
  }
};

ProjCoordSys::ProjCoordSys() = default;
ProjCoordSys::~ProjCoordSys() = default;

// ---- choosing ----

bool ProjCoordSys::Select(const std::string& code) {
  std::unique_ptr<System> system = MakeSystem(code);
  if (system == nullptr) return false;
  m_reason.clear();
  m_toTarget.reset();
  m_target.reset();
  m_converted = false;
  m_system = std::move(system);
  return true;
}

bool ProjCoordSys::SelectTarget(const std::string& code) {
  if (m_system == nullptr) {
    m_reason = "no coordinate system has been selected";
    return false;
  }
  std::unique_ptr<System> target = MakeSystem(code);
  if (target == nullptr) return false;
  PjPointer operation = MakeOperation(m_system->horizontal.get(), target->horizontal.get());
  if (operation == nullptr) {
    m_reason = "no way is known from \"" + m_system->name + "\" to \"" + target->name + "\"";
    return false;
  }
  m_reason.clear();
  m_target = std::move(target);
  m_toTarget = std::move(operation);
  m_converted = false;
  return true;
}

// Sets the reason, in the suite's characters.
std::nullptr_t ProjCoordSys::Refuse(const std::string& reason) {
  m_reason = reason;
  return nullptr;
}

// The object of a code or a definition; null, with the reason set, when it is none.
PjPointer ProjCoordSys::MakeObject(const std::string& text) {
  if (text.empty()) return Refuse("no code was given");
  if (text.size() > kLongestDefinition) return Refuse("the definition is longer than 64 KiB");
  if (text.find('\0') != std::string::npos) return Refuse("there is a zero byte in the code");
  std::string authority, code;
  if (SplitCode(text, authority, code)) {
    PjPointer object(proj_create_from_database(m_context.Get(), authority.c_str(), code.c_str(), PJ_CATEGORY_CRS, 0, nullptr));
    if (object == nullptr) return Refuse("there is no coordinate system " + Quoted(text));
    return object;
  }
  const bool isProj = text.find("+proj=") != std::string::npos, isWkt = text.find('[') != std::string::npos;
  if (!isProj && !isWkt) return Refuse(Quoted(text) + " is not a code like EPSG:32631");
  if (NamesFiles(text)) return Refuse("a definition may not name files");
  std::string definition = ToProj(text);
  if (!isWkt && definition.find("type=crs") == std::string::npos) definition += " +type=crs";
  m_context.TakeMessage();
  PjPointer object(isWkt ? proj_create_from_wkt(m_context.Get(), definition.c_str(), nullptr, nullptr, nullptr)
                         : proj_create(m_context.Get(), definition.c_str()));
  if (object == nullptr) return Refuse(Quoted(text) + " is not understood: " + FromProj(m_context.TakeMessage().c_str()));
  return object;
}

// Pairs go in and come out with longitude or easting first. Never by a mere guess from one datum to another.
PjPointer ProjCoordSys::MakeOperation(const PJ* from, const PJ* to) {
  const char* const options[] = {"ALLOW_BALLPARK=NO", nullptr};
  const PjPointer operation(proj_create_crs_to_crs_from_pj(m_context.Get(), from, to, nullptr, options));
  return PjPointer(operation != nullptr ? proj_normalize_for_visualization(m_context.Get(), operation.get()) : nullptr);
}

std::unique_ptr<ProjCoordSys::System> ProjCoordSys::MakeSystem(const std::string& code) try {
  PJ_CONTEXT* const context = m_context.Get();
  const PjPointer whole = MakeObject(code);
  if (whole == nullptr) return nullptr;
  auto system = std::make_unique<System>();
  const bool compound = proj_get_type(whole.get()) == PJ_TYPE_COMPOUND_CRS;
  system->horizontal.reset(compound ? proj_crs_get_sub_crs(context, whole.get(), 0) : proj_clone(context, whole.get()));
  // A system bound to another by parameters of its own is, for its own datum, the system inside.
  const bool bound = proj_get_type(system->horizontal.get()) == PJ_TYPE_BOUND_CRS;
  const PjPointer own(bound ? proj_get_source_crs(context, system->horizontal.get()) : proj_clone(context, system->horizontal.get()));
  system->kind = own != nullptr ? KindOf(proj_get_type(own.get())) : GeoCoordSysKind::None;
  system->name = FromProj(proj_get_name(whole.get()));
  if (system->kind == GeoCoordSysKind::None) return Refuse(Quoted(code) + " (" + system->name + ") is neither geographic nor projected");

  const PjPointer base(proj_crs_get_geodetic_crs(context, own.get()));
  const PjPointer turned(proj_normalize_for_visualization(context, own.get()));
  Axes axes, baseAxes;
  if (base == nullptr || turned == nullptr || !ReadAxes(m_context, turned.get(), axes) || !ReadAxes(m_context, base.get(), baseAxes)) {
    return Refuse("the axes of " + Quoted(code) + " cannot be read");
  }
  const bool computable = system->kind == GeoCoordSysKind::Geographic || IsComputable(m_context, own.get());
  if (computable) system->fromBase = MakeOperation(base.get(), own.get());
  if (system->fromBase == nullptr) return Refuse(Quoted(code) + " (" + system->name + ") cannot be computed: its projection is not known");

  system->code = CodeOf(whole.get());
  system->turn = TurnOf(axes);
  system->unit = axes.first.unit;
  system->factor = axes.first.factor;
  if (std::abs(baseAxes.first.factor / kDegree - 1.0) > 1e-12) system->baseUnit = baseAxes.first.factor;
  system->baseMeridian = MeridianOf(m_context, base.get());
  GeoArea& area = system->area;
  const char* name = nullptr;
  system->hasArea = proj_get_area_of_use(context, whole.get(), &area.west, &area.south, &area.east, &area.north, &name) != 0;
  area.name = FromProj(name);
  area.hasBounds = system->hasArea && area.west > kUnknown && area.south > kUnknown;
  if (!area.hasBounds) area.west = area.south = area.east = area.north = 0.0;
  return system;
} catch (const std::exception& fault) {
  return Refuse(Quoted(code) + " cannot be taken: " + fault.what());
}

// ---- answers ----

std::string ProjCoordSys::Reason() { return m_reason; }
std::string ProjCoordSys::Code() { return m_system != nullptr ? m_system->code : ""; }
std::string ProjCoordSys::Name() { return m_system != nullptr ? m_system->name : ""; }
GeoCoordSysKind ProjCoordSys::Kind() { return m_system != nullptr ? m_system->kind : GeoCoordSysKind::None; }
std::string ProjCoordSys::UnitName() { return m_system != nullptr ? m_system->unit : ""; }

bool ProjCoordSys::GetLinearUnit(double& factor) {
  if (m_system == nullptr) return false;
  factor = m_system->kind == GeoCoordSysKind::Projected ? m_system->factor : 1.0;
  return true;
}

bool ProjCoordSys::GetAngularUnit(double& unit) {
  if (Kind() != GeoCoordSysKind::Geographic) return false;
  unit = m_system->factor;
  return true;
}

bool ProjCoordSys::GetAreaOfUse(GeoArea& area) {
  if (m_system == nullptr || !m_system->hasArea) return false;
  area = m_system->area;
  return true;
}

// ---- positions ----

bool ProjCoordSys::Forward(double latitude, double longitude, double& easting, double& northing) {
  if (m_system == nullptr || !IsPosition(latitude, longitude)) return false;
  const double east = m_system->baseMeridian == 0.0 ? longitude : Wrapped(longitude - m_system->baseMeridian);
  const PJ_COORD pair = proj_coord(m_system->ToBase(east), m_system->ToBase(latitude), 0, 0);
  const PJ_COORD result = m_system->turn.Out(proj_trans(m_system->fromBase.get(), PJ_FWD, pair));
  if (!IsFinite(result)) return false;
  easting = result.xy.x;
  northing = result.xy.y;
  return true;
}

bool ProjCoordSys::Inverse(double easting, double northing, double& latitude, double& longitude) {
  if (m_system == nullptr || !m_system->Takes(easting, northing)) return false;
  const PJ_COORD result = proj_trans(m_system->fromBase.get(), PJ_INV, m_system->turn.In(easting, northing));
  if (!IsFinite(result)) return false;
  const double north = m_system->FromBase(result.xy.y);
  if (std::abs(north) > kMostLatitude + kRounding) return false;
  latitude = north;
  longitude = Wrapped(m_system->FromBase(result.xy.x) + m_system->baseMeridian);
  return true;
}

bool ProjCoordSys::Convert(double easting, double northing, double& targetEasting, double& targetNorthing) {
  if (m_toTarget == nullptr || !m_system->Takes(easting, northing)) return false;
  const PJ_COORD result = m_target->turn.Out(proj_trans(m_toTarget.get(), PJ_FWD, m_system->turn.In(easting, northing)));
  if (!IsFinite(result)) return false;
  m_converted = true;
  targetEasting = result.xy.x;
  targetNorthing = result.xy.y;
  return true;
}

bool ProjCoordSys::GetConversionInfo(GeoConversionInfo& info) {
  if (!m_converted) return false;
  const PjPointer operation(proj_trans_get_last_used_operation(m_toTarget.get()));
  if (operation == nullptr) return false;
  info.description = FromProj(proj_pj_info(operation.get()).description);
  info.accuracy = proj_coordoperation_get_accuracy(m_context.Get(), operation.get());
  return true;
}

}  // namespace zelbase::detail
