// The vocabulary of a multibeam sonar's beam flags: which filter set which bit, which beams count as rejected or
// undetected, and which colour shows each state. Neighbours: PingStruct.h, whose beams carry the flags; TwttIncident.h,
// SonarImage.h and WaterColumnProjection.h, the records beside them.
//
// The flags of a beam are one word of 32 bits:
//
//   bit    0  first quality test passed      2  detection of the first kind
//          1  second quality test passed     3  detection of the second kind
//   8 .. 31   one bit a filter that rejected the beam; GetFilterFlag knows them by name
//
// A word below 256 is a good beam. That is asked of the word as a signed number: with its highest bit set ("IGN") it is
// negative, and so counts as good whatever filter has rejected it, but for "MAN".
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Every function takes any word and any sonar identifier, and may be called from any thread. Colours have red in the low
// byte.
namespace Multibeam {

// Whether beams without a detection are shown. One setting for the whole process, 0 at first; any other number is yes, and
// then no beam counts as undetected.
ZELBASE_API void SetShowNoDetectionBeams(int show);

// Bit 16 of a ping's flags.
ZELBASE_API bool IsPingRejected(unsigned int flags);

// True from 256 up, as a signed number; a negative word is rejected through bit 16 alone.
ZELBASE_API bool IsBeamRejected(unsigned int flags);

// True as well for a beam that IsBeamUndetected, and so depends on the setting.
ZELBASE_API bool IsBeamRejected(int sonarId, unsigned int flags);

// Neither bit 2 nor bit 3 is set, by a sonar that sets such bits at all: those of the identifiers 0, 1, 2, 72, 73, 74,
// 1000, 3000, 3001, 3002 and 20000 do not, and none of their beams is undetected. False for all while beams without
// detection are shown.
ZELBASE_API bool IsBeamUndetected(int sonarId, unsigned int flags);

// White for a good beam, else the colour of the filter that comes first in this order: MAN, IGN, BEA, QUA, RAN, DEP, NAD,
// SLO, INT, FLY, STA, IHO, CUS, CUB, SMA. Black for bits that belong to no filter.
ZELBASE_API unsigned int GetRejectColor(unsigned int flags);

// By the two quality tests: both passed, only the second, only the first, neither.
ZELBASE_API unsigned int GetQualityColor(unsigned int flags);

// By the two kinds of detection; black for none.
ZELBASE_API unsigned int GetDetectionColor(unsigned int flags);

// The bit of the filter `name`, upper case: MAN 16, BEA 8, QUA 9, RAN 10, DEP 11, SLO 13, FLY 20, NAD 12, INT 14, STA 15,
// CUB 21, IHO 23, CUS 22, SMA 24, IGN 31. False, with `flag` untouched, for any other name.
ZELBASE_API bool GetFilterFlag(std::string name, unsigned int& flag);

}  // namespace Multibeam
