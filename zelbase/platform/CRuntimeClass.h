// What an object knows of its own class at run time: a name, by which one can be made. Neighbour: CObject.h, which gives it.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class CObject;

// One static object a class. It enters a list of the process when it is made and leaves it when it is destroyed, so that a
// class can be found by name as long as the module that holds it is loaded. Of two classes of one name the later one is found.
//
//   std::unique_ptr<CObject> object(CRuntimeClass::CreateObject("CCF_DataInfo"));
//
// In a program linked with the static library a class is there when something of the program names it. Safe from any thread.
// Not copyable.
class ZELBASE_API CRuntimeClass {
 public:
  using Maker = CObject* (*)();

  // `name` must live as long as the object. A null maker belongs to a class of which no object is made by name.
  CRuntimeClass(const char* name, Maker maker);
  ~CRuntimeClass();
  CRuntimeClass(const CRuntimeClass&) = delete;
  CRuntimeClass& operator=(const CRuntimeClass&) = delete;

  // A new object, which the caller owns; null without a maker.
  CObject* CreateObject() const;

  // The class of that name, case-sensitive; null when there is none, and for a null name.
  static CRuntimeClass* FromName(const char* name);

  // A new object of the class of that name, which the caller owns, or null.
  static CObject* CreateObject(const char* name);

  const char* const m_lpszClassName;

 private:
  const Maker m_maker;
  CRuntimeClass* m_next;
};
