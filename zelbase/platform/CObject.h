// The framework's root class, as small as this library needs it: destruction, serialisation and the class at run time.
// Neighbours: CArchive.h, to which objects serialise themselves; CRuntimeClass.h.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class CArchive;
class CRuntimeClass;

// Base of framework objects; makes them destructible through the base.
class ZELBASE_API CObject {
 public:
  virtual ~CObject() = default;

  // The object's own class. Here, and in every class that says nothing of it, that of CObject, of which no object is made by name.
  virtual CRuntimeClass* GetRuntimeClass() const;

  // Writes the object to a storing archive, or reads it from a loading one. Nothing here.
  virtual void Serialize(CArchive& archive);

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};
