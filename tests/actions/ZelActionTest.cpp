#include "zelbase/actions/ZelAction.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <type_traits>

#include "tests/actions/ActionsTestHelp.h"
#include "zelbase/errors/NumberedTexts.h"

namespace {

ZelAction FullAction() {
  ZelAction action;
  action.SetID(4000000000u);
  action.SetCustom(true);
  action.SetName("name");
  action.SetActionGroup("group");
  action.SetDescription("description");
  action.SetToolTip("tool tip");
  action.SetMacro("macro");
  action.SetButtonGroup("button group");
  action.SetSmallBmp("small");
  action.SetLargeBmp("large");
  action.SetSurveyTypes("types");
  action.SetSectionName("section");
  action.SetButton(true);
  return action;
}

TEST(ZelAction, BeginsInTheBaseGroupAndOtherwiseEmpty) {
  const ZelAction action;
  EXPECT_EQ(FieldsOf(action), "0||BaseAction||||||||");
}

TEST(ZelAction, EachFieldIsKeptByItself) {
  EXPECT_EQ(FieldsOf(FullAction()),
            "4000000000 custom button|name|group|description|tool tip|macro|button group|small|large|types|section");
  ZelAction action = FullAction();
  action.SetCustom(false);
  action.SetButton(false);
  action.SetName("");
  EXPECT_EQ(FieldsOf(action), "4000000000||group|description|tool tip|macro|button group|small|large|types|section");
}

TEST(ZelAction, CopiesHaveAllFieldsForThemselves) {
  ZelAction source = FullAction();
  const std::string fields = FieldsOf(source);
  const ZelAction copy(source);
  ZelAction assigned;
  assigned = source;
  source.SetName("another");
  EXPECT_EQ(FieldsOf(copy), fields);
  EXPECT_EQ(FieldsOf(assigned), fields);
}

TEST(ZelAction, GettersAreConstantAndGiveTextsByValue) {
  static_assert(std::is_same_v<decltype(&ZelAction::GetID), unsigned int (ZelAction::*)() const>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetCustom), bool (ZelAction::*)() const>);
  static_assert(std::is_same_v<decltype(&ZelAction::IsButton), bool (ZelAction::*)() const>);
  using Text = std::string (ZelAction::*)() const;
  static_assert(std::is_same_v<decltype(&ZelAction::GetName), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetActionGroup), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetDescription), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetToolTip), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetMacro), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetButtonGroup), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetSmallBmp), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetLargeBmp), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetSurveyTypes), Text>);
  static_assert(std::is_same_v<decltype(&ZelAction::GetSectionName), Text>);
}

TEST(ZelAction, TheVirtualOperationsStandInTheirOrderAndNoneIsConstant) {
  static_assert(std::has_virtual_destructor_v<ZelAction>);
  using Ask = bool (ZelAction::*)();
  using WithFile = bool (ZelAction::*)(FileObject&);
  EXPECT_EQ(Slot(static_cast<std::string (ZelAction::*)()>(&ZelAction::GroupName)), 1u);
  EXPECT_EQ(Slot(static_cast<WithFile>(&ZelAction::Load)), 2u);
  EXPECT_EQ(Slot(static_cast<WithFile>(&ZelAction::Save)), 3u);
  EXPECT_EQ(Slot(static_cast<Ask>(&ZelAction::Configure)), 4u);
  EXPECT_EQ(Slot(static_cast<Ask>(&ZelAction::Validate)), 5u);
  EXPECT_EQ(Slot(static_cast<Ask>(&ZelAction::Execute)), 6u);
  EXPECT_EQ(Slot(static_cast<void (ZelAction::*)()>(&ZelAction::SetName)), 7u);
  EXPECT_EQ(Slot(static_cast<Ask>(&ZelAction::CanSelect)), 8u);
  EXPECT_EQ(Slot(static_cast<Ask>(&ZelAction::CanConfigure)), 9u);
}

TEST(ZelAction, TheBaseDoesNothingAndExecutesFalse) {
  ZelAction action = FullAction();
  const std::string fields = FieldsOf(action);
  EXPECT_TRUE(action.Configure());
  EXPECT_TRUE(action.Validate());
  EXPECT_FALSE(action.Execute());
  EXPECT_FALSE(action.CanSelect());
  EXPECT_FALSE(action.CanConfigure());
  action.SetName();
  EXPECT_EQ(FieldsOf(action), fields);
}

// Lays other texts over the numbered ones for a scope.
class Texts : public NumberedTextTable {
 public:
  bool Get(int number, std::string& text) const override {
    text = "text " + std::to_string(number);
    return true;
  }
};

TEST(ZelAction, TheGroupNameIsANumberedTextOfTheLanguage) {
  ZelAction action;
  EXPECT_EQ(action.GroupName(), "Base action");
  const auto former = InstallNumberedTexts(std::make_shared<Texts>());
  EXPECT_EQ(action.GroupName(), "text 12044");
  InstallNumberedTexts(former);
  EXPECT_EQ(action.GroupName(), "Base action");
}

