#include "Host.h"

#include <filesystem>
#include <memory>

#include "SettingsFile.h"
#include "zelbase/errors/ErrorMessageFile.h"
#include "zelbase/frame/FileNames.h"
#include "zelbase/frame/LanguageModules.h"
#include "zelbase/platform/PlatformFolders.h"

namespace zel {
namespace {

// The system's folders, but for the one that the command line names.
class CommonFolder : public PlatformFolders {
 public:
  explicit CommonFolder(std::string folder) : m_folder(std::move(folder)) {}

  bool CommonData(std::string& folder) override {
    folder = m_folder;
    return true;
  }
  bool Current(std::string& folder) override { return System().Current(folder); }
  bool FreeSpace(const std::string& path, unsigned long long& bytes) override { return System().FreeSpace(path, bytes); }

 private:
  std::string m_folder;
};

struct HostState {
  std::string common;
  std::string messages;
  bool languageTexts = false;
};

HostState& State() {
  static HostState& state = *new HostState;
  return state;
}

// In force until the process ends.
void ReplaceCommonFolder(const std::string& folder) {
  PlatformService<PlatformFolders>::Replace(new CommonFolder(ToSuitePath(std::filesystem::absolute(folder).string())));
}

void Start() {
  HostState& state = State();
  if (!state.common.empty()) ReplaceCommonFolder(state.common);
  state.languageTexts = ZELCORE::LoadAPPResourceDLL(nullptr);
  const std::string messages = MessagesFile();
  if (!state.messages.empty() || std::filesystem::is_regular_file(messages)) {
    ErrorMessageFile::Get().Open(ToSuitePath(messages));
  }
}

}  // namespace

void AddHostOptions(CLI::App& program) {
  HostState& state = State();
  program.fallthrough();
  program.add_option("--common", state.common, "Folder for data common to all users, instead of the system's")
      ->check(CLI::ExistingDirectory);
  program.add_option("--messages", state.messages, "Wording of error messages, instead of the suite's ErrorMessages.ini")
      ->check(CLI::ExistingFile);
  program.parse_complete_callback(Start);
}

void UseCommonFolder(const std::string& folder) {
  if (!State().common.empty()) return;
  State().common = folder;
  Start();
}

std::string SuiteFolder() {
  std::string folder;
  if (!PlatformService<PlatformFolders>::Current().CommonData(folder)) return std::string();
  return ToShownPath(folder) + "/VESOK/" + DEFAULT_NAME + "/";
}

std::string SuiteFile(const std::string& name) { return SuiteFolder() + name; }

std::string MessagesFile() {
  const std::string& named = State().messages;
  return named.empty() ? SuiteFile("ErrorMessages.ini") : named;
}

bool LanguageTextsInstalled() { return State().languageTexts; }

}  // namespace zel
