#include "zelbase/time/CExTimeSync.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/PlatformProcesses.h"
#include "zelbase/platform/ThreadSafety.h"

constinit CExTimeSync::SampleStore CExTimeSync::m_samples;

namespace {

constexpr unsigned int kPeriodMilliseconds = 100;
constexpr double kLargestDifference = 1000.0;  // milliseconds
constexpr double kLargestSlope = 1.1;
constexpr double kSmallestSlope = 0.9;

// The object has storage of its own: a function-local static may not be reached again from its own constructor, and
// this one's is, by way of its CExTime.
alignas(CExTimeSync) constinit std::byte g_storage[sizeof(CExTimeSync)]{};
constinit std::atomic<CExTimeSync*> g_complete{nullptr};
constinit Locker g_lock;  // making, starting and ending
constinit bool g_begun ZELBASE_GUARDED_BY(g_lock) = false;

CExTimeSync* Storage() { return std::launder(reinterpret_cast<CExTimeSync*>(g_storage)); }

long long ProcessId() { return PlatformService<PlatformProcesses>::Current().CurrentId(); }

// Kept: each term is divided before it is added; the values lie near 1.4e12, and the order of rounding is part of the
// result.
double Mean(const double* values, int count) {
  double mean = 0.0;
  for (int i = 0; i < count; ++i) mean += values[i] / count;
  return mean;
}

}  // namespace

CExTimeSync& CExTimeSync::GetExTimeSync() {
  if (CExTimeSync* const complete = g_complete.load(std::memory_order_acquire)) return *complete;
  const LockGuard guard(g_lock);
  if (g_begun) return *Storage();
  g_begun = true;
  CExTimeSync* const made = new (g_storage) CExTimeSync;
  g_complete.store(made, std::memory_order_release);
  static_cast<void>(std::atexit(&CExTimeSync::EndAtExit));  // without it the thread ends with the process
  return *made;
}

CExTimeSync::CExTimeSync() : m_bStop(false) {
  m_exTime.GetCurTime();  // the base is established before the thread looks
  CExTimeSync::StartSync();
}

CExTimeSync::~CExTimeSync() {
  End();
  static_cast<void>(m_pThread.release());  // still there in a forked child only, where it is nobody's to free
}

bool CExTimeSync::StartSync() {
  const LockGuard guard(g_lock);
  if (m_pThread != nullptr || m_atExit) return true;
  m_bStop = false;
  m_processId = ProcessId();
  m_pThread = PlatformService<PlatformThreads>::Current().CreateSuspended([this] { ThreadProc(this); }, 0, 0);
  if (m_pThread == nullptr) return false;
  m_pThread->Resume();
  return true;
}

void CExTimeSync::EndAtExit() {
  const LockGuard guard(g_lock);
  g_complete.load()->m_atExit = true;
  g_complete.load()->End();
}

void CExTimeSync::End() {
  if (m_pThread == nullptr || m_processId != ProcessId()) return;  // a forked child has no thread to wait for
  m_bStop = true;
  m_stopEvent.Set();
  m_pThread->Wait(PlatformThread::kNoLimit);
  m_pThread.reset();
}

unsigned int CExTimeSync::ThreadProc(void* argument) {
  PlatformService<PlatformThreads>::Current().NameThread(PlatformThreads::kCallingThread, "CExTimeSync::ThreadProc");
  static_cast<CExTimeSync*>(argument)->ThreadFunction();
  return 0;
}

void CExTimeSync::ThreadFunction() {
  double a0 = 0.0, a1 = 1.0, p0 = 0.0;
  while (!m_bStop) {
    if (PlatformService<PlatformClock>::Current().Wait(m_stopEvent, kPeriodMilliseconds)) return;
    // Asked for anew: the clock that was waited in may be replaced, and gone, by now.
    const double systemTime = CExTime::MakeMilliSec(PlatformService<PlatformClock>::Current().WallClock());
    const double exTime = m_exTime.GetCurTime();
    if (CExTime::m_lastUtcUpdate.load(std::memory_order_relaxed) != 0.0) return;
    if (ComputeCoefficients(exTime, systemTime, a0, a1, p0) && !Publish(a0, a1, p0)) return;
  }
}

// False when an outside source has taken over meanwhile: its model stands.
bool CExTimeSync::Publish(double a0, double a1, double p0) const {
  const LockGuard guard(CExTime::m_lock);
  const double utcUpdate = CExTime::m_lastUtcUpdate.load(std::memory_order_relaxed);
  if (utcUpdate != 0.0) return false;
  CExTime::SetModel(a0, a1, p0, utcUpdate);
  return true;
}

bool CExTimeSync::ComputeCoefficients(double exTime, double systemTime, double& a0, double& a1, double& p0) {
  // Kept: exactly one second goes on, and so does a difference that is no number.
  if (std::fabs(exTime - systemTime) > kLargestDifference) {
    m_bStop = true;
    return false;
  }
  SampleStore& samples = m_samples;
  const auto next = static_cast<std::size_t>(samples.next);
  samples.x[next] = m_exTime.GetZelTime(exTime);  // the model off again: the fit always works on the raw scale
  samples.y[next] = systemTime;
  samples.next = (samples.next + 1) % kSamples;
  if (++samples.count < 2) return false;
  if (samples.count > kSamples) samples.count = kSamples;
  return FitLine(a0, a1, p0);
}

bool CExTimeSync::FitLine(double& a0, double& a1, double& p0) const {
  SampleStore& samples = m_samples;
  const auto count = static_cast<std::size_t>(samples.count);
  const double n = samples.count;
  const double meanX = Mean(samples.x.data(), samples.count);
  const double meanY = Mean(samples.y.data(), samples.count);
  double sx = 0.0, sy = 0.0, sxy = 0.0, sxx = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    const double dx = samples.dx[i] = samples.x[i] - meanX;
    const double dy = samples.dy[i] = samples.y[i] - meanY;
    sx += dx;
    sy += dy;
    sxy += dx * dy;
    sxx += dx * dx;
  }
  const double determinant = n * sxx - sx * sx;
  if (determinant == 0.0) return false;
  const double intercept = (sxx * sy - sxy * sx) / determinant;
  double slope = (n * sxy - sx * sy) / determinant;
  // Kept: the limits move the slope alone; the intercept stays that of the slope before, and a NaN stays.
  if (slope > kLargestSlope) {
    slope = kLargestSlope;
  } else if (slope < kSmallestSlope) {
    slope = kSmallestSlope;
  }
  a0 = intercept + meanY;
  a1 = slope;
  p0 = meanX;
  return true;
}
