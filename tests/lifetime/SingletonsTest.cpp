// Whatever is made once in a process, in every order of first uses: a process that has used any of it ends well, and leaves
// nothing behind. Stands in a folder of its own, so that the process which forks the children has itself used none of it.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/support/SourceFolder.h"
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
void UseDataErrors() {
  DaxError("a data stack with a long name", DaxError::Read, "file", true, 1.7e12).Report("a context of its own");
}
void UseWording() { ErrorWording::Install(std::make_shared<Wording>()); }
void UseTexts() { InstallNumberedTexts(std::make_shared<Texts>()); }
void UseChecksums() {
  static_cast<void>(FileObjectError("file", "section", "key", FileObjectError::KeyNotFound).Signature());
}
void UseServices() {
  static_cast<void>(PlatformService<PlatformClock>::Current().Counter());
  static_cast<void>(PlatformService<PlatformFiles>::Current().IsRegularFile("C:\\a file that is not there"));
  static_cast<void>(PlatformService<PlatformProcesses>::Current().CurrentId());
  NameThread(PlatformThreads::kCallingThread, "a name");
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

void UseGeodesyRegistries() {
  constexpr const char* kType = "a type with a name beyond the short ones";
  ZelGeoCoordSysLoader::Instance().LoadDLL("a name that loads nothing", nullptr);
  ZelGeoCoordSysList& systems = ZelGeoCoordSysList::GetCoordSysList();
  systems.UnRegisterGeoCoordSys(kType);
  systems.RegisterGeoCoordSys(kType, new Systems);
  ZelGeoDatabaseBaseList& databases = ZelGeoDatabaseBaseList::GetGeoDatabaseList();
  databases.UnRegisterGeoDatabase(kType);
  databases.RegisterGeoDatabase(kType, new Databases);
  ZelGeoStaticDatabaseList& data = ZelGeoStaticDatabaseList::GetGeoStaticDataList();
  const std::unique_ptr<ZelGeoStaticDataBase> known(data.Create(kType));
  if (known == nullptr) data.RegisterGeoStaicDatabase(kType, new StaticData);
  std::vector<std::string> names;
  GeoidModelList::GetGeoidModelList().GetGeoidModelNames(names);
  if (names.empty()) GeoidModelList::GetGeoidModelList().RegisterGeoidModel(kType, 18, new GeoidModels);
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
constexpr std::array<Use, 22> kUses = {{{"ErrorList", UseErrorList},
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
                                        {"Services", UseServices},
                                        {"LineDataList", UseLineDataList},
                                        {"Clipboard", UseClipboard},
                                        {"MessageBuilders", UseMessageBuilders},
                                        {"Actions", UseActions},
                                        {"Tools", UseTools},
                                        {"GeodesyRegistries", UseGeodesyRegistries},
                                        {"ModuleState", UseModuleState}}};

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

// --- The children -----------------------------------------------------------------------------------------------------------

// Runs `body` in a child that ends by exit, and expects a silent end with code 0.
template <class Body>
void ExpectSilentEnd(const Use& first, const Use& second, Body body) {
  ChildProcess child(
      [&] {
        body();
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << first.name << ", " << second.name;
  EXPECT_EQ(child.ErrorText(), "") << first.name << ", " << second.name;
  EXPECT_EQ(child.OutputText(), "") << first.name << ", " << second.name;
}

class Singletons : public testing::TestWithParam<std::size_t> {
 protected:
  void SetUp() override {
    ASSERT_EQ(Error::g_ErrorID, 0) << "this process itself has used what the children are to use first";
    m_first = &kUses[GetParam()];
  }
  const Use* m_first = nullptr;
};

TEST_P(Singletons, UsedFirstInMainEndWell) {
  for (const Use& second : kUses) {
    ExpectSilentEnd(*m_first, second, [&] { UseInTurn(*m_first, second); });
  }
}

TEST_P(Singletons, UsedFirstOnAThreadThatHasEndedEndWell) {
  for (const Use& second : kUses) {
    ExpectSilentEnd(*m_first, second, [&] { std::thread([&] { UseInTurn(*m_first, second); }).join(); });
  }
}

// Two that are not one and the same: the list of initializers and the module's state belong to one thread at a time.
TEST_P(Singletons, UsedFirstByTwoThreadsAtOnceEndWell) {
  for (const Use& second : kUses) {
    if (&second == m_first) continue;
    ExpectSilentEnd(*m_first, second, [&] {
      g_useLate = true;
      std::thread other(second.call);
      m_first->call();
      other.join();
    });
  }
}

TEST_P(Singletons, UsedFirstWhileTheProcessEndsEndWell) {
  for (const Use& second : kUses) {
    ExpectSilentEnd(*m_first, second, [&] {
      g_first = m_first;
      g_second = &second;
      std::atexit([] { UseInTurn(*g_first, *g_second); });
    });
  }
}

INSTANTIATE_TEST_SUITE_P(FirstUses, Singletons, testing::Range(std::size_t{0}, kUses.size()),
                         [](const testing::TestParamInfo<std::size_t>& use) { return kUses[use.param].name; });

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
