// Where a module's language is written down, and where the language module of that language lies: rules over texts alone.
// Internal to the library; LanguageModules.h asks the system for these texts and follows them.
#pragma once

#include <string>
#include <string_view>

#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// A title is the module's file name without its last characters: ".exe" of an application; the letter of the build and
// ".dll" of an extension module.
enum class LanguageUser { Application = 4, Extension = 5 };

// True for a path with a "\" in it, or with this system's root "/" in front. A module without a folder has no language.
ZELBASE_API bool HasFolder(std::string_view path);

// The settings file that holds the language: `commonFolder`\VESOK\ZELCORE\zelcore.ini, or another file of its own for the
// program whose file name, in lower case, is "ternaxui.exe".
ZELBASE_API std::string LanguageSettingsPath(std::string_view commonFolder, std::string_view programPath);

// "C:\x\app.exe" of an application is "app", "C:\x\ZelBaseR.dll" of an extension module is "ZelBase". Empty when the file
// name is no longer than what is cut.
ZELBASE_API std::string LanguageTitle(std::string_view modulePath, LanguageUser user);

// False for a text that is empty, or by which a path could leave the folder of the languages: one with a "\", "/", ":",
// a zero byte or "..".
ZELBASE_API bool IsLanguage(std::string_view language);

// ".\localizations\" + language + "\" + title + "_res": without an ending, and relative to the current folder.
ZELBASE_API std::string LanguageModulePath(std::string_view language, std::string_view title);

}  // namespace zelbase::detail
