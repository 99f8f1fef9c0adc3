#include "zelbase/geodesy/ZelGeoStaticDataBase.h"

ZelGeoStaticDataBase::~ZelGeoStaticDataBase() = default;
