// Visitors of a region's elements, and the two that rotate and shift them.
#pragma once

#include "model/point.h"
#include "model/rotation.h"

namespace Orvo {

/// What `Region<T>::accept` calls on each element, front to back.
template <class T>
class RegionVisitor {
 public:
  RegionVisitor() = default;
  RegionVisitor(const RegionVisitor&) = delete;
  RegionVisitor& operator=(const RegionVisitor&) = delete;
  virtual ~RegionVisitor() = default;

  /// Is given the stored element itself and may change it. Returning false ends the visit.
  virtual bool visit(T& element) = 0;
};

/// Rotates each element about the origin; never ends the visit early.
template <class T>
class Rotator final : public RegionVisitor<T> {
 public:
  explicit Rotator(float radians) : angle(radians) {}

  bool visit(T& element) override {
    element.rotate(angle);
    return true;
  }

  float angle;  ///< In radians.
};

template <>
inline bool Rotator<Point>::visit(Point& element) {
  if (angle != 0.0F) rotatePoint(element, angle);
  return true;
}

/// Moves each element; never ends the visit early. A coordinate that compares equal afterwards is
/// not rewritten, so an offset of 0 leaves -0.0 as it is.
template <class T>
class Shifter final : public RegionVisitor<T> {
 public:
  Shifter(double horizontal, double vertical) : dx(horizontal), dy(vertical) {}

  bool visit(T& element) override {
    element.shift(dx, dy);
    return true;
  }

  double dx;  ///< In the units of the points.
  double dy;
};

template <>
inline bool Shifter<Point>::visit(Point& element) {
  element.x = element.x.value + dx;
  element.y = element.y.value + dy;
  return true;
}

}  // namespace Orvo
