// The box around a stroke, layer or document, and how it grows, rotates and shifts.
#pragma once

#include <algorithm>

#include "model/point.h"

namespace Orvo {

/// The two corners of the box around a region. Only their x and y are meaningful.
///
/// Assigning a box assigns its corners as properties: a corner that compares equal by the partial
/// rule for points is left as it is.
struct BoundingBox {
  Property<Point> minCorner;  ///< Smallest x and smallest y.
  Property<Point> maxCorner;  ///< Largest x and largest y.
};

/// Sets both corners to the point, with all seven fields.
void startBox(BoundingBox& box, const Point& first);

/// Sets the box to that of the first child.
void startBox(BoundingBox& box, const BoundingBox& first);

/// Moves a corner to x and y; its other five fields become zero.
void moveCorner(Property<Point>& corner, double x, double y);

/// Widens the box to include another point. The other five fields of a corner that moves become
/// zero. A NaN coordinate never moves a corner. Called for every point that is read; most points
/// move nothing.
inline void extendBox(BoundingBox& box, const Point& point) {
  const Point& min = box.minCorner.value;
  const Point& max = box.maxCorner.value;
  const double x = point.x.value;
  const double y = point.y.value;
  if (min.x.value > x || min.y.value > y) {
    moveCorner(box.minCorner, std::min(min.x.value, x), std::min(min.y.value, y));
  }
  if (x > max.x.value || y > max.y.value) {
    moveCorner(box.maxCorner, std::max(max.x.value, x), std::max(max.y.value, y));
  }
}

/// Widens the box to include the box of another child, in the same way.
inline void extendBox(BoundingBox& box, const BoundingBox& child) {
  const Point& min = box.minCorner.value;
  const Point& max = box.maxCorner.value;
  const Point& low = child.minCorner.value;
  const Point& high = child.maxCorner.value;
  // Where neither value is less, one of them may be NaN; the first one is taken.
  if (min.x.value > low.x.value || min.y.value > low.y.value) {
    moveCorner(box.minCorner, std::min(low.x.value, min.x.value),
               std::min(low.y.value, min.y.value));
  }
  if (high.x.value > max.x.value || high.y.value > max.y.value) {
    moveCorner(box.maxCorner, std::max(max.x.value, high.x.value),
               std::max(max.y.value, high.y.value));
  }
}

/// Replaces the box by the one around its own rotated corners (see `rotatePoint`), which may be
/// larger than the rotated points need. The other five fields of both corners become zero. An angle
/// of 0 changes nothing.
void rotateBox(BoundingBox& box, float radians);

/// Moves both corners; their other five fields are kept.
void shiftBox(BoundingBox& box, double dx, double dy);

}  // namespace Orvo
