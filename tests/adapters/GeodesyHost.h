// A host of the geodesy plug-in for the tests of its classes: each runs in a child process of its own, which loads the built module
// as a program of the suite does. Neighbours: InChild.h for such children; RegisterCoordSysTest.cpp for the loading itself.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "tests/support/InChild.h"
#include "tests/support/SourceFolder.h"
#include "zelbase/geodesy/GeoCoordSys.h"
#include "zelbase/geodesy/GeoDatabase.h"
#include "zelbase/geodesy/GeoStaticData.h"
#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

inline std::string PluginFolder() { return BinaryFolder() + "/adapters/geodesy-proj"; }

inline bool LoadPlugin() {
  std::filesystem::current_path(PluginFolder());
  return ZelGeoCoordSysLoader::Instance().LoadDLL("ZELCoordSys", nullptr);
}

// Runs `body` in a child that has the plug-in; the child ends as a program does.
template <class Body>
void ExpectInHost(Body body) {
  ExpectInChild(
      [&body] {
        ASSERT_TRUE(LoadPlugin());
        body();
      },
      ChildProcess::Ending::Full);
}

// What a module of the suite gets of the registries; null when the plug-in does not offer it.
inline std::unique_ptr<GeoCoordSys> MakeSystem() {
  return std::unique_ptr<GeoCoordSys>(dynamic_cast<GeoCoordSys*>(ZelGeoCoordSysList::GetCoordSysList().Create("PROJ")));
}

inline std::unique_ptr<GeoDatabase> MakeDatabase() {
  return std::unique_ptr<GeoDatabase>(dynamic_cast<GeoDatabase*>(ZelGeoDatabaseBaseList::GetGeoDatabaseList().Create("PROJ")));
}

inline std::unique_ptr<GeoStaticData> MakeStaticData() {
  return std::unique_ptr<GeoStaticData>(dynamic_cast<GeoStaticData*>(ZelGeoStaticDatabaseList::GetGeoStaticDataList().Create("PROJ")));
}

inline double Degrees(double degrees, double minutes = 0.0, double seconds = 0.0) { return degrees + minutes / 60.0 + seconds / 3600.0; }
