#pragma once

#include "model/point.h"

namespace Orvo {

/// The direction of a position as seen from the origin, in radians, in single precision. The half
/// turn is 3.14159 and not the full value of pi. For x = 0 it is 4.712385 below the origin, else
/// 1.570795 (also at the origin); left of the origin atan(y / x) less a half turn.
float polarAngle(double x, double y);

/// Turns the point about the origin, counter-clockwise for a positive angle where y points up. The
/// trigonometry is single precision, so the result has float accuracy. A point whose distance from
/// the origin is zero in single precision stays as it is.
void rotatePoint(Point& point, float radians);

}  // namespace Orvo
