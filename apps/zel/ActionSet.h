// Files of actions, registered with a list of actions, and what a person wants to know of each action. Neighbours: ActionGroups.h,
// what makes them; ActionsCommand.h, what shows them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ActionGroups.h"
#include "SettingsFile.h"

namespace zel {

// One section of a file.
struct ListedAction {
  FileObject* file;  // the list's
  std::string path;  // as typed
  Encoding encoding;
  std::vector<std::string> alsoIn;  // later files that have the id as well, and do not count
};

struct MadeAction {
  std::unique_ptr<ZelAction> action;  // null when nothing makes it
  std::vector<std::string> faults;    // of the making
};

class ActionSet {
 public:
  // Registers this program's groups with `list`, which must outlive the set.
  explicit ActionSet(ZelActionList& list);

  // Registers every section of the file. An id that an earlier file has stays that one's. False, with a reason a person can read,
  // when the file cannot be opened or read.
  bool AddFile(const std::string& path, std::string& reason);

  // By id.
  const std::map<std::string, ListedAction>& Actions() const { return m_actions; }

  MadeAction Make(const std::string& id);

  // The fields of the section as they stand there, even when nothing makes the action.
  ZelAction FieldsOf(const std::string& id) const;

  // The group that the section names; empty when it names none.
  std::string GroupOf(const std::string& id) const;
  bool HasGroup(const std::string& group) const;

  // Keys of the section that the action does not write when it is saved, sorted.
  std::vector<std::string> KeysLost(const std::string& id);

  // What was found wrong since the last Make.
  const std::vector<std::string>& Faults() const { return m_journal->faults; }

  // The id that a person means by `argument`; null when there is none.
  const std::string* Find(const std::string& argument) const;

  std::string Shown(const std::string& id, const std::string& text) const { return ToTerminal(text, m_actions.at(id).encoding); }

  ZelActionList& List() { return m_list; }

 private:
  ZelActionList& m_list;
  std::shared_ptr<ActionJournal> m_journal;
  std::map<std::string, ListedAction> m_actions;
};

}  // namespace zel
