// The memory allocation of this program: it can be made to fail, and it can be watched.
#pragma once

#include <cstddef>

namespace allocation {

/// Which of the allocations that give null instead of throwing is to fail, counted from the next
/// one on; 0: none.
extern int failing;

/// The size that was requested for the block at this address, which must be in use.
std::size_t sizeOf(const void* memory);

/// From now on `isFreed` says whether this memory was freed.
void watch(const void* memory);
bool isFreed();

}  // namespace allocation
