// Any bytes as a file of translations: every item that a slow second reader finds in it is looked up by the operations that
// can make its key, and each look-up gives the item, or an empty text and one message.

#include <cstdint>
#include <string>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/config/SecondSettingsReader.h"
#include "tests/config/SettingsTestHelp.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/units/Translator.h"

namespace {

class Listener : public AbstractZELMessage {
 public:
  void ShowMessage(int, const std::string& text, int, const std::string&, int) override {
    ++messages;
    last = text;
  }
  int messages = 0;
  std::string last;
};

// English, whatever the computer is set to, so that the file comes from the fuzzer alone.
Translator& English(Listener& listener) {
  FixedFolders folders;
  const PlatformOverride<PlatformFolders> guard(folders);
  Translator& translator = Translator::Instance();
  translator.SetZELMessageLogger(&listener);
  return translator;
}

void Check(Listener& listener, const std::string& found, const std::string& expected) {
  Require(found == expected, "the translation");
  Require(listener.messages == (expected.empty() ? 1 : 0), "one message for each text that is missing");
  listener.messages = 0;
}

// The forms that join two parts, at each "." of the key.
void LookUpInParts(const Translator& translator, Listener& listener, const std::string& section, const std::string& key,
                   const std::string& expected) {
  for (std::size_t dot = key.find('.'); dot != std::string::npos; dot = key.find('.', dot + 1)) {
    const std::string first = key.substr(0, dot);
    const std::string second = key.substr(dot + 1);
    if (section == "Units.uni") Check(listener, translator.GetUnitsString(first, second), expected);
    if (section == "DataDef.ini") Check(listener, translator.GetDataDefString(first, second), expected);
    if (section == "ErrorMessages.ini") Check(listener, translator.GetErrorMessagesString(first, second), expected);
    if (section == "DisplayManager.ini") Check(listener, translator.GetDisplayManagerString(first, second), expected);
    if (section == "Transformations.ini" && second == "Description") {
      Check(listener, translator.GetTransformationsString(first), expected);
    }
  }
}

void LookUp(const Translator& translator, Listener& listener, const std::string& section, const std::string& key,
            const std::string& expected) {
  LookUpInParts(translator, listener, section, key, expected);
  if (section == "DisplayManager.ini") Check(listener, translator.GetDisplayManagerString(key), expected);
  if (section == "PlotFriendlyNames.ini") Check(listener, translator.GetPlotFriendlyNamesString(key), expected);
  if (section == "UserMapSymbols") Check(listener, translator.GetUserMapSymbolString(key), expected);
  if (section != "AttribDefV2.ini") return;
  Check(listener, translator.GetAttribDefV2String(key), expected);
  if (key.starts_with('@')) Check(listener, translator.GetAttribDefV2CtrlString(key.substr(1)), expected);
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  static Listener listener;
  static Translator& translator = English(listener);
  const std::string text(reinterpret_cast<const char*>(data), size);
  ReadFrom(translator.GetTranslatorIni(), text);
  const SecondSettingsReader expected(text);
  for (const auto& [section, items] : expected.sections) {
    for (const auto& [key, value] : items) LookUp(translator, listener, section, key, value);
  }
  const auto units = expected.sections.find("Units.uni");
  const std::string missing = text.substr(0, 100) + ".%s";
  if (units == expected.sections.end() || !units->second.contains(missing + "." + missing)) {
    Check(listener, translator.GetUnitsString(missing, missing), "");
    const bool hasSection = units != expected.sections.end();
    const std::string key = missing + "." + missing;
    const std::string told = hasSection ? "Translation for key (" + key + ") in section (Units.uni) could not be found!"
                                        : "Section (Units.uni) could not be found!";
    Require(listener.last == told, "the message");
  }
}
