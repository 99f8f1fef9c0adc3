#include "zelbase/units/Translator.h"

#include <cstddef>
#include <iterator>
#include <string_view>

#include "zelbase/config/detail/QuietOpen.h"
#include "zelbase/frame/FileNames.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/frame/SectionNames.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/detail/FolderOf.h"

using namespace zelbase::detail;

namespace {

constexpr char kFolderStep = '.';
constexpr char kControlPrefix = '@';
constexpr const char* kLanguageKey = "Language";
constexpr const char* kAssertsKey = "UseDeveloperAsserts";
constexpr const char* kMessagesKey = "ShowTranslatorMessages";
constexpr int kTranslatorMessage = 3;  // the class of message, to the applications

// Any address in the module that this class was built into.
const char kInThisModule = 0;

std::string Joined(const std::string& first, const std::string& second) { return first + Translator::INI_ITEM_SEPARATOR + second; }

std::string FileTypeKey(int type) {
  if (type < 0 || static_cast<std::size_t>(type) >= std::size(fileTypeKeys)) return std::string();
  return fileTypeKeys[type];
}

std::string PlaceOf(const std::string& section, const std::string& key) {
  return "Translation for key (" + key + ") in section (" + section + ")";
}

// Kept: only "false" in lower case is false; an absent or empty setting is true.
bool ReadSetting(const FileObject& zelcore, const char* key) {
  std::string value;
  return !zelcore.GetItem(LANGUAGE_SECTION, key, value) || value != "false";
}

}  // namespace

std::string DefaultActionFilename2String(DefaultActionsFilenames filename) {
  switch (filename) {
    case DEFAULT_ACTIONS_ACQUISITION: return "Acquisition";
    case DEFAULT_ACTIONS_CONTROL_CENTER: return "Control Center";
    case DEFAULT_ACTIONS_PRESENTATION: return "Presentation";
  }
  return std::string();
}

std::string DefaultActionKey2String(DefaultActionsKeys key) {
  switch (key) {
    case DEFAULT_ACTIONS_NAME: return "Name";
    case DEFAULT_ACTIONS_DESCRIPTION: return "Description";
    case DEFAULT_ACTIONS_TOOLTIP: return "ToolTip";
  }
  return std::string();
}

// The object stays where it is when the process ends.
Translator& Translator::Object() {
  static Translator& object = *new Translator;
  return object;
}

Translator& Translator::Instance() {
  struct Ending {
    Ending() { Object(); }
    ~Ending() { Object().SetZELMessageLogger(nullptr); }
  };
  static const Ending ending;
  return Object();
}

Translator::Translator() { Initialise(); }

// Nothing in here may report: whoever hears of it asks for the wording of the error, and so for this object again.
void Translator::Initialise() {
  // Kept: a setting that is there but empty is a foreign language without a name.
  m_foreign = GetLanguageSetting(m_languageId) && m_languageId != LCID_ENGLISH;
  if (!m_foreign) return;  // Kept: in English the two settings stay true, whatever the file has

  std::string path = ModuleFolder();
  path.append({kFolderStep, PATH_SEPARATOR}).append(LOCALIZATIONS_FOLDER_NAME).append(1, PATH_SEPARATOR);
  path.append(m_languageId).append(1, PATH_SEPARATOR).append(TRANSLATOR_INI_FILENAME);
  OpenQuietly(m_TranslatorIni, path);

  FileObject zelcore;
  if (!GetZelcoreiniPath(path) || !OpenQuietly(zelcore, path)) return;
  m_useDeveloperAsserts = ReadSetting(zelcore, kAssertsKey);
  m_showTranslatorMessages = ReadSetting(zelcore, kMessagesKey);
}

std::string Translator::GetModulePath() { return PlatformService<PlatformModules>::Current().ModulePath(&kInThisModule); }

// With its last separator; empty when the module lies in no folder.
std::string Translator::ModuleFolder() { return FolderOf(GetModulePath()); }

bool Translator::GetZelcoreiniPath(std::string& path) {
  std::string folder;
  if (!PlatformService<PlatformFolders>::Current().CommonData(folder)) return false;
  // Kept: always this file, whatever the program; only the language module is chosen by another.
  path = folder + "\\VESOK\\" + DEFAULT_NAME + "\\" + ZEL_DEF_FILENAME;
  return true;
}

