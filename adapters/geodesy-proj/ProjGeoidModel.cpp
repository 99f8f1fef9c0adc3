#include "adapters/geodesy-proj/ProjGeoidModel.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <exception>
#include <filesystem>
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
  return !path.empty() && OpenGrid(path);
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

bool ProjGeoidModel::OpenGrid(const std::string& path) {
  std::string name = path;  // the finder's argument is not const
  proj_context_set_file_finder(m_context.Get(), FindGrid, name.data());
  const std::string definition = std::string("+proj=vgridshift +multiplier=1 +grids=") + kGridName;
  m_grid.reset(proj_create(m_context.Get(), definition.c_str()));
  proj_context_set_file_finder(m_context.Get(), nullptr, nullptr);
  return m_grid != nullptr;
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
