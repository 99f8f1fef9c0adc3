#include "FilesCommand.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "SettingsFile.h"
#include "TextEdge.h"
#include "UtcText.h"
#include "zelbase/comms/CSerialSettings.h"
#include "zelbase/files/FileFinder.h"
#include "zelbase/files/FileHelpers.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/PlatformSerialPorts.h"

namespace zel {
namespace {

struct Arguments {
  std::string folder;
  std::string mask = "*.*";
  std::string list;
  std::vector<std::string> files;
  bool recursive = false;
  bool detailed = false;
};

std::string Shown(const std::string& path) { return ToTerminal(ToShownPath(path), DetectEncoding(path)); }

// ---- files find ----

std::string Details(const std::string& path) {
  unsigned long long size = 0;
  double time = 0.0;
  GetFileSize(path, size);
  char text[40];
  std::snprintf(text, sizeof text, "%14llu  ", size);
  return text + ToColumn(GetFileWriteTime(path, time) ? UtcText(std::floor(time / 1000.0) * 1000.0) : "", 21);
}

int Find(const Arguments& arguments) {
  FileFinder finder;
  finder.FindFiles(ToSuitePath(arguments.folder), arguments.mask, arguments.recursive);
  int found = 0;
  for (int i = 0; i < finder.NumFiles(); ++i) {
    const FileName& file = finder[i];
    if (file.Name(true) == "." || file.Name(true) == "..") continue;
    std::cout << (arguments.detailed ? Details(*file) : "") << Shown(*file) << '\n';
    ++found;
  }
  return found > 0 ? kDone : kFoundWrong;
}

// ---- crc ----

bool ChecksumOf(const std::string& path, unsigned int& checksum) {
  HugeFileStream stream(ToSuitePath(path).c_str(), false, false);
  return stream.GetFileCrc32(checksum);
}

std::string Hexadecimal(unsigned int checksum) {
  char text[9];
  std::snprintf(text, sizeof text, "%08X", checksum);
  return text;
}

int PrintChecksums(const Arguments& arguments) {
  int exitCode = kDone;
  for (const std::string& path : arguments.files) {
    unsigned int checksum = 0;
    if (ChecksumOf(path, checksum)) std::cout << Hexadecimal(checksum) << "  " << path << '\n';
    else exitCode = Fail("cannot open \"" + path + "\"");
  }
  return exitCode;
}

// A line "CHECKSUM  PATH", as PrintChecksums writes it.
bool ReadEntry(const std::string& line, unsigned int& checksum, std::string& path) {
  if (line.size() < 11 || line.compare(8, 2, "  ") != 0) return false;
  const auto result = std::from_chars(line.data(), line.data() + 8, checksum, 16);
  path = line.substr(10);
  return result.ec == std::errc() && result.ptr == line.data() + 8;
}

int CheckList(const Arguments& arguments) {
  std::ifstream stream(arguments.list);
  if (!stream) return Fail("cannot open \"" + arguments.list + "\"");
  int exitCode = kDone;
  for (std::string line; std::getline(stream, line);) {
    unsigned int wanted = 0, checksum = 0;
    std::string path;
    if (!ReadEntry(line, wanted, path)) {
      exitCode = Fail("not a checksum and a path: \"" + ToTerminal(line, DetectEncoding(line)) + "\"");
      continue;
    }
    const bool opened = ChecksumOf(path, checksum), same = opened && checksum == wanted;
    std::cout << path << ": " << (same ? "as it was" : opened ? "CHANGED" : "cannot be opened") << '\n';
    if (!same) exitCode = kFoundWrong;
  }
  return exitCode;
}

int Checksums(const Arguments& arguments) {
  if (!arguments.list.empty()) return CheckList(arguments);
  if (!arguments.files.empty()) return PrintChecksums(arguments);
  Fail("files to sum up, or --check LIST");
  return kBadUsage;
}

// ---- ports ----

// A port that is listed is there; trying it once more tells whether it could be used.
const char* StateOf(const std::string& port) {
  switch (PlatformService<PlatformSerialPorts>::Current().Try(port)) {
    case SerialPortResult::Ok: return "free";
    case SerialPortResult::InUse: return "in use";
    case SerialPortResult::AccessDenied: return "not for this user";
    case SerialPortResult::NotFunctioning: return "does not answer";
    default: return "gone";
  }
}

int Ports() {
  std::vector<std::string> ports;
  CSerialSettings::GetAvailableComPorts(ports);
  for (const std::string& port : ports) std::cout << ToColumn(port, 20) << StateOf(port) << '\n';
  std::cout << Counted(ports.size(), "serial port", "serial ports") << '\n';
  return kDone;
}

}  // namespace

void AddFilesCommands(CLI::App& program, int& exitCode) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* const files = program.add_subcommand("files", "Find files as the suite does");
  files->require_subcommand(1);
  CLI::App* app = files->add_subcommand("find", "Files and folders that match a mask, in a folder or below it");
  app->add_option("FOLDER", arguments->folder, "Where to look")->required()->check(CLI::ExistingDirectory);
  app->add_option("MASK", arguments->mask, "With * and ?, in letters of either case; \"*.*\" is every one")->capture_default_str();
  app->add_flag("-r,--recursive", arguments->recursive, "In all folders below, too");
  app->add_flag("-l,--long", arguments->detailed, "With size in bytes and time of writing, UTC");
  app->footer("Example:\n  zel files find samples \"*.ini\" --recursive\n\nExit code: 0, or 1 when there is none.\n");
  app->callback([arguments, &exitCode] { exitCode = Find(*arguments); });

  app = program.add_subcommand("crc", "The suite's checksum of files");
  app->add_option("FILE", arguments->files, "Files to sum up");
  app->add_option("--check", arguments->list, "Compare with the checksums that this file lists, as this command writes them");
  app->footer(
      "It is a checksum of the suite's own, which puts four bytes for each byte of the file through a CRC-32.\n\n"
      "Example:\n  zel crc *.tid > sums.txt\n  zel crc --check sums.txt\n");
  app->callback([arguments, &exitCode] { exitCode = Checksums(*arguments); });

  app = program.add_subcommand("ports", "The serial ports of this computer");
  app->callback([&exitCode] { exitCode = Ports(); });
}

}  // namespace zel
