#include "model/rotation.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace Orvo {
namespace {

constexpr float kHalfTurn = 3.14159F;
constexpr float kQuarterTurn = 1.570795F;
constexpr float kThreeQuarterTurn = 4.712385F;
static_assert(std::bit_cast<std::uint32_t>(kHalfTurn) == 0x40490FD0);

}  // namespace

float polarAngle(double x, double y) {
  const auto xf = static_cast<float>(x);
  const auto yf = static_cast<float>(y);
  if (xf == 0.0F) return yf < 0.0F ? kThreeQuarterTurn : kQuarterTurn;
  if (yf == 0.0F) return xf > 0.0F ? 0.0F : kHalfTurn;
  const float angle = std::atan(yf / xf);
  return xf < 0.0F ? angle - kHalfTurn : angle;
}

void rotatePoint(Point& point, float radians) {
  const auto xf = static_cast<float>(point.x.value);
  const auto yf = static_cast<float>(point.y.value);
  const float angle = polarAngle(point.x.value, point.y.value) + radians;
  const double distance = std::sqrt(yf * yf + xf * xf);
  if (distance == 0.0) return;
  point.x.value = static_cast<double>(std::cos(angle)) * distance;
  point.y.value = static_cast<double>(std::sin(angle)) * distance;
}

}  // namespace Orvo
