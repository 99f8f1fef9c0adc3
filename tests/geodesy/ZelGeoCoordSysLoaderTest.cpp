#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/InChild.h"
#include "tests/support/ProcessUse.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestModules.h"
#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"
#include "zelbase/platform/FixedModules.h"

namespace {

const std::string kSuitesName = "ZELGeoCoordSysR.dll";
const std::string kSystemsName = "libZELGeoCoordSysR.so";

bool Load(const std::string& name = "ZELCoordSys") { return ZelGeoCoordSysLoader::Instance().LoadDLL(name, nullptr); }

// The types of all registries together.
int RegisteredTypes() {
  std::vector<std::string> types;
  int count = ZelGeoCoordSysList::GetCoordSysList().GetCoordSysTypes(types);
  count += ZelGeoDatabaseBaseList::GetGeoDatabaseList().GetGeoDatabaseTypes(types);
  count += ZelGeoStaticDatabaseList::GetGeoStaticDataList().GetGeoStaticTypes(types);
  GeoidModelList::GetGeoidModelList().GetGeoidModelNames(types);
  return count + static_cast<int>(types.size());
}

// --- Which modules are asked for, how often, and what is called ------------------------------------------------------------

const std::vector<std::string> kBothNames = {"./ZELGeoCoordSysR.dll", "./libZELGeoCoordSysR.so"};

int g_calls = 0;
std::function<void()> g_onCall;
void CountedExport() {
  ++g_calls;
  if (g_onCall) g_onCall();
}

// Modules of the test's own, in force for the scope. For a child: the loader tries once a process.
struct OwnModules {
  ModuleHandle Add(const std::string& path = kBothNames[0]) {
    const ModuleHandle module = modules.AddLibrary(path);
    modules.AddExport(module, "RegisterCoordSys", reinterpret_cast<void*>(&CountedExport));
    return module;
  }
  FixedModules modules;
  PlatformOverride<PlatformModules> inForce{modules};
};

TEST(ZelGeoCoordSysLoader, AnyOtherNameBeforeALoadLoadsNothing) {
  ExpectInChild([] {
    OwnModules own;
    own.Add();
    for (const std::string& name :
         {std::string(), std::string("zelcoordsys"), std::string("ZELCOORDSYS"), std::string("ZELCoordSys "), std::string("ZELCoordSy"),
          std::string("ZELCoordSys\0", 12), std::string("ZELGeoCoordSysR.dll"), std::string("./ZELGeoCoordSysR.dll")}) {
      EXPECT_FALSE(Load(name)) << name;
    }
    EXPECT_TRUE(own.modules.Requests().empty());
    EXPECT_EQ(g_calls, 0);
    EXPECT_TRUE(Load());  // and it has not counted as the one try
  });
}

TEST(ZelGeoCoordSysLoader, AsksForTheSuitesNameAsItStandsAndThenForTheSystems) {
  ExpectInChild([] {
    OwnModules own;
    EXPECT_FALSE(Load());
    EXPECT_EQ(own.modules.Requests(), kBothNames);
  });
}

TEST(ZelGeoCoordSysLoader, TheSuitesNameAloneServes) {
  ExpectInChild([] {
    OwnModules own;
    own.Add(kBothNames[0]);
    own.Add(kBothNames[1]);
    EXPECT_TRUE(Load());
    EXPECT_EQ(own.modules.Requests(), std::vector<std::string>{kBothNames[0]});
    EXPECT_EQ(g_calls, 1);
  });
}

TEST(ZelGeoCoordSysLoader, TheSystemsNameServes) {
  ExpectInChild([] {
    OwnModules own;
    own.Add(kBothNames[1]);
    EXPECT_TRUE(Load());
    EXPECT_EQ(own.modules.Requests(), kBothNames);
    EXPECT_EQ(g_calls, 1);
  });
}

// Kept: what failed is not tried again.
TEST(ZelGeoCoordSysLoader, IsTriedOnceSoThatAModuleThatComesLaterIsNotLoaded) {
  ExpectInChild([] {
    OwnModules own;
    EXPECT_FALSE(Load());
    own.Add();
    EXPECT_FALSE(Load());
    EXPECT_FALSE(Load("another name"));
    EXPECT_EQ(own.modules.Requests(), kBothNames);
    EXPECT_EQ(g_calls, 0);
  });
}

// Kept: once a module is loaded, the name decides nothing.
TEST(ZelGeoCoordSysLoader, AfterALoadAnyNameCallsTheExportAgainWithoutLoading) {
  ExpectInChild([] {
    OwnModules own;
    const ModuleHandle module = own.Add();
    EXPECT_TRUE(Load());
    int calls = 1;
    for (const char* const name : {"ZELCoordSys", "another name", "", "zelcoordsys"}) {
      EXPECT_TRUE(Load(name));
      EXPECT_EQ(g_calls, ++calls);
    }
    EXPECT_EQ(own.modules.Requests().size(), 1u);
    EXPECT_EQ(own.modules.LoadCount(module), 1);
  });
}

TEST(ZelGeoCoordSysLoader, TheSecondArgumentIsNotUsed) {
  ExpectInChild([] {
    OwnModules own;
    own.Add();
    EXPECT_TRUE(ZelGeoCoordSysLoader::Instance().LoadDLL("ZELCoordSys", reinterpret_cast<ZelGeoCoordSysBase*>(8)));
  });
}

TEST(ZelGeoCoordSysLoader, WithoutTheExportItIsFalseAndTheModuleStays) {
  ExpectInChild([] {
    OwnModules own;
    const ModuleHandle module = own.modules.AddLibrary(kBothNames[0]);
    own.modules.AddExport(module, "registercoordsys", reinterpret_cast<void*>(&CountedExport));
    EXPECT_FALSE(Load());
    EXPECT_FALSE(Load());
    EXPECT_EQ(own.modules.Requests().size(), 1u);  // a loaded module keeps the system's name from being asked
    EXPECT_EQ(own.modules.LoadCount(module), 1);
    EXPECT_EQ(g_calls, 0);
    // It is looked up anew each time.
    own.modules.AddExport(module, "RegisterCoordSys", reinterpret_cast<void*>(&CountedExport));
    EXPECT_TRUE(Load("another name"));
    EXPECT_EQ(g_calls, 1);
  });
}

TEST(ZelGeoCoordSysLoader, WhatTheExportThrowsEndsInTheLoaderWhichSaysFalse) {
  ExpectInChild([] {
    OwnModules own;
    own.Add();
    g_onCall = [] { throw std::runtime_error("no data files"); };
    EXPECT_FALSE(Load());
    g_onCall = [] { throw 1; };
    EXPECT_FALSE(Load());
    g_onCall = nullptr;
    EXPECT_TRUE(Load());
    EXPECT_EQ(g_calls, 3);
  });
}

TEST(ZelGeoCoordSysLoader, AnExportMayAskTheLoader) {
  ExpectInChild([] {
    OwnModules own;
    own.Add();
    g_onCall = [] {
      if (g_calls > 1) return;
      EXPECT_TRUE(Load("from within"));
    };
    EXPECT_TRUE(Load());
    EXPECT_EQ(g_calls, 2);
    EXPECT_EQ(own.modules.Requests().size(), 1u);
  });
}

TEST(ZelGeoCoordSysLoader, AModuleThatAsksWhileItIsLoadedDoesNotLoadItself) {
  class AskingModules : public FixedModules {
   public:
    ModuleHandle Load(const std::string& path) override {
      EXPECT_FALSE(ZelGeoCoordSysLoader::Instance().LoadDLL("ZELCoordSys", nullptr));
      return FixedModules::Load(path);
    }
  };
  ExpectInChild([] {
    AskingModules modules;
    const PlatformOverride<PlatformModules> inForce(modules);
    modules.AddExport(modules.AddLibrary(kBothNames[0]), "RegisterCoordSys", reinterpret_cast<void*>(&CountedExport));
    EXPECT_TRUE(Load());
    EXPECT_EQ(modules.Requests().size(), 1u);
    EXPECT_EQ(g_calls, 1);
  });
}

TEST(ZelGeoCoordSysLoader, ThereIsOneAndItIsMadeByItselfOnly) {
  EXPECT_EQ(&ZelGeoCoordSysLoader::Instance(), &ZelGeoCoordSysLoader::Instance());
  static_assert(!std::is_default_constructible_v<ZelGeoCoordSysLoader>);
  static_assert(!std::is_copy_constructible_v<ZelGeoCoordSysLoader>);
  static_assert(!std::is_copy_assignable_v<ZelGeoCoordSysLoader>);
  static_assert(std::has_virtual_destructor_v<ZelGeoCoordSysLoader>);
}

// --- Modules of the system's own -------------------------------------------------------------------------------------------

// A current folder of a child's own, with or without a plug-in.
class PluginFolder {
 public:
  PluginFolder() { std::filesystem::current_path(m_folder.Path()); }

