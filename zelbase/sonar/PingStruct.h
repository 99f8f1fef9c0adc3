// One ping of a multibeam sonar, as a view: a header of its own and beams that lie elsewhere, in the buffer that a reader has
// mapped, say. Neighbours: PingStructRW.h, the form that owns its beams; Multibeam.h for what the flags of a beam mean;
// detail/PingFields.h for the list of the fields.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/sonar/detail/PingFields.h"

namespace zelbase::detail {
template <class Ping>
class NadirSearch;
}

// All fields are public, in the order of detail/PingFields.h: first the scalars, then a pointer for each array. Every
// scalar is 0 in a new ping but nadirBeam, -1, and headerDouble12, 1.0; every pointer is null.
//
//   PingStruct ping;
//   ping.numBeams = 512;
//   ping.beamX = x;  ...  ping.beamFlags = flags;
//   if (ping.CompNadirBeam() != -1) depth = ping.nadirDepth;
//
// A copy has the same pointers: the arrays are shared and owned by neither, and must outlive both. An array that is not
// null has numBeams elements (numSamples, for the four named sample...). Any of them may be null; any number in any field
// is harmless as long as numBeams does not go beyond the arrays.
//
// Assignment is the one virtual operation: a derived ping is not destroyed through its base. One thread at a time; nothing is
// locked.
class ZELBASE_API PingStruct {
 public:
  PingStruct() = default;
  PingStruct(const PingStruct& other) = default;

  // Copies every scalar and every pointer.
  virtual PingStruct& operator=(const PingStruct& other);

  // As new.
  void Init();

  // Whether the beam exists, was measured (beamRange is null, or not exactly 0 there) and has good flags, by the form below.
  // Without beamFlags there is no valid beam.
  bool IsValidBeam(int beam) const {
    if (beam < 0 || beam >= EndOfBeams()) return false;
    if (beamRange != nullptr && beamRange[beam] == 0.0f) return false;
    return IsValidBeam(static_cast<int>(pingFlags), beamFlags[beam]);
  }

  // Whether flags are those of a good beam: bit 16 of the ping's is clear, and the beam's are below 256 as a signed number.
  // So a beam whose highest bit is set is valid, whatever else is set.
  static bool IsValidBeam(int pingFlags, int beamFlags) { return (pingFlags & 0x10000) == 0 && beamFlags < 256; }

  // Finds the beam below the sonar and the depth there; gives nadirBeam, -1 when there is none.
  //
  //   nadirBeam before   what is done                                                              depth without success
  //   a valid beam       nothing: neither another beam nor a depth is looked for                   -
  //   -1                 begins at the valid beam with the smallest angle off the vertical; one    0
  //                      whose flags are exactly 0 was never classified and does not count
  //   any other number   begins at the nearest valid beam below or above it, whichever has the     0
  //                      smaller angle, the lower one when both are equal
  //
  // From there the answer is the median of the valid beams from five below to four above, the last beam of the ping left
  // out: nadirDepth is the middle of their depths, or the mean of the two in the middle, and nadirBeam the beam that has
  // it, or that one of the two which lies closer to where it began. So it need not be the beam with the smallest angle.
  // Should no beam be in reach, as in a ping of a single beam, the answer is -1, and nadirDepth stays as it was.
  //
  // Without coordinates no beam counts. An angle that is no number is never the smaller one; a depth that is none counts as
  // the highest.
  int CompNadirBeam();

  // CompNadirBeam, and then nadirDepth: metres, positive down.
  double CompNadirDepth();

  ZELBASE_PING_SCALARS(ZELBASE_PING_DECLARE_SCALAR)
  ZELBASE_PING_ARRAYS(ZELBASE_PING_DECLARE_ARRAY, ZELBASE_PING_DECLARE_ARRAY, ZELBASE_PING_DECLARE_ARRAY)

 private:
  template <class Ping>
  friend class zelbase::detail::NadirSearch;

  // The angle off the vertical in radians, 0 to pi: atan2 of the horizontal distance and the depth, in single precision at
  // each step.
  float Nadir3D(int beam) const;

  // No beam from here on is looked at.
  int EndOfBeams() const { return beamFlags != nullptr ? numBeams : 0; }
};
