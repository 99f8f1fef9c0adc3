#include "zelbase/platform/SimulatedClock.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <thread>
#include <utility>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/CivilDate.h"
#include "zelbase/platform/detail/IntendedWraps.h"
#include "zelbase/platform/detail/Mutex.h"

namespace {

using zelbase::detail::Condition;
using zelbase::detail::FloorDivide;
using zelbase::detail::Mutex;
using zelbase::detail::PausableGuard;

constexpr long long kNanosecondsPerMillisecond = 1000000;
constexpr long long kNanosecondsPerSecond = 1000000000;
constexpr long long kMicrosecondsPerSecond = 1000000;
constexpr long long kEndOfTime = 36525LL * 86400 * kNanosecondsPerSecond;  // 100 years
constexpr long long kNever = std::numeric_limits<long long>::max();
constexpr double kLastWallMilliseconds = 25000 * 365.25 * 86400e3;
constexpr double kGreatestDrift = 900000.0;

// A distance or goal on the line of simulated time, in nanoseconds.
long long ToNanoseconds(double milliseconds) {
  if (!(milliseconds > 0.0)) return 0;
  const double nanoseconds = milliseconds * 1e6;
  return nanoseconds >= static_cast<double>(kEndOfTime) ? kEndOfTime : std::llround(nanoseconds);
}

double ToMilliseconds(long long nanoseconds) { return static_cast<double>(nanoseconds) / 1e6; }

}  // namespace

// Everything that is guarded by the one mutex. Held by the clock, and weakly by each thread that has slept in it.
class SimulatedClock::State : public std::enable_shared_from_this<State> {
 public:
  explicit State(double wallMilliseconds) { SetWall(wallMilliseconds); }

  // Readings

  long long Counter() const {
    const LockGuard guard(m_mutex);
    return CounterNow();
  }
  long long Frequency() const {
    const LockGuard guard(m_mutex);
    return m_frequency;
  }
  ZELBASE_WRAPS unsigned int Tick() const {
    const LockGuard guard(m_mutex);
    return m_tickOffset + static_cast<unsigned int>(m_now / kNanosecondsPerMillisecond);
  }
  WallClockReading WallClock() const {
    const LockGuard guard(m_mutex);
    const long long wall = WallNow();
    WallClockReading reading;
    reading.seconds = FloorDivide(wall, kMicrosecondsPerSecond);
    reading.milliseconds = static_cast<int>((wall - reading.seconds * kMicrosecondsPerSecond) / 1000);
    reading.daylight = m_daylight;
    return reading;
  }
  long Zone() const {
    const LockGuard guard(m_mutex);
    return m_zone;
  }
  bool Daylight() const {
    const LockGuard guard(m_mutex);
    return m_daylight;
  }
  double Elapsed() const {
    const LockGuard guard(m_mutex);
    return ToMilliseconds(m_now);
  }
  std::size_t Sleepers() const {
    const LockGuard guard(m_mutex);
    return m_sleepers.size();
  }
  unsigned long long Waits() const {
    const LockGuard guard(m_mutex);
    return m_waits;
  }
  double ShortestBetweenWakes() const {
    const LockGuard guard(m_mutex);
    return m_shortest == kNever ? std::numeric_limits<double>::infinity() : ToMilliseconds(m_shortest);
  }
  std::vector<SYSTEMTIME> ClockSettings() const {
    const LockGuard guard(m_mutex);
    return m_settings;
  }

  // Settings

