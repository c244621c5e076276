#include "translate/orientation.h"

#include <cmath>
#include <numbers>

namespace translate {
namespace {

constexpr double kRadian = 180.0 / std::numbers::pi;

// Of a pen that lies flat the lean is a right angle, or none at all across its direction.
double lean(double towards, double slope) {
  constexpr double kNothing = 1e-9;
  if (std::abs(towards) < kNothing) return 0;
  return kRadian * std::atan2(towards, slope);
}

}  // namespace

Tilt tiltOf(double azimuth, double elevation) {
  const double slope = std::tan(std::abs(elevation) / kRadian);
  return {lean(std::cos(azimuth / kRadian), slope), lean(std::sin(azimuth / kRadian), slope)};
}

}  // namespace translate
