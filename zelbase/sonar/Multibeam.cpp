#include "zelbase/sonar/Multibeam.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>

namespace {

constexpr unsigned int kMan = 0x00010000;
constexpr unsigned int kBea = 0x00000100;
constexpr unsigned int kQua = 0x00000200;
constexpr unsigned int kRan = 0x00000400;
constexpr unsigned int kDep = 0x00000800;
constexpr unsigned int kNad = 0x00001000;
constexpr unsigned int kSlo = 0x00002000;
constexpr unsigned int kInt = 0x00004000;
constexpr unsigned int kSta = 0x00008000;
constexpr unsigned int kFly = 0x00100000;
constexpr unsigned int kCub = 0x00200000;
constexpr unsigned int kCus = 0x00400000;
constexpr unsigned int kIho = 0x00800000;
constexpr unsigned int kSma = 0x01000000;
constexpr unsigned int kIgn = 0x80000000;

struct Filter {
  std::string_view name;
  unsigned int flag;
};

constexpr std::array<Filter, 15> kFilters = {{{"MAN", kMan},
                                              {"BEA", kBea},
                                              {"QUA", kQua},
                                              {"RAN", kRan},
                                              {"DEP", kDep},
                                              {"SLO", kSlo},
                                              {"FLY", kFly},
                                              {"NAD", kNad},
                                              {"INT", kInt},
                                              {"STA", kSta},
                                              {"CUB", kCub},
                                              {"IHO", kIho},
                                              {"CUS", kCus},
                                              {"SMA", kSma},
                                              {"IGN", kIgn}}};

struct Shade {
  unsigned int flag;
  unsigned int color;
};

constexpr unsigned int kWhite = 0xFFFFFF;
constexpr unsigned int kBlack = 0;

// Kept: an order of its own, not that of the names; "MAN" stands before "IGN", and "FLY" before "STA".
constexpr std::array<Shade, 15> kShades = {{{kMan, 0x00FF00},
                                            {kIgn, 0xB4B4FF},
                                            {kBea, 0x00B4B4},
                                            {kQua, 0x0000FF},
                                            {kRan, 0x00FFFF},
                                            {kDep, 0xFFFF00},
                                            {kNad, 0xFF8080},
                                            {kSlo, 0xFF00FF},
                                            {kInt, 0x0080FF},
                                            {kFly, 0x408000},
                                            {kSta, 0x800080},
                                            {kIho, 0x28008C},
                                            {kCus, 0x007878},
                                            {kCub, 0x640000},
                                            {kSma, 0x1CB9FD}}};

// Sonars that never tell what kind of detection a beam has.
constexpr std::array<int, 11> kSonarsWithoutDetections = {0, 1, 2, 72, 73, 74, 1000, 3000, 3001, 3002, 20000};

constexpr unsigned int kFirstQuality = 0x01;
constexpr unsigned int kSecondQuality = 0x02;
constexpr unsigned int kFirstDetection = 0x04;
constexpr unsigned int kSecondDetection = 0x08;
constexpr int kFirstReject = 256;

constinit std::atomic<int> g_showNoDetectionBeams{0};

// The color of the combination of two bits.
unsigned int Choose(bool first, bool second, unsigned int both, unsigned int onlyFirst, unsigned int onlySecond, unsigned int neither) {
  if (first) return second ? both : onlyFirst;
  return second ? onlySecond : neither;
}

}  // namespace

namespace Multibeam {

void SetShowNoDetectionBeams(int show) { g_showNoDetectionBeams.store(show, std::memory_order_relaxed); }

bool IsPingRejected(unsigned int flags) { return (flags & kMan) != 0; }

bool IsBeamRejected(unsigned int flags) {
  // Kept: as a signed number, so that a negative word is good unless it was rejected by hand.
  return static_cast<int>(flags) >= kFirstReject || (flags & kMan) != 0;
}

bool IsBeamRejected(int sonarId, unsigned int flags) { return IsBeamUndetected(sonarId, flags) || IsBeamRejected(flags); }

bool IsBeamUndetected(int sonarId, unsigned int flags) {
  // Kept: the setting makes every beam a detected one, and with that also decides what counts as rejected.
  if (g_showNoDetectionBeams.load(std::memory_order_relaxed) != 0) return false;
  if ((flags & (kFirstDetection | kSecondDetection)) != 0) return false;
  return std::find(kSonarsWithoutDetections.begin(), kSonarsWithoutDetections.end(), sonarId) == kSonarsWithoutDetections.end();
}

unsigned int GetRejectColor(unsigned int flags) {
  if (flags < static_cast<unsigned int>(kFirstReject)) return kWhite;
  const auto shade = std::find_if(kShades.begin(), kShades.end(), [flags](const Shade& entry) { return (flags & entry.flag) != 0; });
  // Kept: bits 17 to 19 and 25 to 30 have no colour, yet reject.
  return shade == kShades.end() ? kBlack : shade->color;
}

unsigned int GetQualityColor(unsigned int flags) {
  return Choose((flags & kSecondQuality) != 0, (flags & kFirstQuality) != 0, 0x20FF20, 0x00FFFF, 0x008CFF, 0x2020FF);
}

unsigned int GetDetectionColor(unsigned int flags) {
  return Choose((flags & kFirstDetection) != 0, (flags & kSecondDetection) != 0, 0x00B4F0, 0xFF4020, 0x20FF20, kBlack);
}

bool GetFilterFlag(std::string name, unsigned int& flag) {
  const auto filter = std::find_if(kFilters.begin(), kFilters.end(), [&name](const Filter& entry) { return entry.name == name; });
  if (filter == kFilters.end()) return false;
  flag = filter->flag;
  return true;
}

}  // namespace Multibeam
