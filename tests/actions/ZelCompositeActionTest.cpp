#include "zelbase/actions/ZelCompositeAction.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/actions/ActionsTestHelp.h"
#include "zelbase/errors/NumberedTexts.h"

namespace {

// A composite of scripted actions "a", "b", "c", ... that write into `calls`.
struct Composite {
  explicit Composite(int count) {
    for (int i = 0; i < count; ++i) {
      parts.push_back(new ScriptedAction(std::string(1, static_cast<char>('a' + i)), &calls));
      composite.AddAction(parts.back());
    }
  }

  std::string calls;
  std::vector<ScriptedAction*> parts;
  ZelCompositeAction composite;
};

// Adds "a", a composite of "b" and "c", and "d".
void AddNested(ZelCompositeAction& outer, std::string& calls) {
  auto* const inner = new ZelCompositeAction;
  outer.AddAction(new ScriptedAction("a", &calls));
  outer.AddAction(inner);
  outer.AddAction(new ScriptedAction("d", &calls));
  inner->AddAction(new ScriptedAction("b", &calls));
  inner->AddAction(new ScriptedAction("c", &calls));
}

TEST(ZelCompositeAction, BeginsInItsGroupWithoutSubActions) {
  ZelCompositeAction composite;
  EXPECT_EQ(FieldsOf(composite), "0||CompositeAction||||||||");
  EXPECT_EQ(composite.GetCount(), 0);
  EXPECT_EQ(composite.GetAction(0), nullptr);
}

TEST(ZelCompositeAction, AnEmptyOneExecutesTrueAndSelectsFalse) {
  ZelCompositeAction composite;
  EXPECT_TRUE(composite.Configure());
  EXPECT_TRUE(composite.Validate());
  EXPECT_TRUE(composite.Execute());
  EXPECT_FALSE(composite.CanSelect());
  EXPECT_FALSE(composite.CanConfigure());
}

TEST(ZelCompositeAction, TheGroupNameHasACapitalThatTheBasesHasNot) {
  ZelCompositeAction composite;
  EXPECT_EQ(composite.GroupName(), "Composite Action");
  EXPECT_EQ(composite.ZelAction::GroupName(), "Base action");
  EXPECT_EQ(composite.GroupName(), NumberedText(12045));
}

TEST(ZelCompositeAction, ItsOwnOperationsStandBehindTheBasesAndNoneIsConstant) {
  EXPECT_EQ(Slot(static_cast<int (ZelCompositeAction::*)()>(&ZelCompositeAction::GetCount)), 10u);
  EXPECT_EQ(Slot(static_cast<ZelAction* (ZelCompositeAction::*)(int)>(&ZelCompositeAction::GetAction)), 11u);
  EXPECT_EQ(Slot(static_cast<void (ZelCompositeAction::*)(ZelAction*)>(&ZelCompositeAction::AddAction)), 12u);
  EXPECT_EQ(Slot(static_cast<void (ZelCompositeAction::*)()>(&ZelCompositeAction::DeleteAllActions)), 13u);
  EXPECT_EQ(Slot(static_cast<bool (ZelCompositeAction::*)()>(&ZelCompositeAction::Execute)), 6u) << "overriding takes no new place";
}

TEST(ZelCompositeAction, GivesItsSubActionsByIndexAndNullOutOfRange) {
  Composite made(3);
  EXPECT_EQ(made.composite.GetCount(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(made.composite.GetAction(i), made.parts[static_cast<std::size_t>(i)]);
  for (const int index : {-1, 3, 4, INT_MIN, INT_MAX}) EXPECT_EQ(made.composite.GetAction(index), nullptr) << index;
}

TEST(ZelCompositeAction, ExecuteValidatesAllBeforeItRunsAny) {
  Composite made(3);
  EXPECT_TRUE(made.composite.Execute());
  EXPECT_EQ(made.calls, "a.Validate b.Validate c.Validate a.Execute b.Execute c.Execute ");
}

TEST(ZelCompositeAction, OneThatDoesNotValidateKeepsAllFromRunning) {
  Composite made(3);
  made.parts[2]->validates = false;
  EXPECT_FALSE(made.composite.Execute());
  EXPECT_EQ(made.calls, "a.Validate b.Validate c.Validate ");
}

TEST(ZelCompositeAction, TheFirstThatFailsStopsTheRunAndWhatWasRunStaysSo) {
  Composite made(3);
  made.parts[1]->executes = false;
  EXPECT_FALSE(made.composite.Execute());
  EXPECT_EQ(made.calls, "a.Validate b.Validate c.Validate a.Execute b.Execute ");
}

// Every combination of answers of three: all for two operations, any for the third.
TEST(ZelCompositeAction, ConfigureAndValidateAskForAllAndCanSelectForAny) {
  for (unsigned int bits = 0; bits < 8; ++bits) {
    Composite made(3);
    std::string configured, validated, selected;
    bool allSoFar = true, anySoFar = false;
    for (unsigned int i = 0; i < 3; ++i) {
      const bool yes = (bits >> i & 1) != 0;
      made.parts[i]->configures = made.parts[i]->validates = made.parts[i]->selects = yes;
      const std::string name(1, static_cast<char>('a' + i));
      if (allSoFar) configured += name + ".Configure ", validated += name + ".Validate ";
      if (!anySoFar) selected += name + ".CanSelect ";
      allSoFar = allSoFar && yes;
      anySoFar = anySoFar || yes;
    }
    EXPECT_EQ(made.composite.Configure(), bits == 7);
    EXPECT_EQ(std::exchange(made.calls, ""), configured);
    EXPECT_EQ(made.composite.Validate(), bits == 7);
    EXPECT_EQ(std::exchange(made.calls, ""), validated);
    EXPECT_EQ(made.composite.CanSelect(), bits != 0);
    EXPECT_EQ(std::exchange(made.calls, ""), selected);
  }
}

// Says no where the base would say yes.
class NeverValid : public ZelCompositeAction {
 public:
  bool Validate() override { return false; }
};

TEST(ZelCompositeAction, ExecuteValidatesThroughTheVirtualOperation) {
  std::string calls;
  NeverValid composite;
  composite.AddAction(new ScriptedAction("a", &calls));
  EXPECT_FALSE(composite.Execute());
  EXPECT_EQ(calls, "");
}

TEST(ZelCompositeAction, CanConfigureIsTheBasesWhateverTheSubActionsSay) {
  Composite made(1);
  EXPECT_TRUE(made.parts[0]->CanConfigure());
  EXPECT_FALSE(made.composite.CanConfigure());
}

TEST(ZelCompositeAction, LoadAndSaveAreTheBasesAndKeepNoSubActions) {
  Composite made(2);
  made.composite.SetName("both");
  FileObject file;
  EXPECT_TRUE(made.composite.Save(file));
  const std::map<std::string, std::string> items = {
      {"Group", "CompositeAction"}, {"SurveyTypes", ""}, {"Custom", "0"}, {"Description", ""}, {"ToolTip", ""}};
  EXPECT_EQ(ContentOf(file), (Sections{{"both", items}}));
  ZelCompositeAction read;
  read.SetSectionName("both");
  EXPECT_TRUE(read.Load(file));
  EXPECT_EQ(read.GetCount(), 0);
  EXPECT_EQ(made.calls, "");
}

TEST(ZelCompositeAction, CompositesRunWithinComposites) {
  std::string calls;
  ZelCompositeAction outer;
  AddNested(outer, calls);
  EXPECT_TRUE(outer.Execute());
  EXPECT_EQ(calls, "a.Validate b.Validate c.Validate d.Validate a.Execute b.Validate c.Validate b.Execute c.Execute d.Execute ");
}

// --- Null -------------------------------------------------------------------------------------------------------------------

TEST(ZelCompositeAction, ANullSubActionCountsAndIsPassedOver) {
  Composite made(1);
  made.composite.AddAction(nullptr);
  auto* const last = new ScriptedAction("z", &made.calls);
  last->selects = true;
  made.composite.AddAction(last);
  EXPECT_EQ(made.composite.GetCount(), 3);
  EXPECT_EQ(made.composite.GetAction(1), nullptr);
  EXPECT_EQ(made.composite.GetAction(2), last);
  EXPECT_TRUE(made.composite.Configure());
  EXPECT_TRUE(made.composite.Execute());
  EXPECT_TRUE(made.composite.CanSelect());
  EXPECT_EQ(made.calls, "a.Configure z.Configure a.Validate z.Validate a.Execute z.Execute a.CanSelect z.CanSelect ");
  made.composite.DeleteAllActions();
  EXPECT_EQ(made.composite.GetCount(), 0);
}

TEST(ZelCompositeAction, NothingButNullsIsAsNoSubActions) {
  ZelCompositeAction composite;
  composite.AddAction(nullptr);
  composite.AddAction(nullptr);
  EXPECT_TRUE(composite.Execute());
  EXPECT_FALSE(composite.CanSelect());
}

// --- Ownership --------------------------------------------------------------------------------------------------------------

TEST(ZelCompositeAction, DeleteAllActionsDestroysThemInOrderAndLeavesAnEmptyOne) {
  Composite made(3);
  made.composite.DeleteAllActions();
  EXPECT_EQ(made.calls, "a.gone b.gone c.gone ");
  EXPECT_EQ(made.composite.GetCount(), 0);
  EXPECT_TRUE(made.composite.Execute());
  made.composite.AddAction(new ScriptedAction("d", &made.calls));
  EXPECT_EQ(made.composite.GetCount(), 1);
  EXPECT_EQ(made.calls, "a.gone b.gone c.gone ");
}

TEST(ZelCompositeAction, SubActionsGoWithTheComposite) {
  std::string calls;
  {
    std::unique_ptr<ZelAction> composite;
    auto* const made = new ZelCompositeAction;
    composite.reset(made);
    made->AddAction(new ScriptedAction("a", &calls));
    made->AddAction(new ScriptedAction("b", &calls));
    EXPECT_EQ(calls, "");
  }
  EXPECT_EQ(calls, "a.gone b.gone ");
}

TEST(ZelCompositeAction, OneThatWasAddedTwiceRunsTwiceAndIsDestroyedOnce) {
  std::string calls;
  {
    ZelCompositeAction composite;
    auto* const action = new ScriptedAction("a", &calls);
    composite.AddAction(action);
    composite.AddAction(action);
    EXPECT_EQ(composite.GetCount(), 2);
    EXPECT_TRUE(composite.Execute());
  }
  EXPECT_EQ(calls, "a.Validate a.Validate a.Execute a.Execute a.gone ");
}

TEST(ZelCompositeAction, CopiesShareThePointersAndTheFirstThatGoesDestroysThem) {
  std::string calls;
  auto source = std::make_unique<ZelCompositeAction>();
  source->SetName("source");
  source->AddAction(new ScriptedAction("a", &calls));
  source->AddAction(nullptr);
  auto copy = std::make_unique<ZelCompositeAction>(*source);
  ZelCompositeAction assigned;
  assigned.AddAction(new ScriptedAction("before", &calls));
  assigned = *source;
  EXPECT_EQ(std::exchange(calls, ""), "before.gone ");
  EXPECT_EQ(copy->GetName(), "source");
  EXPECT_EQ(assigned.GetName(), "source");
  for (ZelCompositeAction* const other : {copy.get(), &assigned}) {
    EXPECT_EQ(other->GetCount(), 2);
    EXPECT_NE(other->GetAction(0), nullptr);
    EXPECT_EQ(other->GetAction(0), source->GetAction(0));
  }
  source.reset();
  EXPECT_EQ(std::exchange(calls, ""), "a.gone ");
  for (ZelCompositeAction* const other : {copy.get(), &assigned}) {
    EXPECT_EQ(other->GetCount(), 2);
    EXPECT_EQ(other->GetAction(0), nullptr);
    EXPECT_TRUE(other->Execute());
    EXPECT_FALSE(other->CanSelect());
    other->DeleteAllActions();
    EXPECT_EQ(other->GetCount(), 0);
  }
  EXPECT_EQ(calls, "");
}

TEST(ZelCompositeAction, DeletingAllOfACopyDestroysTheSourcesToo) {
  std::string calls;
  ZelCompositeAction source;
  source.AddAction(new ScriptedAction("a", &calls));
  ZelCompositeAction copy(source);
  source.AddAction(new ScriptedAction("b", &calls));  // after the copy was made: the source's alone
  copy.DeleteAllActions();
  EXPECT_EQ(std::exchange(calls, ""), "a.gone ");
  EXPECT_EQ(source.GetCount(), 2);
  EXPECT_EQ(source.GetAction(0), nullptr);
  EXPECT_TRUE(source.Execute());
  EXPECT_EQ(calls, "b.Validate b.Execute ");
}

TEST(ZelCompositeAction, ACopyKnowsWhatTheSourceOwns) {
  std::string calls;
  {
    ZelCompositeAction source;
    auto* const action = new ScriptedAction("a", &calls);
    source.AddAction(action);
    ZelCompositeAction copy(source);
    copy.AddAction(action);
    EXPECT_EQ(copy.GetCount(), 2);
    EXPECT_EQ(source.GetCount(), 1);
  }
  EXPECT_EQ(calls, "a.gone ");
}

TEST(ZelCompositeAction, AssignmentToItselfAndFromAPartOfItselfWork) {
  Composite made(2);
  ZelCompositeAction& same = made.composite;
  made.composite = same;
  EXPECT_EQ(made.composite.GetCount(), 2);
  auto* const part = new ZelCompositeAction;
  part->SetName("part");
  auto* const below = new ScriptedAction("below", &made.calls);
  part->AddAction(below);
  made.composite.AddAction(part);
  made.composite = *part;
  EXPECT_EQ(made.composite.GetName(), "part");
  EXPECT_EQ(made.composite.GetCount(), 1);
  EXPECT_EQ(made.composite.GetAction(0), below);
  EXPECT_EQ(made.calls, "a.gone b.gone ");
}

TEST(ZelCompositeAction, AnAddressThatWasGivenBackMayBeAddedAgain) {
  std::string calls;
  ZelCompositeAction composite;
  ZelCompositeAction copy;
  for (int i = 0; i < 100; ++i) {
    composite.AddAction(new ScriptedAction("a", &calls));  // the memory of the one before, most likely
    copy = composite;
    composite.DeleteAllActions();
    copy.DeleteAllActions();
  }
  std::string expected;
  for (int i = 0; i < 100; ++i) expected += "a.gone ";
  EXPECT_EQ(calls, expected);
}

// --- Changes while it works -------------------------------------------------------------------------------------------------

TEST(ZelCompositeAction, ASubActionMayAddAnotherWhichIsRunAsWell) {
  Composite made(1);
  made.parts[0]->onExecute = [&made] {
    for (int i = 0; i < 50; ++i) made.composite.AddAction(nullptr);
    made.composite.AddAction(new ScriptedAction("late", &made.calls));
  };
  EXPECT_TRUE(made.composite.Execute());
  EXPECT_EQ(made.calls, "a.Validate a.Execute late.Execute ");
}

TEST(ZelCompositeAction, ASubActionMayDeleteAllWhileItRuns) {
  Composite made(3);
  made.parts[1]->onExecute = [&made] { made.composite.DeleteAllActions(); };
  EXPECT_TRUE(made.composite.Execute());
  EXPECT_EQ(made.calls, "a.Validate b.Validate c.Validate a.Execute a.gone c.gone b.Execute b.gone ");
}

TEST(ZelCompositeAction, ASubActionThatGoesFindsItsCompositeEmptyAndMayAddToIt) {
  Composite made(2);
  int countMeanwhile = -1;
  made.parts[0]->onEnd = [&made, &countMeanwhile] {
    countMeanwhile = made.composite.GetCount();
    made.composite.AddAction(new ScriptedAction("new", &made.calls));
  };
  made.composite.DeleteAllActions();
  EXPECT_EQ(countMeanwhile, 0);
  EXPECT_EQ(made.calls, "a.gone b.gone ");
  EXPECT_EQ(made.composite.GetCount(), 1);
}

TEST(ZelCompositeAction, DeletingAnotherOnesActionsMeanwhileIsDoneOnReturn) {
  Composite made(2), other(1);
  std::string seen;
  made.parts[0]->onEnd = [&other, &seen] {
    other.composite.DeleteAllActions();
    seen = other.calls;
  };
  made.composite.DeleteAllActions();
  EXPECT_EQ(seen, "a.gone ");
}

TEST(ZelCompositeAction, TheOrderOfTheEndGoesDownBeforeItGoesOn) {
  std::string calls;
  ZelCompositeAction outer;
  AddNested(outer, calls);
  outer.DeleteAllActions();
  EXPECT_EQ(calls, "a.gone b.gone c.gone d.gone ");
}

TEST(ZelCompositeAction, SubActionsAreGoneWhenTheDestructorReturnsEvenWithinAnOuterOne) {
  std::string calls;
  ZelCompositeAction outer;
  auto* const user = new ScriptedAction("user", &calls);
  user->onEnd = [&calls] {
    auto inner = std::make_unique<ZelCompositeAction>();
    inner->AddAction(new ScriptedAction("part", &calls));
    inner.reset();
    calls += "end ";
  };
  outer.AddAction(user);
  outer.DeleteAllActions();
  EXPECT_EQ(calls, "user.gone part.gone end ");
}

TEST(ZelCompositeAction, ASubActionThatGoesFindsItsCompositeEvenWithinOuterOnes) {
  constexpr int kDepth = 32;
  ZelCompositeAction* composite = nullptr;
  std::string counts;
  {
    ZelCompositeAction outermost;
    composite = &outermost;
    for (int i = 1; i < kDepth; ++i) {
      auto* const next = new ZelCompositeAction;
      composite->AddAction(next);
      composite = next;
    }
    auto* const part = new ScriptedAction;
    part->onEnd = [&] { counts += std::to_string(composite->GetCount()) + " "; };
    composite->AddAction(part);
  }
  EXPECT_EQ(counts, "0 ");
}

TEST(ZelCompositeAction, TheOrderOfTheEndIsTheSameAtAnyDepth) {
  constexpr int kDepth = 100;
  std::string calls, before, after;
  auto outermost = std::make_unique<ZelCompositeAction>();
  ZelCompositeAction* composite = outermost.get();
  for (int i = 0; i < kDepth; ++i) {
    composite->AddAction(new ScriptedAction("<" + std::to_string(i), &calls));
    auto* const next = new ZelCompositeAction;
    composite->AddAction(next);
    composite->AddAction(new ScriptedAction(">" + std::to_string(i), &calls));
    composite = next;
    before += "<" + std::to_string(i) + ".gone ";
    after = ">" + std::to_string(i) + ".gone " + after;
  }
  outermost.reset();
  EXPECT_EQ(calls, before + after);
}

TEST(ZelCompositeAction, DepthCostsNoStackWhenItGoes) {
  constexpr int kDepth = 300000;
  std::string calls;
  auto outer = std::make_unique<ZelCompositeAction>();
  ZelCompositeAction* innermost = outer.get();
  for (int i = 0; i < kDepth; ++i) {
    auto* const next = new ZelCompositeAction;
    innermost->AddAction(next);
    innermost = next;
  }
  innermost->AddAction(new ScriptedAction("a", &calls));
  outer.reset();
  EXPECT_EQ(calls, "a.gone ");
}

}  // namespace
