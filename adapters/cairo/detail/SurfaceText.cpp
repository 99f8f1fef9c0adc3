#include "adapters/cairo/detail/SurfaceText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

namespace zelbase::detail {
namespace {

constexpr double kMostPixels = 4096.0;
constexpr double kStandardPoints = 10.0;
constexpr double kPointsAnInch = 72.0;
constexpr int kBold = 600;
constexpr std::size_t kLongestFace = 256;
constexpr char32_t kRefused = 0xFFFFFFFF;

// The characters of the bytes 0x80 to 0x9F in Windows-1252.
using std::string_view_literals::operator""sv;
constexpr std::u32string_view kUpperControls =
    U"\u20AC\0\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\0\u017D\0"
    U"\0\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\0\u017E\u0178"sv;

using Bytes = std::string_view;

unsigned char ByteAt(Bytes text, std::size_t at) { return static_cast<unsigned char>(text[at]); }

// The character whose sequence begins at `at`, and moves on behind it; kRefused when there is no valid one.
char32_t NextCharacter(Bytes text, std::size_t& at) {
  const unsigned char first = ByteAt(text, at++);
  if (first < 0x80) return first;
  if (first < 0xC2 || first > 0xF4) return kRefused;
  const int more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
  char32_t character = first & (0x3Fu >> more);
  for (int i = 0; i < more; ++i, ++at) {
    if (at >= text.size() || (ByteAt(text, at) & 0xC0) != 0x80) return kRefused;
    character = character << 6 | (ByteAt(text, at) & 0x3Fu);
  }
  constexpr std::array<char32_t, 4> kLeast = {0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return character < kLeast[static_cast<std::size_t>(more)] || character > 0x10FFFF || isSurrogate ? kRefused : character;
}

char32_t FromWindows1252(unsigned char byte) { return byte < 0x80 || byte >= 0xA0 ? byte : kUpperControls[byte - 0x80u]; }

bool IsUtf8(Bytes text) {
  for (std::size_t at = 0; at < text.size();) {
    if (NextCharacter(text, at) == kRefused) return false;
  }
  return true;
}

// False when it would make the text longer than `most`.
bool Append(std::string& text, char32_t character, std::size_t most) {
  const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
  if (isControl) return true;
  const int more = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  if (text.size() + static_cast<std::size_t>(more) + 1 > most) return false;
  constexpr std::array<unsigned int, 4> kFront = {0, 0xC0, 0xE0, 0xF0};
  text += static_cast<char>(kFront[static_cast<std::size_t>(more)] | character >> 6 * more);
  for (int i = more - 1; i >= 0; --i) text += static_cast<char>(0x80u | (character >> 6 * i & 0x3Fu));
  return true;
}

double Magnitude(int pixels) { return std::min(std::abs(static_cast<double>(pixels)), kMostPixels); }

// The font's size for a height: of the letters below 0, of the whole line above it.
double SizeOf(cairo_t* context, int height, int dotsPerInch) {
  if (height == 0) return kStandardPoints * dotsPerInch / kPointsAnInch;
  if (height < 0) return Magnitude(height);
  constexpr double kFine = 1024.0;  // large enough that rounded measures do not matter
  cairo_set_font_size(context, kFine);
  cairo_font_extents_t line;
  cairo_font_extents(context, &line);
  const double whole = line.ascent + line.descent;
  return whole > 0 ? Magnitude(height) * kFine / whole : Magnitude(height);
}

// How much wider than usual a letter of `width` pixels is, by the mean of the letters.
double StretchOf(cairo_t* context, double size, int width) {
  if (width == 0) return 1.0;
  cairo_set_font_size(context, size);
  cairo_text_extents_t letters;
  cairo_text_extents(context, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", &letters);
  return letters.x_advance > 0 ? Magnitude(width) * 52 / letters.x_advance : 1.0;
}

}  // namespace

std::string ToDrawnText(std::string_view text, std::size_t most) {
  const bool isUtf8 = IsUtf8(text);
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = isUtf8 ? NextCharacter(text, at) : FromWindows1252(ByteAt(text, at++));
    if (!Append(result, character, most)) break;
  }
  return result;
}

void UseFont(cairo_t* context, const LOGFONT& font, int dotsPerInch) {
  const std::string face = ToDrawnText(font.lfFaceName, kLongestFace);
  cairo_select_font_face(context, face.c_str(), CAIRO_FONT_SLANT_NORMAL,
                         font.lfWeight >= kBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  const double size = SizeOf(context, font.lfHeight, dotsPerInch);
  cairo_matrix_t matrix;
  cairo_matrix_init_scale(&matrix, size * StretchOf(context, size, font.lfWidth), size);
  cairo_set_font_matrix(context, &matrix);
}

TextBox MeasureText(cairo_t* context, const std::string& text) {
  cairo_text_extents_t extents;
  cairo_font_extents_t line;
  cairo_text_extents(context, text.c_str(), &extents);
  cairo_font_extents(context, &line);
  return {extents.x_advance, line.ascent, line.descent};
}

}  // namespace zelbase::detail
