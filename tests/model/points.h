// Points as their seven values.
#pragma once

#include <cstdint>
#include <tuple>

#include "model/point.h"

namespace modeltest {

using Values =
    std::tuple<double, double, double, std::uint32_t, std::int32_t, std::int32_t, std::uint32_t>;

/// The seven values of a point, to be compared all at once.
inline Values values(const Orvo::Point& point) {
  return {point.x.value,     point.y.value,     point.z.value,        point.pressure.value,
          point.tiltX.value, point.tiltY.value, point.timestamp.value};
}

/// A point with seven given values.
inline Orvo::Point makePoint(const Values& given) {
  Orvo::Point point;
  std::tie(point.x.value, point.y.value, point.z.value, point.pressure.value, point.tiltX.value,
           point.tiltY.value, point.timestamp.value) = given;
  return point;
}

}  // namespace modeltest
