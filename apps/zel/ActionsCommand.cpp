#include "ActionsCommand.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ActionSet.h"
#include "zelbase/config/SettingsReport.h"
#include "zelbase/files/PathHelpers.h"

namespace zel {
namespace {

struct Arguments {
  std::vector<std::string> files;
  std::optional<std::string> run;
  std::string application;
  bool save = false;
};

// Told once each, however many composites meet it.
class Complaints {
 public:
  void Add(const std::vector<std::string>& faults) {
    for (const std::string& fault : faults) {
      if (m_told.insert(fault).second) m_inOrder.push_back(fault);
    }
  }

  // kDone when there is none.
  int Tell() const {
    std::cout.flush();
    for (const std::string& fault : m_inOrder) Fail(fault);
    return m_inOrder.empty() ? kDone : kFoundWrong;
  }

 private:
  std::set<std::string> m_told;
  std::vector<std::string> m_inOrder;
};

std::string Joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ", ") + text;
  return result;
}

// The id as a heading; quotes stand for the section of no name.
std::string Heading(const ActionSet& set, const std::string& id) { return id.empty() ? "\"\"" : set.Shown(id, id); }

// ---- The list ----

void PrintField(const char* name, const std::string& value) {
  if (!value.empty()) std::cout << "  " << std::left << std::setw(14) << name << value << '\n';
}

std::string WhatItDoes(ZelAction& action) {
  if (const auto* const telling = dynamic_cast<const Telling*>(&action)) return telling->Does();
  if (auto* const composite = dynamic_cast<ZelCompositeAction*>(&action)) {
    const auto count = static_cast<std::size_t>(composite->GetCount());
    return count == 0 ? "nothing, since it has no members" : Counted(count, "action", "actions in order");
  }
  return "fails: it is a base action, which does nothing";
}

// The members below a composite, numbered "1", "2", "2.1", ... As deep as composites are made.
void PrintMembers(ZelAction& action, const std::string& number) {
  auto* const composite = dynamic_cast<ZelCompositeAction*>(&action);
  if (composite == nullptr) return;
  for (int i = 0; i < composite->GetCount(); ++i) {
    ZelAction& member = *composite->GetAction(i);
    const std::string own = number + std::to_string(i + 1);
    const std::string name = member.GetName();
    std::cout << std::string(16, ' ') << own << "  " << ToTerminal(name, DetectEncoding(name)) << ": " << WhatItDoes(member) << '\n';
    PrintMembers(member, own + ".");
  }
}

std::string GroupText(const ActionSet& set, const std::string& id, ZelAction* action) {
  const std::string group = set.GroupOf(id);
  if (group.empty()) return "NONE: nothing can make this action";
  const std::string shown = set.Shown(id, group);
  if (action == nullptr) return shown + ": UNKNOWN, nothing can make this action";
  return shown + " (" + ToTerminal(action->GroupName(), Encoding::Windows1252) + ")";
}

void PrintAction(ActionSet& set, const std::string& id, Complaints& complaints) {
  const std::vector<std::string> lost = set.KeysLost(id);
  const MadeAction made = set.Make(id);
  complaints.Add(made.faults);
  const ZelAction fields = set.FieldsOf(id);
  std::cout << '\n' << Heading(set, id) << '\n';
  PrintField("Group", GroupText(set, id, made.action.get()));
  PrintField("Description", set.Shown(id, fields.GetDescription()));
  PrintField("Tool tip", set.Shown(id, fields.GetToolTip()));
  PrintField("Survey types", set.Shown(id, fields.GetSurveyTypes()));
  PrintField("Custom", fields.GetCustom() ? "yes, made by the user" : "no");
  if (made.action == nullptr) return;
  PrintField("Selectable", made.action->CanSelect() ? "yes" : "no");
  PrintField("Unused keys", set.Shown(id, Joined(lost)));
  PrintField("When run", WhatItDoes(*made.action));
  PrintMembers(*made.action, "");
  if (!made.faults.empty()) PrintField("But", "it is not valid, and so is not run");
}

