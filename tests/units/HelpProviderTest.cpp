#include "zelbase/units/HelpProvider.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/InChild.h"
#include "tests/support/TemporaryFolder.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/platform/FixedModules.h"
#include "zelbase/platform/RecordingHelp.h"

// The table is read at the first use in a process: whatever touches HelpProvider::GetInstance() stands in a child.

class CDepthView : public CWnd {};

namespace {

constexpr const char* kTable =
    "[ZELCOREHelp]\r\nCDepthView = depth.htm\r\nCWnd = window.htm\r\ntwo words = a topic with blanks\r\nempty =\r\n"
    "[Other]\r\nelsewhere = wrong\r\n";

// A program with a help viewer that keeps what it was asked for. In force from its making to its end.
class Suite {
 public:
  explicit Suite(const std::optional<std::string>& table = kTable) {
    if (table) m_folder.Write("zelcorehelp.ini", *table);
    m_modules.SetProgramPath(m_folder.InterfacePath() + "\\survey.exe");
  }

  std::string HelpFile(const std::string& name) const { return m_folder.InterfacePath() + "\\html help\\" + name; }

  // The topic of the last request; "(none)" for the first page.
  std::string Topic() const { return help.requests.empty() ? "(nothing)" : help.requests.back().topic.value_or("(none)"); }

  FixedModules& Modules() { return m_modules; }

  RecordingHelp help;

 private:
  TemporaryFolder m_folder;
  FixedModules m_modules;
  PlatformOverride<PlatformModules> m_modulesInForce{m_modules};
  PlatformOverride<PlatformHelp> m_helpInForce{help};
};

int ErrorsReported() { return GlobalErrorList::Get().NumErrors(true); }

TEST(HelpProvider, IsOnePolymorphicObject) {
  static_assert(std::has_virtual_destructor_v<HelpProvider>);
  ExpectInChild([] {
    const Suite suite;
    EXPECT_EQ(&HelpProvider::GetInstance(), &HelpProvider::GetInstance());
    EXPECT_TRUE(suite.help.requests.empty());
  });
}

TEST(HelpProvider, ShowsTheTopicOfAKeyInTheDefaultFile) {
  ExpectInChild([] {
    const Suite suite;
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
    EXPECT_EQ(suite.help.requests, (std::vector<RecordingHelp::Request>{{suite.HelpFile("ZELCORE.chm"), "depth.htm"}}));
    EXPECT_EQ(suite.help.beeps, 0);
  });
}

TEST(HelpProvider, KeysAreTrimmed) {
  ExpectInChild([] {
    const Suite suite;
    HelpProvider::GetInstance().ShowHelpfile(" \t\r\n\v\fCDepthView \t\r\n\v\f");
    EXPECT_EQ(suite.Topic(), "depth.htm");
    HelpProvider::GetInstance().ShowHelpfile(" two words ");
    EXPECT_EQ(suite.Topic(), "a topic with blanks");
  });
}

TEST(HelpProvider, KeyWithoutATopicOpensTheFirstPage) {
  for (const char* const key : {"", " ", " \t ", "unknown", "cdepthview", "empty", "elsewhere", "CDepthView.", "%s%n"}) {
    ExpectInChild([key] {
      const Suite suite;
      EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(key));
      EXPECT_EQ(suite.help.requests, (std::vector<RecordingHelp::Request>{{suite.HelpFile("ZELCORE.chm"), std::nullopt}})) << key;
    });
  }
}

TEST(HelpProvider, KeyOfBlanksOpensTheFirstPageWhateverTheTableHas) {
  ExpectInChild([] {
    const Suite suite("[ZELCOREHelp]\r\n= wrong.htm\r\n  = wrong.htm\r\n");
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(" \t "));
    EXPECT_EQ(suite.Topic(), "(none)");
  });
}

TEST(HelpProvider, MissingTableIsNotReportedAndEveryKeyOpensTheFirstPage) {
  ExpectInChild([] {
    const Suite suite(std::nullopt);
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
    EXPECT_EQ(suite.Topic(), "(none)");
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

TEST(HelpProvider, TableIsReadOnce) {
  ExpectInChild([] {
    const Suite suite;
    FaultInjectionFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    HelpProvider::GetInstance().ShowHelpfile("CDepthView");
    HelpProvider::GetInstance().ShowHelpfile("CWnd");
    EXPECT_EQ(files.Count(FileOperation::Open), 1u);
    EXPECT_EQ(files.OpenFiles(), 0);
  });
}

TEST(HelpProvider, WhateverFailsWhileItIsMadeIsSilent) {
  constexpr int kMore = 12;  // than the operations there are, the last runs being clean
  for (unsigned long long n = 1; n <= kMore; ++n) {
    ExpectInChild([n] {
      const Suite suite;
      FaultInjectionFiles files;
      files.FailAt(n);
      const PlatformOverride<PlatformFiles> guard(files);
      EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
      EXPECT_TRUE(suite.Topic() == "depth.htm" || (suite.Topic() == "(none)" && files.FaultsGiven() == 1)) << n;
      EXPECT_EQ(ErrorsReported(), 0) << n;
      if (n == kMore) {
        EXPECT_EQ(files.FaultsGiven(), 0u);
      }
    });
  }
}

TEST(HelpProvider, TablesOfAnyContentAreRead) {
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  for (const std::string& content :
       {std::string(), everyByte, std::string(1 << 20, '['), "[ZELCOREHelp]\n" + everyByte, "[ZELCOREHelp\n" + std::string(1 << 20, '=')}) {
    ExpectInChild([&content] {
      const Suite suite(content);
      EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
      EXPECT_EQ(suite.Topic(), "(none)");
    });
  }
}

TEST(HelpProvider, TopicsAreTrimmedAndOtherwisePassedOnAsTheyAre) {
  ExpectInChild([] {
    const std::string topic = "a;b|$(c) \"%s\" " + std::string(10000, 't');
    const Suite suite("[ZELCOREHelp]\nkey = \t " + topic + " \t \n");
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("key"));
    EXPECT_EQ(suite.Topic(), topic);
  });
}

// --- Windows --------------------------------------------------------------------------------------------------------

TEST(HelpProvider, WindowIsLookedUpByTheNameOfItsClass) {
  ExpectInChild([] {
    const Suite suite;
    CDepthView view;
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(&view));
    EXPECT_EQ(suite.Topic(), "depth.htm");
    CWnd window;
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(&window));
    EXPECT_EQ(suite.Topic(), "window.htm");
  });
}

