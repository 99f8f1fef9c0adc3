// What the plug-in's database lists, held against entries of the EPSG registry that do not change.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "tests/adapters/GeodesyHost.h"
#include "tests/support/TemporaryFolder.h"

namespace {

template <class Entry>
const Entry* EntryOf(const std::vector<Entry>& entries, const std::string& code) {
  const auto found = std::find_if(entries.begin(), entries.end(), [&code](const Entry& entry) { return entry.code == code; });
  return found != entries.end() ? &*found : nullptr;
}

template <class Entry>
int CountOf(const std::vector<Entry>& entries, const std::string& code) {
  return static_cast<int>(std::count_if(entries.begin(), entries.end(), [&code](const Entry& entry) { return entry.code == code; }));
}

TEST(ProjDatabase, TellsItsEngineItsDataAndItsPlace) {
  ExpectInHost([] {
    const auto database = MakeDatabase();
    ASSERT_NE(database, nullptr);
    EXPECT_TRUE(database->IsReady());
    EXPECT_EQ(database->EngineVersion().rfind("PROJ ", 0), 0U);
    EXPECT_EQ(database->DataVersion().rfind("EPSG v", 0), 0U) << database->DataVersion();
    EXPECT_TRUE(database->Location().ends_with("\\proj.db")) << database->Location();
    EXPECT_EQ(database->Location().front(), '/');
  });
}

// The registry asks, and gives nothing out.
TEST(ProjDatabase, WithoutItsFileItIsNotReadyAndTheRegistryGivesNone) {
  const TemporaryFolder empty;
  const EnvironmentVariable data("PROJ_LIB", empty.Path().c_str()), home("HOME", empty.Path().c_str());
  ExpectInHost([&empty] {
    // PROJ takes a folder of the user's own and its installation's into account after this one.
    empty.Write("proj.db", "no database");
    EXPECT_EQ(MakeDatabase(), nullptr);
    const auto system = MakeSystem();
    ASSERT_NE(system, nullptr) << "a coordinate system is not asked";
    EXPECT_FALSE(system->Select("EPSG:32631"));
    EXPECT_NE(system->Reason(), "");
    std::vector<GeoUnit> units;
    const auto staticData = MakeStaticData();
    ASSERT_NE(staticData, nullptr);
    EXPECT_EQ(staticData->GetLinearUnits(units), 0);
  });
}

TEST(ProjDatabase, ListsSystemsWithNameKindAndArea) {
  ExpectInHost([] {
    std::vector<GeoSystemInfo> systems(3);
    const int count = MakeDatabase()->GetSystems(systems);
    ASSERT_EQ(count, static_cast<int>(systems.size()));
    EXPECT_GT(count, 5000);
    const GeoSystemInfo* const utm = EntryOf(systems, "EPSG:32631");
    ASSERT_NE(utm, nullptr);
    EXPECT_EQ(utm->name, "WGS 84 / UTM zone 31N");
    EXPECT_EQ(utm->kind, GeoCoordSysKind::Projected);
    EXPECT_FALSE(utm->deprecated);
    EXPECT_TRUE(utm->area.Contains(52.0, 4.0));
    EXPECT_FALSE(utm->area.Contains(52.0, 7.0));
    const GeoSystemInfo* const wgs = EntryOf(systems, "EPSG:4326");
    ASSERT_NE(wgs, nullptr);
    EXPECT_EQ(wgs->kind, GeoCoordSysKind::Geographic);
    const GeoSystemInfo* const old = EntryOf(systems, "EPSG:3785");
    ASSERT_NE(old, nullptr);
    EXPECT_TRUE(old->deprecated) << "the first Popular Visualisation Mercator";
    EXPECT_EQ(EntryOf(systems, "EPSG:4978"), nullptr) << "geocentric: not to be selected";
    EXPECT_EQ(CountOf(systems, "EPSG:32631"), 1);
  });
}

TEST(ProjDatabase, ListsAreSortedByAuthorityAndNumber) {
  ExpectInHost([] {
    std::vector<GeoSystemInfo> systems;
    MakeDatabase()->GetSystems(systems);
    std::string authority;
    long number = 0;
    for (const GeoSystemInfo& system : systems) {
      const std::size_t colon = system.code.find(':');
      ASSERT_NE(colon, std::string::npos);
      const std::string front = system.code.substr(0, colon), back = system.code.substr(colon + 1);
      if (front != authority) {
        EXPECT_LT(authority, front);
        authority = front;
        number = 0;
      }
      if (back.find_first_not_of("0123456789") != std::string::npos) continue;
      EXPECT_GT(std::stol(back), number) << system.code;
      number = std::stol(back);
    }
  });
}

TEST(ProjDatabaseLong, FindsByEveryWordInCodeNameOrArea) {
  ExpectInHost([] {
    const auto database = MakeDatabase();
    std::vector<GeoSystemInfo> all, found;
    database->GetSystems(all);
    EXPECT_EQ(database->FindSystems("  ", found), static_cast<int>(all.size())) << "no word asks for all";
    EXPECT_GT(database->FindSystems("wGs UTM\t31n", found), 0);
    EXPECT_NE(EntryOf(found, "EPSG:32631"), nullptr);
    EXPECT_EQ(EntryOf(found, "EPSG:32632"), nullptr);
    EXPECT_EQ(database->FindSystems("epsg:28992", found), 1);
    EXPECT_EQ(found.at(0).name, "Amersfoort / RD New");
    EXPECT_GT(database->FindSystems("netherlands onshore", found), 0);
    EXPECT_NE(EntryOf(found, "EPSG:28992"), nullptr);
    EXPECT_EQ(database->FindSystems("no system is called so", found), 0);
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(database->FindSystems(std::string("\0%';--", 6), found), 0);
  });
}

TEST(ProjDatabase, ListsAreOfTheEarthAlone) {
  ExpectInHost([] {
    const auto database = MakeDatabase();
    std::vector<GeoSystemInfo> systems;
    EXPECT_EQ(database->FindSystems("mars (2015)", systems), 0);
    std::vector<GeoEntry> ellipsoids;
    database->GetEllipsoids(ellipsoids);
    for (const GeoEntry& ellipsoid : ellipsoids) EXPECT_EQ(ellipsoid.name.find("Moon"), std::string::npos) << ellipsoid.name;
  });
}

// Every ninth of them: the middle of its area goes forward and comes back. Only few projections are beyond PROJ, and are refused.
TEST(ProjDatabaseLong, WhatIsListedUnderEpsgIsSelectedAndAnswersInItsArea) {
  ExpectInHost([] {
    std::vector<GeoSystemInfo> systems;
    MakeDatabase()->FindSystems("EPSG:", systems);
    const auto system = MakeSystem();
    int selected = 0, refused = 0;
    for (std::size_t i = 0; i < systems.size(); i += 9) {
      const GeoSystemInfo& info = systems[i];
      if (!system->Select(info.code)) {
        ++refused;
        EXPECT_NE(system->Reason().find("cannot be computed"), std::string::npos) << system->Reason();
        continue;
      }
      ++selected;
      EXPECT_EQ(system->Name(), info.name);
      EXPECT_EQ(system->Kind(), info.kind);
      if (!info.area.hasBounds) continue;
      const double latitude = (info.area.south + info.area.north) / 2;
      const double longitude = info.area.west <= info.area.east ? (info.area.west + info.area.east) / 2 : 180.0;
      double x = 0.0, y = 0.0, latitudeBack = 0.0, longitudeBack = 0.0;
      ASSERT_TRUE(system->Forward(latitude, longitude, x, y)) << info.code;
      ASSERT_TRUE(system->Inverse(x, y, latitudeBack, longitudeBack)) << info.code;
      EXPECT_NEAR(latitudeBack, latitude, 1e-6) << info.code;
      EXPECT_NEAR(std::remainder(longitudeBack - longitude, 360.0), 0.0, 1e-6) << info.code;
    }
    EXPECT_GT(selected, 500);
    EXPECT_LT(refused, selected / 50);
  });
}

TEST(ProjDatabase, ListsDatumsAndEllipsoids) {
  ExpectInHost([] {
    const auto database = MakeDatabase();
    std::vector<GeoEntry> entries(2);
    int count = database->GetDatums(entries);
    EXPECT_EQ(count, static_cast<int>(entries.size()));
    const GeoEntry* const ed50 = EntryOf(entries, "EPSG:6230");
    ASSERT_NE(ed50, nullptr);
    EXPECT_EQ(ed50->name, "European Datum 1950");
    count = database->GetEllipsoids(entries);
    EXPECT_EQ(count, static_cast<int>(entries.size()));
    const GeoEntry* const airy = EntryOf(entries, "EPSG:7001");
    ASSERT_NE(airy, nullptr);
    EXPECT_EQ(airy->name, "Airy 1830");
    EXPECT_FALSE(airy->deprecated);
    EXPECT_EQ(database->GetEllipsoids(entries), count) << "a list is replaced, not added to";
  });
}

}  // namespace
