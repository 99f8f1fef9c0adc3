// The geodesy plug-in as a module: what it exports, what it registers, and that it does so once.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/adapters/GeodesyHost.h"
#include "tests/support/RunProgram.h"

namespace {

using Names = std::vector<std::string>;

TEST(RegisterCoordSys, FillsTheThreeRegistriesAndTheGeoidModels) {
  ExpectInHost([] {
    Names names;
    EXPECT_EQ(ZelGeoCoordSysList::GetCoordSysList().GetCoordSysTypes(names), 1);
    EXPECT_EQ(names, Names{"PROJ"});
    EXPECT_EQ(ZelGeoDatabaseBaseList::GetGeoDatabaseList().GetGeoDatabaseTypes(names), 1);
    EXPECT_EQ(names, Names{"PROJ"});
    EXPECT_EQ(ZelGeoStaticDatabaseList::GetGeoStaticDataList().GetGeoStaticTypes(names), 1);
    EXPECT_EQ(names, Names{"PROJ"});
    GeoidModelList::GetGeoidModelList().GetGeoidModelNames(names);
    EXPECT_EQ(names, (Names{"Grid Model(Grid coordinates)", "Grid Model(Satellite coordinates)"}));
    for (const auto type : std::vector<unsigned short>{3, 15})
      EXPECT_NE(std::unique_ptr<GeoidModel>(GeoidModelList::GetGeoidModelList().Create(type)), nullptr);
    EXPECT_EQ(std::unique_ptr<GeoidModel>(GeoidModelList::GetGeoidModelList().Create(static_cast<unsigned short>(18))), nullptr);
  });
}

TEST(RegisterCoordSys, ItsObjectsAreTheNamedInterfacesAndTheNumberedOnesBelow) {
  ExpectInHost([] {
    const auto system = MakeSystem();
    const auto database = MakeDatabase();
    const auto data = MakeStaticData();
    ASSERT_NE(system, nullptr);
    ASSERT_NE(database, nullptr);
    ASSERT_NE(data, nullptr);
    EXPECT_FALSE(system->Operation66());
    EXPECT_FALSE(database->Operation61());
    EXPECT_FALSE(data->Operation76());
    EXPECT_TRUE(database->IsReady());
  });
}

// The child ends with the leak sanitizer's check, where there is one: a second creator that is refused would show.
TEST(RegisterCoordSys, ASecondCallRegistersNothingAndLosesNothing) {
  ExpectInHost([] {
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(ZelGeoCoordSysLoader::Instance().LoadDLL("any name", nullptr));
    Names names;
    EXPECT_EQ(ZelGeoCoordSysList::GetCoordSysList().GetCoordSysTypes(names), 1);
    EXPECT_NE(MakeSystem(), nullptr);
  });
}

TEST(RegisterCoordSys, ATypeThatWasTakenOutComesBackWithTheNextCall) {
  ExpectInHost([] {
    EXPECT_TRUE(ZelGeoCoordSysList::GetCoordSysList().UnRegisterGeoCoordSys("PROJ"));
    EXPECT_EQ(MakeSystem(), nullptr);
    EXPECT_TRUE(ZelGeoCoordSysLoader::Instance().LoadDLL("", nullptr));
    EXPECT_NE(MakeSystem(), nullptr);
  });
}

TEST(RegisterCoordSys, IsTheModulesOnlyExport) {
  const ProgramResult result =
      RunProgram("/usr/bin/env", {"nm", "--dynamic", "--defined-only", "--format=posix", PluginFolder() + "/libZELGeoCoordSysR.so"});
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output.substr(0, result.output.find(' ')), "RegisterCoordSys");
  EXPECT_EQ(result.output.find('\n'), result.output.size() - 1) << result.output;
}

}  // namespace
