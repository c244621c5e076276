#include "platform/memory.h"

#include <limits>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

#ifdef __GLIBC__

void keepFreedMemory() {
  constexpr int kStep = 16 << 20;  // Bytes that the heap grows by, at least.
  mallopt(M_TOP_PAD, kStep);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
}

#else

void keepFreedMemory() {}

#endif

}  // namespace platform
