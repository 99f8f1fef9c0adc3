#include "zelbase/geometry/EditableObject.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/geometry/EdgeValues.h"
#include "zelbase/platform/RecordingSurface.h"

namespace {

static_assert(std::is_abstract_v<EditableObject>);
static_assert(std::is_base_of_v<CObject, EditableObject>);
static_assert(std::is_same_v<std::underlying_type_t<DrawingState>, int>);

// The least that a derived class supplies.
class Bare : public EditableObject {
 public:
  using EditableObject::m_activeIndex;
  using EditableObject::m_redoStack;
  using EditableObject::m_undoStack;
  using EditableObject::m_valid;

  bool CallAdd(UndoRedo& record) { return Add(record); }
  bool CallInsert(UndoRedo& record) { return EditableObject::Insert(record); }
  void Handle(CDC* dc, const Point& point) { DrawHandle(dc, point); }

 protected:
  bool Move(UndoRedo&, bool) override { return false; }
};

// Writes down every operation, with the active item and the depths of the stacks while it runs, and answers as told.
class Recorder : public EditableObject {
 public:
  using EditableObject::Delete;
  using EditableObject::DeleteAll;
  using EditableObject::Insert;
  using EditableObject::m_activeIndex;
  using EditableObject::m_redoStack;
  using EditableObject::m_undoStack;

  bool Delete() override { return Note("delete"); }
  bool DeleteAll() override { return Note("delete all"); }

  std::vector<std::string> calls;
  bool answer = true;
  int writesIndex = 0;  // what an operation with a record writes into its index, unless 0
  int writesKind = 0;

 protected:
  bool Add(UndoRedo& record) override { return Note("add", record); }
  bool Insert(UndoRedo& record) override { return Note("insert", record); }
  bool Move(UndoRedo& record, bool back) override { return Note(back ? "back" : "forward", record); }

 private:
  bool Note(const std::string& what) {
    calls.push_back(what + " at " + std::to_string(m_activeIndex) + " with " + std::to_string(m_undoStack.size()) + "/" +
                    std::to_string(m_redoStack.size()));
    return answer;
  }
  bool Note(const std::string& what, UndoRedo& record) {
    const bool result = Note(what + " " + std::to_string(record.index));
    if (writesIndex != 0) record.index = writesIndex;
    if (writesKind != 0) record.kind = writesKind;
    return result;
  }
};

using Calls = std::vector<std::string>;

UndoRedo Step(int kind, int index) { return {kind, index, Point(1, 2, 3), Point(4, 5, 6)}; }

// A stack in words, "kind:index" from the bottom.
std::string Words(const std::vector<UndoRedo>& stack) {
  std::string words;
  for (const UndoRedo& record : stack) {
    words += (words.empty() ? "" : " ") + std::to_string(record.kind) + ":" + std::to_string(record.index);
  }
  return words;
}

// A line of points, as a module of the suite would edit it.
class Waypoints : public EditableObject {
 public:
  using EditableObject::Delete;
  using EditableObject::DeleteAll;
  using EditableObject::Insert;
  using EditableObject::m_redoStack;
  using EditableObject::m_undoStack;

  std::vector<Point> points;

  // What the operator does.
  void Append(const Point& point) {
    points.push_back(point);
    AddToUndoStack({1, static_cast<int>(points.size()) - 1, point, point});
    m_redoStack.clear();
  }
  void Grab(int index) {
    m_activeIndex = index;
    m_redoStack.push_back({5, index, points[static_cast<std::size_t>(index)], Point()});
    SetState(DrawingState(2));
  }
  void Drop(const Point& point) override {
    points[static_cast<std::size_t>(m_activeIndex)] = point;
    EditableObject::Drop(point);
  }
  void Activate(int index) { m_activeIndex = index; }

  bool Delete() override {
    if (m_activeIndex < 0 || m_activeIndex >= static_cast<int>(points.size())) return false;
    points.erase(points.begin() + m_activeIndex);
    return true;
  }
  bool DeleteAll() override {
    points.clear();
    return true;
  }

