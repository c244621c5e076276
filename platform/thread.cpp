#include "platform/thread.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <mutex>
#ifndef __EMSCRIPTEN__
#include <sys/syscall.h>
#include <unistd.h>
#endif
#endif

namespace platform {

#ifdef _WIN32

std::uint64_t currentThreadId() {
  return GetCurrentThreadId();
}

struct CriticalSection::Native {
  Native() { InitializeCriticalSection(&section); }
  ~Native() { DeleteCriticalSection(&section); }
  Native(const Native&) = delete;
  Native& operator=(const Native&) = delete;

  void lock() { EnterCriticalSection(&section); }
  void unlock() { LeaveCriticalSection(&section); }

  CRITICAL_SECTION section{};
};

#else

#ifdef __EMSCRIPTEN__

// There is one thread.
std::uint64_t currentThreadId() {
  return 1;
}

#else

std::uint64_t currentThreadId() {
  return static_cast<std::uint64_t>(::syscall(SYS_gettid));
}

#endif

struct CriticalSection::Native : std::recursive_mutex {};

#endif

CriticalSection::CriticalSection() : native_(std::make_unique<Native>()) {}

CriticalSection::~CriticalSection() = default;

void CriticalSection::lock() {
  native_->lock();
}

void CriticalSection::unlock() {
  native_->unlock();
}

}  // namespace platform
