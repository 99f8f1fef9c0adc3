// The fields of a ping, once: PingStruct.h and PingStructRW.h declare, reset and copy them from these lists, so that
// neither can forget one. Internal to the library, though seen by its users.
//
// The order and the widths are what the sonar modules agree on. A field named by its place is filled and read by them alone.
#pragma once

// FIELD(type, name, default) for each scalar.
#define ZELBASE_PING_SCALARS(FIELD)                                                    \
  FIELD(unsigned int, headerWord0, 0)                                                  \
  FIELD(int, numBeams, 0) /* valid elements in each array of beams */                  \
  FIELD(unsigned int, headerWord2, 0)                                                  \
  FIELD(int, numSamples, 0) /* valid elements in each array of samples */              \
  FIELD(double, headerDouble0, 0.0)                                                    \
  FIELD(double, headerDouble1, 0.0)                                                    \
  FIELD(double, headerDouble2, 0.0)                                                    \
  FIELD(double, nadirDepth, 0.0) /* found by CompNadirBeam, positive down */           \
  FIELD(int, nadirBeam, -1)      /* found by CompNadirBeam; -1: not known */           \
  FIELD(double, headerDouble4, 0.0)                                                    \
  FIELD(double, headerDouble5, 0.0)                                                    \
  FIELD(double, headerDouble6, 0.0)                                                    \
  FIELD(double, headerDouble7, 0.0)                                                    \
  FIELD(double, headerDouble8, 0.0)                                                    \
  FIELD(double, headerDouble9, 0.0)                                                    \
  FIELD(double, headerDouble10, 0.0)                                                   \
  FIELD(double, headerDouble11, 0.0)                                                   \
  FIELD(unsigned int, pingFlags, 0) /* bit 16: the whole ping is rejected */           \
  FIELD(unsigned short, headerShort0, 0)                                               \
  FIELD(unsigned short, headerShort1, 0)                                               \
  FIELD(unsigned int, headerWord3, 0)                                                  \
  FIELD(unsigned int, headerWord4, 0)                                                  \
  FIELD(unsigned int, headerWord5, 0)                                                  \
  FIELD(unsigned int, headerWord6, 0)                                                  \
  FIELD(float, headerFloat0, 0.0f)                                                     \
  FIELD(unsigned int, headerWord7, 0)                                                  \
  FIELD(float, headerFloat1, 0.0f)                                                     \
  FIELD(unsigned int, headerWord8, 0)                                                  \
  FIELD(unsigned char, headerByte0, 0)                                                 \
  FIELD(unsigned char, headerByte1, 0)                                                 \
  FIELD(double, headerDouble12, 1.0) /* the only one that does not begin at 0 or -1 */ \
  FIELD(double, headerDouble13, 0.0)                                                   \
  FIELD(double, headerDouble14, 0.0)                                                   \
  FIELD(unsigned int, headerWord9, 0)                                                  \
  FIELD(float, headerFloat2, 0.0f)                                                     \
  FIELD(float, headerFloat3, 0.0f)                                                     \
  FIELD(float, headerFloat4, 0.0f)                                                     \
  FIELD(double, headerDouble15, 0.0)                                                   \
  FIELD(unsigned int, headerWord10, 0)                                                 \
  FIELD(unsigned int, hasShortArray, 0) /* other than 0: copy beamShort1, too */       \
  FIELD(unsigned int, headerWord11, 0)

// BEAMS(type, name) for each array with an element a beam, SAMPLES(type, name) for those with an element a sample, and
// OPTIONAL(type, name) for the one of beams that is copied between owners only when the ping says hasShortArray.
#define ZELBASE_PING_ARRAYS(BEAMS, SAMPLES, OPTIONAL)                                        \
  BEAMS(float, beamX) /* the sounding relative to the sonar: first horizontal coordinate, */ \
  BEAMS(float, beamY) /* second horizontal coordinate, */                                    \
  BEAMS(float, beamZ) /* vertical coordinate, negative down */                               \
  BEAMS(unsigned int, beamWord0)                                                             \
  BEAMS(int, beamFlags) /* as Multibeam.h has them */                                        \
  BEAMS(unsigned short, beamShort0)                                                          \
  BEAMS(float, beamRange) /* what was measured; exactly 0: nothing was */                    \
  BEAMS(unsigned int, beamWord1)                                                             \
  BEAMS(unsigned int, beamWord2)                                                             \
  BEAMS(unsigned int, beamWord3)                                                             \
  SAMPLES(unsigned int, sampleWord0)                                                         \
  SAMPLES(unsigned int, sampleWord1)                                                         \
  SAMPLES(unsigned int, sampleWord2)                                                         \
  SAMPLES(unsigned int, sampleWord3)                                                         \
  BEAMS(unsigned int, beamWord4)                                                             \
  BEAMS(unsigned int, beamWord5)                                                             \
  BEAMS(unsigned int, beamWord6)                                                             \
  BEAMS(unsigned int, beamWord7)                                                             \
  BEAMS(unsigned int, beamWord8)                                                             \
  BEAMS(unsigned int, beamWord9)                                                             \
  BEAMS(unsigned int, beamWord10)                                                            \
  BEAMS(unsigned int, beamWord11)                                                            \
  BEAMS(unsigned int, beamWord12)                                                            \
  OPTIONAL(unsigned short, beamShort1)                                                       \
  BEAMS(unsigned char, beamByte0)

// The two ways to declare them.
#define ZELBASE_PING_DECLARE_SCALAR(type, name, value) type name = value;
#define ZELBASE_PING_DECLARE_ARRAY(type, name) type* name = nullptr;
