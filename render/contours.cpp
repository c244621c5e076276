#include "render/contours.h"

#include <cmath>

namespace render {

namespace {

constexpr int kFarthest = 1'000'000'000;  // steps; the widest picture still fits 32 bits

int nearest(double value) {
  if (std::isnan(value)) return 0;
  if (std::abs(value) >= kFarthest) return value < 0 ? -kFarthest : kFarthest;
  return static_cast<int>(std::lrint(value));
}

}  // namespace

Spot Grid::spot(double h, double v) const {
  return {nearest(h * stepsPerPoint), nearest(v * stepsPerPoint)};
}

Squeeze::Squeeze(const Grid& grid, double roundness, double angle)
    : grid_(grid), cosine_(std::cos(angle)), sine_(std::sin(angle)), roundness_(roundness) {}

Station Squeeze::station(const Place& place, double radius) const {
  if (roundness_ == 1) return {place.h, place.v, radius};
  return {place.h * cosine_ + place.v * sine_, (place.v * cosine_ - place.h * sine_) / roundness_,
          radius};
}

Spot Squeeze::spot(double x, double y) const {
  if (roundness_ == 1) return grid_.spot(x, y);
  const double narrow = y * roundness_;
  return grid_.spot(x * cosine_ - narrow * sine_, x * sine_ + narrow * cosine_);
}

void Contours::begin(std::size_t expectedPoints) {
  contour_ = &contours_.emplace_back();
  contour_->reserve(expectedPoints);
}

void Contours::point(double x, double y) {
  const Spot spot = squeeze_.spot(x, y);
  if (contour_->empty() || contour_->back() != spot) contour_->push_back(spot);
}

void Contours::end() {
  while (contour_->size() > 1 && contour_->back() == contour_->front())
    contour_->pop_back();
  if (contour_->size() < 3) contours_.pop_back();
}

}  // namespace render
