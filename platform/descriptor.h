// An owned file descriptor.
#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

/// A file descriptor, closed when its owner is destroyed; a number below 0 is none. Not for
/// Windows.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }
  /// Hands the descriptor over to the caller, who must close it.
  int release() { return std::exchange(number_, -1); }
  /// Closes it now. False, with `errno` set, if the system could not store what was written.
  bool close() { return number_ < 0 || ::close(release()) == 0; }

 private:
  int number_;
};

}  // namespace platform
