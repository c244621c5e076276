// The calling thread's id, and a recursive lock.
#pragma once

#include <cstdint>
#include <memory>

namespace platform {

/// The system's numeric id of the calling thread.
std::uint64_t currentThreadId();

/// A recursive lock: one thread at a time holds it, may take it again, and must release it as
/// often. Works with `std::lock_guard`.
class CriticalSection {
 public:
  CriticalSection();
  ~CriticalSection();
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

  void lock();
  void unlock();

 private:
  struct Native;
  std::unique_ptr<Native> native_;
};

}  // namespace platform
