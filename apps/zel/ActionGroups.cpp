#include "ActionGroups.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "SettingsFile.h"
#include "TextEdge.h"
#include "zelbase/frame/CZelString.h"

namespace zel {
namespace {

constexpr std::size_t kDeepest = 32;
constexpr std::size_t kMostMembers = 10000;

std::string Quoted(std::string_view text) { return "\"" + ToTerminal(text, DetectEncoding(text)) + "\""; }

// ---- PrintText ----

class PrintTextAction : public ZelAction, public Telling {
 public:
  PrintTextAction() { SetActionGroup("PrintText"); }

  std::string GroupName() override { return "Print text"; }
  bool CanSelect() override { return true; }
  std::string Does() const override { return "prints " + Quoted(m_text); }

  bool Load(FileObject& file) override {
    const bool loaded = ZelAction::Load(file);
    file.GetItem(GetSectionName(), "Text", m_text);
    return loaded;
  }
  bool Save(FileObject& file) override { return ZelAction::Save(file) && file.SetItem(GetSectionName(), "Text", m_text, true); }
  bool Execute() override {
    std::cout << ToTerminal(m_text, DetectEncoding(m_text)) << '\n';
    return true;
  }

 private:
  std::string m_text;
};

// ---- RunProgram ----

bool IsProgram(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored) && ::access(path.c_str(), X_OK) == 0;
}

// Where the program lies; empty when it is not found. Without a folder it is looked for in those of PATH.
std::string FindProgram(const std::string& name) {
  if (name.empty()) return std::string();
  if (name.find('/') != std::string::npos) return IsProgram(name) ? name : std::string();
  const char* const path = std::getenv("PATH");
  const CZelString folders(path != nullptr ? path : "", ':', false);
  for (int i = 0; i < folders.Size(); ++i) {
    std::string candidate = folders[i] + "/" + name;
    if (!folders[i].empty() && IsProgram(candidate)) return candidate;
  }
  return std::string();
}

// Words parted by blanks; double quotes hold blanks together.
std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  bool quoted = false, open = false;
  for (const char c : text) {
    if (c == ' ' && !quoted) {
      open = false;
      continue;
    }
    if (!open) words.emplace_back();
    open = true;
    if (c == '"') {
      quoted = !quoted;
    } else {
      words.back() += c;
    }
  }
  return words;
}

// Runs the program and waits for it: its exit code, -1 when it did not start or did not end by itself.
int RunAndWait(const std::string& program, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), program);
  std::vector<char*> texts;
  texts.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) texts.push_back(argument.data());
  texts.push_back(nullptr);
  std::cout.flush();
  pid_t child = 0;
  if (::posix_spawn(&child, program.c_str(), nullptr, nullptr, texts.data(), environ) != 0) return -1;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class RunProgramAction : public ZelAction, public Telling {
 public:
  explicit RunProgramAction(std::shared_ptr<ActionJournal> journal) : m_journal(std::move(journal)) { SetActionGroup("RunProgram"); }

  std::string GroupName() override { return "Run program"; }
  bool CanSelect() override { return true; }
  std::string Does() const override {
    std::string text = m_program.empty() ? "runs nothing: it names no program" : "runs " + Quoted(m_program);
    for (const std::string& word : Words(m_arguments)) text += " " + Quoted(word);
    return text;
  }

  bool Load(FileObject& file) override {
    const bool loaded = ZelAction::Load(file);
    file.GetItem(GetSectionName(), "Program", m_program);
    file.GetItem(GetSectionName(), "Arguments", m_arguments);
    return loaded;
  }
  bool Save(FileObject& file) override {
    return ZelAction::Save(file) && file.SetItem(GetSectionName(), "Program", m_program, true) &&
           file.SetItem(GetSectionName(), "Arguments", m_arguments, true);
  }
  bool Validate() override { return !FindProgram(ToShownPath(m_program)).empty() || Fault("there is no program " + Quoted(m_program)); }
  bool Execute() override {
    const int code = RunAndWait(FindProgram(ToShownPath(m_program)), Words(m_arguments));
    if (code == 0) return true;
    return Fault(Quoted(m_program) + (code < 0 ? " could not be run to its end" : " ended with code " + std::to_string(code)));
  }

 private:
  bool Fault(const std::string& what) {
    m_journal->faults.push_back("[" + ToTerminal(GetName(), DetectEncoding(GetName())) + "]: " + what);
    return false;
  }

  std::shared_ptr<ActionJournal> m_journal;
  std::string m_program;
  std::string m_arguments;
};