bool Translator::GetLanguageSetting(std::string& language) {
  std::string path;
  if (ModuleFolder().empty() || !GetZelcoreiniPath(path)) return false;
  FileObject zelcore;
  return OpenQuietly(zelcore, path) && zelcore.GetItem(LANGUAGE_SECTION, kLanguageKey, language);
}

// The one look-up. Peek writes nothing, so that threads do not meet here.
// Kept: in English too, where every look-up tells the logger that there is no such section.
std::string Translator::GetString(const char* section, const std::string& key) const {
  const std::string name = section;
  std::string_view value;
  if (!m_TranslatorIni.HasSection(name)) {
    ShowMessageToTranslator("Section (" + name + ") could not be found!");
  } else if (!m_TranslatorIni.Peek(name, key, value)) {
    ShowMessageToTranslator(PlaceOf(name, key) + " could not be found!");
  } else if (value.empty()) {
    ShowMessageToTranslator(PlaceOf(name, key) + " is empty!");
  }
  return std::string(value);
}

void Translator::ShowMessageToTranslator(const std::string& text) const {
  AbstractZELMessage* const logger = m_messageLogger;
  if (m_showTranslatorMessages && logger != nullptr) logger->ShowMessage(kTranslatorMessage, text, 1, std::string(), 1);
}

std::string Translator::GetDefaultActionsString(DefaultActionsFilenames filename, const std::string& action, DefaultActionsKeys key) const {
  // Kept: an enumerator without a name is an empty part, so that the key begins or ends with ".".
  return GetString(kDefaultActionsSection, Joined(Joined(DefaultActionFilename2String(filename), action), DefaultActionKey2String(key)));
}

std::string Translator::GetDisplayManagerString(const std::string& key) const { return GetString(kDisplayManagerSection, key); }

std::string Translator::GetDisplayManagerString(const std::string& first, const std::string& second) const {
  return GetString(kDisplayManagerSection, Joined(first, second));
}

std::string Translator::GetAttribDefV2String(const std::string& key) const { return GetString(kAttribDefV2Section, key); }

std::string Translator::GetAttribDefV2CtrlString(const std::string& key) const {
  return GetString(kAttribDefV2Section, kControlPrefix + key);
}

std::string Translator::GetPlotFriendlyNamesString(const std::string& key) const { return GetString(kPlotFriendlyNamesSection, key); }

std::string Translator::GetFileTypesString(int type, const std::string& key) const {
  return GetString(kFileTypesSection, Joined(FileTypeKey(type), key));
}

std::string Translator::GetFileTypeListString(int type) const {
  return GetString(kFileTypesSection, Joined("FileTypeList", FileTypeKey(type)));
}

std::string Translator::GetErrorMessagesString(const std::string& first, const std::string& second) const {
  return GetString(kErrorMessagesSection, Joined(first, second));
}

std::string Translator::GetEventsString(int number) const {
  std::string key;
  AppendInt(key, number);
  return GetString(kEventsSection, Joined(key, "Name"));
}

std::string Translator::GetTransformationsString(const std::string& name) const {
  return GetString(kTransformationsSection, Joined(name, "Description"));
}

std::string Translator::GetUnitsString(const std::string& first, const std::string& second) const {
  return GetString(kUnitsSection, Joined(first, second));
}

std::string Translator::GetDataDefString(const std::string& first, const std::string& second) const {
  return GetString(kDataDefSection, Joined(first, second));
}

std::string Translator::GetUserMapSymbolString(const std::string& key) const { return GetString(kUserMapSymbolsSection, key); }

std::vector<std::string> Translator::GetIniFilesNames() const {
  // Kept: without the symbols of user maps, which have a section and no file.
  return {kDisplayManagerSection, kDefaultActionsSection, kAttribDefV2Section, kPlotFriendlyNamesSection,
          kFileTypesSection,      kErrorMessagesSection,  kEventsSection,      kTransformationsSection,
          kUnitsSection,          kDataDefSection};
}
