#include "zelbase/errors/Error.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/errors/detail/EmptyError.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/detail/IntendedWraps.h"

constinit std::atomic<int> Error::g_ErrorID{0};

namespace {

ZELBASE_WRAPS unsigned int NextId() {
  int id = 0;
  while (id == 0) id = static_cast<int>(static_cast<unsigned int>(Error::g_ErrorID.fetch_add(1)) + 1u);
  return static_cast<unsigned int>(id);
}

// Copies of this thread whose causes are still those of their source.
constinit thread_local Error* t_borrowing = nullptr;
constinit thread_local bool t_copying = false;

}  // namespace

// --- Destruction: a cause that goes while another one is being destroyed waits for its turn -------------------------------

struct Error::CauseDeleter {
  void operator()(Error* cause) const noexcept {
    constinit thread_local static Error* waiting = nullptr;
    constinit thread_local static bool destroying = false;
    cause->EndBorrowing();  // frees the link
    cause->m_next = waiting;
    waiting = cause;
    if (destroying) return;
    destroying = true;
    while (waiting != nullptr) {
      Error* const next = waiting;
      waiting = next->m_next;
      delete next;
    }
    destroying = false;
  }
};

// --- Copying: each inner copy first borrows the causes of its source, the outermost one then copies them level by level ----

class Error::CopyScope {
 public:
  CopyScope() { t_copying = true; }
  ~CopyScope() {
    t_copying = false;
    while (t_borrowing != nullptr) t_borrowing->EndBorrowing();  // only when a Copy() has thrown
  }
  CopyScope(const CopyScope&) = delete;
  CopyScope& operator=(const CopyScope&) = delete;
};

void Error::BeginBorrowing() {
  m_borrowing = true;
  m_next = t_borrowing;
  if (m_next != nullptr) m_next->m_previous = this;
  t_borrowing = this;
}

void Error::EndBorrowing() {
  if (!m_borrowing) return;
  (m_previous != nullptr ? m_previous->m_next : t_borrowing) = m_next;
  if (m_next != nullptr) m_next->m_previous = m_previous;
  m_previous = nullptr;
  m_next = nullptr;
  m_borrowing = false;
}

void Error::CopyBorrowedCauses() {
  EndBorrowing();
  Causes borrowed;
  borrowed.swap(m_causes);
  m_causes.reserve(borrowed.size());
  for (const std::shared_ptr<Error>& cause : borrowed) Hold(cause->Copy());
}

Error::Error() : m_id(NextId()), m_errorTime(PlatformService<PlatformClock>::Current().WallClock().seconds) {}

Error::Error(const Error& other)
    : m_causes(other.m_causes),
      m_id(other.m_id),
      m_errorTime(other.m_errorTime),
      m_severity(other.m_severity),
      m_acceptStatus(other.m_acceptStatus),
      m_activeStatus(other.m_activeStatus),
      m_sounding(other.m_sounding),
      m_showAlertWnd(other.m_showAlertWnd) {
  if (m_causes.empty()) return;
  BeginBorrowing();
  if (t_copying) return;
  const CopyScope scope;
  while (t_borrowing != nullptr) t_borrowing->CopyBorrowedCauses();
}

Error& Error::operator=(const Error& other) {
  if (this == &other) return *this;
  EndBorrowing();
  Causes causes = other.m_causes;
  if (m_isCause) {
    std::erase_if(causes, [this](const std::shared_ptr<Error>& cause) { return Leads(*cause, *this); });
  }
  m_id = other.m_id;
  m_errorTime = other.m_errorTime;
  m_severity = other.m_severity;
  m_acceptStatus = other.m_acceptStatus;
  m_activeStatus = other.m_activeStatus;
  m_sounding = other.m_sounding;
  m_showAlertWnd = other.m_showAlertWnd;
  m_causes.swap(causes);  // Kept: shared, not copied; whole-object moves of callers rely on the same causes afterwards
  return *this;
}

Error::~Error() { EndBorrowing(); }

// True when `to` is `from` or among its causes at any depth.
bool Error::Leads(const Error& from, const Error& to) {
  std::vector<const Error*> open{&from};
  std::unordered_set<const Error*> seen;
  while (!open.empty()) {
    const Error* const error = open.back();
    open.pop_back();
    if (error == &to) return true;
    if (!seen.insert(error).second) continue;
    for (const std::shared_ptr<Error>& cause : error->m_causes) open.push_back(cause.get());
  }
  return false;
}

// Appends a cause without a question. Null, and an object that has an owner, are passed over.
void Error::Hold(Error* cause) {
  if (cause == nullptr || cause->m_isCause) return;
  std::shared_ptr<Error> owned(cause, CauseDeleter());
  cause->m_isCause = true;
  m_causes.push_back(std::move(owned));
}

void Error::AddCause(Error* cause) {
  if (cause == nullptr || cause == this || cause->m_isCause) return;
  if (m_isCause && Leads(*cause, *this)) return;
  std::unique_ptr<Error> owned(cause);
  const unsigned int signature = cause->Signature();
  // Kept: compared with the causes there are, not with this error itself, and by signature alone, whatever the class.
  const bool known = std::any_of(m_causes.begin(), m_causes.end(),
                                 [signature](const std::shared_ptr<Error>& present) { return present->Signature() == signature; });
  if (known) return;
  Hold(owned.release());
}

void Error::AddCause(const Error& cause) { AddCause(cause.Copy()); }

void Error::ClearCauses() {
  Causes gone;
  gone.swap(m_causes);
}

int Error::NumCauses() const { return static_cast<int>(m_causes.size()); }

const Error& Error::GetCause(int index) const {
  if (index < 0 || index >= NumCauses()) return zelbase::detail::EmptyError();
  return *m_causes[static_cast<std::size_t>(index)];
}

void Error::Report(std::string context) const { ReportError(*this, std::move(context)); }
