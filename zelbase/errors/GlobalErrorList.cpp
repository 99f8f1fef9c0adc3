#include "zelbase/errors/GlobalErrorList.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "zelbase/errors/detail/EmptyError.h"
#include "zelbase/platform/LockGuard.h"

namespace {

constexpr const char* kGeneral = "General";

}  // namespace

// One operation under way that may remove errors. The outermost one lets go, at its end, what has left the lists: the object
// that was given to an Insert, and that reporters still look at, may be among it.
class GlobalErrorList::KeepRemoved {
 public:
  explicit KeepRemoved(GlobalErrorList& list) : m_list(list) { ++m_list.m_depth; }
  ~KeepRemoved() {
    ErrorList::Removed removed;
    if (--m_list.m_depth == 0) removed.swap(m_list.m_removed);
  }
  KeepRemoved(const KeepRemoved&) = delete;
  KeepRemoved& operator=(const KeepRemoved&) = delete;

 private:
  GlobalErrorList& m_list;
};

GlobalErrorList::GlobalErrorList() { MakeGeneral(); }

// The object stays where it is when the process ends, so that late reports find a lock and a flag; what it holds goes.
GlobalErrorList& GlobalErrorList::Instance() {
  static GlobalErrorList& instance = *new GlobalErrorList;
  return instance;
}

GlobalErrorList& GlobalErrorList::Get() {
  struct Ending {
    Ending() { Instance(); }
    ~Ending() { Instance().Close(); }
  };
  static const Ending ending;
  return Instance();
}

void GlobalErrorList::Close() {
  const LockGuard guard(m_lock);
  m_closed = true;
  m_reporters.clear();
  Contexts contexts;
  contexts.swap(m_contexts);
  m_current = m_contexts.end();
  DropContexts(contexts);
}

GlobalErrorList& GlobalErrorList::Insert(const Error& error, std::string context) {
  const LockGuard guard(m_lock);
  if (m_closed) return *this;
  const KeepRemoved scope(*this);
  Select(context);  // Kept: stays current; there is no inserting without moving the current context
  m_current->second->Insert(error, m_removed);
  if (m_depth <= kDeepestTold) TellReporters(error);  // Kept: of the caller's object, under the lock, on a repeat too
  return *this;
}

const std::string GlobalErrorList::DefaultContext() const { return kGeneral; }

const std::string GlobalErrorList::CurrentContext() const {
  const LockGuard guard(m_lock);
  return m_current == m_contexts.end() ? std::string() : m_current->first;
}

void GlobalErrorList::SetContext(const std::string& context) {
  const LockGuard guard(m_lock);
  if (!m_closed) Select(context);
}

bool GlobalErrorList::FirstContext() {
  const LockGuard guard(m_lock);
  m_current = m_contexts.begin();
  return m_current != m_contexts.end();
}

bool GlobalErrorList::NextContext() {
  const LockGuard guard(m_lock);
  if (m_current != m_contexts.end()) ++m_current;
  return m_current != m_contexts.end();
}

int GlobalErrorList::NumErrors(bool allContexts) const {
  const LockGuard guard(m_lock);
  if (!allContexts) return Current() == nullptr ? 0 : Current()->NumErrors();
  int sum = 0;
  for (const auto& context : m_contexts) sum += context.second->NumErrors();
  return sum;
}

const Error& GlobalErrorList::operator[](int index) const {
  const Error* const error = Get(index);
  return error != nullptr ? *error : zelbase::detail::EmptyError();
}

const Error* GlobalErrorList::Get(int index) const {
  const LockGuard guard(m_lock);
  const ErrorList* const list = Current();
  if (list == nullptr || index < 0 || index >= list->NumErrors()) return nullptr;
  return &(*list)[index];
}

const Error* GlobalErrorList::GetErrorWithID(unsigned int id) const {
  m_lock.Lock();
  for (const auto& context : m_contexts) {
    const Error* const error = context.second->GetErrorWithID(id);
    if (error != nullptr) return error;  // Kept: with the lock held, so that the pointer is safe until the caller unlocks
  }
  m_lock.Unlock();
  return nullptr;
}

void GlobalErrorList::Clear() {
  const LockGuard guard(m_lock);
  if (m_closed) return;
  Contexts contexts;
  contexts.swap(m_contexts);
  MakeGeneral();
  DropContexts(contexts);
}

void GlobalErrorList::Clear(const std::string& context) {
  const LockGuard guard(m_lock);
  if (m_closed) return;
  Select(context);  // Kept: stays current, and is made when there is none
  const KeepRemoved scope(*this);
  m_current->second->Clear(m_removed);
}

void GlobalErrorList::ClearFromTime(const long long& time) {
  const LockGuard guard(m_lock);
  const KeepRemoved scope(*this);
  for (const auto& context : m_contexts) context.second->ClearFromTime(time, m_removed);
}

void GlobalErrorList::AddReporter(ErrorReporterBase* reporter) {
  if (reporter == nullptr) return;
  const LockGuard guard(m_lock);
  if (!m_closed) m_reporters.push_back({reporter, ++m_registrations});
}

void GlobalErrorList::RemoveReporter(ErrorReporterBase* reporter) {
  const LockGuard guard(m_lock);
  m_reporters.remove_if([reporter](const Reporter& present) { return present.target == reporter; });
}

void GlobalErrorList::Lock() { m_lock.Lock(); }

void GlobalErrorList::Unlock() { m_lock.Unlock(); }

void GlobalErrorList::SetLogFileName(const std::string&) {
  // Kept: a call without effect, for hosts that still make it.
}

void GlobalErrorList::MakeGeneral() { m_current = m_contexts.emplace(kGeneral, std::make_unique<ErrorList>()).first; }

void GlobalErrorList::Select(const std::string& context) {
  const std::string name = context.empty() ? kGeneral : context;
  const auto place = m_contexts.find(name);
  m_current = place != m_contexts.end() ? place : m_contexts.emplace(name, std::make_unique<ErrorList>()).first;
}

// Walks a copy: reporters may come and go in a reporter's call.
void GlobalErrorList::TellReporters(const Error& error) const {
  const std::vector<Reporter> reporters(m_reporters.begin(), m_reporters.end());
  for (const Reporter& reporter : reporters) {
    if (IsRegistered(reporter)) reporter.target->Report(error);
  }
}

bool GlobalErrorList::IsRegistered(const Reporter& reporter) const {
  return std::any_of(m_reporters.begin(), m_reporters.end(),
                     [&reporter](const Reporter& present) { return present.registration == reporter.registration; });
}

// Empties lists that are no contexts any more, so that their errors outlive an Insert under way.
void GlobalErrorList::DropContexts(Contexts& contexts) {
  const KeepRemoved scope(*this);
  for (const auto& context : contexts) context.second->Clear(m_removed);
  contexts.clear();
}

const ErrorList* GlobalErrorList::Current() const { return m_current == m_contexts.end() ? nullptr : m_current->second.get(); }

bool ReportError(const Error& error, std::string context) {
  GlobalErrorList::Get().Insert(error, std::move(context));
  return false;
}
