#include "LanguageCommand.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Host.h"
#include "SettingsFile.h"
#include "zelbase/errors/DaxError.h"
#include "zelbase/errors/ErrorMessageFile.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/FileObjectError.h"
#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/frame/FileNames.h"
#include "zelbase/frame/KeyTables.h"
#include "zelbase/frame/LanguageModules.h"
#include "zelbase/units/Translator.h"

namespace zel {
namespace {

constexpr std::size_t kShownMissing = 10;

std::string Shown(const std::string& text) { return ToTerminal(text, Encoding::Windows1252); }

// Listens to the translator: what was asked for and not found.
class MissingTexts : public AbstractZELMessage {
 public:
  void ShowMessage(int, const std::string& text, int, const std::string&, int) override { m_texts.push_back(text); }

  const std::vector<std::string>& Texts() const { return m_texts; }

 private:
  std::vector<std::string> m_texts;
};

// One family of English texts: how many there are, and how many have a translation.
struct Family {
  std::string name;
  std::size_t asked = 0;
  std::size_t found = 0;

  void Take(const std::string& translation) {
    ++asked;
    found += translation.empty() ? 0 : 1;
  }
};

// Asks for the text of every item of an English file, whose translations are named "section.key".
template <class Ask>
Family AskForItems(const std::string& name, const std::string& path, Ask ask) {
  Family family{name};
  SettingsFile english;
  std::string reason;
  if (!std::filesystem::is_regular_file(path) || !english.Open(path, reason)) return family;
  for (const auto& section : SectionNames(english.store)) {
    for (const auto& item : Items(english.store, section)) family.Take(ask(section, item.key));
  }
  return family;
}

Family AskForFileTypes(const Translator& translator) {
  Family family{Translator::SECTION_FILE_TYPES};
  for (std::size_t type = 0; type < std::size(fileTypeKeys); ++type) {
    family.Take(translator.GetFileTypeListString(static_cast<int>(type)));
  }
  return family;
}

void PrintSettings(const Translator& translator) {
  std::string setting;
  const bool found = Translator::GetLanguageSetting(setting);
  std::cout << "Language      " << (found ? "\"" + Shown(setting) + "\"" : "not set") << ", "
            << (translator.IsLanguageForeign() ? "foreign" : "English") << "; setting [Language] Language in \""
            << SuiteFile(ZEL_DEF_FILENAME) << "\"\n";
  const FileObject& translations = translator.GetTranslatorIni();
  std::cout << "Translations  ";
  if (!translator.IsLanguageForeign()) {
    std::cout << "not needed\n";
  } else if (!translations.FileInitialised()) {
    std::cout << "no file localizations/" << Shown(setting) << '/' << TRANSLATOR_INI_FILENAME << " beside the program\n";
  } else {
    std::cout << '"' << ToShownPath(translations.GetFileName()) << "\"\n";
  }
  const LanguageModuleChoice choice = ZELCORE::FindAPPResourceDLL(nullptr);
  if (!choice.languageModule.empty()) {
    std::cout << "Numbers       \"" << ToShownPath(choice.languageModule)
              << "\" with .dll, .ini or .so: " << (LanguageTextsInstalled() ? "installed" : "none in this folder; the built-in texts serve")
              << '\n';
  }
  const std::string messages = MessagesFile();
  std::cout << "Messages      " << (ErrorMessageFile::Get().IsOpen() ? "\"" + messages + "\"" : "built-in texts; no \"" + messages + "\"")
            << '\n';
}

void PrintFamilies(const std::vector<Family>& families) {
  std::cout << "\nTexts with a translation\n";
  for (const Family& family : families) {
    if (family.asked == 0) continue;
    std::cout << "  " << ToColumn(family.name, 20) << family.found << " of " << family.asked << '\n';
  }
}

void PrintMissing(const std::vector<std::string>& missing, bool all) {
  if (missing.empty()) return;
  std::cout << "\nAsked for and not found\n";
  const std::size_t shown = all ? missing.size() : std::min(missing.size(), kShownMissing);
  for (std::size_t i = 0; i < shown; ++i) std::cout << "  " << Shown(missing[i]) << '\n';
  if (shown < missing.size()) std::cout << "  and " << missing.size() - shown << " more; --all lists them\n";
}

int Status(bool all) {
  Translator& translator = Translator::Instance();
  PrintSettings(translator);
  if (!translator.IsLanguageForeign()) return kDone;

  MissingTexts missing;
  translator.SetZELMessageLogger(&missing);
  const std::vector<Family> families = {
      AskForItems(Translator::SECTION_ERROR_MESSAGES, MessagesFile(),
                  [&](const std::string& section, const std::string& key) { return translator.GetErrorMessagesString(section, key); }),
      AskForItems(Translator::SECTION_UNITS, SuiteFile(Translator::SECTION_UNITS),
                  [&](const std::string& section, const std::string& key) { return translator.GetUnitsString(section, key); }),
      AskForFileTypes(translator)};
  translator.SetZELMessageLogger(nullptr);
  PrintFamilies(families);
  PrintMissing(missing.Texts(), all);
  return missing.Texts().empty() ? kDone : kFoundWrong;
}

// ---- the wording of errors ----

void PrintError(const Error& error) { std::cout << ToColumn(error.Type(), 26) << Shown(error.Format()) << '\n'; }

int Errors() {
  for (const auto code : {FileError::Open, FileError::Read, FileError::Write}) PrintError(FileError("C:\\survey\\tide.tid", code));
  PrintError(FileObjectError("C:\\survey\\vessel.ini", "Antenna", FileObjectError::SectionNotFound));
  PrintError(FileObjectError("C:\\survey\\vessel.ini", "Vessel", "Draught", FileObjectError::KeyNotFound));
  for (const auto code : {DaxError::Interpolate, DaxError::Extrapolate, DaxError::Read, DaxError::Comp}) {
    PrintError(DaxError("Heave", code, "C:\\survey\\heave.dat", true, 0.0));
  }
  std::cout << Shown(NumberedText(12034)) << '\n';
  return kDone;
}

}  // namespace

void AddLanguageCommand(CLI::App& program, int& exitCode) {
  CLI::App* const language = program.add_subcommand("language", "Tell which language is chosen, and which texts it lacks");
  const auto all = std::make_shared<bool>(false);
  language->add_flag("--all", *all, "List every text that was not found");
  language->footer(
      "Example:\n  zel --common samples/common language\n\n"
      "Exit code: 0, or 1 when a text has no translation.\n");
  language->require_subcommand(0, 1);
  language->callback([all, language, &exitCode] {
    if (language->get_subcommands().empty()) exitCode = Status(*all);
  });

  CLI::App* const errors = language->add_subcommand("errors", "The wording of every kind of error, as it is now");
  errors->footer("Example:\n  zel --common samples/common language errors\n");
  errors->callback([&exitCode] { exitCode = Errors(); });
}

}  // namespace zel
