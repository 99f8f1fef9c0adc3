#include "zelbase/geodesy/ZelGeoCoordSysBase.h"

ZelGeoCoordSysBase::~ZelGeoCoordSysBase() = default;
