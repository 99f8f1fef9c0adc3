#include "zelbase/time/CExTimeSync.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/ChildProcess.h"
#include "tests/time/ClockAccess.h"
#include "tests/time/PlainDiscipline.h"
#include "zelbase/platform/RefusingThreads.h"
#include "zelbase/platform/SimulatedClock.h"
#include "zelbase/time/CExTime.h"

namespace {

using namespace clock_access;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kHour = 3600e3;

Fitted Compare(double exTime, double systemTime) {
  Fitted result;
  result.publish = (Sync().*Find(Fit{}))(exTime, systemTime, result.a0, result.a1, result.p0);
  return result;
}

bool IsStopped() { return Sync().*Find(Stop{}); }

// --- The fit --------------------------------------------------------------------------------------------------------

using CExTimeSyncFit = ClockTest;

TEST_F(CExTimeSyncFit, FirstSamplePublishesNothingAndLeavesTheOutputs) {
  const Fitted first = Compare(1e12, 1e12);
  EXPECT_FALSE(first.publish);
  EXPECT_EQ(first.a0, -1.0);
  EXPECT_EQ(first.a1, -2.0);
  EXPECT_EQ(first.p0, -3.0);
}

TEST_F(CExTimeSyncFit, TwoSamplesGiveTheRatioOfTheirDifferences) {
  Compare(1000.0, 1500.0);
  const Fitted second = Compare(1100.0, 1604.0);
  EXPECT_TRUE(second.publish);
  EXPECT_EQ(second.a0, 1552.0);
  EXPECT_DOUBLE_EQ(second.a1, 1.04);
  EXPECT_EQ(second.p0, 1050.0);
}

TEST_F(CExTimeSyncFit, LimitsHoldTheSlopeAndLeaveTheIntercept) {
  Compare(0.0, 0.0);
  const Fitted steep = Compare(100.0, 120.0);
  EXPECT_EQ(steep.a0, 60.0);
  EXPECT_EQ(steep.a1, 1.1);
  *Find(Samples{}) = {};
  Compare(0.0, 0.0);
  const Fitted flat = Compare(100.0, 50.0);
  EXPECT_EQ(flat.a0, 25.0);
  EXPECT_EQ(flat.a1, 0.9);
  *Find(Samples{}) = {};
  Compare(0.0, 100.0);
  EXPECT_EQ(Compare(100.0, 0.0).a1, 0.9);  // a clock that runs back
}

TEST_F(CExTimeSyncFit, InterceptIsThatOfTheSlopeBeforeTheLimits) {
  // Three samples whose centred sums do not vanish in doubles: the intercept is a few rounding errors of the mean, and
  // the limits do not move it to that of the limited line.
  PlainFit plain;
  plain.Add(0.1, 0.7);
  plain.Add(100.3, 150.9);
  const Fitted expected = plain.Add(250.7, 420.1);
  Compare(0.1, 0.7);
  Compare(100.3, 150.9);
  const Fitted fitted = Compare(250.7, 420.1);
  EXPECT_EQ(fitted.a1, 1.1);
  EXPECT_EQ(fitted.a0, expected.a0);
}

TEST_F(CExTimeSyncFit, SamplesAtOneRawTimePublishNothing) {
  Compare(1000.0, 1000.0);
  const Fitted second = Compare(1000.0, 1010.0);
  EXPECT_FALSE(second.publish);
  EXPECT_EQ(second.a0, -1.0);
  EXPECT_TRUE(Compare(1100.0, 1110.0).publish);  // and both were kept
  EXPECT_EQ(Find(Samples{})->count, 3);
}

TEST_F(CExTimeSyncFit, SixtySamplesAreKeptAndTheOldestIsOverwritten) {
  for (int i = 0; i < 60; ++i) Compare(100.0 * i, 100.0 * i + 500.0);
  EXPECT_EQ(Find(Samples{})->count, 60);
  EXPECT_EQ(Find(Samples{})->next, 0);
  Compare(6000.0, 6250.0);
  EXPECT_EQ(Find(Samples{})->count, 60);
  EXPECT_EQ(Find(Samples{})->next, 1);
  EXPECT_EQ(Find(Samples{})->x[0], 6000.0);
  EXPECT_EQ(Find(Samples{})->y[0], 6250.0);
  EXPECT_EQ(Find(Samples{})->x[1], 100.0);
  // After 59 more nothing of the first line is left.
  Fitted last;
  for (int i = 61; i < 120; ++i) last = Compare(100.0 * i, 100.0 * i + 250.0);
  EXPECT_NEAR(last.a1, 1.0, 1e-12);
  EXPECT_NEAR(last.a0 - last.p0, 250.0, 1e-9);
}

TEST_F(CExTimeSyncFit, RoundsInTheStatedOrderToTheLastBit) {
  std::mt19937_64 random(20261121);
  std::uniform_real_distribution<double> jitter(-5.0, 5.0);
  for (int round = 0; round < 40; ++round) {
    *Find(Samples{}) = {};
    PlainFit plain;
    const double start = 1.2e12 + static_cast<double>(random() % 400000000000);
    const double drift = 1.0 + jitter(random) * 0.03;  // some beyond the limits
    for (int i = 0; i < 150; ++i) {
      const double raw = start + 100.37 * i + jitter(random);
      const double wall = std::floor(start + std::fmod(100.37 * i * drift, 900.0) + 100.37 * i);
      const Fitted expected = plain.Add(raw, wall);
      if (std::fabs(raw - wall) > 1000.0) FAIL() << "the test's own data are too far apart";
      const Fitted fitted = Compare(raw, wall);
      ASSERT_EQ(fitted.publish, expected.publish);
      ASSERT_EQ(fitted.a0, expected.a0) << round << ' ' << i;
      ASSERT_EQ(fitted.a1, expected.a1) << round << ' ' << i;
      ASSERT_EQ(fitted.p0, expected.p0) << round << ' ' << i;
    }
  }
}

TEST_F(CExTimeSyncFit, IsTheLeastSquaresLine) {
  std::mt19937_64 random(4);
  std::uniform_real_distribution<double> jitter(-8.0, 8.0);
  PlainFit plain;
  const double start = 1.75e12;
  for (int i = 0; i < 500; ++i) {
    const double raw = start + 100.0 * i;
    const double wall = std::floor(raw + 20.0 + 1e-4 * (raw - start) + jitter(random));
    plain.Add(raw, wall);
    const Fitted fitted = Compare(raw, wall);
    if (i < 5) continue;  // too few for the limits not to matter
    long double value = 0, slope = 0;
    plain.InManyDigits(fitted.p0, value, slope);
    ASSERT_NEAR(fitted.a1, static_cast<double>(slope), 1e-6);
    ASSERT_NEAR(fitted.a0, static_cast<double>(value), 0.03);  // 60 terms near 1.75e12 / 60, each rounded
  }
}

TEST_F(CExTimeSyncFit, RawSideHasTheModelTakenOff) {
  SetModel(2000.0, 2.0, 1000.0);
  Compare(2300.0, 2300.0);  // raw 1150
  Compare(2500.0, 2500.0);  // raw 1250
  EXPECT_EQ(Find(Samples{})->x[0], 1150.0);
  EXPECT_EQ(Find(Samples{})->x[1], 1250.0);
  EXPECT_EQ(Find(Samples{})->y[1], 2500.0);
}

TEST_F(CExTimeSyncFit, ExactlyOneSecondApartGoesOn) {
  Compare(1e12, 1e12 + 1000.0);
  Compare(1e12 + 100.0, 1e12 - 900.0);
  EXPECT_FALSE(IsStopped());
  EXPECT_EQ(Find(Samples{})->count, 2);
}

TEST_F(CExTimeSyncFit, MoreThanOneSecondApartStoresNothingAndAsksForTheEnd) {
  for (const double difference : {1000.001, -1000.001, 1001.0, -1e12, std::numeric_limits<double>::infinity()}) {
    Sync().*Find(Stop{}) = false;
    const Fitted fitted = Compare(1e12 + difference, 1e12);
    EXPECT_FALSE(fitted.publish);
    EXPECT_EQ(fitted.a0, -1.0);
    EXPECT_TRUE(IsStopped()) << difference;
    EXPECT_EQ(Find(Samples{})->count, 0);
  }
}

TEST_F(CExTimeSyncFit, DifferenceThatIsNoNumberGoesOnAndPublishesIt) {
  Compare(kNan, 1e12);
  const Fitted second = Compare(1e12, 1e12);
  EXPECT_FALSE(IsStopped());
  EXPECT_TRUE(second.publish);
  EXPECT_TRUE(std::isnan(second.a0));
  EXPECT_TRUE(std::isnan(second.a1));
  EXPECT_TRUE(std::isnan(second.p0));
}

TEST_F(CExTimeSyncFit, PublishingYieldsToAnOutsideSource) {
  EXPECT_TRUE((Sync().*Find(PublishModel{}))(1.0, 2.0, 3.0));
  EXPECT_EQ(CurrentModel(), (Model{1.0, 2.0, 3.0}));
  clock.counter = 10;
  time.SetUtcCoeffs(4.0, 5.0, 6.0);  // between the thread's look and its publication
  EXPECT_FALSE((Sync().*Find(PublishModel{}))(1.0, 2.0, 3.0));
  EXPECT_EQ(CurrentModel(), (Model{4.0, 5.0, 6.0}));
}

// --- The thread's loop, on simulated time ---------------------------------------------------------------------------

// The loop of the discipline on a thread of the test's own, on a simulated clock whose wall and counter begin at the
// same point as the base.
class CExTimeSyncLoop : public ::testing::Test {
 protected:
  static constexpr double kStart = 1234567890000.0;

