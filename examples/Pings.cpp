// Pings: a multibeam sonar's ping as a view of beams that lie elsewhere, the beams that filters rejected, the depth below the sonar, and
// a copy that owns its beams.
#include <array>
#include <cstdio>

#include "zelbase/sonar/Multibeam.h"
#include "zelbase/sonar/PingStruct.h"
#include "zelbase/sonar/PingStructRW.h"

int main() {
  constexpr int kBeams = 5;
  std::array<float, kBeams> across = {-10.0f, -5.0f, 0.5f, 5.0f, 10.0f};
  std::array<float, kBeams> ahead{};
  std::array<float, kBeams> up = {-11.5f, -12.0f, -12.25f, -6.0f, -11.75f};  // metres, negative down
  std::array<float, kBeams> range = {15.2f, 13.0f, 12.3f, 7.8f, 0.0f};       // the last one measured nothing
  std::array<int, kBeams> flags = {5, 5, 7, 7, 5};                           // tests passed and a detection of the first kind

  unsigned int quality = 0;
  if (Multibeam::GetFilterFlag("QUA", quality)) flags[3] |= static_cast<int>(quality);  // a fish, says this filter

  PingStruct ping;
  ping.numBeams = kBeams;
  ping.beamX = across.data();
  ping.beamY = ahead.data();
  ping.beamZ = up.data();
  ping.beamRange = range.data();
  ping.beamFlags = flags.data();
  for (int i = 0; i < kBeams; ++i) {
    const char* const state =
        Multibeam::IsBeamRejected(static_cast<unsigned int>(flags[static_cast<std::size_t>(i)])) ? "rejected" : "good";
    std::printf("beam %d: %s, %s\n", i, state, ping.IsValidBeam(i) ? "counts" : "does not count");
  }
  if (ping.CompNadirBeam() != -1) std::printf("beam %d is below the sonar: %.2f m\n", ping.nadirBeam, ping.nadirDepth);

  PingStructRW kept;
  kept = ping;
  across[0] = 99.0f;  // the reader goes on to its next ping
  std::printf("the copy still has %.1f m, the view %.1f m\n", static_cast<double>(kept.beamX[0]), static_cast<double>(ping.beamX[0]));
  return 0;
}

// Prints:
//   beam 0: good, counts
//   beam 1: good, counts
//   beam 2: good, counts
//   beam 3: rejected, does not count
//   beam 4: good, does not count
//   beam 1 is below the sonar: 12.00 m
//   the copy still has -10.0 m, the view 99.0 m
