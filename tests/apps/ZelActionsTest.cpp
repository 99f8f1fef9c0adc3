// zel actions: files of actions shown, one action run, the custom ones saved and read back.

#include "tests/apps/ZelFixture.h"

class ZelActions : public Zel {
 protected:
  void MakeCommonFolder() {
    m_folder.MakeFolder("VESOK");
    m_folder.MakeFolder("VESOK/ZELCORE");
  }
  ProgramResult Save(const std::vector<std::string>& files, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"--common", m_folder.Path(), "actions", "--save"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Run(arguments);
  }
  static constexpr char kSaved[] = "VESOK/ZELCORE/CustomActions[zel].ini";
};

TEST_F(ZelActions, ShowsEachActionWithItsFieldsAndWhatItDoes) {
  const std::string file = Write("a.ini",
                                 "[Tell]\nGroup = PrintText\nDescription = Says it\nToolTip = Tip\nSurveyTypes = A, B\nText = \xB0\n"
                                 "[Base]\nGroup = BaseAction\nCustom = 1\n"
                                 "[Run]\nGroup = RunProgram\nProgram = date\nArguments = -u \"+%H %M\"\n");
  const ProgramResult result = Run({"actions", file});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(OneBlank(result.output),
            file +
                ": 3 actions, 1 custom\n\n"
                "Base\n Group BaseAction (Base action)\n Custom yes, made by the user\n Selectable no\n"
                " When run fails: it is a base action, which does nothing\n\n"
                "Run\n Group RunProgram (Run program)\n Custom no\n Selectable yes\n When run runs \"date\" \"-u\" \"+%H %M\"\n\n"
                "Tell\n Group PrintText (Print text)\n Description Says it\n Tool tip Tip\n Survey types A, B\n Custom no\n"
                " Selectable yes\n When run prints \"°\"\n\n"
                "Groups, and what their creators make\n BaseAction Base action 1 action\n CompositeAction Composite Action 0 actions\n"
                " PrintText Print text 1 action\n RunProgram Run program 1 action\n");
}

TEST_F(ZelActions, ShowsTheMembersOfCompositesInOrder) {
  const ProgramResult result = Run({"actions", Sample("actions/DefaultActions.ini")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "6 actions, 2 custom\n")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output),
                    "When run 2 actions in order\n"
                    " 1 StartOfLine: 3 actions in order\n 1.1 TellLine: prints \"Line begins: keep course and speed\"\n"
                    " 1.2 TellTime: runs \"date\" \"-u\" \"+%H:%M UTC\"\n 1.3 MarkEvent: prints \"Event marked\"\n 2 MyReminder: prints"))
      << result.output;
}

TEST_F(ZelActions, MarksWhatCannotBeMadeAndWhatIsNotValid) {
  const ProgramResult result = Run({"actions", Sample("actions/faulty.ini")});
  EXPECT_EQ(result.exitCode, 1);
  const std::string output = OneBlank(result.output);
  EXPECT_TRUE(Holds(output, "PingSonar\n Group SonarControl: UNKNOWN, nothing can make this action\n Description No creator")) << output;
  EXPECT_TRUE(Holds(output, "NoGroup\n Group NONE")) << output;
  EXPECT_TRUE(Holds(output, " SonarControl UNKNOWN: no creator 1 action\n")) << output;
  EXPECT_TRUE(Holds(output, "Prints\n Group PrintText (Print text)\n Custom no\n Selectable yes\n Unused keys Colour\n")) << output;
  EXPECT_TRUE(Holds(output, " But it is not valid, and so is not run\n")) << output;
  EXPECT_TRUE(Holds(result.errors, "zel: [PingSonar]: its group \"SonarControl\" is unknown, so nothing can make it\n")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "zel: [NoGroup]: names no group")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "zel: [Missing]: its member \"Nowhere\" cannot be made\n")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "zel: [About]: goes in a circle: \"Round\" contains itself\n")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "zel: [Round]: goes in a circle: \"About\" contains itself\n")) << result.errors;
}