  CExTimeSyncLoop() {
    ResetClock();
    PlatformService<PlatformClock>::Replace(&clock);
    clock.SetCounter(1);  // at 0 an update of the model would not show
    SetBase(kStart, kStart);
  }

  ~CExTimeSyncLoop() override {
    Stop();
    PlatformService<PlatformClock>::Replace(nullptr);
    ResetClock();
  }

  void Start() {
    loop = std::thread([this] {
      (Sync().*Find(Loop{}))();
      ended = true;
    });
    clock.WaitForSleepers(1);
  }

  void Stop() {
    Sync().*Find(clock_access::Stop{}) = true;
    (Sync().*Find(StopEvent{})).Set();
    Join();
  }

  void Join() {
    if (loop.joinable()) loop.join();
  }

  // By how much the suite's time is ahead of the wall clock, milliseconds.
  double Ahead() const {
    const WallClockReading wall = PlatformService<PlatformClock>::Current().WallClock();
    return time.GetCurTime() - (static_cast<double>(wall.seconds) * 1000.0 + wall.milliseconds);
  }

  SimulatedClock clock{kStart};
  CExTime time;
  std::thread loop;
  std::atomic<bool> ended{false};
};

using CExTimeSyncLoopLong = CExTimeSyncLoop;

TEST_F(CExTimeSyncLoopLong, DayWithDriftStaysTrueAndWakesTenTimesASecond) {
  clock.SetDrift(50.0);  // 4.32 s a day
  double worst = 0.0;
  int looks = 0;
  for (int minute = 1; minute < 24 * 60; ++minute) {
    clock.At(minute * 60e3 + 37.0, [&] {
      worst = std::max(worst, std::fabs(Ahead()));
      ++looks;
    });
  }
  Start();
  clock.RunUntil(24 * kHour);
  EXPECT_EQ(looks, 24 * 60 - 1);
  EXPECT_FALSE(ended);
  EXPECT_EQ(clock.Waits(), 864001u);  // and one under way
  EXPECT_GE(clock.ShortestBetweenWakes(), 100.0);
  EXPECT_LT(worst, 2.0);  // the wall clock shows whole milliseconds
  // Without the discipline the counter would be 4.32 s behind.
  EXPECT_NEAR(time.GetCurTime() - (time.GetWin1970BaseTime() + time.GetCurSystemTime()), 4320.0, 2.0);
}

TEST_F(CExTimeSyncLoopLong, DayOfChangingDriftAndSmallStepsStaysTrue) {
  std::mt19937 random(77);
  double worst = 0.0;
  for (int hour = 0; hour < 24; ++hour) {
    const double drift = static_cast<double>(random() % 400) - 200.0;
    const double step = static_cast<double>(random() % 1400) - 700.0;
    clock.At(hour * kHour + 1e3, [this, drift] { clock.SetDrift(drift); });
    clock.At(hour * kHour + 1800e3, [this, step] { clock.StepWall(step); });
    // Seven seconds after a step the old samples have gone.
    clock.At(hour * kHour + 1807e3, [&] { worst = std::max(worst, std::fabs(Ahead())); });
    clock.At(hour * kHour + 3500e3, [&] { worst = std::max(worst, std::fabs(Ahead())); });
  }
  Start();
  clock.RunUntil(24 * kHour);
  EXPECT_FALSE(ended);
  EXPECT_LT(worst, 2.0);
}

TEST_F(CExTimeSyncLoop, PublishesFromTheSecondSampleOn) {
  Start();
  clock.RunUntil(100.0);
  EXPECT_EQ(CurrentModel(), Model{});
  clock.RunUntil(200.0);
  EXPECT_EQ(CurrentModel().a1, 1.0);
  EXPECT_NEAR(CurrentModel().p0, kStart + 150.0, 0.01);
  EXPECT_NEAR(CurrentModel().a0, kStart + 150.0, 0.01);
}

TEST_F(CExTimeSyncLoop, StepOf1001MillisecondsEndsTheThreadAndTheModelStays) {
  Start();
  clock.RunUntil(10e3);
  const Model before = CurrentModel();
  clock.StepWall(1001.0);
  clock.RunFor(100.0);
  Join();
  EXPECT_TRUE(ended);
  EXPECT_TRUE(IsStopped());
  EXPECT_EQ(CurrentModel(), before);
  EXPECT_NEAR(Ahead(), -1001.0, 1.0);  // the model goes on being applied
}

TEST_F(CExTimeSyncLoop, StepBackOf1001MillisecondsEndsTheThread) {
  Start();
  clock.RunUntil(10e3);
  clock.StepWall(-1001.0);
  clock.RunFor(100.0);
  Join();
  EXPECT_TRUE(ended);
}

TEST_F(CExTimeSyncLoop, StepOfExactly1000MillisecondsDoesNot) {
  // Before the first sample raw time and wall clock agree to the last bit.
  clock.SetCounter(0);
  clock.StepWall(1000.0);
  Start();
  clock.RunUntil(100.0);
  EXPECT_FALSE(ended);
  EXPECT_EQ(Find(Samples{})->count, 1);
  EXPECT_EQ(Find(Samples{})->y[0] - Find(Samples{})->x[0], 1000.0);
  clock.RunUntil(10e3);
  EXPECT_FALSE(ended);
  EXPECT_NEAR(Ahead(), 0.0, 1.0);
}

TEST_F(CExTimeSyncLoop, NightOfSuspensionWithAStandingCounterEndsTheThread) {
  Start();
  clock.RunUntil(60e3);
  clock.Suspend(8 * kHour);
  clock.RunFor(100.0);
  Join();
  EXPECT_TRUE(ended);
  EXPECT_NEAR(Ahead(), -8 * kHour, 1.0);
}

TEST_F(CExTimeSyncLoop, NightOfSuspensionWithARunningCounterDoesNot) {
  Start();
  clock.RunUntil(60e3);
  clock.Suspend(8 * kHour, SimulatedClock::Suspended::Both);
  clock.RunFor(60e3);
  EXPECT_FALSE(ended);
  EXPECT_NEAR(Ahead(), 0.0, 1.0);
}

TEST_F(CExTimeSyncLoop, JumpOfAnyLengthIsOnePass) {
  constexpr double kDay = 24 * kHour;
  Start();
  clock.RunUntil(10e3);
  for (const double jump : {999.0, 1000.0, 1001.0, kHour, kDay, 20 * kDay}) {
    clock.ResetCounts();
    clock.Suspend(jump, SimulatedClock::Suspended::Both);
    EXPECT_EQ(clock.RunFor(0.0), 1u) << jump;
    EXPECT_EQ(clock.Waits(), 1u) << jump;  // what was slept through is not made up for
    EXPECT_NEAR(Ahead(), 0.0, 1.0) << jump;
  }
  clock.ResetCounts();
  clock.Suspend(3652 * kDay, SimulatedClock::Suspended::Both);
  Join();
  EXPECT_TRUE(ended);
  EXPECT_EQ(clock.Waits(), 0u);
}

TEST_F(CExTimeSyncLoop, OutsideSourceEndsTheThreadAtItsNextLook) {
  Start();
  clock.RunUntil(10e3);
  time.SetUtcCoeffs(7.0, 1.0, 0.0);
  clock.RunFor(100.0);
  Join();
  EXPECT_TRUE(ended);
  EXPECT_FALSE(IsStopped());  // by the source, not by request
  EXPECT_EQ(CurrentModel(), (Model{7.0, 1.0, 0.0}));
  EXPECT_NEAR(time.GetUtcUpdateAge(), 100.0, 1e-6);
}

TEST_F(CExTimeSyncLoop, OutsideSourceWithTheCounterAtZeroGoesUnseen) {
  // The moment of the update is 0.0 then, which is the sign of no update at all.
  clock.SetCounter(0);
  time.SetUtcCoeffs(kStart, 1.0, kStart);
  Start();
  clock.RunUntil(1000.0);
  EXPECT_FALSE(ended);
}

TEST_F(CExTimeSyncLoop, NothingOfTheThreadFollowsAnOutsideSource) {
  clock.LetRunUntil(365 * 24 * kHour);
  for (int i = 0; i < 300; ++i) {
    *Find(LastUpdate{}) = 0.0;
    *Find(Samples{}) = {};
    SetModel(0.0, 0.0, 0.0);
    std::atomic<bool> begun{false};
    loop = std::thread([&] {
      begun = true;
      (Sync().*Find(Loop{}))();
    });
    while (!begun || CurrentModelUnderLock() == Model{}) std::this_thread::yield();
    time.SetUtcCoeffs(7.0, 8.0, i);
    Join();
    ASSERT_EQ(CurrentModel(), (Model{7.0, 8.0, static_cast<double>(i)}));
  }
}

TEST_F(CExTimeSyncLoop, OutsideSourceBetweenTheLookAndThePublicationStands) {
  // The thread has looked for a source and is held up at the lock when one comes: it has kept its comparison, then, and does
  // not publish. Tried again when the source came before the look.
  bool caught = false;
  for (int i = 0; i < 1000 && !caught; ++i) {
    *Find(LastUpdate{}) = 0.0;
    *Find(Samples{}) = {};
    SetModel(0.0, 0.0, 0.0);
    Start();
    clock.RunFor(300.0);
    const int before = Find(Samples{})->count;
    {
      const std::lock_guard guard(*Find(ClockLock{}));
      clock.LetRunFor(100.0);
      for (int yields = 0; yields < 1000; ++yields) std::this_thread::yield();
      time.SetUtcCoeffs(7.0, 1.0, 3.0);
    }
    Join();
    ASSERT_EQ(CurrentModel(), (Model{7.0, 1.0, 3.0}));
    caught = Find(Samples{})->count == before + 1;
  }
  EXPECT_TRUE(caught);
}

TEST_F(CExTimeSyncLoop, SlaveWhoseMasterIsMoreThanASecondOffEnds) {
  time.SetBaseTime(kStart + 5000.0);
  Start();
  clock.RunUntil(100.0);
  Join();
  EXPECT_TRUE(ended);
  EXPECT_EQ(CurrentModel(), Model{});
}

TEST_F(CExTimeSyncLoop, SlaveNearItsMasterIsDrawnToItsOwnWallClock) {
  time.SetBaseTime(kStart + 300.0);
  Start();
  clock.RunUntil(10e3);
  EXPECT_FALSE(ended);
  EXPECT_NEAR(Ahead(), 0.0, 1.0);
}

TEST_F(CExTimeSyncLoop, RequestEndsTheWaitAtOnce) {
  Start();
  clock.RunUntil(250.0);
  const unsigned long long waits = clock.Waits();
  Stop();  // the clock stands: only the request can end the wait
  EXPECT_TRUE(ended);
  EXPECT_EQ(clock.Elapsed(), 250.0);
  EXPECT_EQ(clock.Waits(), waits);
}

TEST_F(CExTimeSyncLoop, RequestBeforeTheStartIsSeenFirst) {
  Sync().*Find(clock_access::Stop{}) = true;
  (Sync().*Find(Loop{}))();
  EXPECT_EQ(clock.Waits(), 0u);
}

TEST_F(CExTimeSyncLoop, StartOfAThreadThatHasEndedDoesNothingAndIsTrue) {
  PlatformThread* const before = (Sync().*Find(Thread{})).get();
  ASSERT_NE(before, nullptr);
  EXPECT_TRUE(Sync().StartSync());
  EXPECT_EQ((Sync().*Find(Thread{})).get(), before);
  EXPECT_TRUE(before->Wait(0));
  EXPECT_EQ(clock.Waits(), 0u);
}

// --- Life -----------------------------------------------------------------------------------------------------------

static_assert(std::is_polymorphic_v<CExTimeSync> && std::has_virtual_destructor_v<CExTimeSync>);
static_assert(!std::is_copy_constructible_v<CExTimeSync> && !std::is_copy_assignable_v<CExTimeSync>);
static_assert(std::is_trivially_destructible_v<Locker> && std::is_empty_v<CExTime>);

// Notes the threads that are made.
RefusingThreads& Noted() {
  static RefusingThreads& threads = *new RefusingThreads;
  return threads;
}

void NoteThreads() { PlatformService<PlatformThreads>::Replace(&Noted()); }

std::size_t ThreadsMade() {
  std::size_t made = 0;
  for (const RefusingThreads::Request& request : Noted().Requests()) made += request.refused ? 0 : 1;
  return made;
}

// For what runs at exit: ends the process at once.
void Insist(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::_Exit(7);
}

bool IsNearWallClock(double value) {
  const WallClockReading wall = PlatformClock::System().WallClock();
  return std::fabs(value - static_cast<double>(wall.seconds) * 1000.0) < 60e3;
}

// Uses the clock in its destructor, and in its constructor when that is wanted.
struct Static {
  explicit Static(bool useNow) {
    if (useNow) Insist(IsNearWallClock(CExTime().GetCurTime()), "a constructor of a static has the time");
  }
  ~Static() {
    Insist(IsNearWallClock(CExTime().GetCurTime()), "a destructor of a static has the time");
    Insist(CExTimeSync::GetExTimeSync().StartSync(), "StartSync is true in a destructor of a static");
    Insist(ThreadsMade() <= 1, "no second thread is made");
  }
};

void UseClockAtExit() {
  Insist(IsNearWallClock(CExTime().GetCurTime()), "a function called at exit has the time");
  Insist(CExTimeSync::GetExTimeSync().StartSync(), "StartSync is true at exit");
  Insist(ThreadsMade() <= 1, "nothing is started at exit");
}

// Made before main when a test of its own process asks for it by the environment.
constexpr const char* kEarlyVariable = "ZELBASE_TEST_EARLY_CLOCK";
struct Early {
  Early() {
    if (std::getenv(kEarlyVariable) == nullptr) return;
    value = CExTime().GetCurTime();
  }
  ~Early() {
    if (value == 0.0) return;
    Insist(CExTime().GetCurTime() - value < 60e3, "a destructor of an early static has the time");
  }
  double value = 0.0;
} g_early;

// Each body runs in a process of its own that has not used the clock yet.
class CExTimeSyncLife : public ::testing::Test {
 protected:
  CExTimeSyncLife() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(CExTimeSyncLife, FirstHandleStartsOneThreadOfOrdinaryKindUnderItsName) {
  EXPECT_EXIT(
      {
        NoteThreads();
        const CExTime first;
        Insist(ThreadsMade() == 1, "the first handle starts the thread");
        const CExTime second;
        Insist(ThreadsMade() == 1, "the second does not");
        const RefusingThreads::Request request = Noted().Requests().at(0);
        Insist(request.priority == 0 && request.stackSize == 0, "priority and stack are ordinary");
        while (Noted().Namings().empty()) std::this_thread::yield();
        const RefusingThreads::Naming naming = Noted().Namings().at(0);
        Insist(naming.id == PlatformThreads::kCallingThread, "the thread names itself");
        Insist(naming.name == "CExTimeSync::ThreadProc", "and has its name");
        Insist(first.GetWin1970BaseTime() != 0.0, "the base is there before the thread");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, ManyFirstUsersFindOneCompleteObject) {
  EXPECT_EXIT(
      {
        NoteThreads();
        std::atomic<int> ready{0};
        std::vector<std::thread> users;
        for (int i = 0; i < 8; ++i) {
          users.emplace_back([&] {
            ++ready;
            while (ready < 8) std::this_thread::yield();
            CExTimeSync& sync = CExTimeSync::GetExTimeSync();
            Insist((sync.*Find(Thread{})) != nullptr, "a second first user waits for the whole object");
            Insist(&sync == &CExTimeSync::GetExTimeSync(), "there is one object");
            Insist(IsNearWallClock(CExTime().GetCurTime()), "and one time");
          });
        }
        for (std::thread& user : users) user.join();
        Insist(ThreadsMade() == 1, "there is one thread");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, StaticsMayUseTheClockBeforeAndAfterItsEnd) {
  EXPECT_EXIT(
      {
        NoteThreads();
        std::atexit(&UseClockAtExit);      // runs last, after the end of the discipline
        static const Static older(false);  // destroyed after the end
        static const Static user(true);    // first of all handles; destroyed before the end
        std::atexit(&UseClockAtExit);      // runs first
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, HandleMadeFirstAtExitIsHarmless) {
  EXPECT_EXIT(
      {
        NoteThreads();
        std::atexit(&UseClockAtExit);
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, StaticBeforeMainMayUseTheClock) {
  ASSERT_EQ(::setenv(kEarlyVariable, "1", 1), 0);
  EXPECT_EXIT(
      {
        Insist(IsNearWallClock(g_early.value), "the time was there before main");
        Insist(CExTime().GetCurTime() >= g_early.value - 1000.0, "and goes on");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  ::unsetenv(kEarlyVariable);
}

TEST_F(CExTimeSyncLife, ExitDoesNotWaitForTheNextComparison) {
  // The simulated clock stands: were the thread not woken, the exit would never come.
  EXPECT_EXIT(
      {
        static SimulatedClock& standing = *new SimulatedClock;
        PlatformService<PlatformClock>::Replace(&standing);
        standing.LetRunUntil(5.0);  // the wait of the first use
        const CExTime first;
        standing.WaitForSleepers(1);
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, ExitWaitsForTheThreadToEnd) {
  EXPECT_EXIT(
      {
        // Runs behind the end of the discipline, which was made later.
        std::atexit([] { Insist((Sync().*Find(Thread{})) == nullptr, "the thread has ended and is gone"); });
        const CExTime first;
        Insist((Sync().*Find(Thread{})) != nullptr, "there is a thread");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, ThreadOfTheProcessTracksTheWallClock) {
  EXPECT_EXIT(
      {
        static SimulatedClock& clock = *new SimulatedClock;
        PlatformService<PlatformClock>::Replace(&clock);
        clock.SetDrift(100.0);
        clock.LetRunUntil(5.0);
        const CExTime time;
        clock.WaitForSleepers(1);
        clock.RunUntil(kHour);
        const WallClockReading wall = clock.WallClock();
        const double wallTime = static_cast<double>(wall.seconds) * 1000.0 + wall.milliseconds;
        Insist(std::fabs(time.GetCurTime() - wallTime) < 2.0, "an hour of drift is taken up");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, OutlivesTheSimulatedClockThatItSleepsIn) {
  EXPECT_EXIT(
      {
        {
          SimulatedClock clock;
          const PlatformOverride<PlatformClock> guard(clock);
          clock.LetRunUntil(5.0);
          const CExTime time;
          clock.WaitForSleepers(1);
          clock.RunFor(1000.0);
        }
        Insist(CExTimeSync::GetExTimeSync().StartSync(), "it is still the one discipline");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, RefusedThreadIsTriedAgain) {
  EXPECT_EXIT(
      {
        NoteThreads();
        Noted().RefuseAll();
        const CExTime time;
        Insist(IsNearWallClock(time.GetCurTime()), "the time is there without the thread");
        Insist(!CExTimeSync::GetExTimeSync().StartSync(), "a refusal is told");
        Noted().RefuseNone();
        Insist(CExTimeSync::GetExTimeSync().StartSync(), "a later call starts it");
        Insist(CExTimeSync::GetExTimeSync().StartSync(), "and another finds it");
        Insist(ThreadsMade() == 1, "once");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, RefusedThreadIsNotTriedAgainAtExit) {
  EXPECT_EXIT(
      {
        NoteThreads();
        Noted().RefuseAll();
        std::atexit([] {
          Noted().RefuseNone();
          Insist(CExTimeSync::GetExTimeSync().StartSync(), "nothing is left to be done");
          Insist(ThreadsMade() == 0, "nothing is started after the end");
        });
        const CExTime time;
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(CExTimeSyncLife, ForkedChildHasTheTimeAndEndsWithoutTheThread) {
  ResetClock();  // nobody holds the clock while the process forks
  const CExTime time;
  time.GetCurTime();
  ChildProcess child(
      [] {
        const CExTime own;
        Insist(IsNearWallClock(own.GetCurTime()), "the child has the time");
        Insist(CExTimeSync::GetExTimeSync().StartSync(), "StartSync is true in the child");
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  ResetClock();
}

TEST_F(CExTimeSyncLife, ForkedChildOfARunningDisciplineEnds) {
  EXPECT_EXIT(
      {
        // Runs behind the end of the discipline, and spares the child the search for leaks: what the thread that it
        // does not have kept for itself is lost there by the nature of a fork.
        std::atexit([] { std::_Exit(0); });
        static SimulatedClock& clock = *new SimulatedClock;
        PlatformService<PlatformClock>::Replace(&clock);
        clock.LetRunUntil(5.0);
        const CExTime time;
        clock.WaitForSleepers(1);  // the thread sleeps and holds nothing
        int code = -1;
        std::string errors;
        {
          PlatformService<PlatformClock>::Replace(nullptr);
          ChildProcess child([] { return CExTime().GetWin1970BaseTime() != 0.0 ? 0 : 1; }, ChildProcess::Ending::Full);
          code = child.Wait();
          errors = child.ErrorText();
        }
        PlatformService<PlatformClock>::Replace(&clock);
        Insist(code == 0, errors.c_str());
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
