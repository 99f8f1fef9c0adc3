// The base of everything that an operator edits on a chart view by pointing at it: the two stacks of undo and redo with their
// rules. Neighbours: UndoRedo.h, one step on a stack; platform/CDC.h, the surface that handles are drawn on.
#pragma once

#include <string>
#include <vector>

#include "zelbase/geometry/Point.h"
#include "zelbase/geometry/UndoRedo.h"
#include "zelbase/platform/CDC.h"
#include "zelbase/platform/CObject.h"
#include "zelbase/platform/ZelBaseApi.h"

// What an object is being used for. Any state but idle means that a drag may be going on; values above 1 belong to the derived
// classes.
enum DrawingState : int {
  DRAWING_IDLE = 0,
  DRAWING_CLEARED = 1,  // after Clear
};

// An object that is edited in steps. This class owns the history and none of the geometry: the derived class owns the
// geometry, and carries out Add, Insert, Delete, DeleteAll and Move.
//
//   class Route : public EditableObject { bool Delete() override; bool Move(UndoRedo& record, bool back) override; ... };
//
// A derived class that overrides one form of Delete, DeleteAll or Insert hides the others; `using EditableObject::Delete;`
// brings them back.
//
// The steps, and what is done with the top of a stack:
//   kind  meaning              Undo                               Redo
//   1     an item was added    m_activeIndex = index; Delete()    Add(record)
//   2     an item inserted     m_activeIndex = index; Delete()    Insert(record)
//   3     an item deleted      Insert(record)                     m_activeIndex = index; Delete()
//   4     all items deleted    nothing, the record is lost        DeleteAll(), the record is lost
//   5, 6  an item was moved    Move(record, true)                 Move(record, false)
//   else                       nothing, the record is lost        nothing
// In all other cases, and from Redo also without an operation, the record then goes to the other stack, with whatever the
// operation has written into it. All this goes by the kind that it came with. While the operation runs the record lies on
// neither stack.
//
// What surprises:
//   (1) What an operation answers is ignored: the record changes stacks, and the result is true, also after a failure.
//   (2) Deleting all is final: undo has nothing of it.
//   (3) AddToUndoStack does not touch the redo stack. It is the caller who ends a branch of history.
//   (4) A drag's record waits on the redo stack. After Clear, a Drop takes whatever lies on top of that stack for it.
//
// Nothing limits the depth of a stack. Copies are independent and have the same history. An object belongs to the thread of its
// view; nothing is locked.
class ZELBASE_API EditableObject : public CObject {
 public:
  ~EditableObject() override;

  // --- The object, for the derived class to supply; what stands here does nothing -----------------------------------

  // Deletes the item at m_activeIndex; every item. False here.
  virtual bool Delete();
  virtual bool DeleteAll();

  virtual bool Save(bool option);              // false
  virtual bool Load(const std::string& name);  // false

  // Not valid any more, and in the state after Clear. The stacks stay.
  virtual void Clear();

  virtual bool CanAdd();                                     // false
  virtual bool CanDelete();                                  // false
  virtual bool CanInsert();                                  // false
  virtual bool CanDeleteAll(Point point, double tolerance);  // false
  virtual bool CanSave();                                    // true
  virtual bool CanCancel();                                  // true

  // Whether the object holds something usable, as the derived class has said.
  virtual bool IsValid();

  // Insert an item at the point; make the item near the point the active one. False here.
  virtual bool Insert(const Point& point, double tolerance);
  virtual bool SetActiveHandle(const Point& point, double tolerance);

  virtual void GetName(std::string& name) const;  // leaves `name`
  virtual void SetName(const std::string& name);  // does nothing
  virtual CObject* GetObject() const;             // null

  // Ends a drag at `point`: takes the drag's record off the redo stack and goes to idle. When the point lies elsewhere than
  // `from` of the record (in the plane; z does not count), the record goes to the undo stack with `to` filled in, and the
  // redo stack is emptied. A click without movement leaves no trace, and the rest of the redo stack. Does nothing while idle
  // or with an empty redo stack; the state stays then.
  virtual void Drop(const Point& point);

  // --- History ------------------------------------------------------------------------------------------------------

  bool HaveUndo() const;
  bool HaveRedo() const;

  // Takes back, or does again, the step on top of its stack, as in the table above. False when the stack is empty.
  bool Undo();
  bool Redo();

  // The redo stack stays as it is.
  void AddToUndoStack(const UndoRedo& record);

  // Deletes the active item, or all items, as a step of history: through Redo, with `to` at `point`; ends the branch of
  // history, so that the redo stack is empty afterwards. Always true. `tolerance` is not read.
  bool Delete(const Point& point, double tolerance);
  bool DeleteAll(const Point& point, double tolerance);

  // The bare operations, without history: make the record's item the active one and delete it; delete all items. The answer
  // is the operation's.
  bool Delete(UndoRedo& record);
  bool DeleteAll(UndoRedo& record);

  DrawingState GetState() const;
  void SetState(DrawingState state);

 protected:
  EditableObject();
  EditableObject(const EditableObject& other);
  EditableObject& operator=(const EditableObject& other);

  // Bring the record's item back. False here.
  virtual bool Add(UndoRedo& record);
  virtual bool Insert(UndoRedo& record);

  // Moves the record's item: to `from` when `back`, otherwise to `to`.
  virtual bool Move(UndoRedo& record, bool back) = 0;

  // A square handle, 6 pixels wide, around a point whose x and y are in pixels already: they are truncated to whole pixels
  // first (NaN is 0, beyond the range of int the nearest). A null `dc` draws nothing.
  void DrawHandle(CDC* dc, const Point& point);

  bool m_valid = false;
  DrawingState m_state = DRAWING_IDLE;
  int m_activeIndex = -1;             // the item that Delete() deletes; -1 at first: none
  std::vector<UndoRedo> m_undoStack;  // the last one is the top
  std::vector<UndoRedo> m_redoStack;
};
