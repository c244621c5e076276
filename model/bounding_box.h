#pragma once

#include "model/point.h"

namespace Orvo {

/// The two corners of a region. Only their x and y mean something.
///
/// Assigning a box assigns its corners as properties: a corner that compares equal by the partial
/// rule for points is skipped.
struct BoundingBox {
  Property<Point> minCorner;  ///< Smallest x and smallest y.
  Property<Point> maxCorner;  ///< Largest x and largest y.
};

/// Makes both corners the point, all seven fields.
void startBox(BoundingBox& box, const Point& first);

/// Makes the box that of a first child.
void startBox(BoundingBox& box, const BoundingBox& first);

/// Moves a corner to x and y; its other five fields become zero.
void moveCorner(Property<Point>& corner, double x, double y);

/// Widens the box to hold a further point. A corner that moves has zero in its other five fields. A
/// NaN coordinate never moves a corner. Called for every point read, mostly without a move.
inline void extendBox(BoundingBox& box, const Point& point) {
  const Point& min = box.minCorner.value;
  const Point& max = box.maxCorner.value;
  const double x = point.x.value;
  const double y = point.y.value;
  if (min.x.value > x || min.y.value > y) {
    moveCorner(box.minCorner, min.x.value > x ? x : min.x.value, min.y.value > y ? y : min.y.value);
  }
  if (x > max.x.value || y > max.y.value) {
    moveCorner(box.maxCorner, x > max.x.value ? x : max.x.value, y > max.y.value ? y : max.y.value);
  }
}

/// Widens the box to hold the box of a further child, in the same way.
inline void extendBox(BoundingBox& box, const BoundingBox& child) {
  const Point& min = box.minCorner.value;
  const Point& max = box.maxCorner.value;
  const Point& low = child.minCorner.value;
  const Point& high = child.maxCorner.value;
  // Where neither is greater, so that one may be NaN, a minimum is taken from the child.
  if (min.x.value > low.x.value || min.y.value > low.y.value) {
    moveCorner(box.minCorner, low.x.value > min.x.value ? min.x.value : low.x.value,
               low.y.value > min.y.value ? min.y.value : low.y.value);
  }
  if (high.x.value > max.x.value || high.y.value > max.y.value) {
    moveCorner(box.maxCorner, high.x.value > max.x.value ? high.x.value : max.x.value,
               high.y.value > max.y.value ? high.y.value : max.y.value);
  }
}

/// Makes the box enclose itself turned about the origin (see `rotatePoint`); it may become larger
/// than the turned points need. The other five fields of both corners become zero. An angle of 0
/// leaves it untouched.
void rotateBox(BoundingBox& box, float radians);

/// Moves both corners; their other five fields are kept.
void shiftBox(BoundingBox& box, double dx, double dy);

}  // namespace Orvo
