// Actions: a kind of action that an application offers, two of them run as one, and the registry that makes
// them by name.
#include <cstdio>
#include <memory>

#include "zelbase/actions/ZelActionList.h"
#include "zelbase/actions/ZelCompositeAction.h"

class MarkEvent : public ZelAction {
 public:
  using ZelAction::SetName;
  bool Execute() override {
    std::printf("event \"%s\"\n", GetDescription().c_str());
    return true;
  }
};

class MarkEventCreator : public ZelActionICreator {
 public:
  ZelAction* Create() override { return new MarkEvent; }
};

int main() {
  ZelActionList& list = ZelActionList::GetActionList();
  list.RegisterActionGroup("MarkEvent", new MarkEventCreator);  // the list's from now on

  auto* const settings = new FileObject;
  settings->SetItem("StartOfLine", "Group", std::string("MarkEvent"), true);
  settings->SetItem("StartOfLine", "Description", std::string("start of line"), true);
  list.RegisterAction("StartOfLine", settings);

  ZelCompositeAction both;
  both.AddAction(list.Create("StartOfLine"));  // by its id: with its settings
  both.AddAction(list.Create("MarkEvent"));    // by its group: a bare one
  std::printf("%s\n", both.Execute() ? "done" : "failed");
  const std::unique_ptr<ZelAction> unknown(list.Create("Nothing"));
  std::printf("unknown: %s\n", unknown == nullptr ? "none" : "made");
  return 0;
}

// Prints:
//   event "start of line"
//   event ""
//   done
//   unknown: none
