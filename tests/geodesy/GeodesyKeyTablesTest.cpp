// The tables of keys that the suite keeps about geodesy, row by row. Their other rules are in frame/KeyTablesTest.cpp.
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "zelbase/frame/KeyTables.h"

namespace {

void ExpectRows(std::span<const std::string> table, const std::vector<std::string>& rows) {
  EXPECT_EQ(std::vector<std::string>(table.begin(), table.end()), rows);
}

TEST(GeodesyKeyTables, CoordinateSystems) {
  ExpectRows(coordsystemKeys, {"BM Database", "BM Group key", "BM CoordSystem key", "BM Ellipsoid key", "BM Datum key",
                               "BM Linear unit key", "BM projection name", "System group name", "System name", "Dtf name", "Unit name",
                               "Ellipsoid name", "CoordSys type", "GeoidModel name", "GeoidModelFile name"});
}

TEST(GeodesyKeyTables, Projections) {
  ExpectRows(
      projectionParamKeys,
      {"File",        "Type",           "Name",         "LatOrigin",       "LonOrigin",     "FalseEast",        "FalseNorth",  "ScaleConst",
       "1stParallel", "2ndParallel",    "FalseLat",     "UTM-Zone",        "Hemisphere",    "FalseNorthOrigin", "BasicLat",    "BasicLon",
       "SkewAngle",   "InitialAzimuth", "LatTrueScale", "CentralParallel", "EastPrjCentre", "NorthPrjCentre",   "HomSkewAngle"});
}

TEST(GeodesyKeyTables, CoordinateSystemBackups) {
  ExpectRows(coordsysbackupKeys, {"BM Ellipsoid", "BM Datum", "BM Linear unit", "BM Angle unit", "BM System group", "BM System"});
}

// Kept: the fifth row is the key of a checksum, the sixth the value that goes with the seventh.
TEST(GeodesyKeyTables, TheFileOfGeodeticDataMixesKinds) {
  ExpectRows(geoFileKeys, {"BMUserGeoDatabase", "zelusergeobase", "BMGeocalc", "zelgeodatabase", "Checksum", "1.0.1", "GeodesyVersion"});
}

// The row is the type number that a coordinate system's settings hold and GeoidModelList is asked with.
TEST(GeodesyKeyTables, GeoidModelTypes) {
  ExpectRows(GeoidmodelTypeKeys, {"Receiver",
                                  "Manual",
                                  "DeMin",
                                  "Grid Model(Satellite coordinates)",
                                  "RDNAPTRANS2004",
                                  "Belgium hBG03/xyGridLb72",
                                  "Sweden",
                                  "US State Plane",
                                  "HARN",
                                  "OSTN02",
                                  "OSGM02 - GB",
                                  "OSGM02 - RoI",
                                  "OSGM02 - NI",
                                  "RDNAPTRANS2008",
                                  "Denmark DVR90",
                                  "Grid Model(Grid coordinates)",
                                  "Quasigeoid EGG97",
                                  "Null Model",
                                  "EGM2008",
                                  "Norway"});
}

}  // namespace
