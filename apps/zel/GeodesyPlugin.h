// The geodesy plug-in as the program loads it, and what it makes. Neighbour: GeodesyCommand.cpp.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zelbase/geodesy/GeoCoordSys.h"
#include "zelbase/geodesy/GeoDatabase.h"
#include "zelbase/geodesy/GeoStaticData.h"

namespace zel {

// What fails gives false or null and a Reason().
class GeodesyPlugin {
 public:
  // Loads it from `folder`; from the program's own folder, or the one it was installed to, when that is empty. False when there
  // is none or it does not load.
  bool Load(const std::string& folder);

  // Why the last call failed, for a person, in UTF-8.
  const std::string& Reason() const { return m_reason; }

  // The module's file, as a person types it.
  const std::string& File() const { return m_file; }

  // An object of the first registered type that has operations with a name; null when there is none.
  std::unique_ptr<GeoCoordSys> MakeSystem();
  std::unique_ptr<GeoDatabase> MakeDatabase();
  std::unique_ptr<GeoStaticData> MakeStaticData();

  // A coordinate system by its code, in UTF-8; null when it cannot be had.
  std::unique_ptr<GeoCoordSys> Select(const std::string& code);

 private:
  std::string m_file;
  std::string m_reason;
};

// What is registered, in the registries' order.
std::vector<std::string> CoordSysTypes();
std::vector<std::string> DatabaseTypes();
std::vector<std::string> StaticDataTypes();

}  // namespace zel
