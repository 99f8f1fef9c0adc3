#include "zelbase/errors/ErrorList.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "zelbase/errors/detail/EmptyError.h"
#include "zelbase/platform/LockGuard.h"

ErrorList::ErrorList(const ErrorList& other) : m_entries(other.CopyEntries()) {}

ErrorList& ErrorList::operator=(const ErrorList& other) {
  if (this == &other) return *this;
  Entries entries = other.CopyEntries();
  const LockGuard guard(m_lock);
  m_entries.swap(entries);
  return *this;
}

ErrorList& ErrorList::operator<<(const Error& error) {
  Removed removed;
  Insert(error, removed);
  return *this;
}

int ErrorList::NumErrors() const {
  const LockGuard guard(m_lock);
  return static_cast<int>(m_entries.size());
}

const Error& ErrorList::operator[](int index) const {
  const LockGuard guard(m_lock);
  if (index < 0 || static_cast<std::size_t>(index) >= m_entries.size()) return zelbase::detail::EmptyError();
  return *m_entries[static_cast<std::size_t>(index)].error;
}

const Error* ErrorList::GetErrorWithID(unsigned int id) const {
  const LockGuard guard(m_lock);
  const auto found = std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.error->ID() == id; });
  return found == m_entries.end() ? nullptr : found->error.get();
}

void ErrorList::Clear() {
  Removed removed;
  Clear(removed);
}

void ErrorList::ClearFromTime(const long long& time) {
  Removed removed;
  ClearFromTime(time, removed);
}

ErrorList::Entries ErrorList::CopyEntries() const {
  const LockGuard guard(m_lock);
  return m_entries;
}

// Copies before anything is removed: `error` may be the one that goes.
void ErrorList::Insert(const Error& error, Removed& removed) {
  const LockGuard guard(m_lock);
  const unsigned int signature = error.Signature();
  std::shared_ptr<const Error> copy(error.Copy());
  if (copy == nullptr) return;
  Entry entry{std::move(copy), 0};
  entry.signature = entry.error->Signature();

  RemoveEqual(signature, removed);
  // Kept: a repeat stands where its own time puts it, which may be further to the front; among equal times the newest is last.
  const auto place = std::upper_bound(m_entries.begin(), m_entries.end(), entry.error->ErrorTime(),
                                      [](long long time, const Entry& present) { return time < present.error->ErrorTime(); });
  m_entries.insert(place, std::move(entry));
  if (m_entries.size() > kMaximum) RemoveOldest(removed);
}

void ErrorList::Clear(Removed& removed) {
  const LockGuard guard(m_lock);
  RemoveFrom(m_entries.begin(), removed);
}

void ErrorList::ClearFromTime(long long time, Removed& removed) {
  const LockGuard guard(m_lock);
  const auto first = std::lower_bound(m_entries.begin(), m_entries.end(), time,
                                      [](const Entry& present, long long from) { return present.error->ErrorTime() < from; });
  // Kept: what goes is the younger part, from the time on; callers take back what a repeated step has reported.
  RemoveFrom(first, removed);
}

void ErrorList::RemoveFrom(Entries::iterator first, Removed& removed) {
  removed.reserve(removed.size() + static_cast<std::size_t>(m_entries.end() - first));
  for (auto entry = first; entry != m_entries.end(); ++entry) removed.push_back(std::move(entry->error));
  m_entries.erase(first, m_entries.end());
}

void ErrorList::RemoveEqual(unsigned int signature, Removed& removed) {
  const auto equal =
      std::find_if(m_entries.begin(), m_entries.end(), [signature](const Entry& entry) { return entry.signature == signature; });
  if (equal == m_entries.end()) return;
  removed.push_back(equal->error);
  m_entries.erase(equal);
}

void ErrorList::RemoveOldest(Removed& removed) {
  removed.push_back(m_entries.front().error);
  m_entries.pop_front();
}
