// One sample of the pen.
#pragma once

#include <cstdint>

#include "model/property.h"

namespace Orvo {

/// One pen sample. Only `x` and `y` take part in boxes, rotation and shifting.
///
/// Copying copies all seven values; assigning assigns the seven properties in this order, so each
/// is written only where it compares unequal.
class Point {
 public:
  Point() = default;
  Point(double horizontal, double vertical) : x(horizontal), y(vertical) {}

  Property<double> x;                 ///< Horizontal position, in the units of the reader.
  Property<double> y;                 ///< Vertical position, same units.
  Property<double> z;                 ///< Third coordinate; 0.0 from a pen recording.
  Property<std::uint32_t> pressure;   ///< As the pen delivered it.
  Property<std::int32_t> tiltX;       ///< Pen tilt along x.
  Property<std::int32_t> tiltY;       ///< Pen tilt along y.
  Property<std::uint32_t> timestamp;  ///< As the pen delivered it, bit pattern unchanged.
};

/// Points are equal when x equals x, y equals y, and z of the left one equals **x** of the right
/// one; the other fields are never compared. So assigning to a corner of a box does nothing when
/// the corners agree in x and y and the target's z is the source's x (typically both zero). It
/// looks like a mistake, but the boxes of all drawings depend on it.
template <>
bool Property<Point>::operator==(const Property& other) const;

}  // namespace Orvo
