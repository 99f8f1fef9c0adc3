// The worked examples of docs/ are true: what a page shows of files is written, what it shows of zel is run and compared.
//
// A page marks its examples by comments that a reader of the page does not see, each in front of an indented block:
//
//   <!-- file NAME -->    the block is this file
//   <!-- bytes NAME -->   the block is its bytes, in hexadecimal, up to two blanks in a row in each line
//   <!-- run -->          lines that begin with "$ zel" are run in the folder of the files; what stands below one is what it says
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/apps/ZelFixture.h"
#include "zelbase/geometry/Station.h"
#include "zelbase/geometry/VesselContour.h"

namespace {

struct Example {
  std::string kind;  // file, bytes or run
  std::string name;
  std::string text;  // the block, without its indentation
};

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<Example> ExamplesOf(const std::string& page) {
  std::vector<Example> examples;
  std::istringstream lines(Contents(SourceFolder() + "/docs/" + page));
  bool inBlock = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("<!-- ")) {
      std::istringstream words(line.substr(5));
      Example example;
      words >> example.kind >> example.name;
      inBlock = example.kind == "file" || example.kind == "bytes" || example.kind == "run";
      if (inBlock) examples.push_back(example);
    } else if (inBlock && (line.starts_with("    ") || line.empty())) {
      if (!line.empty() || !examples.back().text.empty()) examples.back().text += line.substr(line.empty() ? 0 : 4) + "\n";
    } else {
      inBlock = false;
    }
  }
  for (Example& example : examples) {
    while (example.text.ends_with("\n\n")) example.text.pop_back();
  }
  return examples;
}

std::string BytesOf(const std::string& text) {
  std::string bytes;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line.substr(0, line.find("  ")));
    for (std::string word; words >> word;) bytes += static_cast<char>(std::stoi(word, nullptr, 16));
  }
  return bytes;
}

class Documents : public Zel {
 protected:
  // Makes the files of a page and runs what it shows; the number of commands.
  int Replay(const std::string& page) {
    int commands = 0;
    for (const Example& example : ExamplesOf(page)) {
      if (example.kind == "run") {
        commands += RunBlock(page, example.text);
        continue;
      }
      std::filesystem::create_directories(std::filesystem::path(m_folder.File(example.name)).parent_path());
      Write(example.name, example.kind == "file" ? example.text : BytesOf(example.text));
    }
    return commands;
  }

  int RunBlock(const std::string& page, const std::string& block) {
    int commands = 0;
    std::istringstream lines(block);
    std::string command, expected;
    const auto runIt = [&] {
      if (command.empty()) return;
      const ProgramResult said = RunProgram("/bin/sh", {"-c", "cd \"" + m_folder.Path() + "\" && \"" ZELBASE_ZEL "\"" + command + " 2>&1"});
      EXPECT_EQ(said.output, expected) << page << ": zel" << command;
      ++commands;
    };
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("$ zel")) {
        runIt();
        command = line.substr(5);
        expected.clear();
      } else {
        expected += line + "\n";
      }
    }
    runIt();
    return commands;
  }
};

TEST_F(Documents, SettingsFileDoesAsItSays) { EXPECT_EQ(Replay("settings-file.md"), 7); }
TEST_F(Documents, FormatsDoAsTheySay) {
  EXPECT_EQ(Replay("formats.md"), 10);
  Station station;
  ASSERT_TRUE(station.ReadFile(m_folder.File("quay.txt")));
  Point position;
  ASSERT_TRUE(station.GetStationPos(position));
  EXPECT_EQ(position.x, 155000.0);
  EXPECT_EQ(position.y, 463000.5);
  EXPECT_EQ(position.z, 1.25);
}
TEST_F(Documents, ColoursDoAsTheySay) { EXPECT_EQ(Replay("colours.md"), 1); }
TEST_F(Documents, LanguageDoesAsItSays) { EXPECT_EQ(Replay("language.md"), 1); }
TEST_F(Documents, UnitsDoAsTheySay) { EXPECT_EQ(Replay("units.md"), 1); }
TEST_F(Documents, ActionsDoAsTheySay) { EXPECT_EQ(Replay("actions.md"), 1); }
TEST_F(Documents, NavigationDoesAsItSays) { EXPECT_EQ(Replay("navigation.md"), 1); }

TEST_F(Documents, GeometryDoesAsItSays) {
  EXPECT_EQ(Replay("geometry.md"), 1);
  // The bytes that the page shows are the contour that it shows as a file.
  VesselContour fromFile, fromBytes;
  ASSERT_TRUE(fromFile.Create(m_folder.File("pontoon.con"), 0));
  ASSERT_TRUE(fromBytes.LoadFromString(Contents(m_folder.File("pontoon.bin"))));
  std::string bytes;
  ASSERT_TRUE(fromFile.SaveToString(bytes));
  EXPECT_EQ(bytes, Contents(m_folder.File("pontoon.bin")));
  EXPECT_EQ(fromBytes.GetSize(), 2);
}

TEST_F(Documents, EachPageWithAMarkIsReplayedAbove) {
  std::vector<std::string> pages;
  for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() + "/docs")) {
    if (entry.path().extension() == ".md" && !ExamplesOf(entry.path().filename()).empty()) pages.push_back(entry.path().filename());
  }
  std::sort(pages.begin(), pages.end());
  EXPECT_EQ(pages, (std::vector<std::string>{"actions.md", "colours.md", "formats.md", "geometry.md", "language.md", "navigation.md",
                                             "settings-file.md", "units.md"}));
}

}  // namespace
