// The clock discipline: one thread that keeps the suite's time true to the wall clock. Neighbours: CExTime.h, the time
// itself, whose clock model this publishes; PlatformClock.h, the clocks that are compared.
#pragma once

#include <array>
#include <atomic>
#include <memory>

#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/PlatformThreads.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/time/CExTime.h"

// The one discipline of the process. Nobody needs to call it: the first CExTime starts it. Ten times a second, and
// never more often, its thread compares the suite's time with the wall clock, fits a straight line through the last 60
// comparisons and publishes that line as the clock model: smooth as the counter over short spans, true as the wall
// clock over long ones.
//
//   state                   entered by                             left by
//   not started             start of the process                   the first CExTime or GetExTimeSync
//   collecting              start of the thread                    the second sample
//   tracking                the second sample                      one of the ends
//   ended, outside source   SetUtcCoeffs                           never
//   ended, clock step       clocks more than 1000 ms apart         never
//   ended, asked            exit of the process                    never
//
// After an end the last published model stays in force. Nothing reports an end; GetUtcUpdateAge tells whether an
// outside source was ever heard from.
//
// Life: made at first use, where a second first user waits until it is complete; its thread is stopped and waited for
// at exit, and the object itself then remains, so that what runs later may still make a CExTime, which starts nothing.
// In a forked child there is no thread; the child goes on with the model it was born with.
//
// Threads: every public operation may be called from any thread at once.
class ZELBASE_API CExTimeSync {
 public:
  // Stops the thread and waits for it.
  virtual ~CExTimeSync();

  CExTimeSync(const CExTimeSync&) = delete;
  CExTimeSync& operator=(const CExTimeSync&) = delete;

  // Starts the thread if it was never started; one that has ended by itself is not started again. True, unless the
  // system refuses a thread: then false, and a later call tries again.
  virtual bool StartSync();

  // The one object. Makes it, and thereby starts the thread, at the first call.
  static CExTimeSync& GetExTimeSync();

 private:
  static constexpr int kSamples = 60;

  // The comparisons of the last six seconds, and room for the fit. Used by one thread at a time.
  struct SampleStore {
    int count = 0;                            // 0..60
    int next = 0;                             // where the next sample goes, 0..59
    std::array<double, kSamples> y{};         // wall clock, milliseconds
    std::array<double, kSamples> x{};         // raw time, milliseconds
    std::array<double, kSamples> dx{}, dy{};  // the samples less their means
  };

  CExTimeSync();

  static unsigned int ThreadProc(void* argument);
  void ThreadFunction();

  // Takes one comparison of the suite's time with the wall clock, both in milliseconds, and fits the line
  // time = a0 + (raw - p0) * a1 through the samples, a1 held within 0.9..1.1. True when a0, a1 and p0 have been written
  // and are to be published. False, outputs untouched: fewer than two samples, all samples at one raw time, or more
  // than 1000 ms apart, which stores nothing and asks the thread to end.
  bool ComputeCoefficients(double exTime, double systemTime, double& a0, double& a1, double& p0);

  bool FitLine(double& a0, double& a1, double& p0) const;
  bool Publish(double a0, double a1, double p0) const;
  void End();
  static void EndAtExit();

  static SampleStore m_samples;

  std::atomic<bool> m_bStop;                  // the thread is to end; set by it, too, when the clocks have parted
  std::unique_ptr<PlatformThread> m_pThread;  // null until started
  CExTime m_exTime;                           // the thread's handle on the clock
  PlatformEvent m_stopEvent;                  // cuts the wait between two comparisons short
  long long m_processId = 0;                  // the process that the thread lives in
  bool m_atExit = false;                      // the exit has ended the thread: none is started any more
};
