// The texts of the suite in the language of its user: one file of translations, and how each family of settings files names
// its items in it. Neighbours: zelbase/errors/ErrorMessageFile.h, which asks here for the wording of errors;
// AbstractZELMessage.h, which hears of what is missing.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "zelbase/config/FileObject.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/units/AbstractZELMessage.h"
#include "zelbase/units/detail/TranslatorSections.h"

// The files of default actions, and what of an action is translated. Values without a name have an empty text.
enum DefaultActionsFilenames : int {
  DEFAULT_ACTIONS_ACQUISITION = 0,
  DEFAULT_ACTIONS_CONTROL_CENTER = 1,
  DEFAULT_ACTIONS_PRESENTATION = 2
};
enum DefaultActionsKeys : int { DEFAULT_ACTIONS_NAME = 0, DEFAULT_ACTIONS_DESCRIPTION = 1, DEFAULT_ACTIONS_TOOLTIP = 2 };

// "Acquisition", "Control Center", "Presentation"; otherwise empty.
ZELBASE_API std::string DefaultActionFilename2String(DefaultActionsFilenames filename);

// "Name", "Description", "ToolTip"; otherwise empty.
ZELBASE_API std::string DefaultActionKey2String(DefaultActionsKeys key);

// The translations of the one language of this process. The suite speaks English, and a text that is not found is empty: the
// caller keeps its English one.
//
//   Translator& translator = Translator::Instance();
//   if (translator.IsLanguageForeign()) {
//     const std::string text = translator.GetUnitsString("Length", "Metre");
//     if (!text.empty()) name = text;
//   }
//
// Which language. "zelcore.ini" in the folder for data common to all users, below "VESOK\ZELCORE", whatever the program:
//
//   [Language]
//   Language = 0413                  four hexadecimal digits of a locale, or any other name; opaque here
//   UseDeveloperAsserts = true       these two are true unless they are exactly "false" ("False" and "0" are true)
//   ShowTranslatorMessages = true
//
// Without the key the language is English, as it is with "0409". A key with an empty value is a language with an empty
// name. The translations lie in ".\localizations\<language>\Translator.ini" from the folder of the module that holds this
// class, the program or the shared library. In it, a section is named after the English file it translates, and
// the operations below tell how a key is made; "." stands between its parts.
//
// All of it is read at the first Instance() and not again: another language takes effect at the next start. Nothing is
// reported and nothing thrown: no settings mean English, no translations mean look-ups that fail.
//
// Threads: Instance and the look-ups may be called from any thread at once. They take no lock, so what GetTranslatorIni
// gives is changed only while nobody looks up. The object stays until the process has ended, so that an error formatted
// late still finds its words; only the message logger is forgotten when the process begins to end.
class ZELBASE_API Translator {
 public:
  using DefaultActionsFilenames = ::DefaultActionsFilenames;
  using DefaultActionsKeys = ::DefaultActionsKeys;

  static constexpr char PATH_SEPARATOR = '\\';
  static constexpr char INI_ITEM_SEPARATOR = '.';
  inline static const std::string LCID_ENGLISH{"0409"};
  inline static const std::string LOCALIZATIONS_FOLDER_NAME{"localizations"};
  inline static const std::string SECTION_DISPLAY_MANAGER{zelbase::detail::kDisplayManagerSection};
  inline static const std::string SECTION_DEFAULT_ACTIONS{zelbase::detail::kDefaultActionsSection};
  inline static const std::string SECTION_ATTRIB_DEF_V2{zelbase::detail::kAttribDefV2Section};
  inline static const std::string SECTION_PLOT_FRIENDLY_NAMES{zelbase::detail::kPlotFriendlyNamesSection};
  inline static const std::string SECTION_FILE_TYPES{zelbase::detail::kFileTypesSection};
  inline static const std::string SECTION_ERROR_MESSAGES{zelbase::detail::kErrorMessagesSection};
  inline static const std::string SECTION_EVENTS{zelbase::detail::kEventsSection};
  inline static const std::string SECTION_TRANSFORMATIONS{zelbase::detail::kTransformationsSection};
  inline static const std::string SECTION_UNITS{zelbase::detail::kUnitsSection};
  inline static const std::string SECTION_DATA_DEF{zelbase::detail::kDataDefSection};
  inline static const std::string SECTION_USERMAP_SYMBOLS{zelbase::detail::kUserMapSymbolsSection};

  // The one translator, made at first use.
  static Translator& Instance();

  Translator(const Translator&) = delete;
  Translator& operator=(const Translator&) = delete;

