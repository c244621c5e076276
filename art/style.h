// Named art styles and the calligraphic brush that one may carry.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace art {

/// What drives a value of a brush, under the numbers of the native library files.
enum class BrushDriver : std::int32_t {
  fixed = 0,
  random = 1,
  pressure = 2,
  stylusWheel = 3,
  tilt = 4,
  bearing = 5,
  rotation = 6,
};

/// One value of a brush: `value` when it is fixed, otherwise `value - variation` to
/// `value + variation`.
struct BrushValue {
  double value = 0;
  double variation = 0;
  BrushDriver driver = BrushDriver::fixed;

  double lightest() const { return value - variation; }
  double heaviest() const { return value + variation; }
  friend bool operator==(const BrushValue&, const BrushValue&) = default;
};

/// An elliptic pen. A pressure p makes a diameter of weight * (lightest + 2 * variation * p).
struct CalligraphicBrush {
  std::string name;
  BrushValue size;              ///< diameter in points, for a stroke weight of 1
  BrushValue roundness{100.0};  ///< short axis in percent of the diameter
  BrushValue angle;             ///< of the long axis, in degrees
  friend bool operator==(const CalligraphicBrush&, const CalligraphicBrush&) = default;
};

/// Each 0 to 1.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  friend bool operator==(const Color&, const Color&) = default;
};

struct Style {
  std::string name;
  std::optional<CalligraphicBrush> brush;
  double strokeWeight = 1;  ///< in points; multiplies the size of the brush
  Color strokeColor;        ///< black
  friend bool operator==(const Style&, const Style&) = default;
};

}  // namespace art
