#include "zelbase/geodesy/SpareGeoCoordSys.h"

SpareGeoCoordSys::~SpareGeoCoordSys() = default;