// --- Load -------------------------------------------------------------------------------------------------------------------

TEST(ZelActionLoad, ReadsItsFiveFieldsAndLeavesTheOthers) {
  FileObject file;
  Fill(file, {{"section",
               {{"Group", "G"},
                {"SurveyTypes", "S"},
                {"Custom", "0"},
                {"Description", "D"},
                {"ToolTip", "T"},
                {"Name", "no"},
                {"Macro", "no"},
                {"ButtonGroup", "no"},
                {"Button", "0"},
                {"ID", "1"}}}});
  ZelAction action = FullAction();
  EXPECT_TRUE(action.Load(file));
  EXPECT_EQ(FieldsOf(action), "4000000000 button|section|G|D|T|macro|button group|small|large|S|section");
}

TEST(ZelActionLoad, TakesTheNameFromTheSectionNameEvenWithoutSuchASection) {
  FileObject file;
  ZelAction action = FullAction();
  EXPECT_TRUE(action.Load(file)) << "true, whatever was found";
  EXPECT_EQ(FieldsOf(action), "4000000000 custom button|section|group|description|tool tip|macro|button group|small|large|types|section");
}

TEST(ZelActionLoad, WhatTheSectionDoesNotHaveStays) {
  for (const char* const missing : {"Group", "SurveyTypes", "Custom", "Description", "ToolTip"}) {
    Sections sections = {{"section", {{"Group", "G"}, {"SurveyTypes", "S"}, {"Custom", "0"}, {"Description", "D"}, {"ToolTip", "T"}}}};
    sections["section"].erase(missing);
    FileObject file;
    Fill(file, sections);
    ZelAction action = FullAction();
    EXPECT_TRUE(action.Load(file));
    const std::string what = missing;
    EXPECT_EQ(action.GetActionGroup(), what == "Group" ? "group" : "G");
    EXPECT_EQ(action.GetSurveyTypes(), what == "SurveyTypes" ? "types" : "S");
    EXPECT_EQ(action.GetCustom(), what == "Custom");
    EXPECT_EQ(action.GetDescription(), what == "Description" ? "description" : "D");
    EXPECT_EQ(action.GetToolTip(), what == "ToolTip" ? "tool tip" : "T");
  }
}

TEST(ZelActionLoad, AnEmptyValueIsAValue) {
  FileObject file;
  Fill(file, {{"section", {{"Group", ""}, {"Description", ""}}}});
  ZelAction action = FullAction();
  action.Load(file);
  EXPECT_EQ(action.GetActionGroup(), "");
  EXPECT_EQ(action.GetDescription(), "");
  EXPECT_EQ(action.GetToolTip(), "tool tip");
}

TEST(ZelActionLoad, CustomIsAnyNumberButNoughtAndStaysWhereNoneStands) {
  struct Row {
    const char* text;
    bool before, after;
  };
  for (const Row& row : {Row{"1", false, true},
                         {"-3", false, true},
                         {"7 of 8", false, true},
                         {"0", true, false},
                         {"0x1", true, false},
                         {"0.9", true, false},
                         {"true", false, false},
                         {"true", true, true},
                         {"", true, true},
                         {"", false, false},
                         {"x1", true, true}}) {
    FileObject file;
    Fill(file, {{"a", {{"Custom", row.text}}}});
    ZelAction action;
    action.SetSectionName("a");
    action.SetCustom(row.before);
    EXPECT_TRUE(action.Load(file));
    EXPECT_EQ(action.GetCustom(), row.after) << row.text << " over " << row.before;
  }
}

TEST(ZelActionLoad, AnEmptySectionNameReadsTheSectionOfNoName) {
  FileObject file;
  Fill(file, {{"", {{"Description", "of no name"}}}});
  ZelAction action;
  action.SetName("before");
  EXPECT_TRUE(action.Load(file));
  EXPECT_EQ(action.GetName(), "");
  EXPECT_EQ(action.GetDescription(), "of no name");
}

TEST(ZelActionLoad, WhatTheFileThrowsPassesAndWhatWasReadStays) {
  FileObject file;
  Fill(file, {{"section", {{"Group", "G"}, {"SurveyTypes", "S"}, {"Description", "D"}, {"ToolTip", "T"}}}});
  file.ThrowExceptions(true);
  ZelAction action = FullAction();
  EXPECT_THROW(action.Load(file), std::string) << "Custom is missing";
  EXPECT_EQ(FieldsOf(action), "4000000000 custom button|section|G|description|tool tip|macro|button group|small|large|S|section");
}

// --- Save -------------------------------------------------------------------------------------------------------------------

