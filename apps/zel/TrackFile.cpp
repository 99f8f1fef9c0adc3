#include "TrackFile.h"

#include <filesystem>
#include <fstream>

#include "FieldText.h"
#include "zelbase/geometry/MathConstants.h"

namespace zel {
namespace {

constexpr std::size_t kMaxLines = 8;
constexpr int kRange = 0;
constexpr int kBearing = 1;
constexpr int kUsed = 3;  // both flags: the line takes part

// The next number, when there is one; true when the line has ended instead. False for anything else.
bool TakeOptional(std::string_view& rest, double& number) { return IsEmpty(rest) || TakeNumber(rest, number); }

}  // namespace

bool TrackFile::Read(const std::string& path, LineFaults& faults) {
  std::ifstream stream(path);
  if (!std::filesystem::is_regular_file(path) || !stream) return false;
  PassMark(stream);
  for (std::string line; std::getline(stream, line);) {
    ++faults.lines;
    if (!IsEmpty(line) && line.front() != '#' && !ReadLine(line, faults.lines)) faults.Add("an observation", line);
  }
  return true;
}

bool TrackFile::Open(const std::string& path, std::string& reason) {
  LineFaults faults;
  const bool opened = Read(path, faults);
  reason = faults.Refusal(path, opened, observations.empty(), "observations");
  return reason.empty();
}

bool TrackFile::ReadLine(std::string_view line, long long number) {
  const std::string_view word = TakeWord(line);
  if (word == "near") return ReadNear(line);
  if (word == "range") return ReadLop(line, kRange, number);
  if (word == "bearing") return ReadLop(line, kBearing, number);
  Observation observation;
  observation.lineNumber = number;
  const bool read = (word == "fix" && ReadFix(line, observation)) || (word == "velocity" && ReadVelocity(line, observation));
  if (read) observations.push_back(observation);
  return read;
}

bool TrackFile::ReadNear(std::string_view rest) {
  double x = 0.0, y = 0.0;
  if (!TakeNumber(rest, x) || !TakeNumber(rest, y) || !IsEmpty(rest)) return false;
  nearX = x;
  nearY = y;
  hasNear = true;
  return true;
}

bool TrackFile::ReadFix(std::string_view rest, Observation& fix) {
  double sigmaX = 0.0, correlation = 0.0;
  if (!TakeNumber(rest, fix.time) || !TakeNumber(rest, fix.x) || !TakeNumber(rest, fix.y) || !TakeNumber(rest, sigmaX)) return false;
  double sigmaY = sigmaX;
  if (!TakeOptional(rest, sigmaY) || !TakeOptional(rest, correlation) || !IsEmpty(rest)) return false;
  fix.varX = sigmaX * sigmaX;
  fix.varY = sigmaY * sigmaY;
  fix.covXY = correlation * sigmaX * sigmaY;
  return sigmaX > 0 && sigmaY > 0 && correlation > -1 && correlation < 1;
}

bool TrackFile::ReadVelocity(std::string_view rest, Observation& velocity) {
  velocity.kind = Observation::Kind::Velocity;
  return TakeNumber(rest, velocity.time) && TakeNumber(rest, velocity.x) && TakeNumber(rest, velocity.y) && IsEmpty(rest);
}

bool TrackFile::ReadLop(std::string_view rest, int type, long long number) {
  LopStruct lop{};
  double time = 0.0, sigma = 0.0;
  const bool read = TakeNumber(rest, time) && TakeNumber(rest, lop.x) && TakeNumber(rest, lop.y) && TakeNumber(rest, lop.observed) &&
                    TakeNumber(rest, sigma) && TakeOptional(rest, lop.correction) && IsEmpty(rest);
  if (!read || sigma <= 0) return false;
  if (type == kBearing) sigma *= MATH::DTR;
  lop.type = type;
  lop.flags = kUsed;
  lop.variance = sigma * sigma;
  const bool goesOn = !observations.empty() && observations.back().kind == Observation::Kind::Lines && observations.back().time == time;
  if (!goesOn) {
    Observation& set = observations.emplace_back();
    set.kind = Observation::Kind::Lines;
    set.time = time;
    set.lineNumber = number;
  }
  if (observations.back().lines.size() == kMaxLines) return false;
  observations.back().lines.push_back(lop);
  return true;
}

}  // namespace zel