void PrintGroups(ActionSet& set) {
  std::map<std::string, std::size_t> used;
  std::vector<std::string> known;
  set.List().GetActionGroups(known);
  for (const std::string& group : known) used[group] = 0;
  for (const auto& [id, listed] : set.Actions()) {
    const std::string group = set.GroupOf(id);
    if (!group.empty()) ++used[group];
  }
  std::size_t width = 0;
  for (const auto& [group, count] : used) width = std::max(width, group.size());
  std::cout << "\nGroups, and what their creators make\n";
  for (const auto& [group, count] : used) {
    const std::unique_ptr<ZelAction> bare(set.HasGroup(group) ? set.List().Create(group) : nullptr);
    const std::string makes = bare == nullptr ? "UNKNOWN: no creator" : bare->GroupName();
    std::cout << "  " << ToColumn(group, width) << "  " << ToColumn(makes, 20) << "  " << Counted(count, "action", "actions") << '\n';
  }
}

std::size_t CountCustom(const ActionSet& set) {
  return static_cast<std::size_t>(std::count_if(set.Actions().begin(), set.Actions().end(),
                                                [&set](const auto& action) { return set.FieldsOf(action.first).GetCustom(); }));
}

// What a file loses in reading, an action may lack. UTF-8 is no loss here, as it is shown as it is meant, nor is a file without
// actions.
bool ReadsAsItLooks(const std::string& path) {
  SettingsReport report;
  report.ReadFile(ToSuitePath(path));
  return std::all_of(report.Findings().begin(), report.Findings().end(), [](const SettingsFinding& finding) {
    return finding.severity == SettingsSeverity::Note || finding.kind == SettingsFindingKind::Utf8Text ||
           finding.kind == SettingsFindingKind::NoSections;
  });
}

// A hint, which leaves the exit code alone.
void TellWhatDoesNotReadAsItLooks(const std::vector<std::string>& files) {
  std::cout.flush();
  for (const std::string& path : files) {
    if (!ReadsAsItLooks(path)) Fail("\"" + path + "\" does not read as it looks; \"zel settings check\" on it tells where");
  }
}

int Show(ActionSet& set, const Arguments& arguments) {
  std::cout << Joined(arguments.files) << ": " << Counted(set.Actions().size(), "action", "actions") << ", " << CountCustom(set)
            << " custom\n";
  Complaints complaints;
  for (const auto& [id, listed] : set.Actions()) {
    PrintAction(set, id, complaints);
    for (const std::string& path : listed.alsoIn) PrintField("Also in", path + ", where it does not count");
  }
  PrintGroups(set);
  TellWhatDoesNotReadAsItLooks(arguments.files);
  return complaints.Tell();
}

// ---- --run ----

int RunAction(ActionSet& set, const std::string& argument) {
  const std::string* const id = set.Find(argument);
  if (id == nullptr) return Fail("there is no action \"" + argument + "\"");
  const MadeAction made = set.Make(*id);
  const bool valid = made.action != nullptr && made.action->Validate();
  const bool done = valid && made.action->Execute();
  Complaints complaints;
  complaints.Add(made.faults);
  complaints.Add(set.Faults());
  complaints.Tell();
  const std::string shown = Heading(set, *id);
  if (!valid) return Fail(shown + " is not valid, and was not run");
  if (!done) return Fail(shown + " failed");
  std::cout << shown << ": done\n";
  return kDone;
}

// ---- --save ----

// The saving writes the file anew as a whole, so what it would lose is told before.
int TellLosses(ActionSet& set) {
  Complaints complaints;
  for (const auto& [id, listed] : set.Actions()) {
    if (!set.FieldsOf(id).GetCustom()) continue;
    const MadeAction made = set.Make(id);
    if (made.action == nullptr) {
      complaints.Add(made.faults);
      continue;
    }
    const std::vector<std::string> lost = set.KeysLost(id);
    if (!lost.empty()) complaints.Add({"[" + set.Shown(id, id) + "]: its group does not keep " + set.Shown(id, Joined(lost))});
  }
  if (complaints.Tell() == kDone) return kDone;
  return Fail("nothing was saved, since this would be lost");
}

