#include "adapters/geodesy-proj/ProjGeoidModel.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace zelbase::detail {
namespace {

constexpr char kGridName[] = "zel-geoid-grid";

// Leads the grid's name within a definition to its file: a path of any characters cannot stand in a definition itself.
const char* FindGrid(PJ_CONTEXT*, const char* name, void* path) {
  return std::strcmp(name, kGridName) == 0 ? static_cast<const char*>(path) : nullptr;
}

// Only regular files: a pipe would be waited for.
bool IsFile(const std::string& path) {
  std::error_code fault;
  return path.find('\0') == std::string::npos && std::filesystem::is_regular_file(path, fault);
}

// A number of a .gtx file's header, which is big-endian.
template <class Number, class Bits>
Number NumberAt(const unsigned char* bytes) {
  Bits bits = 0;
  for (std::size_t i = 0; i < sizeof bits; ++i) bits = (bits << 8) | bytes[i];
  return std::bit_cast<Number>(bits);
}

bool IsStep(double degrees) { return degrees > 0.0 && degrees <= 180.0; }

// Whether a .gtx file holds as many values as its header says: PROJ believes the header, and makes room for a whole row. Other
// forms have their checks in PROJ.
bool HoldsItsValues(const std::string& path) {
  constexpr std::uintmax_t kHeader = 40;
  if (!path.ends_with("gtx") && !path.ends_with("GTX")) return true;
  unsigned char header[kHeader] = {};
  std::ifstream file(path, std::ios::binary);
  if (!file.read(reinterpret_cast<char*>(header), kHeader)) return false;
  const double latitudeStep = NumberAt<double, std::uint64_t>(header + 16), longitudeStep = NumberAt<double, std::uint64_t>(header + 24);
  const auto rows = NumberAt<std::int32_t, std::uint32_t>(header + 32), columns = NumberAt<std::int32_t, std::uint32_t>(header + 36);
  if (!IsStep(latitudeStep) || !IsStep(longitudeStep) || rows < 2 || columns < 2) return false;
  std::error_code fault;
  const std::uintmax_t size = std::filesystem::file_size(path, fault);
  return !fault && (size - kHeader) / sizeof(float) / static_cast<std::uintmax_t>(columns) >= static_cast<std::uintmax_t>(rows);
}

// Whether the fault is with the grid and not with the position asked for.
bool IsNoGrid(int fault) { return fault >= PROJ_ERR_INVALID_OP && fault < PROJ_ERR_COORD_TRANSFM; }

}  // namespace

void ProjGeoidModel::SetFileName(std::string fileName) {
  GeoidModel::SetFileName(std::move(fileName));
  m_grid.reset();
}

bool ProjGeoidModel::Init(ZelGeoCoordSysBase* coordSystem) try {
  m_grid.reset();
  GeoidModel::Init(coordSystem);
  m_system = dynamic_cast<GeoCoordSys*>(coordSystem);
  if (m_positions == Positions::Grid && (m_system == nullptr || m_system->Kind() == GeoCoordSysKind::None)) return false;
  const std::string path = FindFile();
  return !path.empty() && HoldsItsValues(path) && OpenGrid(path);
} catch (const std::exception&) {
  m_grid.reset();
  return false;
}

// In this system's form; empty when there is no such file.
std::string ProjGeoidModel::FindFile() const {
  std::string path = m_fileName;
  std::replace(path.begin(), path.end(), '\\', '/');
  if (path.empty() || IsFile(path)) return path;
  if (path.find('/') != std::string::npos) return {};
  const std::string beside = m_context.DataFolder() + path;
  return IsFile(beside) ? beside : "";
}

// PROJ puts the opening of a grid whose name it has met before off to the first use, and when that fails says so once and takes
// the separation for 0 from then on. So a first use is made here, and the name stays led to the file.
bool ProjGeoidModel::OpenGrid(const std::string& path) {
  m_path = path;
  proj_context_set_file_finder(m_context.Get(), FindGrid, m_path.data());
  const std::string definition = std::string("+proj=vgridshift +multiplier=1 +grids=") + kGridName;
  PjPointer grid(proj_create(m_context.Get(), definition.c_str()));
  if (grid == nullptr) return false;
  proj_trans(grid.get(), PJ_FWD, proj_coord(0, 0, 0, 0));
  if (IsNoGrid(proj_errno_reset(grid.get()))) return false;
  m_grid = std::move(grid);
  return true;
}

bool ProjGeoidModel::Separation(double first, double second, double& metres) {
  if (m_grid == nullptr) return false;
  double latitude = first, longitude = second;
  if (m_positions == Positions::Grid && !m_system->Inverse(first, second, latitude, longitude)) return false;
  if (!(std::abs(latitude) <= 90.0 && std::abs(longitude) <= 360.0)) return false;
  const PJ_COORD result = proj_trans(m_grid.get(), PJ_FWD, proj_coord(proj_torad(longitude), proj_torad(latitude), 0, 0));
  if (!std::isfinite(result.xyz.z)) return false;
  metres = result.xyz.z;
  return true;
}

bool ProjGeoidModel::Calculate(double first, double second, double& firstResult, double& secondResult, bool correction) try {
  double metres = 0.0;
  if (!Separation(first, second, metres)) return false;
  if (correction) metres = -metres;
  firstResult = metres / m_linearUnit;
  secondResult = metres;
  return true;
} catch (const std::exception&) {
  return false;
}

bool ProjGeoidModel::Calculate(double first, double second, double third, double fourth, double& result) try {
  double here = 0.0, there = 0.0;
  if (!Separation(first, second, here) || !Separation(third, fourth, there)) return false;
  result = (there - here) / m_linearUnit;
  return true;
} catch (const std::exception&) {
  return false;
}

}  // namespace zelbase::detail
