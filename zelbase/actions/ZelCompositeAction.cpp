#include "zelbase/actions/ZelCompositeAction.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>
#include <utility>

#include "zelbase/errors/NumberedTexts.h"

namespace {

constexpr int kGroupNameText = 12045;

// Composites nested no deeper than this destroy their own sub-actions.
constexpr int kDeepestOnStack = 32;

// How many composites go on this thread, one within another.
thread_local int t_going = 0;

}  // namespace

// Where the composites below the deepest leave their sub-actions, so that nesting beyond it costs no stack; null above it. The
// last goes next.
thread_local ZelCompositeAction::Actions* ZelCompositeAction::t_leaving = nullptr;

// Destroys the actions in order, each followed by those it leaves.
void ZelCompositeAction::DestroyAll(Actions actions) {
  std::reverse(actions.begin(), actions.end());
  ++t_going;
  Actions* const outer = std::exchange(t_leaving, t_going < kDeepestOnStack ? nullptr : &actions);
  while (!actions.empty()) {
    const std::shared_ptr<Held> held = std::move(actions.back());
    actions.pop_back();
    // Kept: copies lose it as well; each thinks that it owns it, and whoever is first destroys it.
    const std::shared_ptr<ZelAction> next = std::move(held->action);
  }
  t_leaving = outer;
  --t_going;
}

void ZelCompositeAction::Leave(Actions& actions) {
  try {
    t_leaving->insert(t_leaving->end(), std::make_move_iterator(actions.rbegin()), std::make_move_iterator(actions.rend()));
  } catch (const std::bad_alloc&) {
    // They go with their composite, on its stack.
  }
}

ZelCompositeAction::ZelCompositeAction() { SetActionGroup("CompositeAction"); }

ZelCompositeAction& ZelCompositeAction::operator=(const ZelCompositeAction& other) {
  // Kept: the pointers are copied, and what they point to has one more that thinks it owns it.
  Actions former = other.m_actions;
  std::vector<std::shared_ptr<ZelAction>> taken;
  for (const auto& held : former) taken.push_back(held->action);
  ZelAction::operator=(other);
  m_actions.swap(former);
  // What was here goes last: `other` may be a part of it, and what it holds is to outlive it here.
  former.clear();
  for (std::size_t i = 0; i < taken.size(); ++i) {
    if (m_actions[i]->action != taken[i]) m_actions[i] = std::make_shared<Held>(Held{taken[i]});
  }
  return *this;
}

ZelCompositeAction::~ZelCompositeAction() {
  if (t_leaving != nullptr) {
    Leave(m_actions);
  } else {
    DeleteAll();
  }
}

std::string ZelCompositeAction::GroupName() { return NumberedText(kGroupNameText); }

// Whether every sub-action gives true; the first that does not is the last that is asked. Each is held while it is asked, since
// it may change this composite.
template <class Ask>
bool ZelCompositeAction::AllAnswer(Ask ask) {
  for (std::size_t i = 0; i < m_actions.size(); ++i) {
    const std::shared_ptr<ZelAction> action = m_actions[i]->action;
    if (action != nullptr && !ask(*action)) return false;
  }
  return true;
}

bool ZelCompositeAction::Configure() {
  return AllAnswer([](ZelAction& action) { return action.Configure(); });
}

bool ZelCompositeAction::Validate() {
  return AllAnswer([](ZelAction& action) { return action.Validate(); });
}

bool ZelCompositeAction::Execute() {
  // Kept: all are validated before any is run, by the operation that a derived class may have replaced.
  if (!Validate()) return false;
  return AllAnswer([](ZelAction& action) { return action.Execute(); });
}

bool ZelCompositeAction::CanSelect() {
  // Kept: any is enough here, whereas the others ask for all; without sub-actions it is false.
  return !AllAnswer([](ZelAction& action) { return !action.CanSelect(); });
}

int ZelCompositeAction::GetCount() { return static_cast<int>(m_actions.size()); }

ZelAction* ZelCompositeAction::GetAction(int index) {
  if (index < 0 || index >= static_cast<int>(m_actions.size())) return nullptr;
  return m_actions[static_cast<std::size_t>(index)]->action.get();
}

// Kept: null is a sub-action that counts.
void ZelCompositeAction::AddAction(ZelAction* action) {
  const auto same = std::find_if(m_actions.begin(), m_actions.end(), [action](const auto& held) { return held->action.get() == action; });
  // One owner, however often it is added.
  m_actions.push_back(same != m_actions.end() ? *same : std::make_shared<Held>(Held{std::shared_ptr<ZelAction>(action)}));
}

void ZelCompositeAction::DeleteAllActions() { DeleteAll(); }

void ZelCompositeAction::DeleteAll() {
  // Out of the composite before they go: their destructors may ask it.
  DestroyAll(std::exchange(m_actions, {}));
}
