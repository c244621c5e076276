#include "platform/unload.h"

#if defined(_WIN32) || defined(__EMSCRIPTEN__)
#include <cstdlib>
#else
#include <cxxabi.h>

// The linker's mark of this module, under the linker's name for it.
extern "C" [[gnu::visibility("hidden")]] void*
    __dso_handle;  // NOLINT(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
#endif

namespace platform {

#if defined(_WIN32) || defined(__EMSCRIPTEN__)

void atUnload(void (*function)()) {
  // Where no more functions can be kept, `function` does not run, and what it would free ends with
  // the process.
  static_cast<void>(std::atexit(function));
}

#else

// Not std::atexit: the thread sanitizer's own forgets the module, and would call `function` when
// the program ends, long after the module is gone.
void atUnload(void (*function)()) {
  abi::__cxa_atexit([](void* registered) { reinterpret_cast<void (*)()>(registered)(); },
                    reinterpret_cast<void*>(function), &__dso_handle);
}

#endif

}  // namespace platform
