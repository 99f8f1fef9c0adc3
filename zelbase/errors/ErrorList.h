// The errors of one context: ordered by time, limited in number, each content once. Neighbour: GlobalErrorList.h has one of
// these for every context of the process.
#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/errors/Error.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// What always holds for errors that came by <<:
// (1) they stand by time, oldest first, and among equal times in the order of insertion;
// (2) there are at most 250; the oldest goes when one more comes, also when the new one itself is the oldest;
// (3) no two have the same signature: a repeat takes the place of the older one, and stands where its own time puts it, which
//     may be further to the front.
//
// A stored error is not changed any more, so its signature is asked for once, when it is stored.
//
// Copies share the errors with their source; the last holder frees them. Copying is not for lists that others change.
//
// Threads: every operation locks the list for its own time. What operator[] and GetErrorWithID give is valid until the error
// is removed: hold the global list's lock, or own the list, while using it.
class ZELBASE_API ErrorList {
 public:
  ErrorList() = default;
  ~ErrorList() = default;

  // A copy has a lock of its own.
  ErrorList(const ErrorList& other);
  ErrorList& operator=(const ErrorList& other);

  // Stores a Copy() of `error`, with its id and time. `error` may be one of the list's own.
  ErrorList& operator<<(const Error& error);

  int NumErrors() const;

  // The error at `index`, 0 the oldest. Out of range: the empty error of Error::GetCause.
  const Error& operator[](int index) const;

  // The first stored error with that id, or null.
  const Error* GetErrorWithID(unsigned int id) const;

  void Clear();

  // Kept: removes the errors FROM `time` (seconds since 1970) on, one at `time` included; the older ones stay.
  void ClearFromTime(const long long& time);

 private:
  friend class GlobalErrorList;

  struct Entry {
    std::shared_ptr<const Error> error;
    unsigned int signature;
  };
  using Entries = std::deque<Entry>;

  // Errors that have left a list and end when this does.
  using Removed = std::vector<std::shared_ptr<const Error>>;

  void Insert(const Error& error, Removed& removed);
  void Clear(Removed& removed);
  void ClearFromTime(long long time, Removed& removed);

  Entries CopyEntries() const;
  void RemoveFrom(Entries::iterator first, Removed& removed) ZELBASE_REQUIRES(m_lock);
  void RemoveEqual(unsigned int signature, Removed& removed) ZELBASE_REQUIRES(m_lock);
  void RemoveOldest(Removed& removed) ZELBASE_REQUIRES(m_lock);

  static constexpr int kMaximum = 250;

  mutable Locker m_lock;
  Entries m_entries ZELBASE_GUARDED_BY(m_lock);
};
