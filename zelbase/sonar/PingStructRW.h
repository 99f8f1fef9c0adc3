// One ping of a multibeam sonar that owns its beams. Neighbours: PingStruct.h, the view of a ping, with the same fields in
// the same order; Multibeam.h for what the flags of a beam mean; detail/PingFields.h for the list of the fields.
#pragma once

#include <cstddef>
#include <memory>

#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/sonar/detail/PingFields.h"

class PingStruct;

namespace zelbase::detail {
template <class Ping>
class NadirSearch;
}

// All fields are public, in the order of detail/PingFields.h, and begin as those of a PingStruct; then the two capacities.
// The arrays come by assignment and have beamCapacity elements (sampleCapacity, the four named sample...); where a capacity
// is 0, or a count was negative, its arrays are null.
//
//   PingStructRW kept;
//   kept = ping;          // a PingStruct or another PingStructRW
//   kept.beamFlags[17] |= 0x100;
//
// Assignment:
//   (1) All scalars are copied, negative counts as well.
//   (2) When either capacity is too small, all arrays are made anew with the two counts of the source as capacities, full of
//       zeros; what they held is gone, and the other capacity may shrink. Otherwise nothing is allocated.
//   (3) As many elements as the source's counts say are copied; an array that is null in the source stays as it was, and
//       beamShort1 stays unless the source's hasShortArray is set. Elements behind the counts stay.
//   (4) A source that points into this object's own arrays is copied as it was. Assigning to itself does nothing.
//   (5) When memory runs out, std::bad_alloc passes through; the arrays are gone then, and both counts are 0.
// So an owner made from a view without beamRange has a range of 0 at every beam, which makes all of them invalid.
//
// All arrays lie in one allocation, which is freed with the object wherever the pointers have been turned since.
//
// One thread at a time; nothing is locked.
class ZELBASE_API PingStructRW {
 public:
  PingStructRW();
  ~PingStructRW();

  // An empty ping, then assignment: the capacities are those of the counts.
  PingStructRW(const PingStructRW& other);

  PingStructRW& operator=(const PingStructRW& other);
  PingStructRW& operator=(const PingStruct& other);

  // Frees all arrays: their pointers are null and both capacities 0. The scalars, and the counts among them, stay.
  void Delete();

  // As new.
  void Init();

  // As PingStruct has it; no beam from beamCapacity on is valid.
  bool IsValidBeam(int beam) const {
    if (beam < 0 || beam >= EndOfBeams()) return false;
    if (beamRange != nullptr && beamRange[beam] == 0.0f) return false;
    return IsValidBeam(static_cast<int>(pingFlags), beamFlags[beam]);
  }
  static bool IsValidBeam(int pingFlags, int beamFlags) { return (pingFlags & 0x10000) == 0 && beamFlags < 256; }

  // As PingStruct has them.
  int CompNadirBeam();
  double CompNadirDepth();

  ZELBASE_PING_SCALARS(ZELBASE_PING_DECLARE_SCALAR)
  ZELBASE_PING_ARRAYS(ZELBASE_PING_DECLARE_ARRAY, ZELBASE_PING_DECLARE_ARRAY, ZELBASE_PING_DECLARE_ARRAY)

  int beamCapacity = 0;    // elements in each array of beams
  int sampleCapacity = 0;  // elements in each array of samples

 private:
  template <class Ping>
  friend class zelbase::detail::NadirSearch;

  // Makes all arrays anew, full of zeros. The counts stay.
  void Allocate(int beams, int samples);

  float Nadir3D(int beam) const;

  // No beam from here on is looked at.
  int EndOfBeams() const {
    if (beamFlags == nullptr) return 0;
    return numBeams < beamCapacity ? numBeams : beamCapacity;
  }

  template <class Source>
  void CopyFrom(const Source& source, int sourceBeams, int sourceSamples);

  std::unique_ptr<std::byte[]> m_arrays;
};
