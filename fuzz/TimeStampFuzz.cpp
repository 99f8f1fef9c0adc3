// Any bytes as a time stamp, and any numbers as time values, dates and records: nothing may crash, and what the header
// promises must hold.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fuzz/Target.h"
#include "zelbase/platform/CAtlException.h"
#include "zelbase/time/CExTime.h"

namespace {

void Insist(bool condition) {
  if (!condition) std::abort();
}

// Hands out the bytes one value after the other; zeros when they have run out.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

  template <class T>
  T Take() {
    T value{};
    const std::size_t count = sizeof(T) < m_size ? sizeof(T) : m_size;
    if (count > 0) std::memcpy(&value, m_data, count);
    m_data += count;
    m_size -= count;
    return value;
  }

 private:
  const std::uint8_t* m_data;
  std::size_t m_size;
};

void TryStamp(const CExTime& time, const std::string& stamp) {
  const double value = time.TimeStampStringToTime(stamp);
  if (!stamp.starts_with("<0x")) Insist(value == 0.0);
  Insist(time.GetTimeStampString(value).size() == 20);
}

void TryTime(const CExTime& time, double value) {
  const CTime seconds = time.MsecToCTime(value);
  const bool inCalendar = seconds >= 0 && seconds <= 32535215999;
  Insist((time.GetHHMMSS(value) == -10101) == !inCalendar);
  Insist(time.TimeToString(value, false, true, true).empty() == !inCalendar);
  time.TimeToString(value, true, true, true);
  double secondsOfDay = 0.0;
  Insist(time.TimestampToDaytime(value, secondsOfDay) == seconds);
  time.ConvertOleTime(time.ConvertToOleTime(value));
  COleDateTime date;
  date.m_dt = value;
  date.m_status = COleDateTime::valid;
  Insist(std::isfinite(time.ConvertOleTime(date)));
  Insist(time.GetWinTime(value) <= 4294967295u);
  Insist(time.GetTimeStampString(value).size() == 20);
  tagTIME5Q record{};
  Insist(time.TimeTo5qTime(value, &record));
  Insist(inCalendar || record.year == 0);
  time.GetExTime(value);
  time.GetZelTime(value);
}

void TryDate(const CExTime& time, int a, int b, int c, int d, int e, int f) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  time.ConvertToJulian(a, b);
  time.ConvertToJulian(a, b, c);
  time.ConvertToJulianFrac(a, b, c);
  time.ConvertFromJulian(a, year);
  time.ConvertFromJulian(a, month, year);
  if (time.JulianDate(a, b, month, day)) Insist(month >= 1 && month <= 12 && day >= 1 && day <= 31);
  try {
    const CTime value = CExTime::UtcDateToTime(a, b, c, d, e, f);
    if (value != 0) {
      CExTime::TimeToUtcDate(value, year, month, day, hour, minute, second);
      Insist(year == a && hour == d && minute == e && second == f);
    }
  } catch (const CAtlException& failure) {
    Insist(failure.m_hr == 0x80004005u);
  }
}

void TryRecord(const CExTime& time, const tagTIME5Q& record) {
  double value = -1.0;
  if (!time.TimeFrom5qTime(value, &record)) Insist(value == -1.0);
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const CExTime time;
  TryStamp(time, std::string(reinterpret_cast<const char*>(data), size));
  TryStamp(time, "<0x" + std::string(reinterpret_cast<const char*>(data), size));

  Source source(data, size);
  TryTime(time, source.Take<double>());
  int fields[6];
  for (int& field : fields) field = source.Take<int>();
  TryDate(time, fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]);
  // Numbers near the range, where most of the rules are.
  TryDate(time, 1965 + fields[0] % 1050, fields[1] % 16, fields[2] % 36, fields[3] % 26, fields[4] % 64, fields[5] % 64);
  TryRecord(time, source.Take<tagTIME5Q>());
  TryTime(time, static_cast<double>(source.Take<long long>()));
}
