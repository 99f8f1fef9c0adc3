// The clock and its discipline under every kind of jump, pass by pass and to the last bit beside a plain second writing of both:
// steps of the wall clock, of the counter and of both, forth and back, before, in and after a correction, with drift; and what
// a pass costs. Each test runs the discipline's own loop on this thread, in a clock that a script moves.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "tests/numerics/CountedAllocations.h"
#include "tests/support/Effort.h"
#include "tests/time/ClockAccess.h"
#include "tests/time/PlainDiscipline.h"
#include "zelbase/time/CExTime.h"
#include "zelbase/time/CExTimeSync.h"

namespace {

using namespace clock_access;

constexpr long long kSecond = 1000;
constexpr long long kHour = 3600 * kSecond;
constexpr long long kDay = 24 * kHour;
constexpr long long kTenYears = 3652 * kDay;
constexpr long long kCycle = 4294967296;  // 49.7 days: a 32-bit count of milliseconds
constexpr std::array<long long, 8> kJumps = {1, 999, 1000, 1001, kHour, kDay, kTenYears, kCycle};

constexpr long long kNanoseconds = 1000000;  // in a millisecond
constexpr long long kWallStart = 1763700000123;
constexpr int kWindow = 60;  // passes until nothing of the past is left in the fit

// What a pass asked of the clocks.
struct Asked {
  int counter = 0;
  int frequency = 0;
  int wall = 0;
  int slept = 0;
  bool operator==(const Asked&) const = default;
};
constexpr Asked kAskedInAPass = {1, 1, 1, 0};

// Moves on by one pace at each wait of the discipline. Between a pass and the next it calls `onPass`, then `onMove`, which may
// move it by more; after the last pass the wait says that the end was asked for.
class ScriptedClock : public HandClock {
 public:
  long long Counter() override { return ++asked.counter, HandClock::Counter(); }
  long long Frequency() override { return ++asked.frequency, HandClock::Frequency(); }
  WallClockReading WallClock() override { return ++asked.wall, HandClock::WallClock(); }
  void Sleep(unsigned int) override { ++asked.slept; }
  bool Wait(PlatformEvent&, unsigned int) override {
    if (pass > 0) EndPass();
    if (pass == passes) return true;
    ++pass;
    MoveCounter(paceNanoseconds);
    MoveWall(paceNanoseconds + paceNanoseconds / 1000 * drift / 1000);
    onMove();
    asked = {};
    m_allocations = CountedAllocations();
    return false;
  }

  void EndPass() {
    allocated = CountedAllocations() - m_allocations;
    onPass();
  }
  void MoveCounter(long long nanoseconds) { counter += nanoseconds / 100; }
  void MoveWall(long long nanoseconds) {
    m_wallNanoseconds += nanoseconds;
    const long long milliseconds = m_wallNanoseconds / kNanoseconds;
    wall.seconds = milliseconds / 1000;
    wall.milliseconds = static_cast<int>(milliseconds % 1000);
  }

  double CounterMilliseconds() const { return static_cast<double>(counter) / (static_cast<double>(frequency) / 1000.0); }
  double WallMilliseconds() const { return static_cast<double>(wall.seconds) * 1000.0 + wall.milliseconds; }

  long long paceNanoseconds = 100 * kNanoseconds;
  long long drift = 0;  // parts in a million that the wall clock gains on the counter
  int passes = 0;
  int pass = 0;  // under way, from 1
  std::function<void()> onMove = [] {};
  std::function<void()> onPass = [] {};
  Asked asked;
  long allocated = 0;

 private:
  long long m_wallNanoseconds = kWallStart * kNanoseconds;
  long m_allocations = 0;
};

enum class Moved { Wall, Counter, Both };
constexpr const char* kMovedNames[] = {"wall clock", "counter", "both clocks"};

// What happens in one run: a jump at a pass, and its opposite some passes later.
struct Plan {
  Moved moved = Moved::Wall;
  long long jump = 0;         // milliseconds
  int at = 1;                 // the pass whose comparison is the first after the jump
  int backAfter = 0;          // passes; 0: never
  bool inCorrection = false;  // a small step of the wall clock comes five passes earlier
  long long drift = 0;
  bool isMaster = true;
  long long counterStart = 11 * kTenYears / 10;  // milliseconds
  long long paceNanoseconds = 100 * kNanoseconds;