 protected:
  bool Add(UndoRedo& record) override { return Insert(record); }
  bool Insert(UndoRedo& record) override {
    points.insert(points.begin() + record.index, record.to);
    return true;
  }
  bool Move(UndoRedo& record, bool back) override {
    points[static_cast<std::size_t>(record.index)] = back ? record.from : record.to;
    return true;
  }
};

using Points = std::vector<Point>;

// --- What the base itself answers --------------------------------------------------------------------------------------

TEST(EditableObject, ANewOneIsIdleNotValidAndHasNoHistory) {
  Bare object;
  EXPECT_FALSE(object.IsValid());
  EXPECT_EQ(object.GetState(), 0);
  EXPECT_EQ(object.m_activeIndex, -1);
  EXPECT_FALSE(object.HaveUndo());
  EXPECT_FALSE(object.HaveRedo());
}

TEST(EditableObject, TheBaseOperationsDoNothing) {
  Bare object;
  UndoRedo record = Step(1, 7);
  EXPECT_FALSE(object.CallAdd(record));
  EXPECT_FALSE(object.CallInsert(record));
  EXPECT_FALSE(object.Delete());
  EXPECT_FALSE(object.DeleteAll());
  EXPECT_FALSE(object.Save(true));
  EXPECT_FALSE(object.Save(false));
  EXPECT_FALSE(object.Load("name"));
  EXPECT_FALSE(object.CanAdd());
  EXPECT_FALSE(object.CanDelete());
  EXPECT_FALSE(object.CanInsert());
  EXPECT_FALSE(object.CanDeleteAll(Point(), 1.0));
  EXPECT_TRUE(object.CanSave());
  EXPECT_TRUE(object.CanCancel());
  EXPECT_FALSE(object.Insert(Point(), 1.0));
  EXPECT_FALSE(object.SetActiveHandle(Point(), 1.0));
  std::string name = "before";
  object.SetName("after");
  object.GetName(name);
  EXPECT_EQ(name, "before");
  EXPECT_EQ(object.GetObject(), nullptr);
  EXPECT_EQ(record.index, 7);
  EXPECT_FALSE(object.HaveUndo() || object.HaveRedo());
}

TEST(EditableObject, ClearEndsValidityAndKeepsTheStacks) {
  Bare object;
  object.m_valid = true;
  EXPECT_TRUE(object.IsValid());
  object.AddToUndoStack(Step(1, 1));
  object.m_redoStack.push_back(Step(2, 2));
  object.Clear();
  EXPECT_FALSE(object.IsValid());
  EXPECT_EQ(object.GetState(), 1);
  EXPECT_TRUE(object.HaveUndo());
  EXPECT_TRUE(object.HaveRedo());
}

TEST(EditableObject, AnyStateIsStored) {
  Bare object;
  for (const int state : {2, 99, -1, INT_MAX, INT_MIN, 0}) {
    object.SetState(static_cast<DrawingState>(state));
    EXPECT_EQ(object.GetState(), state);
  }
}

TEST(EditableObject, IsDestroyedThroughTheFrameworksBase) {
  auto object = std::make_unique<Bare>();
  for (int i = 0; i < 1000; ++i) object->AddToUndoStack(Step(1, i));
  object->m_redoStack = object->m_undoStack;
  const std::unique_ptr<CObject> base = std::move(object);
  EXPECT_NE(base, nullptr);
}

TEST(EditableObject, ACopyHasItsOwnHistory) {
  Bare object;
  object.AddToUndoStack(Step(1, 1));
  object.SetState(DrawingState(3));
  Bare copy(object);
  Bare assigned;
  assigned = object;
  object.Undo();
  for (Bare* const other : {&copy, &assigned}) {
    EXPECT_EQ(Words(other->m_undoStack), "1:1");
    EXPECT_FALSE(other->HaveRedo());
    EXPECT_EQ(other->GetState(), 3);
  }
}

// --- Undo and redo -----------------------------------------------------------------------------------------------------

TEST(EditableObject, UndoAndRedoOfAnEmptyStackAreFalse) {
  Recorder object;
  EXPECT_FALSE(object.Undo());
  EXPECT_FALSE(object.Redo());
  EXPECT_EQ(object.calls, Calls());
}

TEST(EditableObject, UndoDoesWhatTheTableSaysAndFilesTheRecord) {
  const std::pair<int, const char*> rows[] = {{1, "delete at 8 with 1/1"},
                                              {2, "delete at 8 with 1/1"},
                                              {3, "insert 8 at -1 with 1/1"},
                                              {5, "back 8 at -1 with 1/1"},
                                              {6, "back 8 at -1 with 1/1"}};
  for (const auto& [kind, call] : rows) {
    Recorder object;
    object.AddToUndoStack(Step(9, 9));
    object.AddToUndoStack(Step(kind, 8));
    object.m_redoStack.push_back(Step(2, 2));
    EXPECT_TRUE(object.Undo());
    // While the operation runs the record lies on neither stack.
    EXPECT_EQ(object.calls, Calls{call});
    EXPECT_EQ(Words(object.m_undoStack), "9:9");
    EXPECT_EQ(Words(object.m_redoStack), "2:2 " + std::to_string(kind) + ":8");
    EXPECT_EQ(object.m_redoStack.back().from, Point(1, 2, 3));
    EXPECT_EQ(object.m_redoStack.back().to, Point(4, 5, 6));
  }
}

TEST(EditableObject, RedoDoesWhatTheTableSaysAndFilesTheRecord) {
  const std::pair<int, const char*> rows[] = {{1, "add 8 at -1 with 1/1"},
                                              {2, "insert 8 at -1 with 1/1"},
                                              {3, "delete at 8 with 1/1"},
                                              {5, "forward 8 at -1 with 1/1"},
                                              {6, "forward 8 at -1 with 1/1"}};
  for (const auto& [kind, call] : rows) {
    Recorder object;
    object.AddToUndoStack(Step(9, 9));
    object.m_redoStack = {Step(2, 2), Step(kind, 8)};
    EXPECT_TRUE(object.Redo());
    EXPECT_EQ(object.calls, Calls{call});
    EXPECT_EQ(Words(object.m_undoStack), "9:9 " + std::to_string(kind) + ":8");
    EXPECT_EQ(Words(object.m_redoStack), "2:2");
  }
}

TEST(EditableObject, UndoSetsTheActiveItemForKinds1And2Only) {
  for (const int kind : {1, 2, 3, 4, 5, 6, 7}) {
    Recorder object;
    object.m_activeIndex = 55;
    object.AddToUndoStack(Step(kind, 8));
    object.Undo();
    EXPECT_EQ(object.m_activeIndex, kind <= 2 ? 8 : 55) << kind;
  }
}

TEST(EditableObject, RedoSetsTheActiveItemForKind3Only) {
  for (const int kind : {1, 2, 3, 4, 5, 6, 7}) {
    Recorder object;
    object.m_activeIndex = 55;
    object.m_redoStack.push_back(Step(kind, 8));
    object.Redo();
    EXPECT_EQ(object.m_activeIndex, kind == 3 ? 8 : 55) << kind;
  }
}

TEST(EditableObject, AStepThatDeletedAllIsLostByUndoAndNotFiledByRedo) {
  Recorder object;
  object.AddToUndoStack(Step(4, 1));
  EXPECT_TRUE(object.Undo());
  EXPECT_EQ(object.calls, Calls());
  EXPECT_FALSE(object.HaveUndo() || object.HaveRedo());
  object.m_redoStack.push_back(Step(4, 1));
  EXPECT_TRUE(object.Redo());
  EXPECT_EQ(object.calls, Calls{"delete all at -1 with 0/0"});
  EXPECT_FALSE(object.HaveUndo() || object.HaveRedo());
}

TEST(EditableObject, ARecordOfNoKnownKindIsDroppedByUndoWhichAnswersTrue) {
  for (const int kind : {7, 0, -1, INT_MAX, INT_MIN}) {
    Recorder object;
    object.AddToUndoStack(Step(kind, 1));
    EXPECT_TRUE(object.Undo()) << kind;
    EXPECT_EQ(object.calls, Calls());
    EXPECT_FALSE(object.HaveUndo() || object.HaveRedo());
  }
}

TEST(EditableObject, ARecordOfNoKnownKindIsFiledByRedoWithoutAnOperation) {
  for (const int kind : {7, 0, -1, INT_MAX, INT_MIN}) {
    Recorder object;
    object.m_redoStack.push_back(Step(kind, 1));
    EXPECT_TRUE(object.Redo()) << kind;
    EXPECT_EQ(object.calls, Calls());
    EXPECT_EQ(Words(object.m_undoStack), std::to_string(kind) + ":1");
    EXPECT_FALSE(object.HaveRedo());
  }
}

TEST(EditableObject, WhatAnOperationAnswersIsIgnored) {
  Recorder object;
  object.answer = false;
  for (const int kind : {1, 2, 3, 5, 6}) object.AddToUndoStack(Step(kind, kind));
  while (object.HaveUndo()) EXPECT_TRUE(object.Undo());
  EXPECT_EQ(Words(object.m_redoStack), "6:6 5:5 3:3 2:2 1:1");
  while (object.HaveRedo()) EXPECT_TRUE(object.Redo());
  EXPECT_EQ(Words(object.m_undoStack), "1:1 2:2 3:3 5:5 6:6");
}

TEST(EditableObject, WhatAnOperationWritesIntoItsRecordIsFiled) {
  Recorder object;
  object.writesIndex = 70;
  object.AddToUndoStack(Step(5, 8));
  object.Undo();
  EXPECT_EQ(Words(object.m_redoStack), "5:70");
  object.writesIndex = 71;
  object.Redo();
  EXPECT_EQ(Words(object.m_undoStack), "5:71");
  // The kind a record came with decides whether it is filed.
  object.writesKind = 4;
  object.Undo();
  EXPECT_EQ(Words(object.m_redoStack), "4:71");
}

TEST(EditableObject, AddToUndoStackKeepsTheRedoStack) {
  Recorder object;
  object.m_redoStack.push_back(Step(1, 1));
  object.AddToUndoStack(Step(2, 2));
  EXPECT_EQ(Words(object.m_redoStack), "1:1");
  EXPECT_EQ(Words(object.m_undoStack), "2:2");
  // One of its own records, while the stack grows.
  for (int i = 0; i < 100; ++i) object.AddToUndoStack(object.m_undoStack.front());
  EXPECT_EQ(object.m_undoStack.size(), 101u);
  EXPECT_EQ(object.m_undoStack.back().index, 2);
}

TEST(EditableObject, ADeepHistoryGoesBackAndForth) {
  Recorder object;
  constexpr int kDepth = 100000;
  for (int i = 0; i < kDepth; ++i) object.AddToUndoStack(Step(5, i));
  int undone = 0;
  while (object.Undo()) ++undone;
  int redone = 0;
  while (object.Redo()) ++redone;
  EXPECT_EQ(undone, kDepth);
  EXPECT_EQ(redone, kDepth);
  EXPECT_EQ(object.m_undoStack.front().index, 0);
  EXPECT_EQ(object.m_undoStack.back().index, kDepth - 1);
}

// --- Deleting ----------------------------------------------------------------------------------------------------------

TEST(EditableObject, DeletingAtAPointGoesThroughRedoAndEndsTheBranch) {
  Recorder object;
  object.m_activeIndex = 3;
  object.m_redoStack = {Step(1, 1), Step(2, 2)};
  EXPECT_TRUE(object.Delete(Point(7, 8, 9), 1e300));
  EXPECT_EQ(object.calls, Calls{"delete at 3 with 0/2"});
  ASSERT_EQ(Words(object.m_undoStack), "3:3");
  EXPECT_EQ(object.m_undoStack[0].from, Point(0, 0, 0));
  EXPECT_EQ(object.m_undoStack[0].to, Point(7, 8, 9));
  EXPECT_FALSE(object.HaveRedo());
}

TEST(EditableObject, DeletingAllAtAPointLeavesNothingToUndo) {
  Recorder object;
  object.AddToUndoStack(Step(5, 5));
  object.m_redoStack = {Step(1, 1), Step(2, 2)};
  EXPECT_TRUE(object.DeleteAll(Point(7, 8, 9), -1));
  EXPECT_EQ(object.calls, Calls{"delete all at -1 with 1/2"});
  EXPECT_EQ(Words(object.m_undoStack), "5:5");
  EXPECT_FALSE(object.HaveRedo());
}

TEST(EditableObject, DeletingAtAPointIsTrueAlsoWhenTheOperationFails) {
  Recorder object;
  object.answer = false;
  EXPECT_TRUE(object.Delete(Point(), 0));
  EXPECT_EQ(Words(object.m_undoStack), "3:-1");
  EXPECT_TRUE(object.DeleteAll(Point(), 0));
}

TEST(EditableObject, DeletingByARecordAnswersAsTheOperationAndTouchesNoStack) {
  Recorder object;
  object.AddToUndoStack(Step(5, 5));
  object.m_redoStack = {Step(6, 6)};
  UndoRedo record = Step(1, 12);
  for (const bool answer : {true, false}) {
    object.answer = answer;
    EXPECT_EQ(object.Delete(record), answer);
    EXPECT_EQ(object.m_activeIndex, 12);
    EXPECT_EQ(object.DeleteAll(record), answer);
  }
  EXPECT_EQ(object.calls.front(), "delete at 12 with 1/1");
  EXPECT_EQ(object.calls.back(), "delete all at 12 with 1/1");
  EXPECT_EQ(Words(object.m_undoStack), "5:5");
  EXPECT_EQ(Words(object.m_redoStack), "6:6");
}

// --- Dropping ----------------------------------------------------------------------------------------------------------

TEST(EditableObject, ADropElsewhereFilesTheDragAndEndsTheBranch) {
  Recorder object;
  object.AddToUndoStack(Step(1, 1));
  object.m_redoStack = {Step(2, 2), Step(5, 8)};
  object.SetState(DrawingState(2));
  object.Drop(Point(10, 20, 30));
  EXPECT_EQ(Words(object.m_undoStack), "1:1 5:8");
  EXPECT_EQ(object.m_undoStack.back().from, Point(1, 2, 3));
  EXPECT_EQ(object.m_undoStack.back().to, Point(10, 20, 30));
  EXPECT_FALSE(object.HaveRedo());
  EXPECT_EQ(object.GetState(), 0);
  EXPECT_EQ(object.calls, Calls());
}

TEST(EditableObject, AClickWithoutMovementTakesItsOwnRecordOnly) {
  // z is no movement.
  for (const double z : {3.0, 77.0}) {
    Recorder object;
    object.AddToUndoStack(Step(1, 1));
    object.m_redoStack = {Step(2, 2), Step(5, 8)};
    object.SetState(DrawingState(2));
    object.Drop(Point(1, 2, z));
    EXPECT_EQ(Words(object.m_undoStack), "1:1");
    EXPECT_EQ(Words(object.m_redoStack), "2:2");
    EXPECT_EQ(object.GetState(), 0);
  }
}

TEST(EditableObject, AMovementIsADistanceAbove0) {
  const double denormal = std::numeric_limits<double>::denorm_min();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  // The square of a tiny distance is 0; what is no number is not above 0.
  const std::tuple<double, double, bool> drops[] = {{1e-100, 0, true}, {0, -1e-7, true},    {denormal, 0, false}, {1e-170, 0, false},
                                                    {nan, 1, false},   {infinity, 0, true}, {0, infinity, true},  {-0.0, 0, false}};
  for (const auto& [x, y, moved] : drops) {
    Recorder object;
    object.m_redoStack = {{5, 8, Point(), Point()}};
    object.SetState(DrawingState(2));
    object.Drop(Point(x, y, 0));
    EXPECT_EQ(object.HaveUndo(), moved) << x << ", " << y;
    EXPECT_FALSE(object.HaveRedo());
    EXPECT_EQ(object.GetState(), 0);
  }
}

TEST(EditableObject, ADropWhileIdleDoesNothing) {
  Recorder object;
  object.m_redoStack = {Step(5, 8)};
  object.Drop(Point(10, 20, 30));
  EXPECT_EQ(Words(object.m_redoStack), "5:8");
  EXPECT_FALSE(object.HaveUndo());
  EXPECT_EQ(object.GetState(), 0);
}

TEST(EditableObject, ADropWithoutADragKeepsTheState) {
  Recorder object;
  object.AddToUndoStack(Step(5, 8));
  object.SetState(DrawingState(2));
  object.Drop(Point(10, 20, 30));
  EXPECT_EQ(object.GetState(), 2);
  EXPECT_EQ(Words(object.m_undoStack), "5:8");
  EXPECT_FALSE(object.HaveRedo());
}

TEST(EditableObject, AfterClearADropTakesWhateverLiesOnTheRedoStack) {
  Recorder object;
  object.m_redoStack = {Step(1, 1), Step(3, 8)};
  object.Clear();
  object.Drop(Point(10, 20, 30));
  EXPECT_EQ(Words(object.m_undoStack), "3:8");
  EXPECT_FALSE(object.HaveRedo());
  EXPECT_EQ(object.GetState(), 0);
}

// --- A whole session -----------------------------------------------------------------------------------------------------

TEST(EditableObject, AnAddedItemIsBackAfterUndoAndRedo) {
  Waypoints line;
  line.Append(Point(1, 1, 0));
  EXPECT_TRUE(line.Undo());
  EXPECT_EQ(line.points, Points());
  EXPECT_TRUE(line.HaveRedo());
  EXPECT_TRUE(line.Redo());
  EXPECT_EQ(line.points, (Points{{1, 1, 0}}));
  EXPECT_EQ(Words(line.m_undoStack), "1:0");
  EXPECT_FALSE(line.HaveRedo());
}

TEST(EditableObject, ASessionGoesBackToItsBeginningAndForthToItsEnd) {
  Waypoints line;
  std::vector<Points> pictures{line.points};
  const auto done = [&] { pictures.push_back(line.points); };
  line.Append(Point(0, 0, 0)), done();
  line.Append(Point(10, 0, 0)), done();
  line.Append(Point(20, 0, 0)), done();
  line.Grab(1);
  line.Drop(Point(10, 5, 0)), done();
  line.Activate(2);
  line.Delete(Point(20, 0, 0), 1), done();
  line.Append(Point(30, 0, 0)), done();
  for (std::size_t i = pictures.size() - 1; i-- > 0;) {
    EXPECT_TRUE(line.Undo());
    EXPECT_EQ(line.points, pictures[i]) << i;
  }
  EXPECT_FALSE(line.Undo());
  for (std::size_t i = 1; i < pictures.size(); ++i) {
    EXPECT_TRUE(line.Redo());
    EXPECT_EQ(line.points, pictures[i]) << i;
  }
  EXPECT_FALSE(line.Redo());
}

TEST(EditableObject, ItemsDeletedAllAtOnceDoNotComeBack) {
  Waypoints line;
  EXPECT_TRUE(line.DeleteAll(Point(), 0));
  EXPECT_FALSE(line.Undo());
  line.Append(Point(0, 0, 0));
  line.Append(Point(10, 0, 0));
  EXPECT_TRUE(line.DeleteAll(Point(), 0));
  EXPECT_EQ(line.points, Points());
  // Undo still has the steps before; here they find nothing to delete.
  EXPECT_TRUE(line.Undo());
  EXPECT_TRUE(line.Undo());
  EXPECT_FALSE(line.Undo());
  EXPECT_EQ(line.points, Points());
}

TEST(EditableObject, OverridingOneFormHidesTheOthersUntilTheyAreNamed) {
  Waypoints line;
  line.Append(Point(0, 0, 0));
  EditableObject& base = line;
  // All forms through the base, and through the class by its using declarations.
  line.Activate(0);
  EXPECT_TRUE(base.Delete(Point(), 0));
  EXPECT_TRUE(base.Undo());
  EXPECT_TRUE(line.Delete(Point(), 0));
  EXPECT_FALSE(line.Insert(Point(), 0.0));
  EXPECT_EQ(line.points, Points());
}

// --- Handles -------------------------------------------------------------------------------------------------------------

std::vector<long long> HandleAt(double x, double y) {
  RecordingSurface dc;
  Bare object;
  object.Handle(&dc, Point(x, y, 0));
  EXPECT_EQ(dc.calls.size(), 1u);
  if (dc.calls.empty()) return {};
  EXPECT_EQ(dc.calls[0].name, "Rectangle");
  return dc.calls[0].numbers;
}

using Box = std::vector<long long>;

TEST(EditableObject, AHandleIsSixPixelsWideAroundItsPoint) {
  EXPECT_EQ(HandleAt(10, 20), (Box{7, 17, 13, 23}));
  EXPECT_EQ(HandleAt(0, 0), (Box{-3, -3, 3, 3}));
}

TEST(EditableObject, AHandlesPointIsTruncatedToWholePixelsFirst) {
  EXPECT_EQ(HandleAt(10.9, 20.9), (Box{7, 17, 13, 23}));
  // Towards zero: -0.9 is 0 and not -1; -3.5 - 3 would be -6 if it were truncated last.
  EXPECT_EQ(HandleAt(-0.9, -10.9), (Box{-3, -13, 3, -7}));
  EXPECT_EQ(HandleAt(2.5, -3.5), (Box{-1, -6, 5, 0}));
}

TEST(EditableObject, AHandleBeyondTheRangeOfIntEndsAtTheNearestInt) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(HandleAt(1e300, -1e300), (Box{INT_MAX - 3, INT_MIN, INT_MAX, INT_MIN + 3}));
  EXPECT_EQ(HandleAt(-infinity, infinity), (Box{INT_MIN, INT_MAX - 3, INT_MIN + 3, INT_MAX}));
  EXPECT_EQ(HandleAt(nan, nan), (Box{-3, -3, 3, 3}));
  EXPECT_EQ(HandleAt(INT_MAX - 1.0, INT_MIN + 1.0), (Box{INT_MAX - 4, INT_MIN, INT_MAX, INT_MIN + 4}));
}

