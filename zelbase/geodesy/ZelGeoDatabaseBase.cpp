#include "zelbase/geodesy/ZelGeoDatabaseBase.h"

ZelGeoDatabaseBase::~ZelGeoDatabaseBase() = default;
