// Where all errors of the process end up: one ErrorList for each named context, and the reporters that hear of every new
// error. Neighbours: Error.h is what is reported; ErrorReporterBase.h is who hears of it.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/errors/Error.h"
#include "zelbase/errors/ErrorList.h"
#include "zelbase/errors/ErrorReporterBase.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// A context is the name of a subsystem or a file; "General" is the default and always there. One context is the current
// one, and what takes no context works on it. What moves it:
//
//   Insert, Clear(context)        to the context named, which is made when it is new; "" is "General"
//   SetContext                    likewise
//   Clear()                       to "General", the only one left
//   FirstContext, NextContext     to an entry in the order of names, or behind the last one: then there is no current context
//                                 until one of the others is called
//
// To show the lists, walk them under the lock and put the context back:
//
//   GlobalErrorList& list = GlobalErrorList::Get();
//   list.Lock();
//   const std::string former = list.CurrentContext();
//   for (bool more = list.FirstContext(); more; more = list.NextContext())
//     for (int i = 0; i < list.NumErrors(false); ++i) Show(list.CurrentContext(), list[i]);
//   list.SetContext(former);
//   list.Unlock();
//
// Threads: any thread may call anything. All operations take one re-entrant lock, then that of the context's list. What
// operator[], Get(int) and GetErrorWithID give is valid while the lock is held and the error stays in its list. A process
// that forks while another of its threads is inside the list leaves the child's list locked, as any lock would be.
//
// At process exit all lists are destroyed and the reporters forgotten. What is reported after that, by destructors of other
// statics, is dropped in silence; every other operation finds nothing.
class ZELBASE_API GlobalErrorList {
 public:
  // The one list of the process, made at first use, by whichever thread comes first.
  static GlobalErrorList& Get();

  GlobalErrorList(const GlobalErrorList&) = delete;
  GlobalErrorList& operator=(const GlobalErrorList&) = delete;

  // Makes `context` current, stores a Copy() of `error` there and tells the reporters, in the order of their registration.
  // They get `error` itself, not the copy, on a repeat too. `error` may be one that is stored here: whatever leaves a list
  // meanwhile is kept until the reporters have been called.
  //
  // A reporter that reports in its turn is told of that as well, up to 16 calls deep; what is reported further down is stored
  // and not told. Reporters removed in a reporter's call are passed over at once; one added hears from the next error on.
  // An exception of a reporter passes out; the error is stored.
  GlobalErrorList& Insert(const Error& error, std::string context = "");

  // "General".
  const std::string DefaultContext() const;

  // Empty when there is no current context.
  const std::string CurrentContext() const;

  // Names are compared exactly.
  void SetContext(const std::string& context);

  // True when there is a current context afterwards. NextContext without one is false.
  bool FirstContext();
  bool NextContext();

  // Over all contexts, or of the current one; 0 when there is none.
  int NumErrors(bool allContexts) const;

  // The error at `index` of the current context, 0 the oldest. Out of range, or without a current context: the empty error of
  // Error::GetCause here, null from Get.
  const Error& operator[](int index) const;
  const Error* Get(int index) const;

  // The error with that id, looked for in all contexts in the order of their names; null when there is none.
  // Kept: when one is found the lock STAYS HELD, so that the pointer is safe; the caller calls Unlock() when done with it.
  const Error* GetErrorWithID(unsigned int id) const ZELBASE_NO_THREAD_CHECK;

  // Destroys all contexts; "General" is made anew.
  void Clear();

  // Kept: makes `context` current, and makes it when there is none, before it is emptied.
  void Clear(const std::string& context);

  // ErrorList::ClearFromTime on every context.
  void ClearFromTime(const long long& time);

  // Appends a reporter, not owned. Null is ignored; one added twice is called twice.
  void AddReporter(ErrorReporterBase* reporter);

  // Removes it as often as it was added.
  void RemoveReporter(ErrorReporterBase* reporter);

  // For several operations in one. Re-entrant; Unlock by a thread that does not hold the lock is ignored.
  void Lock() ZELBASE_NO_THREAD_CHECK;  // these and GetErrorWithID: held beyond the call
  void Unlock() ZELBASE_NO_THREAD_CHECK;

  // Kept: does nothing. Hosts still call it; there is no log file.
  void SetLogFileName(const std::string& fileName);

 private:
  class KeepRemoved;
  struct Reporter {
    ErrorReporterBase* target;
    unsigned long long registration;  // tells a reporter removed and added again from the former one
  };
  using Contexts = std::map<std::string, std::unique_ptr<ErrorList>>;

  GlobalErrorList();
  ~GlobalErrorList() = default;

  static GlobalErrorList& Instance();
  void Close();
  void MakeGeneral() ZELBASE_REQUIRES(m_lock);
  void Select(const std::string& context) ZELBASE_REQUIRES(m_lock);
  void TellReporters(const Error& error) const ZELBASE_REQUIRES(m_lock);
  bool IsRegistered(const Reporter& reporter) const ZELBASE_REQUIRES(m_lock);
  void DropContexts(Contexts& contexts) ZELBASE_REQUIRES(m_lock);
  const ErrorList* Current() const ZELBASE_REQUIRES(m_lock);

  static constexpr int kDeepestTold = 16;

  mutable Locker m_lock;
  Contexts m_contexts ZELBASE_GUARDED_BY(m_lock);
  Contexts::iterator m_current ZELBASE_GUARDED_BY(m_lock);
  std::list<Reporter> m_reporters ZELBASE_GUARDED_BY(m_lock);
  unsigned long long m_registrations ZELBASE_GUARDED_BY(m_lock) = 0;
  int m_depth ZELBASE_GUARDED_BY(m_lock) = 0;               // operations under way, one inside the other, that may remove errors
  ErrorList::Removed m_removed ZELBASE_GUARDED_BY(m_lock);  // what has left the lists since the outermost of them began
  bool m_closed ZELBASE_GUARDED_BY(m_lock) = false;         // the process is ending
};

// GlobalErrorList::Insert, then false: a function fails and reports in one line, `return ReportError(...);`.
ZELBASE_API bool ReportError(const Error& error, std::string context = "");
