// Counting the memory in use.
#pragma once

#include <cstddef>

namespace memorytest {

/// The bytes allocated with `new` and not yet freed. A program that calls this replaces the
/// operators `new` and `delete`, and counts from its start.
std::size_t liveBytes();

}  // namespace memorytest
