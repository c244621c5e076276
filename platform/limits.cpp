#include "platform/limits.h"

#ifndef _WIN32
#include <csignal>
#include <fcntl.h>
#include <list>
#include <unistd.h>

#include "platform/descriptor.h"
#endif

namespace platform {

#ifdef _WIN32

void reportFileSizeLimit() {}

bool canOpenFiles(int) {
  return true;
}

#else

void reportFileSizeLimit() {
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

bool canOpenFiles(int count) {
  std::list<Descriptor> held;
  for (int i = 0; i < count; ++i) {
    if (!held.emplace_back(::open("/", O_PATH | O_CLOEXEC))) return false;
  }
  return true;
}

#endif

}  // namespace platform
