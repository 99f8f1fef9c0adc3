#include "zelbase/frame/KeyTables.h"

#include <gtest/gtest.h>

#include <set>
#include <span>
#include <string>

#include "zelbase/config/CRCChecksum.h"

namespace {

const std::string g_early = viewTypeKeys[0] + fileTypeKeys[108] + unitsParamKeys[1];

// The CRC-32 of all rows of a table, parted by line feeds. The expected values were computed by Python's zlib.
unsigned int Crc(std::span<const std::string> table) {
  std::string joined;
  for (const std::string& row : table) joined += (joined.empty() ? "" : "\n") + row;
  CRCChecksum crc;
  crc.Add(joined.data(), static_cast<unsigned int>(joined.size()));
  return ~crc.Value();
}

TEST(KeyTables, AreReadableInAHostsStaticInitialiser) { EXPECT_EQ(g_early, "PlanViewUKOOAP190System Units"); }

TEST(KeyTables, RowsStandInTheirOrder) {
  const struct {
    const char* name;
    std::span<const std::string> table;
    std::size_t rows;
    const char* first;
    const char* last;
    unsigned int crc;
  } tables[] = {
      {"permissionKeys", permissionKeys, 5, "Vessels", "ProjectDescription", 0x9BC8ECAE},
      {"exportKeys", exportKeys, 1, "EsriAsciiGrid", "EsriAsciiGrid", 0x3259C642},
      {"fileTypeSubKeys", fileTypeSubKeys, 27, "generic", "RTE_MARKER", 0x356B17B8},
      {"guidanceKeys", guidanceKeys, 11, "RunlineNav", "ObjectPlacement", 0x4F48BAF4},
      {"pathKeys", pathKeys, 24, "Programs", "TripRegistration", 0x1C9929E7},
      {"vesselKeys", vesselKeys, 8, "MultiObjects", "DisableLogging", 0x8CEFC56C},
      {"loggingKeys", loggingKeys, 21, "ZELCOREFormat", "UKOOAFormat", 0x0F809475},
      {"networkKeys", networkKeys, 3, "Support", "Presentations", 0x118394EF},
      {"spheroidKeys", spheroidKeys, 4, "DataBase", "EccSqrd", 0x371CE8A6},
      {"projDescKeys", projDescKeys, 5, "ProjectName", "ContractorName", 0x51EB75DC},
      {"transParamKeys", transParamKeys, 12, "Name", "File", 0x66EE5EDF},
      {"coordsystemKeys", coordsystemKeys, 15, "BM Database", "GeoidModelFile name", 0x63D6B7A8},
      {"projectionParamKeys", projectionParamKeys, 23, "File", "HomSkewAngle", 0xE69519EB},
      {"GeoidmodelTypeKeys", GeoidmodelTypeKeys, 20, "Receiver", "Norway", 0x12A88BB3},
      {"unitsParamKeys", unitsParamKeys, 24, "No Units", "Force Units", 0x0AF9A531},
      {"formatParamKeys", formatParamKeys, 10, "Geog Format", "Weight Decimals", 0xCE35B43E},
      {"appParamKeys", appParamKeys, 2, "Definition", "Configuration", 0x19A31076},
      {"customerKeys", customerKeys, 2, "Customer Name", "Customer ID", 0x563E9CF8},
      {"checksumKeys", checksumKeys, 2, "Checksum", "Integrity", 0x7E0837C3},
      {"coordsysbackupKeys", coordsysbackupKeys, 6, "BM Ellipsoid", "BM System", 0xF3BEFB66},
      {"geoFileKeys", geoFileKeys, 7, "BMUserGeoDatabase", "GeodesyVersion", 0x13376F04},
      {"fileTypeKeys", fileTypeKeys, 109, "Language", "UKOOAP190", 0x463F6093},
      {"programKeys", programKeys, 42, "Master", "GuidanceEditor", 0x7E62F831},
      {"viewTypeKeys", viewTypeKeys, 48, "PlanView", "CableProfileView", 0x6F1B5513},
  };
  for (const auto& table : tables) {
    SCOPED_TRACE(table.name);
    ASSERT_EQ(table.table.size(), table.rows);
    EXPECT_EQ(table.table.front(), table.first);
    EXPECT_EQ(table.table.back(), table.last);
    EXPECT_EQ(Crc(table.table), table.crc);
    EXPECT_EQ(std::set<std::string>(table.table.begin(), table.table.end()).size(), table.rows) << "a row twice";
  }
}

TEST(KeyTables, NumbersThatCallersUse) {
  EXPECT_EQ(pathKeys[18], "Release Notes");
  EXPECT_EQ(fileTypeKeys[34], "TideFile");
  EXPECT_EQ(loggingKeys[12], "TideStation");
  EXPECT_EQ(unitsParamKeys[19], "Angular Units");
  EXPECT_EQ(programKeys[23], "QuickProfilePlot");
  EXPECT_EQ(viewTypeKeys[4], "HelmsmanView3D");
  EXPECT_EQ(GeoidmodelTypeKeys[3], "Grid Model(Satellite coordinates)");
}

// Kept: stems, keys and a version value in one table.
TEST(KeyTables, GeoFileKeysMixesKindsOnPurpose) {
  EXPECT_EQ(geoFileKeys[1], "zelusergeobase");
  EXPECT_EQ(geoFileKeys[4], checksumKeys[0]);
  EXPECT_EQ(geoFileKeys[5], "1.0.1");
  EXPECT_EQ(geoFileKeys[6], "GeodesyVersion");
}

}  // namespace