  void SetFrequency(long long countsPerSecond) {
    if (countsPerSecond < 1000 || countsPerSecond > kNanosecondsPerSecond) return;
    const LockGuard guard(m_mutex);
    AnchorCounter(CounterNow());
    m_frequency = countsPerSecond;
  }
  void SetCounter(long long counts) {
    const LockGuard guard(m_mutex);
    AnchorCounter(counts);
  }
  void SetTick(unsigned int milliseconds) {
    const LockGuard guard(m_mutex);
    m_tickOffset = milliseconds - static_cast<unsigned int>(m_now / kNanosecondsPerMillisecond);
  }
  void SetWall(double milliseconds) {
    if (std::isnan(milliseconds)) return;
    const LockGuard guard(m_mutex);
    AnchorWall(milliseconds, 0);
  }
  void StepWall(double milliseconds) {
    if (std::isnan(milliseconds)) return;
    const LockGuard guard(m_mutex);
    AnchorWall(milliseconds, WallNow());
  }
  void SetZone(long secondsWest) {
    const LockGuard guard(m_mutex);
    m_zone = std::clamp(secondsWest, -86400L, 86400L);
  }
  void SetDaylight(bool inForce) {
    const LockGuard guard(m_mutex);
    m_daylight = inForce;
  }
  void SetDrift(double partsPerMillion) {
    if (std::isnan(partsPerMillion)) return;
    const LockGuard guard(m_mutex);
    AnchorWall(0.0, WallNow());
    m_drift = std::clamp(partsPerMillion, -kGreatestDrift, kGreatestDrift) * 1e-6;
  }
  void RefuseSetting(bool refuse) {
    const LockGuard guard(m_mutex);
    m_refuse = refuse;
  }
  bool SetSystemClock(const SYSTEMTIME& utc) {
    const LockGuard guard(m_mutex);
    if (m_refuse || !zelbase::detail::IsValidSystemTime(utc)) return false;
    m_settings.push_back(utc);
    const long long seconds = zelbase::detail::SecondsFromSystemTime(utc);
    AnchorWall(static_cast<double>(utc.wMilliseconds), seconds * kMicrosecondsPerSecond);
    return true;
  }
  void At(double milliseconds, std::function<void()> action) {
    const LockGuard guard(m_mutex);
    m_actions.emplace(ToNanoseconds(milliseconds), std::move(action));
  }
  void ResetCounts() {
    const LockGuard guard(m_mutex);
    m_waits = 0;
    m_shortest = kNever;
    for (auto& [id, participant] : m_participants) participant.lastWake = kNever;
  }

  // Movement

  void Advance(double milliseconds) {
    const LockGuard guard(m_mutex);
    if (!BeginMovement()) return;
    const long long goal = std::min(m_now + ToNanoseconds(milliseconds), kEndOfTime);
    while (!m_actions.empty() && m_actions.begin()->first <= goal) RunFirstAction();
    JumpTo(goal);
  }

  void Suspend(double milliseconds, Suspended mode) {
    if (!(milliseconds > 0.0)) return;
    if (mode == Suspended::WallOnly) return StepWall(milliseconds);
    const LockGuard guard(m_mutex);
    if (!BeginMovement()) return;
    m_now = std::min(m_now + ToNanoseconds(milliseconds), kEndOfTime);
    while (!m_actions.empty() && m_actions.begin()->first <= m_now) RunFirstAction();
    JumpTo(m_now);
  }

  std::size_t RunTo(double milliseconds, bool fromNow) {
    const LockGuard guard(m_mutex);
    if (ActingHere()) return m_sleepers.size();
    LeaveHolding();
    const long long goal = Goal(milliseconds, fromNow);
    const auto place = m_runGoals.insert(goal);
    for (;;) {
      MoveOn();
      if (m_now >= goal && IsSettled()) break;
      m_settled.Wait(m_mutex);
    }
    m_runGoals.erase(place);
    return m_sleepers.size();
  }

  void LetRunTo(double milliseconds, bool fromNow) {
    const LockGuard guard(m_mutex);
    m_allowed = std::max(m_allowed, Goal(milliseconds, fromNow));
    MoveOn();
  }

  void Leave() {
    const LockGuard guard(m_mutex);
    LeaveHolding();
    MoveOn();
  }

  void WaitForSleepers(std::size_t count) {
    const LockGuard guard(m_mutex);
    if (ActingHere()) return;
    LeaveHolding();
    MoveOn();
    while (m_sleepers.size() < count) m_sleeperCame.Wait(m_mutex);
  }

  // Sleeping. Without an event the result is false.
  bool Sleep(unsigned int milliseconds, PlatformEvent* event);

  void Close() {
    const LockGuard guard(m_mutex);
    m_closed = true;
    while (!m_sleepers.empty()) Rouse(*m_sleepers.back());
  }

  void ThreadEnds() {
    const LockGuard guard(m_mutex);
    LeaveHolding();
    m_participants.erase(std::this_thread::get_id());
    MoveOn();
  }

