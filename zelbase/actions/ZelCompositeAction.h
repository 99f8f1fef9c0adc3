// An action that runs other actions in order. Neighbours: ZelAction.h, the base; ZelActionList.h, which makes actions by name.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zelbase/actions/ZelAction.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its sub-actions: they are destroyed with it. Its action group is "CompositeAction".
//
//   ZelCompositeAction startOfLine;
//   startOfLine.AddAction(new StartLogging);
//   startOfLine.AddAction(new MarkEvent);
//   if (!startOfLine.Execute()) ...   // what was run before the failure stays done
//
//   asked      answers                                    without sub-actions
//   Configure  true when all do; stops at the first false  true
//   Validate   true when all do; stops at the first false  true
//   Execute    true when all do; stops at the first false  true
//   CanSelect  true when any does                          false
//
// What surprises:
//   (1) Execute validates ALL before it runs any.
//   (2) Load and Save are the base's: the sub-actions are not kept in a file. A derived class that lists them in its section
//       does both itself.
//   (3) A copy and its source hold the same sub-actions, and each thinks that it owns them: the first that goes, or is told to
//       delete them, destroys them. In the other they are null from then on.
//
// A null sub-action counts and is given back, and is otherwise passed over. One that was added twice runs twice and is destroyed
// once. A sub-action may change the composite that runs it; those added meanwhile are run as well. A composite that is added to
// itself, directly or by a detour, never goes and never comes to an end: that is the caller's fault.
//
// A composite is still there while its sub-actions go, and all of them are gone when its destructor returns. Below 32 composites
// that go one within another neither holds: one nested deeper leaves its sub-actions to the 32nd, and they go next, in the same
// order. So destroying takes no more stack than that, however deep they are nested. Running takes the stack of all.
class ZELBASE_API ZelCompositeAction : public ZelAction {
 public:
  ZelCompositeAction();
  ZelCompositeAction(const ZelCompositeAction&) = default;
  ZelCompositeAction& operator=(const ZelCompositeAction& other);
  ~ZelCompositeAction() override;

  // Numbered text 12045, "Composite Action".
  std::string GroupName() override;

  bool Configure() override;
  bool Validate() override;
  bool Execute() override;
  bool CanSelect() override;

  virtual int GetCount();

  // The sub-action at `index` from 0, which stays the composite's; null out of range.
  virtual ZelAction* GetAction(int index);

  // Appends `action` and owns it from now on.
  virtual void AddAction(ZelAction* action);

  // Takes all sub-actions out and destroys them in order, those that copies hold as well.
  virtual void DeleteAllActions();

 private:
  // A sub-action as all copies have it, so that each knows when it is gone.
  struct Held {
    std::shared_ptr<ZelAction> action;
  };
  using Actions = std::vector<std::shared_ptr<Held>>;

  static void DestroyAll(Actions actions);
  static void Leave(Actions& actions);

  template <class Ask>
  bool AllAnswer(Ask ask);
  void DeleteAll();

  static thread_local Actions* t_leaving;

  Actions m_actions;
};
