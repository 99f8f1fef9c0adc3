// What modules of the suite read when they start and write when they end, with everything under it failing in turn: their texts in
// the user's language, the user's own actions, and the geodesy plug-in.
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/faults/AllocationFaults.h"
#include "tests/faults/FaultRuns.h"
#include "tests/faults/SystemCallFaults.h"
#include "tests/geodesy/GeodesyRegistries.h"
#include "tests/support/InChild.h"
#include "tests/support/TestModules.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/actions/ZelActionList.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/config/FileSection.h"
#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/frame/LanguageModules.h"
#include "zelbase/frame/detail/LanguageTables.h"
#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"
#include "zelbase/platform/CDynLinkLibrary.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"

namespace {

using zelbase::detail::LanguageTable;
using zelbase::detail::LoadLanguageTable;

constexpr char kTexts[] = "[Texts]\n12034 = Fehler, der so lang ist, dass er Speicher braucht\n12039 = Unbekannt\n";

const char* TextsOfLibrary(int number) { return number == 12034 ? "from the library" : nullptr; }

// A folder in which the languages and the settings lie, and modules and folders of the test's own.
class ModuleFaultsLong : public FaultFixture {
 protected:
  ModuleFaultsLong() {
    m_folders.SetCommonData(m_folder.InterfacePath());
    m_modules.SetProgramPath("C:\\suite\\app.exe");
    m_modules.SetModulePath("C:\\suite\\app.exe");
  }

  void MakeCommonFolder() const {
    m_folder.MakeFolder("VESOK");
    m_folder.MakeFolder("VESOK/ZELCORE");
  }

  // For what stays in an object of the process or of the test: the one list, the texts in force, the stand-in's notes.
  template <class Subject>
  void RunKept(FaultCase<Subject> what, unsigned long long least) {
    FaultRuns<Subject> runs(m_folder, std::move(what));
    runs.KeepsMemory();
    runs.All();
    EXPECT_GE(runs.Faults(), least);
  }

