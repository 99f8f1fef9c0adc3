#include "SettingsCommands.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "DifferenceCommands.h"
#include "SettingsFile.h"
#include "TypedValue.h"
#include "zelbase/config/SettingsReport.h"
#include "zelbase/config/SettingsTextEditor.h"

namespace zel {
namespace {

// What the commands take from the command line; each uses its share.
struct Arguments {
  std::string file;
  std::vector<std::string> files;
  std::optional<std::string> section;  // empty names are names: a section "[" has one
  std::optional<std::string> key;
  std::string value;
  std::string type = "string";
  std::string from;
  bool quiet = false;
};

// ---- looking ----

int List(const Arguments& arguments) {
  SettingsFile file;
  std::string reason, wanted;
  if (!file.Open(arguments.file, reason)) return Fail(reason);
  const bool one = arguments.section.has_value();
  if (one && (!FromArgument(*arguments.section, file.encoding, wanted) || !file.store.HasSection(wanted))) {
    return Fail("no section [" + *arguments.section + "] in \"" + arguments.file + "\"");
  }
  const char* separator = "";
  for (const auto& name : SectionNames(file.store)) {
    if (one && name != wanted) continue;
    std::cout << separator << '[' << file.Shown(name) << "]\n";
    for (const auto& item : Items(file.store, name)) {
      std::cout << file.Shown(item.key) << " = " << file.Shown(item.value) << '\n';
    }
    separator = "\n";
  }
  return kDone;
}

int Get(const Arguments& arguments) {
  SettingsFile file;
  std::string reason, section, key, text;
  if (!file.Open(arguments.file, reason)) return Fail(reason);
  const std::string name = "[" + *arguments.section + "] " + *arguments.key;
  if (!FromArgument(*arguments.section, file.encoding, section) || !FromArgument(*arguments.key, file.encoding, key) ||
      !file.store.GetItem(section, key, text)) {
    const bool known = file.store.HasSection(section);
    return Fail(known ? "no key " + name + " in \"" + arguments.file + "\""
                      : "no section [" + *arguments.section + "] in \"" + arguments.file + "\"");
  }
  if (!ReadAs(file.store, section, key, arguments.type, text)) {
    return Fail(name + " = \"" + file.Shown(text) + "\" does not read as " + arguments.type);
  }
  std::cout << (arguments.type == "string" ? file.Shown(text) : text) << '\n';
  return kDone;
}

// ---- checking ----

const char* SeverityName(SettingsSeverity severity) {
  switch (severity) {
    case SettingsSeverity::Loss: return "loss";
    case SettingsSeverity::Warning: return "warning";
    case SettingsSeverity::Note: return "note";
  }
  return "";
}

void PrintFinding(const SettingsFile& file, const SettingsFinding& finding) {
  std::cout << file.path << ':';
  if (finding.line > 0) std::cout << finding.line << ':';
  std::cout << ' ' << SeverityName(finding.severity) << ": " << file.Shown(SettingsReport::Message(finding)) << '\n';
}

// Lines before the first section come by the hundred in files of other makers: a run of them is told in one line.
class LinesBeforeSections {
 public:
  void Take(const SettingsFinding& finding) {
    if (finding.kind != SettingsFindingKind::TextBeforeSections) return;
    if (m_count++ == 0) m_first = finding;
    m_last = finding.line;
    if (finding.severity == SettingsSeverity::Warning && m_items++ == 0) m_firstItem = finding;
  }

  void Print(const SettingsFile& file, bool quiet) const {
    if (m_count == 0 || (quiet && m_items == 0)) return;
    if (m_count == 1) return PrintFinding(file, m_first);
    std::cout << file.path << ':' << m_first.line << '-' << m_last << ": " << (m_items > 0 ? "warning" : "note") << ": " << m_count
              << " lines before the first section are kept as they are";
    if (m_items > 0) {
      std::cout << "; " << m_items << (m_items == 1 ? " looks" : " look") << " like an item and " << (m_items == 1 ? "is" : "are")
                << " not read, first in line " << m_firstItem.line;
    }
    std::cout << '\n';
  }

