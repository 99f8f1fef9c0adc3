#include "zelbase/platform/PlatformModules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/ChildProcess.h"
#include "tests/support/InChild.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"

namespace {

std::string InterfaceForm(std::string path) {
  std::replace(path.begin() + 1, path.end(), '/', '\\');
  return path;
}

std::string SystemForm(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::string OwnPath() { return std::filesystem::read_symlink("/proc/self/exe").string(); }

// File of the mathematical library that this program runs with, as the system's own table of mappings has it.
std::string MathLibrary() {
  std::ifstream mappings("/proc/self/maps");
  std::string line;
  while (std::getline(mappings, line)) {
    if (line.find("/libm.so.") != std::string::npos) return line.substr(line.find('/'));
  }
  return {};
}

// Calls a function of the form double(double) at `address`.
double Call(void* address, double argument) { return reinterpret_cast<double (*)(double)>(address)(argument); }

TEST(PlatformModules, ProgramPathIsThisProgram) { EXPECT_EQ(PlatformModules::System().ProgramPath(), InterfaceForm(OwnPath()) + ".exe"); }

TEST(PlatformModules, ModuleOfTheProgramIsTheProgram) {
  static const int here = 0;
  EXPECT_EQ(PlatformModules::System().ModulePath(&here), PlatformModules::System().ProgramPath());
}

TEST(PlatformModules, NoHandleIsTheProgram) {
  EXPECT_EQ(PlatformModules::System().HandlePath(nullptr), PlatformModules::System().ProgramPath());
}

TEST(PlatformModules, AHandleLeadsToItsModule) {
  const TemporaryFolder folder;
  std::filesystem::copy_file(MathLibrary(), folder.File("libProbe.so.4.1"));
  ChildProcess child([&] {
    PlatformModules& modules = PlatformModules::System();
    const ModuleHandle module = modules.Load(folder.InterfacePath() + "\\libProbe.so.4.1");
    if (module == nullptr) return 1;
    const std::string expected = folder.InterfacePath() + "\\ProbeR.dll";
    if (modules.HandlePath(module) != expected) return 2;
    // An address in it leads there, too.
    if (modules.HandlePath(modules.FindExport(module, "sqrt")) != expected) return 3;
    modules.Unload(module);
    return modules.HandlePath(module) == expected ? 4 : 0;
  });
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
}

TEST(PlatformModules, AHandleThatIsNoneHasNoPath) {
  int local = 0;
  EXPECT_EQ(PlatformModules::System().HandlePath(&local), "");
  EXPECT_EQ(PlatformModules::System().HandlePath(reinterpret_cast<ModuleHandle>(1)), "");
  static int here = 0;
  EXPECT_EQ(PlatformModules::System().HandlePath(&here), PlatformModules::System().ProgramPath());
}

TEST(PlatformModules, LibrariesEndAsTheSystemsDo) {
  EXPECT_EQ(PlatformModules::System().LibraryEnding(), ".so");
  EXPECT_NE(MathLibrary().find(PlatformModules::System().LibraryEnding()), std::string::npos);
}

TEST(PlatformModules, AddressOfNoModuleHasNoPath) {
  const int local = 0;
  EXPECT_EQ(PlatformModules::System().ModulePath(nullptr), "");
  EXPECT_EQ(PlatformModules::System().ModulePath(&local), "");
}

TEST(PlatformModules, LoadsALibraryAndFindsItsExports) {
  const std::string path = MathLibrary();
  ASSERT_NE(path, "");
  PlatformModules& modules = PlatformModules::System();
  const ModuleHandle module = modules.Load(InterfaceForm(path));
  ASSERT_NE(module, nullptr);
  void* const root = modules.FindExport(module, "sqrt");
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(Call(root, 49.0), 7.0);
  const std::string found = modules.ModulePath(root);
  EXPECT_EQ(found.substr(found.rfind('\\')), "\\mR.dll");
  EXPECT_TRUE(std::filesystem::equivalent(SystemForm(found.substr(0, found.rfind('\\'))), std::filesystem::path(path).parent_path()));
  EXPECT_EQ(modules.FindExport(module, "no such export"), nullptr);
  EXPECT_EQ(modules.FindExport(module, std::string("sqrt\0x", 6)), nullptr);
  EXPECT_EQ(modules.FindExport(module, ""), nullptr);
  modules.Unload(module);
}

// Loads by a path relative to the current folder, then leaves that folder; the module's path stays true.
int LoadRelative(const TemporaryFolder& folder, const std::string& path) {
  PlatformModules& modules = PlatformModules::System();
  std::filesystem::current_path(folder.Path());
  const ModuleHandle module = modules.Load(path);
  if (module == nullptr) return 1;
  std::filesystem::current_path("/");
  void* const root = modules.FindExport(module, "sqrt");
  if (root == nullptr || Call(root, 49.0) != 7.0) return 2;
  return modules.ModulePath(root) == folder.InterfacePath() + "\\sub\\ProbeR.dll" ? 0 : 3;
}

TEST(PlatformModules, RelativePathsAreOfTheCurrentFolder) {
  const TemporaryFolder folder;
  folder.MakeFolder("sub");
  std::filesystem::copy_file(MathLibrary(), folder.File("sub/libProbe.so.4.1"));
  for (const char* const path : {".\\sub\\libProbe.so.4.1", "sub/libProbe.so.4.1", "./sub\\libProbe.so.4.1"}) {
    ChildProcess child([&] { return LoadRelative(folder, path); });
    EXPECT_EQ(child.Wait(), 0) << path << child.ErrorText();
  }
}

TEST(PlatformModules, WhatIsNoLibraryDoesNotLoad) {
  const TemporaryFolder folder;
  PlatformModules& modules = PlatformModules::System();
  EXPECT_EQ(modules.Load(folder.File("none.dll")), nullptr);
  EXPECT_EQ(modules.Load(folder.Write("text.dll", "no library")), nullptr);
  EXPECT_EQ(modules.Load(folder.Write("empty.dll", "")), nullptr);
  EXPECT_EQ(modules.Load(folder.Path()), nullptr);
  EXPECT_EQ(modules.Load(folder.MakeFifo("fifo.dll")), nullptr);
  EXPECT_EQ(modules.Load(""), nullptr);
  EXPECT_EQ(modules.Load("libm.so.6"), nullptr) << "the system's folders are not searched";
}

TEST(PlatformModules, NoModuleIsTakenQuietly) {
  EXPECT_EQ(PlatformModules::System().FindExport(nullptr, "sqrt"), nullptr);
  EXPECT_NO_THROW(PlatformModules::System().Unload(nullptr));
}

TEST(PlatformModules, PathsThatMeanSomethingElseToTheLoaderDoNotLoad) {
  const TemporaryFolder folder;
  folder.MakeFolder("$ORIGIN");
  std::filesystem::copy_file(MathLibrary(), folder.File("$ORIGIN/libProbe.so"));
  PlatformModules& modules = PlatformModules::System();
  EXPECT_EQ(modules.Load(folder.InterfacePath() + "\\$ORIGIN\\libProbe.so"), nullptr);
  std::filesystem::copy_file(MathLibrary(), folder.File("libProbe.so"));
  EXPECT_EQ(modules.Load(folder.InterfacePath() + std::string("\\libProbe.so\0.so", 16)), nullptr);
}

TEST(PlatformModules, RelativePathsAreOfTheRootToo) {
  const TemporaryFolder folder;
  folder.MakeFolder("sub");
  std::filesystem::copy_file(MathLibrary(), folder.File("sub/libProbe.so"));
  ExpectInChild([&] {
    std::filesystem::current_path("/");
    PlatformModules& modules = PlatformModules::System();
    const ModuleHandle module = modules.Load(folder.File("sub/libProbe.so").substr(1));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(modules.HandlePath(module), folder.InterfacePath() + "\\sub\\ProbeR.dll");
  });
}

TEST(PlatformModules, WhereTheCurrentFolderHasGoneNothingLoads) {
  const TemporaryFolder folder;
  folder.MakeFolder("sub");
  ExpectInChild([&] {
    std::filesystem::current_path(folder.File("sub"));
    std::filesystem::remove(folder.File("sub"));
    EXPECT_EQ(PlatformModules::System().Load("libProbe.so"), nullptr);
  });
}

// This test started once more from a copy of the program, which it removes when `removes` says so.
void ExpectPathFromCopy(const char* name, bool removes) {
  const TemporaryFolder folder;
  const std::string copy = folder.File(name);
  std::filesystem::copy_file(OwnPath(), copy);
  const EnvironmentVariable variable("ZELBASE_TEST_COPY", removes ? "removed" : "kept");
  const ProgramResult result = RunProgram(copy, {"--gtest_filter=PlatformModules.AProgramThatWasRemovedKeepsItsName"});
  EXPECT_EQ(result.exitCode, 0) << name << result.output << result.errors;
}

TEST(PlatformModules, AProgramThatWasRemovedKeepsItsName) {
  if (const char* const copy = std::getenv("ZELBASE_TEST_COPY")) {
    const std::string path = OwnPath();
    if (copy == std::string("removed")) {
      ASSERT_TRUE(std::filesystem::remove(path));
    }
    EXPECT_EQ(PlatformModules::System().ProgramPath(), InterfaceForm(path) + ".exe");
    return;
  }
  ExpectPathFromCopy("probe", true);
  ExpectPathFromCopy("probe (deleted)", true);
  ExpectPathFromCopy("probe (deleted)", false);
}

}  // namespace