TEST_F(ZelActions, AnIdThatSeveralFilesHaveIsTheFirstOnes) {
  const std::string first = Write("a.ini", "[A]\nGroup = PrintText\nText = first\n");
  const std::string second = Write("b.ini", "[A]\nGroup = PrintText\nText = second\n[B]\nGroup = BaseAction\n");
  const ProgramResult result = Run({"actions", first, second});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, first + ", " + second + ": 2 actions, 0 custom\n"));
  EXPECT_TRUE(Holds(result.output, "prints \"first\""));
  EXPECT_TRUE(Holds(OneBlank(result.output), "Also in " + second + ", where it does not count\n")) << result.output;
  EXPECT_EQ(Run({"actions", second, first, "--run", "A"}).output, "second\nA: done\n");
  EXPECT_EQ(Run({"actions", first, first, "--run", "A"}).output, "first\nA: done\n") << "a file of which nothing counts";
}

TEST_F(ZelActions, AFileThatDoesNotOpenIsToldAndAnEmptyOneHasNoActions) {
  const ProgramResult result = Run({"actions", m_folder.File("none.ini")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "cannot open")) << result.errors;
  EXPECT_EQ(Run({"actions"}).exitCode, 2);
  const ProgramResult empty = Run({"actions", Write("empty.ini", "")});
  EXPECT_EQ(empty.exitCode, 0);
  EXPECT_TRUE(Holds(empty.output, ": 0 actions, 0 custom\n"));
}

TEST_F(ZelActions, AFileThatLosesTextInReadingIsTold) {
  const std::string hint = "\" does not read as it looks; \"zel settings check\" on it tells where\n";
  // Behind a byte order mark a head is none, and "//" begins a comment.
  for (const char* const text : {"\xEF\xBB\xBF[a]\nGroup = PrintText\n", "[a]\nGroup = PrintText\nText = http://example.org\n",
                                 "[a]\nGroup = PrintText\nText\n", "Group = PrintText\n"}) {
    const std::string file = Write("lossy.ini", text);
    const ProgramResult result = Run({"actions", file});
    EXPECT_EQ(result.exitCode, 0) << text;
    EXPECT_EQ(result.errors, "zel: \"" + file + hint) << text;
  }
  for (const char* const text : {"", "; a remark\n[a]\nGroup = PrintText\nText = \xC3\x89t\xC3\xA9\n"}) {
    EXPECT_EQ(Run({"actions", Write("whole.ini", text)}).errors, "") << text;
  }
}

// ---- --run ----

