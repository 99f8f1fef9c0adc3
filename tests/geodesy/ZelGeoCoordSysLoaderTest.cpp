#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/InChild.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

namespace {

const std::string kSuitesName = "ZELGeoCoordSysR.dll";
const std::string kSystemsName = "libZELGeoCoordSysR.so";

// A current folder of a child's own, with or without a plug-in.
class PluginFolder {
 public:
  PluginFolder() { std::filesystem::current_path(m_folder.Path()); }

  // Puts a module of tests/modules there.
  void Place(const std::string& module, const std::string& name = kSuitesName) const {
    std::filesystem::copy_file(BinaryFolder() + "/tests/modules/" + module + ".so", m_folder.File(name));
  }

 private:
  TemporaryFolder m_folder;
};

bool Load(const std::string& name = "ZELCoordSys") { return ZelGeoCoordSysLoader::Instance().LoadDLL(name, nullptr); }

TEST(ZelGeoCoordSysLoader, APluginFillsTheRegistriesOfTheProcess) {
  ExpectInChild(
      [] {
        const PluginFolder folder;
        folder.Place("GeodesyGood");
        ASSERT_TRUE(Load());
        const std::unique_ptr<ZelGeoCoordSysBase> system(ZelGeoCoordSysList::GetCoordSysList().Create("plug-in system"));
        ASSERT_NE(system, nullptr);
        EXPECT_TRUE(system->Operation66());
        EXPECT_NE(dynamic_cast<SpareGeoCoordSys*>(system.get()), nullptr);
        const std::unique_ptr<ZelGeoDatabaseBase> database(
            ZelGeoDatabaseBaseList::GetGeoDatabaseList().Create("plug-in database"));
        EXPECT_NE(database, nullptr);
        const std::unique_ptr<ZelGeoStaticDataBase> data(
            ZelGeoStaticDatabaseList::GetGeoStaticDataList().Create("plug-in data"));
        EXPECT_NE(data, nullptr);
        const std::unique_ptr<GeoidModel> model(GeoidModelList::GetGeoidModelList().Create("plug-in model"));
        ASSERT_NE(model, nullptr);
        EXPECT_TRUE(model->Init(system.get()));
        EXPECT_TRUE(model->IsReady());
      },
      ChildProcess::Ending::Full);
}

}  // namespace