  FixedFolders m_folders;
  FixedModules m_modules;
  PlatformOverride<PlatformFolders> m_foldersInForce{m_folders};
  PlatformOverride<PlatformModules> m_modulesInForce{m_modules};
  int m_loaded = 0;  // of a library, before the run
};

TEST_F(ModuleFaultsLong, ALanguageThatIsATextFile) {
  FaultCase<LanguageTable> what;
  what.prepare = [&] { m_folder.Write("app_res.ini", kTexts); };
  what.run = [&](LanguageTable& loaded) {
    loaded = {};
    loaded = LoadLanguageTable(m_folder.File("app_res"));
    return loaded.table != nullptr;
  };
  what.picture = [](LanguageTable& loaded) {
    std::string text = "none";
    if (loaded.table != nullptr) loaded.table->Get(12034, text);
    return text;
  };
  what.afterFailure = [](LanguageTable& loaded, RunEnd, const std::string&) {
    EXPECT_EQ(loaded.handle, nullptr);
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  };
  RunKept(std::move(what), 30);
}

TEST_F(ModuleFaultsLong, ALanguageThatIsALibrary) {
  const std::string path = m_folder.File("app_res");
  const ModuleHandle library = m_modules.AddLibrary(path + m_modules.LibraryEnding());
  m_modules.AddExport(library, NUMBERED_TEXT_EXPORT, reinterpret_cast<void*>(&TextsOfLibrary));
  FaultCase<LanguageTable> what;
  what.run = [&](LanguageTable& loaded) {
    if (loaded.handle != nullptr) m_modules.Unload(loaded.handle);
    loaded = {};
    loaded = LoadLanguageTable(path);
    return loaded.table != nullptr;
  };
  what.picture = [&](LanguageTable& loaded) { return std::string(loaded.handle == library ? "loaded" : "none"); };
  what.afterFailure = [&](LanguageTable&, RunEnd, const std::string&) { EXPECT_EQ(m_modules.LoadCount(library), m_loaded); };
  what.make = [&] {
    m_loaded = m_modules.LoadCount(library);
    return std::make_unique<LanguageTable>();
  };
  FaultRuns<LanguageTable> runs(m_folder, std::move(what));
  runs.KeepsMemory();  // the stand-in notes what it was asked
  runs.MemoryOnly();
  EXPECT_GE(runs.Faults(), 4U);
}

TEST_F(ModuleFaultsLong, TheLanguageOfTheApplication) {
  ExpectInChild([&] {
    std::filesystem::current_path(m_folder.Path());
    FaultCase<int> what;
    what.prepare = [&] {
      MakeCommonFolder();
      m_folder.MakeFolder("localizations");
      m_folder.MakeFolder("localizations/Deutsch");
      m_folder.Write("VESOK/ZELCORE/zelcore.ini", "[Language]\nLanguage=Deutsch\n");
      m_folder.Write("localizations/Deutsch/app_res.dll", kTexts);
    };
    what.make = [] {
      AfxGetModuleState()->m_hCurrentResourceHandle = nullptr;
      InstallNumberedTexts(nullptr);
      return std::make_unique<int>(0);
    };
    what.run = [](int&) { return ZELCORE::LoadAPPResourceDLL(nullptr); };
    what.picture = [](int&) {
      return NumberedText(12034) + (AfxGetModuleState()->m_hCurrentResourceHandle == nullptr ? " built in" : " loaded");
    };
    what.strong = true;
    what.afterFailure = [](int&, RunEnd, const std::string& before) {
      EXPECT_EQ(before, "Unspecified Error built in");
      EXPECT_EQ(NumberedText(12034), "Unspecified Error");
      EXPECT_EQ(AfxGetModuleState()->m_hCurrentResourceHandle, nullptr);
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
    };
    RunKept(std::move(what), 30);
  });
}

class GroupCreator : public ZelActionICreator {
 public:
  ZelAction* Create() override { return new ZelAction; }
};

std::unique_ptr<FileObject> ActionsFile() {
  auto file = std::make_unique<FileObject>();
  for (const std::string id : {"first", "second"}) {
    file->SetItem(id, "Group", "G", true);
    file->SetItem(id, "Custom", true, true);
    file->SetItem(id, "Description", id + " action, whose name is too long for a short string", true);
  }
  return file;
}

TEST_F(ModuleFaultsLong, TheUsersActionsAreSaved) {
  ExpectInChild([&] {
    ZelActionList::SetApplicationName("app");
    ZelActionList& list = ZelActionList::GetActionList();
    list.RegisterActionGroup("G", new GroupCreator);
    FileObject* const file = ActionsFile().release();
    list.RegisterAction("first", file);
    list.RegisterAction("second", file);
    FaultCase<int> what;
    what.prepare = [&] { MakeCommonFolder(); };
    what.run = [&](int&) { return list.SaveCustomActions(); };
    what.picture = [&](int&) { return m_folder.Read("VESOK/ZELCORE/CustomActions[app].ini"); };
    what.afterFailure = [&](int&, RunEnd end, const std::string&) {
      std::vector<std::string> ids;
      EXPECT_EQ(list.GetActionIDs(ids), 2);
      if (end == RunEnd::False) {
        EXPECT_GE(GlobalErrorList::Get().NumErrors(true), 1);
      }
    };
    RunKept(std::move(what), 30);
  });
}

// Whatever fails, what is registered has gone with its list: nobody else may destroy it.
TEST_F(ModuleFaultsLong, RegisteringActions) {
  const std::string group = "a group whose name is too long for a short string";
  FaultCase<ZelActionList> what;
  what.run = [&](ZelActionList& list) {
    auto creator = std::make_unique<GroupCreator>();
    std::vector<std::string> names;
    if (list.GetActionGroups(names) == 0) list.RegisterActionGroup(group, creator.release());
    auto file = ActionsFile();
    if (list.GetActionIDs(names) == 0) list.RegisterAction("first", file.release());
    return list.GetActionIDs(names) == 1;
  };
  what.picture = [](ZelActionList& list) {
    std::vector<std::string> names;
    return std::to_string(list.GetActionIDs(names)) + std::to_string(list.GetActionGroups(names));
  };
  RunMemory(std::move(what), 4);
}

TEST_F(ModuleFaultsLong, ASectionOfAFile) {
  FileObject source;
  source.SetItem("Port 1", "Speed", 9600, true);
  source.SetItem("Port 1", "Name", "a device whose name is too long for a short string", true);
  FaultCase<FileSection> what;
  what.run = [&](FileSection& section) {
    FileSection copy;
    FileObject target;
    if (!section.GetFromFileObject("Port 1", source)) return false;
    copy = section;
    return copy.SetToFileObject(target) && target == source;
  };
  what.picture = [](FileSection& section) {
    int speed = 0;
    section.GetItem("Speed", speed);
    return section.Name() + std::to_string(speed);
  };
  RunMemory(std::move(what), 4);
}

// --- The geodesy plug-in ---------------------------------------------------------------------------------------------------

template <class Registry>
class GeodesyFaultsLong : public FaultFixture {
 public:
  class Creator : public Registry::Creator {
   public:
    typename Registry::Product* Create() override { return new typename Registry::Object("made", nullptr); }
  };
};

using Registries = testing::Types<CoordSysRegistry, DatabaseRegistry, StaticDataRegistry>;
TYPED_TEST_SUITE(GeodesyFaultsLong, Registries);

// A creator goes with its registry, or with the registration that finds no memory; the registry takes the next one all the same.
TYPED_TEST(GeodesyFaultsLong, RegisteringAndCreating) {
  const std::string type = "type";  // short: its copy is the caller's, and takes no memory
  FaultCase<typename TypeParam::List> what;
  what.run = [&](typename TypeParam::List& list) {
    std::vector<std::string> types;
    if (TypeParam::Types(list, types) == 0) TypeParam::Register(list, type, new typename TestFixture::Creator);
    const std::unique_ptr<typename TypeParam::Product> made(list.Create(type));
    return made != nullptr && TypeParam::Types(list, types) == 1;
  };
  what.picture = [](typename TypeParam::List& list) {
    std::vector<std::string> types;
    return TypeParam::Types(list, types) == 0 ? std::string() : types.front();
  };
  this->RunMemory(std::move(what), 4);
}

enum class PluginLoad { Loaded, NotLoaded, NoMemory };

PluginLoad LoadPlugin() {
  try {
    return ZelGeoCoordSysLoader::Instance().LoadDLL("ZELCoordSys", nullptr) ? PluginLoad::Loaded : PluginLoad::NotLoaded;
  } catch (const std::bad_alloc&) {
    return PluginLoad::NoMemory;
  }
}

// Loads the real plug-in in a child for each n, since it is tried once a process, until a run meets no fault. `check` is called
// in the child. Gives the number of runs with a fault.
template <class Faults>
int LoadPluginUnderEachFault(const std::function<void(Faults&, int n)>& order, const std::function<void(PluginLoad)>& check) {
  const TemporaryFolder folder;
  folder.Write("libZELGeoCoordSysR.so", ModuleContent("GeodesyGood"));
  for (int n = 1;; ++n) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, "at " + std::to_string(n));
    ExpectInChild([&] {
      std::filesystem::current_path(folder.Path());
      const int descriptors = CountOpenDescriptors();
      PluginLoad load = PluginLoad::Loaded;
      bool met = false;
      {
        Faults faults;
        order(faults, n);
        load = LoadPlugin();
        met = faults.FaultsGiven() > 0;
      }
      EXPECT_EQ(CountOpenDescriptors(), descriptors);
      if (met) {
        check(load);
        folder.Write("met", "");
      } else {
        EXPECT_EQ(load, PluginLoad::Loaded);
      }
    });
    if (testing::Test::HasFailure() || !std::filesystem::remove(folder.File("met"))) return n - 1;
  }
}

