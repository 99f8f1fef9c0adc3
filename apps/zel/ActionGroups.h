// The kinds of action that this program makes: texts that are printed, programs that are run, and composites whose members a file
// lists. Neighbours: ActionSet.h reads files of actions; docs/actions.md tells the keys.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zelbase/actions/ZelActionList.h"
#include "zelbase/actions/ZelCompositeAction.h"

namespace zel {

inline constexpr char kCompositeGroup[] = "CompositeAction";

// What was found wrong while actions were made, asked or run, in words; and which composites are being made now. One for a list
// and all that its creators make.
struct ActionJournal {
  std::vector<std::string> faults;
  std::vector<std::string> making;  // ids, the outermost first
  std::size_t members = 0;          // made so far for the outermost
};

// An action of this program's that can say what it does.
class Telling {
 public:
  virtual ~Telling() = default;
  virtual std::string Does() const = 0;
};

// A composite whose section lists the ids of its members: "Actions = StartLogging, MarkEvent". They are made from the list anew each
// time it is loaded. A member that cannot be made, a composite that contains itself by whatever detour, and nesting or numbers
// beyond all use are faults: the composite is then not valid, and so runs nothing.
class ListedComposite : public ZelCompositeAction {
 public:
  ListedComposite(ZelActionList& list, std::shared_ptr<ActionJournal> journal);

  bool Load(FileObject& file) override;
  bool Save(FileObject& file) override;
  bool Validate() override;

 private:
  void AddMember(const std::string& id);
  void Fault(const std::string& what);

  ZelActionList& m_list;
  std::shared_ptr<ActionJournal> m_journal;
  std::string m_members;
  bool m_isWhole = true;
};

// Registers the groups "BaseAction", "CompositeAction", "PrintText" and "RunProgram" with the list, which must live as long as what
// it makes.
void RegisterActionGroups(ZelActionList& list, const std::shared_ptr<ActionJournal>& journal);

}  // namespace zel
