// A long job with a stop that it has to look for itself, an error message, and progress in nested parts. Neighbours:
// ParallelProcessor.h, which runs several at once; BaseWorkerThread.h, a job that repeats until it is ended.
#pragma once

#include <string>
#include <vector>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/concurrency/detail/Primitives.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// A nested part of a job: progress p of the part is p * scale + base of what encloses it.
struct ProgressPart {
  double base = 0.0;   // progress of the enclosing part when this one began
  double scale = 0.0;  // share of the enclosing part that this one covers
};

// Derive, and implement Process, which asks IsStopped between units of work.
//
//   bool DepthImport::Process() {
//     PushProgressPart(0.25);                              // reading is a quarter of the job
//     for (...) { if (IsStopped()) return false; ...; SetProgress(done); }
//     PopProgressPart();                                   // 0.25, however far SetProgress came
//     ...
//   }
//
// Two ways of nesting that do not meet: parts belong to one processor; a progress parent is another processor that gets, in
// place of this one, every value of SetProgress, past the parts of both.
//
// Any thread may call any operation of this class, but for the destructor. Not copyable.
class ZELBASE_API Processor {
 public:
  Processor() = default;
  virtual ~Processor() = default;
  Processor(const Processor&) = delete;
  Processor& operator=(const Processor&) = delete;

  // Ready for a run: not stopped, no error message, no progress. "Allow stop" and the progress parent stay. True; an
  // override that fails leaves an error message and returns false.
  virtual bool Initialize();

  // The job, on the calling thread. False when it failed; what went wrong is in the error message.
  virtual bool Process() = 0;

  // Progress of the whole job, 0 to 1: the innermost part's, carried outwards through all parts, and clamped at the end
  // alone. Not a number reads as 0.
  virtual double GetProgress() const;

  // Asks the job to end. It does so when it next asks IsStopped.
  virtual void Stop();

  bool IsStopped() const { return m_stopped; }

  // Whether the owner may offer a stop to its user; true at first. Stop does not ask.
  bool AllowStop() const { return m_allowStop; }
  void SetAllowStop(bool allow) { m_allowStop = allow; }

  std::string ErrorMessage() const;
  void SetErrorMessage(const std::string& message);

  // The processor that gets the progress of this one, not owned; null for none. It must outlive this one, or its place
  // here. Ignored when that would close a circle: when `parent` is this processor or has it for a parent itself.
  void SetProgressParent(Processor* parent);

  // Progress within the innermost part, 0 to 1 and kept as it is given. It goes to the topmost of the progress parents, if
  // there are any, and this processor's own stays.
  void SetProgress(double value);

  // Begins a part that covers the share `scale` of the present one, at the progress reached; the progress within it is 0.
  void PushProgressPart(double scale);

  // Ends the innermost part at the end of its share. Nothing when there is none.
  void PopProgressPart();

  // Leaves all parts, at progress 0.
  void ResetProgress();

 protected:
  // Progress as it is shown: 0 to 1, and 0 for not a number.
  static double ClampProgress(double value);

 private:
  zelbase::detail::Atomic<bool> m_stopped{false};
  zelbase::detail::Atomic<bool> m_allowStop{true};
  zelbase::detail::Atomic<Processor*> m_progressParent{nullptr};  // changed under a lock of all processors, so that no circle closes
  mutable Locker m_lock;
  std::string m_errorMessage ZELBASE_GUARDED_BY(m_lock);
  std::vector<ProgressPart> m_progressParts ZELBASE_GUARDED_BY(m_lock);
  double m_progress ZELBASE_GUARDED_BY(m_lock) = 0.0;
};
