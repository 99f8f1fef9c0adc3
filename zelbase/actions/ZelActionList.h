// The registry of actions: which kinds there are, which are configured in settings files, and the user's own, written back to
// a file of the application. Neighbours: ZelActionICreator.h for what is registered, ZelAction.h for what comes out;
// FileNames.h for the names of the files. docs/actions.md is the page for who writes such a file.
#pragma once

#include <string>
#include <vector>

#include "zelbase/actions/ZelAction.h"
#include "zelbase/actions/ZelActionICreator.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/platform/ZelBaseApi.h"

// An application registers a creator for each action group, and for each configured action its id with the file that holds the
// section of that name; the section's "Group" says which creator makes it.
//
//   ZelActionList& list = ZelActionList::GetActionList();
//   list.RegisterActionGroup("MarkEvent", new MarkEventCreator);                   // at start-up
//   FileObject* const file = new FileObject;
//   if (file->FileOpen(name, CFile::modeRead | CFile::shareDenyWrite)) list.RegisterAction("FirstEvent", file);
//   std::unique_ptr<ZelAction> action(list.Create("FirstEvent"));                  // later
//
// Owns creators and files: they are destroyed with the list, each once however many names it has. Copies share: they name the
// same creators and files, and the last list that holds one destroys it. Ids and groups are compared case-sensitively.
//
// What surprises:
//   (1) A group's name may be created as well, and gives a bare action of the group; an id of that name goes first.
//   (2) SaveCustomActions saves the actions of the one list, whatever list it is called on.
//   (3) It cuts the file before it knows that all can be saved: where two actions collide, the file is left empty.
//
// Nothing is locked but the first GetActionList: registration belongs to the start (CBaseInitializer::RegisterActionGroups,
// RegisterActions), when one thread runs. Create reads the file, which is one thread's at a time.
class ZELBASE_API ZelActionList {
 public:
  static constexpr char PATH_SEPARATOR = '\\';
  static constexpr char INI_ITEM_SEPARATOR = '.';

  ZelActionList() = default;
  ZelActionList(const ZelActionList&) = default;
  ZelActionList& operator=(const ZelActionList&) = default;

  virtual ~ZelActionList();

  // The one list, made at first use. At process exit its creators and files are destroyed, which needs their code still
  // loaded. Other destructors at exit may still ask for the list.
  static ZelActionList& GetActionList();

  // Both store what they are given and own it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it has another name already. The first one of a name wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. Null is ignored. One object may have several names; one file of many actions is the
  // normal case.
  void RegisterActionGroup(const std::string& group, ZelActionICreator* creator);
  void RegisterAction(const std::string& id, FileObject* file);

  // A new action, which the caller owns.
  //
  //   `id` is            gives
  //   a registered id    an action of the group in its section, its section name set to `id`, loaded from the file. The result
  //                      of Load is not looked at. Null when the group is missing or not registered.
  //   else a group       an action as its creator makes it
  //   else               null
  //
  // Null, too, when the creator gives none. A file that throws from GetItem throws out of here. For a group one look-up in either
  // registry, and no copy of the name.
  ZelAction* Create(std::string id);

  // Put the registered ids, or groups, in ascending order of their bytes, in place of what is in the vector, and give their
  // number.
  int GetActionIDs(std::vector<std::string>& ids) const;
  int GetActionGroups(std::vector<std::string>& groups) const;

  // Writes every action of GetActionList() whose custom flag is set after its Load into CustomActionsFileName(), in the order of
  // the ids, in place of what the file held; without one it is a file with no sections. Each writes itself, by its own Save.
  // An id that gives no action is passed over, and is then gone from the file, as is one that was not registered.
  //
  // True when the file was saved. False:
  //   there is no folder for common data, or the file does not open: its folder is not made here. The file stays as it is.
  //   the section name of an action is already a section of the file, which an action's own Load may bring about. That one
  //   action is not destroyed, and the file is left empty.
  //   the saving fails. The file is left as far as that came.
  // Two actions of different section names that save under one name are one section, the later one's items over the earlier one's,
  // and true. What Load or Save throws passes, and leaves the file empty.
  bool SaveCustomActions();

  // Full name of the running program in the "\" form, its first 260 characters; a name without an extension is given as
  // "name.exe".
  std::string GetModulePath() const;

  // The name of the application, which is a part of the file's name. A host sets it at its start; an empty one takes it back. Without
  // one it is the program's file name without its extension.
  static void SetApplicationName(const std::string& name);
  static std::string GetApplicationName();

  // "<common data folder>\VESOK\ZELCORE\CustomActions[<application>].ini"; empty when there is no folder for common data.
  static std::string CustomActionsFileName();

 private:
  ZelAction* CreateFrom(FileObject& file, const std::string& id);
  void RemoveAll();

  zelbase::detail::CreatorMap<std::string, ZelActionICreator> m_creators;
  zelbase::detail::CreatorMap<std::string, FileObject> m_registeredActions;
};
