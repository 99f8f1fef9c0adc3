// The choice of the language module, from which a module of the suite takes its numbered texts. Neighbours: NumberedTexts.h,
// where the texts are asked for; ModuleStart.h, which chooses for this library when it is loaded; Translator.h, which
// translates texts by words instead of numbers. docs/language.md is the page for who writes a language module.
//
// The language is one item of the suite's settings, section and key "Language", in the file "\VESOK\ZELCORE\zelcore.ini" of
// the folder for data common to all users ("TernaxUI.ini" when the running program is "ternaxui.exe" in any case). Its
// module lies, relative to the current folder, at
//
//   .\localizations\<language>\<title>_res.dll
//
// where the title is the module's file name without ".exe" (application) or without the build's letter and ".dll" (extension
// module): "app" of "C:\x\app.exe", "ZelBase" of "C:\x\ZelBaseR.dll". It is the first of these that gives texts:
//
//   (1) the file of that name, and
//   (2) the one that ends in ".ini", as a text file in the form of the settings, section "Texts", key the number;
//   (3) the shared library that ends as this system's do (".so"), by its export ZelNumberedText.
//
// Everything here is silent: settings, item and language module may be missing, and the module goes on with the texts built
// into it. A language that is empty or would lead out of the folder (it holds "\", "/", ":" or "..") chooses nothing.
#pragma once

#include <string>

#include "zelbase/platform/CDynLinkLibrary.h"
#include "zelbase/platform/ZelBaseApi.h"

// The export of a language module that is a shared library, to be defined there as extern "C": the text of a number, which
// stays valid; null, "" or an exception for a number it lacks. Called from any thread, also from several at once.
using ZelNumberedTextFunction = const char* (*)(int number);
inline constexpr char NUMBERED_TEXT_EXPORT[] = "ZelNumberedText";

// What the choice came to; what could not be told is empty.
struct LanguageModuleChoice {
  std::string settingsFile;
  std::string language;        // empty as well when it is refused
  std::string languageModule;  // without the ending: ".\localizations\Deutsch\app_res"
};

namespace ZELCORE {

// Chooses, loads and installs the language module of the application, or of an extension module. True when one was installed.
//
// Its handle becomes the resource handle of the module state, or of the extension module's record in the application's list.
// An extension module without a record there installs nothing; what was loaded stays loaded. The handle of a text file is an
// address that means nothing else.
//
// NumberedText then asks, in this order: the application's language module, those of the extension modules in the order of
// the application's list, the built-in texts. An installation puts this order in force as the module state and the list are
// then; it takes the place of any table that was installed before, by whomever. A module that ends later keeps its texts
// until the next one. Without memory (std::bad_alloc) nothing is installed; a shared library that was loaded may stay loaded.
//
// `module` is a handle of PlatformModules or an address in the module; null is the program. `unused` is not read.
//
// Modules are loaded one at a time: so are these called. Texts may be asked for from any thread meanwhile.
ZELBASE_API bool LoadAPPResourceDLL(HINSTANCE module);
ZELBASE_API bool LoadDLLResourceDLL(HINSTANCE module, HINSTANCE unused);

// What these would choose, without loading anything. Any thread.
ZELBASE_API LanguageModuleChoice FindAPPResourceDLL(HINSTANCE module);
ZELBASE_API LanguageModuleChoice FindDLLResourceDLL(HINSTANCE module);

}  // namespace ZELCORE