// ---- Creators ----

template <class Make>
class Creator : public ZelActionICreator {
 public:
  explicit Creator(Make make) : m_make(std::move(make)) {}
  ZelAction* Create() override { return m_make(); }

 private:
  Make m_make;
};

template <class Make>
void Register(ZelActionList& list, const char* group, Make make) {
  auto creator = std::make_unique<Creator<Make>>(std::move(make));
  list.RegisterActionGroup(group, creator.release());
}

}  // namespace

// ---- CompositeAction ----

ListedComposite::ListedComposite(ZelActionList& list, std::shared_ptr<ActionJournal> journal)
    : m_list(list), m_journal(std::move(journal)) {}

bool ListedComposite::Load(FileObject& file) {
  const bool loaded = ZelCompositeAction::Load(file);
  file.GetItem(GetSectionName(), "Actions", m_members);
  DeleteAllActions();
  m_isWhole = true;
  if (m_journal->making.empty()) m_journal->members = 0;
  m_journal->making.push_back(GetSectionName());
  const CZelString ids(m_members, ',', true);
  for (int i = 0; i < ids.Size(); ++i) {
    if (!ids[i].empty()) AddMember(ids[i]);
  }
  m_journal->making.pop_back();
  return loaded;
}

void ListedComposite::AddMember(const std::string& id) {
  const std::vector<std::string>& making = m_journal->making;
  if (std::find(making.begin(), making.end(), id) != making.end()) {
    return Fault("goes in a circle: " + Quoted(id) + " contains itself");
  }
  if (making.size() >= kDeepest) return Fault("composites are nested more than " + std::to_string(kDeepest) + " deep");
  if (m_journal->members >= kMostMembers) {
    // Once is enough: there may be as many more.
    if (m_journal->members++ == kMostMembers) Fault("has more than " + std::to_string(kMostMembers) + " members in all");
    m_isWhole = false;
    return;
  }
  ++m_journal->members;
  std::unique_ptr<ZelAction> member(m_list.Create(id));
  // A group's name gives a bare action of the group, which has no settings and so no section.
  if (member == nullptr || member->GetSectionName().empty()) return Fault("its member " + Quoted(id) + " cannot be made");
  AddAction(member.release());
}

void ListedComposite::Fault(const std::string& what) {
  m_isWhole = false;
  m_journal->faults.push_back("[" + ToTerminal(GetSectionName(), DetectEncoding(GetSectionName())) + "]: " + what);
}

bool ListedComposite::Save(FileObject& file) {
  return ZelCompositeAction::Save(file) && file.SetItem(GetSectionName(), "Actions", m_members, true);
}

// Half of a macro is worse than none.
bool ListedComposite::Validate() { return m_isWhole && ZelCompositeAction::Validate(); }

void RegisterActionGroups(ZelActionList& list, const std::shared_ptr<ActionJournal>& journal) {
  Register(list, "BaseAction", [] { return new ZelAction; });
  Register(list, kCompositeGroup, [&list, journal] { return new ListedComposite(list, journal); });
  Register(list, "PrintText", [] { return new PrintTextAction; });
  Register(list, "RunProgram", [journal] { return new RunProgramAction(journal); });
}

}  // namespace zel