struct Named : CWnd {
  explicit Named(std::string text) : name(std::move(text)) {}
  std::string RuntimeClassName() const override { return name; }
  std::string name;
};

TEST(HelpProvider, NameOfAWindowBeginsAtItsFirstBlank) {
  const struct {
    const char* name;
    const char* topic;
  } rows[] = {{"class CDepthView", "depth.htm"},
              {"class   CDepthView  ", "depth.htm"},
              {"CDepthView", "depth.htm"},  // without a blank, used whole
              {"class two words", "a topic with blanks"},
              {"CDepthView class", "(none)"},
              {" CDepthView", "depth.htm"},
              {"class\tCDepthView", "(none)"},  // a tab is no blank
              {"class ", "(none)"},
              {"", "(none)"}};
  for (const auto& row : rows) {
    ExpectInChild([&row] {
      const Suite suite;
      Named window(row.name);
      EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(&window));
      EXPECT_EQ(suite.Topic(), row.topic) << row.name;
    });
  }
}

TEST(HelpProvider, NullWindowOpensTheFirstPage) {
  ExpectInChild([] {
    const Suite suite;
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(static_cast<CWnd*>(nullptr)));
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(nullptr));
    EXPECT_EQ(suite.help.requests.size(), 2u);
    EXPECT_EQ(suite.Topic(), "(none)");
  });
}

// --- The file -------------------------------------------------------------------------------------------------------

TEST(HelpProvider, SetHelpFilenameChangesTheTargetOfTheNextCallAndOpensNothing) {
  ExpectInChild([] {
    const Suite suite;
    HelpProvider& provider = HelpProvider::GetInstance();
    FaultInjectionFiles files;
    const PlatformOverride<PlatformFiles> guard(files);
    provider.SetHelpFilename("Dredging.chm");
    EXPECT_TRUE(suite.help.requests.empty());
    EXPECT_EQ(files.Count(), 0u);
    provider.ShowHelpfile("CDepthView");
    provider.SetHelpFilename("");
    provider.ShowHelpfile("unknown");
    EXPECT_EQ(suite.help.requests,
              (std::vector<RecordingHelp::Request>{{suite.HelpFile("Dredging.chm"), "depth.htm"}, {suite.HelpFile(""), std::nullopt}}));
  });
}

TEST(HelpProvider, ProgramWithoutAFolderHasItsHelpInTheCurrentOne) {
  ExpectInChild([] {
    Suite suite;
    suite.Modules().SetProgramPath("survey.exe");
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
    EXPECT_EQ(suite.help.requests, (std::vector<RecordingHelp::Request>{{"html help\\ZELCORE.chm", std::nullopt}}));
  });
}

TEST(HelpProvider, WhatCannotBeShownIsOneBeepAndFalse) {
  ExpectInChild([] {
    Suite suite;
    suite.help.answer = false;
    EXPECT_FALSE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
    EXPECT_EQ(suite.help.beeps, 1);
    EXPECT_FALSE(HelpProvider::GetInstance().ShowHelpfile("unknown"));
    EXPECT_EQ(suite.help.beeps, 2);
    suite.help.answer = true;
    EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("unknown"));
    EXPECT_EQ(suite.help.beeps, 2);
    EXPECT_EQ(ErrorsReported(), 0);
  });
}

// --- Threads and the end --------------------------------------------------------------------------------------------

class QuietHelp : public PlatformHelp {
 public:
  bool Show(const std::string& file, const std::optional<std::string>& topic) override {
    return topic == "depth.htm" && (file.ends_with("\\a.chm") || file.ends_with("\\ZELCORE.chm"));
  }
  void Beep() override { ADD_FAILURE() << "not shown"; }
};

TEST(HelpProvider, ThreadsAskAtOnceFromTheFirstUseOn) {
  ExpectInChild([] {
    const Suite suite;
    QuietHelp help;
    const PlatformOverride<PlatformHelp> guard(help);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([i] {
        CDepthView view;
        for (int round = 0; round < 200; ++round) {
          if (i == 0) HelpProvider::GetInstance().SetHelpFilename(round % 2 == 0 ? "a.chm" : "ZELCORE.chm");
          EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile("CDepthView"));
          EXPECT_TRUE(HelpProvider::GetInstance().ShowHelpfile(&view));
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
  });
}

}  // namespace
