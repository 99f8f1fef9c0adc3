#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

#include <gtest/gtest.h>

#include "tests/geodesy/RegistryTests.h"

namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(ZelGeoStaticDatabaseList, GeodesyRegistry, StaticDataRegistry);

// Kept: registering and unregistering are misspelt, the access to the one list is not.
TEST(ZelGeoStaticDatabaseList, TheNamesOfItsOperationsStayMisspelt) {
  static_assert(std::is_same_v<decltype(&ZelGeoStaticDatabaseList::RegisterGeoStaicDatabase),
                               void (ZelGeoStaticDatabaseList::*)(std::string, GeoStaticICreator*)>);
  static_assert(
      std::is_same_v<decltype(&ZelGeoStaticDatabaseList::UnRegisterGeoStaicDatabase), bool (ZelGeoStaticDatabaseList::*)(std::string)>);
  static_assert(std::is_same_v<decltype(&ZelGeoStaticDatabaseList::GetGeoStaticDataList), ZelGeoStaticDatabaseList& (*)()>);
}

TEST(ZelGeoStaticDatabaseList, DoesNotAskWhetherTheDataAreReady) {
  // Every operation of these objects answers false, the first one included.
  ZelGeoStaticDatabaseList list;
  list.RegisterGeoStaicDatabase("a", new NotingCreator<StaticDataRegistry>("made"));
  EXPECT_EQ(NameOf(list.Create("a")), "made");
}

}  // namespace
