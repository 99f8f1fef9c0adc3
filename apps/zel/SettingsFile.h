// A settings file as the program's commands see it: opened through the store, with what a person needs beside it.
#pragma once

#include <string>
#include <vector>

#include "TextEdge.h"
#include "zelbase/config/FileObject.h"

namespace zel {

// Exit codes of the program.
enum ExitCode : int { kDone = 0, kFoundWrong = 1, kBadUsage = 2 };

// Prints "zel: MESSAGE" on standard error and gives kFoundWrong.
int Fail(const std::string& message);

// A path as typed, in the suite's form: "\" as separator, but "/" in front when absolute.
std::string ToSuitePath(std::string path);

// A path of the suite as a person types it here.
std::string ToShownPath(std::string path);

struct SettingsFile {
  FileObject store;
  std::string path;  // as typed
  Encoding encoding = Encoding::Windows1252;

  // Opens `name` for reading. False, with a reason a person can read, when it cannot be opened or read.
  bool Open(const std::string& name, std::string& reason);

  std::string Shown(std::string_view text) const { return ToTerminal(text, encoding); }
};

struct SettingsItem {
  std::string key;
  std::string value;
};

// Names of the sections, and items of one section, sorted: the store keeps no order, and a person looks for a name.
std::vector<std::string> SectionNames(const FileObject& store);
std::vector<SettingsItem> Items(const FileObject& store, const std::string& section);

// The bytes of a file; empty when it cannot be read.
std::string ReadBytes(const std::string& path);

}  // namespace zel