  // --- Look-ups ----------------------------------------------------------------------------------------------------
  //
  // Each gives the translation, or an empty text when the section or the key is missing or the value is empty. That goes
  // to the message logger, if one is set and the setting "ShowTranslatorMessages" allows: once a look-up. Texts may be of any
  // length and hold any bytes; "%" means nothing in them. They look up in English, too, where there are no translations.

  // Section SECTION_DEFAULT_ACTIONS, key "<file>.<action>.<what>", as "Acquisition.Start.ToolTip".
  std::string GetDefaultActionsString(DefaultActionsFilenames filename, const std::string& action, DefaultActionsKeys key) const;

  // Section SECTION_DISPLAY_MANAGER, key "<key>" or "<first>.<second>".
  std::string GetDisplayManagerString(const std::string& key) const;
  std::string GetDisplayManagerString(const std::string& first, const std::string& second) const;

  // Section SECTION_ATTRIB_DEF_V2, key "<key>"; for a control "@<key>".
  std::string GetAttribDefV2String(const std::string& key) const;
  std::string GetAttribDefV2CtrlString(const std::string& key) const;

  // Section SECTION_PLOT_FRIENDLY_NAMES, key "<key>".
  std::string GetPlotFriendlyNamesString(const std::string& key) const;

  // Section SECTION_FILE_TYPES, key "<type>.<key>" and "FileTypeList.<type>", where <type> is the row of fileTypeKeys, empty
  // for a number outside 0 to 108.
  std::string GetFileTypesString(int type, const std::string& key) const;
  std::string GetFileTypeListString(int type) const;

  // Section SECTION_ERROR_MESSAGES, key "<first>.<second>".
  std::string GetErrorMessagesString(const std::string& first, const std::string& second) const;

  // Section SECTION_EVENTS, key "<number>.Name", the number in decimal.
  std::string GetEventsString(int number) const;

  // Section SECTION_TRANSFORMATIONS, key "<name>.Description".
  std::string GetTransformationsString(const std::string& name) const;

  // Section SECTION_UNITS, key "<first>.<second>".
  std::string GetUnitsString(const std::string& first, const std::string& second) const;

  // Section SECTION_DATA_DEF, key "<first>.<second>".
  std::string GetDataDefString(const std::string& first, const std::string& second) const;

  // Section SECTION_USERMAP_SYMBOLS, key "<key>".
  std::string GetUserMapSymbolString(const std::string& key) const;

  // --- About the language ------------------------------------------------------------------------------------------

  // Whether the language is another than English, by an exact comparison. True also when its file is missing.
  bool IsLanguageForeign() const { return m_foreign; }

  // As it stands in the setting; empty when there is none.
  const std::string& GetLanguageID() const { return m_languageId; }

  // The two further settings; true in English.
  bool UseDeveloperAsserts() const { return m_useDeveloperAsserts; }
  bool ShowTranslatorMessages() const { return m_showTranslatorMessages; }

  // The translations themselves. Look-ups see what is changed in it.
  FileObject& GetTranslatorIni() { return m_TranslatorIni; }
  const FileObject& GetTranslatorIni() const { return m_TranslatorIni; }

  // The ten sections that are named after files, SECTION_DISPLAY_MANAGER first, in the order of their constants. Without
  // SECTION_USERMAP_SYMBOLS, which is no file.
  std::vector<std::string> GetIniFilesNames() const;

  // Who hears of missing translations; null for nobody, as at first. Not owned, and called on the thread that looks up.
  void SetZELMessageLogger(AbstractZELMessage* logger) { m_messageLogger = logger; }

  // Reads the language from "zelcore.ini" as it is now. False, `language` untouched, when there is no such key, the module of
  // this class lies in no folder, or there is no folder for common data.
  static bool GetLanguageSetting(std::string& language);

  static std::string DefaultActionFilename2String(DefaultActionsFilenames filename) { return ::DefaultActionFilename2String(filename); }
  static std::string DefaultActionKey2String(DefaultActionsKeys key) { return ::DefaultActionKey2String(key); }

 private:
  Translator();
  ~Translator() = default;

  void Initialise();
  static Translator& Object();
  static std::string GetModulePath();
  static bool GetZelcoreiniPath(std::string& path);
  static std::string ModuleFolder();
  std::string GetString(const char* section, const std::string& key) const;
  void ShowMessageToTranslator(const std::string& text) const;

  FileObject m_TranslatorIni;
  std::string m_languageId;
  bool m_foreign = false;
  bool m_useDeveloperAsserts = true;
  std::atomic<AbstractZELMessage*> m_messageLogger{nullptr};
  bool m_showTranslatorMessages = true;
};