// A plug-in that cannot be read is none, for good.
TEST(GeodesyPluginFaultsLong, AFileThatCannotBeRead) {
  for (const int error : {EIO, EACCES, ESTALE}) {
    EXPECT_GE(
        LoadPluginUnderEachFault<SystemCallFaults>(
            [&](SystemCallFaults& faults, int n) { faults.FailAt(static_cast<unsigned>(n), error, SystemCallFaults::Repeat::ForEver); },
            [](PluginLoad load) {
              EXPECT_NE(load, PluginLoad::NoMemory);
              EXPECT_EQ(LoadPlugin(), load);
            }),
        2);
  }
}

// Whatever finds no memory, the loader's own texts or the plug-in's creators, the host runs on, and may ask again.
TEST(GeodesyPluginFaultsLong, NoMemory) {
  for (const bool forEver : {false, true}) {
    EXPECT_GE(LoadPluginUnderEachFault<AllocationFaults>(
                  [&](AllocationFaults& faults, int n) { faults.FailAt(static_cast<unsigned>(n), forEver); },
                  [](PluginLoad load) {
                    EXPECT_NE(load, PluginLoad::Loaded);
                    EXPECT_NE(LoadPlugin(), PluginLoad::NoMemory);
                    std::vector<std::string> types;
                    EXPECT_LE(ZelGeoCoordSysList::GetCoordSysList().GetCoordSysTypes(types), 1);
                  }),
              8);
  }
}

}  // namespace
