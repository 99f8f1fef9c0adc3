#include "ActionSet.h"

#include <algorithm>
#include <string_view>

namespace zel {

ActionSet::ActionSet(ZelActionList& list) : m_list(list), m_journal(std::make_shared<ActionJournal>()) {
  RegisterActionGroups(list, m_journal);
}

bool ActionSet::AddFile(const std::string& path, std::string& reason) {
  SettingsFile settings;
  if (!settings.Open(path, reason)) return false;
  auto file = std::make_unique<FileObject>(settings.store);
  FileObject* const store = file.get();
  FobjSection cursor;
  std::string id;
  for (bool more = store->GetFirstSectionEntry(cursor, id); more; more = store->GetNextSectionEntry(cursor, id)) {
    const auto [place, isNew] = m_actions.try_emplace(id, ListedAction{store, path, settings.encoding, {}});
    if (!isNew) {
      place->second.alsoIn.push_back(path);
      continue;
    }
    m_list.RegisterAction(id, store);
    static_cast<void>(file.release());  // the list's from the first id on
  }
  return true;
}

MadeAction ActionSet::Make(const std::string& id) {
  m_journal->faults.clear();
  MadeAction made;
  made.action.reset(m_list.Create(id));
  made.faults = m_journal->faults;
  if (made.action != nullptr) return made;
  const std::string group = GroupOf(id);
  made.faults.push_back("[" + Shown(id, id) +
                        "]: " + (group.empty() ? "names no group" : "its group \"" + Shown(id, group) + "\" is unknown") +
                        ", so nothing can make it");
  return made;
}

ZelAction ActionSet::FieldsOf(const std::string& id) const {
  ZelAction action;
  action.SetSectionName(id);
  action.Load(*m_actions.at(id).file);
  return action;
}

std::string ActionSet::GroupOf(const std::string& id) const {
  std::string group;
  m_actions.at(id).file->GetItem(id, "Group", group);
  return group;
}

bool ActionSet::HasGroup(const std::string& group) const {
  std::vector<std::string> groups;
  m_list.GetActionGroups(groups);
  return std::find(groups.begin(), groups.end(), group) != groups.end();
}

std::vector<std::string> ActionSet::KeysLost(const std::string& id) {
  const MadeAction made = Make(id);
  FileObject saved;
  if (made.action != nullptr) made.action->Save(saved);
  std::vector<std::string> lost;
  for (const SettingsItem& item : Items(*m_actions.at(id).file, id)) {
    std::string_view ignored;
    if (!saved.Peek(id, item.key, ignored)) lost.push_back(item.key);
  }
  return lost;
}

const std::string* ActionSet::Find(const std::string& argument) const {
  for (const auto& [id, action] : m_actions) {
    if (ToUtf8(id, action.encoding) == argument) return &id;
  }
  return nullptr;
}

}  // namespace zel
