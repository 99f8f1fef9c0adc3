// Whatever is made once in a process, in every order of first uses: a process that has used any of it ends well, and leaves
// nothing behind. Stands in a folder of its own, so that the process which forks the children has itself used none of it.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <deque>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/Effort.h"
#include "tests/support/SourceFolder.h"
#include "zelbase/config/detail/Crc32.h"
#include "zelbase/frame/ZelBase.h"

namespace {

// --- The first uses: each may also come again, at any time ----------------------------------------------------------------

class Module : public CBaseInitializer {
 public:
  std::string GetName() const override { return "a module with a name beyond the short ones"; }
};

class Wording : public ErrorWording {
 public:
  bool Get(const std::string&, const std::string&, std::string& text) const override {
    text = "a wording that is longer than the short ones: %s";
    return true;
  }
};

class Texts : public NumberedTextTable {
 public:
  bool Get(int, std::string& text) const override {
    text = "a numbered text that is longer than the short ones: %s";
    return true;
  }
};

class Lines : public LineDataICreator {
 public:
  LineData* Create(const std::string& name) override { return new LineData(name); }
};

class Builders : public MessageBuilderICreator {
 public:
  CMessageBuilder* Create() override { return new CMessageBuilder; }
};

void UseErrorList() {
  GenericError error("a description that is longer than the short ones");
  error.AddCause(FileError("C:\\a folder\\a file that is not there.ini", FileError::Open));
  error.Report("a context of its own");
  ReportError(error);
}
void UseErrorString() {
  { const ErrorString error("a failure that is longer than the short ones"); }
  static_cast<void>(ErrorString::LastError());
}
void UseEmptyError() { static_cast<void>(GenericError().GetCause(0).Format()); }
void UseInitializers() {
  CInitializerList& list = CInitializerList::GetInitializers();
  list.AddInitializer(new Module);
  list.RegisterDevices();
}
void UseTime() { static_cast<void>(CExTime().TimeToString(CExTime().GetCurTime(), true, true, true)); }
void UseTimeSync() { CExTimeSync::GetExTimeSync().StartSync(); }
void UseSettings() {
  FileObject settings;
  settings.FileOpen("C:\\a folder\\settings that are not there.ini", false);
  settings.SetItem("section", "key", 1.5);
}
void UseTranslator() { static_cast<void>(Translator::Instance().GetErrorMessagesString("File Error", "Open")); }
void UseErrorMessageFile() {
  ErrorMessageFile::Get().Open("C:\\a folder\\messages that are not there.ini");
  ErrorMessageFile::Get().Open(SourceFolder() + "/CMakePresets.json");  // any text serves
  static_cast<void>(FileError("C:\\a folder\\a file", FileError::Read).Format());
}
void UseHelp() {
  HelpProvider::GetInstance().SetHelpFilename("a help file that is not there.chm");
  static_cast<void>(HelpProvider::GetInstance().ShowHelpfile("a key that is longer than the short ones"));
}
void UseDataErrors() { DaxError("a data stack with a long name", DaxError::Read, "file", true, 1.7e12).Report("a context of its own"); }
void UseWording() { ErrorWording::Install(std::make_shared<Wording>()); }
void UseTexts() { InstallNumberedTexts(std::make_shared<Texts>()); }
void UseChecksums() { static_cast<void>(FileObjectError("file", "section", "key", FileObjectError::KeyNotFound).Signature()); }
void UseClock() { static_cast<void>(PlatformService<PlatformClock>::Current().Counter()); }
void UseFiles() { static_cast<void>(PlatformService<PlatformFiles>::Current().IsRegularFile("C:\\a file that is not there")); }
void UseProcesses() { static_cast<void>(PlatformService<PlatformProcesses>::Current().CurrentId()); }
void UseThreads() { NameThread(PlatformThreads::kCallingThread, "a name"); }
void UseFolders() { static_cast<void>(GetFreeDiskSpace("C:\\a folder that is not there")); }
void UseModules() { static_cast<void>(GetAppPath()); }
void UseHelpService() { static_cast<void>(PlatformService<PlatformHelp>::Current().Show("a help file that is not there.chm", {})); }
void UseSerialPorts() { static_cast<void>(PlatformService<PlatformSerialPorts>::Current().Names()); }
void UseSystemClipboard() { static_cast<void>(PlatformService<PlatformClipboard>::Current().Get()); }
void UseRuntimeClasses() {
  for (const char* const name : {"CObject", "CCF_HDROP", "CCF_DispInfo", "CCF_DataInfo"}) {
    const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject(name));
  }
  const CCF_HDROP dropped;
  const CCF_DataInfo data;
}
void UseLineDataList() {
  LineDataList& list = LineDataList::GetLineDataList();
  const std::unique_ptr<LineData> known(list.Create(7, "a line"));
  if (known == nullptr) list.RegisterLineData(7, new Lines);
  const std::unique_ptr<LineData> line(list.Create(7, "a line with a name beyond the short ones"));
}
void UseClipboard() {
  COleDataSource source;
  CCF_DispInfo payload;
  payload.SetName("a display with a name beyond the short ones");
  CWDClipboardData::Get().SetData(&source, &payload, 2);
  source.SetClipboard();
  COleDataObject object;
  object.AttachClipboard();
  CWDClipboardData::Get().GetData(&object, &payload, 2);
  const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject(payload.GetRuntimeClass()->m_lpszClassName));
}
void UseMessageBuilders() {
  CMessageBuilderList& list = CMessageBuilderList::GetMessageBuilderList();
  list.UnRegisterMessageBuilder("a builder with a name beyond the short ones");
  list.RegisterMessageBuilder("a builder with a name beyond the short ones", new Builders);
  const std::unique_ptr<CMessageBuilder> builder(list.Create("a builder with a name beyond the short ones"));
}
class Actions : public ZelActionICreator {
 public:
  ZelAction* Create() override { return new ZelAction; }
};

