// The framework's root class, as small as this library needs it.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// Base of framework objects; makes them destructible through the base.
class ZELBASE_API CObject {
 public:
  virtual ~CObject() = default;

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};
