#include "survey/SurveyPings.h"

#include <charconv>
#include <cmath>

#include "FieldText.h"
#include "UtcText.h"
#include "zelbase/sonar/Multibeam.h"
#include "zelbase/sonar/PingStruct.h"

namespace zel {
namespace {

constexpr double kMostMetres = 100000.0;  // of a beam, in each direction

bool TakeTime(std::string_view& rest, double& time) {
  std::string_view number = rest;
  if (FromUtcText(TakeWord(rest), time)) return true;
  rest = number;
  return TakeNumber(rest, time);
}

bool ToFlag(std::string_view word, unsigned int& flags) {
  const bool hexadecimal = word.starts_with("0x") || word.starts_with("0X");
  const std::string_view digits = hexadecimal ? word.substr(2) : word;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), flags, hexadecimal ? 16 : 10);
  if (result.ec == std::errc() && result.ptr == digits.data() + digits.size()) return true;
  unsigned int bit = 0;
  while (!word.empty()) {
    const std::string_view name = word.substr(0, word.find('+'));
    word.remove_prefix(std::min(name.size() + 1, word.size()));
    if (!Multibeam::GetFilterFlag(std::string(name), bit)) return false;
    flags |= bit;
  }
  return true;
}

// The flags that may end a line; 0 when they do not stand there.
bool TakeFlags(std::string_view& rest, unsigned int& flags) {
  flags = 0;
  return IsEmpty(rest) || ToFlag(TakeWord(rest), flags);
}

bool IsLength(double value) { return std::abs(value) <= kMostMetres; }

}  // namespace

bool SurveyPingFile::TakeHead(std::string_view rest) {
  SurveyPing head;
  unsigned int flags = 0;
  const bool read = TakeTime(rest, head.time) && TakeNumber(rest, head.x) && TakeNumber(rest, head.y) && TakeNumber(rest, head.heading) &&
                    TakeFlags(rest, flags) && IsEmpty(rest) && head.time != 0.0;
  if (!read) return false;
  head.ping.pingFlags = flags;
  m_head = head;
  m_hasHead = true;
  return true;
}

bool SurveyPingFile::TakeBeam(std::string_view rest) {
  double across = 0.0, along = 0.0, depth = 0.0;
  unsigned int flags = 0;
  if (!TakeNumber(rest, across) || !TakeNumber(rest, along) || !TakeNumber(rest, depth) || !TakeFlags(rest, flags)) return false;
  double range = std::hypot(std::hypot(across, along), depth);
  if (!IsEmpty(rest) && (!TakeNumber(rest, range) || !IsEmpty(rest))) return false;
  const bool fits = m_hasHead && m_beams.size() < kMostBeams && IsLength(across) && IsLength(along) && IsLength(depth) && IsLength(range);
  if (!fits) return false;
  m_beams.push_back({static_cast<float>(across), static_cast<float>(along), static_cast<float>(-depth), static_cast<float>(range),
                     static_cast<int>(flags)});
  return true;
}

bool SurveyPingFile::ReadLine() {
  if (!std::getline(m_stream, m_line)) return false;
  ++m_faults.lines;
  return true;
}

bool SurveyPingFile::Next(SurveyPing& ping) {
  while (ReadLine()) {
    std::string_view rest = m_line;
    if (IsEmpty(rest) || rest.front() == '#') continue;
    const std::string_view word = TakeWord(rest);
    if (word == "ping" && m_hasHead) {
      Deliver(ping);
      m_hasHead = false;
      if (!TakeHead(rest)) m_faults.Add("a ping", m_line);
      return true;
    }
    if (word == "ping" ? !TakeHead(rest) : word != "beam" || !TakeBeam(rest)) m_faults.Add("a ping or a beam of one", m_line);
  }
  if (!m_hasHead) return false;
  Deliver(ping);
  m_hasHead = false;
  return true;
}

void SurveyPingFile::Deliver(SurveyPing& ping) {
  ping = m_head;
  const std::size_t count = m_beams.size();
  std::vector<float> x(count), y(count), z(count), range(count);
  std::vector<int> flags(count);
  for (std::size_t i = 0; i < count; ++i) {
    x[i] = m_beams[i].x;
    y[i] = m_beams[i].y;
    z[i] = m_beams[i].z;
    range[i] = m_beams[i].range;
    flags[i] = m_beams[i].flags;
  }
  PingStruct view;
  view.pingFlags = m_head.ping.pingFlags;
  view.numBeams = static_cast<int>(count);
  view.beamX = x.data();
  view.beamY = y.data();
  view.beamZ = z.data();
  view.beamRange = range.data();
  view.beamFlags = flags.data();
  ping.ping = view;
  m_beams.clear();
}

}  // namespace zel
