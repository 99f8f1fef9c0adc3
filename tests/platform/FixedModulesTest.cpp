#include "zelbase/platform/FixedModules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(FixedModules, KnowsNothingAtFirst) {
  FixedModules modules;
  int stranger = 0;
  EXPECT_EQ(modules.ProgramPath(), "");
  EXPECT_EQ(modules.ModulePath(&stranger), "");
  EXPECT_EQ(modules.Load("x.dll"), nullptr);
  EXPECT_EQ(modules.FindExport(nullptr, "x"), nullptr);
  EXPECT_EQ(modules.FindExport(&stranger, "x"), nullptr);
  EXPECT_EQ(modules.LoadCount(&stranger), 0);
  EXPECT_NO_THROW(modules.Unload(&stranger));
  EXPECT_NO_THROW(modules.AddExport(&stranger, "x", &stranger));
}

TEST(FixedModules, PathsAreThoseItWasTold) {
  FixedModules modules;
  const int one = 0;
  const int other = 0;
  modules.SetProgramPath("C:\\suite\\survey.exe");
  modules.SetModulePath("C:\\suite\\ZelBaseR.dll");
  modules.SetModulePath(&one, "C:\\suite\\OneR.dll");
  const PlatformOverride<PlatformModules> guard(modules);
  PlatformModules& current = PlatformService<PlatformModules>::Current();
  EXPECT_EQ(current.ProgramPath(), "C:\\suite\\survey.exe");
  EXPECT_EQ(current.ModulePath(&one), "C:\\suite\\OneR.dll");
  EXPECT_EQ(current.ModulePath(&other), "C:\\suite\\ZelBaseR.dll");
}

TEST(FixedModules, AHandleHasThePathItWasToldAndNoneIsTheProgram) {
  FixedModules modules;
  int one = 0;
  int other = 0;
  EXPECT_EQ(modules.HandlePath(nullptr), "");
  EXPECT_EQ(modules.HandlePath(&one), "");
  modules.SetProgramPath("C:\\suite\\survey.exe");
  modules.SetModulePath("C:\\suite\\ZelBaseR.dll");
  modules.SetModulePath(&one, "C:\\suite\\OneR.dll");
  EXPECT_EQ(modules.HandlePath(nullptr), "C:\\suite\\survey.exe");
  EXPECT_EQ(modules.HandlePath(&one), "C:\\suite\\OneR.dll");
  EXPECT_EQ(modules.HandlePath(&other), "C:\\suite\\ZelBaseR.dll");
}

TEST(FixedModules, LibrariesEndAsTold) {
  FixedModules modules;
  EXPECT_EQ(modules.LibraryEnding(), ".dll");
  modules.SetLibraryEnding(".so");
  EXPECT_EQ(modules.LibraryEnding(), ".so");
}

TEST(FixedModules, LibrariesLoadUnderTheirVeryText) {
  FixedModules modules;
  const ModuleHandle library = modules.AddLibrary(".\\a.dll");
  EXPECT_EQ(modules.AddLibrary(".\\a.dll"), library);
  EXPECT_NE(modules.AddLibrary(".\\b.dll"), library);
  EXPECT_EQ(modules.Load(".\\a.dll"), library);
  EXPECT_EQ(modules.Load("a.dll"), nullptr);
  EXPECT_EQ(modules.Load(".\\A.dll"), nullptr);
  EXPECT_EQ(modules.Requests(), (std::vector<std::string>{".\\a.dll", "a.dll", ".\\A.dll"}));
}

TEST(FixedModules, CountsLoadsAndUnloads) {
  FixedModules modules;
  const ModuleHandle library = modules.AddLibrary("a.dll");
  EXPECT_EQ(modules.LoadCount(library), 0);
  modules.Load("a.dll");
  modules.Load("a.dll");
  EXPECT_EQ(modules.LoadCount(library), 2);
  modules.Unload(library);
  modules.Unload(nullptr);
  EXPECT_EQ(modules.LoadCount(library), 1);
}

TEST(FixedModules, ExportsBelongToTheirLibrary) {
  FixedModules modules;
  int exported = 0;
  const ModuleHandle one = modules.AddLibrary("one.dll");
  const ModuleHandle other = modules.AddLibrary("other.dll");
  modules.AddExport(one, "RegisterAll", &exported);
  EXPECT_EQ(modules.FindExport(one, "RegisterAll"), &exported);
  EXPECT_EQ(modules.FindExport(one, "registerall"), nullptr);
  EXPECT_EQ(modules.FindExport(other, "RegisterAll"), nullptr);
}

TEST(FixedModules, CountsEachLibraryByItself) {
  FixedModules modules;
  modules.AddLibrary("a.dll");
  const ModuleHandle second = modules.AddLibrary("b.dll");
  int stranger = 0;
  modules.Load("b.dll");
  EXPECT_EQ(modules.LoadCount(second), 1);
  EXPECT_EQ(modules.LoadCount(&stranger), 0);
}

}  // namespace
