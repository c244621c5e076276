#include "model/bounding_box.h"

#include <algorithm>
#include <array>

#include "model/rotation.h"

namespace Orvo {
namespace {

void shiftCorner(Property<Point>& corner, double dx, double dy) {
  Point moved = corner.value;
  moved.x.value += dx;
  moved.y.value += dy;
  corner.value = moved;
}

}  // namespace

void startBox(BoundingBox& box, const Point& first) {
  box.minCorner.value = first;
  box.maxCorner.value = first;
}

void startBox(BoundingBox& box, const BoundingBox& first) {
  box = first;
}

void moveCorner(Property<Point>& corner, double x, double y) {
  corner = Point(x, y);
}

void rotateBox(BoundingBox& box, float radians) {
  if (radians == 0.0F) return;
  const Point& min = box.minCorner.value;
  const Point& max = box.maxCorner.value;
  std::array corners{Point(min.x.value, min.y.value), Point(max.x.value, max.y.value),
                     Point(max.x.value, min.y.value), Point(min.x.value, max.y.value)};
  for (Point& corner : corners)
    rotatePoint(corner, radians);

  const auto byX = [](const Point& a, const Point& b) { return a.x.value < b.x.value; };
  const auto byY = [](const Point& a, const Point& b) { return a.y.value < b.y.value; };
  const auto [left, right] = std::minmax_element(corners.begin(), corners.end(), byX);
  const auto [bottom, top] = std::minmax_element(corners.begin(), corners.end(), byY);
  box.minCorner.value = Point(left->x.value, bottom->y.value);
  box.maxCorner.value = Point(right->x.value, top->y.value);
}

void shiftBox(BoundingBox& box, double dx, double dy) {
  shiftCorner(box.minCorner, dx, dy);
  shiftCorner(box.maxCorner, dx, dy);
}

}  // namespace Orvo
