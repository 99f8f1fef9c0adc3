// A failure of the data exchange layer: a data stack could not interpolate, extrapolate, read or compute. Neighbour:
// Error.h, the base; FileError.h, for a file that fails.
#pragma once

#include <string>

#include "zelbase/errors/Error.h"

// Says which data stack, what was tried and at what time of the data. The error stands in a list at that time, not at the
// time of the failure. Making one does not start the clock discipline. Copies as Error.h says.
//
//   DaxError("Heading", DaxError::Extrapolate, "line12.raw", true, time).Report();
class ZELBASE_API DaxError : public Error {
 public:
  // A set of bits; other bits may be set as well and count in the signature only.
  enum DAXCODE : int { Interpolate = 1, Extrapolate = 2, Read = 4, Comp = 8 };

  // Any texts and any code are taken. `on` is shown in Details. `time` is a time value, milliseconds since 1970; its whole
  // seconds, truncated towards zero, become the ErrorTime. What does not fit 64 bits, NaN included, is the smallest such
  // number there.
  DaxError(const std::string& stack, DAXCODE code, const std::string& fileName, bool on, double time);
  DaxError(const DaxError& other) = default;
  DaxError& operator=(const DaxError& other);

  // The data stack, the file and the time as they were given.
  const std::string& Stack() const { return m_stack; }
  const std::string& Filename() const { return m_fileName; }
  double Time() const { return m_time; }

  // Wording "Type" of section "Dax Error"; otherwise the same words, "Dax Error".
  const std::string Type() const override;

  // The highest of the four bits decides: wording "Interpolate", "Extrapolate", "Read" or "Comp" of section "Dax Error",
  // otherwise a built-in text; filled in with the stack, in full. Without any of the bits it is empty.
  const std::string Format() const override;

  // The file name, a blank, "On  " or "Off ", the time in local time as CExTime::TimeToString writes it with date, seconds
  // and milliseconds, a blank, the stack.
  const std::string Details() const override;

  Error* Copy() const override { return new DaxError(*this); }

  // Over stack, code (four bytes), file name, the switch (one byte) and the low 32 bits of the time's whole milliseconds.
  unsigned int Signature() const override;

 private:
  std::string m_stack;
  DAXCODE m_code;
  std::string m_fileName;
  bool m_on;
  double m_time;
};

using DAXCODE = DaxError::DAXCODE;