// What the file is to hold.
void SaveAll(ActionSet& set, FileObject& expected) {
  for (const auto& [id, listed] : set.Actions()) {
    const MadeAction made = set.Make(id);
    if (made.action != nullptr && made.action->GetCustom()) made.action->Save(expected);
  }
}

// Reads the file of custom actions as an application does at its start, the members that stand in the other files with it.
int ShowSaved(const std::string& path, const std::vector<std::string>& files, const FileObject& expected) {
  ZelActionList list;
  ActionSet set(list);
  std::string reason;
  if (!set.AddFile(path, reason)) return Fail(reason);
  std::vector<std::string> ids;
  for (const auto& [id, listed] : set.Actions()) ids.push_back(id);
  SettingsFile saved;
  if (!saved.Open(path, reason)) return Fail(reason);
  if (!(saved.store == expected) || !(expected == saved.store)) return Fail("\"" + path + "\" does not read back as it was saved");
  for (const std::string& file : files) {
    if (!set.AddFile(file, reason)) return Fail(reason);
  }
  std::cout << Counted(ids.size(), "custom action", "custom actions") << " saved in " << path << (ids.empty() ? "\n" : " and read back:\n");
  Complaints complaints;
  for (const std::string& id : ids) PrintAction(set, id, complaints);
  return complaints.Tell();
}

int Save(ActionSet& set, const std::vector<std::string>& files) {
  const std::string name = ZelActionList::CustomActionsFileName();
  if (name.empty()) return Fail("there is no folder for common data to save in");
  const std::string path = ToShownPath(name);
  std::error_code ignored;
  std::string reason;
  // What the user made before stays, unless a file on the command line has it anew.
  if (std::filesystem::exists(path, ignored) && !set.AddFile(path, reason)) return Fail(reason);
  if (TellLosses(set) != kDone) return kFoundWrong;
  FileObject expected;
  SaveAll(set, expected);
  if (!set.List().SaveCustomActions()) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    const bool isThere = std::filesystem::is_directory(folder, ignored);
    return Fail("cannot save \"" + path + "\"" + (isThere ? "" : ": there is no folder \"" + folder.string() + "\""));
  }
  return ShowSaved(path, files, expected);
}

int Act(const Arguments& arguments) {
  if (!arguments.application.empty()) ZelActionList::SetApplicationName(arguments.application);
  ActionSet set(ZelActionList::GetActionList());
  for (const std::string& path : arguments.files) {
    std::string reason;
    if (!set.AddFile(path, reason)) return Fail(reason);
  }
  if (arguments.run) return RunAction(set, *arguments.run);
  return arguments.save ? Save(set, arguments.files) : Show(set, arguments);
}

std::string NotAFilesName(const std::string& text) {
  return !text.empty() && AllValidFileSystemChars(text) ? "" : "\"" + text + "\" cannot stand in the name of a file";
}

}  // namespace

void AddActionsCommand(CLI::App& program, int& exitCode) {
  CLI::App* const app = program.add_subcommand("actions", "Show, run and save the actions of files");
  const auto arguments = std::make_shared<Arguments>();
  app->add_option("FILE", arguments->files, "Files of actions; an id that several have is the first one's")->required();
  CLI::Option* const run = app->add_option("--run", arguments->run, "Validate and run the action of this id, instead of showing all");
  app->add_flag("--save", arguments->save, "Save the custom actions in the application's file, read them back and show them")
      ->excludes(run);
  app->add_option("--application", arguments->application, "Application whose file of custom actions is meant; zel by default")
      ->check(NotAFilesName);
  app->footer(
      "Examples:\n  zel actions samples/actions/DefaultActions.ini\n"
      "  zel actions samples/actions/DefaultActions.ini --run StartOfLine\n\n"
      "The groups are BaseAction, CompositeAction (key Actions), PrintText (key Text) and RunProgram (keys Program,\n"
      "Arguments). Running an action runs the programs that the file names.\n\n"
      "Exit code: 0, or 1 when an action cannot be made, is not valid, fails, or is not saved.\n");
  app->callback([arguments, &exitCode] { exitCode = Act(*arguments); });
}

}  // namespace zel