 private:
  // A thread that has slept here, from then on until it ends.
  struct Participant {
    bool awake = false;           // counted in m_awake: holds up a run
    long long lastWake = kNever;  // kNever: none yet
  };

  // One Sleep or Wait under way. On the list m_sleepers exactly while `asleep`.
  struct Sleeper : PlatformEvent::Observer {
    explicit Sleeper(State& owner) : state(owner) {}
    void OnSet() override {
      const LockGuard guard(state.m_mutex);
      signalled = true;
      if (asleep) state.Rouse(*this);
    }

    State& state;
    Participant* who = nullptr;
    long long limit = kNever;
    bool asleep = false;
    bool signalled = false;  // the event was set since it was last looked at
    Condition roused;
  };

  // The functions below are called with the mutex held; RunFirstAction lets it go while the action runs, and so do those
  // that call it.

  ZELBASE_WRAPS long long CounterNow() const ZELBASE_REQUIRES(m_mutex) {
    const long long elapsed = m_now - m_counterSince;
    const long long counts =
        elapsed / kNanosecondsPerSecond * m_frequency + elapsed % kNanosecondsPerSecond * m_frequency / kNanosecondsPerSecond;
    return static_cast<long long>(static_cast<unsigned long long>(m_counterBase) + static_cast<unsigned long long>(counts));
  }

  void AnchorCounter(long long counts) ZELBASE_REQUIRES(m_mutex) {
    m_counterBase = counts;
    m_counterSince = m_now;
  }

  // Microseconds since 1970. Always from the last anchor, so that it does not matter how often the clock is read.
  long long WallNow() const ZELBASE_REQUIRES(m_mutex) {
    const long long elapsed = m_now - m_wallSince;
    const long long gained = std::llround(static_cast<double>(elapsed) * m_drift);
    return m_wallBase + FloorDivide(elapsed + gained, 1000);
  }

  void AnchorWall(double milliseconds, long long fromMicroseconds) ZELBASE_REQUIRES(m_mutex) {
    constexpr long long kLast = static_cast<long long>(kLastWallMilliseconds) * 1000;
    const double bounded = std::clamp(milliseconds, -2.0 * kLastWallMilliseconds, 2.0 * kLastWallMilliseconds);
    m_wallBase = std::clamp(fromMicroseconds + std::llround(bounded * 1e3), -kLast, kLast);
    m_wallSince = m_now;
  }

  long long Goal(double milliseconds, bool fromNow) const ZELBASE_REQUIRES(m_mutex) {
    return std::min(ToNanoseconds(milliseconds) + (fromNow ? m_now : 0), kEndOfTime);
  }

  bool ActingHere() const ZELBASE_REQUIRES(m_mutex) { return m_acting && m_actor == std::this_thread::get_id(); }

  // Waits until no other thread runs an action. False for a caller inside an action.
  bool BeginMovement() ZELBASE_REQUIRES(m_mutex) {
    if (ActingHere()) return false;
    LeaveHolding();
    while (m_acting) m_settled.Wait(m_mutex);
    return true;
  }

  void JumpTo(long long goal) ZELBASE_REQUIRES(m_mutex) {
    m_now = std::max(m_now, goal);
    RouseDue();
    MoveOn();
  }

  void RunFirstAction() noexcept ZELBASE_REQUIRES(m_mutex) {
    m_now = std::max(m_now, m_actions.begin()->first);
    const std::function<void()> action = std::move(m_actions.begin()->second);
    m_actions.erase(m_actions.begin());
    if (!action) return;
    m_acting = true;
    m_actor = std::this_thread::get_id();
    m_mutex.unlock();
    action();
    m_mutex.lock();
    m_acting = false;
    m_settled.NotifyAll();
  }

  long long NextAction() const ZELBASE_REQUIRES(m_mutex) { return m_actions.empty() ? kNever : m_actions.begin()->first; }

  long long EarliestLimit() const ZELBASE_REQUIRES(m_mutex) {
    long long earliest = kNever;
    for (const Sleeper* const sleeper : m_sleepers) earliest = std::min(earliest, sleeper->limit);
    return earliest;
  }

