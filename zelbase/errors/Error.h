// The base of all failures: a value that can be copied, compared by signature, chained to its causes and reported.
// Neighbours: GenericError.h, FileError.h and FileObjectError.h are the kinds there are; GlobalErrorList.h is where reported
// errors go; ErrorString.h is the small result type of functions that answer with success or a text.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "zelbase/errors/ErrorStatus.h"
#include "zelbase/platform/ZelBaseApi.h"

// An error is made where something fails, usually as a local object, and reported; the lists keep a Copy() of it. Its
// texts are formed when they are asked for, so that a running system can be worded anew.
//
//   FileError error("C:\\survey\\line.ini", FileError::Read);
//   error.AddCause(GenericError("The network share is gone."));
//   error.Report("Sonar");
//
// Copies. The copy constructor makes the same error once more: same id, same time, same marks, and copies of all causes.
// The assignment takes over everything too, but SHARES the causes with its source until either changes its own; the last
// holder frees them. So assign whole objects only, and do not change a cause through a pointer kept from before.
//
// Causes may nest to any depth: copying and destroying them needs no more stack for a million than for one. That is why a
// class derived from this one copies itself in Copy() through its copy constructor: `return new Derived(*this);`. While such
// a copy is under way the causes of the inner copies are taken over one level at a time, and are complete when the outermost
// copy is.
//
// Threads: the id counter may be used by all threads at once; an object belongs to one thread at a time.
class ZELBASE_API Error {
 public:
  using SEVERITY = ::SEVERITY;
  using ACCEPT_STATUS = ::ACCEPT_STATUS;
  using ACTIVE_STATUS = ::ACTIVE_STATUS;

  // The id given last; counts up by one an error and passes over 0, also when it comes round through the negative numbers.
  static std::atomic<int> g_ErrorID;

  // Takes the next id and the wall clock's whole seconds.
  Error();
  Error(const Error& other);

  // Kept: shares the causes, where the copy constructor copies them. A cause through which this object itself would come
  // to be its own cause is left out. When `other` lives among the causes that this object gives up, it dies with them:
  // derived classes take over their own fields first.
  Error& operator=(const Error& other);

  virtual ~Error();

  // The kind of error, for a title.
  virtual const std::string Type() const = 0;

  // The message in one line.
  virtual const std::string Format() const = 0;

  // What there is to know beyond the message.
  virtual const std::string Details() const = 0;

  // A new object of the very class, owned by the caller.
  virtual Error* Copy() const = 0;

  // A checksum over the content, by which repeats are told. It does not cover id, time, marks and causes, so that two errors
  // of the same content have the same signature; errors of different content, or of different classes, may collide. Constant
  // as long as the object is not changed.
  virtual unsigned int Signature() const = 0;

  // Unique in the process and never 0 as given; copies have the id of their source.
  unsigned int ID() const { return m_id; }
  void SetID(unsigned int id) { m_id = id; }

  // Whole seconds since 1970-01-01 00:00:00 UTC. Any value may be set.
  long long ErrorTime() const { return m_errorTime; }
  void SetErrorTime(long long time) { m_errorTime = time; }

  // Marks for whoever shows the error; not read in this library. Initially 1, 0, 0.
  SEVERITY Severity() const { return m_severity; }
  void SetSeverity(SEVERITY severity) { m_severity = severity; }
  ACCEPT_STATUS AcceptStatus() const { return m_acceptStatus; }
  void SetAcceptStatus(ACCEPT_STATUS status) { m_acceptStatus = status; }
  ACTIVE_STATUS ActiveStatus() const { return m_activeStatus; }
  void SetActiveStatus(ACTIVE_STATUS status) { m_activeStatus = status; }

  // Whether the alert for this error is to sound (initially not), and whether an alert window is to be shown (initially so).
  bool IsSounding() const { return m_sounding; }
  void SetSounding(bool sounding) { m_sounding = sounding; }
  bool IsShowAlertWnd() const { return m_showAlertWnd; }
  void SetShowAlertWnd(bool show) { m_showAlertWnd = show; }

  // Takes ownership of `cause` and appends it. A cause whose signature equals that of one already there is destroyed instead.
  // Ignored and left to its owner: null, this object itself, an object that is some error's cause already, and one that has
  // this object among its own causes.
  void AddCause(Error* cause);

  // The same with a copy of `cause`, which may be this object.
  void AddCause(const Error& cause);

  // Destroys all causes (those shared with another object when that one lets them go).
  void ClearCauses();

  int NumCauses() const;

  // The cause at `index`, in the order of adding; valid until the causes change. Out of range: an empty GenericError, always
  // the same one, with id 0 and time 0.
  const Error& GetCause(int index) const;

  // Gives this error to the global error list, under `context`; an empty name is "General".
  void Report(std::string context = "") const;

 private:
  struct CauseDeleter;
  class CopyScope;
  using Causes = std::vector<std::shared_ptr<Error>>;

  static bool Leads(const Error& from, const Error& to);
  void Hold(Error* cause);
  void BeginBorrowing();
  void EndBorrowing();
  void CopyBorrowedCauses();

  Causes m_causes;
  unsigned int m_id = 0;
  long long m_errorTime = 0;
  SEVERITY m_severity = SEVERITY_INITIAL;
  ACCEPT_STATUS m_acceptStatus = ACCEPT_STATUS_INITIAL;
  ACTIVE_STATUS m_activeStatus = ACTIVE_STATUS_INITIAL;
  bool m_sounding = false;
  bool m_showAlertWnd = true;

  bool m_isCause = false;       // some error owns this object
  bool m_borrowing = false;     // in this thread's list of copies whose causes are still the source's
  Error* m_previous = nullptr;  // links of that list; m_next also links the causes that wait for destruction
  Error* m_next = nullptr;
};
