#include "render/nib.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace render {

namespace {

constexpr double kFlattest = 0.01;
constexpr double kLargest = 1e5;  // points; keeps sums within the range of the grid

double finite(double value) {
  return std::isfinite(value) ? std::clamp(value, -kLargest, kLargest) : 0;
}

}  // namespace

Nib::Range Nib::rangeOf(const art::BrushValue& value, double factor) {
  const bool byPressure = value.driver == art::BrushDriver::pressure;
  return {finite((byPressure ? value.lightest() : value.value) * factor),
          finite((byPressure ? value.heaviest() : value.value) * factor)};
}

Nib::Nib(double diameter) : radius_{diameter / 2, diameter / 2} {}

Nib::Nib(const art::Style* style) : Nib(style == nullptr ? 1.0 : finite(style->strokeWeight)) {
  if (style == nullptr || !style->brush) return;
  radius_ = rangeOf(style->brush->size, style->strokeWeight / 2);
  roundness_ = rangeOf(style->brush->roundness, 0.01);
  angle_ = rangeOf(style->brush->angle, std::numbers::pi / 180);
}

Stamp Nib::at(double pressure) const {
  return {std::max(radius_.at(pressure), 0.0), std::clamp(roundness_.at(pressure), kFlattest, 1.0),
          angle_.at(pressure)};
}

bool Nib::changesShape() const {
  const bool round = roundness_.light >= 1 && roundness_.heavy >= 1;
  return roundness_.light != roundness_.heavy || (!round && angle_.light != angle_.heavy);
}

}  // namespace render