  // How far the clock may go by itself: to the goal of a run, or with a sleeper that was allowed to carry it.
  long long Reach() const ZELBASE_REQUIRES(m_mutex) {
    const long long carried = EarliestLimit();
    const long long byRun = m_runGoals.empty() ? m_now : *m_runGoals.rbegin();
    return std::max({m_now, byRun, carried <= m_allowed ? carried : m_now});
  }

  // Moves from event to event while nobody is awake, as far as the clock may go.
  void MoveOn() ZELBASE_REQUIRES(m_mutex) {
    if (m_acting) return;  // that thread goes on from here
    while (m_awake == 0) {
      const long long reach = Reach();
      const long long action = NextAction();
      const long long limit = EarliestLimit();
      if (std::min(action, limit) > reach) {
        m_now = reach;
        m_settled.NotifyAll();
        return;
      }
      if (action <= limit) {
        RunFirstAction();
      } else {
        m_now = std::max(m_now, limit);
        RouseDue();
      }
    }
  }

  // Unreached: nobody awake and something due, since MoveOn, under the same hold of the mutex, deals with that.
  bool IsSettled() const ZELBASE_REQUIRES(m_mutex) { return m_awake == 0 && !m_acting && EarliestLimit() > m_now && NextAction() > m_now; }

  ZELBASE_WRAPS void RouseDue() ZELBASE_REQUIRES(m_mutex) {
    for (std::size_t i = m_sleepers.size(); i-- > 0;) {
      if (m_sleepers[i]->limit <= m_now) Rouse(*m_sleepers[i]);
    }
  }

  void Rouse(Sleeper& sleeper) ZELBASE_REQUIRES(m_mutex) {
    m_sleepers.erase(std::find(m_sleepers.begin(), m_sleepers.end(), &sleeper));
    sleeper.asleep = false;
    SetAwake(*sleeper.who, true);
    sleeper.roused.NotifyOne();
  }

  void FallAsleep(Sleeper& sleeper) ZELBASE_REQUIRES(m_mutex) {
    SetAwake(*sleeper.who, false);
    sleeper.asleep = true;
    m_sleepers.push_back(&sleeper);
    m_sleeperCame.NotifyAll();
  }

  void SetAwake(Participant& participant, bool awake) ZELBASE_REQUIRES(m_mutex) {
    if (participant.awake == awake) return;
    participant.awake = awake;
    m_awake += awake ? 1 : -1;
  }

  void LeaveHolding() ZELBASE_REQUIRES(m_mutex) {
    const auto found = m_participants.find(std::this_thread::get_id());
    if (found != m_participants.end()) SetAwake(found->second, false);
  }

  Participant& EnterHolding() ZELBASE_REQUIRES(m_mutex);

  void CountWake(Participant& participant) ZELBASE_REQUIRES(m_mutex) {
    if (participant.lastWake != kNever) m_shortest = std::min(m_shortest, m_now - participant.lastWake);
    participant.lastWake = m_now;
  }

  mutable Mutex m_mutex;
  Condition m_settled;  // a run may be over, or an action is
  Condition m_sleeperCame;

  long long m_now ZELBASE_GUARDED_BY(m_mutex) = 0;  // nanoseconds
  long long m_frequency ZELBASE_GUARDED_BY(m_mutex) = 10000000;
  long long m_counterBase ZELBASE_GUARDED_BY(m_mutex) = 0;  // the counter at m_counterSince
  long long m_counterSince ZELBASE_GUARDED_BY(m_mutex) = 0;
  unsigned int m_tickOffset ZELBASE_GUARDED_BY(m_mutex) = 0;
  long long m_wallBase ZELBASE_GUARDED_BY(m_mutex) = 0;  // the wall clock at m_wallSince, microseconds
  long long m_wallSince ZELBASE_GUARDED_BY(m_mutex) = 0;
  double m_drift ZELBASE_GUARDED_BY(m_mutex) = 0.0;  // gain per unit of counter time
  long m_zone ZELBASE_GUARDED_BY(m_mutex) = 0;
  bool m_daylight ZELBASE_GUARDED_BY(m_mutex) = false;
  bool m_refuse ZELBASE_GUARDED_BY(m_mutex) = false;
  std::vector<SYSTEMTIME> m_settings ZELBASE_GUARDED_BY(m_mutex);

