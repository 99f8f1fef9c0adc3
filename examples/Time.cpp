// Time: a simulated clock in place of the computer's, the suite's time on it, and its texts.
#include <cstdio>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/SimulatedClock.h"
#include "zelbase/time/CExTime.h"

int main() {
  SimulatedClock clock;
  clock.SetWall(1778566200000.0);  // 2026-05-12 06:10:00 UTC
  const PlatformOverride<PlatformClock> guard(clock);

  clock.LetRunUntil(5.0);  // the process's first use waits that long
  const CExTime time;
  clock.WaitForSleepers(1);  // the clock discipline is there
  const double begun = time.GetCurTime();
  clock.Advance(90000.0);
  std::printf("%.0f s later\n", (time.GetCurTime() - begun) / 1000.0);
  std::printf("Julian day %d\n", time.ConvertToJulian(5, 12, 2026));
  const double sent = time.TimeStampStringToTime(time.GetTimeStampString(begun));
  std::printf("a stamp gives its time back: %s\n", sent - begun < 0.001 && begun - sent < 0.001 ? "yes" : "no");
  return 0;
}

// Prints:
//   90 s later
//   Julian day 2461173
//   a stamp gives its time back: yes
