#include "zelbase/actions/ZelActionList.h"

#include <cstddef>
#include <memory>
#include <utility>

#include "zelbase/files/PathHelpers.h"
#include "zelbase/frame/FileNames.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/PlatformModules.h"

namespace {

constexpr char kGroup[] = "Group";
constexpr std::size_t kLongestModulePath = 260;

// Cuts the file: it is to be written anew as a whole.
constexpr unsigned int kStartAnew = CFile::modeCreate | CFile::shareDenyWrite;
constexpr unsigned int kWriteAnew = CFile::modeCreate | CFile::shareExclusive | CFile::modeWrite;

std::string ProgramPath() { return PlatformService<PlatformModules>::Current().ProgramPath(); }

// Never destroyed: the destructor of any static may still save.
std::string& HostsName() {
  static std::string& name = *new std::string;
  return name;
}

// False when `file` has the action's section already.
bool SaveInto(FileObject& file, std::unique_ptr<ZelAction> action) {
  // Kept: the section name is looked at, though the base saves under the name.
  if (file.HasSection(action->GetSectionName())) {
    // Kept: this one action is not destroyed.
    static_cast<void>(action.release());
    return false;
  }
  action->Save(file);
  return true;
}

}  // namespace

ZelActionList::~ZelActionList() { RemoveAll(); }

ZelActionList& ZelActionList::GetActionList() {
  return zelbase::detail::OneRegistry<ZelActionList>([](ZelActionList& list) { list.RemoveAll(); });
}

void ZelActionList::RegisterActionGroup(const std::string& group, ZelActionICreator* creator) { m_creators.Register(group, creator); }

void ZelActionList::RegisterAction(const std::string& id, FileObject* file) { m_registeredActions.Register(id, file); }

ZelAction* ZelActionList::Create(std::string id) {
  const std::shared_ptr<FileObject> file = m_registeredActions.Find(id);
  // Kept: an id goes before a group of the same name, even when nothing comes of it.
  return file == nullptr ? m_creators.Create(id) : CreateFrom(*file, id);
}

ZelAction* ZelActionList::CreateFrom(FileObject& file, const std::string& id) {
  std::string group;
  if (!file.GetItem(id, kGroup, group)) return nullptr;
  std::unique_ptr<ZelAction> action(m_creators.Create(group));
  if (action == nullptr) return nullptr;
  action->SetSectionName(id);
  // Kept: the result is not looked at.
  action->Load(file);
  return action.release();
}

int ZelActionList::GetActionIDs(std::vector<std::string>& ids) const { return m_registeredActions.Keys(ids); }

int ZelActionList::GetActionGroups(std::vector<std::string>& groups) const { return m_creators.Keys(groups); }

bool ZelActionList::SaveCustomActions() {
  const std::string name = CustomActionsFileName();
  if (name.empty()) return false;
  // Kept: the folder is not made, and the file is cut here, before anything is known of what is to go into it.
  FileObject file;
  if (!file.FileOpen(name, kStartAnew)) return false;
  // Kept: the one list's actions, whatever list this is.
  ZelActionList& list = GetActionList();
  std::vector<std::string> ids;
  list.GetActionIDs(ids);
  for (const std::string& id : ids) {
    std::unique_ptr<ZelAction> action(list.Create(id));
    if (action == nullptr || !action->GetCustom()) continue;
    if (!SaveInto(file, std::move(action))) return false;
  }
  // Kept: written even with nothing in it.
  return file.FileSave("", kWriteAnew);
}

std::string ZelActionList::GetModulePath() const { return ProgramPath().substr(0, kLongestModulePath); }

void ZelActionList::SetApplicationName(const std::string& name) { HostsName() = name; }

std::string ZelActionList::GetApplicationName() {
  const std::string& name = HostsName();
  if (!name.empty()) return name;
  std::string path = ProgramPath();
  // The root is written "/" in front of a program that lies in it.
  if (path.starts_with('/')) path.erase(0, 1);
  return GetTitleFromPath(path);
}

std::string ZelActionList::CustomActionsFileName() {
  std::string folder;
  if (!PlatformService<PlatformFolders>::Current().CommonData(folder)) return std::string();
  return folder + "\\VESOK\\" + DEFAULT_NAME + "\\" + ACTIONS_CUST_FILENAME + "[" + GetApplicationName() + "].ini";
}

// Whatever a destructor registers meanwhile goes, too.
void ZelActionList::RemoveAll() {
  do {
    m_creators.Clear();
    m_registeredActions.Clear();
  } while (!m_creators.IsEmpty());
}