  std::multimap<long long, std::function<void()>> m_actions ZELBASE_GUARDED_BY(m_mutex);
  bool m_acting ZELBASE_GUARDED_BY(m_mutex) = false;  // a thread runs an action, without the mutex
  std::thread::id m_actor ZELBASE_GUARDED_BY(m_mutex);

  std::multiset<long long> m_runGoals ZELBASE_GUARDED_BY(m_mutex);  // of the runs under way
  long long m_allowed ZELBASE_GUARDED_BY(m_mutex) = 0;              // by LetRunUntil
  std::vector<Sleeper*> m_sleepers ZELBASE_GUARDED_BY(m_mutex);
  std::map<std::thread::id, Participant> m_participants ZELBASE_GUARDED_BY(m_mutex);
  int m_awake ZELBASE_GUARDED_BY(m_mutex) = 0;        // participants awake
  bool m_closed ZELBASE_GUARDED_BY(m_mutex) = false;  // the clock is destroyed: nobody sleeps any more

  unsigned long long m_waits ZELBASE_GUARDED_BY(m_mutex) = 0;
  long long m_shortest ZELBASE_GUARDED_BY(m_mutex) = kNever;
};

namespace {

// Tells the clocks that a thread has slept in of its end. A template only because the state's class is private.
template <class State>
class ClocksOfThisThread {
 public:
  ClocksOfThisThread() = default;
  ClocksOfThisThread(const ClocksOfThisThread&) = delete;
  ClocksOfThisThread& operator=(const ClocksOfThisThread&) = delete;
  ~ClocksOfThisThread() {
    Ended() = true;
    for (const std::weak_ptr<State>& clock : m_clocks) {
      if (const std::shared_ptr<State> state = clock.lock()) state->ThreadEnds();
    }
  }

  static void Add(const std::shared_ptr<State>& state) {
    if (Ended()) return;  // a static's destructor sleeps: nothing will follow it
    thread_local ClocksOfThisThread clocks;
    std::erase_if(clocks.m_clocks, [](const std::weak_ptr<State>& clock) { return clock.expired(); });
    clocks.m_clocks.push_back(state);
  }

 private:
  static bool& Ended() {
    thread_local constinit bool ended = false;
    return ended;
  }

  std::vector<std::weak_ptr<State>> m_clocks;
};

}  // namespace

SimulatedClock::State::Participant& SimulatedClock::State::EnterHolding() {
  const auto [place, isNew] = m_participants.try_emplace(std::this_thread::get_id());
  if (isNew) ClocksOfThisThread<State>::Add(shared_from_this());
  SetAwake(place->second, true);
  return place->second;
}

bool SimulatedClock::State::Sleep(unsigned int milliseconds, PlatformEvent* event) {
  const std::shared_ptr<State> alive = shared_from_this();  // the clock may be destroyed meanwhile
  Sleeper sleeper(*this);
  PausableGuard lock(m_mutex);
  if (ActingHere()) {
    lock.unlock();
    return event != nullptr && event->TryWait();
  }
  ++m_waits;
  sleeper.who = &EnterHolding();
  const bool limited = event == nullptr || milliseconds != std::numeric_limits<unsigned int>::max();
  if (limited) sleeper.limit = m_now + milliseconds * kNanosecondsPerMillisecond;

  bool taken = false;
  if (event != nullptr) {
    // The event is never called with the mutex held: its observers take the mutex with the event held.
    lock.unlock();
    event->AddObserver(sleeper);
    taken = event->TryWait();
    lock.lock();
  }
  while (!taken) {
    if (sleeper.signalled) {
      sleeper.signalled = false;
      lock.unlock();
      taken = event->TryWait();
      lock.lock();
    } else if (m_closed || m_now >= sleeper.limit) {
      break;
    } else {
      FallAsleep(sleeper);
      MoveOn();
      while (sleeper.asleep) sleeper.roused.Wait(m_mutex);
    }
  }
  CountWake(*sleeper.who);
  lock.unlock();
  if (event != nullptr) event->RemoveObserver(sleeper);
  return taken;
}

SimulatedClock::SimulatedClock(double wallMilliseconds) : m_state(std::make_shared<State>(wallMilliseconds)) {}
SimulatedClock::~SimulatedClock() { m_state->Close(); }

