#include "DifferenceCommands.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <string>

#include "Palette.h"
#include "SettingsFile.h"
#include "zelbase/config/SettingsDifference.h"
#include "zelbase/config/SettingsTextEditor.h"

namespace zel {
namespace {

// Exit codes as those of diff: nothing separates the files, something does, trouble.
constexpr int kSame = 0;
constexpr int kDifferent = 1;
constexpr int kTrouble = 2;

struct Arguments {
  std::string oldFile;
  std::string newFile;
  std::string difference;
  bool dryRun = false;
  Palette palette;
};

// ---- the listing ----

class Listing {
 public:
  Listing(const SettingsFile& oldFile, const SettingsFile& newFile, const Palette& palette)
      : m_old(oldFile), m_new(newFile), m_palette(palette) {}

  void Print(const SettingsChanges& changes) {
    for (const auto& change : changes) PrintChange(change);
    if (!changes.empty())
      std::cout << '\n'
                << Count(SettingsChangeKind::Added) << " added, " << Count(SettingsChangeKind::Changed) << " changed, "
                << Count(SettingsChangeKind::Removed) << " removed\n";
  }

 private:
  void PrintChange(const SettingsChange& change) {
    const SettingsFile& file = change.kind == SettingsChangeKind::Removed ? m_old : m_new;
    if (m_first || change.section != m_section) {
      std::cout << (m_first ? "" : "\n") << m_palette.Paint(Tone::Head, "[" + file.Shown(change.section) + "]") << '\n';
    }
    m_first = false;
    m_section = change.section;
    ++m_counts[static_cast<std::size_t>(change.kind)];
    std::cout << "  " << Line(change, file.Shown(change.key)) << '\n';
  }

  std::string Line(const SettingsChange& change, const std::string& key) const {
    switch (change.kind) {
      case SettingsChangeKind::Added: return m_palette.Paint(Tone::Added, "+ " + key + " = " + m_new.Shown(change.newValue));
      case SettingsChangeKind::Removed: return m_palette.Paint(Tone::Removed, "- " + key + " = " + m_old.Shown(change.oldValue));
      case SettingsChangeKind::Changed: break;
    }
    return m_palette.Paint(Tone::Changed, "~ " + key + " = " + m_old.Shown(change.oldValue) + " -> " + m_new.Shown(change.newValue));
  }

  int Count(SettingsChangeKind kind) const { return m_counts[static_cast<std::size_t>(kind)]; }

