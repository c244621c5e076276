// Rotating points about the origin.
#pragma once

#include "model/point.h"

namespace Orvo {

/// The direction of a position as seen from the origin, in radians, in single precision. A half
/// turn is 3.14159, not the full value of pi. For x = 0 the angle is 4.712385 below the origin,
/// else 1.570795 (also at the origin); for y = 0 it is 0, or a half turn left of the origin;
/// elsewhere left of the origin it is atan(y / x) minus a half turn.
float polarAngle(double x, double y);

/// Rotates the point about the origin, counter-clockwise for a positive angle where y points up.
/// The trigonometry is in single precision, so the result has float accuracy. A point whose
/// distance from the origin is zero in single precision stays where it is.
void rotatePoint(Point& point, float radians);

}  // namespace Orvo