long long SimulatedClock::Counter() { return m_state->Counter(); }
long long SimulatedClock::Frequency() { return m_state->Frequency(); }
unsigned int SimulatedClock::TickMilliseconds() { return m_state->Tick(); }
WallClockReading SimulatedClock::WallClock() { return m_state->WallClock(); }
long SimulatedClock::TimezoneSeconds() { return m_state->Zone(); }

bool SimulatedClock::LocalTime(long long seconds, CalendarTime& calendar) {
  if (!zelbase::detail::IsCalendarSecond(seconds)) return false;
  const bool summer = m_state->Daylight();
  calendar = zelbase::detail::CivilFromSeconds(seconds - m_state->Zone() + (summer ? 3600 : 0));
  calendar.daylight = summer ? 1 : 0;
  return true;
}

bool SimulatedClock::UtcTime(long long seconds, CalendarTime& calendar) {
  if (!zelbase::detail::IsCalendarSecond(seconds)) return false;
  calendar = zelbase::detail::CivilFromSeconds(seconds);
  return true;
}

bool SimulatedClock::FromLocalTime(const CalendarTime& calendar, long long& seconds) {
  const bool summer = calendar.daylight < 0 ? m_state->Daylight() : calendar.daylight > 0;
  seconds = zelbase::detail::SecondsFromCivil(calendar) + m_state->Zone() - (summer ? 3600 : 0);
  return true;
}

void SimulatedClock::Sleep(unsigned int milliseconds) { m_state->Sleep(milliseconds, nullptr); }
bool SimulatedClock::Wait(PlatformEvent& event, unsigned int milliseconds) { return m_state->Sleep(milliseconds, &event); }
bool SimulatedClock::SetSystemClock(const SYSTEMTIME& utc) { return m_state->SetSystemClock(utc); }

void SimulatedClock::SetFrequency(long long countsPerSecond) { m_state->SetFrequency(countsPerSecond); }
void SimulatedClock::SetCounter(long long counts) { m_state->SetCounter(counts); }
void SimulatedClock::SetTick(unsigned int milliseconds) { m_state->SetTick(milliseconds); }
void SimulatedClock::SetWall(double milliseconds) { m_state->SetWall(milliseconds); }
void SimulatedClock::SetZone(long secondsWest) { m_state->SetZone(secondsWest); }
void SimulatedClock::SetDaylight(bool inForce) { m_state->SetDaylight(inForce); }
void SimulatedClock::SetDrift(double partsPerMillion) { m_state->SetDrift(partsPerMillion); }
void SimulatedClock::RefuseSetting(bool refuse) { m_state->RefuseSetting(refuse); }
void SimulatedClock::At(double milliseconds, std::function<void()> action) { m_state->At(milliseconds, std::move(action)); }

double SimulatedClock::Elapsed() const { return m_state->Elapsed(); }
void SimulatedClock::Advance(double milliseconds) { m_state->Advance(milliseconds); }
void SimulatedClock::StepWall(double milliseconds) { m_state->StepWall(milliseconds); }
void SimulatedClock::Suspend(double milliseconds, Suspended mode) { m_state->Suspend(milliseconds, mode); }
std::size_t SimulatedClock::RunUntil(double milliseconds) { return m_state->RunTo(milliseconds, false); }
std::size_t SimulatedClock::RunFor(double milliseconds) { return m_state->RunTo(milliseconds, true); }
void SimulatedClock::LetRunUntil(double milliseconds) { m_state->LetRunTo(milliseconds, false); }
void SimulatedClock::LetRunFor(double milliseconds) { m_state->LetRunTo(milliseconds, true); }
void SimulatedClock::Leave() { m_state->Leave(); }

std::size_t SimulatedClock::Sleepers() const { return m_state->Sleepers(); }
void SimulatedClock::WaitForSleepers(std::size_t count) { m_state->WaitForSleepers(count); }
unsigned long long SimulatedClock::Waits() const { return m_state->Waits(); }
double SimulatedClock::ShortestBetweenWakes() const { return m_state->ShortestBetweenWakes(); }
void SimulatedClock::ResetCounts() { m_state->ResetCounts(); }
std::vector<SYSTEMTIME> SimulatedClock::ClockSettings() const { return m_state->ClockSettings(); }
