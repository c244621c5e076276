// The shape of a brush at each pressure.
#pragma once

#include "art/style.h"

namespace render {

/// An ellipse around the place of the brush.
struct Stamp {
  double radius = 0;     ///< half the long axis, in points
  double roundness = 1;  ///< short axis as a share of the long one, never below 0.01
  double angle = 0;      ///< of the long axis, in radians, counter-clockwise
};

/// What a style draws with: its calligraphic brush, or a disc as wide as its stroke weight; without
/// a style a disc of one point.
class Nib {
 public:
  explicit Nib(const art::Style* style);
  /// A disc of this diameter whatever the pressure.
  explicit Nib(double diameter);

  /// `pressure` 0 to 1. A value that something other than pressure drives is taken at the middle of
  /// its range.
  Stamp at(double pressure) const;
  /// Whether roundness or angle depend on the pressure.
  bool changesShape() const;

 private:
  struct Range {
    double light = 0;
    double heavy = 0;

    double at(double pressure) const { return light + (heavy - light) * pressure; }
  };

  static Range rangeOf(const art::BrushValue& value, double factor);

  Range radius_;
  Range roundness_{1, 1};
  Range angle_;
};

}  // namespace render