TEST_F(ZelActions, RunValidatesAllAndThenRunsInOrder) {
  const std::string file = Write("a.ini",
                                 "[One]\nGroup = PrintText\nText = one\n[Two]\nGroup = RunProgram\nProgram = /bin/echo\n"
                                 "Arguments = two \"and  more\"\n[Both]\nGroup = CompositeAction\nActions = One, Two,One\n");
  const ProgramResult result = Run({"actions", file, "--run", "Both"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, "one\ntwo and  more\none\nBoth: done\n");
}

TEST_F(ZelActions, AProgramThatIsMissingKeepsAllFromRunning) {
  const std::string file = Write("a.ini",
                                 "[One]\nGroup = PrintText\nText = one\n[Two]\nGroup = RunProgram\nProgram = no-such-program\n"
                                 "[None]\nGroup = RunProgram\n[Both]\nGroup = CompositeAction\nActions = One, Two\n");
  const ProgramResult result = Run({"actions", file, "--run", "Both"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "zel: [Two]: there is no program \"no-such-program\"\nzel: Both is not valid, and was not run\n");
  EXPECT_EQ(Run({"actions", file, "--run", "None"}).exitCode, 1);
}

TEST_F(ZelActions, AProgramThatFailsStopsTheRun) {
  const std::string file = Write("a.ini",
                                 "[One]\nGroup = PrintText\nText = one\n[Two]\nGroup = RunProgram\nProgram = /bin/sh\n"
                                 "Arguments = -c \"exit 3\"\n[Three]\nGroup = RunProgram\nProgram = sh\nArguments = -c \"kill -9 $$\"\n"
                                 "[Both]\nGroup = CompositeAction\nActions = One, Two, One\n");
  const ProgramResult result = Run({"actions", file, "--run", "Both"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "one\n");
  EXPECT_EQ(result.errors, "zel: [Two]: \"/bin/sh\" ended with code 3\nzel: Both failed\n");
  EXPECT_TRUE(Holds(Run({"actions", file, "--run", "Three"}).errors, "could not be run to its end"));
}

TEST_F(ZelActions, WhatCannotBeRunIsTold) {
  const std::string faulty = Sample("actions/faulty.ini");
  EXPECT_TRUE(Holds(Run({"actions", faulty, "--run", "Nobody"}).errors, "there is no action \"Nobody\""));
  EXPECT_TRUE(Holds(Run({"actions", faulty, "--run", "PrintText"}).errors, "there is no action \"PrintText\"")) << "a group is none";
  EXPECT_TRUE(Holds(Run({"actions", faulty, "--run", "PingSonar"}).errors, "PingSonar is not valid, and was not run"));
  EXPECT_TRUE(Holds(Run({"actions", faulty, "--run", "Round"}).errors, "Round is not valid, and was not run"));
  EXPECT_EQ(Run({"actions", faulty, "--run", "Prints"}).exitCode, 0);
  const std::string file = Write("a.ini",
                                 "[\xC9tape]\nGroup = BaseAction\n[Prints]\nGroup = PrintText\nText = \xB0\n[Bare]\n"
                                 "Group = CompositeAction\nActions = PrintText\n");
  EXPECT_EQ(Run({"actions", file, "--run", "Étape"}).errors, "zel: Étape failed\n");
  EXPECT_EQ(Run({"actions", file, "--run", "Prints"}).output, "°\nPrints: done\n");
  EXPECT_TRUE(Holds(Run({"actions", file, "--run", "Bare"}).errors, "its member \"PrintText\" cannot be made")) << "a group is no member";
  EXPECT_EQ(Run({"actions", file, "--run", "Prints", "--save"}).exitCode, 2);
}

// Deep and wide nests come to an end: the composites are not valid, and nothing is run.
TEST_F(ZelActions, TheSectionOfNoNameIsAnActionLikeAnyOther) {
  const std::string nameless = Write("nameless.ini", "[]\nGroup = PrintText\nText = said\n");
  ProgramResult result = Run({"actions", nameless});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "1 action, 0 custom\n\n\"\"\n  Group ")) << result.output;
  result = Run({"actions", nameless, "--run", ""});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, "said\n\"\": done\n");
  result = Run({"actions", Write("named.ini", "[a]\nGroup = PrintText\n"), "--run", ""});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "zel: there is no action \"\"\n");
}

TEST_F(ZelActions, NestsBeyondAllUseAreFaults) {
  std::string deep, wide;
  for (int i = 0; i < 2000; ++i) {
    const std::string next = "C" + std::to_string(i + 1);
    deep += "[C" + std::to_string(i) + "]\nGroup = CompositeAction\nActions = " + next + "\n";
    if (i < 30) wide += "[C" + std::to_string(i) + "]\nGroup = CompositeAction\nActions = " + next + ", " + next + ", " + next + "\n";
  }
  const ProgramResult deepest = Run({"actions", Write("deep.ini", deep), "--run", "C0"});
  EXPECT_EQ(deepest.exitCode, 1);
  EXPECT_TRUE(Holds(deepest.errors, "nested more than 32 deep")) << deepest.errors;
  const ProgramResult widest = Run({"actions", Write("wide.ini", wide + "[C30]\nGroup = PrintText\n"), "--run", "C0"});
  EXPECT_EQ(widest.exitCode, 1);
  EXPECT_EQ(widest.output, "");
  EXPECT_TRUE(Holds(widest.errors, "more than 10000 members in all")) << widest.errors;
}

