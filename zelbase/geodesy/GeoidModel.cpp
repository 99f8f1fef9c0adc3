#include "zelbase/geodesy/GeoidModel.h"

#include <utility>

GeoidModel::~GeoidModel() = default;

bool GeoidModel::Init(ZelGeoCoordSysBase* coordSystem) {
  m_coordSystem = coordSystem;
  // Kept: the field itself goes in, and the answer is dropped: a system without a unit leaves the former one.
  if (coordSystem != nullptr) coordSystem->GetLinearUnit(m_linearUnit);
  // Kept: only zero, of either sign; tiny and negative units and NaN stay what the system says.
  if (m_linearUnit == 0.0) m_linearUnit = 1.0;
  return true;
}

bool GeoidModel::Calculate(double, double, double&, double&, bool) { return false; }

bool GeoidModel::Calculate(double, double, double, double, double&) { return false; }

bool GeoidModel::CalculateLocalEllipsCorrection(double, double, double&, double&, bool) { return false; }

void GeoidModel::SetFileName(std::string fileName) { m_fileName = std::move(fileName); }
