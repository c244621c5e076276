// The tilt of the pen from the angles that devices measure.
#pragma once

namespace translate {

/// In degrees: how far the pen's axis leans from the vertical towards +x and +y.
struct Tilt {
  double x = 0;
  double y = 0;
};

/// From the azimuth, 0 towards +x and 90 towards +y, and the elevation, 90 for an upright pen, both
/// in degrees.
Tilt tiltOf(double azimuth, double elevation);

}  // namespace translate