  const SettingsFile& m_old;
  const SettingsFile& m_new;
  const Palette& m_palette;
  std::array<int, 3> m_counts{};
  std::string m_section;
  bool m_first = true;
};

bool Open(SettingsFile& file, const std::string& path) {
  std::string reason;
  if (file.Open(path, reason)) return true;
  Fail(reason);
  return false;
}

// Two encodings in one comparison make equal words look different: values are compared as bytes.
void WarnOfEncodings(const SettingsFile& a, const SettingsFile& b) {
  if (a.encoding == b.encoding) return;
  const SettingsFile& utf8 = a.encoding == Encoding::Utf8 ? a : b;
  std::cerr << "zel: note: \"" << utf8.path << "\" is in UTF-8 and the other file is not; texts are compared byte by byte\n";
}

// ---- diff ----

int Diff(const Arguments& arguments) {
  SettingsFile older, newer;
  if (!Open(older, arguments.oldFile) || !Open(newer, arguments.newFile)) return kTrouble;
  FileObject difference;
  newer.store.GetDifference(older.store, difference);
  const SettingsChanges changes = ListSettingsChanges(newer.store, older.store);
  if (!arguments.difference.empty() && !difference.FileSaveReplacing(ToSuitePath(arguments.difference))) {
    Fail("cannot write \"" + arguments.difference + "\"");
    return kTrouble;
  }
  if (changes.empty()) return kSame;

  std::cout << arguments.palette.Paint(Tone::Head, "--- " + older.path) << '\n'
            << arguments.palette.Paint(Tone::Head, "+++ " + newer.path) << '\n';
  Listing(older, newer, arguments.palette).Print(changes);
  WarnOfEncodings(older, newer);
  return kDifferent;
}

// ---- apply ----

// Tells what stopped the difference: an item that it removes and that is not there.
int FailToApply(const SettingsFile& file, const SettingsFile& difference) {
  std::string value;
  for (const auto& change : ListDifference(difference.store, file.store)) {
    if (change.kind != SettingsChangeKind::Removed || file.store.GetItem(change.section, change.key, value)) continue;
    return Fail("\"" + file.path + "\" has no [" + difference.Shown(change.section) + "] " + difference.Shown(change.key) +
                ", which the difference removes; the file is as it was");
  }
  return Fail("\"" + difference.path + "\" removes an item twice; \"" + file.path + "\" is as it was");
}

// Makes the steps that turn `before` into `after` in the text of the file, so that its comments stay.
bool EditText(SettingsTextEditor& editor, const SettingsChanges& changes) {
  return std::all_of(changes.begin(), changes.end(), [&editor](const SettingsChange& change) {
    if (change.kind == SettingsChangeKind::Removed) return editor.DeleteItem(change.section, change.key, true);
    return editor.SetItem(change.section, change.key, change.newValue, true);
  });
}

// What of the difference changes the file; the rest is so already, and would only move things about.
SettingsChanges RealChanges(const SettingsFile& before, const SettingsFile& after, const SettingsFile& difference) {
  SettingsChanges changes;
  for (const auto& change : ListDifference(difference.store, before.store)) {
    std::string oldValue, newValue;
    const bool was = before.store.GetItem(change.section, change.key, oldValue);
    const bool is = after.store.GetItem(change.section, change.key, newValue);
    if (was == is && oldValue == newValue) continue;
    const SettingsChangeKind kind = !is ? SettingsChangeKind::Removed : (was ? SettingsChangeKind::Changed : SettingsChangeKind::Added);
    const SettingsChange real{kind, change.section, change.key, oldValue, newValue};
    if (std::find(changes.begin(), changes.end(), real) == changes.end()) changes.push_back(real);
  }
  return changes;
}

int Apply(const Arguments& arguments) {
  SettingsFile before, after, difference;
  if (!Open(before, arguments.oldFile) || !Open(after, arguments.oldFile) || !Open(difference, arguments.difference)) {
    return kTrouble;
  }
  if (!after.store.ApplyDifference(difference.store)) return FailToApply(before, difference);
  const SettingsChanges changes = RealChanges(before, after, difference);
  if (changes.empty()) {
    std::cout << "Nothing to change: \"" << before.path << "\" has all of it already\n";
    return kSame;
  }

  SettingsTextEditor editor;
  if (!editor.FileOpen(ToSuitePath(before.path)) || !EditText(editor, changes)) {
    Fail(ToTerminal(editor.Reason(), before.encoding) + "; \"" + before.path + "\" is as it was");
    return kTrouble;
  }
  if (!arguments.dryRun && !editor.FileSaveReplacing(ToSuitePath(before.path))) {
    Fail("cannot write \"" + before.path + "\"; it is as it was");
    return kTrouble;
  }
  Listing(before, difference, arguments.palette).Print(changes);
  WarnOfEncodings(before, difference);
  return kSame;
}

}  // namespace

void AddDifferenceCommands(CLI::App& settings, int& exitCode) {
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* app = settings.add_subcommand("diff", "Tell what separates two settings files, item by item");
  app->add_option("OLD", arguments->oldFile, "The older file")->required();
  app->add_option("NEW", arguments->newFile, "The newer file")->required();
  app->add_option("-o,--output", arguments->difference, "Write the difference to this file, for \"zel settings apply\"");
  arguments->palette.AddOption(*app);
  app->footer(
      "Example:\n  zel settings diff vessel.ini vessel-next.ini -o refit.ini\n\n"
      "+ added, ~ changed, - removed. Comments, empty sections and checksums do not count.\n"
      "Exit code: 0 the same, 1 different, 2 trouble.\n");
  app->callback([arguments, &exitCode] { exitCode = Diff(*arguments); });

  app = settings.add_subcommand("apply", "Apply a difference to a settings file; comments and order stay");
  app->add_option("FILE", arguments->oldFile, "Settings file to change")->required();
  app->add_option("DIFFERENCE", arguments->difference, "What \"zel settings diff -o\" has written")->required();
  app->add_flag("-n,--dry-run", arguments->dryRun, "Tell what would change and leave the file alone");
  arguments->palette.AddOption(*app);
  app->footer(
      "Example:\n  zel settings apply my-vessel.ini refit.ini\n\n"
      "Exit code: 0 applied, 1 it does not fit the file, which is then as it was, 2 trouble.\n");
  app->callback([arguments, &exitCode] { exitCode = Apply(*arguments); });
}

}  // namespace zel
