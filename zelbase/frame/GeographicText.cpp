#include "zelbase/frame/GeographicText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/frame/detail/PrintfText.h"

using zelbase::detail::AppendPadded;
using zelbase::detail::AppendPrintf;
using zelbase::detail::PrintfForm;

namespace {

constexpr int kLatitude = 10;
constexpr int kLongitude = 11;

constexpr unsigned int kDegrees = 1;
constexpr unsigned int kMinutes = 3;
constexpr unsigned int kSeconds = 7;

constexpr int kMostDecimals = 15;
constexpr double kFarthest = 1e9;

// All powers that a double holds exactly.
constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                            1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double PowerOfTen(int exponent) { return kPowers[static_cast<std::size_t>(exponent)]; }

// --- Printing ---

// Fetched once, and never destroyed: the destructor of any static may still show a coordinate.
const std::string& DegreeSymbol() {
  static const std::string& symbol = *new std::string(NumberedText(12053));
  return symbol;
}

// The letter of the hemisphere; 0 for an axis that has none.
char Hemisphere(double value, int axis) {
  // Kept: the value itself decides, not what is printed of it, so that -1e-9 is south; -0.0 is not below 0.
  if (axis == kLatitude) return value < 0 ? 'S' : 'N';
  if (axis == kLongitude) return value < 0 ? 'W' : 'E';
  return '\0';
}

// "%0*.*f" with `wholeDigits` places in front of the point.
void AppendPlaces(std::string& text, double magnitude, int wholeDigits, int decimals) {
  const int point = decimals > 0 ? 1 : 0;
  AppendPrintf(text, {.width = wholeDigits + point + decimals, .precision = decimals, .zeros = true}, magnitude);
}

// What separates the parts, with symbols and without.
void AppendDegreeMark(std::string& text, bool symbols) {
  if (symbols) {
    text += DegreeSymbol();
  } else {
    text += ' ';
  }
}

// `magnitude` rounded to whole steps of 1 / `steps` degree.
double RoundedUpALittle(double magnitude, double steps) {
  // Kept: a hundredth of a step more, so that cutting off degrees and minutes never falls one step short.
  return (std::floor(magnitude * steps + 0.5) + 0.01) / steps;
}

void AppendAsDegrees(std::string& text, double magnitude, int decimals, bool symbols) {
  AppendPlaces(text, magnitude, 3, decimals);
  AppendDegreeMark(text, symbols);
}

void AppendAsMinutes(std::string& text, double magnitude, int decimals, bool symbols) {
  const double rounded = RoundedUpALittle(magnitude, PowerOfTen(decimals) * 60);
  const int degrees = static_cast<int>(rounded);
  AppendPadded(text, degrees, 3);  // Kept: three digits for latitudes as well, so that columns line up.
  AppendDegreeMark(text, symbols);
  AppendPlaces(text, std::fabs(rounded - degrees) * 60, 2, decimals);
  text += symbols ? '\'' : ' ';  // Kept: without symbols the number itself ends in a blank.
}

void AppendAsSeconds(std::string& text, double magnitude, int decimals, bool symbols) {
  const double rounded = RoundedUpALittle(magnitude, PowerOfTen(decimals) * 3600);
  const int degrees = static_cast<int>(rounded);
  const double rest = std::fabs(rounded - degrees) * 60;
  const int minutes = static_cast<int>(rest);
  AppendPadded(text, degrees, 3);
  AppendDegreeMark(text, symbols);
  AppendPadded(text, minutes, 2);
  text += symbols ? '\'' : ' ';
  AppendPlaces(text, (rest - minutes) * 60, 2, decimals);
  text += symbols ? '"' : ' ';
}

// Towards zero; 0 for what an int does not hold.
long long WholeDegrees(double value) {
  const double whole = std::trunc(value);
  constexpr double kLowest = std::numeric_limits<int>::min();
  constexpr double kHighest = std::numeric_limits<int>::max();
  return whole >= kLowest && whole <= kHighest ? static_cast<long long>(whole) : 0;
}

// --- Reading ---

constexpr bool IsNumeral(char c) { return zelbase::detail::IsDigit(c) || c == '.'; }

// The bytes that end the reading.
constexpr auto kIsLetter = [] {
  std::array<bool, 256> is{};
  for (const char c : std::string_view("eEnNsSwW")) is[static_cast<unsigned char>(c)] = true;
  return is;
}();

constexpr bool IsHemisphere(char c) { return kIsLetter[static_cast<unsigned char>(c)]; }

// The number at the front of `digits`, which holds numerals only. False when there is none.
bool ReadNumerals(std::string_view digits, double& number) {
  constexpr std::size_t kMostDigits = 18;  // what an integer of 64 bits holds, with a point
  constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
  if (digits.size() > kMostDigits) return zelbase::detail::ScanDouble(digits, number) != 0;
  std::uint64_t whole = 0;
  const char* at = digits.data();
  const char* const end = at + digits.size();
  for (; at != end && *at != '.'; ++at) whole = whole * 10 + static_cast<std::uint64_t>(*at - '0');
  int decimals = 0;
  if (at != end) {
    for (++at; at != end && *at != '.'; ++at, ++decimals) whole = whole * 10 + static_cast<std::uint64_t>(*at - '0');
  }
  // The quotient of two exact numbers is rounded once, as reading the text is.
  const bool onlyAPoint = digits.front() == '.' && at == digits.data() + 1;
  if (onlyAPoint || whole > kExact) return zelbase::detail::ScanDouble(digits, number) != 0;
  number = static_cast<double>(whole) / PowerOfTen(decimals);
  return true;
}

// Takes the next number off `rest`. False when there is none left or it cannot be read.
bool TakeNumber(std::string_view& rest, double& number) {
  // Kept: whatever is no numeral only parts the numbers, a minus sign too; the hemisphere is the only sign.
  const char* const end = rest.data() + rest.size();
  const char* const first = std::find_if(rest.data(), end, IsNumeral);
  const char* const last = std::find_if_not(first, end, IsNumeral);
  rest = std::string_view(last, static_cast<std::size_t>(end - last));
  return first != last && ReadNumerals(std::string_view(first, static_cast<std::size_t>(last - first)), number);
}

}  // namespace