 private:
  SettingsFinding m_first, m_firstItem;
  long long m_last = 0;
  std::size_t m_count = 0, m_items = 0;
};

// Says how many findings the report met and did not keep.
void PrintRest(const SettingsReport& report, const SettingsFile& file) {
  const long long met = report.NumFindings(SettingsSeverity::Loss) + report.NumFindings(SettingsSeverity::Warning) +
                        report.NumFindings(SettingsSeverity::Note);
  const long long rest = met - static_cast<long long>(report.Findings().size());
  if (rest > 0) std::cout << file.path << ": and " << rest << " more\n";
}

// True when nothing but notes was found.
bool CheckFile(const std::string& path, bool quiet) {
  SettingsFile file;
  std::string reason;
  SettingsReport report;
  if (!file.Open(path, reason) || !report.ReadFile(ToSuitePath(path))) {
    Fail(reason);
    return false;
  }
  LinesBeforeSections before;
  for (const auto& finding : report.Findings()) before.Take(finding);
  before.Print(file, quiet);
  for (const auto& finding : report.Findings()) {
    if (finding.kind == SettingsFindingKind::TextBeforeSections) continue;
    if (!quiet || finding.severity != SettingsSeverity::Note) PrintFinding(file, finding);
  }
  PrintRest(report, file);
  return report.NumFindings(SettingsSeverity::Loss) == 0 && report.NumFindings(SettingsSeverity::Warning) == 0;
}

int Check(const Arguments& arguments) {
  std::size_t bad = 0;
  for (const auto& path : arguments.files) {
    if (!CheckFile(path, arguments.quiet)) ++bad;
  }
  if (bad == 0) return kDone;
  std::cout << bad << " of " << arguments.files.size() << (arguments.files.size() == 1 ? " file" : " files")
            << " with something to look at\n";
  return kFoundWrong;
}

// ---- changing ----

// A file under change, and the arguments in its own bytes.
class Change {
 public:
  explicit Change(const Arguments& arguments) : m_path(arguments.file) {}

  // False, with the message printed, when the file cannot be read. A missing file is an empty one when it may be made.
  bool Open(bool mayBeMade) {
    if (mayBeMade && !std::filesystem::exists(m_path)) return true;
    if (!m_editor.FileOpen(ToSuitePath(m_path))) {
      Fail(ToShownPath(m_editor.Reason()));
      return false;
    }
    m_encoding = DetectEncoding(m_editor.Text());
    return true;
  }

  // An argument, or a text in UTF-8, in the bytes of the file. One without a place there lets Finish refuse the change.
  std::string Text(const std::string& argument) {
    std::string bytes;
    if (!FromArgument(argument, m_encoding, bytes)) m_refused = "\"" + argument + "\" has characters outside Windows-1252";
    return bytes;
  }

  // Saves after steps that went well, tells the reason of the one that did not.
  int Finish(bool changed) {
    if (!m_refused.empty()) return Fail(m_refused);
    if (!changed) return Fail(ToTerminal(m_editor.Reason(), m_encoding));
    if (!m_editor.FileSaveReplacing(ToSuitePath(m_path))) return Fail("cannot write \"" + m_path + "\"; it is as it was");
    return kDone;
  }

  bool Refused() const { return !m_refused.empty(); }
  SettingsTextEditor& Editor() { return m_editor; }

