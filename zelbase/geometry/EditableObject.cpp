#include "zelbase/geometry/EditableObject.h"

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/detail/SaturatedInt.h"

namespace {

enum StepKind : int { kAdded = 1, kInserted, kDeleted, kAllDeleted, kMoved, kMovedToo };

constexpr int kHalfHandle = 3;  // pixels

UndoRedo TakeTop(std::vector<UndoRedo>& stack) {
  const UndoRedo top = stack.back();
  stack.pop_back();
  return top;
}

}  // namespace

EditableObject::EditableObject() = default;

EditableObject::EditableObject(const EditableObject& other) = default;

EditableObject& EditableObject::operator=(const EditableObject& other) = default;

EditableObject::~EditableObject() = default;

bool EditableObject::Delete() { return false; }

bool EditableObject::DeleteAll() { return false; }

bool EditableObject::Save(bool) { return false; }

bool EditableObject::Load(const std::string&) { return false; }

void EditableObject::Clear() {
  m_valid = false;
  m_state = DRAWING_CLEARED;
}

bool EditableObject::CanAdd() { return false; }

bool EditableObject::CanDelete() { return false; }

bool EditableObject::CanInsert() { return false; }

bool EditableObject::CanDeleteAll(Point, double) { return false; }

bool EditableObject::CanSave() { return true; }

bool EditableObject::CanCancel() { return true; }

bool EditableObject::IsValid() { return m_valid; }

bool EditableObject::Insert(const Point&, double) { return false; }

bool EditableObject::SetActiveHandle(const Point&, double) { return false; }

void EditableObject::GetName(std::string&) const {}

void EditableObject::SetName(const std::string&) {}

CObject* EditableObject::GetObject() const { return nullptr; }

bool EditableObject::Add(UndoRedo&) { return false; }

bool EditableObject::Insert(UndoRedo&) { return false; }

void EditableObject::Drop(const Point& point) {
  if (m_state == DRAWING_IDLE || m_redoStack.empty()) return;
  // Kept: the top is taken for the drag's record whatever it is, also in the state after Clear.
  UndoRedo record = TakeTop(m_redoStack);
  record.to = point;
  // Kept: without a movement only this record goes, and the rest of the redo stack stays; z is no movement.
  if (record.from.Dist2D(record.to, false) > 0) {
    m_undoStack.push_back(record);
    m_redoStack.clear();
  }
  m_state = DRAWING_IDLE;
}

bool EditableObject::HaveUndo() const { return !m_undoStack.empty(); }

bool EditableObject::HaveRedo() const { return !m_redoStack.empty(); }

bool EditableObject::Undo() {
  if (m_undoStack.empty()) return false;
  UndoRedo record = TakeTop(m_undoStack);
  // Kept: what the operations answer is ignored here and in Redo; the record changes stacks all the same.
  switch (record.kind) {
    case kAdded:
    case kInserted:
      m_activeIndex = record.index;
      Delete();
      break;
    case kDeleted:
      // Kept: the active item stays what it was; only steps that delete set it.
      Insert(record);
      break;
    case kMoved:
    case kMovedToo: Move(record, true); break;
    default:
      // Kept: a step that deleted all is final and lost, and so is a record of no known kind.
      return true;
  }
  m_redoStack.push_back(record);
  return true;
}

bool EditableObject::Redo() {
  if (m_redoStack.empty()) return false;
  UndoRedo record = TakeTop(m_redoStack);
  switch (record.kind) {
    case kAdded: Add(record); break;
    case kInserted: Insert(record); break;
    case kDeleted:
      m_activeIndex = record.index;
      Delete();
      break;
    case kAllDeleted: DeleteAll(); return true;  // Kept: not filed, so that undo has nothing of it
    case kMoved:
    case kMovedToo: Move(record, false); break;
    default: break;  // Kept: no operation, but the record is filed; it is Undo that drops it
  }
  m_undoStack.push_back(record);
  return true;
}

void EditableObject::AddToUndoStack(const UndoRedo& record) {
  // Kept: the redo stack stays; the caller ends a branch of history.
  m_undoStack.push_back(record);
}

bool EditableObject::Delete(const Point& point, double) {
  m_redoStack.push_back({kDeleted, m_activeIndex, Point(), point});
  Redo();
  m_redoStack.clear();
  return true;
}

bool EditableObject::DeleteAll(const Point& point, double) {
  m_redoStack.push_back({kAllDeleted, m_activeIndex, Point(), point});
  Redo();
  m_redoStack.clear();
  return true;
}

bool EditableObject::Delete(UndoRedo& record) {
  m_activeIndex = record.index;
  return Delete();
}

bool EditableObject::DeleteAll(UndoRedo&) { return DeleteAll(); }

DrawingState EditableObject::GetState() const { return m_state; }

void EditableObject::SetState(DrawingState state) { m_state = state; }

void EditableObject::DrawHandle(CDC* dc, const Point& point) {
  if (dc == nullptr) return;
  using zelbase::detail::SaturatedAdd;
  using zelbase::detail::SaturatedSubtract;
  // Kept: truncated first, so that a handle is always 6 pixels wide.
  const int x = zelbase::detail::ToPixel(point.x);
  const int y = zelbase::detail::ToPixel(point.y);
  dc->Rectangle(SaturatedSubtract(x, kHalfHandle), SaturatedSubtract(y, kHalfHandle), SaturatedAdd(x, kHalfHandle),
                SaturatedAdd(y, kHalfHandle));
}
