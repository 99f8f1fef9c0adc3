#include "zelbase/geodesy/SpareGeoStaticData.h"

SpareGeoStaticData::~SpareGeoStaticData() = default;
