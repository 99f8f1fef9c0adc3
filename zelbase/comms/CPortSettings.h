// What a driver keeps for one of its ports: a section of settings and up to four objects of its own. Neighbours:
// CNetSettings.h, CSerialSettings.h, OPCSettings.h and OpcUaSettings.h, the settings themselves;
// zelbase/config/FileSection.h for the section.
#pragma once

#include <memory>

#include "zelbase/config/FileSection.h"
#include "zelbase/platform/ZelBaseApi.h"

// What the drivers derive their objects from.
class ZELBASE_API CPortObject {
 public:
  virtual ~CPortObject() = default;
};

// The fields are the drivers', who know what is behind them. A new object has an empty section and null pointers.
//
// Copies have the section, as FileSection copies it, and share the objects: the last copy frees them. Assigning to itself
// does nothing. Used by one thread at a time; so are copies that share objects, unless these can do otherwise.
class ZELBASE_API CPortSettings {
 public:
  CPortSettings();
  CPortSettings(const CPortSettings& other);
  CPortSettings& operator=(const CPortSettings& other);
  virtual ~CPortSettings();

  FileSection section;
  std::shared_ptr<void> block;  // plain data
  std::shared_ptr<CPortObject> object0;
  std::shared_ptr<CPortObject> object1;
  std::shared_ptr<CPortObject> object2;
};
