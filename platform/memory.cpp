#include "platform/memory.h"

#include <limits>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

#ifdef __GLIBC__

void keepFreedMemory() {
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
}

#else

void keepFreedMemory() {}

#endif

}  // namespace platform