TEST(ZelActionSave, WritesUnderTheNameAndOverwritesTheSectionName) {
  FileObject file;
  ZelAction action = FullAction();
  EXPECT_TRUE(action.Save(file));
  EXPECT_EQ(
      ContentOf(file),
      (Sections{
          {"name",
           {{"Group", "group"}, {"SurveyTypes", "types"}, {"Custom", "1"}, {"Description", "description"}, {"ToolTip", "tool tip"}}}}));
  EXPECT_EQ(action.GetSectionName(), "name");
  EXPECT_EQ(action.GetName(), "name");
}

TEST(ZelActionSave, WritesOverWhatIsThereAndLeavesOtherItems) {
  FileObject file;
  Fill(file, {{"name", {{"Group", "old"}, {"Colour", "7"}}}, {"section", {{"Group", "other"}}}});
  ZelAction action;
  action.SetName("name");
  EXPECT_TRUE(action.Save(file));
  const std::map<std::string, std::string> items = {{"Group", "BaseAction"}, {"SurveyTypes", ""}, {"Custom", "0"},
                                                    {"Description", ""},     {"ToolTip", ""},     {"Colour", "7"}};
  EXPECT_EQ(ContentOf(file), (Sections{{"name", items}, {"section", {{"Group", "other"}}}}));
}

TEST(ZelActionSave, AnEmptyNameWritesTheSectionOfNoName) {
  FileObject file;
  ZelAction action;
  action.SetSectionName("section");
  EXPECT_TRUE(action.Save(file));
  EXPECT_TRUE(file.HasSection(""));
  EXPECT_FALSE(file.HasSection("section"));
  EXPECT_EQ(file.GetNumItems(""), 5);
}

// Writes down what is set, and refuses it all.
class RefusingFile : public FileObject {
 public:
  bool SetItem(const std::string& section, const std::string& key, const std::string& value, bool createSection) override {
    calls += section + "." + key + "=" + value + (createSection ? " " : "! ");
    return false;
  }
  using FileObject::SetItem;
  std::string calls;
};

TEST(ZelActionSave, WritesInItsOrderMakingTheSectionAndIsTrueEvenWhenAllWritesFail) {
  RefusingFile file;
  ZelAction action = FullAction();
  EXPECT_TRUE(action.Save(file));
  EXPECT_EQ(file.calls, "name.Group=group name.SurveyTypes=types name.Custom=1 name.Description=description name.ToolTip=tool tip ");
}

TEST(ZelActionSave, LoadAfterItGivesTheFiveFieldsBack) {
  std::mt19937 random(11);
  const auto text = [&random] {
    std::string result;
    for (auto i = random() % 20; i > 0; --i) result += static_cast<char>(random() % 256);
    return result;
  };
  for (int round = 0; round < 300; ++round) {
    ZelAction action;
    action.SetName(text());
    action.SetActionGroup(text());
    action.SetDescription(text());
    action.SetToolTip(text());
    action.SetSurveyTypes(text());
    action.SetCustom(random() % 2 == 0);
    FileObject file;
    EXPECT_TRUE(action.Save(file));
    ZelAction read;
    read.SetSectionName(action.GetName());
    EXPECT_TRUE(read.Load(file));
    EXPECT_EQ(FieldsOf(read), FieldsOf(action));
  }
}

// --- A derived class --------------------------------------------------------------------------------------------------------

// Overrides everything.
class Everything : public ZelAction {
 public:
  explicit Everything(std::string& calls) : m_calls(calls) {}
  ~Everything() override { m_calls += "gone "; }
  std::string GroupName() override { return "Everything"; }
  bool Load(FileObject&) override { return Note("Load"); }
  bool Save(FileObject&) override { return Note("Save"); }
  bool Configure() override { return Note("Configure"); }
  bool Validate() override { return Note("Validate"); }
  bool Execute() override { return !Note("Execute"); }
  void SetName() override { SetName("a name of its own"); }
  using ZelAction::SetName;
  bool CanSelect() override { return !Note("CanSelect"); }
  bool CanConfigure() override { return !Note("CanConfigure"); }

 private:
  bool Note(const char* what) {
    m_calls += std::string(what) + " ";
    return false;
  }
  std::string& m_calls;
};

TEST(ZelAction, EveryVirtualOperationReachesADerivedClass) {
  std::string calls;
  {
    const std::unique_ptr<ZelAction> action = std::make_unique<Everything>(calls);
    FileObject file;
    EXPECT_EQ(action->GroupName(), "Everything");
    EXPECT_FALSE(action->Load(file));
    EXPECT_FALSE(action->Save(file));
    EXPECT_FALSE(action->Configure());
    EXPECT_FALSE(action->Validate());
    EXPECT_TRUE(action->Execute());
    EXPECT_TRUE(action->CanSelect());
    EXPECT_TRUE(action->CanConfigure());
    action->SetName();
    EXPECT_EQ(action->GetName(), "a name of its own");
  }
  EXPECT_EQ(calls, "Load Save Configure Validate Execute CanSelect CanConfigure gone ");
}

}  // namespace
