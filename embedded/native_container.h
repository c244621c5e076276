// From the bytes of a native file to its text.
#pragma once

#include <span>
#include <string>

namespace embedded {

/// The native data of a file, or why there is none.
struct NativeText {
  std::string text;
  std::string problem;
};

/// Takes the native data out of its PDF, or takes bare text as it stands.
NativeText unwrapNative(std::span<const unsigned char> bytes);

}  // namespace embedded
