// The exception that carries a host code inside the plug-in; it never leaves the module.
#pragma once

#include <exception>

#include "hostapi/types.h"

namespace ai {

class Error : public std::exception {
 public:
  explicit Error(hostapi::AIErr code) : code_(code) {}
  operator hostapi::AIErr() const { return code_; }  // NOLINT: an error is its code
  const char* what() const noexcept override { return "the host answered with an error code"; }

 private:
  hostapi::AIErr code_;
};

inline void throwIfFailed(hostapi::AIErr code) {
  if (code != 0) throw Error(code);
}

}  // namespace ai