TEST(EditableObject, AHandleOnNoSurfaceDrawsNothing) {
  Bare object;
  object.Handle(nullptr, Point(1, 2, 3));
  EXPECT_EQ(object.GetState(), 0);
}

// --- At random ------------------------------------------------------------------------------------------------------------

// The two stacks and the table a second time: what each kind does on its way back and forth, and where its record goes.
class HistoryModel {
 public:
  std::vector<UndoRedo> undo;
  std::vector<UndoRedo> redo;
  int active = -1;
  int state = 0;
  Calls calls;

  bool Undo() { return Step(undo, redo, {"", "delete", "delete", "insert", "", "back", "back"}, {1, 2}, {1, 2, 3, 5, 6}); }
  bool Redo() {
    return Step(redo, undo, {"", "add", "insert", "delete", "delete all", "forward", "forward"}, {3}, {1, 2, 3, 5, 6, kUnknown});
  }
  void DeleteAt(int kind, const Point& point) {
    redo.push_back({kind, active, Point(), point});
    Redo();
    redo.clear();
  }
  void Drop(const Point& point) {
    if (state == 0) return;
    if (redo.empty()) return;
    UndoRedo record = redo.back();
    redo.pop_back();
    record.to = point;
    state = 0;
    if (point.x == record.from.x && point.y == record.from.y) return;
    undo.push_back(record);
    redo.clear();
  }

