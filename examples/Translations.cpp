// Translations: the suite's texts in the language of its user, and what a host does where one is missing. Its argument is the folder
// samples/ of the source tree, which stands in for the program's own and for that of the data common to all users.
#include <cstdio>
#include <string>

#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"
#include "zelbase/platform/PlatformService.h"
#include "zelbase/units/Translator.h"

class Listener : public AbstractZELMessage {
 public:
  void ShowMessage(int /*messageClass*/, const std::string& text, int /*second*/, const std::string& /*detail*/, int /*third*/) override {
    std::printf("  told: %s\n", text.c_str());
  }
};

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) return 1;
  const std::string samples = arguments[1];
  FixedFolders folders;
  folders.SetCommonData(samples + "\\common");
  FixedModules modules;
  modules.SetModulePath(samples + "\\zel.exe");
  const PlatformOverride<PlatformFolders> foldersInForce(folders);
  const PlatformOverride<PlatformModules> modulesInForce(modules);

  Listener listener;
  Translator& translator = Translator::Instance();  // reads the language, once a process
  translator.SetZELMessageLogger(&listener);
  std::printf("language %s, %s\n", translator.GetLanguageID().c_str(), translator.IsLanguageForeign() ? "foreign" : "English");
  for (const char* const unit : {"Fathom", "NauticalMile"}) {
    std::string name = translator.GetUnitsString("Depth Units", unit);
    if (name.empty()) name = unit;  // a text that is missing stays English
    std::printf("%s: %s\n", unit, name.c_str());
  }
  std::printf("%s\n", translator.GetErrorMessagesString("FileError", "Type").c_str());
  translator.SetZELMessageLogger(nullptr);
  return 0;
}

// Prints:
//   language 0407, foreign
//   Fathom: Faden
//     told: Translation for key (Depth Units.NauticalMile) in section (Units.uni) could not be found!
//   NauticalMile: NauticalMile
//   Dateifehler
