// The base of the geoid models, which turn a position into the separation between the ellipsoid and the vertical datum.
// Neighbours: GeoidModelList.h makes them by name or type, ZelGeoCoordSysBase.h is the coordinate system they work in.
#pragma once

#include <string>

#include "zelbase/geodesy/ZelGeoCoordSysBase.h"
#include "zelbase/platform/ZelBaseApi.h"

// A concrete model overrides the calculations that it has and IsReady; the base calculates nothing. What the arguments mean,
// their units and order, belongs to the concrete model.
//
// The order of the operations is what modules that were built apart agree on. Copies share the coordinate system. One object
// belongs to one thread at a time.
class ZELBASE_API GeoidModel {
 public:
  GeoidModel() = default;
  GeoidModel(const GeoidModel&) = default;
  GeoidModel& operator=(const GeoidModel&) = default;

  // In the library, so that the class is one and the same for every module of a process.
  virtual ~GeoidModel();

  // Stores the coordinate system, which is not owned, must outlive the model's use of it and may be null, and asks it for its
  // linear unit. The unit's own field goes in, so that a system that writes nothing, or null, keeps it; what the system
  // answers besides is not looked at. A unit of exactly 0.0 becomes 1.0. Always true. A model with a file reads it in an Init
  // of its own.
  virtual bool Init(ZelGeoCoordSysBase* coordSystem);

  // A position in, a position out, a flag. The base: false, both outputs as they were.
  virtual bool Calculate(double first, double second, double& firstResult, double& secondResult, bool flag);

  // Four values in, one out. The base: false, the output as it was.
  virtual bool Calculate(double first, double second, double third, double fourth, double& result);

  // A position in, a position out, a flag. The base: false, both outputs as they were.
  virtual bool CalculateLocalEllipsCorrection(double first, double second, double& firstResult, double& secondResult, bool flag);

  // Stores the name of the model's data file; opens nothing.
  virtual void SetFileName(std::string fileName);

  // Whether the model can calculate.
  virtual bool IsReady() = 0;

 protected:
  std::string m_fileName;                       // empty for a model without a file
  double m_linearUnit = 1.0;                    // of the coordinate system, in metres to one unit
  ZelGeoCoordSysBase* m_coordSystem = nullptr;  // not owned
};
