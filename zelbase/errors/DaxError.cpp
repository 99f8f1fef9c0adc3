#include "zelbase/errors/DaxError.h"

#include "zelbase/config/CRCChecksum.h"
#include "zelbase/errors/detail/ErrorTexts.h"
#include "zelbase/errors/detail/FillText.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/time/detail/TimeText.h"

using zelbase::detail::TextOf;

namespace {

constexpr const char* kSection = "Dax Error";

// Kept: the highest bit decides; a stack that could neither interpolate nor extrapolate tells the latter.
std::string TextFor(DAXCODE code) {
  if ((code & DaxError::Comp) != 0) return TextOf(kSection, "Comp", 12033);
  if ((code & DaxError::Read) != 0) return TextOf(kSection, "Read", 12032);
  if ((code & DaxError::Extrapolate) != 0) return TextOf(kSection, "Extrapolate", 12031);
  if ((code & DaxError::Interpolate) != 0) return TextOf(kSection, "Interpolate", 12030);
  return std::string();
}

}  // namespace

DaxError::DaxError(const std::string& stack, DAXCODE code, const std::string& fileName, bool on, double time)
    : m_stack(stack), m_code(code), m_fileName(fileName), m_on(on), m_time(time) {
  // Kept: the time of the data, so that the error stands in a list at that time.
  SetErrorTime(zelbase::detail::WholeSeconds(time));
}

DaxError& DaxError::operator=(const DaxError& other) {
  m_stack = other.m_stack;
  m_code = other.m_code;
  m_fileName = other.m_fileName;
  m_on = other.m_on;
  m_time = other.m_time;
  Error::operator=(other);  // last: `other` may be among the causes that go
  return *this;
}

// Kept: the section's own name, with its blank, where other errors have words for a title.
const std::string DaxError::Type() const { return TextOf(kSection, "Type", "Dax Error"); }

const std::string DaxError::Format() const {
  // Kept: the whole stack, which may hold "\"; it is no file name.
  return zelbase::detail::FillText(TextFor(m_code), {m_stack});
}

const std::string DaxError::Details() const {
  std::string details = m_fileName;
  // Kept: two blanks behind "On", so that the times stand in one column.
  details.append(m_on ? " On  " : " Off ");
  details.append(zelbase::detail::FormatTime(m_time, true, true, true));
  return details.append(" ").append(m_stack);
}

unsigned int DaxError::Signature() const {
  CRCChecksum sum;
  sum += m_stack;
  sum += static_cast<int>(m_code);
  sum += m_fileName;
  sum += static_cast<unsigned char>(m_on ? 1 : 0);
  // Kept: the low half, since milliseconds since 1970 do not fit 32 bits.
  sum += static_cast<unsigned int>(zelbase::detail::ToCount32(m_time));
  return sum.Value();
}
