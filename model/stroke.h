// A stroke of the pen.
#pragma once

#include "model/region.h"

namespace Orvo {

/// The points from one pen-down to the next pen-up.
class Stroke final : public Region<Point> {
 public:
  void prepend(const Point& point) override { pushFront(point); }
  void extendBounds(const Point& point) override { extendBox(bounds(), point); }
};

}  // namespace Orvo