bool FormatGeogs(double value, unsigned int format, int decimals, int axis, std::string& text, bool hemisphereBehind, bool symbols) {
  const double magnitude = std::fabs(value);
  if (!(magnitude <= kFarthest)) return false;  // NaN, too
  if (format != kDegrees && format != kMinutes && format != kSeconds) return false;

  decimals = std::clamp(decimals, 0, kMostDecimals);
  const char letter = Hemisphere(value, axis);
  text.clear();
  if (letter != '\0' && !hemisphereBehind) text.append(1, letter).append(1, ' ');
  if (format == kDegrees) AppendAsDegrees(text, magnitude, decimals, symbols);
  if (format == kMinutes) AppendAsMinutes(text, magnitude, decimals, symbols);
  if (format == kSeconds) AppendAsSeconds(text, magnitude, decimals, symbols);
  if (letter != '\0' && hemisphereBehind) text += letter;
  return letter != '\0';  // Kept: an unknown axis fails late, with the number already in the text.
}

bool FormatWinFrogGeogs(double value, int axis, std::string& text) {
  const bool latitude = axis == kLatitude;
  const long long degrees = WholeDegrees(value);
  // Kept: not rounded before the split, so that 60.0000 minutes exist; the exchange form has always been written so.
  const double minutes = std::fabs(value - static_cast<double>(degrees)) * 60;
  text = Hemisphere(value, latitude ? kLatitude : kLongitude);
  AppendPadded(text, std::abs(degrees), latitude ? 2 : 3);
  text += ' ';
  AppendPrintf(text, {.width = 7, .precision = 4}, minutes);
  return true;
}

bool StringToGeo(std::string text, double& value) {
  value = 0;
  // Kept: cut at the first letter and never at the last; a letter in front leaves nothing to read.
  const auto letter = std::find_if(text.begin(), text.end(), IsHemisphere);
  const char hemisphere = letter == text.end() ? 'x' : zelbase::detail::ToLower(*letter);
  std::string_view rest(text.data(), static_cast<std::size_t>(letter - text.begin()));

  double degrees = 0;
  double minutes = 0;
  double seconds = 0;
  if (!TakeNumber(rest, degrees)) return false;
  // Kept: what cannot be read ends the reading, and what was read so far counts; a later number has no place of its own.
  if (TakeNumber(rest, minutes)) TakeNumber(rest, seconds);
  value = minutes / 60 + degrees + seconds / 3600;
  if (hemisphere == 's' || hemisphere == 'w') value = -value;
  return true;
}
