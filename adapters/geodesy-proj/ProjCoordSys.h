// Coordinate systems by PROJ. Neighbours: zelbase/geodesy/GeoCoordSys.h, the interface with all that callers need to know;
// ProjContext.h below; ProjDatabase.h, which lists the codes.
#pragma once

#include <memory>
#include <string>

#include "adapters/geodesy-proj/ProjContext.h"
#include "zelbase/geodesy/GeoCoordSys.h"

namespace zelbase::detail {

// Besides codes, Select takes definitions: "+proj=..." in PROJ's own form, and WKT. One that would have files opened is refused,
// and so is one of more than 64 KiB.
class ProjCoordSys final : public GeoCoordSys {
 public:
  ProjCoordSys();
  ~ProjCoordSys() override;

  bool GetLinearUnit(double& factor) override;

  bool Select(const std::string& code) override;
  std::string Reason() override;
  std::string Code() override;
  std::string Name() override;
  GeoCoordSysKind Kind() override;
  std::string UnitName() override;
  bool GetAngularUnit(double& unit) override;
  bool GetAreaOfUse(GeoArea& area) override;
  bool Forward(double latitude, double longitude, double& easting, double& northing) override;
  bool Inverse(double easting, double northing, double& latitude, double& longitude) override;
  bool SelectTarget(const std::string& code) override;
  bool Convert(double easting, double northing, double& targetEasting, double& targetNorthing) override;
  bool GetConversionInfo(GeoConversionInfo& info) override;

 private:
  struct System;

  std::unique_ptr<System> MakeSystem(const std::string& code);
  PjPointer MakeObject(const std::string& text);
  PjPointer MakeOperation(const PJ* from, const PJ* to);
  std::nullptr_t Refuse(const std::string& reason);

  ProjContext m_context;
  std::string m_reason;
  std::unique_ptr<System> m_system;
  std::unique_ptr<System> m_target;
  PjPointer m_toTarget;
  bool m_converted = false;
};

}  // namespace zelbase::detail
