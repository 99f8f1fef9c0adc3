// A computer with a language of the test's own: the folder for common data with its "zelcore.ini", and a module with
// translations beside it. Neighbours: TemporaryFolder.h; InChild.h, since a process reads its language once.
#pragma once

#include <string>

#include "tests/support/TemporaryFolder.h"
#include "zelbase/platform/FixedFolders.h"
#include "zelbase/platform/FixedModules.h"

// In force from its making to its end. The module is "suite\ZelBaseR.dll" in the folder.
class LanguageFolder {
 public:
  // With this content of "zelcore.ini".
  explicit LanguageFolder(const std::string& zelcore) : LanguageFolder() { m_folder.Write("VESOK/ZELCORE/zelcore.ini", zelcore); }

  // Without that file.
  LanguageFolder() {
    for (const char* const name : {"VESOK", "VESOK/ZELCORE", "suite", "suite/localizations"}) m_folder.MakeFolder(name);
    m_folders.SetCommonData(m_folder.InterfacePath());
    m_modules.SetModulePath(m_folder.InterfacePath() + "\\suite\\ZelBaseR.dll");
  }

  // The content of "Translator.ini" of a language.
  void WriteTranslations(const std::string& language, const std::string& content) const {
    const std::string folder = "suite/localizations/" + language;
    if (!m_folder.Exists(folder)) m_folder.MakeFolder(folder);
    m_folder.Write(folder + "/Translator.ini", content);
  }

  const TemporaryFolder& Folder() const { return m_folder; }
  FixedFolders& Folders() { return m_folders; }
  FixedModules& Modules() { return m_modules; }

 private:
  TemporaryFolder m_folder;
  FixedFolders m_folders;
  FixedModules m_modules;
  PlatformOverride<PlatformFolders> m_foldersInForce{m_folders};
  PlatformOverride<PlatformModules> m_modulesInForce{m_modules};
};