void UseActions() {
  ZelActionList& list = ZelActionList::GetActionList();
  const std::unique_ptr<ZelAction> known(list.Create("an action group with a name beyond the short ones"));
  if (known == nullptr) {
    list.RegisterActionGroup("an action group with a name beyond the short ones", new Actions);
    auto* const file = new FileObject;
    file->SetItem("an action", "Group", "an action group with a name beyond the short ones");
    list.RegisterAction("an action", file);
  }
  const std::unique_ptr<ZelAction> action(list.Create("an action"));
}

class Tool : public ZelTool {
 public:
  void Activate() override {}
  void Deactivate() override {}
  void ShowEditor() override {}
  void CloseEditor() override {}
};

class Tools : public ToolICreator {
 public:
  ZelTool* Create() override { return new Tool; }
};

void UseTools() {
  CToolList& list = CToolList::GetToolList();
  const std::unique_ptr<ZelTool> known(list.Create("a tool with a name beyond the short ones"));
  if (known == nullptr) list.RegisterTool("a tool with a name beyond the short ones", new Tools);
  const std::unique_ptr<ZelTool> tool(list.Create("a tool with a name beyond the short ones"));
}

class Systems : public ZelCoordSysICreator {
 public:
  ZelGeoCoordSysBase* Create() override { return nullptr; }
};

class Databases : public GeoDatabaseICreator {
 public:
  ZelGeoDatabaseBase* Create() override { return nullptr; }
};

class StaticData : public GeoStaticICreator {
 public:
  ZelGeoStaticDataBase* Create() override { return new SpareGeoStaticData; }
};

class GeoidModels : public GeoidModelICreator {
 public:
  GeoidModel* Create() override { return nullptr; }
};

constexpr const char* kType = "a type with a name beyond the short ones";

void UseCoordSysLoader() { ZelGeoCoordSysLoader::Instance().LoadDLL("a name that loads nothing", nullptr); }
void UseCoordSystems() {
  ZelGeoCoordSysList& systems = ZelGeoCoordSysList::GetCoordSysList();
  systems.UnRegisterGeoCoordSys(kType);
  systems.RegisterGeoCoordSys(kType, new Systems);
}
void UseGeoDatabases() {
  ZelGeoDatabaseBaseList& databases = ZelGeoDatabaseBaseList::GetGeoDatabaseList();
  databases.UnRegisterGeoDatabase(kType);
  databases.RegisterGeoDatabase(kType, new Databases);
}
void UseGeoStaticData() {
  ZelGeoStaticDatabaseList& data = ZelGeoStaticDatabaseList::GetGeoStaticDataList();
  const std::unique_ptr<ZelGeoStaticDataBase> known(data.Create(kType));
  if (known == nullptr) data.RegisterGeoStaicDatabase(kType, new StaticData);
}
void UseGeoidModels() {
  std::vector<std::string> names;
  GeoidModelList::GetGeoidModelList().GetGeoidModelNames(names);
  if (names.empty()) GeoidModelList::GetGeoidModelList().RegisterGeoidModel(kType, 18, new GeoidModels);
}