 private:
  static constexpr int kUnknown = 7;

  // One step off a stack: the operation of its kind, the kinds that make their item the active one, and those that are filed.
  bool Step(std::vector<UndoRedo>& from, std::vector<UndoRedo>& to, const Calls& operations, const std::set<int>& activating,
            const std::set<int>& filed) {
    if (from.empty()) return false;
    UndoRedo record = from.back();
    from.pop_back();
    const int kind = record.kind >= 1 && record.kind <= 6 ? record.kind : kUnknown;
    if (activating.contains(kind)) active = record.index;
    const std::string operation = kind == kUnknown ? "" : operations[static_cast<std::size_t>(kind)];
    const bool hasRecord = operation == "add" || operation == "insert" || operation == "back" || operation == "forward";
    if (!operation.empty()) {
      calls.push_back(operation + (hasRecord ? " " + std::to_string(record.index) : "") + " at " + std::to_string(active) + " with " +
                      std::to_string(undo.size()) + "/" + std::to_string(redo.size()));
    }
    if (filed.contains(kind)) to.push_back(record);
    return true;
  }
};

TEST(EditableObjectLong, RandomStepsGoAsTheTableSays) {
  EdgeValues random(7711);
  Tally tally({"undone", "nothing to undo", "redone", "nothing to redo", "added", "deleted", "all deleted", "dragged", "dropped elsewhere",
               "clicked", "dropped while idle", "dropped without a drag", "cleared"});
  Recorder object;
  HistoryModel model;
  for (int i = 0; i < kRandomRounds; ++i) {
    const Point point(random.Index(3), random.Index(3), random.Index(3));
    const UndoRedo record = {random.Index(9), random.Index(4), Point(random.Index(3), random.Index(3), 0), point};
    switch (random.Index(12)) {
      case 0:
      case 1:
      case 2:
        tally.Count(model.undo.empty() ? "nothing to undo" : "undone");
        ASSERT_EQ(object.Undo(), model.Undo());
        break;
      case 3:
      case 4:
        tally.Count(model.redo.empty() ? "nothing to redo" : "redone");
        ASSERT_EQ(object.Redo(), model.Redo());
        break;
      case 5:
      case 6:
      case 7:
        tally.Count("added");
        object.AddToUndoStack(record);
        model.undo.push_back(record);
        break;
      case 8:
        if (random.Index(4) != 0) break;
        tally.Count(record.kind % 2 == 0 ? "deleted" : "all deleted");
        ASSERT_TRUE(record.kind % 2 == 0 ? object.Delete(point, 0.5) : object.DeleteAll(point, 0.5));
        model.DeleteAt(record.kind % 2 == 0 ? 3 : 4, point);
        break;
      case 9:
        tally.Count("dragged");
        object.m_redoStack.push_back(record);
        object.SetState(DrawingState(2));
        model.redo.push_back(record);
        model.state = 2;
        break;
      case 10: {
        const bool isDrag = model.state != 0 && !model.redo.empty();
        const bool isClick = isDrag && model.redo.back().from.Dist2D(point) == 0;
        tally.Count(model.state == 0 ? "dropped while idle"
                    : !isDrag        ? "dropped without a drag"
                    : isClick        ? "clicked"
                                     : "dropped elsewhere");
        object.Drop(point);
        model.Drop(point);
        break;
      }
      default:
        tally.Count("cleared");
        object.Clear();
        model.state = 1;
    }
    ASSERT_EQ(Words(object.m_undoStack), Words(model.undo)) << "step " << i;
    ASSERT_EQ(Words(object.m_redoStack), Words(model.redo)) << "step " << i;
    ASSERT_EQ(object.calls, model.calls) << "step " << i;
    ASSERT_EQ(object.m_activeIndex, model.active) << "step " << i;
    ASSERT_EQ(static_cast<int>(object.GetState()), model.state) << "step " << i;
    ASSERT_TRUE(model.undo.empty() || object.m_undoStack.back().to == model.undo.back().to) << "step " << i;
    object.calls.clear();
    model.calls.clear();
    if (model.undo.size() + model.redo.size() < 20) continue;
    object.m_undoStack.clear();
    object.m_redoStack.clear();
    model.undo.clear();
    model.redo.clear();
  }
}

}  // namespace
