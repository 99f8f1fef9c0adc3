#include "zelbase/platform/PlatformHelp.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/InChild.h"
#include "tests/support/PseudoTerminal.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"

// The viewer is looked for once in a process: each test stands in a child.

namespace {

constexpr const char* kVariable = "ZELBASE_HELP_VIEWER";

// A viewer that writes the number of its arguments and the arguments, one a line, into the FIFO "told"; then it waits
// until somebody writes into "go", if there is such a FIFO.
class Viewer {
 public:
  Viewer() : m_told(folder.MakeFifo("told")) {
    folder.Write("help file.chm", "help");
    Write("viewer", "#!/bin/sh\n{ echo $#; for a; do echo \"$a\"; done; } > '" + m_told + "'\n" + "test ! -p '" + folder.File("go") +
                        "' || read go < '" + folder.File("go") + "'\n");
  }

  std::string Write(const std::string& name, const std::string& content) const {
    const std::string path = folder.Write(name, content);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
  }

  // What the viewer was started with; waits until it says so.
  std::string Told() const {
    std::ifstream stream(m_told);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  }

  std::string Path() const { return folder.File("viewer"); }
  std::string Document() const { return folder.InterfacePath() + "\\help file.chm"; }

  TemporaryFolder folder;

 private:
  std::string m_told;
};

TEST(PlatformHelp, WithoutAViewerNothingIsShown) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable none(kVariable, nullptr);
    EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), "topic"));
    EXPECT_FALSE(HasChildren());
  });
}

TEST(PlatformHelp, StartsTheViewerWithFileAndTopic) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), "a topic.htm"));
    EXPECT_EQ(viewer.Told(), "2\n" + viewer.folder.File("help file.chm") + "\na topic.htm\n");
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    EXPECT_EQ(viewer.Told(), "1\n" + viewer.folder.File("help file.chm") + "\n");
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), ""));
    EXPECT_EQ(viewer.Told(), "2\n" + viewer.folder.File("help file.chm") + "\n\n");
  });
}

TEST(PlatformHelp, TopicIsNoCommandText) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    const std::string topic = "'; touch " + viewer.folder.File("hacked") + "; $(touch " + viewer.folder.File("hacked") + ") \"%s&";
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), topic));
    EXPECT_EQ(viewer.Told(), "2\n" + viewer.folder.File("help file.chm") + "\n" + topic + "\n");
    EXPECT_FALSE(viewer.folder.Exists("hacked"));
  });
}

TEST(PlatformHelp, DoesNotWaitForTheViewersEndAndLeavesNoChild) {
  ExpectInChild([] {
    const Viewer viewer;
    const std::string go = viewer.folder.MakeFifo("go");
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    const int descriptors = CountOpenDescriptors();
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    EXPECT_NE(viewer.Told(), "");  // it runs, and waits for us
    EXPECT_FALSE(HasChildren());
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    std::ofstream(go) << "go\n";
  });
}

TEST(PlatformHelp, AViewerNotFoundIsNotLookedForAgain) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable none(kVariable, nullptr);
    EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
  });
}

TEST(PlatformHelp, AViewerFoundIsNotLookedForAgain) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), "1"));
    EXPECT_NE(viewer.Told(), "");
    const EnvironmentVariable none(kVariable, nullptr);
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), "2"));
    EXPECT_NE(viewer.Told(), "");
  });
}

TEST(PlatformHelp, OnlyAnExecutableFileByItsAbsolutePathIsAViewer) {
  const Viewer viewer;
  const std::string plain = viewer.folder.Write("plain", "#!/bin/sh\n");
  std::filesystem::permissions(plain, std::filesystem::perms::owner_read);
  const std::string names[] = {
      "", "sh", "./viewer", viewer.folder.Path(), plain, viewer.folder.File("missing"), viewer.folder.MakeFifo("fifo")};
  for (const std::string& name : names) {
    ExpectInChild([&] {
      const EnvironmentVariable variable(kVariable, name.c_str());
      EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt)) << name;
    });
  }
}

TEST(PlatformHelp, AViewerThatDoesNotStartIsAFailure) {
  ExpectInChild([] {
    const Viewer viewer;
    const std::string bad = viewer.Write("bad", "#!/no/such/interpreter\n");
    const EnvironmentVariable variable(kVariable, bad.c_str());
    EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    EXPECT_FALSE(HasChildren());
  });
}

TEST(PlatformHelp, WithoutDescriptorsNothingStarts) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    EXPECT_TRUE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    EXPECT_NE(viewer.Told(), "");
    LimitDescriptors(0);
    EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt));
    EXPECT_FALSE(HasChildren());
    LimitDescriptors(1024);
  });
}

TEST(PlatformHelp, MissingFilesAndZeroBytesAreNotShown) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable variable(kVariable, viewer.Path().c_str());
    PlatformHelp& help = PlatformHelp::System();
    EXPECT_FALSE(help.Show("", std::nullopt));
    EXPECT_FALSE(help.Show(viewer.folder.InterfacePath(), std::nullopt));
    EXPECT_FALSE(help.Show(viewer.folder.InterfacePath() + "\\missing.chm", std::nullopt));
    EXPECT_FALSE(help.Show(viewer.Document() + std::string("\0.x", 3), std::nullopt));
    EXPECT_FALSE(help.Show(viewer.Document(), std::string("a\0b", 3)));
    EXPECT_FALSE(HasChildren());
  });
}

TEST(PlatformHelp, ThreadsAskAtOnce) {
  ExpectInChild([] {
    const Viewer viewer;
    const EnvironmentVariable none(kVariable, nullptr);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] { EXPECT_FALSE(PlatformHelp::System().Show(viewer.Document(), std::nullopt)); });
    }
    for (std::thread& thread : threads) thread.join();
  });
}

TEST(PlatformHelp, BeepWritesNothingWhereThereIsNoTerminal) {
  ChildProcess child([] {
    PlatformHelp::System().Beep();
    return 0;
  });
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(child.ErrorText(), "");
  EXPECT_EQ(child.OutputText(), "");
}

TEST(PlatformHelp, BeepRingsAtATerminal) {
  const PseudoTerminal terminal;
  ChildProcess child([&] {
    if (!terminal.BecomeErrors()) return 1;
    PlatformHelp::System().Beep();
    return 0;
  });
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(terminal.Read(1), "\a");
}

}  // namespace