// What each thread has one of, for items that are not there; callers may write to it.
void UseSpareItems() {
  CZelString items;
  if (!items[7].empty()) std::abort();
  items[7] = "a text beyond the short ones for an item that is not there";
  CDataInfoArray infos;
  if (!infos[7].GetUserDescription().empty()) std::abort();
  infos[7].SetUserDescription("a description beyond the short ones for an item that is not there");
}
void UseGeographicText() {
  std::string text;
  FormatGeogs(52.5, 1, 4, 10, text, true, true);
}
void UseFoundFiles() {
  const FileFinder none;
  if (!none[7].Name(true).empty()) std::abort();
}
void UseMatrices() {
  Matrix factor(40, 40);
  factor *= 2.0;
  static_cast<void>(factor * factor * Matrix::NULL_MATRIX);
}
void UseLongChecksums() {
  const std::string bytes(1000, 'x');
  static_cast<void>(zelbase::detail::UpdateCrc32(0, bytes.data(), bytes.size()));
}
void UseUnits() { static_cast<void>(CZelUnitCnv().GetUnitMnem(CZelUnitCnv::Depth)); }
void UseThreadPool() {
  ThreadPool pool(1);
  pool.Close();
  pool.Wait();
}
void UseLanguages() {
  ZELCORE::LoadAPPResourceDLL(nullptr);
  static_cast<void>(NumberedText(12034));
}
void UseModuleState() {
  static int place = 0;
  ZelBaseMain(&place, ZELBASE_PROCESS_ATTACH, nullptr);
  ZelBaseMain(&place, ZELBASE_PROCESS_DETACH, nullptr);
}

struct Use {
  const char* name;
  void (*call)();
};
constexpr Use kUses[] = {{"ErrorList", UseErrorList},
                         {"ErrorString", UseErrorString},
                         {"EmptyError", UseEmptyError},
                         {"Initializers", UseInitializers},
                         {"Time", UseTime},
                         {"TimeSync", UseTimeSync},
                         {"Settings", UseSettings},
                         {"Translator", UseTranslator},
                         {"ErrorMessageFile", UseErrorMessageFile},
                         {"Help", UseHelp},
                         {"DataErrors", UseDataErrors},
                         {"Wording", UseWording},
                         {"Texts", UseTexts},
                         {"Checksums", UseChecksums},
                         {"Clock", UseClock},
                         {"Files", UseFiles},
                         {"Processes", UseProcesses},
                         {"Threads", UseThreads},
                         {"Folders", UseFolders},
                         {"Modules", UseModules},
                         {"HelpService", UseHelpService},
                         {"SerialPorts", UseSerialPorts},
                         {"SystemClipboard", UseSystemClipboard},
                         {"RuntimeClasses", UseRuntimeClasses},
                         {"LineDataList", UseLineDataList},
                         {"Clipboard", UseClipboard},
                         {"MessageBuilders", UseMessageBuilders},
                         {"Actions", UseActions},
                         {"Tools", UseTools},
                         {"CoordSysLoader", UseCoordSysLoader},
                         {"CoordSystems", UseCoordSystems},
                         {"GeoDatabases", UseGeoDatabases},
                         {"GeoStaticData", UseGeoStaticData},
                         {"GeoidModels", UseGeoidModels},
                         {"SpareItems", UseSpareItems},
                         {"GeographicText", UseGeographicText},
                         {"FoundFiles", UseFoundFiles},
                         {"Matrices", UseMatrices},
                         {"LongChecksums", UseLongChecksums},
                         {"Units", UseUnits},
                         {"ThreadPool", UseThreadPool},
                         {"Languages", UseLanguages},
                         {"ModuleState", UseModuleState}};
constexpr std::size_t kUseCount = std::size(kUses);

// A module's load chooses its language, and languages are chosen on one thread at a time.
bool AreForOneThread(const Use& first, const Use& second) {
  const auto choosesLanguage = [](const Use& use) { return use.call == UseLanguages || use.call == UseModuleState; };
  return first.call == second.call || (choosesLanguage(first) && choosesLanguage(second));
}

void UseAll() {
  for (const Use& use : kUses) use.call();
}

// --- Who comes late: what is made before all first uses, between two of them, and after them --------------------------------

bool g_useLate = false;

// Uses everything when it goes, if it is told to.
struct LateUser {
  ~LateUser() {
    if (g_useLate) UseAll();
  }
};
const LateUser g_before;  // goes after whatever a first use has made

void UseInTurn(const Use& first, const Use& second) {
  g_useLate = true;
  std::atexit(UseAll);
  first.call();
  static const LateUser between;
  std::atexit(UseAll);
  second.call();
  static const LateUser after;
  std::atexit(UseAll);
}

const Use* g_first = nullptr;
const Use* g_second = nullptr;

// One of eight statics of its own, which uses everything when it goes.
template <int Number>
void MakeLateUser() {
  static const LateUser user;
}
constexpr void (*kMakeLateUser[])() = {MakeLateUser<0>, MakeLateUser<1>, MakeLateUser<2>, MakeLateUser<3>,
                                       MakeLateUser<4>, MakeLateUser<5>, MakeLateUser<6>, MakeLateUser<7>};

