#pragma once

#include <cstdint>
#include <ctime>

namespace platform {

/// The local calendar time of `secondsSinceEpoch`; a moment that the system's calendar cannot hold
/// gives all fields zero.
std::tm localTime(std::int64_t secondsSinceEpoch);

}  // namespace platform
