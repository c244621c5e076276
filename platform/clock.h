// Local time.
#pragma once

#include <cstdint>
#include <ctime>

namespace platform {

/// The local calendar time of `secondsSinceEpoch`; all fields are zero for a moment that the
/// system's calendar cannot hold.
std::tm localTime(std::int64_t secondsSinceEpoch);

}  // namespace platform
