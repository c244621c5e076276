// The memory allocation of this program, which can be watched.
#pragma once

#include <cstddef>

namespace allocation {

/// The size that was requested for the block at this address, which must be in use.
std::size_t sizeOf(const void* memory);

/// From now on `isFreed` says whether this memory was freed.
void watch(const void* memory);
bool isFreed();

}  // namespace allocation
