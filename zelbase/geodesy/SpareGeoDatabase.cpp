#include "zelbase/geodesy/SpareGeoDatabase.h"

SpareGeoDatabase::~SpareGeoDatabase() = default;
