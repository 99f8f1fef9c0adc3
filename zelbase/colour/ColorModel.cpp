// The conversions between colour models, and what is made of single colours.
#include <algorithm>
#include <cmath>

#include "zelbase/colour/ColorTable.h"

namespace {

constexpr double kAchromatic = -1;  // the hue of a grey in HSV

// Red, green and blue as fractions of 255.
struct Channels {
  double red;
  double green;
  double blue;
};

Channels Fractions(COLORREF color) { return {(color & 0xFF) / 255.0, (color >> 8 & 0xFF) / 255.0, (color >> 16 & 0xFF) / 255.0}; }

// Truncated. What is above 1 counts as 1; below 0 and not a number give 0.
COLORREF Byte(double channel) {
  const double bytes = (channel > 1 ? 1 : channel) * 255;
  return bytes > 0 ? static_cast<COLORREF>(bytes) : 0;
}

COLORREF FromChannels(const Channels& channels) { return Byte(channels.red) | Byte(channels.green) << 8 | Byte(channels.blue) << 16; }

COLORREF Gray(COLORREF byte) { return byte * 0x010101; }

// The weight of a colour on the eye, 0 to 255, in this order of addition: that of 0x808080 is 127.99999999999999.
double Luminance(COLORREF color) { return (color >> 8 & 0xFF) * 0.59 + (color & 0xFF) * 0.3 + (color >> 16 & 0xFF) * 0.11; }

double AtMostOne(double part) { return part > 1 ? 1 : part; }

}  // namespace

COLORREF ColorTable::HSVtoRGB(double h, double s, double v) {
  s = AtMostOne(s);
  v = AtMostOne(v);
  if (h == kAchromatic) return Gray(Byte(v));
  const double x = h / 60;
  const double sextant = std::floor(x);
  const double f = x - sextant;
  const double p = (1 - s) * v;
  const double q = (1 - f * s) * v;
  const double t = (1 - (1 - f) * s) * v;
  if (sextant == 0) return FromChannels({v, t, p});
  if (sextant == 1) return FromChannels({q, v, p});
  if (sextant == 2) return FromChannels({p, v, t});
  if (sextant == 3) return FromChannels({p, q, v});
  if (sextant == 4) return FromChannels({t, p, v});
  if (sextant == 5) return FromChannels({v, p, q});
  // Kept: a hue of 360 is not 0 again; callers bring it into the circle.
  return 0;
}

void ColorTable::RGBtoHSV(COLORREF color, double& h, double& s, double& v) {
  const auto [red, green, blue] = Fractions(color);
  const double largest = std::max({red, green, blue});
  const double delta = largest - std::min({red, green, blue});
  v = largest;
  if (delta == 0) {
    s = 0;
    h = kAchromatic;
    return;
  }
  s = delta / largest;
  if (red == largest) {
    h = (green - blue) / delta;
  } else if (green == largest) {
    h = (blue - red) / delta + 2;
  } else {
    h = (red - green) / delta + 4;
  }
  h *= 60;
  if (h < 0) h += 360;
}

COLORREF ColorTable::HSLtoRGB(double h, double s, double l) {
  s = AtMostOne(s);
  l = AtMostOne(l);
  if (s == 0) return Gray(Byte(l));
  const double b = l >= 0.5 ? s + l - s * l : (1 + s) * l;
  const double a = 2 * l - b;
  return FromChannels({Hue_2_RGB(a, b, h + 1.0 / 3.0), Hue_2_RGB(a, b, h), Hue_2_RGB(a, b, h - 1.0 / 3.0)});
}

void ColorTable::RGBtoHSL(COLORREF color, double& h, double& s, double& l) {
  const auto [red, green, blue] = Fractions(color);
  const double largest = std::max({red, green, blue});
  const double smallest = std::min({red, green, blue});
  const double delta = largest - smallest;
  l = (largest + smallest) * 0.5;
  if (delta == 0) {
    h = 0;
    s = 0;
    return;
  }
  s = l < 0.5 ? delta / (largest + smallest) : delta / (2 - largest - smallest);
  const auto distance = [largest, delta](double channel) { return ((largest - channel) / 6 + delta / 2) / delta; };
  if (red == largest) {
    h = distance(blue) - distance(green);
  } else if (green == largest) {
    h = 1.0 / 3.0 + distance(red) - distance(blue);
  } else {
    h = 2.0 / 3.0 + distance(green) - distance(red);
  }
  if (h < 0) h += 1;
  // Unreached: two distances differ by a sixth at the most, so that no hue comes above five sixths.
  if (h > 1) h -= 1;
}

double ColorTable::Hue_2_RGB(double a, double b, double h) {
  if (h < 0) h += 1;
  if (h > 1) h -= 1;
  if (6 * h < 1) return a + (b - a) * 6 * h;
  if (2 * h < 1) return b;
  if (3 * h < 2) return a + (b - a) * 6 * (2.0 / 3.0 - h);
  return a;
}

void ColorTable::NiceRainbowCorrection(double& h, double& /*s*/, double& /*v*/) {
  if (h < 0) return;
  if (!(h < 240)) {
    h = ((h - 240) * 0.33299999999999996 / 120.0 + 0.667) * 360;
    return;
  }
  const double x = h / 240 * 200;
  const double whole = std::floor(x);
  const double f = x - whole;
  const double* const at = m_hueLookup + static_cast<int>(whole);  // 0 to 199, the last hue below 240 included
  h = (f * (at[1] - at[0]) + at[0]) * 360;
}

COLORREF ColorTable::ColorToGray(COLORREF color) {
  // Kept: truncated, never rounded, so that 0x808080 becomes 0x7F7F7F.
  return Gray(static_cast<COLORREF>(Luminance(color)) & 0xFF);
}

COLORREF ColorTable::GetContrastColor(COLORREF color) { return Luminance(color) <= 127.5 ? 0xFFFFFF : 0; }

COLORREF ColorTable::AddColors(COLORREF a, COLORREF b) {
  COLORREF sum = 0;
  for (unsigned int shift = 0; shift <= 16; shift += 8) {
    sum |= std::min((a >> shift & 0xFF) + (b >> shift & 0xFF), 0xFFu) << shift;
  }
  return sum;
}

COLORREF ColorTable::ScaleIntensity(COLORREF color, double factor) {
  double h = 0;
  double s = 0;
  double l = 0;
  RGBtoHSL(color, h, s, l);
  l *= factor;
  return HSLtoRGB(h, s, l);
}