 private:
  std::string m_path;
  std::string m_refused;
  Encoding m_encoding = Encoding::Windows1252;
  SettingsTextEditor m_editor;
};

int Set(const Arguments& arguments) {
  Change change(arguments);
  if (!change.Open(true)) return kFoundWrong;
  const std::string section = change.Text(*arguments.section), key = change.Text(*arguments.key), value = change.Text(arguments.value);
  return change.Finish(!change.Refused() && change.Editor().SetItem(section, key, value, true));
}

int Delete(const Arguments& arguments) {
  Change change(arguments);
  if (!change.Open(false)) return kFoundWrong;
  const std::string section = change.Text(*arguments.section), key = change.Text(arguments.key.value_or(""));
  if (change.Refused()) return change.Finish(false);
  return change.Finish(arguments.key.has_value() ? change.Editor().DeleteItem(section, key, false)
                                                 : change.Editor().DeleteSection(section));
}

int Rename(const Arguments& arguments) {
  Change change(arguments);
  if (!change.Open(false)) return kFoundWrong;
  const std::string section = change.Text(*arguments.section), key = change.Text(arguments.key.value_or("")),
                    name = change.Text(arguments.value);
  if (change.Refused()) return change.Finish(false);
  return change.Finish(arguments.key.has_value() ? change.Editor().RenameItem(section, key, name)
                                                 : change.Editor().RenameSection(section, name));
}

// Lets `target` of the file under change hold exactly the items of `section` of `source`.
bool CopyFrom(Change& change, const SettingsFile& source, const std::string& section, const std::string& target) {
  FileObject items;  // in the bytes of the file under change
  items.CreateSection(section, false);
  for (const auto& item : Items(source.store, section)) {
    const std::string key = change.Text(ToUtf8(item.key, source.encoding));
    const std::string value = change.Text(ToUtf8(item.value, source.encoding));
    if (change.Refused()) return false;
    items.SetItem(section, key, value, false);
  }
  return change.Editor().CopySection(target, items, section);
}

int Copy(const Arguments& arguments) {
  Change change(arguments);
  if (!change.Open(!arguments.from.empty())) return kFoundWrong;
  const std::string target = change.Text(arguments.value);
  if (arguments.from.empty()) {
    const std::string section = change.Text(*arguments.section);
    return change.Finish(!change.Refused() && change.Editor().CopySection(target, section));
  }
  SettingsFile source;
  std::string reason, section;
  if (!source.Open(arguments.from, reason)) return Fail(reason);
  if (!FromArgument(*arguments.section, source.encoding, section) || !source.store.HasSection(section)) {
    return Fail("no section [" + *arguments.section + "] in \"" + arguments.from + "\"");
  }
  return change.Finish(!change.Refused() && CopyFrom(change, source, section, target));
}

// ---- the command line ----

using Command = int (*)(const Arguments&);

CLI::App* Add(CLI::App* parent, const std::string& name, const std::string& description, const std::string& footer, Command command,
              const std::shared_ptr<Arguments>& arguments, int& exitCode) {
  CLI::App* const app = parent->add_subcommand(name, description);
  app->footer(footer + "\n");
  app->callback([command, arguments, &exitCode] { exitCode = command(*arguments); });
  return app;
}

// The positional arguments that most commands begin with.
void AddFileAndSection(CLI::App* app, Arguments& arguments, const std::string& section = "Name of the section") {
  app->add_option("FILE", arguments.file, "Settings file")->required();
  app->add_option("SECTION", arguments.section, section)->required();
}

void AddKey(CLI::App* app, Arguments& arguments) { app->add_option("KEY", arguments.key, "Name of the key")->required(); }

}  // namespace

void AddSettingsCommands(CLI::App& program, int& exitCode) {
  CLI::App* const settings = program.add_subcommand("settings", "Look into, check and change settings files");
  settings->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* app = Add(settings, "list", "Print sections and items, sorted by name", "Example:\n  zel settings list vessel.ini Antenna",
                      List, arguments, exitCode);
  app->add_option("FILE", arguments->file, "Settings file")->required();
  app->add_option("SECTION", arguments->section, "Only this section");

  app = Add(settings, "get", "Print one value",
            "Examples:\n  zel settings get vessel.ini Vessel Draught\n"
            "  zel settings get vessel.ini Vessel Deviceflags --type int     prints 31 for 0x1F",
            Get, arguments, exitCode);
  AddFileAndSection(app, *arguments);
  AddKey(app, *arguments);
  app->add_option("--type", arguments->type, "How to read the value")
      ->check(CLI::IsMember(std::vector<std::string>(kValueTypes, kValueTypes + kValueTypeCount)))
      ->capture_default_str();

  app = Add(settings, "set", "Change or add one value; every other byte of the file stays",
            "Example:\n  zel settings set vessel.ini Vessel Draught 2.8\n\n"
            "The file and the section are made when missing. A VALUE that begins with \"-\" and a letter goes behind \"--\".",
            Set, arguments, exitCode);
  AddFileAndSection(app, *arguments);
  AddKey(app, *arguments);
  app->add_option("VALUE", arguments->value, "The new value; \"\" for an empty one")->required();

  app = Add(settings, "delete", "Remove a key, or a whole section",
            "Examples:\n  zel settings delete vessel.ini Vessel Simulation\n  zel settings delete vessel.ini Antenna", Delete, arguments,
            exitCode);
  AddFileAndSection(app, *arguments);
  app->add_option("KEY", arguments->key, "Name of the key; without it the section goes");

  app = Add(settings, "rename", "Give a section, or a key of it, another name",
            "Examples:\n  zel settings rename vessel.ini Antenna Aerial\n"
            "  zel settings rename vessel.ini Vessel Depth --key Draught",
            Rename, arguments, exitCode);
  AddFileAndSection(app, *arguments);
  app->add_option("NEW", arguments->value, "The new name")->required();
  app->add_option("--key", arguments->key, "Rename this key instead of the section");

  app = Add(settings, "copy", "Copy a section; the target then holds exactly the items of the source",
            "Examples:\n  zel settings copy vessel.ini Antenna Antenna2\n"
            "  zel settings copy vessel.ini Sonar Sonar --from old-vessel.ini",
            Copy, arguments, exitCode);
  AddFileAndSection(app, *arguments, "Section to copy");
  app->add_option("TARGET", arguments->value, "Name of the copy in FILE")->required();
  app->add_option("--from", arguments->from, "Take the section from this file instead");

  app = Add(settings, "check", "Tell what reading drops, merges, repeats or cuts",
            "Example:\n  zel settings check /etc/*.conf\n\nExit code: 0, or 1 when there is something to look at.", Check, arguments,
            exitCode);
  app->add_option("FILE", arguments->files, "Settings files")->required();
  app->add_flag("-q,--quiet", arguments->quiet, "Leave out the notes");
  AddDifferenceCommands(*settings, exitCode);
}

}  // namespace zel
