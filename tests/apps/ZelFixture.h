// What the tests of the program zel share: they run it from outside, by what it prints, leaves in files and exits with.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/RunProgram.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"

class Zel : public testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments) { return RunProgram(ZELBASE_ZEL, arguments); }

  // The same in the folder of the samples, where a program finds its language's numbered texts.
  ProgramResult RunInSamples(const std::string& arguments) {
    return RunProgram("/bin/sh", {"-c", "cd \"" + Sample("") + "\" && \"" ZELBASE_ZEL "\" " + arguments});
  }

  std::string Write(const std::string& name, const std::string& text) { return m_folder.Write(name, text); }

  static std::string Sample(const std::string& name) { return SourceFolder() + "/samples/" + name; }

  TemporaryFolder m_folder;
};

inline bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// Columns are as wide as their contents: runs of blanks count as one.
inline std::string OneBlank(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c != ' ' || result.empty() || result.back() != ' ') result += c;
  }
  return result;
}
