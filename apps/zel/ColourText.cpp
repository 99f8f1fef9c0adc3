#include "ColourText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace zel {
namespace {

struct NamedColour {
  std::string_view name;
  int red, green, blue;
};
constexpr std::array<NamedColour, 17> kNames = {{{"black", 0, 0, 0},
                                                 {"white", 255, 255, 255},
                                                 {"red", 255, 0, 0},
                                                 {"green", 0, 255, 0},
                                                 {"blue", 0, 0, 255},
                                                 {"yellow", 255, 255, 0},
                                                 {"cyan", 0, 255, 255},
                                                 {"magenta", 255, 0, 255},
                                                 {"orange", 255, 165, 0},
                                                 {"brown", 165, 42, 42},
                                                 {"gray", 128, 128, 128},
                                                 {"grey", 128, 128, 128},
                                                 {"navy", 0, 0, 128},
                                                 {"maroon", 128, 0, 0},
                                                 {"darkgreen", 0, 100, 0},
                                                 {"lightblue", 173, 216, 230},
                                                 {"purple", 128, 0, 128}}};

// 0 to 255; palettes that a program has computed have fractions.
bool TakeChannel(std::string_view& rest, int& value) {
  double number = 0.0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number, std::chars_format::fixed);
  if (result.ec != std::errc() || !(number >= 0.0 && number <= 255.0)) return false;
  value = static_cast<int>(std::lround(number));
  rest.remove_prefix(static_cast<std::size_t>(result.ptr - rest.data()));
  return true;
}

bool FromHexadecimal(std::string_view digits, COLORREF& color) {
  unsigned int rgb = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), rgb, 16);
  if (digits.size() != 6 || result.ec != std::errc() || result.ptr != digits.data() + digits.size()) return false;
  color = MakeColour(static_cast<int>(rgb >> 16), static_cast<int>(rgb >> 8), static_cast<int>(rgb));
  return true;
}

bool FromChannels(std::string_view text, COLORREF& color) {
  std::array<int, 3> channels{};
  for (std::size_t i = 0; i < channels.size(); ++i) {
    if (i > 0) {
      if (text.empty() || (text.front() != ',' && text.front() != '/')) return false;
      text.remove_prefix(1);
      while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    }
    if (!TakeChannel(text, channels[i])) return false;
  }
  if (!text.empty()) return false;
  color = MakeColour(channels[0], channels[1], channels[2]);
  return true;
}

}  // namespace

bool ToColour(std::string_view text, COLORREF& color) {
  if (!text.empty() && text.front() == '#') return FromHexadecimal(text.substr(1), color);
  for (const NamedColour& named : kNames) {
    if (named.name != text) continue;
    color = MakeColour(named.red, named.green, named.blue);
    return true;
  }
  return FromChannels(text, color);
}

std::string ColourText(COLORREF color) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", static_cast<unsigned>(RedOf(color)), static_cast<unsigned>(GreenOf(color)),
                static_cast<unsigned>(BlueOf(color)));
  return text;
}

int RedOf(COLORREF color) { return static_cast<int>(color & 255u); }
int GreenOf(COLORREF color) { return static_cast<int>((color >> 8) & 255u); }
int BlueOf(COLORREF color) { return static_cast<int>((color >> 16) & 255u); }

COLORREF MakeColour(int red, int green, int blue) {
  return (static_cast<COLORREF>(red) & 255u) | (static_cast<COLORREF>(green) & 255u) << 8 | (static_cast<COLORREF>(blue) & 255u) << 16;
}

}  // namespace zel