  std::string Text() const {
    std::ostringstream text;
    text << kMovedNames[static_cast<int>(moved)] << " by " << jump << " ms at pass " << at << ", back after " << backAfter
         << (inCorrection ? ", in a correction" : "") << ", drift " << drift << ", " << (isMaster ? "master" : "slave") << ", counter from "
         << counterStart << ", pace " << paceNanoseconds << " ns";
    return text.str();
  }
};

class ClockStepsLong : public ClockTest {
 protected:
  // Runs the discipline by `plan` beside a plain one. The pass that ended it, 0 when none did.
  int Run(const Plan& plan) {
    ResetClock();
    ScriptedClock script;
    const PlatformOverride<PlatformClock> inForce(script);
    script.paceNanoseconds = plan.paceNanoseconds;
    script.drift = plan.drift;
    script.counter = plan.counterStart * 10000;
    script.MoveWall(0);
    const double base = static_cast<double>(kWallStart - plan.counterStart);
    SetBase(base, static_cast<double>(kWallStart));
    *Find(Master{}) = plan.isMaster;
    PlainClock plain(base, static_cast<double>(kWallStart), plan.isMaster);

    const int lastMove = plan.at + plan.backAfter;
    script.passes = lastMove + kWindow + 3;
    script.onMove = [&] {
      if (script.pass == plan.at) Jump(script, plan.moved, plan.jump);
      if (plan.backAfter != 0 && script.pass == lastMove) Jump(script, plan.moved, -plan.jump);
      if (plan.inCorrection && script.pass == plan.at - 5) Jump(script, Moved::Wall, 400);
    };
    int ended = 0;
    m_failed = false;
    script.onPass = [&] {
      if (m_failed) return;
      const Model before = m_model;
      const bool goesOn = plain.Pass(script.CounterMilliseconds(), script.WallMilliseconds());
      Expect(goesOn == !Stopped(), "the end", plan, script);
      Compare(plan, script, plain);
      if (!goesOn) {
        ended = script.pass;
        Expect(m_model == before, "the model after the end", plan, script);
      }
      Probe(plan, script, plain);
      // A whole window after the last jump the time is true again, to the wall clock's own milliseconds.
      if (script.pass <= lastMove + kWindow) return;
      const double ahead = time.GetExTime(script.CounterMilliseconds()) - script.WallMilliseconds();
      Expect(std::fabs(ahead) < 2.0, "the time a window later", plan, script);
    };
    m_model = {};
    (Sync().*Find(Loop{}))();
    if (Stopped()) script.EndPass();
    Expect(ended == 0 || script.pass == ended, "the last pass", plan, script);
    ++m_runs;
    return ended;
  }

  // What both clocks run through has its drift.
  static void Jump(ScriptedClock& script, Moved moved, long long milliseconds) {
    const long long nanoseconds = milliseconds * kNanoseconds;
    if (moved == Moved::Wall) script.MoveWall(nanoseconds);
    if (moved == Moved::Both) script.MoveWall(nanoseconds + nanoseconds / 1000000 * script.drift);
    if (moved != Moved::Wall) script.MoveCounter(nanoseconds);
  }

  static bool Stopped() { return Sync().*Find(Stop{}); }

  void Expect(bool holds, const char* what, const Plan& plan, const ScriptedClock& script) {
    if (holds || m_failed) return;
    m_failed = true;
    ADD_FAILURE() << what << ": pass " << script.pass << ", " << plan.Text();
  }

  // To the last bit as the plain one, with the work of every other pass.
  void Compare(const Plan& plan, const ScriptedClock& script, const PlainClock& plain) {
    m_model = CurrentModel();
    Expect(m_model == (Model{plain.A0(), plain.A1(), plain.P0()}), "the model", plan, script);
    Expect(*Find(Base{}) == plain.Base(), "the base", plan, script);
    Expect(Reference() == plain.Last(), "the reference", plan, script);
    Expect(script.asked == kAskedInAPass, "what a pass asks of the clocks", plan, script);
    Expect(script.allocated == 0, "what a pass asks of the memory", plan, script);
  }

  // Between two passes the time goes forward, by at most a tenth more or less than the counter, and shows each microsecond.
  void Probe(const Plan& plan, const ScriptedClock& script, PlainClock& plain) {
    const double reading = script.CounterMilliseconds();
    const double later = time.GetExTime(reading + 50.0), soon = time.GetExTime(reading + 0.001), now = time.GetExTime(reading);
    Expect(later == plain.Time(reading + 50.0) && soon == plain.Time(reading + 0.001) && now == plain.Time(reading),
           "the time of a reading", plan, script);
    Expect(soon > now && soon - now < 0.002, "the next microsecond", plan, script);
    Expect(later - now > 44.999 && later - now < 55.001, "the pace", plan, script);
  }

