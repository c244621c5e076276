// Gives back what the C++ run time, which is part of the module, keeps for itself.
#include "platform/windows/thread_data.h"

namespace __gnu_cxx {
// The run time's own: frees the memory that it holds ready for exceptions when memory runs out.
void __freeres();
}  // namespace __gnu_cxx

namespace {

struct Unloading {
  ~Unloading() {
    __gnu_cxx::__freeres();
    releaseThreadData();
  }
};

// Made before every other object of the module, so that it is the last to go.
[[maybe_unused, gnu::init_priority(101)]] const Unloading unloading;

}  // namespace