// ---- --save ----

TEST_F(ZelActions, SaveWritesTheCustomActionsAndShowsThemReadBack) {
  MakeCommonFolder();
  const ProgramResult result = Save({Sample("actions/DefaultActions.ini")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "2 custom actions saved in " + m_folder.File(kSaved) + " and read back:\n")) << result.output;
  EXPECT_TRUE(Holds(OneBlank(result.output), " 1.1 TellLine: prints")) << "members of the other file count";
  EXPECT_FALSE(Holds(result.output, "\nMarkEvent\n")) << "not custom";
  const std::string saved = m_folder.Read(kSaved);
  EXPECT_TRUE(Holds(saved, "[MyStart]\r\n")) << saved;
  EXPECT_TRUE(Holds(saved, "Actions = StartOfLine, MyReminder\r\n")) << saved;
  EXPECT_TRUE(Holds(saved, "Text = Check the draught: 2.75 m at the last survey\r\n")) << saved;
  EXPECT_FALSE(Holds(saved, "[MarkEvent]"));
}

TEST_F(ZelActions, SaveKeepsWhatTheUserHadUnlessAFileHasItAnew) {
  MakeCommonFolder();
  Write(kSaved, "[Mine]\nGroup = PrintText\nCustom = 1\nText = mine\n[Both]\nGroup = PrintText\nCustom = 1\nText = old\n");
  const std::string file = Write("a.ini", "[Both]\nGroup = PrintText\nCustom = 1\nText = new\n");
  const ProgramResult result = Save({file});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  const std::string saved = m_folder.Read(kSaved);
  EXPECT_TRUE(Holds(saved, "Text = mine\r\n") && Holds(saved, "Text = new\r\n") && !Holds(saved, "Text = old")) << saved;
}

TEST_F(ZelActions, SaveRefusesWhatItWouldLose) {
  MakeCommonFolder();
  const std::string before = "[Mine]\nGroup = SonarControl\nCustom = 1\n";
  Write(kSaved, before);
  const std::string file = Write("a.ini", "[Other]\nGroup = PrintText\nCustom = 1\nText = a\nColour = red\n");
  const ProgramResult result = Save({file});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "[Mine]: its group \"SonarControl\" is unknown")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "[Other]: its group does not keep Colour")) << result.errors;
  EXPECT_TRUE(Holds(result.errors, "nothing was saved")) << result.errors;
  EXPECT_EQ(m_folder.Read(kSaved), before);
}

TEST_F(ZelActions, EachApplicationHasAFileOfItsOwn) {
  MakeCommonFolder();
  const std::string file = Sample("actions/DefaultActions.ini");
  EXPECT_EQ(Save({file}, {"--application", "Control Center"}).exitCode, 0);
  EXPECT_TRUE(m_folder.Exists("VESOK/ZELCORE/CustomActions[Control Center].ini"));
  EXPECT_FALSE(m_folder.Exists(kSaved));
  EXPECT_EQ(Save({file}, {"--application", "../outside"}).exitCode, 2);
}

TEST_F(ZelActions, SaveWithoutTheSuitesFolderFailsAndMakesNone) {
  const ProgramResult result = Save({Sample("actions/DefaultActions.ini")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "there is no folder \"" + m_folder.File("VESOK/ZELCORE") + "\"")) << result.errors;
  EXPECT_FALSE(m_folder.Exists("VESOK"));
}

TEST_F(ZelActions, SaveWithoutCustomActionsLeavesAFileWithNone) {
  MakeCommonFolder();
  const ProgramResult result = Save({Write("a.ini", "[A]\nGroup = BaseAction\n")});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output, "0 custom actions saved in " + m_folder.File(kSaved) + "\n");
  EXPECT_TRUE(m_folder.Exists(kSaved));
  EXPECT_EQ(m_folder.Read(kSaved), "");
}
