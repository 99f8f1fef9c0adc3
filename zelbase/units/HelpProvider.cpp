#include "zelbase/units/HelpProvider.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "zelbase/config/detail/QuietOpen.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformHelp.h"
#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/detail/FolderOf.h"

namespace {

constexpr const char* kHelpFolder = "html help\\";
constexpr const char* kHelpFile = "ZELCORE.chm";
constexpr const char* kTopicFile = "zelcorehelp.ini";
constexpr const char* kTopicSection = "ZELCOREHelp";

}  // namespace

// Opened quietly: an error reported in here may reach somebody who asks for this object.
HelpProvider::HelpProvider() : m_helpFile(GetAppPath() + kHelpFolder + kHelpFile) {
  zelbase::detail::OpenQuietly(m_topics, GetAppPath() + kTopicFile);
}

// The object stays where it is when the process ends.
HelpProvider& HelpProvider::GetInstance() {
  static HelpProvider& object = *new HelpProvider;
  return object;
}

// With its last separator; empty when the program lies in no folder.
std::string HelpProvider::GetAppPath() { return zelbase::detail::FolderOf(PlatformService<PlatformModules>::Current().ProgramPath()); }

std::string HelpProvider::Trim(const std::string& text) { return std::string(zelbase::detail::Trim(text)); }

void HelpProvider::SetHelpFilename(const std::string& name) {
  std::string path = GetAppPath() + kHelpFolder + name;
  const LockGuard guard(m_mutex);
  m_helpFile.swap(path);
}

bool HelpProvider::ShowHelpfile(const std::string& key) {
  std::string_view topic;
  // Kept: only an empty key is not looked up; one of blanks is, and no table has it.
  const bool found = !key.empty() && m_topics.Peek(kTopicSection, Trim(key), topic);
  return ShowHelpfileImp(found ? std::string(topic) : std::string());
}

bool HelpProvider::ShowHelpfile(CWnd* window) {
  if (window == nullptr) return ShowHelpfile(std::string());
  const std::string name = window->RuntimeClassName();
  const std::size_t blank = name.find(' ');
  // Kept: from the blank on, which the other form trims away; a text without one is used whole.
  return ShowHelpfile(blank == std::string::npos ? name : name.substr(blank));
}

bool HelpProvider::ShowHelpfileImp(const std::string& topic) {
  std::string file;
  {
    const LockGuard guard(m_mutex);
    file = m_helpFile;
  }
  PlatformHelp& help = PlatformService<PlatformHelp>::Current();
  const std::string trimmed = Trim(topic);
  // Kept: no topic, rather than an empty one, is the first page.
  if (help.Show(file, trimmed.empty() ? std::nullopt : std::optional<std::string>(trimmed))) return true;
  help.Beep();
  return false;
}