  void Place(const std::string& module, const std::string& name = kSuitesName) const {
    std::filesystem::copy_file(ModuleFile(module), m_folder.File(name));
  }
  void Write(const std::string& content, const std::string& name = kSuitesName) const { m_folder.Write(name, content); }
  void MakeFolder(const std::string& name = kSuitesName) const { m_folder.MakeFolder(name); }
  void MakeFifo(const std::string& name = kSuitesName) const { m_folder.MakeFifo(name); }

 private:
  TemporaryFolder m_folder;
};

// What must be so in a folder whose plug-in is none: false, nothing registered, and no second try.
template <class Prepare>
void ExpectNoPlugin(const std::string& what, Prepare prepare) {
  SCOPED_TRACE(what);
  ExpectInChild([&] {
    const PluginFolder folder;
    prepare(folder);
    EXPECT_FALSE(Load());
    std::filesystem::remove_all(kSuitesName);
    std::filesystem::remove_all(kSystemsName);
    folder.Place("GeodesyGood");
    EXPECT_FALSE(Load()) << "retried";
    EXPECT_FALSE(Load("another name"));
    EXPECT_EQ(RegisteredTypes(), 0);
  });
}

TEST(ZelGeoCoordSysLoader, APluginFillsTheRegistriesOfTheProcess) {
  for (const std::string& name : {kSuitesName, kSystemsName}) {
    ExpectInChild(
        [&name] {
          const PluginFolder folder;
          folder.Place("GeodesyGood", name);
          ASSERT_TRUE(Load());
          EXPECT_EQ(RegisteredTypes(), 4);
          const std::unique_ptr<ZelGeoCoordSysBase> system(ZelGeoCoordSysList::GetCoordSysList().Create("plug-in system"));
          ASSERT_NE(system, nullptr);
          EXPECT_TRUE(system->Operation66());
          EXPECT_NE(dynamic_cast<SpareGeoCoordSys*>(system.get()), nullptr);  // one class for both modules
          const std::unique_ptr<ZelGeoDatabaseBase> database(ZelGeoDatabaseBaseList::GetGeoDatabaseList().Create("plug-in database"));
          EXPECT_NE(database, nullptr);
          const std::unique_ptr<ZelGeoStaticDataBase> data(ZelGeoStaticDatabaseList::GetGeoStaticDataList().Create("plug-in data"));
          EXPECT_NE(data, nullptr);
          const std::unique_ptr<GeoidModel> model(GeoidModelList::GetGeoidModelList().Create("plug-in model"));
          ASSERT_NE(model, nullptr);
          EXPECT_TRUE(model->Init(system.get()));
          EXPECT_TRUE(model->IsReady());
        },
        ChildProcess::Ending::Full);
  }
}

TEST(ZelGeoCoordSysLoader, EachCallReachesThePlugin) {
  ExpectInChild(
      [] {
        const PluginFolder folder;
        folder.Place("GeodesyGood");
        PlatformModules& modules = PlatformModules::System();
        ASSERT_TRUE(Load());
        const ModuleHandle module = modules.Load("./" + kSuitesName);
        const auto calls = reinterpret_cast<int (*)()>(modules.FindExport(module, "CallsOfRegisterCoordSys"));
        ASSERT_NE(calls, nullptr);
        EXPECT_EQ(calls(), 1);
        EXPECT_TRUE(Load("another name"));
        EXPECT_EQ(calls(), 2);
        modules.Unload(module);
        std::filesystem::remove(kSuitesName);  // what is loaded stays
        EXPECT_TRUE(Load());
        EXPECT_EQ(calls(), 3);
        EXPECT_EQ(RegisteredTypes(), 4);
      },
      ChildProcess::Ending::Full);
}

TEST(ZelGeoCoordSysLoader, IsLookedForInTheFolderThatIsTheCurrentOne) {
  ExpectInChild([] {
    const PluginFolder with;
    with.Place("GeodesyGood");
    const PluginFolder without;
    EXPECT_FALSE(Load());
  });
}

TEST(ZelGeoCoordSysLoader, WhatIsNoModuleIsFalseAndNotRetried) {
  ExpectNoPlugin("missing", [](const PluginFolder&) {});
  ExpectNoPlugin("a folder", [](const PluginFolder& folder) {
    folder.MakeFolder();
    folder.MakeFolder(kSystemsName);
  });
  ExpectNoPlugin("a pipe", [](const PluginFolder& folder) { folder.MakeFifo(); });
  ExpectNoPlugin("empty", [](const PluginFolder& folder) { folder.Write(""); });
  ExpectNoPlugin("text", [](const PluginFolder& folder) { folder.Write("[General]\nRegisterCoordSys = 1\n"); });
  ExpectNoPlugin("zeros", [](const PluginFolder& folder) { folder.Write(std::string(100000, '\0')); });
  ExpectNoPlugin("other letters", [](const PluginFolder& folder) { folder.Place("GeodesyGood", "zelgeocoordsysr.dll"); });
}

TEST(ZelGeoCoordSysLoader, WhatIsNoModuleUnderTheSuitesNameLeavesTheSystems) {
  for (const bool isFolder : {false, true}) {
    ExpectInChild([isFolder] {
      const PluginFolder folder;
      if (isFolder) {
        folder.MakeFolder();
      } else {
        folder.Write("no module");
      }
      folder.Place("GeodesyGood", kSystemsName);
      EXPECT_TRUE(Load());
      EXPECT_EQ(RegisteredTypes(), 4);
    });
  }
}

TEST(ZelGeoCoordSysLoader, AModuleCutShortIsFalseAtEveryLength) {
  const std::string whole = ModuleContent("GeodesyGood");
  ASSERT_GT(whole.size(), 4096u);
  const std::size_t end = EndOfSegments(whole);
  std::vector<std::size_t> lengths = {1, 4, 15, 16, 63, 64, 65, 120, 4095, 4096, 4097, end - 4096, end - 1};
  for (std::size_t i = 1; i <= 64; ++i) lengths.push_back(end * i / 65);
  for (const std::size_t length : lengths) {
    ExpectNoPlugin(std::to_string(length) + " of " + std::to_string(end) + " bytes",
                   [&](const PluginFolder& folder) { folder.Write(whole.substr(0, length)); });
  }
}

TEST(ZelGeoCoordSysLoader, AModuleWithoutItsTablesForDebuggersLoads) {
  ExpectInChild([] {
    const PluginFolder folder;
    const std::string whole = ModuleContent("GeodesyGood");
    folder.Write(whole.substr(0, EndOfSegments(whole)));
    EXPECT_TRUE(Load());
    EXPECT_EQ(RegisteredTypes(), 4);
  });
}

TEST(ZelGeoCoordSysLoader, APluginWithoutItsExportIsFalse) {
  ExpectInChild([] {
    const PluginFolder folder;
    folder.Place("GeodesyWithoutExport");
    folder.Place("GeodesyGood", kSystemsName);  // not tried: the first one has loaded
    EXPECT_FALSE(Load());
    EXPECT_FALSE(Load());
    EXPECT_EQ(RegisteredTypes(), 0);
  });
}

TEST(ZelGeoCoordSysLoader, APluginThatNeedsANameNobodyHasIsFalse) {
  ExpectNoPlugin("unresolved", [](const PluginFolder& folder) { folder.Place("GeodesyUnresolved"); });
  ExpectInChild([] {
    const PluginFolder folder;
    folder.Place("GeodesyUnresolved");
    folder.Place("GeodesyGood", kSystemsName);  // tried: the first one has not loaded
    EXPECT_TRUE(Load());
    EXPECT_EQ(RegisteredTypes(), 4);
  });
}

TEST(ZelGeoCoordSysLoader, APluginThatThrowsIsFalseAndKeepsWhatItRegisteredBefore) {
  ExpectInChild(
      [] {
        const PluginFolder folder;
        folder.Place("GeodesyThrows");
        EXPECT_FALSE(Load());
        EXPECT_EQ(RegisteredTypes(), 1);
        EXPECT_FALSE(Load());
        EXPECT_FALSE(Load());
        EXPECT_TRUE(Load());  // the fourth call comes back
        EXPECT_EQ(RegisteredTypes(), 1);
      },
      ChildProcess::Ending::Full);
}

TEST(ZelGeoCoordSysLoader, APluginThatRegistersTwiceKeepsWhatIsRefusedAndEachGoesOnce) {
  ChildProcess child(
      [] {
        const PluginFolder folder;
        folder.Place("GeodesyRegistersTwice");
        const bool loaded = Load() && Load("again") && RegisteredTypes() == 4;
        return loaded ? 0 : 1;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  std::string letters = child.OutputText();
  std::sort(letters.begin(), letters.end());
  EXPECT_EQ(letters, std::string(12, 'r') + "tttt");  // 4 registries, 2 calls, 2 each: all but the first are refused
}

TEST(ZelGeoCoordSysLoader, APluginThatRegistersNothingIsTrue) {
  ExpectInChild([] {
    const PluginFolder folder;
    folder.Place("GeodesyRegistersNothing");
    EXPECT_TRUE(Load());
    EXPECT_EQ(RegisteredTypes(), 0);
    EXPECT_EQ(ZelGeoCoordSysList::GetCoordSysList().Create("plug-in system"), nullptr);
  });
}

// --- Where it lies ------------------------------------------------------------------------------------------------------------

TEST(ZelGeoCoordSysLoader, TheFolderMayHaveAnyName) {
  const std::vector<std::string> names = {"a folder with blanks",
                                          " ",
                                          "in front and behind ",
                                          "H\xF6he",
                                          "25 \xB0",
                                          "\xC3\xB6",
                                          "\x80\x81\xFE\xFF",
                                          "tab\tand\nline",
                                          "%s%n$HOME${x}$:;",
                                          "$origin",
                                          "a\\b",
                                          "\\",
                                          "..and.so",
                                          "'\"*?",
                                          std::string(255, 'n')};
  for (const std::string& name : names) {
    ExpectInChild([&name] {
      const TemporaryFolder outer;
      std::filesystem::create_directory(outer.File(name));
      std::filesystem::copy_file(ModuleFile("GeodesyGood"), outer.File(name) + "/" + kSuitesName);
      std::filesystem::current_path(outer.File(name));
      EXPECT_TRUE(Load()) << name;
      EXPECT_EQ(RegisteredTypes(), 4) << name;
    });
  }
}

// The system's loader would look elsewhere.
TEST(ZelGeoCoordSysLoader, AFolderWithAWordOfTheSystemsLoaderIsFalse) {
  for (const char* const word : {"$ORIGIN", "$LIB", "$PLATFORM", "${ORIGIN}", "${LIB}", "${PLATFORM}"}) {
    const std::string name = std::string("a folder ") + word + " b";
    ExpectNoPlugin(name, [&](const PluginFolder& folder) {
      folder.MakeFolder(name);
      std::filesystem::copy_file(ModuleFile("GeodesyGood"), name + "/" + kSuitesName);
      std::filesystem::current_path(name);
    });
  }
}

// Makes folders below the current one, each the current one of the next, until its path has this length.
void Descend(std::size_t length) {
  std::size_t at = std::filesystem::current_path().native().size();
  while (at < length) {
    // The rest is never a lone separator.
    const std::size_t rest = length - at;
    const std::size_t name = rest <= 201 ? rest - 1 : std::min<std::size_t>(200, rest - 3);
    std::filesystem::create_directory(std::string(name, 'd'));
    std::filesystem::current_path(std::string(name, 'd'));
    at += name + 1;
  }
}

TEST(ZelGeoCoordSysLoader, ThePathMayBeAsLongAsTheSystemTakes) {
  for (const std::size_t length : {300u, 1024u, 4000u, 4094u, 4095u}) {
    ExpectInChild([length] {
      const PluginFolder folder;
      Descend(length - 1 - kSuitesName.size());
      std::filesystem::copy_file(ModuleFile("GeodesyGood"), kSuitesName);
      EXPECT_TRUE(Load()) << length;
      EXPECT_EQ(RegisteredTypes(), 4) << length;
    });
  }
}

TEST(ZelGeoCoordSysLoader, APathThatIsLongerThanTheSystemTakesIsFalse) {
  for (const std::size_t length : {4096u, 4097u, 4200u, 9000u}) {
    ExpectInChild([length] {
      const PluginFolder folder;
      Descend(length - 1 - kSuitesName.size());
      std::filesystem::copy_file(ModuleFile("GeodesyGood"), kSuitesName);
      EXPECT_FALSE(Load()) << length;
      EXPECT_FALSE(Load()) << length;
      EXPECT_EQ(RegisteredTypes(), 0) << length;
    });
  }
}

// --- A thousand times ---------------------------------------------------------------------------------------------------------

// What a thousand rounds of `body` leave behind: nothing. The first ones may, as the system's own tables fill.
template <class Body>
void ExpectNoGrowth(const char* what, Body body) {
  for (int i = 0; i < 20; ++i) body();
  const ProcessUse before = UseOfThisProcess();
  for (int i = 0; i < 1000; ++i) body();
  const ProcessUse after = UseOfThisProcess();
  EXPECT_EQ(after.descriptors, before.descriptors) << what;
  EXPECT_LE(after.mappings, before.mappings + kMappingsOfTheHeap) << what;
  EXPECT_LE(after.allocated, before.allocated + 4096) << what;  // four bytes a round would be more
}

TEST(ZelGeoCoordSysLoader, AThousandLoadsAndUnloadsLeaveNothing) {
  ExpectInChild([] {
    PlatformModules& modules = PlatformModules::System();
    for (const char* const name : {"GeodesyGood", "GeodesyRegistersNothing", "LanguageModule"}) {
      ExpectNoGrowth(name, [&] {
        const ModuleHandle module = modules.Load(ModuleFile(name));
        ASSERT_NE(module, nullptr);
        EXPECT_EQ(modules.FindExport(module, "an export that is not there"), nullptr);
        modules.Unload(module);
      });
    }
    EXPECT_FALSE(IsMapped("LanguageModule.so"));
  });
}

TEST(ZelGeoCoordSysLoader, AThousandFailedLoadsLeaveNothing) {
  ExpectInChild([] {
    const TemporaryFolder folder;
    const std::string whole = ModuleContent("GeodesyGood");
    const std::vector<std::string> paths = {folder.File("missing.so"),
                                            folder.Path(),
                                            folder.Write("empty.so", ""),
                                            folder.Write("text.so", "no module"),
                                            folder.Write("short.so", whole.substr(0, EndOfSegments(whole) - 1)),
                                            folder.File(std::string(5000, 'x')),
                                            ModuleFile("GeodesyUnresolved")};
    PlatformModules& modules = PlatformModules::System();
    for (const std::string& path : paths) {
      ExpectNoGrowth(path.c_str(), [&] { EXPECT_EQ(modules.Load(path), nullptr) << path; });
    }
    EXPECT_FALSE(IsMapped("GeodesyUnresolved.so"));
  });
}

TEST(ZelGeoCoordSysLoader, AThousandCallsOfAPluginLeaveNothing) {
  ExpectInChild([] {
    const PluginFolder folder;
    folder.Place("GeodesyGood");
    ASSERT_TRUE(Load());
    ExpectNoGrowth("calls", [] { EXPECT_TRUE(Load("another name")); });
    EXPECT_EQ(RegisteredTypes(), 4);
  });
  ExpectInChild([] {
    const PluginFolder folder;
    folder.Place("GeodesyWithoutExport");
    ExpectNoGrowth("calls without the export", [] { EXPECT_FALSE(Load()); });
  });
}

}  // namespace
