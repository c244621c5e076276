#pragma once

#include <cstddef>

namespace memorytest {

/// The bytes that were taken with `new` and not given back. A program that calls this counts from
/// its start, with operators of its own.
std::size_t liveBytes();

}  // namespace memorytest
