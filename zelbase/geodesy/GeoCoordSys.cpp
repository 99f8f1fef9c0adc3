#include "zelbase/geodesy/GeoCoordSys.h"

// Here, so that one module holds the class's type and a cast works for the objects of every other.
GeoCoordSys::~GeoCoordSys() = default;