  Model m_model;  // after the last pass
  bool m_failed = false;
  int m_runs = 0;
};

// --- All jumps, in all places -----------------------------------------------------------------------------------------------

// Calls `run` with a plan for every place of the jump, drift, role and counter.
template <class Run>
void ForEachPlan(Moved moved, Run run) {
  int number = 0;
  for (const long long size : kJumps) {
    for (const long long jump : {size, -size}) {
      for (const int at : {1, 2, 20, 75, 200}) {
        for (const int backAfter : {0, 1, 30, 100}) {
          for (const long long drift : {0, 500, -500}) {
            for (const bool isMaster : {true, false}) {
              for (const bool isSmooth : {true, false}) {
                if (++number % Effort(1, 13) != 0) continue;
                Plan plan;
                plan.moved = moved;
                plan.jump = jump;
                plan.at = at;
                plan.backAfter = backAfter;
                plan.inCorrection = at == 75;
                plan.drift = drift;
                plan.isMaster = isMaster;
                if (!isSmooth) {
                  plan.paceNanoseconds = 100370000;  // as a system that is late
                  plan.counterStart = 12 * kSecond;  // which a jump back takes below zero
                }
                run(plan);
              }
            }
          }
        }
      }
    }
  }
}

void Ends(const Plan& plan, int ended, int expected) { EXPECT_EQ(ended, expected) << plan.Text(); }

TEST_F(ClockStepsLong, WallClockGoesOnUpToASecondAndEndsTheDisciplineBeyond) {
  ForEachPlan(Moved::Wall, [this](const Plan& plan) {
    const int ended = Run(plan);
    const long long size = std::llabs(plan.jump);
    if (size > 1001) Ends(plan, ended, plan.at);
    if (plan.inCorrection || plan.drift != 0) return;  // where the time is off by itself the plain one alone decides
    if (size == 1001 && plan.at != 2) Ends(plan, ended, plan.at);
    if (size <= 999 && plan.backAfter == 0) Ends(plan, ended, 0);
    // At the first comparison both clocks agree to the last bit.
    const bool isExact = plan.at == 1 && plan.paceNanoseconds == 100 * kNanoseconds;
    if (size == 1000 && isExact && plan.backAfter == 0) Ends(plan, ended, 0);
  });
  EXPECT_EQ(m_runs, 3840 / Effort(1, 13));
}

TEST_F(ClockStepsLong, CounterThatJumpsACycleIsPlacedAndByMoreThanASecondEndsTheDiscipline) {
  ForEachPlan(Moved::Counter, [this](const Plan& plan) {
    const int ended = Run(plan);
    const long long size = std::llabs(plan.jump);
    const bool goesBelowZero = plan.jump < 0 && plan.counterStart < size;
    if (size > 1001 && size != kCycle) Ends(plan, ended, plan.at);
    if (size == kCycle && goesBelowZero) Ends(plan, ended, plan.at);  // such a reading is not placed
    if (size == kCycle && !goesBelowZero) Ends(plan, ended, 0);
  });
  EXPECT_EQ(m_runs, 3840 / Effort(1, 13));
}

// As after a suspension through which the counter ran on. What the fit knows of the drift is carried through an hour; a day shows
// its error, and half a cycle is taken for a wrap.
TEST_F(ClockStepsLong, BothClocksTogetherGoOnAsFarAsTheFitReaches) {
  ForEachPlan(Moved::Both, [this](const Plan& plan) {
    const int ended = Run(plan);
    const long long size = std::llabs(plan.jump);
    const bool goesBelowZero = plan.jump < 0 && plan.counterStart < size;
    if (size > kDay && !goesBelowZero) Ends(plan, ended, plan.at);
    if (size <= kHour && plan.at == 200) Ends(plan, ended, 0);
    if (plan.inCorrection || plan.drift != 0) return;
    if (size <= kHour || (size == kDay && plan.counterStart > kDay)) Ends(plan, ended, 0);
    // Readings below zero are not placed: only the reference stays behind.
    if (goesBelowZero && plan.at == 1 && plan.backAfter == 0) Ends(plan, ended, 0);
  });
  EXPECT_EQ(m_runs, 3840 / Effort(1, 13));
}

// --- A day ------------------------------------------------------------------------------------------------------------------

TEST_F(ClockStepsLong, DayOfFiveHundredPartsInAMillionEitherWayStaysTrueToTheLastBit) {
  constexpr unsigned int kSeed = 20261121;
  std::mt19937 random(kSeed);
  constexpr int kPassesAnHour = 36000;
  const int hours = static_cast<int>(Effort(24, 3));
  ScriptedClock script;
  const PlatformOverride<PlatformClock> inForce(script);
  script.passes = hours * kPassesAnHour;
  script.MoveWall(0);
  SetBase(kWallStart, kWallStart);
  PlainClock plain(kWallStart, kWallStart, true);
  double worst = 0.0;
  int looks = 0;
  int differences = 0;
  int stepped = 0;
  script.onMove = [&] {
    if (script.pass % kPassesAnHour == 1) script.drift = script.drift == 500 ? -500 : 500;
    if (script.pass % 9000 != 4500) return;
    script.MoveWall((static_cast<long long>(random() % 1981) - 990) * kNanoseconds);
    stepped = script.pass;
  };
  script.onPass = [&] {
    const bool goesOn = plain.Pass(script.CounterMilliseconds(), script.WallMilliseconds());
    differences += goesOn && CurrentModel() == Model{plain.A0(), plain.A1(), plain.P0()} ? 0 : 1;
    if (script.pass < stepped + kWindow || script.pass % kPassesAnHour < kWindow) return;
    worst = std::max(worst, std::fabs(time.GetExTime(script.CounterMilliseconds()) - script.WallMilliseconds()));
    plain.Time(script.CounterMilliseconds());
    ++looks;
  };
  (Sync().*Find(Loop{}))();
  EXPECT_EQ(script.pass, script.passes) << "ended; seed " << kSeed;
  EXPECT_EQ(differences, 0) << "seed " << kSeed;
  EXPECT_GT(looks, hours * 35000);
  EXPECT_LT(worst, 2.0);
}

// --- Readings without the discipline ------------------------------------------------------------------------------------------

TEST_F(ClockStepsLong, ReadingsThatJumpInAnyOrderArePlacedByTheSameRule) {
  for (unsigned int seed = 1; seed <= 40; ++seed) {
    std::mt19937_64 random(seed);
    const bool isMaster = seed % 2 == 0;
    SetBase(kWallStart, kWallStart);
    *Find(Master{}) = isMaster;
    PlainClock plain(kWallStart, kWallStart, isMaster);
    double reading = 1e9;
    for (int i = 0; i < Effort(5000, 500); ++i) {
      const double jump = static_cast<double>(kJumps[random() % kJumps.size()]);
      reading += random() % 2 == 0 ? jump : -jump;
      if (random() % 16 == 0) reading = static_cast<double>(time.GetWinTime(plain.Last()));  // cut to 32 bits
      if (random() % 64 == 0) reading = static_cast<double>(random() % 3) - 1.0;
      ASSERT_EQ(time.GetExTime(reading), plain.Time(reading)) << "seed " << seed << ", reading " << i;
      ASSERT_EQ(Reference(), plain.Last()) << "seed " << seed << ", reading " << i;
      ASSERT_EQ(time.GetWin1970BaseTime(), plain.Base()) << "seed " << seed << ", reading " << i;
    }
  }
}

TEST_F(ClockStepsLong, WorkOfAReadingIsThatOfAnyOther) {
  ScriptedClock script;
  const PlatformOverride<PlatformClock> inForce(script);
  script.MoveWall(0);
  SetBase(kWallStart, kWallStart);
  SetModel(kWallStart, 1.0, kWallStart);
  for (const long long jump : kJumps) {
    for (const long long counter : {jump, 2 * jump, -jump, 0LL}) {
      script.counter = counter * 10000;
      script.asked = {};
      const long before = CountedAllocations();
      const double now = time.GetCurTime();
      const double raw = time.GetZelTime(now);
      const unsigned long cut = time.GetWinTime(now);
      EXPECT_EQ(CountedAllocations(), before) << counter << ' ' << raw << ' ' << cut;
      EXPECT_EQ(script.asked, (Asked{1, 1, 0, 0})) << counter;
    }
  }
}

}  // namespace
