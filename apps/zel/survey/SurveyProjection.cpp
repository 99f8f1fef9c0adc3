// The transverse Mercator projection of SurveyProjection by the series in the third flattening, to its fourth power: within a
// thousandth of a millimetre as far as 3000 km from the central meridian.

#include <array>
#include <cmath>

#include "survey/Survey.h"
#include "zelbase/geometry/MathConstants.h"

namespace zel {
namespace {

using Series = std::array<double, 4>;

constexpr double kSemiMajor = 6378137.0;  // WGS 84
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double n = kFlattening / (2.0 - kFlattening), n2 = n * n, n3 = n2 * n, n4 = n2 * n2;
constexpr double kRadius = kSemiMajor / (1.0 + n) * (1.0 + n2 / 4.0 + n4 / 64.0);

constexpr Series kAlpha = {n / 2 - 2 * n2 / 3 + 5 * n3 / 16 + 41 * n4 / 180, 13 * n2 / 48 - 3 * n3 / 5 + 557 * n4 / 1440,
                           61 * n3 / 240 - 103 * n4 / 140, 49561 * n4 / 161280};
constexpr Series kBeta = {n / 2 - 2 * n2 / 3 + 37 * n3 / 96 - n4 / 360, n2 / 48 + n3 / 15 - 437 * n4 / 1440,
                          17 * n3 / 480 - 37 * n4 / 840, 4397 * n4 / 161280};
constexpr Series kDelta = {2 * n - 2 * n2 / 3 - 2 * n3 + 116 * n4 / 45, 7 * n2 / 3 - 8 * n3 / 5 - 227 * n4 / 45,
                           56 * n3 / 15 - 136 * n4 / 35, 4279 * n4 / 630};

// A place on the sphere of conformal latitudes: northing and easting in units of kRadius.
struct Place {
  double north, east;
};

Place Shifted(const Place& place, const Series& series, double sign) {
  Place shifted = place;
  for (std::size_t j = 0; j < series.size(); ++j) {
    const double k = 2.0 * static_cast<double>(j + 1);
    shifted.north += sign * series[j] * std::sin(k * place.north) * std::cosh(k * place.east);
    shifted.east += sign * series[j] * std::cos(k * place.north) * std::sinh(k * place.east);
  }
  return shifted;
}

// Latitude and longitude in radians, the longitude from the central meridian.
Place Project(double latitude, double longitude) {
  const double e = 2.0 * std::sqrt(n) / (1.0 + n);
  const double sine = std::sin(latitude);
  const double t = std::sinh(std::atanh(sine) - e * std::atanh(e * sine));
  const Place sphere{std::atan2(t, std::cos(longitude)), std::atanh(std::sin(longitude) / std::sqrt(1.0 + t * t))};
  return Shifted(sphere, kAlpha, 1.0);
}

}  // namespace

void SurveyProjection::ToGrid(double latitude, double longitude, double& x, double& y) const {
  const Place place = Project(latitude * MATH::DTR, (longitude - centralMeridian) * MATH::DTR);
  const Place origin = Project(latitudeOfOrigin * MATH::DTR, 0.0);
  x = falseEasting + scaleFactor * kRadius * place.east;
  y = falseNorthing + scaleFactor * kRadius * (place.north - origin.north);
}

void SurveyProjection::ToGeographic(double x, double y, double& latitude, double& longitude) const {
  const Place origin = Project(latitudeOfOrigin * MATH::DTR, 0.0);
  const Place place{(y - falseNorthing) / (scaleFactor * kRadius) + origin.north, (x - falseEasting) / (scaleFactor * kRadius)};
  const Place sphere = Shifted(place, kBeta, -1.0);
  const double conformal = std::asin(std::sin(sphere.north) / std::cosh(sphere.east));
  double geodetic = conformal;
  for (std::size_t j = 0; j < kDelta.size(); ++j) geodetic += kDelta[j] * std::sin(2.0 * static_cast<double>(j + 1) * conformal);
  latitude = geodetic * MATH::RTD;
  longitude = centralMeridian + std::atan2(std::sinh(sphere.east), std::cos(sphere.north)) * MATH::RTD;
}

}  // namespace zel
