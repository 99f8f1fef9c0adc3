// Whoever wants to hear of every reported error implements this. Neighbour: GlobalErrorList.h calls it.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class Error;

// Added with GlobalErrorList::AddReporter, which does not own it: remove it there before it goes.
class ZELBASE_API ErrorReporterBase {
 public:
  // Called once for each error that is reported, repeats included, on the thread that reports and under the lock of the
  // global list: be quick, and do not wait for another thread that reports. It may call the list. `error` is the caller's
  // object and ends with the call; keep a Copy() of what is to stay.
  virtual void Report(const Error& error) = 0;

 protected:
  ~ErrorReporterBase() = default;
};