// Each once, in an order by `random`, with functions for the exit and statics made here and there on the way.
void UseInAnyOrder(std::mt19937& random) {
  g_useLate = true;
  std::vector<const Use*> order;
  for (const Use& use : kUses) order.push_back(&use);
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random() % i]);
  for (const Use* const use : order) {
    if (random() % 8 == 0) std::atexit(UseAll);
    if (random() % 8 == 0) kMakeLateUser[random() % std::size(kMakeLateUser)]();
    use->call();
  }
}

// --- The children -----------------------------------------------------------------------------------------------------------

// Children that end by exit, each expected to do so in silence and with code 0. Some run at once, since most of their time is a
// wait for the clock.
class SilentEnds {
 public:
  ~SilentEnds() {
    while (!m_running.empty()) Finish();
  }
  void Add(const std::string& name, const std::function<void()>& body) {
    if (m_running.size() == kAtOnce) Finish();
    const auto run = [&body] {
      body();
      return 0;
    };
    m_running.emplace_back(name, std::make_unique<ChildProcess>(run, ChildProcess::Ending::Full));
  }

 private:
  static constexpr std::size_t kAtOnce = 8;

  void Finish() {
    const auto& [name, child] = m_running.front();
    EXPECT_EQ(child->Wait(), 0) << name;
    EXPECT_EQ(child->ErrorText(), "") << name;
    EXPECT_EQ(child->OutputText(), "") << name;
    m_running.pop_front();
  }

  std::deque<std::pair<std::string, std::unique_ptr<ChildProcess>>> m_running;
};

class SingletonsLong : public testing::TestWithParam<std::size_t> {
 protected:
  void SetUp() override {
    ASSERT_EQ(Error::g_ErrorID, 0) << "this process itself has used what the children are to use first";
    m_first = &kUses[GetParam()];
  }

  // A child for each second use, or for every `stride`-th.
  template <class Body>
  void WithEachSecond(Body body, std::size_t stride = 1) {
    SilentEnds ends;
    for (std::size_t i = GetParam() % stride; i < kUseCount; i += stride) {
      const Use& second = kUses[i];
      ends.Add(std::string(m_first->name) + ", " + second.name, [&, this] { body(*m_first, second); });
    }
  }

  const Use* m_first = nullptr;
};
constexpr auto kStride = static_cast<std::size_t>(Effort(1, 6));

TEST_P(SingletonsLong, UsedFirstInMainEndWell) { WithEachSecond(UseInTurn); }

TEST_P(SingletonsLong, UsedFirstOnAThreadThatHasEndedEndWell) {
  WithEachSecond([](const Use& first, const Use& second) { std::thread([&] { UseInTurn(first, second); }).join(); }, kStride);
}

// Two that are not one and the same: the list of initializers and the module's state belong to one thread at a time.
TEST_P(SingletonsLong, UsedFirstByTwoThreadsAtOnceEndWell) {
  WithEachSecond(
      [](const Use& first, const Use& second) {
        if (AreForOneThread(first, second)) return;
        g_useLate = true;
        std::thread other(second.call);
        first.call();
        other.join();
      },
      kStride);
}

TEST_P(SingletonsLong, UsedFirstWhileTheProcessEndsEndWell) {
  WithEachSecond(
      [](const Use& first, const Use& second) {
        g_first = &first;
        g_second = &second;
        std::atexit([] { UseInTurn(*g_first, *g_second); });
      },
      kStride);
}

INSTANTIATE_TEST_SUITE_P(FirstUses, SingletonsLong, testing::Range(std::size_t{0}, kUseCount),
                         [](const testing::TestParamInfo<std::size_t>& use) { return kUses[use.param].name; });

TEST(SingletonsInAnyOrderLong, EndWell) {
  SilentEnds ends;
  for (unsigned int seed = 1; seed <= 200; ++seed) {
    ends.Add("seed " + std::to_string(seed), [seed] {
      std::mt19937 random(seed);
      UseInAnyOrder(random);
    });
  }
}

#if defined(__SANITIZE_ADDRESS__)
// The other tests say something about leaks only because this one holds.
TEST(SingletonsUnderTheLeakSearch, AChildThatLosesMemoryIsTold) {
  ChildProcess child(
      [] {
        std::thread([] { new Module; }).join();
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_NE(child.Wait(), 0);
  EXPECT_NE(child.ErrorText().find("LeakSanitizer"), std::string::npos) << child.ErrorText();
}
#endif

}  // namespace
