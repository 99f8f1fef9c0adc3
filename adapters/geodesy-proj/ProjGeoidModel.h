// Geoid heights from a grid file, by PROJ. Neighbours: zelbase/geodesy/GeoidModel.h, the base; ProjContext.h below;
// RegisterCoordSys.cpp, which registers one model for each kind of position.
#pragma once

#include <string>

#include "adapters/geodesy-proj/ProjContext.h"
#include "zelbase/geodesy/GeoCoordSys.h"
#include "zelbase/geodesy/GeoidModel.h"

namespace zelbase::detail {

// The separation N of a position: how far the geoid, or another vertical datum, lies above the ellipsoid, so that ellipsoidal height
// = height above the geoid + N. It is interpolated between the four values of the grid around, by PROJ.
//
// The grid is a .gtx or GeoTIFF file (SetFileName), looked for as it is named and then, for a name without a folder, beside PROJ's
// database. It is opened by Init, which says whether that went well; a new file name waits for the next Init.
class ProjGeoidModel final : public GeoidModel {
 public:
  // The kind of position that the model takes: latitude and longitude in degrees, on the grid's own datum, or easting and
  // northing of the coordinate system given to Init.
  enum class Positions { Satellite, Grid };

  explicit ProjGeoidModel(Positions positions) : m_positions(positions) {}
  ProjGeoidModel(const ProjGeoidModel&) = delete;
  ProjGeoidModel& operator=(const ProjGeoidModel&) = delete;

  // False when the grid cannot be read, and for a model of grid positions without a GeoCoordSys. The system's linear unit is
  // that of the separation; metres without a system.
  bool Init(ZelGeoCoordSysBase* coordSystem) override;

  // `firstResult` is the separation in the coordinate system's linear unit, `secondResult` in metres. With `correction` both have
  // the other sign: what is added to an ellipsoidal height to come to the geoid. False outside the grid and where it has
  // no value.
  bool Calculate(double first, double second, double& firstResult, double& secondResult, bool correction) override;

  // From the position (first, second) to (third, fourth): by how much the separation grows, in the linear unit.
  bool Calculate(double first, double second, double third, double fourth, double& result) override;

  void SetFileName(std::string fileName) override;

  // Whether a grid is open.
  bool IsReady() override { return m_grid != nullptr; }

 private:
  std::string FindFile() const;
  bool OpenGrid(const std::string& path);
  bool Separation(double first, double second, double& metres);

  Positions m_positions;
  GeoCoordSys* m_system = nullptr;  // not owned; the coordinate system, when it can be asked for positions
  std::string m_path;               // of the open grid; PROJ is led to it by its address
  ProjContext m_context;
  PjPointer m_grid;
};

}  // namespace zelbase::detail
